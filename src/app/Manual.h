// Opens the program's manual in the desktop's viewer.
#pragma once

#include <string>

namespace spectrino {

/// chapter: an anchor of the manual; empty: its beginning. False when the manual is not there or nothing
/// opens it.
std::string OpenManual(const std::string& chapter);

}  // namespace spectrino
