// The figures of a run as JSON, for --stats.
#pragma once

#include <QByteArray>

#include "state/StageTimes.h"

namespace spectrino {

/// seconds: how long frames could come. Processor time and memory are the whole process's.
[[nodiscard]] QByteArray RunStatsJson(const StageTimes& times, double seconds);

}  // namespace spectrino
