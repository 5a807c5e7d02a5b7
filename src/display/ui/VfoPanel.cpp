#include "display/ui/VfoPanel.h"

#include <QHBoxLayout>
#include <QMouseEvent>
#include <utility>

#include "controls/Controls.h"

namespace spectrino {
namespace {

QLabel* MakeReading(const char* name, const char* role, const QString& accessible, QWidget* parent) {
  QLabel* label = MakeLabel({}, role, parent);
  label->setObjectName(name);
  label->setAccessibleName(accessible);
  label->setTextFormat(Qt::PlainText);
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
  lblFreqA_ = MakeReading("lblFreqA", "frequency", tr("Frequency of VFO A"), this);
  lblFreqA_->setTextFormat(Qt::RichText);
  lblFreqA_->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Preferred);  // rich text gives way otherwise
  lblMode_ = MakeReading("lblMode", "badge", tr("Mode"), this);
  lblMode_->hide();
  lblB_ = MakeLetter("lblB", "B", this);
  lblFreqB_ = MakeReading("lblFreqB", "frequencyB", tr("Frequency of VFO B"), this);
  lblSplit_ = MakeReading("lblSplit", "split", tr("Split"), this);
  lblSplit_->hide();
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(8);
  for (QLabel* label : {lblA_, lblFreqA_, lblMode_, lblB_, lblFreqB_, lblSplit_})
    row->addWidget(label, 0, Qt::AlignVCenter);
  // Made last: it lies over the other parts.
  txtFrequency_ = new FrequencyEntry(this);
  txtFrequency_->setObjectName("txtFrequency");
  connect(txtFrequency_, &FrequencyEntry::Entered, this,
          [this](const QString& text) { emit FrequencyTyped(entryVfo_, text); });
  ShowFrequency();
  Fit(true, false);
}

void VfoPanel::Show(const VfoReadings& readings) {
  const VfoReadings before = std::exchange(shown_, readings);
  if (before == shown_) return;
  if (before.Frequency != shown_.Frequency) ShowFrequency();
  lblMode_->setText(shown_.Mode);
  lblMode_->setVisible(!shown_.Mode.isEmpty());
  lblFreqB_->setText(shown_.SubFrequency);
  lblSplit_->setAccessibleDescription(shown_.Split);
  const bool otherWidth = before.Frequency.size() != shown_.Frequency.size() || before.Mode != shown_.Mode ||
                          before.SubFrequency.size() != shown_.SubFrequency.size() ||
                          before.Split != shown_.Split;
  if (otherWidth) emit WidthChanged();
}

void VfoPanel::ShowFrequency() {
  // The last three digits are Hz, written smaller, as on a front panel.
  const QString& text = shown_.Frequency;
  const qsizetype cut = text.contains('.') ? text.size() - 3 : text.size();
  lblFreqA_->setText(
      QString("<span style=\"color:%1\">%2<span style=\"font-size:14px;color:%3\">%4</span></span>")
          .arg(colour_.name(), text.left(cut).toHtmlEscaped(), colour_.darker(150).name(),
               text.mid(cut).toHtmlEscaped()));
  lblFreqA_->setAccessibleDescription(text);
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
  const auto show = [](QLabel* label, bool allowed) {
    label->setToolTip(allowed ? tr("Click to type a frequency") : QString());
    label->setCursor(allowed ? Qt::IBeamCursor : Qt::ArrowCursor);
  };
  if (std::exchange(entry_[0], a) != a) show(lblFreqA_, a);
  if (std::exchange(entry_[1], b) != b) show(lblFreqB_, b);
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

void VfoPanel::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const QPoint at = event->position().toPoint();
  // A hidden label keeps the place that it had.
  if (lblFreqA_->geometry().contains(at)) BeginEntry(0, {});
  if (lblFreqB_->isVisible() && lblFreqB_->geometry().contains(at)) BeginEntry(1, {});
}

}  // namespace spectrino
