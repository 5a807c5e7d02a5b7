#include "civ/IcomModels.h"

#include <algorithm>
#include <array>

namespace spectrino {
namespace {

constexpr auto kModels = std::to_array<IcomModel>({
    {"96", "IC-R8600", 160, 475},
    {"A2", "IC-9700", 160, 475},
    {"98", "IC-7610", 200, 689},
    {"94", "IC-7300", 160, 475},
    {"A4", "IC-705", 160, 475},
    {"6A", "IC-7850", 200, 689},
    {"B2", "IC-7760", 200, 689},
});

constexpr auto kModes = std::to_array<IcomMode>({
    {0, 0},                                                         // LSB
    {1, 1},                                                         // USB
    {2, 3, 0},                                                      // AM
    {3, 2},                                                         // CW
    {4, 5},                                                         // RTTY
    {5, 4},                                                         // FM
    {6, 7},                                                         // wide FM
    {7, 2},                                                         // CW, reverse
    {8, 5},                                                         // RTTY, reverse
    {11, 3, 1},                                                     // synchronous AM and its two sidebands
    {12, 6},                                                        // PSK and digital voice of other kinds
    {13, 6},    {14, 3, 2}, {15, 3, 3}, {16, 8},                    // digital voice
    {17, 8},    {18, 8},    {19, 8},    {20, 8}, {21, 8}, {22, 6},  // digital data
});

// By RadioModeIndex.
constexpr std::array kModeCodes{1, 2, 3, 5, 4, 6, 0, 10, 11};

}  // namespace

const IcomModel* FindIcomModel(std::string_view id) {
  const auto found = std::ranges::find(kModels, id, &IcomModel::Id);
  return found == kModels.end() ? nullptr : &*found;
}

const IcomModel* FindIcomModelByName(std::string_view name) {
  const auto found =
      std::ranges::find_if(kModels, [name](const IcomModel& model) { return name.starts_with(model.Name); });
  return found == kModels.end() ? nullptr : &*found;
}

const IcomMode* FindIcomMode(int modeByte) {
  const auto found = std::ranges::find(kModes, modeByte, &IcomMode::ModeByte);
  return found == kModes.end() ? nullptr : &*found;
}

int IcomModeCode(int modeIndex) {
  if (modeIndex < 0 || modeIndex >= static_cast<int>(kModeCodes.size())) return 0;
  return kModeCodes[static_cast<std::size_t>(modeIndex)];
}

}  // namespace spectrino
