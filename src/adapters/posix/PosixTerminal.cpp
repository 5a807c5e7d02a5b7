#include "adapters/posix/PosixTerminal.h"

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace spectrino {
namespace {

constexpr std::chrono::milliseconds kNoWait{0};
/// In one turn: whoever writes without end must not stop the window.
constexpr int kMostReads = 8;

}  // namespace

PosixTerminal::~PosixTerminal() {
  DataArrival = nullptr;
  Left = nullptr;
  Close();
}

std::string PosixTerminal::Open() {
  Close();
  std::string problem = MakeTerminal();
  if (!problem.empty()) {
    Close();
    return problem;
  }
  if (!link_.empty()) MakeLink();
  return {};
}

std::string PosixTerminal::MakeTerminal() {
  const auto failed = [] { return std::string("no pseudo-terminal: ") + std::strerror(errno); };
  master_ = posix::Descriptor(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  std::array<char, 128> name{};
  if (!master_.Open() || ::grantpt(master_.Get()) != 0 || ::unlockpt(master_.Get()) != 0 ||
      ::ptsname_r(master_.Get(), name.data(), name.size()) != 0)
    return failed();
  name_ = name.data();
  client_ = posix::Descriptor(::open(name.data(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  if (!client_.Open()) return failed();
  MakeRaw();
  watch_ = posix::Descriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
  if (!watch_.Open() || ::inotify_add_watch(watch_.Get(), name.data(), IN_OPEN | IN_CLOSE) < 0)
    return failed();
  return {};
}

void PosixTerminal::MakeRaw() const {
  termios raw{};
  ::cfmakeraw(&raw);
  ::cfsetspeed(&raw, B38400);
  raw.c_cflag |= CREAD | CLOCAL;
  ::tcsetattr(client_.Get(), TCSANOW, &raw);
}

void PosixTerminal::MakeLink() {
  linkTrouble_ = posix::MakeFolder(link_.substr(0, link_.rfind('/')));
  if (!linkTrouble_.empty()) return;
  lock_ = posix::Lock(link_ + ".lock", kNoWait, linkTrouble_);
  if (!lock_.Open()) {
    linkTrouble_ = link_ + " belongs to another Spectrino that runs";
    return;
  }
  linkTrouble_.clear();
  struct stat old {};
  if (::lstat(link_.c_str(), &old) == 0 && S_ISLNK(old.st_mode)) ::unlink(link_.c_str());
  linked_ = ::symlink(name_.c_str(), link_.c_str()) == 0;
  if (!linked_) linkTrouble_ = posix::Failure("make", link_, errno);
}

bool PosixTerminal::LinkIsOurs() const {
  std::array<char, 128> target{};
  const ssize_t length = ::readlink(link_.c_str(), target.data(), target.size());
  return length > 0 && std::string_view(target.data(), static_cast<std::size_t>(length)) == name_;
}

void PosixTerminal::Close() {
  if (std::exchange(linked_, false) && LinkIsOurs()) ::unlink(link_.c_str());
  for (posix::Descriptor* held : {&watch_, &client_, &master_, &lock_}) held->Close();
  visitors_ = 0;
  name_.clear();
  linkTrouble_.clear();
}

void PosixTerminal::Write(std::string_view bytes) {
  if (!master_.Open() || bytes.empty()) return;
  // Half an answer would be taken for another one: a line that is full loses what nobody read.
  const ssize_t written = ::write(master_.Get(), bytes.data(), bytes.size());
  if (written != static_cast<ssize_t>(bytes.size())) ::tcflush(client_.Get(), TCIFLUSH);
}

void PosixTerminal::Process() {
  if (master_.Open()) ReadAll();
  if (watch_.Open()) CountVisitors();
}

void PosixTerminal::ReadAll() {
  std::array<std::uint8_t, 1024> buffer;
  for (int i = 0; i < kMostReads && master_.Open(); ++i) {
    const ssize_t got = ::read(master_.Get(), buffer.data(), buffer.size());
    if (got <= 0) return;
    if (const auto call = DataArrival) call(std::span(buffer).first(static_cast<std::size_t>(got)));
  }
}

void PosixTerminal::CountVisitors() {
  alignas(inotify_event) std::array<char, 4096> buffer;
  const ssize_t got = ::read(watch_.Get(), buffer.data(), buffer.size());
  for (ssize_t at = 0; at < got;) {
    const auto* event = reinterpret_cast<const inotify_event*>(buffer.data() + at);
    if ((event->mask & IN_OPEN) != 0) ++visitors_;
    if ((event->mask & IN_CLOSE) != 0 && visitors_ > 0) --visitors_;
    at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
  }
  if (got <= 0 || visitors_ != 0) return;
  // The next one must find neither the settings nor the unread answers of the last.
  ::tcflush(client_.Get(), TCIFLUSH);
  MakeRaw();
  if (const auto call = Left) call();
}

}  // namespace spectrino
