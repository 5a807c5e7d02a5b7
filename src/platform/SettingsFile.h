// Keeps the text of one settings file. Knows nothing of what is in it.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace spectrino {

struct WriteOutcome {
  bool Ok = true;
  std::string Reason;  ///< when not Ok: what failed, on which path, in the user's terms
  bool Busy = false;   ///< when not Ok: another program holds the file, and may be done soon
};

enum class AsideState {
  Moved,    ///< out of the way, under the path that is told
  GoodNow,  ///< another program has mended or moved it meanwhile; nothing was done
  NotNow,   ///< another program is writing it at this moment
  Failed
};
struct AsideOutcome {
  AsideState State = AsideState::Failed;
  std::string Path;  ///< when moved: where it is now
};

/// Update may run on one thread beside the other operations on another.
class SettingsFile {
 public:
  virtual ~SettingsFile() = default;
  /// The whole text, or nothing when there is no file (or it cannot be read: then the reason is set).
  [[nodiscard]] virtual std::optional<std::string> Read(const std::string& application,
                                                        std::string& reason) = 0;
  /// Under the file's lock: hands the text now on disk to merge (empty when there is none) and replaces the
  /// file with what it returns, be it the same; nothing returned leaves the file alone. merge is called again
  /// when a program that knows no lock changed the file meanwhile. Whoever reads meanwhile, and whatever is
  /// killed, sees the old or the new text, whole. Takes up to seconds while others hold the lock or rewrite
  /// the file.
  virtual WriteOutcome Update(const std::string& application,
                              const std::function<std::optional<std::string>(const std::string&)>& merge) = 0;
  /// Moves a file that cannot be used out of the way, when isBad still says so of its text under the lock.
  /// Never waits.
  virtual AsideOutcome SetAside(const std::string& application,
                                const std::function<bool(const std::string&)>& isBad) = 0;
  /// Changes whenever the file is replaced (time, inode, size folded into one number); 0 when there is none.
  [[nodiscard]] virtual unsigned long long Stamp(const std::string& application) const = 0;
  [[nodiscard]] virtual std::string PathOf(const std::string& application) const = 0;
};

}  // namespace spectrino
