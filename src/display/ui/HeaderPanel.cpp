#include "display/ui/HeaderPanel.h"

#include <QPushButton>
#include <QResizeEvent>
#include <QSignalBlocker>
#include <initializer_list>

#include "controls/Controls.h"

namespace spectrino {
namespace {

constexpr int kSmallWidth = 900;
constexpr int kLeastDevicesWidth = 100;  // gives way before anything else does
constexpr int kMeterHeight = 28;
constexpr int kMeterWidth = 190;
constexpr int kSmallMeterWidth = 96;
constexpr int kLeastMeterWidth = 56;

/// As wide as its caption.
QPushButton* MakeFixed(const char* name, const QString& caption, const QString& toolTip, QWidget* parent) {
  QPushButton* button = MakeButton(name, caption, toolTip, parent);
  button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  return button;
}

QLabel* MakeMeterReading(QWidget* parent) {
  QLabel* label = MakeLabel({}, "meter", parent);
  label->setObjectName("lblSMeter");
  label->setAccessibleName(HeaderPanel::tr("Signal level"));
  label->setTextFormat(Qt::PlainText);
  label->ensurePolished();
  // Of fixed size: the reading changes every frame, and the row is not laid out again for it.
  label->setFixedSize(label->fontMetrics().horizontalAdvance("S9+60") * 3 / 2, kMeterHeight);
  return label;
}

}  // namespace

HeaderPanel::HeaderPanel(QWidget* parent) : QWidget(parent) {
  setObjectName("HeaderPanel");
  setFixedHeight(36);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(8, 4, 8, 4);
  row->setSpacing(8);
  AddRun(*row);
  vfos_ = new VfoPanel(this);
  connect(vfos_, &VfoPanel::WidthChanged, this, &HeaderPanel::Fit);
  row->addWidget(vfos_, 0, Qt::AlignVCenter);
  row->addStretch(1);
  bar_ = new SMeterBar(this);
  row->addWidget(bar_);
  lblSMeter_ = MakeMeterReading(this);
  row->addWidget(lblSMeter_);
  AddWindowButtons(*row);
  ShowRunning(false, false);
}

void HeaderPanel::AddRun(QHBoxLayout& row) {
  startButton_ = MakeFixed("StartButton", QString::fromUtf8("\u25B6 Start"), tr("Start"), this);
  stopButton_ = MakeFixed("StopButton", QString::fromUtf8("\u25A0 Stop"), tr("Stop"), this);
  devicesBox_ = new DevicesBox(this);
  Describe(*devicesBox_, "DevicesBox", tr("Device selection"));
  devicesBox_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  devicesBox_->setMinimumContentsLength(22);
  devicesBox_->setMinimumWidth(kLeastDevicesWidth);
  for (QWidget* widget : std::initializer_list<QWidget*>{startButton_, stopButton_, devicesBox_})
    row.addWidget(widget, 0, Qt::AlignVCenter);
  connect(startButton_, &QAbstractButton::clicked, this, &HeaderPanel::StartButton_Click);
  connect(stopButton_, &QAbstractButton::clicked, this, &HeaderPanel::StopButton_Click);
  connect(devicesBox_, &QComboBox::activated, this, &HeaderPanel::DevicesBox_Click);
  connect(devicesBox_, &DevicesBox::AboutToShow, this, &HeaderPanel::DevicesWanted);
}

void HeaderPanel::AddWindowButtons(QHBoxLayout& row) {
  QPushButton* cmdSetup = MakeFixed("cmdSetup", tr("Setup"), tr("Setup"), this);
  QPushButton* cmdHelp = MakeFixed("cmdHelp", tr("?"), tr("Help"), this);
  chkTop_ = MakeFixed("chkTop", QString::fromUtf8("\u25B2"), tr("Always on top"), this);
  cmdFullScreen_ = MakeFixed("cmdFullScreen", QString::fromUtf8("\u21F2"), tr("Full screen"), this);
  for (QAbstractButton* button : std::initializer_list<QAbstractButton*>{chkTop_, cmdFullScreen_})
    button->setCheckable(true);
  for (QAbstractButton* button :
       std::initializer_list<QAbstractButton*>{cmdSetup, cmdHelp, chkTop_, cmdFullScreen_})
    row.addWidget(button);
  connect(cmdSetup, &QAbstractButton::clicked, this, &HeaderPanel::cmdSetup_Click);
  connect(cmdHelp, &QAbstractButton::clicked, this, &HeaderPanel::cmdHelp_Click);
  connect(chkTop_, &QAbstractButton::toggled, this, &HeaderPanel::chkTop_Click);
  connect(cmdFullScreen_, &QAbstractButton::clicked, this, &HeaderPanel::cmdFullScreen_Click);
}

void HeaderPanel::ShowDevices(const QStringList& names, int current) {
  const QSignalBlocker silent(devicesBox_);
  devicesBox_->clear();
  devicesBox_->addItems(names);
  devicesBox_->setCurrentIndex(current);
}

void HeaderPanel::ShowRunning(bool running, bool starting) {
  const bool focusMoves = startButton_->hasFocus() || stopButton_->hasFocus();
  const bool canStop = running || starting;
  startButton_->setVisible(!canStop);
  stopButton_->setVisible(canStop);
  if (focusMoves) (canStop ? stopButton_ : startButton_)->setFocus();
}

void HeaderPanel::Fit() {
  const bool roomy = width() >= kSmallWidth;
  const auto fits = [this] {
    vfos_->layout()->invalidate();
    layout()->invalidate();
    return layout()->minimumSize().width() <= width();
  };
  bar_->setVisible(true);
  bar_->setFixedWidth(roomy ? kMeterWidth : kSmallMeterWidth);
  vfos_->Fit(roomy, false);
  if (fits()) return;
  bar_->setFixedWidth(kLeastMeterWidth);
  if (fits()) return;
  // The reading stands beside the bar, and VFO B tells the offset.
  bar_->setVisible(false);
  if (!fits()) vfos_->Fit(roomy, true);
}

void HeaderPanel::ShowMeter(float levelDbm, float heldDbm, bool known, const QString& reading) {
  bar_->SetLevels(levelDbm, heldDbm, known);
  if (lblSMeter_->text() != reading) lblSMeter_->setText(reading);
}

void HeaderPanel::SetColours(const QColor& meter, const QColor& frequency) {
  lblSMeter_->setStyleSheet(QString("color:%1").arg(meter.name()));
  vfos_->SetColour(frequency);
}

void HeaderPanel::ShowOnTop(bool on) {
  const QSignalBlocker silent(chkTop_);
  chkTop_->setChecked(on);
}

void HeaderPanel::ShowFullScreen(bool on) {
  cmdFullScreen_->setChecked(on);
}

void HeaderPanel::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Fit();
}

}  // namespace spectrino
