#include "dsp/LineJoin.h"

#include <algorithm>
#include <cstddef>

#include "state/SpectrumLine.h"

namespace spectrino {

void LineJoin::Set(int lines, bool average) {
  lines = std::max(1, lines);
  if (lines == lines_ && average == average_) return;
  lines_ = lines;
  average_ = average;
  Restart();
}

std::span<const float> LineJoin::Add(std::span<const float> levels) {
  if (lines_ == 1) return levels;
  if (count_ >= lines_ || levels.size() != row_.size()) Restart();
  if (++count_ == 1) {
    row_.assign(levels.begin(), levels.end());
    return row_;
  }
  const float share = average_ ? 1.0F / static_cast<float>(count_) : 1.0F;
  for (std::size_t i = 0; i < row_.size(); ++i) {
    const float was = row_[i];
    const float level = levels[i];
    if (level == kUndrawnLevel) continue;
    const bool taken = was == kUndrawnLevel || (!average_ && level > was);
    row_[i] = taken ? level : average_ ? was + (level - was) * share : was;
  }
  return row_;
}

}  // namespace spectrino
