#include "display/TextCache.h"

#include <QFontMetrics>
#include <cstddef>

namespace spectrino {
namespace {
// A pointer at rest shows another level every frame; such texts must not pile up.
constexpr std::size_t kMostEntries = 64;
}  // namespace

const TextCache::Entry& TextCache::Get(const std::string& text, const QFont& font) {
  if (entries_.size() >= kMostEntries) Clear();
  const auto [place, isNew] = entries_.try_emplace({text, font.key()});
  Entry& entry = place->second;
  if (isNew) {
    const QString shown = QString::fromStdString(text);
    entry.Text.setTextFormat(Qt::PlainText);
    entry.Text.setText(shown);
    entry.Text.prepare({}, font);
    const QFontMetrics metrics(font);
    entry.Size = QSize(metrics.horizontalAdvance(shown), metrics.height());
  }
  return entry;
}

const TextCache::Entry& TextCache::GetElided(const std::string& text, const QFont& font, int maxWidth) {
  const Entry& whole = Get(text, font);
  if (whole.Size.width() <= maxWidth) return whole;
  return Get(
      QFontMetrics(font).elidedText(QString::fromStdString(text), Qt::ElideRight, maxWidth).toStdString(),
      font);
}

}  // namespace spectrino
