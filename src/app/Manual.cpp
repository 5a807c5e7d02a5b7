#include "app/Manual.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

namespace spectrino {

std::string OpenManual(const std::string& chapter) {
  const QString path =
      QDir(QCoreApplication::applicationDirPath()).filePath("../share/spectrino/manual.html");
  if (!QFileInfo::exists(path)) return "File not found";
  QUrl url = QUrl::fromLocalFile(QDir::cleanPath(path));
  if (!chapter.empty()) url.setFragment(QString::fromStdString(chapter));
  return QDesktopServices::openUrl(url) ? "" : "No association for file extension";
}

}  // namespace spectrino
