// Opens the program's manual in the desktop's viewer.
#pragma once

#include <string>

#include "platform/Cure.h"

namespace spectrino {

/// chapter: an anchor of the manual; empty: its beginning. False when the manual is not there or nothing
/// opens it.
std::string OpenManual(const std::string& chapter);
/// What helps against what it returned.
[[nodiscard]] Cure ManualCure(const std::string& problem);

}  // namespace spectrino
