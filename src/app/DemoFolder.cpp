#include "app/DemoFolder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <ctime>

namespace spectrino {
namespace {

constexpr const char* kPrefix = "spectrino-demo-";
/// Another demo may have made its folder and not locked it yet.
constexpr std::time_t kYoungSeconds = 5;

posix::Descriptor Hold(const QString& path) {
  const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  posix::Descriptor folder(fd);
  if (folder.Open() && ::flock(fd, LOCK_EX | LOCK_NB) != 0) folder.Close();
  return folder;
}

void RemoveLeftovers() {
  for (const QFileInfo& entry :
       QDir(QDir::tempPath()).entryInfoList({QString(kPrefix) + "*"}, QDir::Dirs | QDir::NoSymLinks)) {
    const posix::Descriptor folder = Hold(entry.filePath());
    struct stat info {};
    if (!folder.Open() || ::fstat(folder.Get(), &info) != 0) continue;
    if (info.st_uid == ::getuid() && std::time(nullptr) - info.st_mtime > kYoungSeconds)
      QDir(entry.filePath()).removeRecursively();
  }
}

}  // namespace

DemoFolder::DemoFolder()
    : folder_((RemoveLeftovers(), QDir::tempPath() + "/" + kPrefix + "XXXXXX")),
      held_(Hold(folder_.path())) {}

}  // namespace spectrino
