// Whole frames from the pieces in which the panadapter stream arrives.
// Reads of a frame no more than it takes to know that it is one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace spectrino {

/// Keeps frame step: sync bytes among the levels are levels. Where a frame does not begin with the sync
/// bytes, skips to the next place that looks like the head of a frame. Holds less than a frame between two
/// pieces.
class K4PanAssembler {
 public:
  /// Gets one or more whole frames in a row; the bytes hold until it returns. It must not call Feed or Reset.
  using FrameRun = std::function<void(std::span<const std::uint8_t> frames)>;

  explicit K4PanAssembler(FrameRun frameRun);

  void Feed(std::span<const std::uint8_t> bytes);
  /// A new connection: what is left of the old one is forgotten.
  void Reset();

 private:
  [[nodiscard]] std::size_t HandOn();

  FrameRun frameRun_;
  std::vector<std::uint8_t> pending_;  // at its start: a frame, or what may become one
  bool inStep_ = false;
};

}  // namespace spectrino
