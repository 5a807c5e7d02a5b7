#include "adapters/posix/PosixSettingsFile.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cassert>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string_view>

#include "adapters/posix/FileSystem.h"
#include "adapters/posix/ForeignWrites.h"

namespace spectrino {
namespace {

/// How coarse the kernel's file times may be, with a margin (a tick at 100 Hz is 10 ms).
constexpr long long kFileTimeTickNs = 20'000'000;

/// Against a program that rewrites its file all the time.
constexpr int kMostTries = 5;

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

WriteOutcome PosixSettingsFile::Update(
    const std::string& application,
    const std::function<std::optional<std::string>(const std::string&)>& merge) {
  const std::string path = PathOf(application);
  if (std::string reason = posix::MakeFolder(folder_); !reason.empty()) return {false, reason, false};
  std::string reason;
  bool held = false;
  const posix::Descriptor lock = posix::Lock(path + ".lock", lockWait_, reason, held);
  if (!lock.Open()) return {false, reason, held};
  const std::string target = posix::FollowLinks(path);
  for (int tries = 1;; ++tries) {
    const auto old = posix::ReadSettled(path, lock.Get(), posix::Patience::Wait, reason);
    // What cannot be read must not be replaced: it may be all the settings there are.
    if (!old) return {false, reason, false};
    const std::optional<std::string> text = merge(old->Text);
    if (!text) return {};
    reason = posix::WriteBeside(target, *text);
    if (!reason.empty()) return {false, reason, false};
    // Writing took its time, and who knows nothing of the lock may have come in between.
    if (tries < kMostTries && posix::VersionOf(path) != old->Version) {
      posix::DropBeside(target);
      continue;
    }
    reason = posix::TakePlace(target);
    if (reason.empty()) posix::NoteVersion(lock.Get(), posix::VersionOf(path));
    return {reason.empty(), reason, false};
  }
}

AsideOutcome PosixSettingsFile::SetAside(const std::string& application,
                                         const std::function<bool(const std::string&)>& isBad) {
  const std::string path = PathOf(application);
  std::string reason;
  bool held = false;
  const posix::Descriptor lock = posix::Lock(path + ".lock", std::chrono::milliseconds(0), reason, held);
  if (!lock.Open()) return {held ? AsideState::NotNow : AsideState::Failed, {}};
  const auto text = posix::ReadSettled(path, lock.Get(), posix::Patience::None, reason);
  if (!text) return {AsideState::Failed, {}};
  if (!isBad(text->Text)) return {AsideState::GoodNow, {}};
  if (!text->Settled) return {AsideState::NotNow, {}};
  const std::string aside = FreeName(path);
  if (std::rename(path.c_str(), aside.c_str()) != 0) return {AsideState::Failed, {}};
  posix::NoteVersion(lock.Get(), {});
  return {AsideState::Moved, aside};
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
