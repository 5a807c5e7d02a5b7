// The inner loops, compiled once per instruction set, and the choice among them.
// Internal to dsp: everyone else uses Spectrum, Levels, LevelHistory and ColumnMap.
//
// The kernels are raw loops over raw memory. Their translation units are built for newer processors than
// the program may run on, so they call no inline function of any header: the linker would be free to keep
// that copy for everybody.
#pragma once

#include <cstdint>
#include <span>

namespace spectrino {

/// Four complex numbers, one per lane; one cache line.
struct alignas(64) LaneElement {
  double Re[4];
  double Im[4];
};

/// Tables and scratch memory of one transform size; N = 4 * Rows * Columns. See TransformKernel.inl.
struct TransformTables {
  int Rows = 0;                              ///< length of the column transforms: 8..128
  int Columns = 0;                           ///< length of the row transforms: 8..128
  int Stride = 0;                            ///< elements from one row of Work to the next
  const double* Window = nullptr;            ///< Rows * Columns, one per stereo frame
  const LaneElement* RowLanes = nullptr;     ///< Rows: e^(j2pi r a / (4 Rows)) in lane r
  const LaneElement* ColumnLanes = nullptr;  ///< Columns: e^(j2pi r c / N) in lane r
  const double* ColumnTwiddles = nullptr;    ///< radix-4 passes of the length Rows
  const double* RowTwiddles = nullptr;       ///< radix-4 passes of the length Columns
  const double* CrossTwiddles = nullptr;     ///< Rows * Columns * (re, im): e^(j2pi c q / (Rows * Columns))
  LaneElement* Work = nullptr;               ///< Rows * Stride
  LaneElement* Scratch = nullptr;            ///< 5 * 128
};

/// How the two channels make the complex sample: Re = ReLeft * L + ReRight * R, Im likewise.
struct ChannelMatrix {
  double ReLeft, ReRight, ImLeft, ImRight;
};

struct Kernels {
  const char* Name;
  /// samples: Rows * Columns interleaved stereo frames. power: N, lowest frequency first.
  void (*Transform)(const TransformTables&, const ChannelMatrix&, const std::int16_t* samples, double* power);
  /// See PowerToLevels.
  void (*Levels)(const double* power, float offsetDb, float* levels, int count);
  /// RowKernels.inl has these.
  void (*StoreRow)(const float* levels, const float* previous, float keep, float* row, int count);
  void (*Maximum)(const float* a, const float* b, float* out, int count);
  void (*SlideMean)(const float* newest, const float* leaving, double share, double* sums, float* mean,
                    int count);
  void (*StrongestPerPixel)(const float* levels, const int* bounds, int usual, float none, float* pixels,
                            int count);
};

/// For every processor that the program itself runs on.
extern const Kernels kPortableKernels;

/// All kernels that this processor can run, the fastest first.
[[nodiscard]] std::span<const Kernels* const> UsableKernels();
[[nodiscard]] const Kernels& BestKernels();

}  // namespace spectrino
