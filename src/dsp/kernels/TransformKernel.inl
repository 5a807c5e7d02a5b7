// One block of stereo samples to the power of N points, N/4 samples padded with zeros to N.
// Included by one file per instruction set; nothing here may have a name outside that file.
//
// Because three quarters of the input are zero, the points X[4q + r], r = 0..3, are four transforms of
// N/4 points each, of the samples turned by e^(j2pi nr/N). Transform r lives in lane r of a vector of four
// doubles: every butterfly uses the same twiddle in all lanes, nothing is ever shuffled, and the result
// stands in natural order. The N/4 points are Rows x Columns, so that every pass works in the first-level
// cache: sample n = Columns * a + c, point q = k + Rows * m,
//
//   X[4q + r] = sum_c e^(j2pi cm/Columns) * cross[c, k] * sum_a e^(j2pi ak/Rows) * x[n] * e^(j2pi nr/N)
//               `-------- row k ---------'                `-- column c ---'
//
// Each of these is a Stockham transform, decimated in frequency: radix-4 passes, the last of radix 8 or 4,
// which needs no twiddles.

namespace spectrino {
namespace {

#if defined(__AVX512F__)
constexpr int kWidth = 8;  // two neighbouring columns or rows at a time
#elif defined(__AVX__)
constexpr int kWidth = 4;
#else
constexpr int kWidth = 2;  // half the lanes at a time: vectors wider than a register are kept on the stack
#endif
constexpr int kNeighbours = kWidth > 4 ? kWidth / 4 : 1;
constexpr int kLanes = 4 * kNeighbours;
typedef double Vec __attribute__((vector_size(8 * kWidth), may_alias));
typedef double UnalignedVec __attribute__((vector_size(8 * kWidth), may_alias, aligned(8)));

/// What the passes work on between the first load and the last store.
struct alignas(64) Element {
  double Re[kLanes];
  double Im[kLanes];
};

#define SPECTRINO_INLINE inline __attribute__((always_inline))

// Members of a struct of vectors would be copied in pieces through the stack, so real and imaginary parts
// travel as separate vectors everywhere.
SPECTRINO_INLINE const Vec& At(const double* lanes) {
  return *reinterpret_cast<const Vec*>(lanes);
}
SPECTRINO_INLINE Vec& At(double* lanes) {
  return *reinterpret_cast<Vec*>(lanes);
}

#if defined(__AVX512F__)
/// The elements first and first[distance], side by side.
SPECTRINO_INLINE void Load(const LaneElement* first, long distance, int, Vec& re, Vec& im) {
  const Vec a = At(first->Re);
  const Vec b = At(first[distance].Re);
  re = __builtin_shufflevector(a, b, 0, 1, 2, 3, 8, 9, 10, 11);
  im = __builtin_shufflevector(a, b, 4, 5, 6, 7, 12, 13, 14, 15);
}
SPECTRINO_INLINE void Store(LaneElement* first, long distance, int, Vec re, Vec im) {
  At(first->Re) = __builtin_shufflevector(re, im, 0, 1, 2, 3, 8, 9, 10, 11);
  At(first[distance].Re) = __builtin_shufflevector(re, im, 4, 5, 6, 7, 12, 13, 14, 15);
}
/// first[0] in all lanes of the first neighbour, first[distance] in those of the second.
SPECTRINO_INLINE Vec Spread(const double* first, long distance) {
  const double a = first[0];
  const double b = first[distance];
  return Vec{a, a, a, a, b, b, b, b};
}
#else
SPECTRINO_INLINE void Load(const LaneElement* first, long, int lane, Vec& re, Vec& im) {
  re = At(first->Re + lane);
  im = At(first->Im + lane);
}
SPECTRINO_INLINE void Store(LaneElement* first, long, int lane, Vec re, Vec im) {
  At(first->Re + lane) = re;
  At(first->Im + lane) = im;
}
SPECTRINO_INLINE Vec Spread(const double* first, long) {
  return *first - Vec{};
}
#endif

/// (re, im) *= (wr, wi); the factor is a vector or one number for all lanes.
template <class Factor>
SPECTRINO_INLINE void Multiply(Vec& re, Vec& im, Factor wr, Factor wi) {
  const Vec product = re * wr - im * wi;
  im = re * wi + im * wr;
  re = product;
}

/// sum = a + b, difference = a - b, in place.
SPECTRINO_INLINE void SumDifference(Vec& a, Vec& b) {
  const Vec difference = a - b;
  a = a + b;
  b = difference;
}

/// Four-point transform with positive exponent; the result is in the order 0, 2, 1, 3.
SPECTRINO_INLINE void Butterfly4(Vec& re0, Vec& im0, Vec& re1, Vec& im1, Vec& re2, Vec& im2, Vec& re3,
                                 Vec& im3) {
  SumDifference(re0, re2);
  SumDifference(im0, im2);
  SumDifference(re1, re3);
  SumDifference(im1, im3);
  SumDifference(re0, re1);
  SumDifference(im0, im1);
  // (re2, im2) +- j (re3, im3)
  const Vec re = re2 + im3;
  re2 = re2 - im3;
  im3 = im2 - re3;
  im2 = im2 + re3;
  re3 = re;
}

/// Where a pass reads or writes the elements of a buffer.
struct FromBuffer {
  const Element* buffer;
  SPECTRINO_INLINE void operator()(int i, int lane, Vec& re, Vec& im) const {
    re = At(buffer[i].Re + lane);
    im = At(buffer[i].Im + lane);
  }
};
struct ToBuffer {
  Element* buffer;
  SPECTRINO_INLINE void operator()(int i, int lane, Vec re, Vec im) const {
    At(buffer[i].Re + lane) = re;
    At(buffer[i].Im + lane) = im;
  }
};

/// One radix-4 pass over blocks of length points, stride of them interleaved.
template <class Load, class Store>
SPECTRINO_INLINE void Pass4(int length, int stride, const double* twiddles, Load load, Store store) {
  const int step = length / 4 * stride;
  for (int p = 0; p < length / 4; ++p) {
    const double* w = twiddles + 6 * p;
    for (int i = p * stride; i < (p + 1) * stride; ++i) {
      for (int lane = 0; lane < kLanes; lane += kWidth) {
        Vec re0, im0, re1, im1, re2, im2, re3, im3;
        load(i, lane, re0, im0);
        load(i + step, lane, re1, im1);
        load(i + 2 * step, lane, re2, im2);
        load(i + 3 * step, lane, re3, im3);
        Butterfly4(re0, im0, re1, im1, re2, im2, re3, im3);
        Multiply(re2, im2, w[0], w[1]);
        Multiply(re1, im1, w[2], w[3]);
        Multiply(re3, im3, w[4], w[5]);
        const int out = i + 3 * p * stride;
        store(out, lane, re0, im0);
        store(out + stride, lane, re2, im2);
        store(out + 2 * stride, lane, re1, im1);
        store(out + 3 * stride, lane, re3, im3);
      }
    }
  }
}

/// The last pass, when four times stride points are left.
template <class Load, class Store>
SPECTRINO_INLINE void Last4(int stride, Load load, Store store) {
  for (int i = 0; i < stride; ++i) {
    for (int lane = 0; lane < kLanes; lane += kWidth) {
      Vec re0, im0, re1, im1, re2, im2, re3, im3;
      load(i, lane, re0, im0);
      load(i + stride, lane, re1, im1);
      load(i + 2 * stride, lane, re2, im2);
      load(i + 3 * stride, lane, re3, im3);
      Butterfly4(re0, im0, re1, im1, re2, im2, re3, im3);
      store(i, lane, re0, im0);
      store(i + stride, lane, re2, im2);
      store(i + 2 * stride, lane, re1, im1);
      store(i + 3 * stride, lane, re3, im3);
    }
  }
}

/// The last pass, when eight times stride points are left.
template <class Load, class Store>
SPECTRINO_INLINE void Last8(int stride, Load load, Store store) {
  constexpr double kHalfRoot = 0.70710678118654752440;
  for (int i = 0; i < stride; ++i) {
    for (int lane = 0; lane < kLanes; lane += kWidth) {
      Vec re0, im0, re1, im1, re2, im2, re3, im3, re4, im4, re5, im5, re6, im6, re7, im7;
      load(i + stride, lane, re1, im1);
      load(i + 3 * stride, lane, re3, im3);
      load(i + 5 * stride, lane, re5, im5);
      load(i + 7 * stride, lane, re7, im7);
      Butterfly4(re1, im1, re3, im3, re5, im5, re7, im7);
      // The odd half is now at 1 (order 0), 5 (1), 3 (2), 7 (3): turn it by 0, 45, 90 and 135 degrees.
      const Vec turned5 = (re5 - im5) * kHalfRoot;
      im5 = (re5 + im5) * kHalfRoot;
      re5 = turned5;
      const Vec turned7 = (re7 + im7) * -kHalfRoot;
      im7 = (re7 - im7) * kHalfRoot;
      re7 = turned7;
      load(i, lane, re0, im0);
      load(i + 2 * stride, lane, re2, im2);
      load(i + 4 * stride, lane, re4, im4);
      load(i + 6 * stride, lane, re6, im6);
      Butterfly4(re0, im0, re2, im2, re4, im4, re6, im6);
      store(i, lane, re0 + re1, im0 + im1);
      store(i + 4 * stride, lane, re0 - re1, im0 - im1);
      store(i + stride, lane, re4 + re5, im4 + im5);
      store(i + 5 * stride, lane, re4 - re5, im4 - im5);
      store(i + 2 * stride, lane, re2 - im3, im2 + re3);
      store(i + 6 * stride, lane, re2 + im3, im2 - re3);
      store(i + 3 * stride, lane, re6 + re7, im6 + im7);
      store(i + 7 * stride, lane, re6 - re7, im6 - im7);
    }
  }
}

/// A whole transform of 8..128 points; first and second each hold that many elements.
template <class Load, class Store>
SPECTRINO_INLINE void Stockham(int length, const double* twiddles, Element* first, Element* second, Load load,
                               Store store) {
  if (length == 8) return Last8(1, load, store);
  Pass4(length, 1, twiddles, load, ToBuffer{first});
  if (length == 16) return Last4(4, FromBuffer{first}, store);
  if (length == 32) return Last8(4, FromBuffer{first}, store);
  Pass4(length / 4, 4, twiddles + length / 4 * 6, FromBuffer{first}, ToBuffer{second});
  if (length == 64) return Last4(16, FromBuffer{second}, store);
  Last8(16, FromBuffer{second}, store);
}

/// Four neighbouring columns of windowed complex samples: Re[i], Im[i] of staged[a] belong to column i.
void StageColumns(const TransformTables& tables, const ChannelMatrix& matrix, const std::int16_t* samples,
                  int column, LaneElement* staged) {
  for (int a = 0; a < tables.Rows; ++a) {
    const int frame = a * tables.Columns + column;
    for (int i = 0; i < 4; ++i) {
      const double left = samples[2 * (frame + i)];
      const double right = samples[2 * (frame + i) + 1];
      const double window = tables.Window[frame + i];
      staged[a].Re[i] = (left * matrix.ReLeft + right * matrix.ReRight) * window;
      staged[a].Im[i] = (left * matrix.ImLeft + right * matrix.ImRight) * window;
    }
  }
}

/// Columns of the work matrix, kNeighbours from column on: what StageColumns left for them, turned by
/// e^(j2pi nr/N) in lane r, transformed.
void TransformColumns(const TransformTables& tables, int column) {
  const LaneElement* staged = tables.Scratch;
  Element* first = reinterpret_cast<Element*>(tables.Scratch + 128);
  const int within = column % 4;
  const auto load = [ =, &tables ](int a, int lane, Vec& re, Vec& im) __attribute__((always_inline)) {
    Vec turnRe, turnIm;
    re = Spread(staged[a].Re + within, 1);
    im = Spread(staged[a].Im + within, 1);
    Load(tables.ColumnLanes + column, 1, lane, turnRe, turnIm);
    Multiply(re, im, turnRe, turnIm);
    Load(tables.RowLanes + a, 0, lane, turnRe, turnIm);
    Multiply(re, im, turnRe, turnIm);
  };
  LaneElement* work = tables.Work + column;
  const long stride = tables.Stride;
  const auto store = [=](int k, int lane, Vec re, Vec im) __attribute__((always_inline)) {
    Store(work + k * stride, 1, lane, re, im);
  };
  Stockham(tables.Rows, tables.ColumnTwiddles, first, first + 128, load, store);
}

/// Rows of the work matrix, kNeighbours from k on, to the power of the points 4 (k + Rows * m) + r, 0 Hz
/// moved to N/2.
void TransformRows(const TransformTables& tables, int k, double* power) {
  Element* first = reinterpret_cast<Element*>(tables.Scratch + 128);
  const LaneElement* row = tables.Work + static_cast<long>(k) * tables.Stride;
  const double* cross = tables.CrossTwiddles + 2L * k * tables.Columns;
  const long stride = tables.Stride;
  const long crossStride = 2L * tables.Columns;
  const long rows = tables.Rows;
  const int half = tables.Columns / 2;
  const auto load = [=](int c, int lane, Vec& re, Vec& im) __attribute__((always_inline)) {
    Load(row + c, stride, lane, re, im);
    Multiply(re, im, Spread(cross + 2 * c, crossStride), Spread(cross + 2 * c + 1, crossStride));
  };
  const auto store = [=](int m, int lane, Vec re, Vec im) __attribute__((always_inline)) {
    *reinterpret_cast<UnalignedVec*>(power + 4 * (k + rows * (m ^ half)) + lane) = re * re + im * im;
  };
  Stockham(tables.Columns, tables.RowTwiddles, first, first + 128, load, store);
}

void Transform(const TransformTables& tables, const ChannelMatrix& matrix, const std::int16_t* samples,
               double* power) {
  for (int column = 0; column < tables.Columns; column += kNeighbours) {
    if (column % 4 == 0) StageColumns(tables, matrix, samples, column, tables.Scratch);
    TransformColumns(tables, column);
  }
  for (int k = 0; k < tables.Rows; k += kNeighbours) TransformRows(tables, k, power);
}

}  // namespace
}  // namespace spectrino
