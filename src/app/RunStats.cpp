#include "app/RunStats.h"

#include <sys/resource.h>

#include <QJsonDocument>
#include <QJsonObject>

namespace spectrino {

QByteArray RunStatsJson(const StageTimes& times, double seconds) {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto toSeconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  constexpr std::pair<Stage, const char*> kStages[] = {
      {Stage::Capture, "capture"}, {Stage::Transform, "transform"}, {Stage::Levels, "levels"},
      {Stage::History, "history"}, {Stage::Draw, "draw"},           {Stage::Latency, "latency"}};
  QJsonObject stages;
  for (const auto& [stage, name] : kStages) {
    stages[name] =
        QJsonObject{{"medianMs", times.QuantileMs(stage, 0.5)}, {"p99Ms", times.QuantileMs(stage, 0.99)}};
  }
  const auto frames = static_cast<double>(times.Frames);
  const QJsonObject root{{"frames", frames},
                         {"lines", static_cast<double>(times.Lines)},
                         {"seconds", seconds},
                         {"framesPerSecond", seconds > 0 ? frames / seconds : 0},
                         {"cpuSeconds", toSeconds(usage.ru_utime) + toSeconds(usage.ru_stime)},
                         // The kernel counts in KiB.
                         {"peakMemoryMiB", static_cast<double>(usage.ru_maxrss) / 1024},
                         {"stages", stages}};
  return QJsonDocument(root).toJson();
}

}  // namespace spectrino
