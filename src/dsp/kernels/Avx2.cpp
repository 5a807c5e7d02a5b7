// The kernels for Avx2; see CMakeLists.txt for the flags.
#include "dsp/kernels/Kernels.h"
#include "dsp/kernels/LevelKernel.inl"
#include "dsp/kernels/RowKernels.inl"
#include "dsp/kernels/TransformKernel.inl"

namespace spectrino {

extern const Kernels kAvx2Kernels;
const Kernels kAvx2Kernels = {"Avx2", Transform, Levels, StoreRow, Maximum, SlideMean, StrongestPerPixel};

}  // namespace spectrino
