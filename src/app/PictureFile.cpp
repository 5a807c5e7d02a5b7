#include "app/PictureFile.h"

#include <QBuffer>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QImage>
#include <QSaveFile>
#include <QStandardPaths>

#include "display/PicturePrint.h"

namespace spectrino {
namespace {

/// Empty, or why it is not there. A picture of this name that was there before stays until the new one is
/// whole.
QString WritePng(const QImage& picture, const QString& path) {
  QSaveFile file(path);
  // A folder that takes no new files may still hold one that can be written.
  file.setDirectWriteFallback(true);
  if (!file.open(QIODevice::WriteOnly)) return file.errorString();
  if (!picture.save(&file, "PNG")) {
    const QString reason = file.errorString();
    file.cancelWriting();
    return reason;
  }
  return file.commit() ? QString() : file.errorString();
}

}  // namespace

PictureFile::PictureFile(PanDisplay& display, Notifier& user, QWidget* window)
    : display_(display),
      user_(user),
      window_(window),
      folder_(QStandardPaths::writableLocation(QStandardPaths::PicturesLocation)) {
  pool_.setMaxThreadCount(1);
  if (folder_.isEmpty() || !QDir(folder_).exists()) folder_ = QDir::homePath();
}

void PictureFile::Save() {
  // Taken now: nobody wants what the waterfall shows once a name has been typed.
  const QImage picture = PrintPicture(display_);
  if (picture.isNull()) return;
  const QString name = QDir(folder_).filePath(QString::fromStdString(PictureName(display_)));
  auto* dialog = new QFileDialog(window_, tr("Save picture"), name, tr("Pictures (*.png)"));
  dialog->setObjectName("dlgPicture");
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setDefaultSuffix("png");
  dialog->selectFile(name);
  connect(dialog, &QFileDialog::fileSelected, this,
          [this, picture](const QString& path) { Write(picture, path); });
  // Not exec: the run goes on behind it.
  dialog->open();
}

void PictureFile::Write(const QImage& picture, const QString& path) {
  folder_ = QFileInfo(path).path();
  pool_.start([this, picture, path] {
    const QString problem = WritePng(picture, path);
    QMetaObject::invokeMethod(
        this, [this, path, problem] { Written(path, problem); }, Qt::QueuedConnection);
  });
}

void PictureFile::Written(const QString& path, const QString& problem) {
  if (problem.isEmpty()) {
    emit Saved(path);
    return;
  }
  const QString text =
      tr("The picture was not saved as %1: %2.\nSave it again, in another folder or under another name.")
          .arg(QDir::toNativeSeparators(path), problem);
  user_.ShowMessage("Spectrino", text.toStdString(), Severity::Exclamation);
}

}  // namespace spectrino
