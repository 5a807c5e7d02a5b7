// How the setup dialog's choices of CAT software, kind of receiver and source make up the stored CAT control.
// Rules only: no widgets, nothing is stored.
#pragma once

#include "state/CatControl.h"
#include "state/SourceId.h"

namespace spectrino {

/// Entries of the CAT software list, in its order.
enum class CatSoftware { Castelon, CastelonK3, LPBridge, Ketrel, Icom };
/// Entries of the list of receivers with I/Q output.
enum class SdrKind { IfAdapter, FixedLo };
/// Entries of the list of ways to the Icom's waveform data; the values of "ICCTRL".
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

/// What the stored value becomes when another source is chosen in the window's list, where nobody is asked:
/// the set-up of one source may not reach another one's radio.
[[nodiscard]] CatControl ControlForSource(CatControl control, SourceKind source, IcomData icomData);

/// Which frame of offsets belongs to a value.
enum class OffsetFrame { None, ModeOffset, CenterFrequencies, GlobalOffset };
[[nodiscard]] OffsetFrame OffsetFrameFor(CatControl control, SourceKind source);

}  // namespace spectrino
