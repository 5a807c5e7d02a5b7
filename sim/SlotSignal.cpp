#include "sim/SlotSignal.h"

#include <algorithm>
#include <array>

#include "sim/HashRandom.h"

namespace spectrino {

namespace {

constexpr double kSlotS = 15;
constexpr double kLeadS = 0.5;
constexpr double kSymbolS = 0.16;
constexpr int kSymbols = 79;
constexpr double kSendS = kSymbols * kSymbolS;
constexpr double kToneSpacingHz = 6.25;
constexpr double kGlideS = 0.06;  // from tone to tone: a hard step would splatter over the neighbours
constexpr double kRampS = 0.02;
constexpr std::array<int, 7> kSync{3, 1, 4, 0, 6, 5, 2};

double EdgeGain(double seconds) {
  const double inside = std::clamp(std::min(seconds, kSendS - seconds) / kRampS, 0.0, 1.0);
  return 0.5 - 0.5 * std::cos(std::numbers::pi * inside);
}

/// Phase around a change of tone at 0 s: the frequency follows half a sine wave over kGlideS.
double GlideCycles(double fromHz, double toHz, double seconds) {
  const double risen = (seconds + kGlideS / 2) / 2 -
                       kGlideS / (2 * std::numbers::pi) * std::cos(std::numbers::pi * seconds / kGlideS);
  return fromHz * seconds + (toHz - fromHz) * risen;
}

}  // namespace

int SlotSignal::ToneOf(std::int64_t slot, int symbol) const {
  symbol = std::clamp(symbol, 0, kSymbols - 1);
  if (symbol % 36 < 7) return kSync[static_cast<std::size_t>(symbol % 36)];
  return static_cast<int>(Mix(key_, static_cast<std::uint64_t>(slot), static_cast<std::uint64_t>(symbol)) &
                          7U);
}

double SlotSignal::ToneCycles(std::int64_t slot, double seconds) const {
  // Every tone completes whole cycles in a symbol, so a boundary is always at phase 0.
  const int symbol = static_cast<int>(std::floor(seconds / kSymbolS));
  const double inSymbol = seconds - symbol * kSymbolS;
  const double toneHz = kToneSpacingHz * ToneOf(slot, symbol);
  if (inSymbol < kGlideS / 2) {
    return GlideCycles(kToneSpacingHz * ToneOf(slot, symbol - 1), toneHz, inSymbol);
  }
  if (inSymbol > kSymbolS - kGlideS / 2) {
    return GlideCycles(toneHz, kToneSpacingHz * ToneOf(slot, symbol + 1), inSymbol - kSymbolS);
  }
  return toneHz * inSymbol;
}

void SlotSignal::AddTo(const Slice& slice, const Placement& place, SliceBuffer& out) {
  const double start = slice.StartS() + place.TimeShiftS;
  const auto slot = static_cast<std::int64_t>(std::floor(start / kSlotS));
  if ((slot % 2 != 0) != oddSlots_) return;
  if (Unit(Mix(key_, static_cast<std::uint64_t>(slot))) < 0.15) return;  // listens this time
  const double sent = start - static_cast<double>(slot) * kSlotS - kLeadS;
  const double sentAfter = sent + slice.LengthS();
  if (sentAfter <= 0 || sent >= kSendS) return;

  std::array<float, kMaxSliceFrames> envelope;
  const std::span<float> used(envelope.data(), static_cast<std::size_t>(slice.Frames));
  const double amplitude = fading_.AmplitudeAt(start) * place.Gain;
  FillRamp(used, amplitude * EdgeGain(sent), amplitude * EdgeGain(sentAfter));

  const double cycles = ToneCycles(slot, sent);
  const double advance = std::remainder(ToneCycles(slot, sentAfter) - cycles, 1.0);
  const PhaseLine tones{cycles, advance / slice.Frames};
  AddTone(used, Rotator(CarrierOf(slice, place) + tones), out);
}

}  // namespace spectrino
