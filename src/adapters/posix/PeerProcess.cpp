#include "adapters/posix/PeerProcess.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cctype>
#include <cstdio>
#include <fstream>
#include <memory>
#include <string_view>

namespace spectrino::posix {
namespace {

struct CloseFolder {
  void operator()(DIR* folder) const { ::closedir(folder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

/// sl local_address rem_address st tx:rx tr:when retrnsmt uid timeout inode ..., addresses as HEX:PORT
unsigned long InodeIn(const char* table, std::uint16_t localPort, std::uint16_t remotePort) {
  std::ifstream lines(table);
  std::string line;
  while (std::getline(lines, line)) {
    unsigned local = 0;
    unsigned remote = 0;
    unsigned long inode = 0;
    const int found = std::sscanf(
        line.c_str(), " %*d: %*[0-9A-Fa-f]:%x %*[0-9A-Fa-f]:%x %*x %*x:%*x %*x:%*x %*x %*u %*u %lu", &local,
        &remote, &inode);
    if (found == 3 && local == localPort && remote == remotePort && inode != 0) return inode;
  }
  return 0;
}

bool Holds(const std::string& process, std::string_view socket) {
  const std::string path = process + "/fd";
  const Folder folder(::opendir(path.c_str()));  // another user's cannot be opened
  if (!folder) return false;
  while (const dirent* entry = ::readdir(folder.get())) {
    std::array<char, 64> target{};
    const ssize_t length = ::readlinkat(::dirfd(folder.get()), entry->d_name, target.data(), target.size());
    if (length > 0 && std::string_view(target.data(), static_cast<std::size_t>(length)) == socket)
      return true;
  }
  return false;
}

}  // namespace

std::string PeerProcess(std::uint16_t peerPort, std::uint16_t ownPort) {
  unsigned long inode = InodeIn("/proc/net/tcp", peerPort, ownPort);
  if (inode == 0) inode = InodeIn("/proc/net/tcp6", peerPort, ownPort);
  const Folder processes(inode != 0 ? ::opendir("/proc") : nullptr);
  if (!processes) return {};
  const std::string socket = "socket:[" + std::to_string(inode) + "]";
  while (const dirent* entry = ::readdir(processes.get())) {
    const std::string process = std::string("/proc/") + entry->d_name;
    if (std::isdigit(static_cast<unsigned char>(entry->d_name[0])) == 0 || !Holds(process, socket)) continue;
    std::ifstream file(process + "/comm");
    std::string name;
    std::getline(file, name);
    return name;
  }
  return {};
}

}  // namespace spectrino::posix
