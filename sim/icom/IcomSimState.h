// What a simulated Icom is set to. No commands.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <utility>

#include "sim/icom/IcomSimBytes.h"
#include "sim/icom/IcomSimModel.h"

namespace spectrino {

struct SimVfo {
  std::int64_t Hz = 0;
  std::uint8_t Mode = 0x01;  ///< mode byte of CI-V: 00 LSB, 01 USB, 02 AM, 03 CW ...
  std::uint8_t Data = 0;     ///< data mode 0..1, on two-receiver models 0..3
  std::uint8_t Filter = 1;   ///< 1..3
};

struct IcomSimState {
  bool PowerOn = true;
  std::array<SimVfo, 2> Vfos;  ///< A and B, or main and sub
  std::size_t Selected = 0;
  bool MemoryMode = false;
  int MemoryChannel = 1;
  SimVfo Recalled;                 ///< what is tuned in memory mode
  std::map<int, SimVfo> Memories;  ///< written channels
  std::uint8_t Attenuator = 0;     ///< BCD dB, 0 off
  std::uint8_t Scan = 0;           ///< code of the running scan, 0 none
  std::uint8_t ScanSpan = 0xA1;
  std::uint8_t ScanResume = 0xD3;
  std::int64_t HalfSpanHz = 250'000;
  int RefHalfDb = 0;                                   ///< scope reference, -40..40
  std::map<std::pair<int, int>, SimHzRange> EdgeSets;  ///< by range and set, where changed
  std::map<std::uint32_t, SimBytes> Settings;          ///< by command bytes; everything else that is a number

  [[nodiscard]] const SimVfo& Active() const { return MemoryMode ? Recalled : Vfos[Selected]; }
  [[nodiscard]] SimVfo& Active() { return MemoryMode ? Recalled : Vfos[Selected]; }
};

}  // namespace spectrino
