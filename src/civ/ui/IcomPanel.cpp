#include "civ/ui/IcomPanel.h"

#include <QResizeEvent>
#include <QSignalBlocker>

#include "controls/Controls.h"

namespace spectrino {
namespace {

struct Control {
  const char* Caption;
  const char* ToolTip;
};
constexpr Control kFunctions[] = {{"pre", "Preamplifier"},   {"nb", "Noise blanker"},
                                  {"nr", "Noise reduction"}, {"anf", "Automatic notch filter"},
                                  {"att", "Attenuator"},     {"ip+", "IP plus: wider dynamic range"}};
constexpr int kOneRowWidth = 1000;
constexpr int kSliderWidth = 30;  // at least
constexpr const char* kSpans[] = {"2.5", "5 ", "10", "25", "50", "100", "250", "500", "1000", "2500"};

/// Moves a slider for the parser.
void Follow(QSlider* slider, int value) {
  if (!slider->isSliderDown()) slider->setValue(value);
}

}  // namespace

IcomPanel::IcomPanel(QWidget* parent)
    : QWidget(parent),
      body_(new QBoxLayout(QBoxLayout::LeftToRight, this)),
      functions_(new QHBoxLayout),
      levels_(new QHBoxLayout) {
  setObjectName("IcomPanel");
  body_->setContentsMargins(6, 2, 6, 4);
  for (QBoxLayout* layout : {body_, static_cast<QBoxLayout*>(functions_), static_cast<QBoxLayout*>(levels_)})
    layout->setSpacing(3);
  body_->addLayout(functions_, 3);
  body_->addLayout(levels_, 2);
  for (int i = 0; i < 6; ++i) {
    const Control& control = kFunctions[i];
    auto* box =
        AddButton(functions_, QString("chkFunc%1").arg(i), control.Caption, tr(control.ToolTip), true);
    connect(box, &QPushButton::toggled, this, [this, i](bool on) { emit chkFunc_Click(i, on); });
    chkFunc_[static_cast<std::size_t>(i)] = box;
  }
  auto* chkMEM = AddButton(functions_, "chkMEM", "m/v", tr("Memory mode, or VFO mode"), true);
  connect(chkMEM, &QPushButton::toggled, this, &IcomPanel::chkMEM_Click);
  chkScan_ = AddButton(functions_, "chkScan", "scn", tr("Scan"), true);
  connect(chkScan_, &QPushButton::toggled, this, &IcomPanel::chkScan_Click);
  auto* cmdAGC = AddButton(functions_, "cmdAGC", "agc", tr("AGC fast, middle, slow"));
  connect(cmdAGC, &QPushButton::clicked, this, &IcomPanel::cmdAGC_Click);
  for (int i = 0; i < 3; ++i) {
    auto* filter = AddButton(functions_, QString("cmdFil%1").arg(i), QString("F%1").arg(i + 1),
                             tr("Filter %1").arg(i + 1));
    connect(filter, &QPushButton::clicked, this, [this, i] { emit cmdFil_Click(i); });
  }
  AddSpan();
  auto* cmdSpeed = AddButton(levels_, "cmdSpeed", "SPD", tr("SWEEP +/-"));
  connect(cmdSpeed, &QPushButton::clicked, this, &IcomPanel::cmdSpeed_Click);
  sldVol_ = AddSlider("sldVol0", "AF", tr("AF gain"), 0, 255);
  connect(sldVol_, &QSlider::valueChanged, this, &IcomPanel::sldVol_Change);
  connect(sldVol_, &QSlider::sliderReleased, this, [this] { emit sld_MouseUp(PanelControl::AfLevel); });
  sldSQL_ = AddSlider("sldSQL", "SQL", tr("Squelch"), 0, 255);
  connect(sldSQL_, &QSlider::valueChanged, this, &IcomPanel::sldSQL_Change);
  connect(sldSQL_, &QSlider::sliderReleased, this, [this] { emit sld_MouseUp(PanelControl::Squelch); });
  sldRFLevel_ = AddSlider("sldRFLevel", "REF", tr("Reference level of the scope"), -40, 40);
  connect(sldRFLevel_, &QSlider::valueChanged, this, &IcomPanel::sldRFLevel_Change);
  connect(sldRFLevel_, &QSlider::sliderReleased, this, [this] { emit sld_MouseUp(PanelControl::RefLevel); });
}

void IcomPanel::AddSpan() {
  chkFIX_ = AddButton(levels_, "chkFIX", "F.X", tr("Scope in fixed mode"), true);
  // Clicked, not toggled: the scope's lines write this box many times a second.
  connect(chkFIX_, &QPushButton::clicked, this, &IcomPanel::chkFIX_Click);
  cboSpan_ = new QComboBox(this);
  Describe(*cboSpan_, "cboSpan", tr("Half span of the scope, kHz"));
  for (const char* span : kSpans) cboSpan_->addItem(span);
  connect(cboSpan_, &QComboBox::activated, this, &IcomPanel::cboSpan_Click);
  lblSpan_ = new QLabel(this);
  lblSpan_->setObjectName("lblSpan");
  lblSpan_->setToolTip(tr("Half span of the fixed scope"));
  lblSpan_->hide();
  levels_->addWidget(cboSpan_);
  levels_->addWidget(lblSpan_);
}

QPushButton* IcomPanel::AddButton(QHBoxLayout* row, const QString& name, const QString& caption,
                                  const QString& toolTip, bool check) {
  QPushButton* button =
      check ? MakeToggle(name, caption, toolTip, this) : MakeButton(name, caption, toolTip, this);
  button->setMinimumWidth(kNarrowest);
  row->addWidget(button, 1);
  return button;
}

QSlider* IcomPanel::AddSlider(const QString& name, const QString& caption, const QString& toolTip, int low,
                              int high) {
  levels_->addWidget(MakeLabel(caption, "caption", this));
  QSlider* slider = MakeSlider(name, low, high, toolTip, this);
  slider->setMinimumWidth(kSliderWidth);
  levels_->addWidget(slider, 2);
  return slider;
}

void IcomPanel::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  const bool narrow = event->size().width() < kOneRowWidth;
  body_->setDirection(narrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

void IcomPanel::SetAfSlider(int value) {
  Follow(sldVol_, value);
}
void IcomPanel::SetSquelchSlider(int value) {
  Follow(sldSQL_, value);
}
void IcomPanel::SetRefLevelSlider(int value) {
  Follow(sldRFLevel_, value);
}
void IcomPanel::SelectSpan(int entry) {
  cboSpan_->setCurrentIndex(entry);
}
void IcomPanel::SetSpanLabel(const std::string& text) {
  lblSpan_->setText(QString::fromStdString(text));
}
void IcomPanel::ShowSpanList(bool list) {
  cboSpan_->setVisible(list);
  lblSpan_->setVisible(!list);
}
void IcomPanel::SetFunction(int index, bool on) {
  QPushButton* box = chkFunc_[static_cast<std::size_t>(index)];
  const QSignalBlocker silent(box);
  box->setChecked(on);
}
void IcomPanel::SetFixedMode(bool fixed) {
  chkFIX_->setChecked(fixed);
}

}  // namespace spectrino
