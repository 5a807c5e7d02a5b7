// What is known of the radio. Written by the back-end in use, read by everything that draws.
// Plain data: no rule lives here.
#pragma once

#include <optional>

namespace spectrino {

/// RadioMode: the mode as an Elecraft "MD" code, whichever radio is connected. 0 is unknown.
namespace mode {
inline constexpr int kUnknown = 0;
inline constexpr int kLsb = 1;
inline constexpr int kUsb = 2;
inline constexpr int kCw = 3;
inline constexpr int kFm = 4;
inline constexpr int kAm = 5;
inline constexpr int kData = 6;
inline constexpr int kCwReverse = 7;
inline constexpr int kDataReverse = 9;
}  // namespace mode

struct RadioState {
  double MainFreqMHz = 0;  ///< 0 while no back-end has told a frequency
  double SubFreqMHz = 0;
  int RadioMode = mode::kUnknown;
  int SubRadioMode = mode::kUnknown;
  bool Teletype = false;  ///< DATA of the main receiver is radio teletype
  bool SubTeletype = false;
  int SplitOn = 0;
  int PreampDb = 0;            ///< gain ahead of the spectrum, 0 when unknown
  int AttenuatorDb = 0;        ///< loss ahead of the spectrum, 0 when unknown
  double MainBandwidthHz = 0;  ///< 0 when the back-end tells none
  double MainShiftHz = 0;      ///< passband shift
  double SubBandwidthHz = 0;
  double SubShiftHz = 0;
  std::optional<double> MainNotchHz;  ///< of a manual notch, from the dial
  std::optional<double> SubNotchHz;
  int PitchHz = 600;  ///< CW pitch
  bool Transmitting = false;
  bool SMeterTold = false;  ///< the radio tells its own S-meter
  double SMeterDbm = 0;     ///< its reading, S9 at -73, without the user's correction

  bool OwnSpectrum = false;  ///< the radio delivers the spectrum of this run itself
};

}  // namespace spectrino
