#include "settings/ui/InputRow.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <cmath>

namespace spectrino::setup {
namespace {

constexpr int kSilenceDb = -100;
constexpr int kBarWidth = 120;
constexpr int kBarHeight = 6;

int Rounded(float levelDb) {
  return static_cast<int>(std::lround(levelDb));
}

}  // namespace

InputRow::InputRow(const QString& name, QWidget* parent) : QWidget(parent) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  auto* bars = new QVBoxLayout;
  bars->setSpacing(2);
  left_ = AddBar("barLeft", tr("Level left of %1, dB").arg(name));
  right_ = AddBar("barRight", tr("Level right of %1, dB").arg(name));
  bars->addStretch(1);
  bars->addWidget(left_);
  bars->addWidget(right_);
  bars->addStretch(1);
  row->addLayout(bars);
  lblLevel_ = new QLabel(tr("listening..."), this);
  lblLevel_->setObjectName("lblLevel");
  lblLevel_->setTextFormat(Qt::PlainText);
  lblLevel_->setWordWrap(true);
  row->addWidget(lblLevel_, 1);
}

QProgressBar* InputRow::AddBar(const char* name, const QString& spoken) {
  auto* bar = new QProgressBar(this);
  bar->setObjectName(name);
  bar->setAccessibleName(spoken);
  bar->setRange(kSilenceDb, 0);
  bar->setValue(kSilenceDb);
  bar->setTextVisible(false);
  bar->setFixedSize(kBarWidth, kBarHeight);
  return bar;
}

void InputRow::Show(const InputLevel& level) {
  left_->setValue(level.Heard ? Rounded(level.LeftDb) : kSilenceDb);
  right_->setValue(level.Heard ? Rounded(level.RightDb) : kSilenceDb);
  QString text = level.Trouble;
  if (text.isEmpty() && level.Heard) {
    const auto named = [](float levelDb) {
      return levelDb <= kSilenceDb ? tr("silent") : tr("%1 dB").arg(Rounded(levelDb));
    };
    text = tr("L %1   R %2").arg(named(level.LeftDb), named(level.RightDb));
  }
  if (!text.isEmpty() && text != lblLevel_->text()) lblLevel_->setText(text);
}

}  // namespace spectrino::setup
