#include "host/PanKeys.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "rig/Passband.h"
#include "state/Val.h"

namespace spectrino {
namespace {

// Which CAT controls read a key, one bit each.
constexpr unsigned Bit(CatControl control) {
  return 1U << static_cast<unsigned>(control);
}
constexpr unsigned kIf = Bit(CatControl::HostIf) | Bit(CatControl::IcomViaHost);
constexpr unsigned kK3 = Bit(CatControl::HostK3If);
constexpr unsigned kBridge = Bit(CatControl::BridgeIf);
constexpr unsigned kKetrel = Bit(CatControl::KetrelIf);
constexpr unsigned kFixed = Bit(CatControl::BridgeFixedLo) | Bit(CatControl::KetrelFixedLo);
constexpr unsigned kOutside = kBridge | kKetrel;
constexpr unsigned kIfAdapters = kIf | kK3 | kOutside;

constexpr double kEqualMHz = 0.0001;
constexpr double kMostToneHz = 20000;

struct KeyRow {
  std::string_view Key;
  double PanValues::*Field;
  unsigned ReadBy;
};

constexpr auto kKeys = std::to_array<KeyRow>({
    {"FA", &PanValues::MainFreqMHz, kKetrel | kFixed},
    {"FB", &PanValues::SubFreqMHz, kIf | kK3 | kKetrel},
    {"MD", &PanValues::Mode, kK3 | kOutside | kFixed},
    {"MD$", &PanValues::SubMode, kK3},
    {"MD2", &PanValues::SubMode, kOutside},
    {"FI", &PanValues::OffsetHz, kK3 | kKetrel},
    {"IS", &PanValues::IfCentreHz, kK3 | kKetrel},
    {"IFS", &PanValues::IfShiftHz, kIf},
    {"FW", &PanValues::WidthHz, kIf | kK3 | kKetrel},
    {"FW$", &PanValues::SubWidthHz, kK3},
    {"FW2", &PanValues::SubWidthHz, kKetrel},
    {"PITCH", &PanValues::PitchHz, kIf | kK3},
    {"PI", &PanValues::PitchHz, kOutside},
    {"FT", &PanValues::Split, kOutside},
    {"PRE", &PanValues::PreampDb, kIfAdapters},
    {"ATT", &PanValues::AttenuatorDb, kIfAdapters},
    {"FSK", &PanValues::FskOffset, kIf | kK3 | kBridge},
    {"CO", &PanValues::Corrects, kIf | kK3 | kBridge},
    {"SHIFT", &PanValues::ToneShiftHz, kIfAdapters},
});

bool Reads(const KeyRow& row, CatControl control) {
  return (row.ReadBy & Bit(control)) != 0;
}

double FromDialHz(int radioMode, double widthHz, double centreHz, double shiftHz, double pitchHz) {
  const bool reverse = radioMode == mode::kCwReverse;
  if (radioMode == mode::kCw || reverse) {
    const double fromPitchHz = centreHz != 0 ? centreHz - pitchHz : shiftHz;
    return reverse ? -fromPitchHz : fromPitchHz;
  }
  if (LiesAroundDial(radioMode)) return 0;
  return centreHz != 0 || shiftHz == 0 ? centreHz : FilterCentreHz(radioMode, widthHz, shiftHz, pitchHz);
}

}  // namespace

// What a file says may be any number; what is made of it stays a frequency of audio.
int PanValues::ToneOffsetHz() const {
  return static_cast<int>(std::clamp(ToneShiftHz, -kMostToneHz, kMostToneHz) / 2);
}

double FilterCentreHz(int radioMode, double widthHz, double shiftHz, double pitchHz) {
  if (radioMode == mode::kCw || radioMode == mode::kCwReverse) return pitchHz + shiftHz;
  const Passband usual = PassbandOf(radioMode, widthHz, 0);
  return std::abs(usual.LowHz + usual.HighHz) / 2 + shiftHz;
}

std::string_view PanApplication(CatControl control) {
  switch (RowOf(control).Way) {
    case CatWay::Bridge:
      return "LP-Bridge";
    case CatWay::Ketrel:
      return "Ketrel";
    case CatWay::Host:
    case CatWay::HostK3:
    case CatWay::HostAndScope:
    case CatWay::Direct:
      break;
  }
  return "Bexmora";
}

std::vector<std::string_view> PanKeysOf(CatControl control) {
  std::vector<std::string_view> keys;
  for (const KeyRow& row : kKeys)
    if (Reads(row, control)) keys.push_back(row.Key);
  return keys;
}

PanValues ReadPan(SettingsStore& store, CatControl control) {
  PanValues pan;
  const std::string_view application = PanApplication(control);
  // All of one version of the file: it may be replaced many times a second.
  const auto texts = store.FindSettings(application, kPanSection, PanKeysOf(control));
  auto text = texts.begin();
  for (const KeyRow& row : kKeys) {
    if (!Reads(row, control)) continue;
    if (*text) pan.*row.Field = Val(**text);
    ++text;
  }
  // Ketrel alone tells its frequencies in MHz.
  if (RowOf(control).Way != CatWay::Ketrel) {
    pan.MainFreqMHz /= 1e6;
    pan.SubFreqMHz /= 1e6;
  }
  if (pan.PitchHz == 0) pan.PitchHz = kUsualPitchHz;
  return pan;
}

void TellFilters(const PanValues& pan, RadioState& radio) {
  radio.PitchHz = RoundToInt32(pan.PitchHz);
  radio.PreampDb = RoundToInt32(pan.PreampDb);
  radio.AttenuatorDb = RoundToInt32(pan.AttenuatorDb);
  radio.MainBandwidthHz = pan.WidthHz;
  radio.SubBandwidthHz = pan.SubWidthHz;
  radio.MainShiftHz = FromDialHz(radio.RadioMode, pan.WidthHz, pan.IfCentreHz, pan.IfShiftHz, pan.PitchHz);
  radio.SubShiftHz = 0;
}

double CorrectedForTones(const PanValues& pan, int radioMode, double freqMHz) {
  if (pan.Corrects != 1 || pan.FskOffset != 0) return freqMHz;
  if (radioMode == mode::kData) return freqMHz - pan.ToneOffsetHz() / 1e6;
  if (radioMode == mode::kDataReverse) return freqMHz + pan.ToneOffsetHz() / 1e6;
  return freqMHz;
}

void ClearEqualSplit(RadioState& radio) {
  if (std::abs(radio.MainFreqMHz - radio.SubFreqMHz) < kEqualMHz) radio.SplitOn = 0;
}

}  // namespace spectrino
