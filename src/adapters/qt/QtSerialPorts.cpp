#include "adapters/qt/QtSerialPorts.h"

#include <QDir>
#include <QFileInfo>
#include <QSerialPortInfo>
#include <algorithm>

namespace spectrino {
namespace {

constexpr char kById[] = "/dev/serial/by-id";

/// The name below by-id that leads to the device; empty when udev made none.
QString LastingPath(const QString& device) {
  const QDir folder(kById);
  for (const QFileInfo& link : folder.entryInfoList(QDir::System | QDir::Files)) {
    if (link.canonicalFilePath() == device) return link.filePath();
  }
  return {};
}

}  // namespace

bool QtSerialPorts::SameDevice(const std::string& one, const std::string& other) const {
  const QString device = QFileInfo(QString::fromStdString(one)).canonicalFilePath();
  return one == other ||
         (!device.isEmpty() && device == QFileInfo(QString::fromStdString(other)).canonicalFilePath());
}

bool QtSerialPorts::Exists(const std::string& path) const {
  return QFileInfo::exists(QString::fromStdString(path));
}

std::vector<SerialPortEntry> QtSerialPorts::List() const {
  std::vector<SerialPortEntry> lasting;
  std::vector<SerialPortEntry> others;
  for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
    const QString description = info.description().isEmpty() ? QString("Serial port") : info.description();
    const QString serial =
        info.serialNumber().isEmpty() ? QString() : QString(" (%1)").arg(info.serialNumber());
    const QString label = QString("%1%2 - %3").arg(description, serial, info.portName());
    const QString path = LastingPath(QFileInfo(info.systemLocation()).canonicalFilePath());
    if (path.isEmpty())
      others.push_back({label.toStdString(), info.systemLocation().toStdString()});
    else
      lasting.push_back({label.toStdString(), path.toStdString()});
  }
  lasting.insert(lasting.end(), others.begin(), others.end());
  return lasting;
}

}  // namespace spectrino
