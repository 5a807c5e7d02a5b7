#include "run/SetupChecks.h"

#include "dsp/PowerOfTwo.h"

namespace spectrino {

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

}  // namespace spectrino
