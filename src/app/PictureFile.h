// Saves the picture where the operator says. Written beside the window's thread; what became of it is told.
#pragma once

#include <QObject>
#include <QString>
#include <QThreadPool>
#include <QWidget>

#include "display/PanDisplay.h"
#include "platform/Notifier.h"

namespace spectrino {

class PictureFile final : public QObject {
  Q_OBJECT
 public:
  /// All outlive it.
  PictureFile(PanDisplay& display, Notifier& user, QWidget* window);
  /// Waits for a picture that is being written.
  ~PictureFile() override = default;

  /// The picture as it is at this moment; asks where to, with a name that says what it is.
  void Save();

 signals:
  void Saved(const QString& path);

 private:
  void Write(const QImage& picture, const QString& path);
  void Written(const QString& path, const QString& problem);

  PanDisplay& display_;
  Notifier& user_;
  QWidget* window_;
  QString folder_;    ///< where the last one went
  QThreadPool pool_;  ///< last: ends before what it tells its outcome to
};

}  // namespace spectrino
