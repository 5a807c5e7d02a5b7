// How long each stage of a frame takes: the figures behind --stats.
// Fixed memory: the last 4096 values of each stage.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>

namespace spectrino {

enum class Stage { Capture, Transform, Levels, History, Draw, Latency, Count };

class StageTimes {
 public:
  using Duration = std::chrono::steady_clock::duration;

  void Add(Stage stage, Duration time);
  /// The share-th quantile of a stage in milliseconds, 0 when nothing was measured. share is 0..1.
  [[nodiscard]] double QuantileMs(Stage stage, double share) const;

  std::uint64_t Frames = 0;  ///< frames drawn into the display's buffers
  std::uint64_t Lines = 0;   ///< lines delivered by the source

 private:
  struct Samples {
    std::array<float, 4096> milliseconds{};
    std::size_t count = 0;
  };
  std::array<Samples, static_cast<std::size_t>(Stage::Count)> stages_{};
};

/// Measures from its construction to its end.
class StageTimer {
 public:
  StageTimer(StageTimes& times, Stage stage) : times_(times), stage_(stage) {}
  ~StageTimer() { times_.Add(stage_, std::chrono::steady_clock::now() - start_); }
  StageTimer(const StageTimer&) = delete;
  StageTimer& operator=(const StageTimer&) = delete;

 private:
  StageTimes& times_;
  Stage stage_;
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace spectrino
