// The radios of the list of sources, as the program's kits bring them.
#pragma once

#include "settings/SourceChoice.h"

namespace spectrino {

inline constexpr RadioSource kRadioSources[] = {
    {SourceKind::Icom, "ICOM"}, {SourceKind::K4, "K4"}, {SourceKind::K4D, "K4D"}};

}  // namespace spectrino
