#include "sim/icom/IcomSimScope.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace spectrino {

namespace {

constexpr double kBottomDbm = -133;
constexpr double kRangeDb = 80;
constexpr std::size_t kUsualPoints = 50;  // of one division

/// The radios fill divisions of 50 points and leave the rest to the last one. A number of divisions that
/// this does not fit shares the points out evenly.
std::size_t PointsOfDivision(std::size_t points, std::size_t divisions, std::size_t index) {
  if ((points + kUsualPoints - 1) / kUsualPoints == divisions) {
    return std::min(kUsualPoints, points - index * kUsualPoints);
  }
  return points / divisions + (index < points % divisions ? 1 : 0);
}

}  // namespace

SimScopeView ScopeViewOf(const IcomSimControl& control) {
  SimScopeView view;
  const std::int64_t hz = control.State().Active().Hz;
  view.Fixed = control.Settings().Value({0x27, 0x14, 0x00}) == 1;
  view.RefDb = control.State().RefHalfDb / 2.0;
  if (view.Fixed) {
    const SimHzRange edges = control.FixedEdges();
    view.LowHz = edges.LowHz;
    view.HighHz = edges.HighHz;
    view.OutOfRange = !edges.Holds(hz);
  } else {
    view.LowHz = hz - control.State().HalfSpanHz;
    view.HighHz = hz + control.State().HalfSpanHz;
  }
  return view;
}

SimBytes ScopeAmplitudes(std::span<const double> dBm, double refDb, int fullScale) {
  SimBytes amplitudes;
  amplitudes.reserve(dBm.size());
  for (const double power : dBm) {
    const double level = (power - kBottomDbm + refDb) * fullScale / kRangeDb;
    amplitudes.push_back(static_cast<std::uint8_t>(std::lround(std::clamp(level, 0.0, fullScale * 1.0))));
  }
  return amplitudes;
}

std::vector<SimBytes> ScopeFrames(const SimScopeView& view, SimByteView amplitudes, int divisions) {
  assert(divisions >= 1 && divisions <= 15);
  const auto count = static_cast<std::size_t>(divisions);
  std::vector<SimBytes> frames;
  std::size_t sent = 0;
  for (std::size_t division = 1; division <= count; ++division) {
    SimBytes frame{0x27, 0x00, 0x00};
    PutBcdHigh(frame, division, 1);
    PutBcdHigh(frame, count, 1);
    std::size_t points = count == 1 ? amplitudes.size() : 0;
    if (division == 1) {
      frame.push_back(view.Fixed ? 0x01 : 0x00);
      PutBcdLow(frame, static_cast<std::uint64_t>(view.Fixed ? view.LowHz : view.CentreHz()));
      PutBcdLow(frame, static_cast<std::uint64_t>(view.Fixed ? view.HighHz : view.HalfSpanHz()));
      frame.push_back(view.OutOfRange ? 0x01 : 0x00);
    } else {
      points = PointsOfDivision(amplitudes.size(), count - 1, division - 2);
    }
    const auto part = amplitudes.subspan(sent, points);
    frame.insert(frame.end(), part.begin(), part.end());
    sent += points;
    frames.push_back(std::move(frame));
  }
  return frames;
}

}  // namespace spectrino
