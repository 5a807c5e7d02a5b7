// Signals in the spectrum by key: goes from one to the next, says what it found, tunes to it.
// Shows where it is as the pointer would; what a signal is stands in tuning/Peaks.
#pragma once

#include <optional>

#include "display/PanDisplay.h"
#include "display/ui/ScopeWidget.h"
#include "run/RunCycle.h"
#include "run/Session.h"
#include "tuning/Tuner.h"

namespace spectrino {

class PeakKeys {
 public:
  /// All outlive it.
  PeakKeys(const Session& state, RunCycle& cycle, PanDisplay& display, ScopeWidget& scope, Tuner& tuner)
      : state_(state), cycle_(cycle), display_(display), scope_(scope), tuner_(tuner) {}

  /// The next one above (+1) or below (-1) of the one chosen last, or of the dial.
  void Show(int direction);
  /// To the one chosen; false where none is, or the dial has moved since.
  bool Tune();
  /// A click chose otherwise, or the run ended.
  void Forget() { peak_.reset(); }

 private:
  struct ChosenPeak {
    double FreqMHz = 0;
    double DialMHz = 0;  ///< where the radio was when it was chosen
  };
  [[nodiscard]] bool Stands() const;
  void PointAt(double freqMHz, float level);

  const Session& state_;
  RunCycle& cycle_;
  PanDisplay& display_;
  ScopeWidget& scope_;
  Tuner& tuner_;
  std::optional<ChosenPeak> peak_;
};

}  // namespace spectrino
