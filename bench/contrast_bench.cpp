// How far tones stand out of the noise in the waterfall, as relative luminance: for each kind of line and
// each tone "ratio contrast <line> <before|after> <dB> <luminance of the tone minus that of the noise>".
// Before: reference and range as they are by default, hues; after: levels by themselves, the most legible
// palette. Lines are made here and go the program's own way: transform, levels, scale, waterfall.
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <random>
#include <vector>

#include "display/Palettes.h"
#include "display/PanDisplay.h"
#include "dsp/Levels.h"
#include "dsp/Spectrum.h"
#include "run/FrameMaker.h"

namespace spectrino {
namespace {

constexpr std::array<int, 6> kTonesDb{3, 6, 10, 15, 20, 30};
constexpr int kRows = 60;
constexpr double kCentreMHz = 14.074;

enum class Kind { SoundCard, K4, Icom };

/// A radio that is only asked for its scale.
class ScaleOnly final : public RadioLink {
 public:
  explicit ScaleOnly(const LevelScale& scale) : scale_(scale) {}
  bool Open() override { return true; }
  void Close() override {}
  SpectrumSource& Source() override { std::abort(); }
  [[nodiscard]] LevelScale Scale() const override { return scale_; }
  [[nodiscard]] std::array<double, 21> GridHz() const override { return {}; }

 private:
  LevelScale scale_;
};

/// Where a tone stands, as a share of the line.
double PlaceOf(std::size_t tone) {
  return 0.2 + 0.1 * static_cast<double>(tone);
}

/// Lines of a card: noise and tones through the transform, 8192 points with the window.
class CardLines {
 public:
  CardLines(WindowType window, const std::array<double, kTonesDb.size()>& amplitudes)
      : amplitudes_(amplitudes), offsetDb_(LevelOffsetDb(window, kBits)), power_(1 << kBits) {
    spectrum_.Prepare(kBits, window);
  }
  void Fill(std::vector<float>& levels) {
    std::normal_distribution<double> noise(0, 20);
    const int frames = (1 << kBits) / 4;
    std::vector<std::int16_t> block(static_cast<std::size_t>(2 * frames));
    for (int i = 0; i < frames; ++i, ++frame_) {
      double re = noise(random_);
      double im = noise(random_);
      for (std::size_t tone = 0; tone < kTonesDb.size(); ++tone) {
        const double phase = 2 * std::numbers::pi * (PlaceOf(tone) - 0.5) * static_cast<double>(frame_);
        re += amplitudes_[tone] * std::cos(phase);
        im -= amplitudes_[tone] * std::sin(phase);
      }
      block[static_cast<std::size_t>(2 * i)] = static_cast<std::int16_t>(std::lround(re));
      block[static_cast<std::size_t>(2 * i + 1)] = static_cast<std::int16_t>(std::lround(im));
    }
    spectrum_.ComputeSpectrum(block, IqSign::Plus, {}, false, power_);
    levels.resize(power_.size());
    PowerToLevels(power_, offsetDb_, levels);
  }

 private:
  static constexpr int kBits = 13;
  std::array<double, kTonesDb.size()> amplitudes_;
  float offsetDb_;
  Spectrum spectrum_;
  std::vector<double> power_;
  std::mt19937 random_{1};
  long frame_ = 0;
};

/// Of a radio: noise of a smoothed detector at -130 dBm; the Icom's as whole heights, two to the decibel.
void FillRadio(Kind kind, std::mt19937& random, std::vector<float>& levels) {
  std::gamma_distribution<float> power(4, 0.25F);
  const auto count = static_cast<double>(levels.size() - 1);
  for (float& level : levels) level = -130 + 10 * std::log10(power(random) + 1e-4F);
  for (std::size_t tone = 0; tone < kTonesDb.size(); ++tone) {
    const auto at = static_cast<std::size_t>(std::lround(PlaceOf(tone) * count));
    for (std::size_t i = at - 1; i <= at + 1; ++i) levels[i] = -130 + static_cast<float>(kTonesDb[tone]);
  }
  if (kind == Kind::Icom)
    for (float& level : levels) level = std::clamp(std::round(2 * (level + 160)), 0.0F, 160.0F);
  levels[0] = kKeepLevel;
}

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::ranges::nth_element(values, middle);
  return *middle;
}

/// The waterfall of kRows lines.
class Bench {
 public:
  Bench(Kind kind, bool after) : kind_(kind), link_(ScaleOf(kind)) {
    session_.Settings.AutoLevel = after;
    session_.Settings.HistoryDepth = 0;
    display_.SetOptions(
        {.WaterfallSel = 3, .Waterfall = {.Palette = after ? palette::kInferno : palette::kHues}});
    display_.Resize({1280, 720}, 1);
    view_.Running = true;
    view_.Plan = {.SampleRate = 48000, .FftBits = 13, .DisplayZoom = 1};
    if (kind != Kind::SoundCard) view_.Link = &link_;
  }
  void Show(std::vector<float> levels) {
    SpectrumLine& line = view_.Line;
    line.FirstIndex = kind_ == Kind::SoundCard ? 0 : 1;
    line.PointCount = static_cast<int>(levels.size()) - line.FirstIndex;
    line.Levels = std::move(levels);
    line.LeftMHz = kCentreMHz - 0.024;
    line.CentreMHz = kCentreMHz;
    line.RightMHz = kCentreMHz + 0.024;
    line.BottomLevel = link_.Scale().BottomLevel;
    line.TopLevel = link_.Scale().TopLevel;
    ++line.Serial;
    now_ += std::chrono::milliseconds(43);
    frames_.Show(now_);
  }
  /// Level of a column's noise, in the middle of all.
  [[nodiscard]] double NoiseLevel() const {
    std::vector<double> levels;
    for (int x = 900; x < display_.Layout().PlotWidth - 80; ++x)
      levels.push_back(display_.Waterfall().LevelAt(x, 0));
    return Median(std::move(levels));
  }
  /// Of the columns from first to last, all lines.
  [[nodiscard]] double LuminanceOf(int first, int last, bool brightest) const {
    std::vector<double> rows;
    for (int y = 0; y < kRows; ++y) {
      std::vector<double> row;
      for (int x = first; x <= last; ++x)
        row.push_back(Luminance(picture_.pixel(x, display_.Layout().WaterfallTop + y)));
      rows.push_back(brightest ? std::ranges::max(row) : Median(std::move(row)));
    }
    return Median(std::move(rows));
  }
  void Print(const char* name, const char* when) {
    picture_ = QImage(1280, 720, QImage::Format_RGB32);
    {
      QPainter painter(&picture_);
      display_.Paint(painter);
    }
    const int width = display_.Layout().PlotWidth;
    const double noise = LuminanceOf(900, width - 80, false);
    std::printf("ratio contrast %s %s noise %.3f\n", name, when, noise);
    for (std::size_t tone = 0; tone < kTonesDb.size(); ++tone) {
      const int x = static_cast<int>(PlaceOf(tone) * width);
      std::printf("ratio contrast %s %s %d %.3f\n", name, when, kTonesDb[tone],
                  LuminanceOf(x - 1, x + 1, true) - noise);
    }
  }

 private:
  static LevelScale ScaleOf(Kind kind) {
    return kind == Kind::Icom ? LevelScale{0, 160, 160, 20, false} : LevelScale{-136, -36, 100, 20, true};
  }

  Kind kind_;
  ScaleOnly link_;
  Session session_;
  PanDisplay display_;
  RunView view_;
  StageTimes times_;
  PlotScale scale_{session_, display_, view_, [] { return 0.0; }};
  FrameMaker frames_{session_, display_, times_, view_, scale_};
  std::chrono::steady_clock::time_point now_{std::chrono::hours(1)};
  QImage picture_;
};

void CompareCard(bool after) {
  const WindowType window = after ? WindowType::BlackmanHarris : WindowType::None;
  // Noise alone says how strong a tone of 0 dB is; one of a known strength how strong that shows.
  std::array<double, kTonesDb.size()> amplitudes{};
  std::vector<float> levels;
  Bench silent(Kind::SoundCard, after);
  CardLines(window, amplitudes).Fill(levels);
  silent.Show(levels);
  constexpr double kLoud = 3000;
  amplitudes[0] = kLoud;
  CardLines(window, amplitudes).Fill(levels);
  const double perUnitDb = *std::ranges::max_element(levels) - 20 * std::log10(kLoud);
  for (std::size_t tone = 0; tone < kTonesDb.size(); ++tone)
    amplitudes[tone] = std::pow(10, (silent.NoiseLevel() + kTonesDb[tone] - perUnitDb) / 20);
  Bench bench(Kind::SoundCard, after);
  CardLines lines(window, amplitudes);
  for (int row = 0; row < kRows; ++row) {
    lines.Fill(levels);
    bench.Show(levels);
  }
  bench.Print("card", after ? "after" : "before");
}

void CompareRadio(Kind kind, const char* name, bool after) {
  Bench bench(kind, after);
  std::mt19937 random(2);
  std::vector<float> levels(kind == Kind::Icom ? 476 : 1025);
  for (int row = 0; row < kRows; ++row) {
    FillRadio(kind, random, levels);
    bench.Show(levels);
  }
  bench.Print(name, after ? "after" : "before");
}

}  // namespace
}  // namespace spectrino

int main(int argc, char** argv) {
  using namespace spectrino;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  for (const bool after : {false, true}) {
    CompareCard(after);
    CompareRadio(Kind::K4, "k4", after);
    CompareRadio(Kind::Icom, "icom", after);
  }
  return 0;
}
