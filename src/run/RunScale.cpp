// The scale of the run cycle: level range, geometry, grid, and the levels that each band remembers.
#include <algorithm>
#include <utility>

#include "bandplan/Bands.h"
#include "dsp/LevelScale.h"
#include "dsp/VisibleRange.h"
#include "run/RunCycle.h"
#include "state/Val.h"

namespace spectrino {

FrameGeometry RunCycle::GeometryOf(const SpectrumLine& line) const {
  if (line.FirstIndex != 0) {
    return RadioGeometry(line.PointCount, line.LeftMHz, line.RightMHz, parts_.Sink.PlotWidth());
  }
  return SoundCardGeometry(WindowOf(line), line.PointCount, plan_.SampleRate,
                           (line.LeftMHz + line.RightMHz) / 2, parts_.Sink.PlotWidth());
}

// From the line's own edges, not from the radio: it may have been retuned since the line was taken.
PointWindow RunCycle::WindowOf(const SpectrumLine& line) const {
  const double middleMHz = (line.LeftMHz + line.RightMHz) / 2;
  return VisiblePoints(line.PointCount, plan_.SampleRate, (line.CentreMHz - middleMHz) * 1000,
                       plan_.DisplayZoom, session_.PanPoints);
}

PointWindow RunCycle::IdleWindow() const {
  return VisiblePoints(1 << plan_.FftBits, plan_.SampleRate, OffsetKHz(), plan_.DisplayZoom,
                       session_.PanPoints);
}

FrameGeometry RunCycle::IdleGeometry() const {
  return SoundCardGeometry(IdleWindow(), 1 << plan_.FftBits, plan_.SampleRate, ZeroFreqMHz(),
                           parts_.Sink.PlotWidth());
}

void RunCycle::UpdateScale() {
  if (!running_ && !starting_) plan_ = PlanFor(session_.Settings);
  const bool hasLine = running_ && line_.Serial != 0;
  scale_.Geometry = hasLine ? GeometryOf(line_) : IdleGeometry();
  scale_.Running = running_;
  scale_.FrequencyKnown = running_ && session_.Radio.MainFreqMHz != 0;
  if (link_ != nullptr) {
    scale_.GridOffsetHz = link_->GridHz();
    scale_.LabelCentreMHz = line_.CentreMHz;
  } else {
    scale_.GridOffsetHz = BuildGridFrequencies(plan_.SampleRate);
    for (double& offset : scale_.GridOffsetHz) offset /= plan_.DisplayZoom;
    scale_.LabelCentreMHz = hasLine ? line_.CentreMHz : session_.Radio.MainFreqMHz;
    if (scale_.FrequencyKnown) ApplyBandLevels();
  }
  RebuildLevelScale();
  parts_.Sink.DrawScale(scale_);
}

void RunCycle::ZoomAt(int zoomIndex, double x) {
  const FrameGeometry before = scale_.Geometry;
  SetZoom(zoomIndex);
  const FrameGeometry& after = scale_.Geometry;
  if (link_ != nullptr || plan_.DisplayZoom == 1 || !before.Valid() || !after.Valid()) return;
  const double aimMHz = before.FrequencyAt(x * before.PlotWidth);
  PanBy((aimMHz - after.FrequencyAt(x * after.PlotWidth)) / (after.RightMHz - after.LeftMHz));
}

double RunCycle::PanBy(double widths) {
  const FrameGeometry& shown = scale_.Geometry;
  if (link_ != nullptr || plan_.DisplayZoom == 1 || !shown.Valid()) return 0;
  const int shownPoints = shown.LastPoint - shown.FirstPoint;
  const int before = session_.PanPoints;
  const int move = RoundToInt32(std::clamp(widths, -64.0, 64.0) * shownPoints);
  session_.PanPoints = before + move;
  // What the line's ends take back must not have to be dragged back.
  const int shift = (running_ && line_.Serial != 0 ? WindowOf(line_) : IdleWindow()).Shift;
  session_.PanPoints = move > 0 ? std::max(before, session_.PanPoints + std::min(shift, 0))
                                : std::min(before, session_.PanPoints + std::max(shift, 0));
  UpdateScale();
  return static_cast<double>(session_.PanPoints - before) / shownPoints;
}

void RunCycle::RebuildLevelScale() {
  if (link_ != nullptr) {
    scale_.Levels = link_->Scale();
    return;
  }
  UpdateLevelScale(scale_.Levels, session_.Settings.RefLevel, session_.Settings.RangeDivisor,
                   BinWidthDb(plan_.SampleRate, plan_.FftBits));
}

void RunCycle::ApplyBandLevels() {
  const std::optional<int> band = RefBand(session_.Radio.MainFreqMHz);
  if (!band) return;
  session_.Settings.RefLevel = session_.Settings.BandRef[static_cast<std::size_t>(*band)];
  session_.Settings.RangeDivisor = session_.Settings.BandDivisor[static_cast<std::size_t>(*band)];
}

void RunCycle::RememberBandLevels() {
  if (!running_ || session_.Radio.MainFreqMHz == 0) return;
  const std::optional<int> band = RefBand(session_.Radio.MainFreqMHz);
  if (!band) return;
  session_.Settings.BandRef[static_cast<std::size_t>(*band)] = session_.Settings.RefLevel;
  session_.Settings.BandDivisor[static_cast<std::size_t>(*band)] = session_.Settings.RangeDivisor;
}

void RunCycle::ChangeReference(int stepDb) {
  if (link_ != nullptr) return;
  int& reference = session_.Settings.RefLevel;
  // The limits are looked at before the step, so the ends are 81 and -102 when stepping from -60.
  const bool allowed = stepDb > 0 ? reference < 80 : reference > -100;
  if (allowed) reference += stepDb;
  RememberBandLevels();
  UpdateScale();
}

void RunCycle::RangeUp() {
  if (link_ != nullptr) return;
  if (session_.Settings.RangeDivisor < 10'000'000) session_.Settings.RangeDivisor *= 10;
  RememberBandLevels();
  UpdateScale();
}

void RunCycle::RangeDown() {
  if (link_ != nullptr) return;
  // A stored divisor may be no power of ten; below one there is no range.
  if (session_.Settings.RangeDivisor >= 10) session_.Settings.RangeDivisor /= 10;
  RememberBandLevels();
  UpdateScale();
}

void RunCycle::SetDisplayMode(int index) {
  session_.Settings.DisplayMode = index;
  history_.Restart();
}

}  // namespace spectrino
