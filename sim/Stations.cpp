#include "sim/Stations.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

namespace spectrino {
namespace {

struct MorseSign {
  char letter;
  const char* marks;
};
constexpr MorseSign kMorse[] = {
    {'A', ".-"},    {'B', "-..."},  {'C', "-.-."},  {'D', "-.."},   {'E', "."},     {'F', "..-."},
    {'G', "--."},   {'H', "...."},  {'I', ".."},    {'J', ".---"},  {'K', "-.-"},   {'L', ".-.."},
    {'M', "--"},    {'N', "-."},    {'O', "---"},   {'P', ".--."},  {'Q', "--.-"},  {'R', ".-."},
    {'S', "..."},   {'T', "-"},     {'U', "..-"},   {'V', "...-"},  {'W', ".--"},   {'X', "-..-"},
    {'Y', "-.--"},  {'Z', "--.."},  {'0', "-----"}, {'1', ".----"}, {'2', "..---"}, {'3', "...--"},
    {'4', "....-"}, {'5', "....."}, {'6', "-...."}, {'7', "--..."}, {'8', "---.."}, {'9', "----."},
    {'/', "-..-."}, {'?', "..--.."}};

constexpr const char* kMessages[] = {"CQ CQ DE QX1ABC QX1ABC K ",   "QX7TEST TEST ",
                                     "R UR 599 599 5NN TU ",        "CQ DX DE QZ4XY QZ4XY PSE K ",
                                     "NAME HR IS JO QTH HILL TOP ", "TU 73 EE "};

// Distances between stations, so that no window of 11 kHz is empty and none of 192 kHz is a picket fence.
constexpr double kSpacingHz[] = {2100, 4700, 1300, 3600, 5400, 2600};
constexpr double kGroupHz = 74'000;       // the digital stations stand together here
constexpr double kVoiceFromHz = 110'000;  // below: telegraphy; above: mostly telephony
constexpr int kGroupSize = 12;

double Fraction(double value) {
  return value - std::floor(value);
}

double Unit(std::uint32_t value) {
  return Scramble(value) / 4294967296.0;
}

Station MakeMorse(double offsetHz, std::uint32_t seed) {
  Station station;
  station.OffsetHz = offsetHz;
  // From just above the noise to strong: -100 to -50 dB on the program's scale at 8192 points.
  station.Amplitude = 0.6 * std::pow(10, 2.1 * Unit(seed + 1));
  station.DitSeconds = 1.2 / (14 + 18 * Unit(seed + 2));  // 14 to 32 words a minute
  station.Start = 40 * Unit(seed + 3);
  station.Keying = MorseKeying(kMessages[Scramble(seed + 4) % std::size(kMessages)]);
  return station;
}

Station MakeVoice(double offsetHz, std::uint32_t seed) {
  Station station;
  station.Kind = StationKind::Voice;
  station.OffsetHz = offsetHz;
  station.Amplitude = 6 * std::pow(10, 1.1 * Unit(seed + 1));
  station.Start = 60 * Unit(seed + 3);
  station.PitchHz = 110 + 90 * Unit(seed + 5);
  station.Lower = false;
  return station;
}

void AddGroup(std::vector<Station>& stations, std::uint32_t seed) {
  for (std::uint32_t i = 0; i < kGroupSize; ++i) {
    Station station;
    station.Kind = StationKind::Digital;
    station.OffsetHz = kGroupHz + 200 + 2300 * Unit(seed + 100 + i);
    station.Amplitude = 0.8 * std::pow(10, 1.6 * Unit(seed + 200 + i));
    station.Start = i % 2 == 0 ? 0 : 15;
    station.Seed = seed + 1000 * i;
    stations.push_back(station);
  }
}

}  // namespace

std::uint32_t Scramble(std::uint32_t value) {
  value = (value ^ 61) ^ (value >> 16);
  value *= 9;
  value ^= value >> 4;
  value *= 0x27d4eb2d;
  return value ^ (value >> 15);
}

std::vector<bool> MorseKeying(std::string_view text) {
  std::vector<bool> keying;
  for (const char letter : text) {
    if (letter == ' ') keying.insert(keying.end(), 4, false);  // three stand after the letter already
    const auto sign = std::ranges::find(kMorse, letter, &MorseSign::letter);
    if (sign == std::end(kMorse)) continue;
    for (const char mark : std::string_view(sign->marks)) {
      keying.insert(keying.end(), mark == '-' ? 3 : 1, true);
      keying.push_back(false);
    }
    keying.insert(keying.end(), 2, false);
  }
  return keying;
}

std::vector<Station> MakeStations(std::uint32_t seed) {
  std::vector<Station> stations;
  double offsetHz = 1400;
  for (std::uint32_t i = 0; offsetHz < kBandPatternHz - 1000; ++i) {
    const std::uint32_t own = seed + 17 * i;
    const bool inGroup = offsetHz > kGroupHz - 500 && offsetHz < kGroupHz + 3000;
    const bool voice = offsetHz > kVoiceFromHz && i % 3 != 0;
    if (!inGroup) stations.push_back(voice ? MakeVoice(offsetHz, own) : MakeMorse(offsetHz, own));
    offsetHz += kSpacingHz[Scramble(own + 9) % std::size(kSpacingHz)] + (voice ? 2000 : 0);
  }
  AddGroup(stations, seed);
  for (const double carrierHz : {9'300.0, 97'000.0, 182'000.0}) {
    Station carrier;
    carrier.Kind = StationKind::Carrier;
    carrier.OffsetHz = carrierHz;
    carrier.Amplitude = 25;
    carrier.Start = carrierHz / 1000;
    stations.push_back(carrier);
  }
  return stations;
}

double MorseEnvelope(const Station& station, double seconds) {
  if (station.Keying.empty()) return 0;
  constexpr double kEdgeSeconds = 0.005;
  const double position = (seconds + station.Start) / station.DitSeconds;
  const double whole = std::floor(position);
  const auto length = static_cast<double>(station.Keying.size());
  const auto index = static_cast<std::size_t>(whole - std::floor(whole / length) * length);
  const bool now = station.Keying[index];
  const bool before = station.Keying[index == 0 ? station.Keying.size() - 1 : index - 1];
  const double edge = std::min((position - whole) * station.DitSeconds / kEdgeSeconds, 1.0);
  const double risen = now == before ? 1.0 : (1 - std::cos(std::numbers::pi * edge)) / 2;
  const double key = now ? risen : before ? 1 - risen : 0;
  // Slow fading, as on a real path.
  return key * (0.75 + 0.25 * std::sin(0.35 * seconds + station.Start));
}

double VoiceEnvelope(const Station& station, double seconds) {
  const double time = seconds + station.Start;
  const bool over = Fraction(time / 19) < 0.7;  // speaks, then listens
  if (!over) return 0;
  const double syllable = std::sin(2 * std::numbers::pi * 3.1 * time + 1.5 * std::sin(1.3 * time));
  const double phrase = std::sin(2 * std::numbers::pi * 0.37 * time + station.PitchHz);
  return std::max(0.0, 0.35 + 0.65 * syllable) * (phrase > -0.7 ? 1 : 0);
}

int DigitalTone(const Station& station, double seconds) {
  constexpr double kSlotSeconds = 15;
  constexpr double kSymbolSeconds = 0.16;
  constexpr int kSymbols = 79;
  // Stations take turns: those shifted by a slot send while the others listen.
  const double cycle = (seconds + station.Start) / (2 * kSlotSeconds);
  const double inSlot = Fraction(cycle) * 2 * kSlotSeconds - 0.5;
  if (inSlot < 0) return -1;
  const auto symbol = static_cast<int>(inSlot / kSymbolSeconds);
  if (symbol >= kSymbols) return -1;
  const auto slot = static_cast<std::uint32_t>(std::floor(cycle));
  return static_cast<int>(Scramble(station.Seed + 131 * slot + static_cast<std::uint32_t>(symbol)) & 7);
}

}  // namespace spectrino
