// Keeps the text of one settings file. Knows nothing of what is in it.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace spectrino {

struct WriteOutcome {
  bool Ok = true;
  std::string Reason;  ///< when not Ok: what failed, on which path, in the user's terms
};

class SettingsFile {
 public:
  virtual ~SettingsFile() = default;
  /// The whole text, or nothing when there is no file (or it cannot be read: then the reason is set).
  [[nodiscard]] virtual std::optional<std::string> Read(const std::string& application,
                                                        std::string& reason) = 0;
  /// Under the file's lock: hands the text now on disk to merge (empty when there is none) and replaces the
  /// file with what it returns. Whoever reads meanwhile, and whatever is killed, sees the old or the new
  /// text, whole.
  virtual WriteOutcome Update(const std::string& application,
                              const std::function<std::string(const std::string&)>& merge) = 0;
  /// Moves a file that cannot be parsed out of the way; returns the new path, empty when that failed.
  virtual std::string SetAside(const std::string& application) = 0;
  /// Changes whenever the file is replaced (time, inode, size folded into one number); 0 when there is none.
  [[nodiscard]] virtual unsigned long long Stamp(const std::string& application) const = 0;
  [[nodiscard]] virtual std::string PathOf(const std::string& application) const = 0;
};

}  // namespace spectrino
