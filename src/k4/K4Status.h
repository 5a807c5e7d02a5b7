// The K4's status area and mini-pans as values, from what is known of the radio.
// Draws nothing and sends nothing.
#pragma once

#include <array>
#include <cstdint>

#include "k4/K4State.h"
#include "state/StatusArea.h"

namespace spectrino {

class K4Status {
 public:
  /// Takes a mini-pan's new line into its history; call it for every pass. history restarts with
  /// MinipanHistoryCount 0.
  void Follow(K4State& state);
  /// Shown only while MinipanOn. heard: what the radio told is still so; else dashes stand for it.
  [[nodiscard]] StatusArea Area(const K4State& state, bool heard = true) const;

 private:
  struct History {
    std::vector<std::vector<float>> Lines;  ///< newest first
    std::uint64_t Serial = 0;
  };
  [[nodiscard]] MiniPan Pan(const K4State& state, int channel) const;

  std::array<History, 2> histories_;
};

}  // namespace spectrino
