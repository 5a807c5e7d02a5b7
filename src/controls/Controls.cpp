#include "controls/Controls.h"

namespace spectrino {

void Describe(QWidget& control, const QString& toolTip) {
  control.setToolTip(toolTip);
  control.setAccessibleName(toolTip);
}

void Describe(QWidget& control, const QString& name, const QString& toolTip) {
  control.setObjectName(name);
  Describe(control, toolTip);
}

QPushButton* MakeButton(const QString& name, const QString& caption, const QString& toolTip,
                        QWidget* parent) {
  auto* button = new QPushButton(caption, parent);
  Describe(*button, name, toolTip);
  return button;
}

QPushButton* MakeToggle(const QString& name, const QString& caption, const QString& toolTip,
                        QWidget* parent) {
  QPushButton* button = MakeButton(name, caption, toolTip, parent);
  button->setCheckable(true);
  return button;
}

QPushButton* MakeDialogButton(const QString& name, const QString& caption, const QString& toolTip,
                              QWidget* parent) {
  QPushButton* button = MakeButton(name, caption, toolTip, parent);
  button->setAutoDefault(false);
  return button;
}

QSlider* MakeSlider(const QString& name, int low, int high, const QString& toolTip, QWidget* parent) {
  auto* slider = new QSlider(Qt::Horizontal, parent);
  slider->setRange(low, high);
  Describe(*slider, name, toolTip);
  return slider;
}

QLabel* MakeLabel(const QString& text, const char* role, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setProperty("role", role);
  return label;
}

}  // namespace spectrino
