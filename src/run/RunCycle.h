// Start, Stop and one pass of the frame loop: the only place where source, maths, display and radio meet.
// Draws nothing and waits for nothing: Step() says when it wants to be called again.
#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "run/FrameMaker.h"
#include "run/PlotScale.h"
#include "run/RunStart.h"

namespace spectrino {

class RunCycle {
 public:
  RunCycle(Session& session, const RunParts& parts);

  /// StartButton_Click: prepares the chosen source. False when the run did not begin; the user has been told
  /// why.
  bool Start();
  /// StopButton_Click: closes the source and the links. Harmless while stopped, and never waits.
  void Stop();
  /// One pass: at most one frame. Returns how long to wait before the next; meaningless while not Running().
  std::chrono::milliseconds Step();

  [[nodiscard]] bool Running() const { return run_.Running; }
  /// Between the click and the first frame; the host program is looked for and links are opened in it.
  [[nodiscard]] bool Starting() const { return starting_; }
  /// Stop was called since the last Start began: a Start that is under way gives up.
  [[nodiscard]] bool StopRequested() const { return stopRequested_; }
  /// The last Start ended without a run, and not because it was stopped.
  [[nodiscard]] bool StartFailed() const { return startFailed_; }
  /// Called while the links of a run that ends are still open.
  std::function<void()> Stopping;
  /// Called when the run began or ended, whatever ended it.
  std::function<void()> RunningChanged;

  /// optZoom click. With High Res. Zoom the sound input of a run is opened again at the rate of the new zoom;
  /// everything else goes on.
  void SetZoom(int zoomIndex);
  /// SetZoom, with the frequency at x of the plot staying there. x: 0..1 of the plot's width.
  void ZoomAt(int zoomIndex, double x);
  /// Brings the scale to the sink after settings, size or choice of source changed.
  void UpdateScale();
  [[nodiscard]] PlotScale& Scale() { return scale_; }
  [[nodiscard]] FrameMaker& Frames() { return frames_; }
  /// What is on; the line of it is the newest of this run.
  [[nodiscard]] const RunView& View() const { return run_; }
  /// The back-end that this run asks for frequencies; null where there is none.
  [[nodiscard]] RigBackend* Backend() const { return run_.Running ? start_.Backend() : nullptr; }
  /// The host program that this run's radio is reached through was not found.
  [[nodiscard]] bool HostMissing() const { return run_.Link != nullptr && start_.HostMissing(); }
  /// What is wrong with the sound input though it runs, its mixer's settings or silence; empty when nothing
  /// is.
  [[nodiscard]] std::string Warning() const { return start_.Audio().Warning(); }
  /// How the link does that brings the lines of this run; Closed while there is none.
  [[nodiscard]] LinkHealth Health() const;
  /// What arrives at the 0 Hz of a sound card, MHz; counted from the dial while its frequency is unknown.
  [[nodiscard]] double ZeroFreqMHz() const { return session_.Radio.MainFreqMHz - OffsetKHz() / 1000; }
  /// How long runs have lasted, all together.
  [[nodiscard]] std::chrono::steady_clock::duration TimeInRuns() const;

 private:
  void BeginRun();
  PollResult PollSource();
  void EndLostRun();
  [[nodiscard]] std::chrono::milliseconds UntilBlock() const;
  void RefreshRadio();
  [[nodiscard]] double OffsetKHz() const;

  Session& session_;
  RunParts parts_;
  RunView run_;
  RunStart start_;
  PlotScale scale_;
  FrameMaker frames_;
  int bandFlip_ = 1;
  std::chrono::steady_clock::time_point runSince_{};
  std::chrono::steady_clock::duration earlierRuns_{};
  bool starting_ = false;
  bool startFailed_ = false;
  bool stopRequested_ = false;
};

}  // namespace spectrino
