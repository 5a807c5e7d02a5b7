#include "host/SpectrumPacket.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>

namespace spectrino {
namespace {

using nlohmann::json;

/// Ten BCD digits of hertz hold no more.
constexpr double kMostHz = 9'999'999'999.0;
constexpr int kMostPoints = 4096;
constexpr int kMostLevel = 255;

/// The number under key, when it is one from least to most; what is no number there is not within either.
std::optional<double> Number(const json& object, const char* key, double least, double most) {
  const auto at = object.find(key);
  if (at == object.end() || !at->is_number()) return std::nullopt;
  const double number = at->get<double>();
  return number >= least && number <= most ? std::optional(number) : std::nullopt;
}

const std::string* Text(const json& object, const char* key) {
  const auto at = object.find(key);
  return at == object.end() ? nullptr : at->get_ptr<const std::string*>();
}

bool IsHexDigit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

std::optional<HostScopeLine> ReadLine(const json& spectrum) {
  if (!spectrum.is_object() || Number(spectrum, "id", 0, 0) != 0) return std::nullopt;
  const std::string* type = Text(spectrum, "type");
  const std::string* data = Text(spectrum, "data");
  const auto centreHz = Number(spectrum, "centerFreq", 1, kMostHz);
  const auto spanHz = Number(spectrum, "span", 1, kMostHz);
  const auto lowHz = Number(spectrum, "lowFreq", 0, kMostHz);
  const auto highHz = Number(spectrum, "highFreq", 1, kMostHz);
  const auto most = Number(spectrum, "maxLevel", 1, kMostLevel);
  const auto length = Number(spectrum, "length", 1, kMostPoints);
  if (type == nullptr || data == nullptr || !centreHz || !spanHz || !lowHz || !highHz || !most || !length)
    return std::nullopt;
  const bool fixed = type->starts_with("FIXED");
  if (!fixed && !type->starts_with("CENTER")) return std::nullopt;
  const auto points = static_cast<int>(*length);
  if (*lowHz >= *highHz || data->size() != 2 * static_cast<std::size_t>(points) ||
      !std::ranges::all_of(*data, IsHexDigit))
    return std::nullopt;
  return HostScopeLine{.Fixed = fixed,
                       .CentreMHz = *centreHz / 1e6,
                       .SpanMHz = (fixed ? *highHz - *lowHz : *spanHz) / 1e6,
                       .LowEdgeMHz = *lowHz / 1e6,
                       .HighEdgeMHz = *highHz / 1e6,
                       .MaxLevel = static_cast<int>(*most),
                       .Points = points,
                       .LevelsHex = *data};
}

}  // namespace

std::optional<HostScopeLine> ReadSpectrumPacket(std::span<const std::uint8_t> packet) {
  const json root = json::parse(packet.begin(), packet.end(), nullptr, false);
  if (!root.is_object()) return std::nullopt;
  const auto spectra = root.find("spectra");
  if (spectra == root.end() || !spectra->is_array()) return std::nullopt;
  for (const json& spectrum : *spectra)
    if (auto line = ReadLine(spectrum)) return line;
  return std::nullopt;
}

}  // namespace spectrino
