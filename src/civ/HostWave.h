// A scope line that came through the host program, laid out as the radio itself sends one, so that both go
// through the same assembly.
#pragma once

#include <string>

#include "civ/CivState.h"
#include "civ/IcomPanelView.h"
#include "rig/HostIcom.h"

namespace spectrino {

/// HostWaveHex: a line of one division as AssembleScopeWave takes it, 30 header characters and the
/// amplitudes.
[[nodiscard]] std::string HostWaveHex(const HostScopeLine& line);

/// Whether divisions are missing that the line before it had: the host fills what it did not get with zeros.
/// False where that line was another part of the band.
[[nodiscard]] bool MissesDivision(const HostScopeLine& line, const CivState& state);

/// Takes points and full scale from the line itself; otherwise as AssembleScopeWave.
void TakeHostLine(const HostScopeLine& line, CivState& state, IcomPanelView& panel);

}  // namespace spectrino
