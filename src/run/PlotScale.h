// What is visible of a line: geometry, zoom window and pan. The levels that it is drawn between are
// PlotLevels'. Takes no pass and opens nothing; what a zoom means to the sound card's rate is the run
// cycle's.
#pragma once

#include <functional>

#include "dsp/VisibleRange.h"
#include "run/PlotLevels.h"
#include "run/RunView.h"
#include "run/Session.h"
#include "state/FrameSink.h"

namespace spectrino {

class PlotScale {
 public:
  /// All outlive it. offsetKHz: radio frequency minus what arrives at the 0 Hz of a sound card.
  PlotScale(Session& session, FrameSink& sink, const RunView& run, std::function<double()> offsetKHz)
      : session_(session), sink_(sink), run_(run), offsetKHz_(std::move(offsetKHz)), levels_(session, run) {}

  /// Brings the scale to the sink after anything that it depends on changed.
  void Update();
  [[nodiscard]] const ScaleState& State() const { return scale_; }
  /// Where a line of this run belongs, as it would be shown now.
  [[nodiscard]] FrameGeometry GeometryOf(const SpectrumLine& line) const;

  /// Moves the zoomed window by so much of the plot's width; up the band when positive. Ends where the line
  /// ends, and does nothing at zoom 1X. Whole points are moved: returns how many widths that was.
  double PanBy(double widths);
  /// Moves it so that the frequency stands at x, 0..1 of the plot's width.
  void PanTo(double freqMHz, double x);
  void ResetPan() { panHz_ = 0; }

  /// What changes there comes to the sink with the next Update.
  [[nodiscard]] PlotLevels& Levels() { return levels_; }
  /// Button AUTO, setting "AutoLevel".
  void SetAutoLevel(bool on);
  /// Command1 and Command18, Command3 and Command2. No effect on radios with a scale of their own.
  void ReferenceUp() { ChangeReference(+3); }
  void ReferenceDown() { ChangeReference(-3); }
  void RangeUp();
  void RangeDown();

  /// By so many dB; returns by how many both ends of the level axis moved.
  int MoveReference(int db);

 private:
  void ChangeReference(int stepDb);
  [[nodiscard]] PointWindow WindowOf(const SpectrumLine& line) const;
  [[nodiscard]] PointWindow PlannedWindow() const;
  [[nodiscard]] FrameGeometry PlannedGeometry() const;
  /// The radio whose lines are shown, or will be.
  [[nodiscard]] const RadioLink* ShownLink() const { return run_.Running ? run_.Link : run_.NextLink; }
  [[nodiscard]] PointWindow RadioWindowOf(const SpectrumLine& line) const;
  /// The magnification of the run's source, or of the one that is chosen.
  [[nodiscard]] int DisplayZoom() const;
  /// Of the points of the line in view, or of the one that is planned.
  [[nodiscard]] double PointHz(bool planned) const;
  /// panHz_ in points of such a line of so many.
  [[nodiscard]] int PanPoints(double pointHz, int points) const;
  /// By so many points of the line in view, or of the one that is planned; returns how many it was.
  int Pan(int points, bool planned);

  Session& session_;
  FrameSink& sink_;
  const RunView& run_;
  std::function<double()> offsetKHz_;
  PlotLevels levels_;
  ScaleState scale_;
  double panHz_ = 0;  ///< how far the zoomed window was dragged off its centre: at any rate the same
};

}  // namespace spectrino
