#include "run/PlotScale.h"

#include <algorithm>

#include "dsp/LevelScale.h"
#include "state/Val.h"

namespace spectrino {
namespace {

constexpr double kMostPan = 4.0 * 65536;  // points; the longest line, over and over

double PointHzOf(const ZoomPlan& plan) {
  return static_cast<double>(plan.SampleRate) / (1 << plan.FftBits);
}

}  // namespace

int PlotScale::PanPoints(double pointHz, int points) const {
  const double limit = 4.0 * points;
  return RoundToInt32(std::clamp(panHz_ / pointHz, -limit, limit));
}

// A radio's line is zoomed in the display alone, whatever High Res. Zoom would do to a card's rate.
int PlotScale::DisplayZoom() const {
  return run_.Link != nullptr ? 1 << session_.Settings.Zoom : run_.Plan.DisplayZoom;
}

double PlotScale::PointHz(bool planned) const {
  if (run_.Link != nullptr) return run_.Line.HasFrequencies() ? run_.Line.StepMHz() * 1e6 : 0;
  return PointHzOf(planned ? run_.Plan : run_.LinePlan);
}

FrameGeometry PlotScale::GeometryOf(const SpectrumLine& line) const {
  if (line.FirstIndex != 0)
    return RadioGeometry(WindowOf(line), line.PointCount, line.LeftMHz, line.RightMHz, sink_.PlotWidth());
  return SoundCardGeometry(WindowOf(line), line.PointCount, run_.LinePlan.SampleRate,
                           (line.LeftMHz + line.RightMHz) / 2, sink_.PlotWidth());
}

PointWindow PlotScale::RadioWindowOf(const SpectrumLine& line) const {
  if (!line.HasFrequencies()) return VisibleRadioPoints(line.PointCount, 0, 1, 0);
  return VisibleRadioPoints(line.PointCount, line.IndexAt(line.CentreMHz), 1 << session_.Settings.Zoom,
                            PanPoints(line.StepMHz() * 1e6, line.PointCount));
}

// From the line's own edges, not from the radio: it may have been retuned since the line was taken.
PointWindow PlotScale::WindowOf(const SpectrumLine& line) const {
  if (line.FirstIndex != 0) return RadioWindowOf(line);
  const double middleMHz = (line.LeftMHz + line.RightMHz) / 2;
  const ZoomPlan& plan = run_.LinePlan;
  return VisiblePoints(line.PointCount, plan.SampleRate, (line.CentreMHz - middleMHz) * 1000,
                       plan.DisplayZoom, PanPoints(PointHzOf(plan), 1 << plan.FftBits));
}

PointWindow PlotScale::PlannedWindow() const {
  const ZoomPlan& plan = run_.Plan;
  return VisiblePoints(1 << plan.FftBits, plan.SampleRate, offsetKHz_(), plan.DisplayZoom,
                       PanPoints(PointHzOf(plan), 1 << plan.FftBits));
}

FrameGeometry PlotScale::PlannedGeometry() const {
  const double zeroMHz = session_.Radio.MainFreqMHz - offsetKHz_() / 1000;
  return SoundCardGeometry(PlannedWindow(), 1 << run_.Plan.FftBits, run_.Plan.SampleRate, zeroMHz,
                           sink_.PlotWidth());
}

void PlotScale::Update() {
  const bool hasLine = run_.HasLine();
  scale_.Running = run_.Running;
  scale_.FrequencyKnown = run_.Running && session_.Radio.MainFreqMHz != 0;
  if (const RadioLink* link = ShownLink()) {
    // Before a radio's first line nobody knows what its spectrum will span.
    scale_.Geometry = hasLine ? GeometryOf(run_.Line) : FrameGeometry{.PlotWidth = sink_.PlotWidth()};
    scale_.FrequencyKnown = scale_.FrequencyKnown && hasLine;
    scale_.GridOffsetHz = link->GridHz();
    scale_.Zoomed = hasLine && DisplayZoom() != 1;
    scale_.LabelCentreMHz = run_.Line.CentreMHz;
  } else {
    const ZoomPlan& plan = hasLine ? run_.LinePlan : run_.Plan;
    scale_.Geometry = hasLine ? GeometryOf(run_.Line) : PlannedGeometry();
    scale_.GridOffsetHz = BuildGridFrequencies(plan.SampleRate);
    for (double& offset : scale_.GridOffsetHz) offset /= plan.DisplayZoom;
    scale_.Zoomed = plan.DisplayZoom != 1;
    scale_.LabelCentreMHz = hasLine ? run_.Line.CentreMHz : session_.Radio.MainFreqMHz;
    if (scale_.FrequencyKnown) levels_.ApplyBand();
  }
  scale_.Levels = levels_.Current();
  sink_.DrawScale(scale_);
}

int PlotScale::Pan(int points, bool planned) {
  const double pointHz = PointHz(planned);
  const int count =
      run_.Link != nullptr ? run_.Line.PointCount : 1 << (planned ? run_.Plan : run_.LinePlan).FftBits;
  const int before = PanPoints(pointHz, count);
  // No farther than PanPoints goes: what is beyond would have to be dragged back.
  points = std::clamp(points, -4 * count - before, 4 * count - before);
  panHz_ = (before + points) * pointHz;
  // What the line's ends take back must not have to be dragged back.
  const int shift = (planned ? PlannedWindow() : WindowOf(run_.Line)).Shift;
  const int now = points > 0 ? std::max(before, before + points + std::min(shift, 0))
                             : std::min(before, before + points + std::max(shift, 0));
  panHz_ = now * pointHz;
  Update();
  return now - before;
}

void PlotScale::PanTo(double freqMHz, double x) {
  if (DisplayZoom() == 1) return;
  const bool radio = run_.Link != nullptr;
  // The line in view may be of another rate still: the window is placed for the one that comes. A radio's
  // line is planned by the radio.
  const bool planned = !run_.HasLine() || (!radio && run_.LinePlan != run_.Plan);
  if (radio && planned) return;
  const FrameGeometry now = planned ? PlannedGeometry() : GeometryOf(run_.Line);
  const double pointHz = PointHz(planned);
  if (!now.Valid() || !(pointHz > 0)) return;
  const double points = (freqMHz - now.FrequencyAt(x * now.PlotWidth)) * 1e6 / pointHz;
  Pan(RoundToInt32(std::clamp(points, -kMostPan, kMostPan)), planned);
}

double PlotScale::PanBy(double widths) {
  const FrameGeometry& shown = scale_.Geometry;
  const bool radio = run_.Link != nullptr;
  const bool planned = !run_.HasLine();
  if (DisplayZoom() == 1 || !shown.Valid() || (radio && (planned || !(PointHz(false) > 0)))) return 0;
  const int shownPoints = shown.LastPoint - shown.FirstPoint;
  const double points = std::clamp(widths * shownPoints, -kMostPan, kMostPan);
  return static_cast<double>(Pan(RoundToInt32(points), planned)) / shownPoints;
}

void PlotScale::SetAutoLevel(bool on) {
  levels_.SetAuto(on);
  Update();
}

void PlotScale::ChangeReference(int stepDb) {
  levels_.ChangeReference(stepDb);
  Update();
}

int PlotScale::MoveReference(int db) {
  const int moved = levels_.MoveReference(db);
  if (moved != 0) Update();
  return moved;
}

void PlotScale::RangeUp() {
  levels_.RangeUp();
  Update();
}

void PlotScale::RangeDown() {
  levels_.RangeDown();
  Update();
}

}  // namespace spectrino
