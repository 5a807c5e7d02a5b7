// Who sends where on the demo band: telegraphy at the bottom, the digital group at 74 kHz, voices above.

#include <array>
#include <string>

#include "sim/CwSignal.h"
#include "sim/DemoSignal.h"
#include "sim/HashRandom.h"
#include "sim/SlotSignal.h"
#include "sim/VoiceSignal.h"

namespace spectrino {

namespace {

enum class CwText { Cq, Contest, Report };

struct CwRow {
  double KHz;
  double LevelDb;
  double WordsPerMinute;
  CwText Text;
};

// Levels are those of a steady tone at 8192 points; the noise lies at about -122.
constexpr auto kCwRows = std::to_array<CwRow>({
    {0.9, -78, 18, CwText::Cq},        {2.35, -62, 24, CwText::Contest}, {6.1, -95, 20, CwText::Cq},
    {8.4, -55, 28, CwText::Contest},   {10.2, -84, 22, CwText::Report},  {12.9, -101, 16, CwText::Cq},
    {14.05, -70, 30, CwText::Report},  {17.6, -66, 26, CwText::Cq},      {19.3, -92, 21, CwText::Contest},
    {21.15, -48, 32, CwText::Contest}, {24.8, -88, 19, CwText::Report},  {27.0, -73, 25, CwText::Cq},
    {28.2, -105, 15, CwText::Cq},      {31.7, -58, 27, CwText::Report},  {34.4, -81, 23, CwText::Contest},
    {38.95, -69, 20, CwText::Cq},      {41.3, -97, 18, CwText::Report},  {45.6, -63, 22, CwText::Cq},
    {49.2, -86, 14, CwText::Cq},       {54.7, -76, 17, CwText::Report},  {60.0, -90, 12, CwText::Cq},
    {68.3, -83, 13, CwText::Report},   {79.1, -93, 16, CwText::Cq},
});

struct CarrierRow {
  double KHz;
  Fading Strength;
};

constexpr auto kCarrierRows = std::to_array<CarrierRow>({
    {4.6, {-80, 14, 41, 0.1}},
    {65.2, {-72, 18, 53, 0.4}},
    {104.3, {-104, 3, 29, 0.7}},
    {146.5, {-88, 12, 67, 0.2}},
    {187.8, {-107, 4, 31, 0.9}},
});

struct VoiceRow {
  double KHz;
  std::array<double, 2> LevelsDb;
};

constexpr auto kVoiceRows = std::to_array<VoiceRow>({
    {84.0, {-72, -66}},
    {92.5, {-80, -76}},
    {100.0, {-64, -78}},
    {109.0, {-76, -70}},
    {117.5, {-60, -68}},
    {126.0, {-84, -79}},
    {133.0, {-70, -78}},
    {142.0, {-78, -72}},
    {151.0, {-57, -65}},
    {159.5, {-75, -82}},
    {166.0, {-74, -69}},
    {175.0, {-67, -79}},
    {183.0, {-82, -77}},
    {190.5, {-61, -71}},
    {198.5, {-73, -77}},
});

constexpr double kSlotDialKHz = 74;
constexpr int kSlotStations = 18;

/// No call sign begins with Q, so these belong to nobody.
std::string MakeCall(std::uint64_t key) {
  const auto letter = [key](std::uint64_t place) { return static_cast<char>('A' + Mix(key, place) % 26); };
  std::string call{'Q', letter(0), static_cast<char>('0' + Mix(key, 1) % 10)};
  const std::uint64_t suffix = 2 + Mix(key, 2) % 2;
  for (std::uint64_t i = 0; i < suffix; ++i) call += letter(3 + i);
  return call;
}

std::string MakeText(CwText kind, std::uint64_t key) {
  constexpr std::array<const char*, 6> kNames{"ANNA", "OTTO", "MIA", "PAUL", "EVA", "TOM"};
  const std::string call = MakeCall(key);
  switch (kind) {
    case CwText::Cq:
      return "CQ CQ CQ DE " + call + " " + call + " " + call + " K";
    case CwText::Contest:
      return "CQ TEST " + call + " " + call + " TEST";
    case CwText::Report:
      return MakeCall(Mix(key, 20)) + " DE " + call + " = TNX FER CALL UR RST 579 579 = NAME " +
             kNames[Mix(key, 21) % kNames.size()] + " = HW? BK";
  }
  return {};
}

void AddTelegraphy(std::vector<std::unique_ptr<DemoSignal>>& band, int rateHz, std::uint64_t key) {
  for (std::size_t i = 0; i < kCwRows.size(); ++i) {
    const CwRow& row = kCwRows[i];
    const std::uint64_t own = Mix(key, i);
    const std::string text = MakeText(row.Text, own);
    const Fading fading{row.LevelDb, Between(Mix(own, 30), 1, 4), Between(Mix(own, 31), 4, 15),
                        Unit(Mix(own, 32))};
    const double pauseS = Between(Mix(own, 33), 2.5, row.Text == CwText::Contest ? 5 : 12);
    band.push_back(std::make_unique<CwSignal>(row.KHz * 1000, fading,
                                              CwSignal::Keying{text, row.WordsPerMinute, pauseS}, rateHz));
  }
}

void AddSlotGroup(std::vector<std::unique_ptr<DemoSignal>>& band, std::uint64_t key) {
  for (int i = 0; i < kSlotStations; ++i) {
    const std::uint64_t own = Mix(key, static_cast<std::uint64_t>(i));
    // Evenly spread with some scatter, so that stations overlap now and then as they do on the air.
    const double audioHz = 250 + 2200.0 / kSlotStations * (i + Between(Mix(own, 1), -0.4, 0.4));
    const Fading fading{Between(Mix(own, 2), -110, -76), 2, Between(Mix(own, 3), 8, 20), Unit(Mix(own, 4))};
    band.push_back(
        std::make_unique<SlotSignal>(kSlotDialKHz * 1000 + audioHz, fading, (Mix(own, 5) & 1) != 0, own));
  }
}

}  // namespace

std::vector<std::unique_ptr<DemoSignal>> MakeDemoSignals(int rateHz, std::uint32_t seed) {
  std::vector<std::unique_ptr<DemoSignal>> band;
  AddTelegraphy(band, rateHz, Mix(seed, 1));
  AddSlotGroup(band, Mix(seed, 2));
  for (const CarrierRow& row : kCarrierRows) {
    band.push_back(std::make_unique<CarrierSignal>(row.KHz * 1000, row.Strength));
  }
  for (std::size_t i = 0; i < kVoiceRows.size(); ++i) {
    band.push_back(
        std::make_unique<VoiceSignal>(kVoiceRows[i].KHz * 1000, kVoiceRows[i].LevelsDb, Mix(seed, 3, i)));
  }
  return band;
}

}  // namespace spectrino
