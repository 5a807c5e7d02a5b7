// One station of a weak-signal digital mode: eight tones 6.25 Hz apart, in slots of 15 s as FT8 sends them.
// The tones carry no message: beyond the synchronisation pattern they are random.
#pragma once

#include "sim/DemoSignal.h"

namespace spectrino {

class SlotSignal final : public DemoSignal {
 public:
  /// oddSlots: sends in the second half of each half minute. key: decides tones and the slots left out.
  SlotSignal(double patternHz, const Fading& fading, bool oddSlots, std::uint64_t key)
      : DemoSignal(patternHz, 100), fading_(fading), oddSlots_(oddSlots), key_(key) {}
  void AddTo(const Slice& slice, const Placement& place, SliceBuffer& out) override;

 private:
  [[nodiscard]] int ToneOf(std::int64_t slot, int symbol) const;
  /// Phase in cycles that the tones have added, seconds after the first symbol began; whole cycles left out.
  [[nodiscard]] double ToneCycles(std::int64_t slot, double seconds) const;

  Fading fading_;
  bool oddSlots_;
  std::uint64_t key_;
};

}  // namespace spectrino
