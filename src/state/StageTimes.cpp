#include "state/StageTimes.h"

#include <algorithm>
#include <vector>

namespace spectrino {

void StageTimes::Add(Stage stage, Duration time) {
  Samples& samples = stages_[static_cast<std::size_t>(stage)];
  samples.milliseconds[samples.count++ % samples.milliseconds.size()] =
      std::chrono::duration<float, std::milli>(time).count();
}

double StageTimes::QuantileMs(Stage stage, double share) const {
  const Samples& samples = stages_[static_cast<std::size_t>(stage)];
  const std::size_t kept = std::min(samples.count, samples.milliseconds.size());
  if (kept == 0) return 0;
  std::vector<float> sorted(samples.milliseconds.begin(),
                            samples.milliseconds.begin() + static_cast<long>(kept));
  const auto nth = sorted.begin() + static_cast<long>(share * static_cast<double>(kept - 1) + 0.5);
  std::nth_element(sorted.begin(), nth, sorted.end());
  return *nth;
}

}  // namespace spectrino
