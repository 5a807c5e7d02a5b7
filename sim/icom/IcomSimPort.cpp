#include "sim/icom/IcomSimPort.h"

#include <fcntl.h>
#include <pty.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <utility>

namespace spectrino {

IcomSimPort::IcomSimPort(const IcomSimSetup& setup, std::string linkPath, SimTime start)
    : radio_(setup, start), link_(std::move(linkPath)) {}

IcomSimPort::~IcomSimPort() {
  Unplug();
}

bool IcomSimPort::Open(std::string& reason) {
  Unplug();
  int client = -1;
  termios raw{};
  ::cfmakeraw(&raw);
  ::cfsetspeed(&raw, B115200);
  raw.c_cflag |= CREAD | CLOCAL;
  std::array<char, 128> name{};
  if (::openpty(&fd_, &client, name.data(), &raw, nullptr) != 0) {
    reason = std::string("no pseudo-terminal: ") + std::strerror(errno);
    fd_ = -1;
    return false;
  }
  terminal_ = name.data();
  // With the last client's end closed, reading fails: that is how a missing client is known.
  ::close(client);
  ::fcntl(fd_, F_SETFL, O_NONBLOCK);
  ::fcntl(fd_, F_SETFD, FD_CLOEXEC);
  if (MakeLink(reason)) return true;
  Unplug();
  return false;
}

bool IcomSimPort::MakeLink(std::string& reason) {
  if (link_.empty()) return true;
  struct stat old {};
  if (::lstat(link_.c_str(), &old) == 0 && S_ISLNK(old.st_mode)) ::unlink(link_.c_str());
  linked_ = ::symlink(terminal_.c_str(), link_.c_str()) == 0;
  if (!linked_) reason = link_ + ": " + std::strerror(errno);
  return linked_;
}

/// Another simulator may have taken the link over meanwhile.
bool IcomSimPort::LinkIsOurs() const {
  std::array<char, 128> target{};
  const ssize_t length = ::readlink(link_.c_str(), target.data(), target.size());
  return length > 0 && std::string_view(target.data(), static_cast<std::size_t>(length)) == terminal_;
}

void IcomSimPort::Unplug() {
  if (linked_ && LinkIsOurs()) ::unlink(link_.c_str());
  if (fd_ >= 0) ::close(fd_);
  fd_ = -1;
  linked_ = false;
  hadClient_ = false;
  terminal_.clear();
}

void IcomSimPort::Process(SimTime now) {
  if (fd_ >= 0) {
    const bool client = ReadAll(now);
    if (hadClient_ && !client) DropUnread();
    hadClient_ = client;
  }
  // The radio talks whether or not somebody listens.
  const SimBytes sent = radio_.Transmit(now);
  if (!hadClient_ || sent.empty()) return;
  // A full terminal means that nobody reads; a serial line has no memory either.
  [[maybe_unused]] const ssize_t written = ::write(fd_, sent.data(), sent.size());
}

/// False when no client has the terminal open.
bool IcomSimPort::ReadAll(SimTime now) {
  std::array<std::uint8_t, 1024> buffer;
  while (true) {
    const ssize_t got = ::read(fd_, buffer.data(), buffer.size());
    if (got > 0) {
      radio_.Receive(SimByteView(buffer.data(), static_cast<std::size_t>(got)), now);
      continue;
    }
    return got < 0 && (errno == EAGAIN || errno == EINTR);
  }
}

/// The next client must not find what the last one left.
void IcomSimPort::DropUnread() const {
  const int client = ::open(terminal_.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (client < 0) return;
  ::tcflush(client, TCIFLUSH);
  ::close(client);
}

}  // namespace spectrino
