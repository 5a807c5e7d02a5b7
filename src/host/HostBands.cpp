#include "host/HostBands.h"

#include <cstddef>
#include <string>

#include "settings/Keys.h"
#include "state/Val.h"

namespace spectrino {
namespace {

constexpr std::string_view kSection = "HostBands";

using Usual = std::array<double, kBandButtonCount>;
constexpr Usual kWholeMHz{15.0, 1.82,  3.65, 7.15, 10.125, 14.1,  18.1,
                          21.1, 24.95, 28.2, 29.1, 50.1,   145.0, 435.0};
constexpr Usual kSplitMHz{15.0, 1.82, 3.55,  3.8,  7.15, 10.125, 14.1,
                          18.1, 21.1, 24.95, 28.2, 50.1, 145.0,  435.0};

}  // namespace

BandLayout HostBands::Layout() const {
  return ReadSplit80(store_) ? BandLayout::HostSplit : BandLayout::HostWhole;
}

int HostBands::ButtonOf(double freqMHz) const {
  return BandButtonOf(Layout(), freqMHz).value_or(0);
}

HostBandRecord HostBands::Recall(int button) const {
  const std::string number = std::to_string(button);
  const auto read = [&](const char* key, const char* fallback) {
    return Val(store_.GetSetting(kOwnApplication, kSection, key + number, fallback));
  };
  const BandLayout layout = Layout();
  const double freqMHz = read("FREQ", "0");
  if (BandButtonOf(layout, freqMHz) == button) return {freqMHz, RoundToInt16(read("MODE", "-1"))};
  const Usual& usual = layout == BandLayout::HostSplit ? kSplitMHz : kWholeMHz;
  return {usual[static_cast<std::size_t>(button)], hostmode::kUnknown};
}

void HostBands::Keep(const HostBandRecord& now) {
  if (!(now.FreqMHz > 0)) return;
  const std::string number = std::to_string(ButtonOf(now.FreqMHz));
  const KeyValue values[] = {{"FREQ" + number, NumberText(now.FreqMHz)},
                             {"MODE" + number, std::to_string(now.Mode)}};
  store_.SaveSettings(kOwnApplication, kSection, values);
}

}  // namespace spectrino
