#include "civ/HostWave.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>

#include "civ/HexText.h"
#include "civ/ScopeWave.h"

namespace spectrino {

namespace {
/// Of one frame on the radio's line.
constexpr std::size_t kDivisionPoints = 50;
/// A receiver that is that quiet on average may well be silent in the next line.
constexpr long kSilentLevel = 4;
constexpr double kSameMHz = 1e-6;
}  // namespace

// 00 | 01 of | 01 | mode | centre or low edge (5) | half span or high edge (5) | 00 in range | amplitudes
std::string HostWaveHex(const HostScopeLine& line) {
  std::string hex = line.Fixed ? "00010101" : "00010100";
  hex += EncodeFreq(line.Fixed ? line.LowEdgeMHz : line.CentreMHz);
  hex += EncodeFreq(line.Fixed ? line.HighEdgeMHz : line.SpanMHz / 2);
  hex += "00";
  hex += line.LevelsHex;
  return hex;
}

bool MissesDivision(const HostScopeLine& line, const CivState& state) {
  const auto points = static_cast<std::size_t>(line.Points);
  const double lowMHz = line.Fixed ? line.LowEdgeMHz : line.CentreMHz - line.SpanMHz / 2;
  if (state.ScopeLevels.size() != points + 1 || std::abs(lowMHz - state.ScopeLineLowMHz) > kSameMHz)
    return false;
  for (std::size_t first = 0; first < points; first += kDivisionPoints) {
    const std::size_t count = std::min(kDivisionPoints, points - first);
    const auto hex = std::string_view(line.LevelsHex).substr(2 * first, 2 * count);
    const auto before = std::span(state.ScopeLevels).subspan(first + 1, count);
    if (hex.find_first_not_of('0') == std::string_view::npos &&
        std::accumulate(before.begin(), before.end(), 0L) > kSilentLevel * static_cast<long>(count))
      return true;
  }
  return false;
}

void TakeHostLine(const HostScopeLine& line, CivState& state, IcomPanelView& panel) {
  state.ScopeMaxLevel = line.MaxLevel;
  state.SpectrumPoints = state.ScopePoints = line.Points;
  AssembleScopeWave(HostWaveHex(line), state, panel);
}

}  // namespace spectrino
