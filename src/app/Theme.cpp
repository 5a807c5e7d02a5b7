#include "app/Theme.h"

#include <QApplication>
#include <QFont>
#include <QPainter>
#include <QPalette>
#include <QPolygonF>
#include <QProxyStyle>
#include <QStyleOption>

namespace spectrino {
namespace {

// Frames stay whatever is ticked, and say where the focus is: the style sheet can draw no tick without a
// file.
class BoxStyle final : public QProxyStyle {
 public:
  BoxStyle() : QProxyStyle("Fusion") {}

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    if (element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton)
      DrawBox(element == PE_IndicatorRadioButton, *option, *painter);
    else
      QProxyStyle::drawPrimitive(element, option, painter, widget);
  }

 private:
  static void DrawBox(bool round, const QStyleOption& option, QPainter& painter) {
    const bool enabled = option.state.testFlag(State_Enabled);
    const bool focus = option.state.testFlag(State_HasFocus);
    const bool on = option.state.testFlag(State_On);
    const QColor mark = enabled ? QColor(0xe9, 0xf6, 0xff) : QColor(0x66, 0x71, 0x7e);
    const QColor frame = focus ? QColor(0x7c, 0xc4, 0xee) : enabled ? QColor(0x8d, 0x9a, 0xa9) : mark;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const double pen = focus ? 2 : 1;
    const QRectF box = QRectF(option.rect).adjusted(pen / 2, pen / 2, -pen / 2, -pen / 2);
    painter.setPen(QPen(frame, pen));
    painter.setBrush(on && enabled ? QColor(0x17, 0x40, 0x5a) : QColor(0x1a, 0x20, 0x27));
    const double radius = round ? box.width() / 2 : 2;
    painter.drawRoundedRect(box, radius, radius);
    if (on && round) {
      painter.setPen(Qt::NoPen);
      painter.setBrush(mark);
      painter.drawEllipse(box.center(), box.width() / 4.5, box.width() / 4.5);
    } else if (on) {
      const auto at = [&box](double x, double y) {
        return QPointF(box.left() + x * box.width(), box.top() + y * box.height());
      };
      painter.setPen(QPen(mark, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
      painter.drawPolyline(QPolygonF({at(0.22, 0.52), at(0.42, 0.74), at(0.8, 0.27)}));
    }
    painter.restore();
  }
};

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
QCheckBox:focus, QRadioButton:focus { color: #e9f6ff; }
QTabWidget::pane { border: 1px solid #303945; border-radius: 3px; top: -1px; }
QTabBar::tab {
  background: #1a2027; border: 1px solid #303945; border-top-left-radius: 4px; border-top-right-radius: 4px;
  padding: 4px 12px; margin-right: 2px; }
QTabBar::tab:hover { background: #2a333e; }
QTabBar::tab:selected { background: #17405a; border-color: #2a7fae; color: #e9f6ff; font-weight: bold; }
QTabBar::tab:selected:focus { border: 2px solid #7cc4ee; padding: 3px 11px; }
QProgressBar { background: #1a2027; border: 1px solid #303945; border-radius: 2px; }
QProgressBar::chunk { background: #2b8a50; border-radius: 1px; }
QPushButton#cmdStepsStart { background: #174a2c; border-color: #2b8a50; color: #d8ffe6; font-weight: bold; }
QPushButton#cmdStepsStart:focus { border-color: #7cc4ee; }
QLabel#lblMissing { color: #ffd08a; }
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
  QApplication::setStyle(new BoxStyle);
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
