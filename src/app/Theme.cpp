#include "app/Theme.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QStyleFactory>

namespace spectrino {
namespace {

constexpr char kStyleSheet[] = R"(
QWidget { color: #cfd8e3; }
QMainWindow, QDialog, QMessageBox, #HeaderPanel, #RangePanel, #Deck { background: #14181d; }
#HeaderPanel { border-bottom: 1px solid #262d36; }
#RangePanel { border-left: 1px solid #262d36; }
#Deck { border-top: 1px solid #262d36; }
QPushButton, QToolButton {
  background: #212831; border: 1px solid #303945; border-radius: 4px; min-height: 19px; padding: 0 6px; }
#RangePanel QPushButton, #Deck QPushButton { padding: 0; }
#Deck QPushButton { font-size: 10px; }
#cmdFoldDeck { min-height: 0; padding: 0; border: none; border-radius: 0; }
#RangePanel[dense="true"] QPushButton { min-height: 12px; font-size: 9px; border-radius: 3px; }
QPushButton:hover, QToolButton:hover { background: #2a333e; }
QPushButton:pressed, QPushButton:checked, QToolButton:checked {
  background: #17405a; border-color: #2a7fae; color: #e9f6ff; font-weight: bold; }
QPushButton:focus, QToolButton:focus, QComboBox:focus { border-color: #7cc4ee; }
QPushButton:disabled, QToolButton:disabled, QComboBox:disabled { color: #66717e; }
QPushButton#StartButton { background: #174a2c; border-color: #2b8a50; color: #d8ffe6; font-weight: bold; }
QPushButton#StopButton { background: #174a2c; border-color: #2b8a50; color: #d8ffe6; font-weight: bold; }
QPushButton#StartButton:focus, QPushButton#StopButton:focus { border-color: #7cc4ee; }
QComboBox { background: #1a2027; border: 1px solid #303945; border-radius: 4px; min-height: 19px; padding: 0 6px; }
QComboBox QAbstractItemView { background: #1a2027; selection-background-color: #17405a; }
QLineEdit { background: #1a2027; border: 1px solid #303945; border-radius: 3px; padding: 1px 4px; min-height: 18px; }
QLineEdit:focus { border-color: #7cc4ee; }
QLineEdit:disabled, QCheckBox:disabled, QRadioButton:disabled { color: #66717e; }
QCheckBox:focus, QRadioButton:focus, QTabBar::tab:focus { color: #7cc4ee; }
QCheckBox::indicator:unchecked, QRadioButton::indicator:unchecked {
  width: 11px; height: 11px; border: 1px solid #6b7886; background: #1a2027; border-radius: 2px; }
QRadioButton::indicator:unchecked { border-radius: 6px; }
QRadioButton::indicator:checked {
  width: 11px; height: 11px; border: 1px solid #7cc4ee; background: #2a7fae; border-radius: 6px; }
QLabel#lblLocked { background: #3a2a12; border: 1px solid #b4781a; border-radius: 3px; color: #ffd08a; padding: 3px 6px; }
QLabel[role="caption"] { color: #8d9aa9; font-size: 9px; }
QLabel[role="tag"] { color: #8d9aa9; font-size: 10px; }
QLabel[role="badge"] { color: #ffd27a; border: 1px solid #3b4653; border-radius: 3px; padding: 1px 5px; }
QLabel[role="split"] { background: #3a2a12; border: 1px solid #b4781a; border-radius: 3px; color: #ffd08a; padding: 1px 5px; }
QLabel[role="frequency"] { color: #ffffff; font-family: "DejaVu Sans Mono"; font-size: 22px; font-weight: bold; }
QLabel[role="frequencyB"] { color: #8fd19e; font-family: "DejaVu Sans Mono"; font-size: 13px; }
QLabel[role="meter"] { color: #00ffff; font-family: "DejaVu Sans Mono"; font-size: 14px; font-weight: bold; }
QLabel#lblStatus { background: #3a2a12; border: 1px solid #b4781a; border-radius: 3px; color: #ffd08a; padding: 2px 6px; }
QToolTip { background: #212831; color: #cfd8e3; border: 1px solid #303945; }
)";

}  // namespace

void ApplyTheme(QApplication& application) {
  // The same look on every desktop: metrics of a foreign style would cut captions at the smallest size.
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  QPalette palette;
  palette.setColor(QPalette::Window, QColor(0x14, 0x18, 0x1d));
  palette.setColor(QPalette::WindowText, QColor(0xcf, 0xd8, 0xe3));
  palette.setColor(QPalette::Base, QColor(0x1a, 0x20, 0x27));
  palette.setColor(QPalette::Text, QColor(0xcf, 0xd8, 0xe3));
  palette.setColor(QPalette::Button, QColor(0x21, 0x28, 0x31));
  palette.setColor(QPalette::ButtonText, QColor(0xcf, 0xd8, 0xe3));
  palette.setColor(QPalette::Highlight, QColor(0x2a, 0x7f, 0xae));
  palette.setColor(QPalette::HighlightedText, QColor(0xff, 0xff, 0xff));
  QApplication::setPalette(palette);
  QFont font("DejaVu Sans");
  font.setPixelSize(11);
  QApplication::setFont(font);
  application.setStyleSheet(kStyleSheet);
}

}  // namespace spectrino
