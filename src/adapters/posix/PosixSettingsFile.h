// Settings files in one folder, replaced whole: lock, read, merge, write beside, fsync, rename.
// Knows nothing of sections and keys.
#pragma once

#include <chrono>
#include <string>

#include "platform/SettingsFile.h"

namespace spectrino {

/// $XDG_CONFIG_HOME/spectrino when that is an absolute path, else .config/spectrino in the home folder.
[[nodiscard]] std::string DefaultSettingsFolder();

/// <folder>/<Application>.ini. The lock is <file>.lock and stays: removing it would let two writers hold
/// locks on different files of the same name. A file that is a symbolic link stays one; its target is
/// replaced. A program that rewrites a file in place, without the lock, is waited for.
class PosixSettingsFile final : public SettingsFile {
 public:
  /// folder: created at the first write. lockWait: how long a write waits for another program's write.
  explicit PosixSettingsFile(std::string folder,
                             std::chrono::milliseconds lockWait = std::chrono::seconds(2));

  [[nodiscard]] std::optional<std::string> Read(const std::string& application, std::string& reason) override;
  WriteOutcome Update(const std::string& application,
                      const std::function<std::optional<std::string>(const std::string&)>& merge) override;
  AsideOutcome SetAside(const std::string& application,
                        const std::function<bool(const std::string&)>& isBad) override;
  [[nodiscard]] unsigned long long Stamp(const std::string& application) const override;
  [[nodiscard]] std::string PathOf(const std::string& application) const override;

 private:
  std::string folder_;
  std::chrono::milliseconds lockWait_;
};

}  // namespace spectrino
