// The kernels for Portable; see CMakeLists.txt for the flags.
#include "dsp/kernels/Kernels.h"
#include "dsp/kernels/LevelKernel.inl"
#include "dsp/kernels/RowKernels.inl"
#include "dsp/kernels/TransformKernel.inl"

namespace spectrino {

extern const Kernels kPortableKernels;
const Kernels kPortableKernels = {"Portable", Transform, Levels,           StoreRow,
                                  Maximum,    SlideMean, StrongestPerPixel};

}  // namespace spectrino
