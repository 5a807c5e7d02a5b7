#include "tuning/Peaks.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace spectrino {
namespace {

constexpr float kOverMedian = 10;
constexpr int kNeighbourhoods = 100;  // in a line

/// Points and frequencies of one line.
struct Ruler {
  explicit Ruler(const SpectrumLine& line)
      : First(line.FirstIndex),
        End(std::min(line.EndIndex(), static_cast<int>(line.Levels.size()))),
        LeftMHz(line.LeftMHz),
        // A radio's last point stands at the right edge, a transform's one step before it.
        StepMHz((line.RightMHz - line.LeftMHz) /
                std::max(1, line.FirstIndex == 0 ? line.PointCount : line.PointCount - 1)) {}
  [[nodiscard]] bool Valid() const { return End - First >= 3 && StepMHz > 0; }
  [[nodiscard]] double MHz(int index) const { return LeftMHz + (index - First) * StepMHz; }
  /// The nearest point, kept within a point of the line.
  [[nodiscard]] int Index(double mhz) const {
    const double index = First + (mhz - LeftMHz) / StepMHz;
    return static_cast<int>(std::lround(std::clamp(index, First - 1.0, static_cast<double>(End))));
  }
  int First, End;
  double LeftMHz, StepMHz;
};

float Median(const SpectrumLine& line, const Ruler& ruler) {
  std::vector<float> levels(line.Levels.begin() + ruler.First, line.Levels.begin() + ruler.End);
  const auto middle = levels.begin() + static_cast<std::ptrdiff_t>(levels.size() / 2);
  std::nth_element(levels.begin(), middle, levels.end());
  return *middle;
}

bool StandsOnTheDial(int radioMode) {
  return radioMode == mode::kCw || radioMode == mode::kCwReverse || radioMode == mode::kAm ||
         radioMode == mode::kFm;
}

}  // namespace

std::optional<double> SpotFrequency(const SpectrumLine& line, const RadioState& radio) {
  const Ruler ruler(line);
  if (!ruler.Valid() || !(radio.MainFreqMHz > 0)) return std::nullopt;
  const Passband passband = MainPassband(radio);
  const int first = std::max(ruler.Index(radio.MainFreqMHz + passband.LowHz / 1e6), ruler.First);
  const int last = std::min(ruler.Index(radio.MainFreqMHz + passband.HighHz / 1e6), ruler.End - 1);
  if (first > last) return std::nullopt;
  const auto begin = line.Levels.begin();
  const auto strongest = std::max_element(begin + first, begin + last + 1);
  if (*strongest <= kEmptyLevel) return std::nullopt;
  const double signalMHz = ruler.MHz(static_cast<int>(strongest - begin));
  const double aimHz = StandsOnTheDial(radio.RadioMode) ? 0 : (passband.LowHz + passband.HighHz) / 2;
  return signalMHz - aimHz / 1e6;
}

std::optional<Peak> FindPeak(const SpectrumLine& line, double fromMHz, int direction) {
  const Ruler ruler(line);
  if (!ruler.Valid()) return std::nullopt;
  const float least = Median(line, ruler) + kOverMedian;
  const int reach = std::max(1, (ruler.End - ruler.First) / kNeighbourhoods);
  const int step = direction < 0 ? -1 : 1;
  const auto level = [&](int index) { return line.Levels[static_cast<std::size_t>(index)]; };
  const auto highestAround = [&](int index) {
    const int first = std::max(index - reach, ruler.First);
    const int last = std::min(index + reach, ruler.End - 1);
    for (int i = first; i <= last; ++i) {
      if (level(i) > level(index)) return false;
    }
    return true;
  };
  for (int i = ruler.Index(fromMHz) + step * (reach + 1); i >= ruler.First && i < ruler.End; i += step) {
    if (level(i) >= least && highestAround(i)) return Peak{ruler.MHz(i), level(i)};
  }
  return std::nullopt;
}

}  // namespace spectrino
