// Power to decibels for a whole line. Included by one file per instruction set, like TransformKernel.inl.
//
// 10 log10(2^e * m) = e * 10 log10(2) + 10 log10(m), m in [1, 2), the second term by the polynomial of degree
// 5 with the smallest largest error (Remez), 3.8e-5 dB. Only the upper half of each double is looked at: 20
// bits of mantissa are good to 2.1e-6 dB.

namespace spectrino {
namespace {

#if defined(__AVX512F__)
constexpr int kLevelWidth = 16;
#elif defined(__AVX2__)
constexpr int kLevelWidth = 8;
#else
constexpr int kLevelWidth = 4;
#endif
typedef float FloatVec __attribute__((vector_size(4 * kLevelWidth), may_alias, aligned(4)));
typedef std::int32_t IntVec __attribute__((vector_size(4 * kLevelWidth), may_alias, aligned(4)));

/// The upper halves of kLevelWidth doubles.
inline __attribute__((always_inline)) IntVec UpperHalves(const double* power) {
  const IntVec low = *reinterpret_cast<const IntVec*>(power);
  const IntVec high = *reinterpret_cast<const IntVec*>(power + kLevelWidth / 2);
#if defined(__AVX512F__)
  return __builtin_shufflevector(low, high, 1, 3, 5, 7, 9, 11, 13, 15, 17, 19, 21, 23, 25, 27, 29, 31);
#elif defined(__AVX2__)
  // Within the halves of the registers first, which is one instruction, then their quarters into order.
  const IntVec mixed = __builtin_shufflevector(low, high, 1, 3, 9, 11, 5, 7, 13, 15);
  return __builtin_shufflevector(mixed, mixed, 0, 1, 4, 5, 2, 3, 6, 7);
#else
  return __builtin_shufflevector(low, high, 1, 3, 5, 7);
#endif
}

inline __attribute__((always_inline)) FloatVec LevelsOf(const double* power, float offsetDb) {
  constexpr std::int32_t kOne = 0x3FF00000;       // upper half of 1.0
  constexpr std::int32_t kSmallest = 0x00100000;  // upper half of the smallest normal double
  // A float of 1.0, and half of the part of the mantissa that was not looked at.
  constexpr std::int32_t kFloatOne = 0x3F800004;
  const IntVec upper = UpperHalves(power);
  const FloatVec exponent = __builtin_convertvector((upper - kOne) >> 20, FloatVec);
  const FloatVec m = reinterpret_cast<FloatVec>(((upper & 0xFFFFF) << 3) | kFloatOne);
  FloatVec level = m * 0.135083027F - 1.25398165F;
  level = level * m + 4.91024706F;
  level = level * m - 10.6889518F;
  level = level * m + 15.3275768F;
  level = level * m + (offsetDb - 8.42993574F);
  level = exponent * 3.01029996F + level;
  const FloatVec keep = FloatVec{} - 1000.0F;
  return upper < kSmallest ? keep : level;
}

void Levels(const double* power, float offsetDb, float* levels, int count) {
  int i = 0;
  for (; i + kLevelWidth <= count; i += kLevelWidth) {
    *reinterpret_cast<FloatVec*>(levels + i) = LevelsOf(power + i, offsetDb);
  }
  if (i == count) return;
  double rest[kLevelWidth] = {};
  for (int k = 0; k < count - i; ++k) rest[k] = power[i + k];
  const FloatVec last = LevelsOf(rest, offsetDb);
  for (int k = 0; k < count - i; ++k) levels[i + k] = last[k];
}

}  // namespace
}  // namespace spectrino
