// One CI-V command as the simulated radio sees it: its head, its answer, and the way to it through a table.
// No command's meaning: those are told by subject in the files beside.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>

#include "sim/icom/IcomSimBytes.h"

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

struct SimAnswer {
  bool Ok = false;     ///< else FA
  SimBytes Data = {};  ///< without the command's own bytes; none: FB
  SimHead Head = {};   ///< of the command that was found
};

template <class Part>
struct SimCommandRow {
  SimHead Head;
  SimAnswer (Part::*Run)(SimByteView data);
};

/// Nothing when no row of this part has the command.
template <class Part>
[[nodiscard]] std::optional<SimAnswer> RunSimCommand(std::span<const SimCommandRow<Part>> rows, Part& part,
                                                     SimByteView command) {
  for (const SimCommandRow<Part>& row : rows) {
    if (!row.Head.Begins(command)) continue;
    SimAnswer answer = (part.*row.Run)(command.subspan(row.Head.Size));
    answer.Head = row.Head;
    return answer;
  }
  return std::nullopt;
}

}  // namespace spectrino
