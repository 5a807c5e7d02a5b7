#include "bandplan/BandMemory.h"

#include <string>
#include <vector>

#include "bandplan/Bands.h"
#include "settings/Keys.h"
#include "state/Val.h"

namespace spectrino {
namespace {

constexpr std::string_view kSection = "BSR";

constexpr std::array<double, kBandRecordCount> kDefaultMHz{
    15.0,  0.136, 0.475, 1.82,  3.65,  5.37,  7.15,  10.125, 14.1,   18.1,   21.1,
    24.95, 28.2,  50.1,  70.25, 145.0, 222.0, 435.0, 910.0,  1260.0, 2400.0, 3400.0};

bool HasRecord(int band) {
  return band >= 0 && band < static_cast<int>(kBandRecordCount);
}

/// Bands that have no button of their own on the Icom panel share the general-coverage keys.
bool AlsoGeneral(int band) {
  return band == 1 || band == 14 || band == 16 || band >= 18;
}

void PutRecord(std::vector<KeyValue>& values, const std::string& suffix, const BandRecord& record) {
  values.push_back({"FREQ" + suffix, NumberText(record.FrequencyMHz)});
  values.push_back({"MODE" + suffix, std::to_string(record.Mode)});
  values.push_back({"LEVEL" + suffix, std::to_string(record.Level)});
}

}  // namespace

BandMemory LoadBandMemory(SettingsStore& store) {
  BandMemory memory;
  for (std::size_t n = 0; n < kBandRecordCount; ++n) {
    BandRecord& record = memory.Records[n];
    const auto read = [&, suffix = std::to_string(n)](const char* key, const std::string& fallback) {
      return Val(store.GetSetting(kOwnApplication, kSection, key + suffix, fallback));
    };
    record.FrequencyMHz = read("FREQ", NumberText(kDefaultMHz[n]));
    record.Mode = RoundToInt16(read("MODE", "2"));
    record.Level = RoundToInt16(read("LEVEL", "10"));
  }
  return memory;
}

void SaveBandMemory(SettingsStore& store, BandMemory& memory, BandMemoryRadio radio, const BandRecord& now) {
  if (!(now.FrequencyMHz > 0)) return;
  const int band = IcomBandNumber(now.FrequencyMHz);
  std::vector<KeyValue> values;
  if (HasRecord(band)) {
    BandRecord& record = memory.Records[static_cast<std::size_t>(band)];
    const int level = radio == BandMemoryRadio::K4 ? record.Level : now.Level;
    record = {now.FrequencyMHz, now.Mode, level};
    PutRecord(values, (radio == BandMemoryRadio::K4 ? "K4" : "") + std::to_string(band), record);
  }
  if (radio == BandMemoryRadio::Icom && AlsoGeneral(band)) {
    memory.Records[0] = now;  // "Gen" leads back to it
    PutRecord(values, "0", now);
  }
  store.SaveSettings(kOwnApplication, kSection, values);
}

void SaveBandLevel(SettingsStore& store, BandMemory& memory, double mhz, int level) {
  if (!(mhz > 0)) return;
  const int band = IcomBandNumber(mhz);
  std::vector<KeyValue> values;
  if (HasRecord(band)) {
    memory.Records[static_cast<std::size_t>(band)].Level = level;
    values.push_back({"LEVEL" + std::to_string(band), std::to_string(level)});
  }
  if (AlsoGeneral(band)) {
    memory.Records[0].Level = level;
    values.push_back({"LEVEL0", std::to_string(level)});
  }
  store.SaveSettings(kOwnApplication, kSection, values);
}

}  // namespace spectrino
