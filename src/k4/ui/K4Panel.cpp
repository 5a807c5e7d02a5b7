#include "k4/ui/K4Panel.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "controls/Controls.h"

namespace spectrino {
namespace {

constexpr int kCommitMs = 150;
constexpr int kSliderWidth = 30;  // at least

struct Control {
  const char* Name;
  const char* Caption;
  const char* ToolTip;
  bool Check;
};
constexpr Control kUpper[] = {{"cmdAGCK4", "AGC", "AGC slow, fast, off", false},
                              {"cmdPRE", "PRE", "Preamplifier", false},
                              {"cmdATT", "ATT", "Attenuator", false},
                              {"cmdNB", "NB", "Noise blanker", false},
                              {"cmdNR", "NR", "Noise reduction", false},
                              {"cmdAPF", "APF", "Audio peak filter", false},
                              {"cmdNotch0", "NTC-M", "Manual notch", false},
                              {"cmdNotch1", "NTC-A", "Automatic notch", false},
                              {"cmdANT", "ANT", "Antenna", false},
                              {"cmdAsB", "A/B", "Swap VFO A and B", false},
                              {"Command4", "A=B", "VFO A to VFO B", false},
                              {"chkSplt", "SPLT", "Split", true},
                              {"chkBSET", "BSET", "The panel addresses the sub receiver", true},
                              {"chkSub", "SUB", "Sub receiver", true},
                              {"chkDIV", "DIV", "Diversity", true},
                              {"chkIIR", "IIR", "IIR filters", true}};
constexpr Control kLower[] = {{"cmdXFIL0", "FIL1", "Filter of the main receiver", false},
                              {"cmdXFIL1", "FIL1", "Filter of the sub receiver", false},
                              {"cmdSpan0", "SPAN-", "Span 5 kHz narrower", false},
                              {"cmdSpan1", "SPAN+", "Span 5 kHz wider", false},
                              {"cmdAutoSpan", "AUTO", "Span of the mode", false},
                              {"chkFXT", "FXT", "Fixed tune", true},
                              {"chkMinipan", "Mini", "Mini-pans and status", true},
                              {"cmdAREF", "AREF", "Automatic reference level", false},
                              {"cmdQuick", "QSPL", "Quick split", false}};
constexpr Control kPresets[] = {{"optK4Span0", "Full", "Everything that the radio sends", true},
                                {"optK4Span1", "1:1", "The radio's span", true},
                                {"optK4Span2", "1:1.5", "Two thirds of the radio's span", true}};

}  // namespace

K4Panel::K4Panel(QWidget* parent) : QWidget(parent) {
  setObjectName("K4Panel");
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(6, 2, 6, 4);
  rows->setSpacing(3);
  auto* upper = new QHBoxLayout;
  auto* lower = new QHBoxLayout;
  for (QHBoxLayout* row : {upper, lower}) {
    row->setSpacing(3);
    rows->addLayout(row);
  }
  for (const Control& control : kUpper)
    upper->addWidget(AddButton(control.Name, control.Caption, control.ToolTip, control.Check), 1);
  for (const Control& control : kLower)
    lower->addWidget(AddButton(control.Name, control.Caption, control.ToolTip, control.Check), 4);
  auto* presets = new QButtonGroup(this);
  for (int i = 0; i < 3; ++i) {
    const Control& control = kPresets[i];
    QPushButton* button = MakeToggle(control.Name, control.Caption, control.ToolTip, this);
    button->setMinimumWidth(kNarrowest);
    optK4Span_[static_cast<std::size_t>(i)] = button;
    presets->addButton(button, i);
    lower->addWidget(button, 3);
  }
  connect(presets, &QButtonGroup::idClicked, this, &K4Panel::optK4Span_Click);
  const auto slider = [&](QSlider*& member, const char* name, const char* caption, int maximum,
                          const QString& toolTip) {
    lower->addWidget(MakeLabel(caption, "caption", this));
    member = AddSlider(name, maximum, toolTip);
    lower->addWidget(member, 5);
  };
  slider(sldVol1_, "sldVol1", "AF", 255, tr("AF Main Volume"));
  slider(sldVol2_, "sldVol2", "SUB", 255, tr("AF Sub Volume"));
  slider(sldNotch_, "sldNotch", "NOTCH", 500, tr("Notch"));
}

QAbstractButton* K4Panel::AddButton(const char* name, const char* caption, const char* toolTip, bool check) {
  QPushButton* button = MakeToggle(name, caption, tr(toolTip), this);
  button->setMinimumWidth(kNarrowest);
  buttons_.insert(name, button);
  const QString id = name;
  if (check) {
    // Not toggled, which a value that is only shown fires as well.
    connect(button, &QAbstractButton::clicked, this, [this, id](bool on) { emit Toggled(id, on); });
  } else {
    // Pressed is how the radio's state is shown; a click only asks for the next one.
    connect(button, &QAbstractButton::clicked, this, [this, button, id](bool on) {
      button->setChecked(!on);
      emit Clicked(id);
    });
  }
  return button;
}

QSlider* K4Panel::AddSlider(const char* name, int maximum, const QString& toolTip) {
  QSlider* slider = MakeSlider(name, 0, maximum, toolTip, this);
  slider->setMinimumWidth(kSliderWidth);
  auto* rest = new QTimer(slider);
  rest->setSingleShot(true);
  rest->setInterval(kCommitMs);
  const QString id = name;
  connect(slider, &QSlider::valueChanged, this, [this, id, rest](int value) {
    emit SliderMoved(id, value);
    if (!fromRadio_) rest->start();
  });
  const auto commit = [this, id, slider, rest] {
    rest->stop();
    emit SliderCommitted(id, slider->value());
  };
  connect(slider, &QSlider::sliderReleased, this, commit);
  connect(rest, &QTimer::timeout, this, [slider, commit] {
    if (!slider->isSliderDown()) commit();
  });
  return slider;
}

void K4Panel::SetActive(const char* name, bool active, const QString& caption) {
  QAbstractButton* button = buttons_.value(name);
  const QSignalBlocker silent(button);
  button->setChecked(active);
  if (!caption.isEmpty() && button->text() != caption) button->setText(caption);
}

void K4Panel::Show(const K4State& state) {
  const bool sub = state.RxSuffix == "$";
  const auto of = [sub](int main, int other) { return sub ? other : main; };
  const int agc = of(state.AgcMain, state.AgcSub);
  SetActive("cmdAGCK4", agc != 0, agc == 1 ? "AGC-S" : agc == 2 ? "AGC-F" : "AGC");
  const int preamp = of(state.PreampMain, state.PreampSub);
  SetActive("cmdPRE", preamp != 0, preamp != 0 ? QString("PRE%1").arg(preamp) : "PRE");
  const int attenuator = of(state.AttMain, state.AttSub);
  SetActive("cmdATT", attenuator != 0, attenuator != 0 ? QString("ATT%1").arg(attenuator) : "ATT");
  SetActive("cmdNB", of(state.NbMain, state.NbSub) != 0);
  SetActive("cmdNR", of(state.NrMain, state.NrSub) != 0);
  SetActive("cmdAPF", of(state.ApfMain, state.ApfSub) == 1);
  SetActive("cmdNotch0", of(state.NotchManualMain, state.NotchManualSub) == 1);
  SetActive("cmdNotch1", of(state.NotchAutoMain, state.NotchAutoSub) == 1);
  SetActive("cmdANT", false, state.Antenna != 0 ? QString("ANT%1").arg(state.Antenna) : "ANT");
}

void K4Panel::SetCheck(K4Check check, bool ticked) {
  constexpr const char* kNames[] = {"chkSplt", "chkBSET", "chkSub", "chkDIV", "chkIIR", "chkFXT"};
  SetNamedCheck(kNames[static_cast<int>(check)], ticked);
}

void K4Panel::SetNamedCheck(const QString& name, bool on) {
  if (QAbstractButton* button = buttons_.value(name)) button->setChecked(on);
}

void K4Panel::SetVolume(int index, int value) {
  MoveFromRadio(index == 1 ? sldVol1_ : sldVol2_, value);
}

// What the radio told needs no reading back.
void K4Panel::MoveFromRadio(QSlider* slider, int value) {
  fromRadio_ = true;
  slider->setValue(value);
  fromRadio_ = false;
}

void K4Panel::SetVolumeToolTip(const std::string& text) {
  Describe(*sldVol2_, QString::fromStdString(text));
}
void K4Panel::SetNotch(int value) {
  MoveFromRadio(sldNotch_, value);
}
void K4Panel::SetNotchToolTip(const std::string& text) {
  sldNotch_->setToolTip(QString::fromStdString(text));
}
void K4Panel::SetFilterCaption(int receiver, const std::string& caption) {
  buttons_.value(receiver == kMainRx ? "cmdXFIL0" : "cmdXFIL1")->setText(QString::fromStdString(caption));
}
void K4Panel::SelectSpanPreset(int index) {
  if (index >= 0 && index < 3) optK4Span_[static_cast<std::size_t>(index)]->setChecked(true);
}

}  // namespace spectrino
