#include "k4/CatReply.h"

#include <cstdint>

#include "state/Val.h"

namespace spectrino {

std::optional<double> CatReply::Number(std::size_t position, std::size_t length) const {
  const std::string_view text = From(position, length);
  if (text.empty()) return std::nullopt;
  return Val(text);
}

std::optional<int> CatReply::Int16(std::size_t position, std::size_t length) const {
  const auto number = Number(position, length);
  if (!number || *number > INT16_MAX || *number < INT16_MIN) return std::nullopt;
  return RoundToInt16(*number);
}

}  // namespace spectrino
