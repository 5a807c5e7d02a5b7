#include "display/ui/RangePanel.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QResizeEvent>
#include <QSignalBlocker>
#include <QStyle>
#include <QVBoxLayout>
#include <cmath>
#include <utility>

#include "controls/Controls.h"
#include "settings/Keys.h"

namespace spectrino {
namespace {

struct Control {
  const char* name;
  const char* caption;
  const char* toolTip;
};

constexpr Control kReference[] = {{"Command18", "\u22123", "Reference DOWN -3dB"},
                                  {"Command1", "+3", "Reference UP +3dB"}};
constexpr Control kAutoLevel[] = {{"chkAutoLevel", "AUTO", "Levels follow the noise by themselves"}};
constexpr Control kRange[] = {{"Command2", "\u221220", "Range DOWN -20dB"},
                              {"Command3", "+20", "Range UP +20dB"}};
constexpr Control kDisplay[] = {{"optDisp0", "MAX", "Maximum values (for AVG/MAX Samples)"},
                                {"optDisp1", "AVG", "Average values (for AVG/MAX Samples)"},
                                {"optDisp2", "PEAK", "Peak values"},
                                {"optDisp3", "NOR", "Normal display (no averaging)"}};
constexpr Control kWaterfall[] = {{"optWaterfall0", "0ff", "Waterfall OFF"},
                                  {"optWaterfall1", "1/8", "Waterfall 1/8 Screen"},
                                  {"optWaterfall2", "1/4", "Waterfall 1/4 Screen"},
                                  {"optWaterfall3", "1/2", "Waterfall 1/2 Screen"}};
constexpr Control kZoom[] = {{"optZoom0", "1X", "Zoom 1X"},   {"optZoom1", "2X", "Zoom 2X"},
                             {"optZoom2", "4X", "Zoom 4X"},   {"optZoom3", "8X", "Zoom 8X"},
                             {"optZoom4", "16X", "Zoom 16X"}, {"optZoom5", "32X", "Zoom 32X"}};
constexpr Control kSpotUndo[] = {{"cmdSpot", "Spot", "Center signal"},
                                 {"cmdUndo", "Undo", "Back to the frequency before the last click"}};
constexpr Control kUpDn[] = {{"cmdUpDn1", "<<", ""}, {"cmdUpDn0", ">>", ""}};
constexpr int kCaptionsHeight = 372;  // from here on there is room for what is written over the blocks
constexpr int kSliderHeight = 15;
constexpr int kRowsHeight = 272;  // below, the rows move closer
constexpr Control kPeakHold = {"chkBPH", "BPH", "Background Peak Hold"};
constexpr Control kCalibration = {"cmdIQ", "I/Q", "Calibration (I/Q Rejection, CAL Level)"};

/// Contrast doubles with each ten steps of its slider.
int PercentOf(int steps) {
  return qRound(100 * std::exp2(steps / 10.0));
}

int StepsOf(int percent) {
  return qRound(10 * std::log2(percent / 100.0));
}

QPushButton* MakeNarrow(const Control& control, QWidget* parent) {
  QPushButton* button = MakeButton(control.name, control.caption, control.toolTip, parent);
  button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  button->setMinimumWidth(button->fontMetrics().horizontalAdvance(button->text()) + 4);
  return button;
}

// A block of buttons, columns in a row; fills an exclusive group when one is given.
template <std::size_t count>
QList<QPushButton*> AddBlock(const Control (&controls)[count], int columns, QWidget* parent,
                             QButtonGroup* group) {
  auto* grid = new QGridLayout;
  grid->setSpacing(3);
  QList<QPushButton*> buttons;
  for (std::size_t i = 0; i < count; ++i) {
    QPushButton* button = MakeNarrow(controls[i], parent);
    const int index = static_cast<int>(i);
    grid->addWidget(button, index / columns, index % columns);
    if (group != nullptr) {
      button->setCheckable(true);
      group->addButton(button, index);
    }
    buttons.append(button);
  }
  static_cast<QVBoxLayout*>(parent->layout())->addLayout(grid);
  return buttons;
}

}  // namespace

RangePanel::RangePanel(QWidget* parent) : QWidget(parent) {
  setObjectName("RangePanel");
  setFixedWidth(104);
  setMinimumHeight(1);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(5, 4, 5, 4);
  column->setSpacing(3);

  lblRef_ = AddCaption({}, "lblRef");
  const auto reference = AddBlock(kReference, 2, this, nullptr);
  FraRange_ = AddCaption({}, "FraRange");
  const auto range = AddBlock(kRange, 2, this, nullptr);
  chkAutoLevel_ = AddBlock(kAutoLevel, 1, this, nullptr).front();
  chkAutoLevel_->setCheckable(true);
  for (QPushButton* button : reference + range) scaleButtons_.append(button);
  connect(reference[0], &QPushButton::clicked, this, &RangePanel::Command18_Click);
  connect(chkAutoLevel_, &QPushButton::clicked, this, &RangePanel::chkAutoLevel_Click);
  connect(reference[1], &QPushButton::clicked, this, &RangePanel::Command1_Click);
  connect(range[0], &QPushButton::clicked, this, &RangePanel::Command2_Click);
  connect(range[1], &QPushButton::clicked, this, &RangePanel::Command3_Click);

  AddCaption("Display", "fraDisp");
  optDisp_ = new QButtonGroup(this);
  AddBlock(kDisplay, 2, this, optDisp_);
  AddCaption("Waterfall Hgt", "fraWaterfall");
  optWaterfall_ = new QButtonGroup(this);
  AddBlock(kWaterfall, 4, this, optWaterfall_);
  AddColours();
  AddCaption("Zoom", "fraZoom");
  optZoom_ = new QButtonGroup(this);
  AddBlock(kZoom, 3, this, optZoom_);
  // idClicked, not idToggled: choosing PEAK again clears it.
  connect(optDisp_, &QButtonGroup::idClicked, this, &RangePanel::optDisp_Click);
  connect(optWaterfall_, &QButtonGroup::idClicked, this, &RangePanel::optWaterfall_Click);
  connect(optZoom_, &QButtonGroup::idClicked, this, &RangePanel::optZoom_Click);

  AddTuning();
  const Control toggles[] = {kPeakHold, kCalibration};
  const auto pair = AddBlock(toggles, 2, this, nullptr);
  chkBPH_ = pair[0];
  cmdIQ_ = pair[1];
  chkBPH_->setCheckable(true);
  cmdIQ_->setCheckable(true);
  connect(chkBPH_, &QAbstractButton::toggled, this, &RangePanel::chkBPH_Click);
  connect(cmdIQ_, &QAbstractButton::toggled, this, &RangePanel::cmdIQ_Click);
  scaleButtons_.append(cmdIQ_);
  for (const QAbstractButton* button : scaleButtons_) scaleToolTips_.append(button->toolTip());
  column->addStretch(1);
}

void RangePanel::AddColours() {
  sldWFFloor_ = MakeSlider("sldWFFloor", key::kWFFloor.Limits.Low, key::kWFFloor.Limits.High, {}, this);
  sldWFContrast_ = MakeSlider("sldWFContrast", StepsOf(key::kWFContrast.Limits.Low),
                              StepsOf(key::kWFContrast.Limits.High), {}, this);
  auto* row = new QHBoxLayout;
  row->setSpacing(3);
  for (QSlider* slider : {sldWFFloor_, sldWFContrast_}) {
    slider->setMinimumWidth(kNarrowest);
    slider->setMaximumHeight(kSliderHeight);
    row->addWidget(slider);
    connect(slider, &QSlider::valueChanged, this, [this] {
      DescribeColours();
      emit WaterfallColours_Change(sldWFFloor_->value(), PercentOf(sldWFContrast_->value()));
    });
  }
  static_cast<QVBoxLayout*>(layout())->addLayout(row);
  DescribeColours();
}

void RangePanel::DescribeColours() {
  Describe(*sldWFFloor_, tr("Waterfall: darkest level %1 dB higher").arg(sldWFFloor_->value()));
  Describe(*sldWFContrast_, tr("Waterfall: contrast %1 %").arg(PercentOf(sldWFContrast_->value())));
}

void RangePanel::AddTuning() {
  const auto pair = AddBlock(kSpotUndo, 2, this, nullptr);
  connect(pair[0], &QPushButton::clicked, this, &RangePanel::cmdSpot_Click);
  connect(pair[1], &QPushButton::clicked, this, &RangePanel::cmdUndo_Click);
  cmdUpDn_ = AddBlock(kUpDn, 2, this, nullptr);
  connect(cmdUpDn_[0], &QPushButton::clicked, this, [this] { emit cmdUpDn_Click(1); });
  connect(cmdUpDn_[1], &QPushButton::clicked, this, [this] { emit cmdUpDn_Click(0); });
  SetUpDnStep("100kHz");
}

void RangePanel::SetUpDnStep(const QString& step) {
  if (step == std::exchange(upDnStep_, step)) return;
  Describe(*cmdUpDn_[0], "Move Freq Dn " + step);
  Describe(*cmdUpDn_[1], "Move Freq Up " + step);
}

QLabel* RangePanel::AddCaption(const QString& text, const QString& name) {
  QLabel* label = MakeLabel(text, "caption", this);
  label->setObjectName(name);
  captions_.append(label);
  layout()->addWidget(label);
  return label;
}

void RangePanel::Show(const RangePanelState& state) {
  lblRef_->setText(state.AutoLevel ? tr("Ref auto") : QString("Ref %1 dB").arg(state.RefLevel));
  chkAutoLevel_->setChecked(state.AutoLevel);
  FraRange_->setText(QString("Range %1dB").arg(state.RangeDb));
  const auto check = [](QButtonGroup* group, int index) {
    if (QAbstractButton* button = group->button(index)) button->setChecked(true);
  };
  check(optDisp_, state.DisplayMode);
  check(optWaterfall_, state.WaterfallSel);
  check(optZoom_, state.Zoom);
  AllowScale(state.OwnScale);
  const QSignalBlocker silentFloor(sldWFFloor_);
  const QSignalBlocker silentContrast(sldWFContrast_);
  sldWFFloor_->setValue(state.WFFloorDb);
  sldWFContrast_->setValue(StepsOf(state.WFContrast));
  DescribeColours();
  const QSignalBlocker silent(chkBPH_);
  chkBPH_->setChecked(state.BackgroundPeakHold);
}

void RangePanel::AllowScale(bool allow) {
  if (allow == scaleButtons_.front()->isEnabled()) return;
  if (!allow) cmdIQ_->setChecked(false);
  const QString why = tr("Of sound inputs alone: a radio's own levels are shown as it sends them");
  for (qsizetype i = 0; i < scaleButtons_.size(); ++i) {
    scaleButtons_[i]->setEnabled(allow);
    scaleButtons_[i]->setToolTip(allow ? scaleToolTips_[i] : why);
    scaleButtons_[i]->setAccessibleDescription(allow ? QString() : why);
  }
}

void RangePanel::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  // A low window has room for the buttons, not for what is written over them; a very low one for low buttons.
  const int height = event->size().height();
  for (QLabel* caption : captions_) caption->setVisible(height >= kCaptionsHeight);
  SetDense(height < kRowsHeight);
}

void RangePanel::SetDense(bool dense) {
  if (property("dense").toBool() == dense) return;
  setProperty("dense", dense);
  layout()->setSpacing(dense ? 2 : 3);
  for (QPushButton* button : findChildren<QPushButton*>()) {
    button->style()->unpolish(button);
    button->style()->polish(button);
  }
}

}  // namespace spectrino
