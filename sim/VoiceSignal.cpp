#include "sim/VoiceSignal.h"

#include <algorithm>

#include "sim/HashRandom.h"

namespace spectrino {

namespace {

constexpr double kLowHz = 300;
constexpr double kHighHz = 2700;
constexpr std::int64_t kPhraseCells = 13;

// Hissing consonants are a low pitch, shaken by so much that the higher harmonics run into one another.
constexpr double kNoisePitchHz = 70;
constexpr double kNoiseRoughness = 0.02;
constexpr double kNoiseSwing = 0.08;  // largest change of pitch by the roughness

enum Detail : std::uint64_t {
  kSilence,
  kNoise,
  kLoudness,
  kOn,
  kOff,
  kPitch,
  kGlide,
  kFormant1,
  kFormant2,
  kTurn,
  kPhrase,
  kHarmonic
};

double Resonance(double hz, double formantHz, double widthHz) {
  const double distance = (hz - formantHz) / widthHz;
  return 1 / (1 + distance * distance);
}

/// The transmitter's filter: flat in between, 150 Hz of slope at either end.
double SidebandFilter(double hz) {
  return std::clamp((hz - kLowHz) / 150, 0.0, 1.0) * std::clamp((kHighHz - hz) / 150, 0.0, 1.0);
}

/// A pitch that glides from one value to the other within a syllable.
struct PitchRange {
  double FromHz;
  double ToHz;
};

/// Harmonics of a pitch under two formants and a third at 2.5 kHz; the strongest has weight 1. The filter
/// holds for the whole glide.
HarmonicBank MakeBank(PitchRange pitch, double formant1Hz, double formant2Hz, std::uint64_t key) {
  HarmonicBank bank;
  bank.First = static_cast<int>(std::ceil(kLowHz / std::min(pitch.FromHz, pitch.ToHz)));
  const int last = static_cast<int>(kHighHz / std::max(pitch.FromHz, pitch.ToHz));
  bank.Count = std::clamp(last - bank.First + 1, 0, HarmonicBank::kMaxCount);
  std::array<double, HarmonicBank::kMaxCount> size{};
  double largest = 1e-9;
  for (std::size_t i = 0; i < static_cast<std::size_t>(bank.Count); ++i) {
    const int harmonic = bank.First + static_cast<int>(i);
    const double hz = harmonic * (pitch.FromHz + pitch.ToHz) / 2;
    const double voice = Resonance(hz, formant1Hz, 130) + 0.5 * Resonance(hz, formant2Hz, 180) +
                         0.2 * Resonance(hz, 2500, 250) + 0.01;
    size[i] =
        voice * std::min(SidebandFilter(harmonic * pitch.FromHz), SidebandFilter(harmonic * pitch.ToHz));
    largest = std::max(largest, size[i]);
  }
  for (std::size_t i = 0; i < static_cast<std::size_t>(bank.Count); ++i) {
    const Phasor phase = UnitPhasor(Unit(Mix(key, kHarmonic, i)));
    const auto weight = static_cast<float>(size[i] / largest);
    bank.Weight[i] = {phase.Re * weight, phase.Im * weight};
  }
  return bank;
}

}  // namespace

VoiceSignal::VoiceSignal(double patternHz, std::array<double, 2> levelsDb, std::uint64_t key)
    : DemoSignal(patternHz, kHighHz + 100),
      key_(key),
      cellS_(Between(Mix(key, 1), 0.17, 0.23)),
      turnS_(Between(Mix(key, 2), 7, 16)) {
  for (std::size_t i = 0; i < speakers_.size(); ++i) {
    speakers_[i].Strength = {levelsDb[i], 3, Between(Mix(key, 3, i), 5, 11), Unit(Mix(key, 4, i))};
    speakers_[i].PitchHz = Between(Mix(key, 5, i), 95, 200);
  }
}

void VoiceSignal::MakeSyllable(std::int64_t cell) {
  syllable_ = {};
  syllable_.Cell = cell;
  const double startS = static_cast<double>(cell) * cellS_;
  const auto turn = static_cast<std::int64_t>(std::floor(startS / turnS_));
  const std::uint64_t turnKey = Mix(key_, kTurn, static_cast<std::uint64_t>(turn));
  const std::uint64_t key = Mix(key_, static_cast<std::uint64_t>(cell));
  const auto draw = [key](Detail detail) { return Mix(key, detail); };

  const std::uint64_t phraseKey = Mix(key_, kPhrase, static_cast<std::uint64_t>(cell / kPhraseCells));
  const auto spoken = kPhraseCells - 2 - static_cast<std::int64_t>(phraseKey % 3);
  const bool breath = cell % kPhraseCells >= spoken;
  const bool nobody = Unit(turnKey) < 0.12;
  if (breath || nobody || Unit(draw(kSilence)) < 0.08) return;

  const Speaker& speaker = speakers_[static_cast<std::size_t>(turn & 1)];
  const bool noise = Unit(draw(kNoise)) < 0.22;  // s, sh, f
  syllable_.Amplitude = speaker.Strength.AmplitudeAt(startS) *
                        std::pow(10.0, Between(draw(kLoudness), noise ? -22 : -9, noise ? -14 : 0) / 20);
  syllable_.OnS = cellS_ * Between(draw(kOn), 0.02, 0.2);
  syllable_.OffS = cellS_ * Between(draw(kOff), noise ? 0.55 : 0.75, noise ? 0.8 : 0.98);
  syllable_.PitchHz = noise ? kNoisePitchHz : speaker.PitchHz * Between(draw(kPitch), 0.85, 1.25);
  syllable_.GlideHzPerS = noise ? 0 : syllable_.PitchHz * Between(draw(kGlide), -0.8, 0.6);
  syllable_.Roughness = noise ? kNoiseRoughness : 0.003;
  const double formant1 = noise ? 1700 : Between(draw(kFormant1), 330, 750);
  const double formant2 = noise ? 2200 : Between(draw(kFormant2), 950, 2200);
  const double endHz = syllable_.PitchHz + syllable_.GlideHzPerS * cellS_;
  const PitchRange range =
      noise ? PitchRange{(1 - kNoiseSwing) * kNoisePitchHz, (1 + kNoiseSwing) * kNoisePitchHz}
            : PitchRange{syllable_.PitchHz, endHz};
  syllable_.Bank = MakeBank(range, formant1, formant2, key);
}

double VoiceSignal::EnvelopeAt(double secondsInCell) const {
  constexpr double kAttackS = 0.02;
  constexpr double kDecayS = 0.06;
  const double inside =
      std::min((secondsInCell - syllable_.OnS) / kAttackS, (syllable_.OffS - secondsInCell) / kDecayS);
  return syllable_.Amplitude * (0.5 - 0.5 * std::cos(std::numbers::pi * std::clamp(inside, 0.0, 1.0)));
}

double VoiceSignal::PitchCyclesAt(double secondsInCell) const {
  const double s = secondsInCell;
  const double jitter =
      std::sin(2 * std::numbers::pi * 17 * s) + 0.7 * std::sin(2 * std::numbers::pi * 41 * s);
  return (syllable_.PitchHz + syllable_.GlideHzPerS * s / 2) * s + syllable_.Roughness * jitter;
}

void VoiceSignal::AddTo(const Slice& slice, const Placement& place, SliceBuffer& out) {
  const double start = slice.StartS() + place.TimeShiftS;
  const auto cell = static_cast<std::int64_t>(std::floor(start / cellS_));
  if (cell != syllable_.Cell) MakeSyllable(cell);
  if (syllable_.Amplitude <= 0) return;

  const double from = start - static_cast<double>(cell) * cellS_;
  const double to = from + slice.LengthS();
  const double gainFrom = EnvelopeAt(from) * place.Gain;
  const double gainTo = EnvelopeAt(to) * place.Gain;
  if (gainFrom <= 0 && gainTo <= 0) return;
  std::array<float, kMaxSliceFrames> envelope;
  const std::span<float> used(envelope.data(), static_cast<std::size_t>(slice.Frames));
  FillRamp(used, gainFrom, gainTo);

  const double side = place.LowerSideband ? -1 : 1;
  const double cycles = PitchCyclesAt(from);
  const PhaseLine pitch{cycles, (PitchCyclesAt(to) - cycles) / slice.Frames};
  AddHarmonics(used, CarrierOf(slice, place), side * pitch, syllable_.Bank, out);
}

}  // namespace spectrino
