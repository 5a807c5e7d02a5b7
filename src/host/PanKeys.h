// The section "PAN": how programs between us and a radio publish its state, in the vocabulary of the Elecraft
// commands of the same names. Which keys belong to which CAT control, and what they make of the radio's
// state.
#pragma once

#include <string_view>
#include <vector>

#include "settings/SettingsStore.h"
#include "state/CatControl.h"
#include "state/RadioState.h"

namespace spectrino {

inline constexpr std::string_view kPanSection = "PAN";
inline constexpr double kUsualPitchHz = 600;

/// What the section holds; 0 for what is missing, or not read under this CAT control.
struct PanValues {
  double MainFreqMHz = 0, SubFreqMHz = 0;  ///< "FA", "FB"
  double Mode = 0, SubMode = 0;            ///< "MD"; "MD$" or "MD2"
  double OffsetHz = 0;                     ///< "FI"
  double IfCentreHz = 0;                   ///< "IS": audio frequency of the filter's middle
  double IfShiftHz = 0;                    ///< "IFS": of the filter, from its usual place
  double WidthHz = 0, SubWidthHz = 0;      ///< "FW"; "FW$" or "FW2"
  double PitchHz = 0;                      ///< "PITCH" or "PI"; read as 600 when it is 0
  double PreampDb = 0, AttenuatorDb = 0;   ///< "PRE", "ATT"
  double Split = 0;                        ///< "FT"
  double ToneShiftHz = 0;                  ///< "SHIFT": between the two tones of FSK
  double FskOffset = 0;                    ///< "FSK": the display has the tones' offset in it already
  double Corrects = 0;                     ///< "CO": a click on an FSK signal is corrected

  /// From the dial to the middle of the tones, Hz.
  [[nodiscard]] int ToneOffsetHz() const;
  bool operator==(const PanValues&) const = default;
};

/// The application that publishes under this CAT control.
[[nodiscard]] std::string_view PanApplication(CatControl control);
/// The keys that are read under it, in the order of their table.
[[nodiscard]] std::vector<std::string_view> PanKeysOf(CatControl control);
[[nodiscard]] PanValues ReadPan(SettingsStore& store, CatControl control);

/// What every CAT control takes of the values beside frequencies and modes: filters, pitch and gains. The
/// modes of radio are to be known already.
void TellFilters(const PanValues& pan, RadioState& radio);
/// "IS" of a filter that is shifted from its usual place.
[[nodiscard]] double FilterCentreHz(int radioMode, double widthHz, double shiftHz, double pitchHz);
/// The dial for a signal that was pointed at, MHz: off by the tones' offset in FSK, where the publisher says
/// so.
[[nodiscard]] double CorrectedForTones(const PanValues& pan, int radioMode, double freqMHz);
/// A radio that transmits where it listens works no split, whatever it says.
void ClearEqualSplit(RadioState& radio);

}  // namespace spectrino
