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

constexpr float kBelowAll = -3e38F;

/// The largest of the levels except none, which is no value; none when there is no other.
float Strongest(const float* levels, int count, float none) {
  float strongest = kBelowAll;
  for (int i = 0; i < count; ++i) {
    const float level = levels[i] == none ? kBelowAll : levels[i];
    strongest = level > strongest ? level : strongest;
  }
  return strongest == kBelowAll ? none : strongest;
}

constexpr int kPixelBlock = 32;
constexpr int kLongRun = 16;

/// For short runs, each of usual levels or one more (usual below kLongRun): a loop over one of them would be
/// over before it pays. Instead every level is replaced by the maximum of itself and those after it, reach of
/// them, where reach is the largest power of two that fits into usual; two of these, from the run's beginning
/// and up to its end, then cover it.
void StrongestOfBlock(const float* levels, const int* bounds, int usual, float none, float* pixels) {
  float maxima[kPixelBlock * kLongRun + kLongRun];
  const int first = bounds[0];
  const int count = bounds[kPixelBlock] - first;
  for (int i = 0; i < count; ++i) maxima[i] = levels[first + i] == none ? kBelowAll : levels[first + i];
  for (int i = count; i < count + kLongRun / 2; ++i) maxima[i] = kBelowAll;
  int reach = 1;
  for (; 2 * reach <= usual; reach *= 2) {
    for (int i = 0; i < count; ++i) {
      maxima[i] = maxima[i + reach] > maxima[i] ? maxima[i + reach] : maxima[i];
    }
  }
  for (int c = 0; c < kPixelBlock; ++c) {
    const float from = maxima[bounds[c] - first];
    const float upTo = maxima[bounds[c + 1] - reach - first];
    const float strongest = upTo > from ? upTo : from;
    pixels[c] = strongest == kBelowAll ? none : strongest;
  }
}

/// pixels[c] = the strongest of the levels bounds[c]..bounds[c + 1]-1; none where there is no level.
/// usual: most runs have this length or one more.
void StrongestPerPixel(const float* levels, const int* bounds, int usual, float none, float* pixels,
                       int count) {
  for (int c = 0; c < count;) {
    int irregular = usual >= kLongRun || c + kPixelBlock > count ? 1 : 0;
    for (int i = c; i < c + kPixelBlock && i < count; ++i) {
      const int length = bounds[i + 1] - bounds[i];
      irregular |= length < usual || length > usual + 1 ? 1 : 0;
    }
    if (irregular == 0) {
      StrongestOfBlock(levels, bounds + c, usual, none, pixels + c);
      c += kPixelBlock;
      continue;
    }
    for (int end = c + kPixelBlock; c < end && c < count; ++c) {
      pixels[c] = Strongest(levels + bounds[c], bounds[c + 1] - bounds[c], none);
    }
  }
}

}  // namespace
}  // namespace spectrino
