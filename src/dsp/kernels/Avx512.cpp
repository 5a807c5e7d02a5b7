// The kernels for Avx512; see CMakeLists.txt for the flags.
#include "dsp/kernels/Kernels.h"
#include "dsp/kernels/LevelKernel.inl"
#include "dsp/kernels/RowKernels.inl"
#include "dsp/kernels/TransformKernel.inl"

namespace spectrino {

extern const Kernels kAvx512Kernels;
const Kernels kAvx512Kernels = {"Avx512", Transform, Levels, StoreRow, Maximum, SlideMean, StrongestPerPixel};

}  // namespace spectrino
