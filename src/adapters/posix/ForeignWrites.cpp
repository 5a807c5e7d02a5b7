#include "adapters/posix/ForeignWrites.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <thread>

#include "adapters/posix/FileSystem.h"

namespace spectrino::posix {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// Editors and scripts write what they have in one go; longer pauses lie between a truncation by the shell
/// and the first output of the command behind it.
constexpr milliseconds kRestOfAWriter{50};
constexpr milliseconds kRestWhenShrunk{250};
constexpr milliseconds kMostPatience{500};
constexpr milliseconds kBetweenLooks{5};

milliseconds AgeOf(const FileVersion& version) {
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);
  const std::int64_t nowNs = std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
  return milliseconds((nowNs - version.ChangedNs) / 1'000'000);
}

/// Whether its writer is done. A file that is gone, or from the future (a clock that was set), is judged by
/// the looks at it alone.
bool AtRest(const FileVersion& version, milliseconds rest, milliseconds unchangedFor) {
  return unchangedFor >= rest || (version != FileVersion{} && AgeOf(version) >= rest);
}

}  // namespace

FileVersion VersionOf(const std::string& path) {
  struct stat info {};
  if (::stat(path.c_str(), &info) != 0) return {};
  return {info.st_ino, info.st_size,
          std::int64_t{info.st_mtim.tv_sec} * 1'000'000'000 + info.st_mtim.tv_nsec};
}

std::optional<FileVersion> NotedVersion(int lock) {
  char text[100] = "";
  if (::pread(lock, text, sizeof text - 1, 0) <= 0) return std::nullopt;
  FileVersion version;
  if (std::sscanf(text, "%" SCNu64 " %" SCNd64 " %" SCNd64, &version.Inode, &version.Bytes,
                  &version.ChangedNs) != 3)
    return std::nullopt;
  return version;
}

void NoteVersion(int lock, const FileVersion& version) {
  char text[100];
  // Of one length, so that a shorter note needs no truncation.
  const int length = std::snprintf(text, sizeof text, "%20" PRIu64 " %20" PRId64 " %20" PRId64 "\n",
                                   version.Inode, version.Bytes, version.ChangedNs);
  [[maybe_unused]] const ssize_t written = ::pwrite(lock, text, static_cast<std::size_t>(length), 0);
}

std::optional<SettledText> ReadSettled(const std::string& path, int lock, Patience patience,
                                       std::string& reason) {
  const std::optional<FileVersion> noted = NotedVersion(lock);
  const auto start = steady_clock::now();
  auto unchangedSince = start;
  for (FileVersion version = VersionOf(path);;) {
    const auto now = steady_clock::now();
    const bool shrunk = version.Bytes == 0 || (noted && version.Bytes < noted->Bytes);
    // Never seen and not there: nothing to wait for.
    const bool atRest = version == noted.value_or(FileVersion{}) ||
                        AtRest(version, shrunk ? kRestWhenShrunk : kRestOfAWriter,
                               std::chrono::duration_cast<milliseconds>(now - unchangedSince));
    const bool goOn = patience == Patience::Wait && now - start < kMostPatience;
    if (atRest || !goOn) {
      std::optional<std::string> text = ReadWhole(path, reason);
      if (!text && !reason.empty()) return std::nullopt;
      // Changed during the read: what was read may be half of it.
      const bool same = VersionOf(path) == version;
      if (same || !goOn) return SettledText{text.value_or(""), version, same && atRest};
    }
    std::this_thread::sleep_for(kBetweenLooks);
    if (const FileVersion again = VersionOf(path); again != version) {
      version = again;
      unchangedSince = steady_clock::now();
    }
  }
}

}  // namespace spectrino::posix
