// Files that other programs write without asking for the lock: told apart from those that our own writers
// left, and read only once their writer is done.
// Knows nothing of what is in them.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>

namespace spectrino::posix {

/// One version of a file; all zero when there is none.
struct FileVersion {
  std::uint64_t Inode = 0;
  std::int64_t Bytes = 0;
  std::int64_t ChangedNs = 0;  ///< time of the last change of the content, since 1970
  bool operator==(const FileVersion&) const = default;
};
[[nodiscard]] FileVersion VersionOf(const std::string& path);

/// What the last holder of the lock left, as it noted it in the lock file. Nothing before the first note.
[[nodiscard]] std::optional<FileVersion> NotedVersion(int lock);
/// Notes version in the lock file; a note that cannot be made only costs the next writer a wait.
void NoteVersion(int lock, const FileVersion& version);

/// How far a text can be trusted to be whole.
struct SettledText {
  std::string Text;  ///< empty when there is no file
  FileVersion Version;
  bool Settled = true;  ///< false: it was still being changed when the patience ended
};

enum class Patience {
  Wait,  ///< look again until it was unchanged for 50 ms (250 ms when it shrank), 500 ms at most
  None
};

/// Under the lock: the text of path. What a holder of the lock left is whole and taken at once; anything
/// else may be in the middle of a rewrite in place. Nothing: it cannot be read, and reason tells why.
[[nodiscard]] std::optional<SettledText> ReadSettled(const std::string& path, int lock, Patience patience,
                                                     std::string& reason);

}  // namespace spectrino::posix
