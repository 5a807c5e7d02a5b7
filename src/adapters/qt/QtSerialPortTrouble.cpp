#include "adapters/qt/QtSerialPortTrouble.h"

#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace spectrino {
namespace {

/// "name (process 123)" of a program that has the device open, if one is seen. Programs of other
/// users do not show what they have open.
SerialPortHolder HolderOf(const QString& device) {
  const QDir processes("/proc");
  for (const QString& process : processes.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    bool isNumber = false;
    const qlonglong id = process.toLongLong(&isNumber);
    if (!isNumber || id == ::getpid()) continue;
    const QDir files(QString("/proc/%1/fd").arg(process));
    for (const QString& file : files.entryList(QDir::Files | QDir::System)) {
      if (QFile::symLinkTarget(files.filePath(file)) != device) continue;
      QFile name(QString("/proc/%1/comm").arg(process));
      const QString number = QString("process %1").arg(process);
      const QString text = name.open(QIODevice::ReadOnly)
                               ? QString("%1 (%2)").arg(QString::fromUtf8(name.readAll()).trimmed(), number)
                               : number;
      return {text.toStdString(), processes.filePath(process).toStdString(), true};
    }
  }
  return {"another program", {}, true};
}

QString Trouble(const QString& path, bool refused, const QString& systemText, SerialPortHolder& holder) {
  const QFileInfo node(path);
  if (!node.exists()) return QString("%1 is not there: is the cable in, and the radio on?").arg(path);
  if (::access(QFile::encodeName(path).constData(), R_OK | W_OK) != 0) {
    return QString("%1 belongs to the group \"%2\"; add your user to that group and log in again")
        .arg(path, node.group());
  }
  if (!refused) return QString("%1 cannot be opened: %2").arg(path, systemText);
  const bool ended = !holder.Process.empty() && !QFileInfo::exists(QString::fromStdString(holder.Process));
  if (!holder.Sought || ended) holder = HolderOf(node.canonicalFilePath());
  return QString("%1 is in use by %2").arg(path, QString::fromStdString(holder.Text));
}

}  // namespace

std::string SerialPortTrouble(const std::string& path, bool refused, const std::string& systemText,
                              SerialPortHolder& holder) {
  return Trouble(QString::fromStdString(path), refused, QString::fromStdString(systemText), holder)
      .toStdString();
}

std::string SerialPortLoss(const std::string& path, const std::string& device,
                           const std::string& systemText) {
  if (!QFileInfo::exists(QString::fromStdString(device))) return path + " was unplugged";
  return path + " is gone: " + systemText;
}

}  // namespace spectrino
