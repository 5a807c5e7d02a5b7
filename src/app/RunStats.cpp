#include "app/RunStats.h"

#include <sys/resource.h>

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace spectrino {
namespace {

/// The most memory that this program has held, KiB. Not ru_maxrss: that begins with what the program that
/// started this one held.
double PeakKiB(const rusage& usage) {
  QFile status("/proc/self/status");
  if (status.open(QIODevice::ReadOnly)) {
    const QByteArray text = status.readAll();
    if (const qsizetype at = text.indexOf("VmHWM:"); at >= 0)
      return text.mid(at + 6, text.indexOf("kB", at) - at - 6).trimmed().toDouble();
  }
  return static_cast<double>(usage.ru_maxrss);
}

}  // namespace

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
                         {"peakMemoryMiB", PeakKiB(usage) / 1024},
                         {"stages", stages}};
  return QJsonDocument(root).toJson();
}

}  // namespace spectrino
