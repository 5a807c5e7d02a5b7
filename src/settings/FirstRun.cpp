#include "settings/FirstRun.h"

#include "settings/Keys.h"

namespace spectrino {
namespace {
constexpr int kBlackmanHarris = 3;
constexpr int kAverage = 1;
constexpr int kHalf = 3;
constexpr int kInferno = 1;
}  // namespace

void WriteFirstRun(SetupSection& setup) {
  SetupBatch batch(setup);
  batch.Put(key::kWindowType, kBlackmanHarris)
      .Put(key::kDisplayMode, kAverage)
      .Put(key::kWaterfall, kHalf)
      .Put(key::kAutoLevel, true)
      .Put(key::kWFPalette, kInferno)
      .Save();
}

}  // namespace spectrino
