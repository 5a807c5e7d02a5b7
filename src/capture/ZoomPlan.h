// Sample rate, FFT size and display zoom of a run, from what the user chose.
#pragma once

#include <array>

namespace spectrino {

inline constexpr std::array<int, 7> kSampleRates = {11025, 22050, 44100, 48000, 88200, 96000, 192000};

struct ZoomPlan {
  int SampleRate = 44100;  ///< Hz
  int FftBits = 13;        ///< N = 2^FftBits
  int DisplayZoom = 1;     ///< magnification that is left for the display

  bool operator==(const ZoomPlan&) const = default;
};

/// zoomIndex 0..5 is 1x..32x; rateIndex 0..6 into kSampleRates; bitsIndex 0..8 is N = 2^(8 + index).
/// Without High Res. Zoom all of the zoom is the display's. With it 4x and more lower the sample rate as far
/// as the card's next rates allow, and 16x and 32x double the FFT size while it is below 65536.
[[nodiscard]] ZoomPlan ChooseZoomPlan(bool highResolution, int zoomIndex, int rateIndex, int bitsIndex);

}  // namespace spectrino
