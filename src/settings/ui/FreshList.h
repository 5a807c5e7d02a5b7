// A list of things that come and go with their plugs: asks for them anew whenever it is opened.
#pragma once

#include <QComboBox>

namespace spectrino::setup {

class FreshList final : public QComboBox {
  Q_OBJECT
 public:
  using QComboBox::QComboBox;
  void showPopup() override {
    emit AboutToShow();
    QComboBox::showPopup();
  }
 signals:
  void AboutToShow();
};

}  // namespace spectrino::setup
