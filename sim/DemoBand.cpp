#include "sim/DemoBand.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <numbers>

namespace spectrino {
namespace {

constexpr int kLooksPerSecond = 1500;  // at an envelope: its edges last 5 ms
constexpr double kTwoPi = 2 * std::numbers::pi;
constexpr float kNoise = 0.9F;   // about -121 dB on the program's scale at 8192 points
constexpr float kBirdie = 1.1F;  // what a real converter leaves at 0 Hz

// Telegraphy is 200 Hz wide, voice 2.8 kHz: what reaches past the edge of the band would come in from the
// other side.
constexpr double kReachHz = 3000;

std::complex<float> Phasor(double cycles) {
  const double angle = kTwoPi * (cycles - std::floor(cycles));
  return {static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle))};
}

}  // namespace

DemoBand::DemoBand(std::uint32_t seed) : seed_(seed), stations_(MakeStations(seed)) {}

void DemoBand::Render(std::uint64_t firstFrame, int rateHz, double centreMHz, std::span<std::int16_t> block) {
  const std::size_t frames = block.size() / 2;
  firstFrame_ = firstFrame;
  rateHz_ = rateHz;
  chunk_ = static_cast<std::size_t>(rateHz / kLooksPerSecond);
  inPhase_.assign(frames, kBirdie);
  quadrature_.assign(frames, 0);
  AddNoise();

  const double centreHz = centreMHz * 1e6;
  const double reach = rateHz_ / 2;
  const double firstPattern = std::floor((centreHz - reach) / kBandPatternHz) * kBandPatternHz;
  for (double pattern = firstPattern; pattern < centreHz + reach; pattern += kBandPatternHz) {
    for (const Station& station : stations_) AddStation(station, pattern + station.OffsetHz - centreHz);
  }
  for (std::size_t i = 0; i < frames; ++i) {
    block[2 * i] = static_cast<std::int16_t>(std::lrintf(std::clamp(inPhase_[i], -32767.0F, 32767.0F)));
    block[2 * i + 1] =
        static_cast<std::int16_t>(std::lrintf(std::clamp(-quadrature_[i], -32767.0F, 32767.0F)));
  }
}

void DemoBand::AddStation(const Station& station, double offsetHz) {
  const bool wide = station.Kind == StationKind::Voice;
  const double above = rateHz_ / 2 - offsetHz - (wide && !station.Lower ? kReachHz : 200);
  const double below = offsetHz + rateHz_ / 2 - (wide && station.Lower ? kReachHz : 200);
  if (above < 0 || below < 0) return;
  switch (station.Kind) {
    case StationKind::Morse:
      AddKeyed(offsetHz, station.Amplitude, [&](double seconds) { return MorseEnvelope(station, seconds); });
      break;
    case StationKind::Carrier:
      AddKeyed(offsetHz, station.Amplitude, [&](double seconds) {
        return std::pow(10, -1.5 * (0.5 + 0.5 * std::sin(0.21 * seconds + station.Start)));  // fades by 30 dB
      });
      break;
    case StationKind::Digital:
      AddDigital(station, offsetHz);
      break;
    case StationKind::Voice:
      AddVoice(station, offsetHz);
      break;
  }
}

// The envelope is looked at once a chunk and runs straight in between.
template <typename Envelope>
void DemoBand::AddKeyed(double hz, double amplitude, Envelope envelope) {
  const double startSeconds = static_cast<double>(firstFrame_) / rateHz_;
  double before = envelope(startSeconds) * amplitude;
  for (std::size_t from = 0; from < inPhase_.size(); from += chunk_) {
    const std::size_t count = std::min(chunk_, inPhase_.size() - from);
    const double after = envelope(startSeconds + static_cast<double>(from + count) / rateHz_) * amplitude;
    if (before != 0 || after != 0) AddTone(hz, before, after, from, count);
    before = after;
  }
}

void DemoBand::AddTone(double hz, double amplitudeAtStart, double amplitudeAtEnd, std::size_t from,
                       std::size_t count) {
  const auto at = static_cast<double>(firstFrame_ + from);
  std::complex<float> phasor = Phasor(hz / rateHz_ * at);
  const std::complex<float> step = Phasor(hz / rateHz_);
  auto amplitude = static_cast<float>(amplitudeAtStart);
  const auto slope = static_cast<float>((amplitudeAtEnd - amplitudeAtStart) / static_cast<double>(count));
  for (std::size_t i = from; i < from + count; ++i) {
    inPhase_[i] += amplitude * phasor.real();
    quadrature_[i] += amplitude * phasor.imag();
    phasor = {phasor.real() * step.real() - phasor.imag() * step.imag(),
              phasor.real() * step.imag() + phasor.imag() * step.real()};
    amplitude += slope;
  }
}

void DemoBand::AddDigital(const Station& station, double dialHz) {
  constexpr double kToneHz = 6.25;
  for (std::size_t from = 0; from < inPhase_.size(); from += chunk_) {
    const std::size_t count = std::min(chunk_, inPhase_.size() - from);
    const double seconds = static_cast<double>(firstFrame_ + from) / rateHz_;
    const int tone = DigitalTone(station, seconds);
    // A symbol lasts one cycle of the tone spacing, so the phase is the same at its ends whatever the tone.
    if (tone >= 0) AddTone(dialHz + tone * kToneHz, station.Amplitude, station.Amplitude, from, count);
  }
}

// Harmonics of a gliding pitch between 300 and 2700 Hz, louder around two formants: on the screen it is a
// voice.
void DemoBand::AddVoice(const Station& station, double dialHz) {
  const double startSeconds = static_cast<double>(firstFrame_) / rateHz_;
  for (std::size_t from = 0; from < inPhase_.size(); from += chunk_) {
    const std::size_t count = std::min(chunk_, inPhase_.size() - from);
    const double seconds = startSeconds + static_cast<double>(from) / rateHz_;
    const double loudness = VoiceEnvelope(station, seconds) * station.Amplitude;
    if (loudness == 0) continue;
    const double glide = 0.12 * std::sin(2.2 * seconds) + 0.06 * std::sin(5.1 * seconds);
    const double pitchHz = station.PitchHz * (1 + glide);
    // The phase is the integral of the pitch: harmonic k turns k times as fast.
    const double cycles = station.PitchHz * (seconds - 0.12 / 2.2 * std::cos(2.2 * seconds) -
                                             0.06 / 5.1 * std::cos(5.1 * seconds));
    const double formantHz = 600 + 250 * std::sin(3.3 * seconds + station.Start);
    const double side = station.Lower ? -1 : 1;
    const int highest = static_cast<int>(2700 / pitchHz);
    for (int k = static_cast<int>(std::ceil(300 / pitchHz)); k <= highest; ++k) {
      const double hz = k * pitchHz;
      const double first = (hz - formantHz) / 260;
      const double second = (hz - 1900) / 500;
      const double weight = std::exp(-first * first) + 0.35 * std::exp(-second * second) + 0.03;
      const std::complex<float> start =
          Phasor(dialHz * seconds + side * k * cycles) * static_cast<float>(loudness * weight * 0.5);
      const std::complex<float> step = Phasor((dialHz + side * hz) / rateHz_);
      std::complex<float> phasor = start;
      for (std::size_t i = from; i < from + count; ++i) {
        inPhase_[i] += phasor.real();
        quadrature_[i] += phasor.imag();
        phasor = {phasor.real() * step.real() - phasor.imag() * step.imag(),
                  phasor.real() * step.imag() + phasor.imag() * step.real()};
      }
    }
  }
}

// Four uniform numbers added are near enough to Gaussian for a noise floor.
void DemoBand::AddNoise() {
  std::uint64_t state =
      (static_cast<std::uint64_t>(Scramble(seed_)) << 32 ^ firstFrame_ * 0x9E3779B97F4A7C15U) | 1;
  const auto next = [&state] {
    state ^= state << 13;
    state ^= state >> 7;
    state ^= state << 17;
    const auto sum = static_cast<float>((state & 0xFFFF) + (state >> 16 & 0xFFFF) + (state >> 32 & 0xFFFF) +
                                        (state >> 48));
    // Four uniforms of 65536 steps: mean 131070, standard deviation 37837.
    return (sum - 131070.0F) * (kNoise / 37837.0F);
  };
  for (std::size_t i = 0; i < inPhase_.size(); ++i) {
    inPhase_[i] += next();
    quadrature_[i] += next();
  }
}

}  // namespace spectrino
