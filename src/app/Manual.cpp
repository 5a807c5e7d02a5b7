#include "app/Manual.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

namespace spectrino {

bool OpenManual(const std::string& chapter) {
  const QString path =
      QDir(QCoreApplication::applicationDirPath()).filePath("../share/spectrino/manual.html");
  if (!QFileInfo::exists(path)) return false;
  QUrl url = QUrl::fromLocalFile(QDir::cleanPath(path));
  if (!chapter.empty()) url.setFragment(QString::fromStdString(chapter));
  return QDesktopServices::openUrl(url);
}

}  // namespace spectrino
