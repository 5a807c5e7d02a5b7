#include "display/ui/HeaderPanel.h"

#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPushButton>
#include <QResizeEvent>
#include <QSignalBlocker>

namespace spectrino {
namespace {

constexpr int kSmallWidth = 900;
constexpr int kLeastDevicesWidth = 100;  // gives way before anything else does
constexpr int kMeterHeight = 28;

QPushButton* MakeButton(const char* name, const QString& text, const QString& toolTip, QWidget* parent) {
  auto* button = new QPushButton(text, parent);
  button->setObjectName(name);
  button->setToolTip(toolTip);
  button->setAccessibleName(toolTip);
  button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  return button;
}

QLabel* MakeLabel(const char* name, const char* role, const QString& accessible, QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setObjectName(name);
  label->setProperty("role", role);
  label->setAccessibleName(accessible);
  label->setTextFormat(Qt::PlainText);
  return label;
}

}  // namespace

HeaderPanel::HeaderPanel(QWidget* parent) : QWidget(parent) {
  setObjectName("HeaderPanel");
  setFixedHeight(36);
  startButton_ = MakeButton("StartButton", QString::fromUtf8("\u25B6 Start"), tr("Start"), this);
  stopButton_ = MakeButton("StopButton", QString::fromUtf8("\u25A0 Stop"), tr("Stop"), this);
  devicesBox_ = new DevicesBox(this);
  devicesBox_->setObjectName("DevicesBox");
  devicesBox_->setToolTip(tr("Device selection"));
  devicesBox_->setAccessibleName(tr("Device selection"));
  devicesBox_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  devicesBox_->setMinimumContentsLength(22);
  devicesBox_->setMinimumWidth(kLeastDevicesWidth);
  lblA_ = MakeLabel("lblA", "tag", {}, this);
  lblA_->setText("A");
  lblFreqA_ = MakeLabel("lblFreqA", "frequency", tr("Frequency of VFO A"), this);
  lblFreqA_->setTextFormat(Qt::RichText);
  lblMode_ = MakeLabel("lblMode", "badge", tr("Mode"), this);
  lblB_ = MakeLabel("lblB", "tag", {}, this);
  lblB_->setText("B");
  lblFreqB_ = MakeLabel("lblFreqB", "frequencyB", tr("Frequency of VFO B"), this);
  lblSplit_ = MakeLabel("lblSplit", "split", tr("Split"), this);
  lblSplit_->hide();
  bar_ = new SMeterBar(this);
  lblSMeter_ = MakeLabel("lblSMeter", "meter", tr("Signal level"), this);
  lblSMeter_->ensurePolished();
  // Of fixed size: the reading changes every frame, and the row is not laid out again for it.
  lblSMeter_->setFixedSize(lblSMeter_->fontMetrics().horizontalAdvance("S9+60") * 3 / 2, kMeterHeight);
  auto* cmdSetup = MakeButton("cmdSetup", tr("Setup"), tr("Setup"), this);
  auto* cmdHelp = MakeButton("cmdHelp", tr("?"), tr("Help"), this);
  chkTop_ = MakeButton("chkTop", QString::fromUtf8("\u25B2"), tr("Always on top"), this);
  chkTop_->setCheckable(true);
  cmdFullScreen_ = MakeButton("cmdFullScreen", QString::fromUtf8("\u21F2"), tr("Full screen"), this);
  cmdFullScreen_->setCheckable(true);

  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(8, 4, 8, 4);
  row->setSpacing(8);
  for (QWidget* widget : std::initializer_list<QWidget*>{startButton_, stopButton_, devicesBox_, lblA_,
                                                         lblFreqA_, lblMode_, lblB_, lblFreqB_, lblSplit_}) {
    row->addWidget(widget, 0, Qt::AlignVCenter);
  }
  row->addStretch(1);
  for (QWidget* widget :
       std::initializer_list<QWidget*>{bar_, lblSMeter_, cmdSetup, cmdHelp, chkTop_, cmdFullScreen_}) {
    row->addWidget(widget);
  }
  txtFrequency_ = new FrequencyEntry(this);
  txtFrequency_->setObjectName("txtFrequency");
  connect(txtFrequency_, &FrequencyEntry::Entered, this,
          [this](const QString& text) { emit FrequencyTyped(entryVfo_, text); });
  for (QLabel* label : {lblFreqA_, lblFreqB_}) {
    label->setToolTip(tr("Click to type a frequency"));
    label->setCursor(Qt::IBeamCursor);
  }
  ShowRunning(false, false);
  ShowFrequency("---------", {});
  ShowSubFrequency({});

  connect(startButton_, &QAbstractButton::clicked, this, &HeaderPanel::StartButton_Click);
  connect(stopButton_, &QAbstractButton::clicked, this, &HeaderPanel::StopButton_Click);
  connect(devicesBox_, &QComboBox::activated, this, &HeaderPanel::DevicesBox_Click);
  connect(devicesBox_, &DevicesBox::AboutToShow, this, &HeaderPanel::DevicesWanted);
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
  if (lblFreqA_->text() != html) {
    lblFreqA_->setText(html);
    lblFreqA_->setAccessibleDescription(frequencyText);
  }
  if (lblMode_->text() != modeText) lblMode_->setText(modeText);
  lblMode_->setVisible(!modeText.isEmpty());
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
  if (lblSplit_->text() != text) lblSplit_->setText(text);
  lblSplit_->setVisible(!text.isEmpty());
}

void HeaderPanel::ShowMeter(float levelDbm, float heldDbm, bool known, const QString& reading) {
  bar_->SetLevels(levelDbm, heldDbm, known);
  if (lblSMeter_->text() != reading) lblSMeter_->setText(reading);
}

void HeaderPanel::SetMeterColour(const QColor& colour) {
  lblSMeter_->setStyleSheet(QString("color:%1").arg(colour.name()));
}

void HeaderPanel::SetFrequencyColour(const QColor& colour) {
  frequencyColour_ = colour;
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
  const bool small = event->size().width() < kSmallWidth;
  bar_->setFixedWidth(small ? 96 : 190);
  lblA_->setVisible(!small);
  ShowSubFrequency(lblFreqB_->text());
}

}  // namespace spectrino
