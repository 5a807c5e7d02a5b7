// Setup, first page: letting other programs use the radio, from where, and whether they may transmit.
// Controls and their fields; serves nothing.
#pragma once

#include <QGroupBox>
#include <QObject>

#include "settings/ui/SetupFields.h"
#include "settings/ui/SetupWidgets.h"

namespace spectrino::setup {

class CatServerFrame final : public QObject {
  Q_OBJECT
 public:
  explicit CatServerFrame(QWidget* page);

  void AddFields(SetupFields& fields);
  /// Where programs find the radio now, or why not; empty: nothing is served.
  void ShowPlace(const QString& place);

  QGroupBox* fraCatServer;

 private:
  void Explain();

  QCheckBox* chkCatServer_;
  QLineEdit* txtCatServerPort_;
  QLineEdit* txtCatServerAddress_;
  QCheckBox* chkCatServerPtt_;
  QCheckBox* chkCatServerTerminal_;
  QLabel* lblCatServer_;
  QString place_;
};

}  // namespace spectrino::setup
