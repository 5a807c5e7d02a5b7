#include "adapters/sound/CardRate.h"

#include <charconv>
#include <fstream>
#include <string>
#include <string_view>

namespace spectrino {

std::optional<int> ReadCardRateHz(int card, int device, const std::filesystem::path& root) {
  std::ifstream file(root / ("card" + std::to_string(card)) / ("pcm" + std::to_string(device) + "c") /
                     "sub0" / "hw_params");
  // The line reads "rate: 192000 (192000/1)"; a closed stream's whole file reads "closed".
  constexpr std::string_view kLabel = "rate: ";
  for (std::string line; std::getline(file, line);) {
    if (!line.starts_with(kLabel)) continue;
    int rateHz = 0;
    const char* end = line.data() + line.size();
    const auto [next, error] = std::from_chars(line.data() + kLabel.size(), end, rateHz);
    if (error == std::errc{} && rateHz > 0 && (next == end || *next == ' ')) return rateHz;
    return std::nullopt;
  }
  return std::nullopt;
}

}  // namespace spectrino
