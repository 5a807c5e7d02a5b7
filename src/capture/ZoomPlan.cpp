#include "capture/ZoomPlan.h"

#include <algorithm>
#include <cassert>

namespace spectrino {
namespace {

struct Choice {
  int rateHz;  // 0: the rate that was chosen
  int displayZoom;
};

// Rows: zoom 1x..32x. Columns: rate index 0-1, 2-3, 4, 5, 6.
constexpr Choice kChoices[6][5] = {
    {{0, 1}, {0, 1}, {0, 1}, {0, 1}, {0, 1}},
    {{0, 2}, {0, 2}, {0, 2}, {0, 2}, {0, 2}},
    {{0, 4}, {22050, 2}, {44100, 2}, {48000, 2}, {96000, 2}},
    {{0, 8}, {22050, 4}, {22050, 2}, {22050, 2}, {48000, 2}},
    {{0, 16}, {22050, 8}, {22050, 4}, {22050, 4}, {48000, 4}},
    {{0, 32}, {22050, 16}, {22050, 8}, {22050, 8}, {48000, 8}},
};
constexpr int kColumnOfRate[7] = {0, 0, 1, 1, 2, 3, 4};

}  // namespace

ZoomPlan ChooseZoomPlan(bool highResolution, int zoomIndex, int rateIndex, int bitsIndex) {
  assert(zoomIndex >= 0 && zoomIndex < 6 && rateIndex >= 0 && rateIndex < 7 && bitsIndex >= 0 &&
         bitsIndex < 9);
  ZoomPlan plan{kSampleRates[static_cast<std::size_t>(rateIndex)], 8 + bitsIndex, 1 << zoomIndex};
  if (!highResolution) return plan;

  const Choice& choice = kChoices[zoomIndex][kColumnOfRate[rateIndex]];
  if (choice.rateHz != 0) plan.SampleRate = choice.rateHz;
  plan.DisplayZoom = choice.displayZoom;
  // The 16x cell at 192 kHz alone keeps the size: 48000 Hz at a zoom of 4 is fine enough.
  const bool doubled = zoomIndex == 5 || (zoomIndex == 4 && rateIndex != 6);
  if (doubled) plan.FftBits = std::min(plan.FftBits + 1, 16);
  return plan;
}

}  // namespace spectrino
