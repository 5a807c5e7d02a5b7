// The two tables that a simulated Icom is made of: commands that do something, settings that are a number.
// Not for users of the simulator: IcomSimControl alone includes this.
#pragma once

#include <algorithm>

#include "sim/icom/IcomSimControl.h"

namespace spectrino {

/// The bytes that name a command: the command itself and what follows of sub-command and receiver.
struct SimHead {
  std::array<std::uint8_t, 3> Bytes{};
  std::size_t Size = 0;

  constexpr SimHead(std::initializer_list<std::uint8_t> bytes) : Size(bytes.size()) {
    std::copy(bytes.begin(), bytes.end(), Bytes.begin());
  }
  [[nodiscard]] constexpr bool Begins(SimByteView command) const {
    return command.size() >= Size &&
           std::equal(Bytes.begin(), Bytes.begin() + static_cast<long>(Size), command.begin());
  }
  [[nodiscard]] constexpr std::uint32_t Key() const {
    return static_cast<std::uint32_t>(Size) << 24U | static_cast<std::uint32_t>(Bytes[0]) << 16U |
           static_cast<std::uint32_t>(Bytes[1]) << 8U | Bytes[2];
  }
};

struct IcomSimControl::HandlerRow {
  SimHead Head;
  Handler Run;
};

struct IcomSimControl::SettingRow {
  SimHead Head;
  std::size_t DataBytes;  ///< BCD, most significant byte first
  std::uint64_t Low;
  std::uint64_t High;
  std::uint64_t Initial;
  std::uint32_t Models = ~0U;  ///< bit per IcomSimKind
};

}  // namespace spectrino
