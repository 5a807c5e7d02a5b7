#include "civ/HostWave.h"

#include "civ/HexText.h"
#include "civ/ScopeWave.h"

namespace spectrino {

// 00 | 01 of | 01 | mode | centre or low edge (5) | half span or high edge (5) | 00 in range | amplitudes
std::string HostWaveHex(const HostScopeLine& line) {
  std::string hex = line.Fixed ? "00010101" : "00010100";
  hex += EncodeFreq(line.Fixed ? line.LowEdgeMHz : line.CentreMHz);
  hex += EncodeFreq(line.Fixed ? line.HighEdgeMHz : line.SpanMHz / 2);
  hex += "00";
  hex += line.LevelsHex;
  return hex;
}

void TakeHostLine(const HostScopeLine& line, CivState& state, IcomPanelView& panel) {
  state.ScopeMaxLevel = line.MaxLevel;
  state.SpectrumPoints = state.ScopePoints = line.Points;
  AssembleScopeWave(HostWaveHex(line), state, panel);
}

}  // namespace spectrino
