// What the radio has beyond frequency, mode and split, as rigctld's clients ask for it and have it listed.
// None of it can be set from here.
#pragma once

#include <string_view>

#include "catserver/CatAnswers.h"

namespace spectrino {

/// name: Hamlib's word, or "?" for the words that there are.
[[nodiscard]] CatAnswer GetLevel(std::string_view name, const CatServerState& radio);
[[nodiscard]] CatAnswer SetLevel(std::string_view name);
[[nodiscard]] CatAnswer GetFunc(std::string_view name, const CatServerState& radio);
[[nodiscard]] CatAnswer SetFunc(std::string_view name);
/// All that a client needs to know of the radio before it asks for anything.
[[nodiscard]] CatAnswer DumpState(const CatServerState& radio);

}  // namespace spectrino
