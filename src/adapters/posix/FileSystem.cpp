#include "adapters/posix/FileSystem.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>
#include <thread>

namespace spectrino::posix {
namespace {

/// Far above any settings file: a guard against a name that leads to a disk image.
constexpr off_t kMostBytes = 64 << 20;

bool WriteAll(int fd, const std::string& text) {
  std::size_t done = 0;
  while (done < text.size()) {
    const ssize_t count = ::write(fd, text.data() + done, text.size() - done);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    done += static_cast<std::size_t>(count);
  }
  return true;
}

/// The name of a renamed file is on disk only when its folder is. 0, or the error; closing must not change
/// it.
int SyncFolder(const std::string& folder) {
  const Descriptor fd(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!fd.Open()) return errno;
  // Some file systems have no sync for folders; rename is all that they offer.
  return ::fsync(fd.Get()) == 0 || errno == EINVAL ? 0 : errno;
}

std::string NewName(const std::string& path) {
  return path + ".new";
}

/// Writes text to a new file that takes over the access rights of the one it will replace.
std::string WriteNew(const std::string& temporary, const std::string& replaced, const std::string& text) {
  // Only the lock's holder comes here: a file of this name was left by a writer that was killed.
  ::unlink(temporary.c_str());
  Descriptor fd(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
  if (!fd.Open()) return Failure("create", temporary, errno);
  struct stat old {};
  if (::stat(replaced.c_str(), &old) == 0 && ::fchmod(fd.Get(), old.st_mode & 07777) != 0)
    return Failure("set the access rights of", temporary, errno);
  if (!WriteAll(fd.Get(), text)) return Failure("write", temporary, errno);
  if (::fsync(fd.Get()) != 0) return Failure("write to disk", temporary, errno);
  if (!fd.Close()) return Failure("finish writing", temporary, errno);
  return {};
}

/// " (name, process 123)" of who holds the flock on this file, as far as the kernel tells; else empty.
std::string LockHolder(int fd) {
  struct stat info {};
  if (::fstat(fd, &info) != 0) return {};
  std::ifstream locks("/proc/locks");
  // "1: FLOCK  ADVISORY  WRITE 1234 08:02:5678 0 EOF"; device numbers differ on some file systems.
  const std::string inode = ":" + std::to_string(info.st_ino) + " ";
  for (std::string line; std::getline(locks, line);) {
    if (line.find(" FLOCK ") == std::string::npos || line.find("->") != std::string::npos) continue;
    if (line.find(inode) == std::string::npos) continue;
    std::istringstream words(line);
    std::string number, kind, advisory, access;
    long process = 0;
    if (!(words >> number >> kind >> advisory >> access >> process) || process <= 0) continue;
    std::string name;
    std::getline(std::ifstream("/proc/" + std::to_string(process) + "/comm"), name);
    // A process that has ended left the lock to one that it started: no name is better than its own.
    return name.empty() ? "" : " (" + name + ", process " + std::to_string(process) + ")";
  }
  return {};
}

}  // namespace

bool Descriptor::Close() {
  return fd_ < 0 || ::close(std::exchange(fd_, -1)) == 0;
}

std::string Failure(const char* what, const std::string& path, int error) {
  return std::string("Cannot ") + what + " " + path + ": " + std::generic_category().message(error);
}

std::string MakeFolder(const std::string& folder) {
  if (folder.empty() || ::mkdir(folder.c_str(), 0700) == 0) return {};
  int error = errno;
  if (error == ENOENT) {
    const std::string above = std::filesystem::path(folder).parent_path().string();
    if (std::string reason = MakeFolder(above); !reason.empty()) return reason;
    if (::mkdir(folder.c_str(), 0700) == 0) return {};
    error = errno;
  }
  struct stat found {};
  if (error == EEXIST && ::stat(folder.c_str(), &found) == 0) {
    if (S_ISDIR(found.st_mode)) return {};
    error = ENOTDIR;
  }
  return Failure("use the folder", folder, error);
}

Descriptor Lock(const std::string& path, std::chrono::milliseconds wait, std::string& reason) {
  bool heldByAnother = false;
  return Lock(path, wait, reason, heldByAnother);
}

Descriptor Lock(const std::string& path, std::chrono::milliseconds wait, std::string& reason,
                bool& heldByAnother) {
  heldByAnother = false;
  Descriptor fd(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
  if (!fd.Open()) {
    reason = Failure("create the lock", path, errno);
    return Descriptor();
  }
  const auto end = std::chrono::steady_clock::now() + wait;
  while (::flock(fd.Get(), LOCK_EX | LOCK_NB) != 0) {
    if (errno == EINTR) continue;
    if (errno != EWOULDBLOCK) {
      reason = Failure("lock", path, errno);
      return Descriptor();
    }
    heldByAnother = true;
    if (std::chrono::steady_clock::now() >= end) {
      reason = "Another program" + LockHolder(fd.Get()) + " keeps " + path + " locked";
      return Descriptor();
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return fd;
}

std::optional<std::string> ReadWhole(const std::string& path, std::string& reason) {
  reason.clear();
  // Without O_NONBLOCK a pipe of this name would stop the program here.
  const Descriptor fd(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  if (!fd.Open()) {
    // ENOTDIR: the folder is a file; nothing can be there, and a write will say so.
    if (errno != ENOENT && errno != ENOTDIR) reason = Failure("read", path, errno);
    return std::nullopt;
  }
  struct stat info {};
  if (::fstat(fd.Get(), &info) != 0 || !S_ISREG(info.st_mode)) {
    reason = "Cannot read " + path + ": it is not a file";
    return std::nullopt;
  }
  if (info.st_size > kMostBytes) {
    reason = "Cannot read " + path + ": it is too large for a settings file";
    return std::nullopt;
  }
  std::string text;
  char block[16384];
  ssize_t count = 0;
  while ((count = ::read(fd.Get(), block, sizeof block)) != 0) {
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) {
      reason = Failure("read", path, errno);
      return std::nullopt;
    }
    text.append(block, static_cast<std::size_t>(count));
  }
  return text;
}

std::string WriteBeside(const std::string& path, const std::string& text) {
  std::string reason = WriteNew(NewName(path), path, text);
  if (!reason.empty()) DropBeside(path);
  return reason;
}

void DropBeside(const std::string& path) {
  ::unlink(NewName(path).c_str());
}

std::string TakePlace(const std::string& path) {
  if (::rename(NewName(path).c_str(), path.c_str()) != 0) {
    std::string reason = Failure("replace", path, errno);
    DropBeside(path);
    return reason;
  }
  const std::string folder = std::filesystem::path(path).parent_path().string();
  if (const int error = SyncFolder(folder)) return Failure("write to disk", folder, error);
  return {};
}

std::string FollowLinks(const std::string& path) {
  std::filesystem::path at = path;
  std::error_code error;
  // The bound is the kernel's own: more links than this do not open either.
  for (int i = 0; i < 40; ++i) {
    const auto next = std::filesystem::read_symlink(at, error);
    if (error) break;
    at = next.is_absolute() ? next : at.parent_path() / next;
  }
  return at.string();
}

}  // namespace spectrino::posix
