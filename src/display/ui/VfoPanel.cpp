#include "display/ui/VfoPanel.h"

#include <QHBoxLayout>
#include <cmath>
#include <utility>

#include "controls/Controls.h"

namespace spectrino {
namespace {

constexpr int kHertzPx = 14;

void NameReading(QLabel* label, const char* name, const QString& accessible) {
  label->setObjectName(name);
  label->setAccessibleName(accessible);
  label->setTextFormat(Qt::PlainText);
}

QLabel* MakeReading(const char* name, const char* role, const QString& accessible, QWidget* parent) {
  QLabel* label = MakeLabel({}, role, parent);
  NameReading(label, name, accessible);
  return label;
}

DigitLabel* MakeFrequency(const char* name, const char* role, const QString& accessible, QWidget* parent) {
  auto* label = new DigitLabel(parent);
  label->setProperty("role", role);
  NameReading(label, name, accessible);
  return label;
}

QLabel* MakeLetter(const char* name, const QString& letter, QWidget* parent) {
  QLabel* label = MakeReading(name, "tag", {}, parent);
  label->setText(letter);
  return label;
}

}  // namespace

VfoPanel::VfoPanel(QWidget* parent) : QWidget(parent) {
  setObjectName("VfoPanel");
  setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Preferred);
  lblA_ = MakeLetter("lblA", "A", this);
  lblFreqA_ = MakeFrequency("lblFreqA", "frequency", tr("Frequency of VFO A"), this);
  lblFreqA_->setTextFormat(Qt::RichText);
  lblFreqA_->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Preferred);  // rich text gives way otherwise
  lblMode_ = MakeReading("lblMode", "badge", tr("Mode"), this);
  lblMode_->hide();
  lblB_ = MakeLetter("lblB", "B", this);
  lblFreqB_ = MakeFrequency("lblFreqB", "frequencyB", tr("Frequency of VFO B"), this);
  lblSplit_ = MakeReading("lblSplit", "split", tr("Split"), this);
  lblSplit_->hide();
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(8);
  for (QLabel* label :
       std::initializer_list<QLabel*>{lblA_, lblFreqA_, lblMode_, lblB_, lblFreqB_, lblSplit_})
    row->addWidget(label, 0, Qt::AlignVCenter);
  // Made last: it lies over the other parts.
  txtFrequency_ = new FrequencyEntry(this);
  txtFrequency_->setObjectName("txtFrequency");
  connect(txtFrequency_, &FrequencyEntry::Entered, this,
          [this](const QString& text) { emit FrequencyTyped(entryVfo_, text); });
  Connect(lblFreqA_, 0);
  Connect(lblFreqB_, 1);
  ShowFrequency();
  Fit(true, false);
}

void VfoPanel::Show(const VfoReadings& readings) {
  const VfoReadings before = std::exchange(shown_, readings);
  if (before == shown_) return;
  if (before.Frequency != shown_.Frequency) ShowFrequency();
  lblMode_->setText(shown_.Mode);
  lblMode_->setVisible(!shown_.Mode.isEmpty());
  lblFreqB_->ShowFrequency(shown_.SubFrequency, {}, 0);
  lblSplit_->setAccessibleDescription(shown_.Split);
  const bool otherWidth = before.Frequency.size() != shown_.Frequency.size() || before.Mode != shown_.Mode ||
                          before.SubFrequency.size() != shown_.SubFrequency.size() ||
                          before.Split != shown_.Split;
  if (otherWidth) emit WidthChanged();
}

void VfoPanel::ShowFrequency() {
  lblFreqA_->ShowFrequency(shown_.Frequency, colour_, kHertzPx);
}

void VfoPanel::Connect(DigitLabel* digits, int vfo) {
  connect(digits, &DigitLabel::Clicked, this,
          [this, vfo](double hertz, int direction) { emit DigitClicked(vfo, hertz, direction); });
  connect(digits, &DigitLabel::Turned, this,
          [this, vfo](double hertz, int delta) { emit DigitTurned(vfo, hertz, delta); });
  connect(digits, &DigitLabel::EntryWanted, this, [this, vfo](double undoHertz) {
    if (undoHertz != 0) emit DigitClicked(vfo, std::abs(undoHertz), undoHertz > 0 ? -1 : 1);
    BeginEntry(vfo, {});
  });
}

void VfoPanel::SetColour(const QColor& colour) {
  colour_ = colour;
  ShowFrequency();
}

void VfoPanel::Fit(bool roomy, bool brief) {
  roomy_ = roomy;
  lblA_->setVisible(roomy);
  const bool b = roomy && !shown_.SubFrequency.isEmpty();
  lblB_->setVisible(b);
  lblFreqB_->setVisible(b);
  lblSplit_->setText(brief ? shown_.Split.section(' ', 0, 0) : shown_.Split);
  lblSplit_->setVisible(!shown_.Split.isEmpty());
}

void VfoPanel::AllowEntry(bool a, bool b) {
  if (std::exchange(entry_[0], a) != a) lblFreqA_->Allow(a);
  if (std::exchange(entry_[1], b) != b) lblFreqB_->Allow(b);
}

void VfoPanel::BeginEntry(int vfo, const QString& typed) {
  if (!entry_[vfo]) return;
  // A narrow window has no room for VFO B; the entry has.
  const QLabel* label = vfo == 1 && lblFreqB_->isVisible() ? lblFreqB_ : lblFreqA_;
  entryVfo_ = vfo;
  txtFrequency_->setPlaceholderText(vfo == 0 ? tr("A, MHz") : tr("B, MHz"));
  txtFrequency_->setAccessibleName(vfo == 0 ? tr("Frequency for VFO A") : tr("Frequency for VFO B"));
  txtFrequency_->Begin(*label, typed);
}

}  // namespace spectrino
