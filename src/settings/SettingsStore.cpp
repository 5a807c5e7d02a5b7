#include "settings/SettingsStore.h"

#include <algorithm>
#include <utility>

#include "settings/Keys.h"

namespace spectrino {
namespace {

/// A program that rewrites its file in place leaves it without its sections for a moment.
constexpr std::chrono::milliseconds kTornWriteTime{50};

bool SameName(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; };
  return std::ranges::equal(a, b, {}, lower, lower);
}

}  // namespace

SettingsStore::Application& SettingsStore::Open(std::string_view name) {
  auto at = applications_.find(name);
  if (at == applications_.end()) {
    at = applications_.try_emplace(std::string(name)).first;
    at->second.name = name;
  }
  Refresh(at->second);
  return at->second;
}

void SettingsStore::Refresh(Application& application) {
  const unsigned long long stamp = file_.Stamp(application.name);
  if (application.stamp == stamp && !application.vanished) return;
  // Taken before the read: a change in between is then read again rather than missed.
  application.stamp = stamp;
  std::string reason;
  const std::optional<std::string> text = file_.Read(application.name, reason);
  if (!reason.empty()) return HandleUnreadable(application, reason);
  std::string why;
  if (std::optional<IniDocument> document = IniDocument::Parse(text.value_or(""), why)) {
    // A new failure after this is news again.
    if (std::exchange(application.told, false)) application.writeTold = false;
    Accept(application, std::move(*document));
  } else {
    HandleUnparsable(application, why);
  }
}

void SettingsStore::Accept(Application& application, IniDocument document) {
  if (!document.HasSectionsOf(application.document)) {
    const auto now = clock_.Now();
    if (!application.vanished) application.vanished = now;
    if (now - *application.vanished < kTornWriteTime) return;
  }
  application.vanished.reset();
  application.document = std::move(document);
}

void SettingsStore::HandleUnreadable(Application& application, const std::string& reason) {
  if (std::exchange(application.told, true)) return;
  notifier_.Log(LogArea::Settings, reason);
  if (application.name != kOwnApplication) return;
  application.writeTold = true;
  notifier_.ShowMessage(
      "Spectrino",
      reason + ".\nThe settings are at their defaults, and changes are not saved until the file can be read.",
      Severity::Exclamation);
}

void SettingsStore::HandleUnparsable(Application& application, const std::string& why) {
  if (std::exchange(application.told, true)) return;
  const std::string path = file_.PathOf(application.name);
  notifier_.Log(LogArea::Settings, path + " cannot be used: " + why);
  if (application.name != kOwnApplication) return;
  const std::string kept = file_.SetAside(application.name);
  if (kept.empty()) {
    application.writeTold = true;
  } else {
    application.told = false;
    application.stamp.reset();
  }
  notifier_.ShowMessage(
      "Spectrino",
      "The settings file " + path + " cannot be used: " + why +
          (kept.empty() ? ". It could not be moved out of the way, so settings will not be saved."
                        : ". It was kept as " + kept + " and the settings start from their defaults."),
      Severity::Exclamation);
}

SettingsStore::Value* SettingsStore::Find(Values& values, std::string_view section, std::string_view key) {
  const auto at = std::ranges::find_if(values, [&](const Value& value) {
    return SameName(value.section, section) && SameName(value.key, key);
  });
  return at == values.end() ? nullptr : &*at;
}

std::optional<std::string> SettingsStore::FindSetting(std::string_view application, std::string_view section,
                                                      std::string_view key) {
  Application& from = Open(application);
  if (const Value* published = Find(from.published, section, key)) return published->value;
  if (const Value* pending = Find(from.pending, section, key)) return pending->value;
  return from.document.Find(section, key);
}

std::string SettingsStore::GetSetting(std::string_view application, std::string_view section,
                                      std::string_view key, std::string_view fallback) {
  std::optional<std::string> value = FindSetting(application, section, key);
  return value ? *std::move(value) : std::string(fallback);
}

void SettingsStore::SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                                std::string_view value) {
  const KeyValue one{std::string(key), std::string(value)};
  SaveSettings(application, section, {&one, 1});
}

void SettingsStore::SaveSettings(std::string_view application, std::string_view section,
                                 std::span<const KeyValue> values) {
  Application& to = Open(application);
  for (const KeyValue& entry : values) {
    std::string value = IniDocument::StorableText(entry.Value);
    if (Value* waiting = Find(to.pending, section, entry.Key))
      waiting->value = std::move(value);
    else if (to.document.Find(section, entry.Key) != value)
      to.pending.push_back({std::string(section), entry.Key, std::move(value)});
  }
  if (!to.pending.empty()) Flush(to);
}

void SettingsStore::Flush(Application& application) {
  const WriteOutcome outcome = Write(application);
  // Whatever happened, what stands on disk now is read afresh: another program may have written since.
  application.stamp.reset();
  if (outcome.Ok) {
    application.pending.clear();
    application.writeTold = false;
    return;
  }
  if (std::exchange(application.writeTold, true)) return;
  const std::string path = file_.PathOf(application.name);
  notifier_.Log(LogArea::Settings, outcome.Reason);
  notifier_.ShowMessage(
      "Spectrino",
      "Settings could not be saved in " + path + ".\n" + outcome.Reason +
          ".\nThey hold until the program ends, and will be saved as soon as it is possible.",
      Severity::Exclamation);
}

WriteOutcome SettingsStore::Write(Application& application) {
  std::optional<IniDocument> document;
  std::string why;
  const auto merge = [&](const std::string& onDisk) {
    document = IniDocument::Parse(onDisk, why);
    if (!document) return onDisk;  // unchanged, so nothing is written
    for (const Value& pending : application.pending)
      document->Set(pending.section, pending.key, pending.value);
    return document->Text();
  };
  WriteOutcome outcome = file_.Update(application.name, merge);
  if (outcome.Ok && !document) {
    // The file went bad since it was last read.
    HandleUnparsable(application, why);
    outcome = file_.Update(application.name, merge);
  }
  if (!outcome.Ok) return outcome;
  if (!document) return {false, file_.PathOf(application.name) + " cannot be used: " + why};
  application.document = std::move(*document);
  application.vanished.reset();
  return outcome;
}

void SettingsStore::Publish(std::string_view application, std::string_view section, std::string_view key,
                            std::string_view value) {
  Application& to = Open(application);
  if (Value* known = Find(to.published, section, key))
    known->value = value;
  else
    to.published.push_back({std::string(section), std::string(key), std::string(value)});
}

void SettingsStore::Withdraw(std::string_view application, std::string_view section) {
  std::erase_if(Open(application).published,
                [&](const Value& value) { return SameName(value.section, section); });
}

}  // namespace spectrino
