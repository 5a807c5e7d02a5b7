// Loops over rows of levels for the history and the trace. Included by one file per instruction set, like
// TransformKernel.inl. Levels are never NaN; the flags say so, and the compiler takes the vector maximum.

namespace spectrino {
namespace {

/// row = levels, where a level of keep stands for the one in previous.
void StoreRow(const float* __restrict levels, const float* __restrict previous, float keep,
              float* __restrict row, int count) {
  int kept = 0;
  for (int i = 0; i < count; ++i) {
    kept |= levels[i] == keep ? 1 : 0;
    row[i] = levels[i];
  }
  // Reading the previous row as well would cost a quarter more, for points that are hardly ever there.
  if (kept == 0) return;
  for (int i = 0; i < count; ++i) row[i] = levels[i] == keep ? previous[i] : levels[i];
}

/// out = max(a, b); out may be a or b.
void Maximum(const float* a, const float* b, float* out, int count) {
#pragma GCC ivdep
  for (int i = 0; i < count; ++i) out[i] = a[i] > b[i] ? a[i] : b[i];
}

/// sums += newest - leaving, mean = sums * share.
void SlideMean(const float* __restrict newest, const float* __restrict leaving, double share,
               double* __restrict sums, float* __restrict mean, int count) {
  for (int i = 0; i < count; ++i) {
    sums[i] += static_cast<double>(newest[i]) - static_cast<double>(leaving[i]);
    mean[i] = static_cast<float>(sums[i] * share);
  }
}

/// pixels[c] = the largest of the levels bounds[c]..bounds[c + 1]-1 except none, which is no value; none when
/// there is no other. Nearly all of these runs are of length usual or usual + 1: a loop of constant length
/// and one level more, perhaps one seen already, spares the processor a guess at every pixel.
void StrongestPerPixel(const float* __restrict levels, const int* __restrict bounds, int usual, float none,
                       float* __restrict pixels, int count) {
  constexpr float kLowest = -3e38F;
  for (int c = 0; c < count; ++c) {
    const float* begin = levels + bounds[c];
    const int length = bounds[c + 1] - bounds[c];
    float strongest = kLowest;
    if (length == usual || length == usual + 1) {
      for (int i = 0; i < usual; ++i) strongest = begin[i] > strongest ? begin[i] : strongest;
      const float last = begin[length - 1];
      strongest = last > strongest ? last : strongest;
    } else {
      for (int i = 0; i < length; ++i) strongest = begin[i] > strongest ? begin[i] : strongest;
    }
    if (strongest == none) {  // hides weaker levels, if it has any
      strongest = kLowest;
      for (int i = 0; i < length; ++i) {
        if (begin[i] != none && begin[i] > strongest) strongest = begin[i];
      }
    }
    pixels[c] = strongest == kLowest ? none : strongest;
  }
}

}  // namespace
}  // namespace spectrino
