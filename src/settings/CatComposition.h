// How the setup dialog's choices of CAT software, kind of receiver and source make up the stored CAT control.
// Rules only: no widgets, nothing is stored.
#pragma once

#include "state/CatControl.h"

namespace spectrino {

/// Entries of the CAT software list, in its order.
enum class CatSoftware { Castelon, CastelonK3, LPBridge, Ketrel, Icom };
/// Entries of the list of receivers with I/Q output.
enum class SdrKind { IfAdapter, FixedLo };
/// What the chosen source is to the rules.
enum class SourceKind { SoundCard, Icom, K4, K4D };
/// Entries of the list of ways to the Icom's waveform data.
enum class IcomData { SerialPort, ViaHost };

struct CatChoice {
  CatSoftware Software = CatSoftware::Castelon;
  SdrKind Sdr = SdrKind::IfAdapter;

  bool operator==(const CatChoice&) const = default;
};

/// What a stored value shows in the two lists.
[[nodiscard]] CatChoice ChoiceOf(CatControl control);

/// What the choices make together, compatible or not.
[[nodiscard]] CatControl ComposeCatControl(const CatChoice& choice, SourceKind source, IcomData icomData);

/// What is wrong with a composed value, and what it becomes.
struct CatCorrection {
  const char* Message = nullptr;  ///< null: nothing is wrong
  CatControl Control = CatControl::HostIf;
  CatSoftware Software = CatSoftware::Castelon;  ///< to be shown instead
};
[[nodiscard]] CatCorrection CheckCompatible(CatControl control, SourceKind source, IcomData icomData);

/// Which frame of offsets belongs to a value.
enum class OffsetFrame { None, ModeOffset, CenterFrequencies, GlobalOffset };
[[nodiscard]] OffsetFrame OffsetFrameFor(CatControl control, SourceKind source);

}  // namespace spectrino
