// Makes a frame of each new line: history, meter and scale, handed to the sink.
// Takes no lines itself and knows no source; that is the run cycle's.
#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include "dsp/LevelHistory.h"
#include "run/PlotScale.h"
#include "run/SMeter.h"
#include "state/StageTimes.h"

namespace spectrino {

class FrameMaker {
 public:
  /// All outlive it.
  FrameMaker(Session& session, FrameSink& sink, StageTimes& times, RunView& run, PlotScale& scale)
      : session_(session), sink_(sink), times_(times), run_(run), scale_(scale) {}

  /// The line of the view is new.
  void Show(SMeter::TimePoint now);
  /// A run begins: nothing of earlier lines is known.
  void Forget();
  /// The same run goes on with lines of another rate.
  void RestartHistory();

  /// optDisp click: the history restarts, PEAK is cleared even when it was PEAK before.
  void SetDisplayMode(int index);
  /// After a retuning click: PEAK begins anew.
  void RestartTraces() { history_.ClearDisplay(); }
  /// cmdSpot: the next line is handed to SpotFrame, unless it comes later than kSpotWait: nobody waits for it
  /// any more, and the dial may be in other hands.
  void RequestSpot(SMeter::TimePoint now) { spotAsked_ = now; }
  /// The slowest source, 65536 points at 11025 Hz, brings a line each 1.5 s.
  static constexpr std::chrono::milliseconds kSpotWait{2000};
  std::function<void(const SpectrumLine&)> SpotFrame;
  [[nodiscard]] const Readings& Meter() const { return meter_.Shown(); }

 private:
  void RestartIfMoved();
  void FollowScale(SMeter::TimePoint now);

  Session& session_;
  FrameSink& sink_;
  StageTimes& times_;
  RunView& run_;
  PlotScale& scale_;
  SMeter meter_;
  LevelHistory history_;
  int historyPoints_ = 0;
  int lastRadioMode_ = 0;
  double lastLeftMHz_ = 0;
  double lastRightMHz_ = 0;
  std::optional<SMeter::TimePoint> spotAsked_;
};

}  // namespace spectrino
