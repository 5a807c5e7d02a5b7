#include "sim/icom/IcsimOptions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>

namespace spectrino {

namespace {

constexpr int kMostDivisions = 15;
constexpr double kMostSeconds = 1e6;

template <typename Number>
std::optional<Number> Parse(std::string_view text, Number low, Number high) {
  Number value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  if (!(value >= low && value <= high)) return std::nullopt;
  return value;
}

struct CountRow {
  std::string_view Name;
  int IcomSimFaults::*Every;
};
constexpr auto kCountRows = std::to_array<CountRow>({
    {"noise", &IcomSimFaults::NoiseEvery},
    {"lost-division", &IcomSimFaults::LostDivisionEvery},
    {"wrong-address", &IcomSimFaults::WrongAddressEvery},
    {"half-frame", &IcomSimFaults::HalfFrameEvery},
});

struct TimeRow {
  std::string_view Name;
  IcsimEvent Event;
};
constexpr auto kTimeRows = std::to_array<TimeRow>({
    {"silence", IcsimEvent::Silence},
    {"baud", IcsimEvent::WrongBaud},
    {"refuse", IcsimEvent::Refusal},
    {"heal", IcsimEvent::Heal},
    {"scope-off", IcsimEvent::ScopeOff},
    {"off", IcsimEvent::PowerOff},
    {"on", IcsimEvent::PowerOn},
    {"unplug", IcsimEvent::Unplug},
    {"replug", IcsimEvent::Replug},
});

bool ReadFault(std::string_view text, IcsimOptions& options) {
  const std::size_t equals = text.find('=');
  if (equals == std::string_view::npos) return false;
  const std::string_view name = text.substr(0, equals);
  const std::string_view value = text.substr(equals + 1);
  if (const auto row = std::ranges::find(kCountRows, name, &CountRow::Name); row != kCountRows.end()) {
    const auto every = Parse(value, 1, 1'000'000);
    if (every) options.Setup.Faults.*(row->Every) = *every;
    return every.has_value();
  }
  const auto row = std::ranges::find(kTimeRows, name, &TimeRow::Name);
  if (row == kTimeRows.end()) return false;
  const auto seconds = Parse(value, 0.0, kMostSeconds);
  if (!seconds) return false;
  const auto later = std::ranges::upper_bound(options.Events, *seconds, {}, &IcsimOptions::Timed::AtS);
  options.Events.insert(later, {*seconds, row->Event});
  return true;
}

/// An option with a value. False when there is no such option, or not with this value.
bool ReadValue(std::string_view option, const std::string& value, IcsimOptions& options) {
  if (option == "--model") {
    const auto models = IcomSimModels();
    const auto model = std::ranges::find(models, std::string_view(value), &IcomSimModel::Option);
    if (model == models.end()) return false;
    options.Setup.Model = model->Kind;
    return true;
  }
  if (option == "--link") {
    options.LinkPath = value;
    return !value.empty();
  }
  if (option == "--rate") {
    const auto rate = Parse(value, 0.1, 100.0);
    if (rate) options.Setup.LinesPerSecond = *rate;
    return rate.has_value();
  }
  if (option == "--divisions") {
    const auto divisions = Parse(value, 1, kMostDivisions);
    if (divisions) options.Setup.Divisions = *divisions;
    return divisions.has_value();
  }
  if (option == "--identity") {
    const auto [end, error] =
        std::from_chars(value.data(), value.data() + value.size(), options.Setup.Identity, 16);
    return error == std::errc{} && value.size() == 2 && end == value.data() + value.size();
  }
  return option == "--fault" && ReadFault(value, options);
}

}  // namespace

bool ReadIcsimOptions(const std::vector<std::string>& arguments, IcsimOptions& options,
                      std::string& trouble) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& option = arguments[i];
    if (option == "--echo") {
      options.Setup.Echo = true;
    } else if (option == "--operator") {
      options.Setup.Operator = true;
    } else if (option == "--help") {
      options.HelpWanted = true;
    } else if (i + 1 < arguments.size() && ReadValue(option, arguments[i + 1], options)) {
      ++i;
    } else {
      trouble = "cannot understand " + option + (i + 1 < arguments.size() ? " " + arguments[i + 1] : "");
      return false;
    }
  }
  if (!options.LinkPath.empty() || options.HelpWanted) return true;
  trouble = "--link is missing";
  return false;
}

}  // namespace spectrino
