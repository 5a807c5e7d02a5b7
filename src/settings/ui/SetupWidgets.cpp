#include "settings/ui/SetupWidgets.h"

#include "controls/Controls.h"

namespace spectrino::setup {
namespace {

/// A control without a tool tip is called by its caption.
QString Spoken(const QString& caption, const QString& toolTip) {
  return toolTip.isEmpty() ? QString(caption).remove('&') : toolTip;
}

}  // namespace

QGroupBox* MakeFrame(const char* name, const QString& caption, QWidget* parent) {
  auto* frame = new QGroupBox(caption, parent);
  frame->setObjectName(name);
  auto* grid = new QGridLayout(frame);
  grid->setContentsMargins(8, 6, 8, 8);
  grid->setHorizontalSpacing(8);
  grid->setVerticalSpacing(5);
  return frame;
}

QGridLayout* GridOf(QGroupBox* frame) {
  return static_cast<QGridLayout*>(frame->layout());
}

QCheckBox* MakeCheck(const QString& name, const QString& caption, const QString& toolTip, QWidget* parent) {
  auto* check = new QCheckBox(caption, parent);
  Describe(*check, name, Spoken(caption, toolTip));
  return check;
}

QRadioButton* MakeOption(const QString& name, const QString& caption, const QString& toolTip,
                         QWidget* parent) {
  auto* option = new QRadioButton(caption, parent);
  Describe(*option, name, Spoken(caption, toolTip));
  return option;
}

QPushButton* MakeButton(const QString& name, const QString& caption, const QString& toolTip,
                        QWidget* parent) {
  return MakeDialogButton(name, caption, Spoken(caption, toolTip), parent);
}

QComboBox* MakeList(const QString& name, const QStringList& items, const QString& toolTip, QWidget* parent) {
  auto* list = new QComboBox(parent);
  Describe(*list, name, toolTip);
  list->addItems(items);
  return list;
}

QLineEdit* MakeText(const QString& name, const QString& toolTip, int widthChars, QWidget* parent) {
  auto* text = new QLineEdit(parent);
  Describe(*text, name, toolTip);
  text->setMinimumWidth(text->fontMetrics().horizontalAdvance(QString(widthChars, '0')) + 16);
  return text;
}

QLabel* AddRow(QGridLayout* grid, int row, const QString& label, QWidget* control, int column) {
  auto* caption = new QLabel(label, control->parentWidget());
  caption->setBuddy(control);
  grid->addWidget(caption, row, column);
  grid->addWidget(control, row, column + 1);
  return caption;
}

}  // namespace spectrino::setup
