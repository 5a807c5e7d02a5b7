#include "settings/SettingsStore.h"

#include <algorithm>
#include <utility>

#include "settings/Keys.h"

namespace spectrino {
namespace {

/// A program that rewrites its file in place leaves it without its sections for a moment.
constexpr std::chrono::milliseconds kTornWriteTime{50};
/// Against a program that writes rubbish again and again.
constexpr int kMostSetAside = 3;
/// Other programs may mend or spoil the file between two looks at it.
constexpr int kMostLooks = 3;

bool SameName(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; };
  return std::ranges::equal(a, b, {}, lower, lower);
}

}  // namespace

SettingsStore::Application& SettingsStore::Open(std::string_view name) {
  Collect();
  auto at = applications_.find(name);
  if (at == applications_.end()) {
    at = applications_.try_emplace(std::string(name)).first;
    at->second.name = name;
  }
  for (int look = 0; look < kMostLooks && Refresh(at->second); ++look) {
  }
  return at->second;
}

/// True: a bad file was dealt with, and what stands there now is to be read.
bool SettingsStore::Refresh(Application& application) {
  const unsigned long long stamp = file_.Stamp(application.name);
  if (application.stamp == stamp && !application.vanished) return false;
  // Taken before the read: a change in between is then read again rather than missed.
  application.stamp = stamp;
  std::string reason;
  const std::optional<std::string> text = file_.Read(application.name, reason);
  if (!reason.empty()) {
    HandleUnreadable(application, reason);
    return false;
  }
  std::string why;
  std::optional<IniDocument> document = IniDocument::Parse(text.value_or(""), why);
  if (!document) return HandleUnparsable(application, why);
  // A new failure after this is news again.
  if (std::exchange(application.told, false)) application.writeTold = false;
  Accept(application, std::move(*document));
  return false;
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
      Severity::Exclamation,
      Cure::ShowFolder("Give yourself the right to read and write it; that is noticed by itself.",
                       file_.PathOf(application.name)));
}

/// True: the file is out of the way, or good again.
bool SettingsStore::HandleUnparsable(Application& application, const std::string& why) {
  // Files of other programs may be in the middle of a write.
  if (application.name == kOwnApplication) return SetAside(application, why);
  if (!std::exchange(application.told, true))
    notifier_.Log(LogArea::Settings, file_.PathOf(application.name) + " cannot be used: " + why);
  return false;
}

bool SettingsStore::SetAside(Application& application, const std::string& why) {
  const AsideOutcome aside = file_.SetAside(application.name, [](const std::string& text) {
    std::string ignored;
    return !IniDocument::Parse(text, ignored);
  });
  const bool away = aside.State == AsideState::Moved;
  // Whatever the file is now, it is to be read again.
  if (aside.State != AsideState::Failed) application.stamp.reset();
  if (!away && aside.State != AsideState::Failed) return aside.State == AsideState::GoodNow;
  if (!away && std::exchange(application.told, true)) return false;
  application.told = application.writeTold = !away;
  const std::string path = file_.PathOf(application.name);
  notifier_.Log(LogArea::Settings, path + " cannot be used: " + why);
  notifier_.ShowMessage(
      "Spectrino",
      "The settings file " + path + " cannot be used: " + why +
          (away ? ". It was kept as " + aside.Path + " and the settings start from their defaults."
                : ". It could not be moved out of the way, so settings will not be saved."),
      Severity::Exclamation,
      Cure::ShowFolder(away ? "What it held can be copied back into the new file."
                            : "Give yourself the right to write in its folder, or repair the file.",
                       path));
  return away;
}

SettingValue* SettingsStore::Find(Values& values, std::string_view section, std::string_view key) {
  const auto at = std::ranges::find_if(values, [&](const SettingValue& value) {
    return SameName(value.Section, section) && SameName(value.Key, key);
  });
  return at == values.end() ? nullptr : &*at;
}

std::optional<std::string> SettingsStore::FindSetting(std::string_view application, std::string_view section,
                                                      std::string_view key) {
  return FindSettings(application, section, {&key, 1}).front();
}

std::vector<std::optional<std::string>> SettingsStore::FindSettings(std::string_view application,
                                                                    std::string_view section,
                                                                    std::span<const std::string_view> keys) {
  Application& from = Open(application);
  std::vector<std::optional<std::string>> found;
  for (const std::string_view key : keys) {
    if (const SettingValue* published = Find(from.published, section, key))
      found.emplace_back(published->Value);
    else if (const SettingValue* pending = Find(from.pending, section, key))
      found.emplace_back(pending->Value);
    else
      found.push_back(from.document.Find(section, key));
  }
  return found;
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
  bool changed = false;
  for (const KeyValue& entry : values) {
    std::string value = IniDocument::StorableText(entry.Value);
    if (SettingValue* waiting = Find(to.pending, section, entry.Key)) {
      changed = changed || waiting->Value != value;
      if (waiting->Value != value) *waiting = {waiting->Section, waiting->Key, std::move(value), ++serial_};
    } else if (to.document.Find(section, entry.Key) != value) {
      to.pending.push_back({std::string(section), entry.Key, std::move(value), ++serial_});
      changed = true;
    }
  }
  // What is waiting already is tried again by the thread itself.
  if (changed || (!writer_ && !to.pending.empty())) Flush(to);
}

void SettingsStore::SendSetting(std::string_view application, std::string_view section, std::string_view key,
                                std::string_view value) {
  Application& to = Open(application);
  SettingValue sent{std::string(section), std::string(key), IniDocument::StorableText(value), ++serial_};
  if (SettingValue* waiting = Find(to.pending, section, key))
    *waiting = std::move(sent);
  else
    to.pending.push_back(std::move(sent));
  Flush(to);
}

void SettingsStore::Flush(Application& application) {
  if (writer_)
    writer_->Take(application.name, application.pending);
  else
    Settle(application, MergeInto(file_, application.name, application.pending));
}

void SettingsStore::Settle(Application& application, MergeResult result) {
  // Whatever happened, what stands on disk now is read afresh: another program may have written since.
  application.stamp.reset();
  if (result.Outcome.Ok) {
    std::erase_if(application.pending,
                  [&](const SettingValue& value) { return value.Serial <= result.Serial; });
    application.document = *std::move(result.Document);
    application.vanished.reset();
    application.writeTold = false;
    application.setAside = 0;
    return;
  }
  // The file went bad since it was last read.
  if (!result.Unparsable.empty() && HandleUnparsable(application, result.Unparsable) &&
      application.setAside++ < kMostSetAside)
    return Flush(application);
  TellWriteFailed(application, result.Outcome.Reason);
}

void SettingsStore::TellWriteFailed(Application& application, const std::string& reason) {
  if (std::exchange(application.writeTold, true)) return;
  const std::string path = file_.PathOf(application.name);
  notifier_.Log(LogArea::Settings, reason);
  notifier_.ShowMessage(
      "Spectrino",
      "Settings could not be saved in " + path + ".\n" + reason +
          ".\nThey hold until the program ends, and will be saved as soon as it is possible.",
      Severity::Exclamation,
      Cure::ShowFolder("Make room on the disk, or give yourself the right to write there.", path));
}

void SettingsStore::WriteInBackground(std::function<void()> resultsWait) {
  writer_ = std::make_unique<SettingsWriter>(file_, std::move(resultsWait));
}

void SettingsStore::Collect() {
  if (!writer_) return;
  for (MergeResult& result : writer_->Results())
    if (const auto at = applications_.find(result.Application); at != applications_.end())
      Settle(at->second, std::move(result));
}

std::string SettingsStore::Finish(std::chrono::milliseconds wait) {
  using std::chrono::steady_clock;
  const auto end = steady_clock::now() + wait;
  Collect();
  for (auto& [name, application] : applications_)
    if (!application.pending.empty()) Flush(application);
  // A round may end with a bad file that is set aside, and another write.
  for (int round = 0; writer_ && round <= kMostSetAside; ++round) {
    const auto rest = std::chrono::duration_cast<std::chrono::milliseconds>(end - steady_clock::now());
    const bool rested = writer_->Rest(std::max(rest, std::chrono::milliseconds(0)));
    Collect();
    if (!rested || Unsaved().empty()) break;
  }
  return Unsaved();
}

std::string SettingsStore::Unsaved() const {
  std::string text;
  for (const auto& [name, application] : applications_) {
    if (application.pending.empty()) continue;
    text += "The newest settings could not be saved in " + file_.PathOf(name) + ".\n";
    if (const std::string reason = writer_ ? writer_->LastFailure(name) : ""; !reason.empty())
      text += reason + ".\n";
  }
  return text;
}

void SettingsStore::LogOnce(const std::string& line) {
  if (logged_.insert(line).second) notifier_.Log(LogArea::Settings, line);
}

void SettingsStore::Publish(std::string_view application, std::string_view section, std::string_view key,
                            std::string_view value) {
  Application& to = Open(application);
  if (SettingValue* known = Find(to.published, section, key))
    known->Value = value;
  else
    to.published.push_back({std::string(section), std::string(key), std::string(value)});
}

void SettingsStore::Withdraw(std::string_view application, std::string_view section) {
  std::erase_if(Open(application).published,
                [&](const SettingValue& value) { return SameName(value.Section, section); });
}

}  // namespace spectrino
