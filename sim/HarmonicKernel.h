// The inner loop of a voice: a pitch with all its harmonics on a carrier, added to a slice of samples.
// Which harmonics a syllable has is decided in VoiceSignal.
#pragma once

#include <array>
#include <span>

#include "sim/ToneKernels.h"

namespace spectrino {

/// Weights of the harmonics First, First + 1, ... First + Count - 1 of a pitch.
struct HarmonicBank {
  static constexpr int kMaxCount = 40;
  int First = 1;
  int Count = 0;
  std::array<Phasor, kMaxCount> Weight{};
};

/// Adds envelope * carrier * sum over i of Weight[i] * pitch^(First + i). envelope.size() is a power of two
/// from 8 to kMaxSliceFrames. The harmonics may span 2.4 kHz at 24000 frames a second for each 32 frames of
/// the slice: the sum is formed at 32 points and interpolated, images stay 70 dB down.
void AddHarmonics(std::span<const float> envelope, PhaseLine carrier, PhaseLine pitch,
                  const HarmonicBank& bank, SliceBuffer& out);

}  // namespace spectrino
