// Start, Stop and one pass of the frame loop: the only place where source, maths, display and radio meet.
// Draws nothing and waits for nothing: Step() says when it wants to be called again.
#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "capture/AudioSource.h"
#include "capture/DeviceList.h"
#include "capture/ZoomPlan.h"
#include "dsp/LevelHistory.h"
#include "dsp/VisibleRange.h"
#include "platform/Clock.h"
#include "platform/EventPump.h"
#include "platform/Notifier.h"
#include "run/RigRouter.h"
#include "run/SMeterLevel.h"
#include "run/Session.h"
#include "settings/SettingsStore.h"
#include "state/FrameSink.h"
#include "state/StageTimes.h"

namespace spectrino {

/// The run cycle's surroundings; all outlive it.
struct RunParts {
  DeviceList& Devices;
  FrameSink& Sink;
  SettingsStore& Store;
  Notifier& User;
  EventPump& Pump;
  const Clock& Time;
  StageTimes& Times;
  RigRouter Router;
};

class RunCycle {
 public:
  RunCycle(Session& session, const RunParts& parts);

  /// StartButton_Click: prepares the chosen source. False when the run did not begin; the user has been told
  /// why.
  bool Start();
  /// StopButton_Click: closes the source and the links. Harmless while stopped.
  void Stop();
  /// One pass: at most one frame. Returns how long to wait before the next; meaningless while not Running().
  std::chrono::milliseconds Step();

  [[nodiscard]] bool Running() const { return running_; }
  /// Between the click and the first frame; the host program is looked for and links are opened in it.
  [[nodiscard]] bool Starting() const { return starting_; }
  /// Stop was called since the last Start began: a Start that is under way gives up.
  [[nodiscard]] bool StopRequested() const { return stopRequested_; }
  /// The last Start ended without a run, and not because it was stopped.
  [[nodiscard]] bool StartFailed() const { return startFailed_; }

  /// optZoom click. With High Res. Zoom a sound-card run is closed and started again at the rate of the new
  /// zoom.
  void SetZoom(int zoomIndex);
  /// SetZoom, with the frequency at x of the plot staying there. x: 0..1 of the plot's width.
  void ZoomAt(int zoomIndex, double x);
  /// Moves the zoomed window of a sound card by so much of the plot's width; up the band when positive. Ends
  /// where the line ends, and does nothing at zoom 1X or on a radio's own line.
  /// Whole points are moved: returns how many widths that was.
  double PanBy(double widths);
  /// After a retuning click: PEAK begins anew.
  void RestartTraces() { history_.ClearDisplay(); }
  /// cmdSpot: the next frame is handed to SpotFrame.
  void RequestSpot() { spotRequested_ = true; }
  std::function<void(const SpectrumLine&)> SpotFrame;
  /// The newest line of this run; PointCount 0 before the first.
  [[nodiscard]] const SpectrumLine& Line() const { return line_; }
  /// The back-end that this run asks for frequencies; null where there is none.
  [[nodiscard]] RigBackend* Backend() const;
  [[nodiscard]] CatControl Control() const { return control_; }
  /// Brings the scale to the sink after anything that it depends on changed.
  void UpdateScale();
  /// Command1 and Command18, Command3 and Command2. No effect on radios with a scale of their own.
  void ReferenceUp() { ChangeReference(+3); }
  void ReferenceDown() { ChangeReference(-3); }
  void RangeUp();
  void RangeDown();
  /// optDisp click: the history restarts, PEAK is cleared even when it was PEAK before.
  void SetDisplayMode(int index);

  [[nodiscard]] const Readings& Meter() const { return readings_; }
  [[nodiscard]] const ScaleState& Scale() const { return scale_; }
  [[nodiscard]] const ZoomPlan& Plan() const { return plan_; }
  [[nodiscard]] AudioSource& Audio() { return audio_; }
  /// The source of this run, or the chosen one while stopped.
  [[nodiscard]] const std::string& SourceName() const;
  /// What arrives at the 0 Hz of a sound card, MHz; counted from the dial while its frequency is unknown.
  [[nodiscard]] double ZeroFreqMHz() const { return session_.Radio.MainFreqMHz - OffsetKHz() / 1000; }
  /// When the line that was shown last arrived.
  [[nodiscard]] std::chrono::steady_clock::time_point LastArrival() const { return line_.Arrived; }
  /// How long runs have lasted, all together.
  [[nodiscard]] std::chrono::steady_clock::duration TimeInRuns() const;
  /// Called when the run began or ended, whatever ended it.
  std::function<void()> RunningChanged;

 private:
  bool OpenHost();
  bool PrepareAudio();
  bool PrepareRadio(RadioLink* link);
  bool BeginRun();
  void EndFailedStart();
  [[nodiscard]] ZoomPlan PlanFor(const PanSettings& settings) const;
  PollResult PollSource();
  void EndLostRun();
  [[nodiscard]] std::chrono::milliseconds UntilBlock() const;
  void FinishFrame();
  void UpdateMeter();
  void RefreshRadio();
  void RestartIfMoved();
  void ChangeReference(int stepDb);
  void RememberBandLevels();
  void ApplyBandLevels();
  void RebuildLevelScale();
  [[nodiscard]] double OffsetKHz() const;
  [[nodiscard]] FrameGeometry GeometryOf(const SpectrumLine& line) const;
  [[nodiscard]] FrameGeometry IdleGeometry() const;
  [[nodiscard]] PointWindow WindowOf(const SpectrumLine& line) const;
  [[nodiscard]] PointWindow IdleWindow() const;

  Session& session_;
  RunParts parts_;
  AudioSource audio_;
  SpectrumSource* source_ = nullptr;  // of this run
  RadioLink* link_ = nullptr;         // of this run, when a radio delivers the spectrum
  CatControl control_ = CatControl::HostIf;
  std::string runSource_;
  ZoomPlan plan_;
  LevelHistory history_;
  int historyPoints_ = 0;
  SpectrumLine line_;
  ScaleState scale_;
  Readings readings_;
  SMeterHold hold_;
  int bandFlip_ = 1;
  int lastRadioMode_ = 0;
  double lastLeftMHz_ = 0;
  double lastRightMHz_ = 0;
  std::chrono::steady_clock::time_point runSince_{};
  std::chrono::steady_clock::duration earlierRuns_{};
  bool running_ = false;
  bool starting_ = false;
  bool startFailed_ = false;
  bool stopRequested_ = false;
  bool hostOpen_ = false;
  bool spotRequested_ = false;
  bool reopening_ = false;  // by a zoom that changes the rate
};

}  // namespace spectrino
