#include "adapters/qt/QtSerialPortTrouble.h"

#include <unistd.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

namespace spectrino {
namespace {

constexpr int kSearchMs = 30;

/// "name (process 123)" of a program that has the device open; empty when none is seen. Programs of other
/// users do not show what they have open, and a search that takes long is given up: it holds up the window.
QString HolderOf(const QString& device) {
  QElapsedTimer time;
  time.start();
  const QDir processes("/proc");
  for (const QString& process : processes.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    bool isNumber = false;
    const qlonglong id = process.toLongLong(&isNumber);
    if (!isNumber || id == ::getpid()) continue;
    if (time.elapsed() > kSearchMs) break;
    const QDir files(QString("/proc/%1/fd").arg(process));
    for (const QString& file : files.entryList(QDir::Files | QDir::System)) {
      if (QFile::symLinkTarget(files.filePath(file)) != device) continue;
      QFile name(QString("/proc/%1/comm").arg(process));
      if (!name.open(QIODevice::ReadOnly)) return QString("process %1").arg(process);
      return QString("%1 (process %2)").arg(QString::fromUtf8(name.readAll()).trimmed(), process);
    }
  }
  return {};
}

QString Trouble(const QString& path, bool refused, const QString& systemText) {
  const QFileInfo node(path);
  if (!node.exists()) return QString("%1 is not there").arg(path);
  if (::access(QFile::encodeName(path).constData(), R_OK | W_OK) != 0) {
    return QString("%1 belongs to the group \"%2\"; add your user to that group and log in again")
        .arg(path, node.group());
  }
  if (!refused) return QString("%1 cannot be opened: %2").arg(path, systemText);
  const QString holder = HolderOf(node.canonicalFilePath());
  return QString("%1 is in use by %2").arg(path, holder.isEmpty() ? QString("another program") : holder);
}

}  // namespace

std::string SerialPortTrouble(const std::string& path, bool refused, const std::string& systemText) {
  return Trouble(QString::fromStdString(path), refused, QString::fromStdString(systemText)).toStdString();
}

std::string SerialPortLoss(const std::string& device, const std::string& systemText) {
  const QString node = QString::fromStdString(device);
  const QString name = node.startsWith("/dev/") ? node.mid(5) : node;
  if (!QFileInfo::exists(node)) return (name + " was unplugged").toStdString();
  return (name + " is gone: ").toStdString() + systemText;
}

}  // namespace spectrino
