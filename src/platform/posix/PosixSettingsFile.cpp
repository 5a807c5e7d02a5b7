#include "platform/posix/PosixSettingsFile.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cassert>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string_view>

#include "platform/posix/FileSystem.h"

namespace spectrino {
namespace {

/// How coarse the kernel's file times may be, with a margin (a tick at 100 Hz is 10 ms).
constexpr long long kFileTimeTickNs = 20'000'000;

long long Nanoseconds(const timespec& time) {
  return static_cast<long long>(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

/// FNV-1a over whole numbers: enough to tell one version of a file from the next.
unsigned long long Fold(unsigned long long hash, std::uint64_t value) {
  for (int byte = 0; byte < 8; ++byte) hash = (hash ^ (value >> (8 * byte) & 0xFF)) * 1099511628211ULL;
  return hash;
}

/// A name beside path that nothing has yet: path.corrupt-20240131-235959, then with -2, -3 ...
std::string FreeName(const std::string& path) {
  char time[32] = "";
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  if (::localtime_r(&now, &local)) std::strftime(time, sizeof time, "%Y%m%d-%H%M%S", &local);
  const std::string base = path + ".corrupt-" + time;
  std::string name = base;
  struct stat found {};
  for (int i = 2; i < 100 && ::lstat(name.c_str(), &found) == 0; ++i) name = base + "-" + std::to_string(i);
  return name;
}

}  // namespace

std::string DefaultSettingsFolder() {
  // A relative XDG_CONFIG_HOME is to be ignored: it would depend on where the program was started.
  if (const char* config = std::getenv("XDG_CONFIG_HOME"); config && config[0] == '/')
    return std::string(config) + "/spectrino";
  const char* home = std::getenv("HOME");
  if (!home || home[0] != '/') {
    const passwd* user = ::getpwuid(::getuid());
    home = user ? user->pw_dir : "";
  }
  return std::string(home) + "/.config/spectrino";
}

PosixSettingsFile::PosixSettingsFile(std::string folder, std::chrono::milliseconds lockWait)
    : folder_(std::move(folder)), lockWait_(lockWait) {}

std::string PosixSettingsFile::PathOf(const std::string& application) const {
  assert(!application.empty() && application.find('/') == std::string::npos);
  return folder_ + "/" + application + ".ini";
}

std::optional<std::string> PosixSettingsFile::Read(const std::string& application, std::string& reason) {
  return posix::ReadWhole(PathOf(application), reason);
}

WriteOutcome PosixSettingsFile::Update(const std::string& application,
                                       const std::function<std::string(const std::string&)>& merge) {
  const std::string path = PathOf(application);
  if (std::string reason = posix::MakeFolder(folder_); !reason.empty()) return {false, reason};
  std::string reason;
  const posix::Descriptor lock = posix::Lock(path + ".lock", lockWait_, reason);
  if (!lock.Open()) return {false, reason};
  const std::optional<std::string> old = posix::ReadWhole(path, reason);
  // What cannot be read must not be replaced: it may be all the settings there are.
  if (!reason.empty()) return {false, reason};
  const std::string text = merge(old.value_or(""));
  if (old.value_or("") == text) return {};
  reason = posix::ReplaceWhole(posix::FollowLinks(path), text);
  return {reason.empty(), reason};
}

std::string PosixSettingsFile::SetAside(const std::string& application) {
  const std::string path = PathOf(application);
  std::string reason;
  const posix::Descriptor lock = posix::Lock(path + ".lock", lockWait_, reason);
  if (!lock.Open()) return {};
  const std::string aside = FreeName(path);
  return std::rename(path.c_str(), aside.c_str()) == 0 ? aside : std::string();
}

unsigned long long PosixSettingsFile::Stamp(const std::string& application) const {
  struct stat info {};
  if (::stat(PathOf(application).c_str(), &info) != 0) return 0;
  const long long changed = Nanoseconds(info.st_mtim);
  unsigned long long stamp = 14695981039346656037ULL;
  for (const std::uint64_t value :
       {static_cast<std::uint64_t>(changed), static_cast<std::uint64_t>(Nanoseconds(info.st_ctim)),
        static_cast<std::uint64_t>(info.st_ino), static_cast<std::uint64_t>(info.st_size)})
    stamp = Fold(stamp, value);
  // A program that writes in place may write again within the same tick of the file clock, and nothing
  // above would move. Until the tick is over, every look counts as a change.
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);
  const long long age = Nanoseconds(now) - changed;
  if (age >= 0 && age < kFileTimeTickNs) stamp = Fold(stamp, static_cast<std::uint64_t>(age));
  return stamp == 0 ? 1 : stamp;
}

}  // namespace spectrino
