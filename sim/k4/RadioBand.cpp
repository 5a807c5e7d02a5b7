#include "sim/k4/RadioBand.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace spectrino {
namespace {

constexpr float kNoiseDbm = -130;
constexpr double kSlotHz = 1000;
constexpr double kCarrierHz = 25;  // half width of a keyed carrier

std::uint32_t Hash(std::uint64_t value) {
  value = (value ^ value >> 31) * 0x9E3779B97F4A7C15ULL;
  value = (value ^ value >> 27) * 0xBF58476D1CE4E5B9ULL;
  return static_cast<std::uint32_t>(value >> 32);
}

/// 0..1
float Share(std::uint64_t value) {
  return static_cast<float>(Hash(value) & 0xFFFFU) / 65535;
}

enum class Kind { None, Cw, Voice, Digital };

struct Station {
  Kind What = Kind::None;
  double FreqHz = 0;
  double WidthHz = 0;
  float LevelDbm = -200;
};

/// One slot of the band holds at most one station; which, its frequency tells.
Station StationOf(std::int64_t slot, double seconds) {
  const auto seed = static_cast<std::uint64_t>(slot) * 64;
  const std::uint32_t draw = Hash(seed) % 100;
  Station station;
  station.FreqHz = static_cast<double>(slot) * kSlotHz + 150 + 700 * static_cast<double>(Share(seed + 1));
  const float strength = -118 + 62 * Share(seed + 2);
  if (draw < 12) {
    // Elements of 80 ms from a pattern of its own, longer pauses between words.
    const auto element = static_cast<std::uint64_t>(seconds / 0.08);
    const bool word = Hash(seed + 3 + element / 40) % 5 != 0;
    const bool key = Hash(seed * 31 + element / 2) % 8 < 5;
    station.What = Kind::Cw;
    station.WidthHz = kCarrierHz;
    station.LevelDbm = word && key ? strength : -200;
  } else if (draw < 15) {
    const auto syllable = static_cast<std::uint64_t>(seconds / 0.12);
    station.What = Kind::Voice;
    station.WidthHz = 1200;
    station.LevelDbm = strength - 10 - 25 * Share(seed * 7 + syllable);
  } else if (draw < 22) {
    // Slots of fifteen seconds; a station sends in one of two.
    const auto turn = static_cast<std::uint64_t>(seconds / 15);
    station.What = Kind::Digital;
    station.WidthHz = 28;
    station.LevelDbm = (turn + (Hash(seed + 5) & 1U)) % 2 == 0 ? strength - 15 : -200;
  }
  return station;
}

float ShapeDb(const Station& station, double offsetHz, std::uint64_t ripple) {
  const double distance = std::fabs(offsetHz) / station.WidthHz;
  if (station.What == Kind::Voice) {
    if (distance > 1) return -200;
    return station.LevelDbm - 12 * Share(ripple);
  }
  return station.LevelDbm - static_cast<float>(std::min(90.0, 3 * distance * distance));
}

}  // namespace

void RadioBand::Fill(double centreHz, double spanHz, double seconds, std::span<float> levels) const {
  const double binHz = spanHz / static_cast<double>(levels.size());
  const double leftHz = centreHz - spanHz / 2;
  const auto frame = static_cast<std::uint64_t>(seconds * 100);
  for (std::size_t i = 0; i < levels.size(); ++i) levels[i] = kNoiseDbm + 7 * Share(frame * 8191 + i) - 3.5F;
  const auto first = static_cast<std::int64_t>(std::floor((leftHz - 2000) / kSlotHz));
  const auto last = static_cast<std::int64_t>(std::ceil((leftHz + spanHz + 2000) / kSlotHz));
  for (std::int64_t slot = first; slot <= last; ++slot) {
    Station station = StationOf(slot, seconds);
    if (station.What == Kind::None || station.LevelDbm < -150) continue;
    // A carrier is never narrower than a bin: a scope shows it wherever between two bins it falls.
    station.WidthHz = std::max(station.WidthHz, binHz);
    const double reach = station.What == Kind::Voice ? station.WidthHz : 5 * station.WidthHz;
    const auto from = static_cast<std::int64_t>(std::floor((station.FreqHz - reach - leftHz) / binHz));
    const auto to = static_cast<std::int64_t>(std::ceil((station.FreqHz + reach - leftHz) / binHz));
    const auto end = std::min<std::int64_t>(to + 1, static_cast<std::int64_t>(levels.size()));
    for (std::int64_t bin = std::max<std::int64_t>(0, from); bin < end; ++bin) {
      const double offset = leftHz + (static_cast<double>(bin) + 0.5) * binHz - station.FreqHz;
      float& level = levels[static_cast<std::size_t>(bin)];
      level = std::max(level, ShapeDb(station, offset, frame / 8 * 4093 + static_cast<std::uint64_t>(bin)));
    }
  }
}

float RadioBand::Strongest(double lowHz, double highHz, double seconds) const {
  std::array<float, 64> levels{};
  Fill((lowHz + highHz) / 2, std::max(64.0, highHz - lowHz), seconds, levels);
  return *std::ranges::max_element(levels);
}

}  // namespace spectrino
