#include "sim/icom/IcomSimBand.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <vector>

#include "sim/HashRandom.h"

namespace spectrino {

namespace {

constexpr double kPlanHz = 500'000;  // bands begin at multiples of it, or close above
constexpr double kTelegraphyStepHz = 1'500;
constexpr double kTelegraphyEndHz = 70'000;
constexpr double kSlotDialHz = 74'000;
constexpr double kSlotWidthHz = 3'000;
constexpr int kSlotStations = 16;
constexpr double kVoiceStartHz = 80'000;
constexpr double kVoiceStepHz = 5'000;
constexpr double kVoiceEndHz = 350'000;
constexpr double kCarrierStepHz = 9'000;

constexpr double kNoiseDbmPerHz = -142;
constexpr double kSharpestHz = 25;  // the scope's own filter is never narrower

enum Purpose : std::uint64_t { kNoise = 1, kPresence, kOffset, kLevel, kSpeed, kSound, kPhase, kTone };

double Milliwatts(double dBm) {
  return std::pow(10.0, dBm / 10);
}

/// Slow fading of a few dB, so that no station stands still.
double FadingDb(std::uint64_t key, double seconds) {
  const double phase = Unit(Mix(key, kPhase));
  return 4 * std::sin(2 * 3.14159265358979 * (seconds / (7 + 9 * phase) + phase));
}

}  // namespace

/// One line under work: powers in mW.
struct IcomSimBand::Line {
  double LowHz;
  double StepHz;  ///< from point to point
  double Seconds;
  std::span<double> Power;

  [[nodiscard]] double HighHz() const { return LowHz + StepHz * static_cast<double>(Power.size() - 1); }

  /// Adds a carrier with a skirt of the scope's filter.
  void AddPeak(double hz, double milliwatts) const {
    const double sigma = std::max(0.6 * StepHz, kSharpestHz);
    const auto last = static_cast<double>(Power.size() - 1);
    const double from = std::max(std::ceil((hz - 4 * sigma - LowHz) / StepHz), 0.0);
    const double to = std::min(std::floor((hz + 4 * sigma - LowHz) / StepHz), last);
    for (double point = from; point <= to; ++point) {
      const double away = (LowHz + point * StepHz - hz) / sigma;
      Power[static_cast<std::size_t>(point)] += milliwatts * std::exp(-0.5 * away * away);
    }
  }
};

IcomSimBand::IcomSimBand(std::uint64_t seed) : seed_(seed), call_{MorseMarks("CQ CQ DE QS1M QS1M K"), 0} {
  call_.CycleDits = call_.Marks.back().EndDits + 40;
}

void IcomSimBand::Render(double lowHz, double highHz, double seconds, std::span<double> dBm) const {
  assert(lowHz < highHz && dBm.size() >= 2 && seconds >= 0);
  const Line line{lowHz, (highHz - lowHz) / static_cast<double>(dBm.size() - 1), seconds, dBm};
  const double floorMw = Milliwatts(kNoiseDbmPerHz) * std::max(line.StepHz, kSharpestHz);
  const auto frame = static_cast<std::uint64_t>(seconds * 1000);
  for (std::size_t i = 0; i < dBm.size(); ++i) {
    // The mean of two squared Gaussians, as a detector with a little smoothing shows noise.
    const double a = Unit(Mix(seed_, kNoise + frame * 16, 2 * i));
    const double b = Unit(Mix(seed_, kNoise + frame * 16, 2 * i + 1));
    dBm[i] = floorMw * (0.05 - 0.5 * std::log((1 - a) * (1 - b)));
  }
  const double first = std::floor((lowHz - kPlanHz) / kPlanHz) * kPlanHz;
  for (double period = first; period <= highHz; period += kPlanHz) AddStations(line, period);
  for (double& value : dBm) value = 10 * std::log10(value);
}

double IcomSimBand::PowerAt(double hz, double seconds) const {
  std::vector<double> dBm(97);  // 25 Hz apart, the width of the scope's filter
  Render(hz - 1200, hz + 1200, seconds, dBm);
  double sum = 0;
  for (const double value : dBm) sum += Milliwatts(value);
  return 10 * std::log10(sum);
}

void IcomSimBand::AddStations(const Line& line, double periodHz) const {
  const auto place = static_cast<std::uint64_t>(std::max(periodHz, 0.0));
  // Only stations that can reach into the line are worth their hashes.
  const auto each = [&](double startHz, double endHz, double stepHz, double reachHz, auto&& add) {
    const double skip = std::ceil((line.LowHz - reachHz - periodHz - startHz) / stepHz);
    for (double n = std::max(skip, 0.0); startHz + n * stepHz < endHz; ++n) {
      const double hz = periodHz + startHz + n * stepHz;
      if (hz > line.HighHz() + reachHz) break;
      add(Mix(seed_ + place, static_cast<std::uint64_t>(startHz + n * stepHz)), hz);
    }
  };
  const double reach = 4 * std::max(line.StepHz, kSharpestHz);
  each(0, kTelegraphyEndHz, kTelegraphyStepHz, reach + kTelegraphyStepHz,
       [&](std::uint64_t key, double hz) { AddTelegraphy(line, key, hz); });
  each(kSlotDialHz, kSlotDialHz + 1, kSlotWidthHz, reach + kSlotWidthHz,
       [&](std::uint64_t key, double hz) { AddSlotGroup(line, key, hz); });
  each(kVoiceStartHz, kVoiceEndHz, kVoiceStepHz, reach + kVoiceStepHz,
       [&](std::uint64_t key, double hz) { AddVoice(line, key, hz); });
  each(kVoiceEndHz, kPlanHz, kCarrierStepHz, reach, [&](std::uint64_t key, double hz) {
    if (Unit(Mix(key, kPresence)) > 0.35) return;
    line.AddPeak(hz, Milliwatts(Between(Mix(key, kLevel), -110, -78) + FadingDb(key, line.Seconds)));
  });
}

void IcomSimBand::AddTelegraphy(const Line& line, std::uint64_t key, double hz) const {
  if (Unit(Mix(key, kPresence)) > 0.4) return;
  const double ditS = 1.2 / Between(Mix(key, kSpeed), 14, 32);
  const double dits = std::fmod(line.Seconds / ditS + 200 * Unit(Mix(key, kPhase)), call_.CycleDits);
  const bool down = std::ranges::any_of(
      call_.Marks, [dits](const MorseMark& mark) { return dits >= mark.StartDits && dits < mark.EndDits; });
  if (!down) return;
  const double level = Between(Mix(key, kLevel), -118, -72) + FadingDb(key, line.Seconds);
  line.AddPeak(hz + Between(Mix(key, kOffset), 0, kTelegraphyStepHz), Milliwatts(level));
}

void IcomSimBand::AddVoice(const Line& line, std::uint64_t key, double hz) const {
  if (Unit(Mix(key, kPresence)) > 0.5) return;
  // Two speakers take turns, with a pause when their key says so.
  const auto turn = static_cast<std::uint64_t>(line.Seconds / Between(Mix(key, kSpeed), 6, 14));
  if (Unit(Mix(key, kPhase, turn)) < 0.2) return;
  const auto syllable = static_cast<std::uint64_t>(line.Seconds / 0.16);
  const double loudness = Between(Mix(key, kSound, syllable), -22, 0);
  const double level =
      Between(Mix(key, kLevel, turn % 2), -112, -76) + FadingDb(key, line.Seconds) + loudness;
  const double carrier = hz + 500 * std::floor(Between(Mix(key, kOffset), 0, 4));
  for (int part = 0; part < 24; ++part) {
    const double formant = Between(Mix(key, kTone + syllable * 16, static_cast<std::uint64_t>(part)), -18, 0);
    line.AddPeak(carrier + 300 + 100 * part, Milliwatts(level + formant - 0.3 * part));
  }
}

void IcomSimBand::AddSlotGroup(const Line& line, std::uint64_t key, double hz) const {
  constexpr double kSlotS = 15;
  constexpr double kSendS = 12.64;
  constexpr double kSymbolS = 0.16;
  constexpr double kToneHz = 6.25;
  const auto slot = static_cast<std::uint64_t>(line.Seconds / kSlotS);
  const double within = line.Seconds - kSlotS * static_cast<double>(slot);
  if (within >= kSendS) return;
  const auto symbol = static_cast<std::uint64_t>(within / kSymbolS);
  for (std::uint64_t n = 0; n < kSlotStations; ++n) {
    const std::uint64_t station = Mix(key, n);
    if ((slot + n) % 2 == 0) continue;  // every other slot belongs to the other side
    const double tone = kToneHz * static_cast<double>(Mix(station, kTone + slot * 16, symbol) % 8);
    const double level = Between(Mix(station, kLevel), -120, -82) + FadingDb(station, line.Seconds);
    line.AddPeak(hz + Between(Mix(station, kOffset), 200, 2800) + tone, Milliwatts(level));
  }
}

}  // namespace spectrino
