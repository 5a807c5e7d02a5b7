#include "k4/CatReply.h"

#include "state/Val.h"

namespace spectrino {

std::optional<double> CatReply::Number(std::size_t position, std::size_t length, CatRange range) const {
  const std::string_view text = From(position, length);
  if (text.empty()) return std::nullopt;
  const double number = Val(text);
  const bool plausible =
      number >= static_cast<double>(range.Low) && number <= static_cast<double>(range.High);
  return plausible ? std::optional(number) : std::nullopt;
}

std::optional<int> CatReply::Int(std::size_t position, std::size_t length, CatRange range) const {
  const auto number = Number(position, length, range);
  return number ? std::optional<int>(RoundToInt32(*number)) : std::nullopt;
}

}  // namespace spectrino
