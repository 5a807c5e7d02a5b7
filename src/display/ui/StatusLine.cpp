#include "display/ui/StatusLine.h"

#include <algorithm>

namespace spectrino {
namespace {

constexpr int kPassingMs = 4000;
constexpr int kLeft = 6;
constexpr int kBelow = 4;
constexpr int kBeside = 54;  // of the plot's width stay free
constexpr int kFrame = 14;   // of the style sheet, both sides
constexpr int kLeastWidth = 60;

}  // namespace

StatusLine::StatusLine(QWidget* parent) : QLabel(parent) {
  setObjectName("lblStatus");
  setTextFormat(Qt::PlainText);
  setAttribute(Qt::WA_TransparentForMouseEvents);
  hide();
  passingTimer_.setSingleShot(true);
  passingTimer_.setInterval(kPassingMs);
  connect(&passingTimer_, &QTimer::timeout, this, [this] { Show(Rank::Passing, {}); });
}

void StatusLine::Show(Rank rank, const QString& text) {
  if (rank == Rank::Passing) {
    if (text.isEmpty())
      passingTimer_.stop();
    else
      passingTimer_.start();
  }
  QString& said = texts_[static_cast<std::size_t>(rank)];
  if (said == text) return;
  said = text;
  Write();
}

void StatusLine::Write() {
  const auto most =
      std::find_if(texts_.rbegin(), texts_.rend(), [](const QString& text) { return !text.isEmpty(); });
  const QString shown = most == texts_.rend() ? QString() : *most;
  // First: a label without a name of its own calls itself by its text, and says so with every change.
  const QString name = most == texts_.rbegin() ? name_ : shown;
  if (!name.isEmpty() && name != accessibleName()) setAccessibleName(name);
  if (shown == text()) return;
  setText(shown);
  setVisible(!shown.isEmpty());
  Fit();
}

void StatusLine::Name(const QString& text) {
  name_ = text;
  Write();
}

void StatusLine::Place(const QRect& plot) {
  plot_ = plot;
  Fit();
}

void StatusLine::Fit() {
  const int widest = std::max(plot_.width() - kBeside, kLeastWidth);
  int longest = 0;
  for (const QString& line : text().split('\n'))
    longest = std::max(longest, fontMetrics().horizontalAdvance(line));
  setWordWrap(longest + kFrame > widest);
  setMaximumWidth(widest);
  adjustSize();
  move(plot_.left() + kLeft, std::max(0, plot_.bottom() + 1 - height() - kBelow));
}

}  // namespace spectrino
