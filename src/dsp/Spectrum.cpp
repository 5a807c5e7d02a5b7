#include "dsp/Spectrum.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <vector>

#include "dsp/PowerOfTwo.h"
#include "dsp/kernels/Kernels.h"

namespace spectrino {
namespace {

/// Points on each side of 0 Hz that smoothing replaces, for N = 2^8 ... 2^16.
constexpr std::array<int, 9> kSmoothedHalfWidth = {0, 10, 12, 13, 15, 15, 20, 40, 70};

struct Complex {
  double re, im;
};

/// e^(j 2 pi numerator / denominator)
Complex Turn(long numerator, long denominator) {
  const double angle =
      2 * std::numbers::pi * static_cast<double>(numerator) / static_cast<double>(denominator);
  return {std::cos(angle), std::sin(angle)};
}

/// e^(j 2 pi r i / denominator) in lane r, for i = 0..count-1.
std::vector<LaneElement> LaneTable(int count, long denominator) {
  std::vector<LaneElement> table(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    for (int r = 0; r < 4; ++r) {
      const Complex turn = Turn(static_cast<long>(r) * i, denominator);
      table[static_cast<std::size_t>(i)].Re[r] = turn.re;
      table[static_cast<std::size_t>(i)].Im[r] = turn.im;
    }
  }
  return table;
}

/// The radix-4 passes of a transform of length points, one after the other: for every p the first, second and
/// third power of e^(j 2 pi p / length of the pass).
std::vector<double> PassTwiddles(int length) {
  std::vector<double> table;
  for (; length >= 16; length /= 4) {
    for (int p = 0; p < length / 4; ++p) {
      for (int power = 1; power <= 3; ++power) {
        const Complex turn = Turn(static_cast<long>(power) * p, length);
        table.insert(table.end(), {turn.re, turn.im});
      }
    }
  }
  return table;
}

std::vector<double> CrossTable(int rows, int columns) {
  std::vector<double> table;
  table.reserve(2 * static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns));
  for (int k = 0; k < rows; ++k) {
    for (int c = 0; c < columns; ++c) {
      const Complex turn = Turn(static_cast<long>(k) * c, static_cast<long>(rows) * columns);
      table.insert(table.end(), {turn.re, turn.im});
    }
  }
  return table;
}

ChannelMatrix MatrixOf(IqSign sign, const IqBalance& balance) {
  const double gain = 1 + balance.IqGainCorrection;
  const double leak = balance.IqPhaseCorrection * gain;
  if (sign == IqSign::Plus) return {.ReLeft = 1, .ReRight = 0, .ImLeft = leak, .ImRight = gain};
  return {.ReLeft = leak, .ReRight = gain, .ImLeft = 1, .ImRight = 0};
}

void SmoothZeroHz(std::span<double> power) {
  // Four sums: one alone would wait for each addition.
  std::array<double, 4> sums{};
  for (std::size_t i = 0; i < power.size(); i += 4) {
    for (std::size_t k = 0; k < 4; ++k) sums[k] += std::sqrt(power[i + k]);
  }
  const double mean = (sums[0] + sums[1] + sums[2] + sums[3]) / static_cast<double>(power.size());
  const int points = static_cast<int>(power.size());
  const int half = kSmoothedHalfWidth[static_cast<std::size_t>(NumberOfBitsNeeded(points) - 8)];
  std::fill_n(power.begin() + (points / 2 - half), 2 * half + 1, mean * mean);
}

}  // namespace

struct Spectrum::Plan {
  Plan(int fftBits, WindowType type) {
    const int points = 1 << fftBits;
    // A row or column of up to 128 elements and its passes fit the first-level cache.
    const int rows = 1 << (fftBits - 1) / 2;
    const int columns = points / 4 / rows;
    const std::vector<double> table = BuildWindowTable(type, points);
    for (int frame = 0; frame < points / 4; ++frame) {
      window.push_back(table[2 * static_cast<std::size_t>(frame)]);
    }
    rowLanes = LaneTable(rows, 4L * rows);
    columnLanes = LaneTable(columns, points);
    columnTwiddles = PassTwiddles(rows);
    rowTwiddles = PassTwiddles(columns);
    crossTwiddles = CrossTable(rows, columns);
    // One element more than a row, or a column would fall into a few sets of the cache only.
    const int stride = columns + 1;
    work.resize(static_cast<std::size_t>(rows) * static_cast<std::size_t>(stride));
    scratch.resize(5 * 128);
    tables = {.Rows = rows,
              .Columns = columns,
              .Stride = stride,
              .Window = window.data(),
              .RowLanes = rowLanes.data(),
              .ColumnLanes = columnLanes.data(),
              .ColumnTwiddles = columnTwiddles.data(),
              .RowTwiddles = rowTwiddles.data(),
              .CrossTwiddles = crossTwiddles.data(),
              .Work = work.data(),
              .Scratch = scratch.data()};
  }

  std::vector<double> window, columnTwiddles, rowTwiddles, crossTwiddles;
  std::vector<LaneElement> rowLanes, columnLanes, work, scratch;
  TransformTables tables;
};

Spectrum::Spectrum() : Spectrum(BestKernels()) {}
Spectrum::Spectrum(const Kernels& kernels) : kernels_(&kernels) {}
Spectrum::~Spectrum() = default;
Spectrum::Spectrum(Spectrum&&) noexcept = default;
Spectrum& Spectrum::operator=(Spectrum&&) noexcept = default;

void Spectrum::Prepare(int fftBits, WindowType window) {
  assert(fftBits >= 8 && fftBits <= 16);
  plan_ = std::make_unique<Plan>(fftBits, window);
}

int Spectrum::SpectrumPoints() const {
  return plan_ ? 4 * plan_->tables.Rows * plan_->tables.Columns : 0;
}

void Spectrum::ComputeSpectrum(std::span<const std::int16_t> samples, IqSign sign, const IqBalance& balance,
                               bool smoothZeroHz, std::span<double> power) {
  assert(plan_);
  assert(samples.size() == static_cast<std::size_t>(SpectrumPoints()) / 2);
  assert(power.size() == static_cast<std::size_t>(SpectrumPoints()));
  kernels_->Transform(plan_->tables, MatrixOf(sign, balance), samples.data(), power.data());
  if (smoothZeroHz) SmoothZeroHz(power);
}

}  // namespace spectrino
