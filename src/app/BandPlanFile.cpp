#include "app/BandPlanFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <optional>

#include "adapters/posix/FileSystem.h"
#include "adapters/posix/PosixSettingsFile.h"

namespace spectrino {
namespace {

/// Beside the program, in the build tree as where it is installed; else among the desktop's shared files.
QString SharedFile(const QString& name) {
  const QString beside = QDir(QCoreApplication::applicationDirPath()).filePath("../share/spectrino/" + name);
  if (QFile::exists(beside)) return beside;
  return QStandardPaths::locate(QStandardPaths::GenericDataLocation, "spectrino/" + name);
}

}  // namespace

BandPlan BandPlanFile::Read(const std::string& path) {
  std::string trouble;
  ReadBandPlan read;
  if (const auto text = posix::ReadWhole(path, trouble)) {
    read = ParseBandPlan(*text);
    if (!read.Trouble.empty()) trouble = "Band plan " + path + ": " + read.Trouble;
  }
  if (!trouble.empty() && trouble != told_) user_.Log(LogArea::Ui, trouble);
  if (!trouble.empty()) told_ = trouble;
  return std::move(read.Plan);
}

BandPlan BandPlanFile::Load(int region) {
  if (region == 0) return {};
  BandPlan own = Read(DefaultSettingsFolder() + "/bandplan.json");
  if (!own.Empty()) return own;
  const QString shared = SharedFile(QString("bandplan/region%1.json").arg(region));
  return shared.isEmpty() ? BandPlan() : Read(QFile::encodeName(shared).toStdString());
}

}  // namespace spectrino
