#include "demo/DemoDial.h"

#include <algorithm>

namespace spectrino {
namespace {

constexpr std::array kUsualMHz{15.0,   1.84,   3.55,   3.75, 7.1,   10.12, 14.074, 18.1,
                               21.074, 24.915, 28.074, 29.1, 50.15, 145.0, 435.0};
constexpr double kLowestMHz = 0.03;
constexpr double kHighestMHz = 1300;
constexpr double kUpperSidebandMHz = 10;

struct ButtonMode {
  int Normal, Reverse;
};
/// Of the buttons LSB, USB, CW, AM, FM and FSK; no others are offered.
constexpr std::array<ButtonMode, 6> kModes{{{mode::kLsb, mode::kLsb},
                                            {mode::kUsb, mode::kUsb},
                                            {mode::kCw, mode::kCwReverse},
                                            {mode::kAm, mode::kAm},
                                            {mode::kFm, mode::kFm},
                                            {mode::kData, mode::kDataReverse}}};
constexpr std::size_t kFskButton = 5;

}  // namespace

// By the layout that the buttons have while nothing else carries the frequency.
std::size_t DemoDial::ButtonOf(double freqMHz) const {
  const BandLayout layout = ReadSplit80(store_) ? BandLayout::HostSplit : BandLayout::HostWhole;
  return static_cast<std::size_t>(BandButtonOf(layout, freqMHz).value_or(0));
}

void DemoDial::Refresh(RadioState& radio) {
  radio.MainFreqMHz = freqMHz_;
  radio.RadioMode = mode_.RadioMode;
  radio.Teletype = mode_.Teletype;
}

void DemoDial::SetFrequency(Vfo /*vfo*/, double freqMHz, Aim /*aim*/) {
  freqMHz_ = std::clamp(freqMHz, kLowestMHz, kHighestMHz);
}

void DemoDial::SelectBand(int button) {
  if (button < 0 || button >= kBandButtonCount) return;
  bands_[ButtonOf(freqMHz_)] = freqMHz_;
  const auto wanted = static_cast<std::size_t>(button);
  const auto usual = std::ranges::find_if(kUsualMHz, [&](double mhz) { return ButtonOf(mhz) == wanted; });
  if (bands_[wanted] > 0)
    freqMHz_ = bands_[wanted];
  else if (usual != kUsualMHz.end())
    freqMHz_ = *usual;
  if (mode_.RadioMode == mode::kLsb || mode_.RadioMode == mode::kUsb)
    mode_.RadioMode = freqMHz_ < kUpperSidebandMHz ? mode::kLsb : mode::kUsb;
}

bool DemoDial::SelectMode(const ModeRequest& request) {
  const auto button = static_cast<std::size_t>(request.Button);
  if (button >= kModes.size()) return true;
  mode_.RadioMode = request.Reverse ? kModes[button].Reverse : kModes[button].Normal;
  mode_.Teletype = button == kFskButton;
  return true;
}

bool DemoDial::SetMode(Vfo receiver, const ExactMode& exact) {
  if (receiver != Vfo::A || exact.RadioMode == mode::kUnknown) return false;
  mode_ = exact;
  return true;
}

}  // namespace spectrino
