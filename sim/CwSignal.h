// A telegraphy station that repeats its text, and the carrier that never stops.
// Not the code itself: see Morse.
#pragma once

#include <string_view>

#include "sim/DemoSignal.h"

namespace spectrino {

class CwSignal final : public DemoSignal {
 public:
  struct Keying {
    std::string_view Text;
    double WordsPerMinute = 20;  ///< one dit lasts 1.2 s / speed
    double PauseS = 5;           ///< silence before the text starts again
  };

  CwSignal(double patternHz, const Fading& fading, const Keying& keying, int rateHz);
  void AddTo(const Slice& slice, const Placement& place, SliceBuffer& out) override;

 private:
  struct Mark {
    std::int64_t Start = 0;  ///< frame of the text at which the key goes down
    std::int64_t End = 0;    ///< frame at which it is let go; the tone then takes one edge to fade
  };

  [[nodiscard]] float KeyLevel(const Mark& mark, std::int64_t frame) const;

  Fading fading_;
  std::vector<Mark> marks_;
  std::int64_t cycleFrames_ = 0;
  std::vector<float> edge_;  ///< raised cosine from 0 to 1
};

class CarrierSignal final : public DemoSignal {
 public:
  CarrierSignal(double patternHz, const Fading& fading) : DemoSignal(patternHz, 50), fading_(fading) {}
  void AddTo(const Slice& slice, const Placement& place, SliceBuffer& out) override;

 private:
  Fading fading_;
};

}  // namespace spectrino
