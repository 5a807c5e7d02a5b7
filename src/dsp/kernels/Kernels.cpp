#include "dsp/kernels/Kernels.h"

#include <array>
#include <cstddef>

namespace spectrino {

#ifdef SPECTRINO_X86_KERNELS
extern const Kernels kAvx2Kernels;
extern const Kernels kAvx512Kernels;
#endif

std::span<const Kernels* const> UsableKernels() {
#ifdef SPECTRINO_X86_KERNELS
  static constexpr std::array<const Kernels*, 3> kAll = {&kAvx512Kernels, &kAvx2Kernels, &kPortableKernels};
  std::size_t skip = 0;
  if (!__builtin_cpu_supports("avx512f") || !__builtin_cpu_supports("avx512vl") ||
      !__builtin_cpu_supports("avx512dq"))
    skip = 1;
  if (!__builtin_cpu_supports("avx2") || !__builtin_cpu_supports("fma")) skip = 2;
  return std::span(kAll).subspan(skip);
#else
  static constexpr std::array<const Kernels*, 1> kAll = {&kPortableKernels};
  return kAll;
#endif
}

const Kernels& BestKernels() {
  return *UsableKernels().front();
}

}  // namespace spectrino
