#include "tuning/Peaks.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace spectrino {
namespace {

constexpr float kLeastProminence = 10;
constexpr float kLeastSpot = 6;
// Averaged noise scatters evenly: from the median down to the lower quarter are two thirds of its deviation,
// and four deviations are reached nowhere in a line. Noise that is not averaged has its end at 12 dB.
constexpr float kScatterReach = 6;
constexpr float kMostSpot = 12.5F;
constexpr int kNeighbours = 3;
constexpr int kLeastDistance = 3;

/// Whether a line is whole enough to be searched.
bool Searchable(const SpectrumLine& line) {
  return line.HasFrequencies() && line.FirstIndex >= 0 &&
         line.Levels.size() >= static_cast<std::size_t>(line.EndIndex());
}

float LevelAt(const SpectrumLine& line, int index) {
  return index >= line.FirstIndex && index < line.EndIndex() ? line.Levels[static_cast<std::size_t>(index)]
                                                             : kEmptyLevel;
}

/// Where between the points a peak stands: the middle of a flat top, as of a signal beyond the scale; else
/// the top of the parabola through the point and its neighbours. Points of a radio's scope lie hundreds of
/// hertz apart, too far for CW.
double PeakIndex(const SpectrumLine& line, int index) {
  const float top = LevelAt(line, index);
  int first = index, last = index;
  while (LevelAt(line, first - 1) == top) --first;
  while (LevelAt(line, last + 1) == top) ++last;
  if (first != last) return (first + last) / 2.0;
  const float left = LevelAt(line, index - 1);
  const float right = LevelAt(line, index + 1);
  const double curvature = left - 2.0 * top + right;
  if (!(left > kUndrawnLevel && right > kUndrawnLevel && curvature < 0)) return index;
  return index + std::clamp((left - right) / (2 * curvature), -0.5, 0.5);
}

/// Index of the highest level in first..last; nothing where no point has one.
std::optional<int> StrongestPoint(const SpectrumLine& line, double lowMHz, double highMHz) {
  const double first = std::max<double>(std::round(line.IndexAt(lowMHz)), line.FirstIndex);
  const double last = std::min<double>(std::round(line.IndexAt(highMHz)), line.EndIndex() - 1);
  if (!(first <= last)) return std::nullopt;
  int strongest = static_cast<int>(first);
  for (int i = strongest; i <= static_cast<int>(last); ++i)
    if (LevelAt(line, i) > LevelAt(line, strongest)) strongest = i;
  if (!(LevelAt(line, strongest) > kUndrawnLevel)) return std::nullopt;
  return strongest;
}

/// The levels that there are, in no order.
std::vector<float> KnownLevels(const SpectrumLine& line) {
  std::vector<float> levels;
  levels.reserve(static_cast<std::size_t>(line.PointCount));
  for (int i = line.FirstIndex; i < line.EndIndex(); ++i)
    if (LevelAt(line, i) > kUndrawnLevel) levels.push_back(LevelAt(line, i));
  return levels;
}

/// The level below which this share of them lies; levels is not empty.
float Quantile(std::vector<float>& levels, double share) {
  const auto place =
      levels.begin() + static_cast<std::ptrdiff_t>(share * static_cast<double>(levels.size() - 1));
  std::nth_element(levels.begin(), place, levels.end());
  return *place;
}

std::optional<float> MedianLevel(const SpectrumLine& line) {
  std::vector<float> levels = KnownLevels(line);
  if (levels.empty()) return std::nullopt;
  return Quantile(levels, 0.5);
}

/// What only signals exceed.
std::optional<float> LeastSpotLevel(const SpectrumLine& line) {
  std::vector<float> levels = KnownLevels(line);
  if (levels.empty()) return std::nullopt;
  const float median = Quantile(levels, 0.5);
  const float scatter = median - Quantile(levels, 0.25);
  return median + std::clamp(kScatterReach * scatter, kLeastSpot, kMostSpot);
}

/// The first of equals counts, so that a flat top is one peak.
bool IsLocalMaximum(const SpectrumLine& line, int index) {
  const float level = LevelAt(line, index);
  for (int d = 1; d <= kNeighbours; ++d)
    if (!(LevelAt(line, index - d) < level) || LevelAt(line, index + d) > level) return false;
  return true;
}

}  // namespace

double DialFor(double signalMHz, const Passband& passband, int radioMode) {
  const double fromDialHz = LiesAroundDial(radioMode) ? 0 : (passband.LowHz + passband.HighHz) / 2;
  return std::round(signalMHz * 1e6 - fromDialHz) / 1e6;
}

std::optional<double> SpotFrequency(const SpectrumLine& line, const Passband& passband, double dialMHz,
                                    int radioMode) {
  if (!(dialMHz > 0) || !Searchable(line)) return std::nullopt;
  const std::optional<float> least = LeastSpotLevel(line);
  if (!least) return std::nullopt;
  const auto signalIn = [&](double lowHz, double highHz) {
    std::optional<int> point = StrongestPoint(line, dialMHz + lowHz / 1e6, dialMHz + highHz / 1e6);
    if (point && LevelAt(line, *point) < *least) point.reset();
    return point;
  };
  const double widthHz = passband.HighHz - passband.LowHz;
  std::optional<int> point = signalIn(passband.LowHz, passband.HighHz);
  if (!point) point = signalIn(passband.LowHz - widthHz, passband.HighHz + widthHz);
  if (!point) return std::nullopt;
  const double spotMHz = DialFor(line.FrequencyAt(PeakIndex(line, *point)), passband, radioMode);
  if (!(spotMHz > 0)) return std::nullopt;
  return spotMHz;
}

std::optional<Peak> FindPeak(const SpectrumLine& line, double fromMHz, int direction) {
  if (!Searchable(line) || !std::isfinite(fromMHz)) return std::nullopt;
  const std::optional<float> median = MedianLevel(line);
  if (!median) return std::nullopt;
  const double from = line.IndexAt(fromMHz);
  const int step = direction > 0 ? 1 : -1;
  // Clamped before the conversion: from may be far outside the line.
  const double start = step > 0 ? std::max<double>(std::ceil(from), line.FirstIndex)
                                : std::min<double>(std::floor(from), line.EndIndex() - 1);
  if (start < line.FirstIndex || start >= line.EndIndex()) return std::nullopt;
  for (int i = static_cast<int>(start); i >= line.FirstIndex && i < line.EndIndex(); i += step) {
    if (LevelAt(line, i) < *median + kLeastProminence || !IsLocalMaximum(line, i)) continue;
    const double peak = PeakIndex(line, i);
    if ((peak - from) * step >= kLeastDistance) return Peak{line.FrequencyAt(peak), LevelAt(line, i)};
  }
  return std::nullopt;
}

}  // namespace spectrino
