// What the setup dialog shows for the choices made in it: which frames, which texts, what is forced and what
// stays free. Rules only: no widgets, nothing is stored.
#pragma once

#include <optional>

#include "settings/CatComposition.h"

namespace spectrino {

/// The choices that decide what the rest of the dialog looks like.
struct SetupChoice {
  SourceKind Source = SourceKind::SoundInput;
  IcomData Waveform = IcomData::SerialPort;
  CatChoice Cat;
};

/// What was chosen just now. Nothing is corrected while the dialog fills itself.
enum class SetupChange { Loading, Source, Waveform, Cat };

struct SetupView {
  CatControl Control = CatControl::HostIf;
  CatSoftware Software = CatSoftware::Castelon;  ///< what the list shows, corrected where it had to be
  bool SoftwareFree = true;                      ///< it may be chosen
  const char* Message = nullptr;                 ///< why something was corrected; null: nothing was
  OffsetFrame Offsets = OffsetFrame::None;

  bool SoundCard = true;  ///< transform, I/Q, kind of receiver, priority; a radio has none of them
  bool Icom = false;
  bool IcomSerial = true;  ///< port and CI-V addresses, where the Icom's frames are shown
  bool K4 = false;
  bool K4D = false;                    ///< with a second receiver to be opened
  bool AutoRef = false;                ///< the radio's reference level can be kept by band
  const char* Instructions = nullptr;  ///< what to do at the radio; null: nothing
  /// What the number of averaged frames becomes: a radio's lines come slower or already averaged.
  std::optional<int> HistoryDepth = std::nullopt;
};

[[nodiscard]] SetupView ViewFor(const SetupChoice& choice, SetupChange change);

/// What is asked before real-time priority is switched on.
[[nodiscard]] const char* PriorityQuestion(SourceKind source);

}  // namespace spectrino
