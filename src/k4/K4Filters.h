// Audio frequencies of a K4's filters as distances from the dial.
// Numbers only; who shades or marks them is the display's business.
#pragma once

namespace spectrino {

/// The K4 tells the audio frequency of the filter's middle. In SSB and data that is the distance from the
/// dial, on the mode's own side by the rules of Passband; in CW the pitch stands on the dial; AM and FM
/// filters lie around it. pitchHz: of CW, 0 while unknown.
[[nodiscard]] double ShiftFromDialHz(int radioMode, int centreHz, int pitchHz);

/// Where a manual notch at an audio frequency stands, counted from the dial.
[[nodiscard]] double NotchFromDialHz(int radioMode, int notchHz, int pitchHz);

}  // namespace spectrino
