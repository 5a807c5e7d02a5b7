// The few file operations behind settings files, with errors as text instead of errno.
// Not a general file library.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>
#include <string>
#include <utility>

namespace spectrino::posix {

/// Owns a file descriptor.
class Descriptor {
 public:
  explicit Descriptor(int fd = -1) : fd_(fd) {}
  ~Descriptor() { Close(); }
  Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    if (this == &other) return *this;
    Close();
    fd_ = std::exchange(other.fd_, -1);
    return *this;
  }

  [[nodiscard]] bool Open() const { return fd_ >= 0; }
  [[nodiscard]] int Get() const { return fd_; }
  /// False when the system reports a late write error.
  bool Close();

 private:
  int fd_;
};

/// "Cannot <what> <path>: <the system's words for error>".
[[nodiscard]] std::string Failure(const char* what, const std::string& path, int error);

/// Creates folder and what is missing above it, private to the user. Empty reason: it is there.
[[nodiscard]] std::string MakeFolder(const std::string& folder);

/// Holds the lock until the descriptor closes; a killed holder frees it. Not open: reason tells why.
[[nodiscard]] Descriptor Lock(const std::string& path, std::chrono::milliseconds wait, std::string& reason);
/// heldByAnother: set when the lock was not free at once.
[[nodiscard]] Descriptor Lock(const std::string& path, std::chrono::milliseconds wait, std::string& reason,
                              bool& heldByAnother);

/// The whole of a regular file. Nothing and no reason: it does not exist. Nothing and a reason: unreadable.
[[nodiscard]] std::optional<std::string> ReadWhole(const std::string& path, std::string& reason);

/// Writes text to disk beside path, ready to take its place. Empty: done; else why not. As the two below only
/// under the lock of that file.
[[nodiscard]] std::string WriteBeside(const std::string& path, const std::string& text);
/// Gives up what was written beside path.
void DropBeside(const std::string& path);
/// Puts what was written beside path in its place, in one step and on disk when this returns. Empty: done;
/// else why not, and the old file stands untouched.
[[nodiscard]] std::string TakePlace(const std::string& path);

/// Where a path that may be a symbolic link, dangling or not, finally points.
[[nodiscard]] std::string FollowLinks(const std::string& path);

}  // namespace spectrino::posix
