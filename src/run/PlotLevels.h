// Between which levels the plot and the waterfall's colours run: by reference and range, by a radio's own
// scale, or by themselves. Draws nothing; where lines stand is PlotScale's.
#pragma once

#include "run/AutoLevel.h"
#include "run/RunView.h"
#include "run/Session.h"

namespace spectrino {

class PlotLevels {
 public:
  /// Both outlive it.
  PlotLevels(Session& session, const RunView& run) : session_(session), run_(run) {}

  /// A run begins: the levels of its first line stand at once.
  void Restart() {
    auto_.Restart();
    radioShiftDb_ = 0;
  }
  /// With each new line of the run, before it is shown.
  void Follow(const FrameGeometry& shown, AutoLevel::Time now);
  /// The axis as it is now.
  [[nodiscard]] LevelScale Current();
  /// What the colours of the newest line run over.
  [[nodiscard]] LevelRange Colours();

  /// "AutoLevel". Off, reference and range are what the operator left.
  void SetAuto(bool on);
  /// Reference and range of the band that the radio is on.
  void ApplyBand();
  /// An operator's step of reference or range. One while the levels are by themselves goes on from what is
  /// shown and ends that. No effect on radios with a scale of their own.
  void ChangeReference(int stepDb);
  void RangeUp();
  void RangeDown();
  /// Both ends by so many dB, as far as the reference goes; of a radio with a scale of its own in the display
  /// alone, for this run. Returns by how many they moved. Ends the levels by themselves.
  int MoveReference(int db);

 private:
  [[nodiscard]] LevelScale Plain();
  [[nodiscard]] bool AutoShown(bool inDb) const { return session_.Settings.AutoLevel && auto_.Known(inDb); }
  [[nodiscard]] int BinWidth() const;
  void TakeOver();
  void RememberBand();
  /// The radio whose lines are shown, or will be.
  [[nodiscard]] const RadioLink* ShownLink() const { return run_.Running ? run_.Link : run_.NextLink; }

  Session& session_;
  const RunView& run_;
  LevelScale byHand_;  ///< of reference and range
  AutoLevel auto_;
  int radioShiftDb_ = 0;  ///< of a radio's own scale, moved by hand
};

}  // namespace spectrino
