// The per-user store: string values addressed by application, section and key.
// Knows no key and no type; SetupSection reads and writes typed.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Clock.h"
#include "platform/Notifier.h"
#include "platform/SettingsFile.h"
#include "settings/IniDocument.h"
#include "settings/SettingsMerge.h"
#include "settings/SettingsWriter.h"

namespace spectrino {

struct KeyValue {
  std::string Key;
  std::string Value;
};

/// Sections and keys compare without regard to case. Reads never fail. Every read looks whether the file has
/// changed (one stat), so what other programs publish is current without watching.
///
/// The user is told once when the program's own file cannot be parsed (it is set aside), cannot be read, or
/// a file cannot be written; what could not be written holds for the session and goes out with the next
/// write that succeeds. Files of other programs that cannot be parsed are only logged: they may be in the
/// middle of a write.
class SettingsStore {
 public:
  SettingsStore(SettingsFile& file, Notifier& notifier, const Clock& clock = kSystemClock)
      : file_(file), notifier_(notifier), clock_(clock) {}

  [[nodiscard]] std::string GetSetting(std::string_view application, std::string_view section,
                                       std::string_view key, std::string_view fallback);
  /// Nothing when the key is missing.
  [[nodiscard]] std::optional<std::string> FindSetting(std::string_view application, std::string_view section,
                                                       std::string_view key);

  /// As FindSetting for each key, all of one version of the file.
  [[nodiscard]] std::vector<std::optional<std::string>> FindSettings(std::string_view application,
                                                                     std::string_view section,
                                                                     std::span<const std::string_view> keys);

  void SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                   std::string_view value);
  /// One write for all; none when every value stands there already.
  void SaveSettings(std::string_view application, std::string_view section, std::span<const KeyValue> values);

  /// Written though it stands there already: for a value that another program takes as a command.
  void SendSetting(std::string_view application, std::string_view section, std::string_view key,
                   std::string_view value);

  /// A value in memory that beats the file until withdrawn: how a link of ours plays the part of a program
  /// that publishes a section.
  void Publish(std::string_view application, std::string_view section, std::string_view key,
               std::string_view value);
  void Withdraw(std::string_view application, std::string_view section);

  /// From now on saving never waits: a thread writes, tries again what failed, and calls resultsWait (on that
  /// thread) when Collect has something to tell.
  void WriteInBackground(std::function<void()> resultsWait);
  /// Takes notice of what the thread has done. Every read and save does so as well.
  void Collect();
  /// Waits until all is in the files. Not empty: wait is over, and this says which file is without its newest
  /// settings, and why.
  [[nodiscard]] std::string Finish(std::chrono::milliseconds wait);

  /// A line in the log about what a file holds, at its first occurrence only.
  void LogOnce(const std::string& line);

 private:
  static inline const SystemClock kSystemClock{};

  using Values = std::vector<SettingValue>;  ///< few: found by looking through
  struct Application {
    std::string name;
    IniDocument document;  ///< last good content of the file
    std::optional<unsigned long long> stamp;
    std::optional<std::chrono::steady_clock::time_point> vanished;  ///< when a section was first missed
    Values pending;                                                 ///< not yet in the file
    Values published;
    bool told = false;       ///< a failed read or parse was reported; holds until one succeeds
    bool writeTold = false;  ///< a failed write was reported; holds until one succeeds
    int setAside = 0;        ///< times in a row that a bad file was found when writing
  };

  static SettingValue* Find(Values& values, std::string_view section, std::string_view key);
  Application& Open(std::string_view name);
  bool Refresh(Application& application);
  void Accept(Application& application, IniDocument document);
  void HandleUnreadable(Application& application, const std::string& reason);
  bool HandleUnparsable(Application& application, const std::string& why);
  bool SetAside(Application& application, const std::string& why);
  void Flush(Application& application);
  void Settle(Application& application, MergeResult result);
  [[nodiscard]] std::string Unsaved() const;
  void TellWriteFailed(Application& application, const std::string& reason);

  SettingsFile& file_;
  Notifier& notifier_;
  const Clock& clock_;
  std::map<std::string, Application, std::less<>> applications_;
  std::uint64_t serial_ = 0;
  std::set<std::string> logged_;
  std::unique_ptr<SettingsWriter> writer_;  ///< null: saving waits until the file is written
};

}  // namespace spectrino
