#include "app/OutputFile.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <QFile>
#include <cerrno>
#include <csignal>
#include <cstring>

#include "adapters/posix/FileSystem.h"

namespace spectrino {
namespace {

constexpr int kMostWaitMs = 2000;

/// 0, or the error.
int WriteWhole(int fd, const QByteArray& content) {
  for (qsizetype done = 0; done < content.size();) {
    const ssize_t count =
        ::write(fd, content.constData() + done, static_cast<std::size_t>(content.size() - done));
    if (count >= 0) {
      done += count;
      continue;
    }
    if (errno == EINTR) continue;
    if (errno != EAGAIN) return errno;
    pollfd room{fd, POLLOUT, 0};
    if (::poll(&room, 1, kMostWaitMs) == 0) return ETIMEDOUT;
  }
  return 0;
}

}  // namespace

QString WriteOutput(const QString& path, const QByteArray& content) {
  std::signal(SIGPIPE, SIG_IGN);  // a reader that leaves is an error like others
  const QByteArray name = QFile::encodeName(path);
  posix::Descriptor fd(::open(name.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_CLOEXEC, 0666));
  if (!fd.Open()) {
    const QString reason = errno == ENXIO ? "nobody reads it" : QString::fromLocal8Bit(std::strerror(errno));
    return "cannot write " + path + ": " + reason;
  }
  int error = WriteWhole(fd.Get(), content);
  // Disks that are shared or counted tell at the end that there was no room. Pipes and devices have no sync.
  if (error == 0 && ::fsync(fd.Get()) != 0 && errno != EINVAL && errno != EROFS) error = errno;
  if (!fd.Close() && error == 0) error = errno;
  return error == 0 ? QString()
                    : "cannot write " + path + ": " + QString::fromLocal8Bit(std::strerror(error));
}

}  // namespace spectrino
