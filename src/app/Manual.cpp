#include "app/Manual.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

namespace spectrino {

namespace {

constexpr const char* kNotFound = "File not found";

QString ManualPath() {
  return QDir::cleanPath(
      QDir(QCoreApplication::applicationDirPath()).filePath("../share/spectrino/manual.html"));
}

}  // namespace

std::string OpenManual(const std::string& chapter) {
  const QString path = ManualPath();
  if (!QFileInfo::exists(path)) return kNotFound;
  QUrl url = QUrl::fromLocalFile(path);
  if (!chapter.empty()) url.setFragment(QString::fromStdString(chapter));
  return QDesktopServices::openUrl(url) ? "" : "No association for file extension";
}

Cure ManualCure(const std::string& problem) {
  const std::string path = ManualPath().toStdString();
  if (problem == kNotFound) return {.Text = "Install Spectrino again: its manual belongs at " + path + "."};
  return Cure::ShowFolder("Install a web browser, or open the manual yourself: " + path + ".", path);
}

}  // namespace spectrino
