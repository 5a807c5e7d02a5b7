#include "run/SetupChecks.h"

#include <algorithm>

#include "capture/ZoomPlan.h"
#include "dsp/PowerOfTwo.h"

namespace spectrino {

namespace {
constexpr int kCommonRateHz = 48000;
}

std::optional<std::string> FftLengthError(int points) {
  if (IsPowerOfTwo(points)) return std::nullopt;
  return "Error in FFT:\r\nNumSamples is " + std::to_string(points) +
         ", which is not a positive integer power of two.";
}

std::string OpenFailureText(int sampleRateHz, bool zoomLowersRate, const std::string& reason) {
  std::string text = "Wave input device didn't open at " + std::to_string(sampleRateHz) +
                     "!\r\nPlease check Sample Rate of your Sound Card";
  if (zoomLowersRate) {
    text += "\r\nPlease disable High Res. Zoom or \r\nor close other audio applications";
  }
  // The rate is but one cause of several.
  if (!reason.empty()) text += "\r\n\r\n" + reason;
  return text;
}

Cure OpenFailureCure(int sampleRateHz, bool zoomLowersRate, const SoundDevice* device) {
  if (device == nullptr)
    return Cure::OpenSetup("Plug the input in and press Start, or choose another source in Setup.");
  if (zoomLowersRate)
    return Cure::PlainZoom("Without High Res. Zoom the input stays at the rate that you chose for it.");
  const int usualHz = device->UsualRateHz;
  if (usualHz != sampleRateHz && std::ranges::count(kSampleRates, usualHz) > 0)
    return Cure::UseRate("The input runs at " + std::to_string(usualHz) + " Hz.", usualHz);
  if (usualHz == 0 && sampleRateHz != kCommonRateHz)
    return Cure::UseRate("Most sound cards run at " + std::to_string(kCommonRateHz) + " Hz.", kCommonRateHz);
  return Cure::OpenSetup("Close the programs that use the input, or choose another one in Setup.");
}

}  // namespace spectrino
