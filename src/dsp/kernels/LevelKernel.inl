// Power to decibels for a whole line. Included by one file per instruction set, like TransformKernel.inl.
//
// 10 log10(x) of x = 2^e * m, m in [sqrt 1/2, sqrt 2): e * 10 log10(2) + 10/ln 10 * ln m, with
// ln m = 2 (s + s^3/3 + s^5/5 + ...), s = (m - 1) / (m + 1), |s| < 0.172. The three terms leave 5e-6 dB;
// taking only the upper half of the double (20 bits of mantissa) leaves 4e-6 dB more.

namespace spectrino {
namespace {

void Levels(const double* __restrict power, float offsetDb, float* __restrict levels, int count) {
  constexpr std::int32_t kRootHalf = 0x3FE6A09E;    // upper half of sqrt(1/2) as a double
  constexpr std::int32_t kSmallest = 0x00100000;    // upper half of the smallest normal double
  constexpr std::int32_t kBiasChange = 0x38000000;  // exponent bias 1023 of a double less 127 of a float
  constexpr float kDbPerOctave = 3.01029995663981F;
  constexpr float kScale = 2 * 4.34294481903252F;
  for (int i = 0; i < count; ++i) {
    std::uint64_t bits;
    __builtin_memcpy(&bits, power + i, sizeof bits);
    const auto upper = static_cast<std::int32_t>(bits >> 32);
    const std::int32_t exponent = (upper - kRootHalf) >> 20;
    const std::int32_t mantissaBits = ((upper - exponent * 0x100000 - kBiasChange) * 8) | 4;
    float mantissa;
    __builtin_memcpy(&mantissa, &mantissaBits, sizeof mantissa);
    const float s = (mantissa - 1) / (mantissa + 1);
    const float square = s * s;
    const float series = s * (1 + square * (1.0F / 3 + square * (1.0F / 5)));
    const float level = static_cast<float>(exponent) * kDbPerOctave + (series * kScale + offsetDb);
    levels[i] = upper < kSmallest ? -1000.0F : level;
  }
}

}  // namespace
}  // namespace spectrino
