#include "capture/ui/CalibrationPanel.h"

#include <QHBoxLayout>
#include <QSignalBlocker>

#include "controls/Controls.h"

namespace spectrino {
namespace {

struct Row {
  const char* slider;
  const char* label;
  const char* caption;
  int limit;
};
constexpr Row kRows[] = {{"sldAmplitude", "lbliQ1", "Balance (Gain)", 500},
                         {"sldPhase", "lbliQ0", "Phase adjustment", 500},
                         {"slddbm", "lbldbm", "CAL Level", 50}};

}  // namespace

CalibrationPanel::CalibrationPanel(QWidget* parent) : QWidget(parent) {
  setObjectName("CalibrationPanel");
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(6, 4, 6, 4);
  QSlider** const sliders[] = {&sldAmplitude_, &sldPhase_, &slddbm_};
  QLabel** const labels[] = {&lbliQ1_, &lbliQ0_, &lbldbm_};
  for (std::size_t i = 0; i < std::size(kRows); ++i) {
    QLabel* caption = MakeLabel(kRows[i].caption, "tag", this);
    QSlider* slider = MakeSlider(kRows[i].slider, -kRows[i].limit, kRows[i].limit, kRows[i].caption, this);
    caption->setBuddy(slider);
    auto* value = new QLabel(this);
    value->setObjectName(kRows[i].label);
    value->setMinimumWidth(value->fontMetrics().horizontalAdvance("-50 dB"));
    row->addWidget(caption);
    row->addWidget(slider, 1);
    row->addWidget(value);
    *sliders[i] = slider;
    *labels[i] = value;
  }
  connect(sldAmplitude_, &QSlider::valueChanged, this, [this](int value) {
    lbliQ1_->setNum(value);
    emit sldAmplitude_Change(value);
  });
  connect(sldPhase_, &QSlider::valueChanged, this, [this](int value) {
    lbliQ0_->setNum(value);
    emit sldPhase_Change(value);
  });
  connect(slddbm_, &QSlider::valueChanged, this, [this](int value) {
    lbldbm_->setText(QString("%1 dB").arg(value));
    emit slddbm_Change(value);
  });
  Show(0, 0, 0);
}

void CalibrationPanel::Show(double amplitude, double phase, double levelDb) {
  const QSignalBlocker silent1(sldAmplitude_);
  const QSignalBlocker silent2(sldPhase_);
  const QSignalBlocker silent3(slddbm_);
  sldAmplitude_->setValue(qRound(amplitude));
  sldPhase_->setValue(qRound(phase));
  slddbm_->setValue(qRound(levelDb));
  lbliQ1_->setNum(sldAmplitude_->value());
  lbliQ0_->setNum(sldPhase_->value());
  lbldbm_->setText(QString("%1 dB").arg(levelDb));
}

}  // namespace spectrino
