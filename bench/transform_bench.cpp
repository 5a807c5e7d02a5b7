// What a frame costs from block to colours, as shares of what FFTW takes for the transform of the same block.
// Everything runs interleaved in one process; medians are compared, so a busy machine disturbs both alike.
// With --once every stage runs twice, which measures nothing but shows that it works.
#include <benchmark/benchmark.h>
#include <fftw3.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "dsp/ColumnMap.h"
#include "dsp/LevelHistory.h"
#include "dsp/Levels.h"
#include "dsp/Spectrum.h"
#include "dsp/VisibleRange.h"
#include "dsp/WaterfallColourIndex.h"
#include "dsp/kernels/Kernels.h"

namespace spectrino {
namespace {

constexpr WindowType kWindow = WindowType::BlackmanHarris;
constexpr std::array<int, 3> kSizes = {10, 13, 16};
constexpr int kPixels = 1280;
constexpr int kDepth = LevelHistory::kMaxDepth;

std::vector<std::int16_t> Block(int bits) {
  std::mt19937 random(1);
  std::vector<std::int16_t> samples(std::size_t{1} << (bits - 1));
  for (auto& sample : samples) sample = static_cast<std::int16_t>(random() % 20000 - 10000);
  return samples;
}

/// One block to N complex points, three quarters of the input zero and never touched.
void FftwTransform(benchmark::State& state, int bits) {
  const std::size_t points = std::size_t{1} << bits;
  const auto samples = Block(bits);
  const auto window = BuildWindowTable(kWindow, static_cast<int>(points));
  fftw_complex* in = fftw_alloc_complex(points);
  fftw_complex* out = fftw_alloc_complex(points);
  // The planner is deterministic only within a process; one plan serves all repetitions.
  static std::map<int, fftw_plan> plans;
  if (!plans.contains(bits)) {
    plans[bits] = fftw_plan_dft_1d(static_cast<int>(points), in, out, FFTW_BACKWARD, FFTW_MEASURE);
  }
  std::fill_n(&in[0][0], 2 * points, 0.0);
  for (auto _ : state) {
    for (std::size_t i = 0; i < points / 4; ++i) {
      in[i][0] = samples[2 * i] * window[2 * i];
      in[i][1] = samples[2 * i + 1] * window[2 * i];
    }
    fftw_execute_dft(plans[bits], in, out);
    benchmark::ClobberMemory();
  }
  fftw_free(in);
  fftw_free(out);
}

struct Stages {
  Stages(int bits, const Kernels& kernels)
      : samples(Block(bits)),
        spectrum(kernels),
        power(2 * samples.size()),
        levels(power.size()),
        pixels(kPixels) {
    const int points = static_cast<int>(power.size());
    spectrum.Prepare(bits, kWindow);
    offsetDb = LevelOffsetDb(kWindow, bits);
    geometry = SoundCardGeometry(VisiblePoints(points, 48000, 0, 1, 0), points, 48000, 14.1, kPixels);
    history.Reset(points);
    Transform();
    Levels();
  }
  void Transform() { spectrum.ComputeSpectrum(samples, IqSign::Plus, {}, false, power); }
  void Levels() { PowerToLevels(power, offsetDb, levels); }
  void History(DisplayMode mode) { history.Push(levels, mode, kDepth, false); }
  void Colours() {
    columns.Map(geometry, 0, static_cast<int>(levels.size()), history.DisplayLevel(), pixels);
    for (int c = 0; c < kPixels; ++c) {
      colours[static_cast<std::size_t>(c)] =
          WaterfallColourIndex(pixels[static_cast<std::size_t>(c)], -153, -13);
    }
  }

  std::vector<std::int16_t> samples;
  Spectrum spectrum;
  std::vector<double> power;
  std::vector<float> levels, pixels;
  float offsetDb = 0;
  LevelHistory history;
  ColumnMap columns;
  FrameGeometry geometry;
  std::array<int, kPixels> colours{};
};

template <class Work>
void Register(const std::string& name, int bits, Work work, const Kernels& kernels = BestKernels()) {
  benchmark::RegisterBenchmark((name + " b=" + std::to_string(bits)).c_str(),
                               [=, &kernels](benchmark::State& state) {
                                 Stages stages(bits, kernels);
                                 for (auto _ : state) {
                                   work(stages);
                                   benchmark::ClobberMemory();
                                 }
                               });
}

void RegisterAll() {
  for (const int bits : kSizes) {
    benchmark::RegisterBenchmark(("fftw b=" + std::to_string(bits)).c_str(),
                                 [=](benchmark::State& state) { FftwTransform(state, bits); });
    Register("transform", bits, [](Stages& s) { s.Transform(); });
    for (const Kernels* kernels : UsableKernels().subspan(1)) {
      Register(
          std::string("transform-") + kernels->Name, bits, [](Stages& s) { s.Transform(); }, *kernels);
    }
    Register("levels", bits, [](Stages& s) { s.Levels(); });
    Register("history", bits, [](Stages& s) { s.History(DisplayMode::Max); });
    Register("history-avg", bits, [](Stages& s) { s.History(DisplayMode::Avg); });
    Register("chain", bits, [](Stages& s) {
      s.Transform();
      s.Levels();
      s.History(DisplayMode::Max);
      s.Colours();
    });
  }
}

/// Prints each stage's median as a share of FFTW's.
class RatioReporter : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Aggregate || run.aggregate_name != "median") continue;
      medians_[run.run_name.function_name] = run.GetAdjustedCPUTime();
      order_.push_back(run.run_name.function_name);
    }
  }
  void Finalize() override {
    // Interleaving brings them in any order; the sizes and stages read better together.
    std::ranges::sort(order_);
    for (const std::string& name : order_) {
      const std::string size = name.substr(name.find(" b="));
      const double fftw = medians_["fftw" + size];
      std::printf("time %s %.1f us\n", name.c_str(), medians_[name] / 1000);
      if (!name.starts_with("fftw") && fftw > 0)
        std::printf("ratio %s %.2f\n", name.c_str(), medians_[name] / fftw);
    }
  }

 private:
  std::map<std::string, double> medians_;
  std::vector<std::string> order_;
};

}  // namespace
}  // namespace spectrino

int main(int argc, char** argv) {
  std::vector<char*> arguments(argv, argv + argc);
  const bool once = argc > 1 && std::string_view(argv[1]) == "--once";
  std::vector<std::string> defaults = {once ? "--benchmark_repetitions=2" : "--benchmark_repetitions=11",
                                       once ? "--benchmark_min_time=0" : "--benchmark_min_time=0.02",
                                       "--benchmark_enable_random_interleaving=true",
                                       "--benchmark_report_aggregates_only=true"};
  // Ours first, so that the command line can overrule them.
  for (std::size_t i = 0; i < defaults.size(); ++i) {
    arguments.insert(arguments.begin() + 1 + static_cast<long>(i), defaults[i].data());
  }
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  spectrino::RegisterAll();
  spectrino::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  return 0;
}
