// Setup, first page: the frames of a K4, its network address and its second receiver.
#pragma once

#include <QObject>

#include "settings/SetupView.h"
#include "settings/ui/SetupFields.h"
#include "settings/ui/SetupWidgets.h"

namespace spectrino::setup {

class K4Frames final : public QObject {
  Q_OBJECT
 public:
  explicit K4Frames(QWidget* page);

  void AddFields(SetupFields& fields);
  void Show(const SetupView& view);

  QGroupBox* fraK4;
  QGroupBox* fraMiscK4;

 private:
  QLineEdit* txtK4_[3];
  QCheckBox* chkMinipan_;
};

}  // namespace spectrino::setup
