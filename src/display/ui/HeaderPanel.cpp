#include "display/ui/HeaderPanel.h"

#include <QMouseEvent>
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

QLabel* MakeReading(const char* name, const char* role, const QString& accessible, QWidget* parent) {
  QLabel* label = MakeLabel({}, role, parent);
  label->setObjectName(name);
  label->setAccessibleName(accessible);
  label->setTextFormat(Qt::PlainText);
  return label;
}

QLabel* MakeMeterReading(QWidget* parent) {
  QLabel* label = MakeReading("lblSMeter", "meter", HeaderPanel::tr("Signal level"), parent);
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
  AddFrequencies(*row);
  row->addStretch(1);
  bar_ = new SMeterBar(this);
  row->addWidget(bar_);
  lblSMeter_ = MakeMeterReading(this);
  row->addWidget(lblSMeter_);
  AddWindowButtons(*row);
  // Made last: it lies over the other parts of the line.
  txtFrequency_ = new FrequencyEntry(this);
  txtFrequency_->setObjectName("txtFrequency");
  connect(txtFrequency_, &FrequencyEntry::Entered, this,
          [this](const QString& text) { emit FrequencyTyped(entryVfo_, text); });
  ShowRunning(false, false);
  ShowFrequency("---------", {});
  ShowSubFrequency({});
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

void HeaderPanel::AddFrequencies(QHBoxLayout& row) {
  lblA_ = MakeReading("lblA", "tag", {}, this);
  lblA_->setText("A");
  lblFreqA_ = MakeReading("lblFreqA", "frequency", tr("Frequency of VFO A"), this);
  lblFreqA_->setTextFormat(Qt::RichText);
  lblFreqA_->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Preferred);  // rich text gives way otherwise
  lblMode_ = MakeReading("lblMode", "badge", tr("Mode"), this);
  lblB_ = MakeReading("lblB", "tag", {}, this);
  lblB_->setText("B");
  lblFreqB_ = MakeReading("lblFreqB", "frequencyB", tr("Frequency of VFO B"), this);
  lblSplit_ = MakeReading("lblSplit", "split", tr("Split"), this);
  lblSplit_->hide();
  for (QLabel* label : {lblA_, lblFreqA_, lblMode_, lblB_, lblFreqB_, lblSplit_})
    row.addWidget(label, 0, Qt::AlignVCenter);
  for (QLabel* label : {lblFreqA_, lblFreqB_}) {
    label->setToolTip(tr("Click to type a frequency"));
    label->setCursor(Qt::IBeamCursor);
  }
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
  devicesBox_->setEnabled(!canStop);
  devicesBox_->setToolTip(canStop ? tr("Device selection (stop first)") : tr("Device selection"));
}

void HeaderPanel::ShowFrequency(const QString& frequencyText, const QString& modeText) {
  // The last three digits are Hz, written smaller, as on a front panel.
  const qsizetype cut = frequencyText.contains('.') ? frequencyText.size() - 3 : frequencyText.size();
  const QString html =
      QString("<span style=\"color:%1\">%2<span style=\"font-size:14px;color:%3\">%4</span></span>")
          .arg(frequencyColour_.name(), frequencyText.left(cut).toHtmlEscaped(),
               frequencyColour_.darker(150).name(), frequencyText.mid(cut).toHtmlEscaped());
  const bool otherWidth =
      lblFreqA_->accessibleDescription().size() != frequencyText.size() || lblMode_->text() != modeText;
  if (lblFreqA_->text() != html) {
    lblFreqA_->setText(html);
    lblFreqA_->setAccessibleDescription(frequencyText);
  }
  if (!otherWidth) return;
  lblMode_->setText(modeText);
  lblMode_->setVisible(!modeText.isEmpty());
  Fit();
}

void HeaderPanel::Fit() {
  const bool small = width() < kSmallWidth;
  const auto fits = [this] {
    layout()->invalidate();
    return layout()->minimumSize().width() <= width();
  };
  bar_->setVisible(true);
  bar_->setFixedWidth(small ? kSmallMeterWidth : kMeterWidth);
  lblA_->setVisible(!small);
  lblSplit_->setText(split_);
  lblSplit_->setVisible(!split_.isEmpty());
  if (fits()) return;
  bar_->setFixedWidth(kLeastMeterWidth);
  if (fits()) return;
  // The reading stands beside the bar, and VFO B tells the offset.
  bar_->setVisible(false);
  if (!fits() && !split_.isEmpty()) lblSplit_->setText(split_.section(' ', 0, 0));
}

void HeaderPanel::BeginEntry(int vfo, const QString& typed) {
  // A narrow window has no room for VFO B; the entry has.
  const QLabel* label = vfo == 1 && lblFreqB_->isVisible() ? lblFreqB_ : lblFreqA_;
  entryVfo_ = vfo;
  txtFrequency_->setPlaceholderText(vfo == 0 ? tr("A, MHz") : tr("B, MHz"));
  txtFrequency_->setAccessibleName(vfo == 0 ? tr("Frequency for VFO A") : tr("Frequency for VFO B"));
  txtFrequency_->Begin(*label, typed);
}

void HeaderPanel::mousePressEvent(QMouseEvent* event) {
  const QPoint at = event->position().toPoint();
  if (event->button() != Qt::LeftButton) return;
  if (lblFreqA_->geometry().contains(at)) BeginEntry(0, {});
  if (lblFreqB_->geometry().contains(at)) BeginEntry(1, {});
}

void HeaderPanel::ShowSubFrequency(const QString& frequencyText) {
  if (lblFreqB_->text() != frequencyText) lblFreqB_->setText(frequencyText);
  const bool shown = !frequencyText.isEmpty() && width() >= kSmallWidth;
  lblB_->setVisible(shown);
  lblFreqB_->setVisible(shown);
}

void HeaderPanel::ShowSplit(const QString& text) {
  if (split_ == text) return;
  split_ = text;
  lblSplit_->setAccessibleDescription(text);
  Fit();
}

void HeaderPanel::ShowMeter(float levelDbm, float heldDbm, bool known, const QString& reading) {
  bar_->SetLevels(levelDbm, heldDbm, known);
  if (lblSMeter_->text() != reading) lblSMeter_->setText(reading);
}

void HeaderPanel::SetColours(const QColor& meter, const QColor& frequency) {
  lblSMeter_->setStyleSheet(QString("color:%1").arg(meter.name()));
  frequencyColour_ = frequency;
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
  ShowSubFrequency(lblFreqB_->text());
  Fit();
}

}  // namespace spectrino
