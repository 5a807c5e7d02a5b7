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

#if defined(__AVX__)
constexpr int kWidth = 4;
#else
// Wider vectors than the processor has are kept on the stack: take the four lanes two at a time.
constexpr int kWidth = 2;
#endif
typedef double Vec __attribute__((vector_size(8 * kWidth), may_alias));
typedef double UnalignedVec __attribute__((vector_size(8 * kWidth), may_alias, aligned(8)));

#define SPECTRINO_INLINE inline __attribute__((always_inline))

// Members of a struct of vectors would be copied in pieces through the stack, so real and imaginary parts
// travel as separate vectors everywhere.
SPECTRINO_INLINE const Vec& At(const double* lanes) {
  return *reinterpret_cast<const Vec*>(lanes);
}
SPECTRINO_INLINE Vec& At(double* lanes) {
  return *reinterpret_cast<Vec*>(lanes);
}

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
  const LaneElement* buffer;
  SPECTRINO_INLINE void operator()(int i, int lane, Vec& re, Vec& im) const {
    re = At(buffer[i].Re + lane);
    im = At(buffer[i].Im + lane);
  }
};
struct ToBuffer {
  LaneElement* buffer;
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
      for (int lane = 0; lane < 4; lane += kWidth) {
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
    for (int lane = 0; lane < 4; lane += kWidth) {
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
    for (int lane = 0; lane < 4; lane += kWidth) {
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
SPECTRINO_INLINE void Stockham(int length, const double* twiddles, LaneElement* first, LaneElement* second,
                               Load load, Store store) {
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

/// Column c of the work matrix: what StageColumns left for it, turned by e^(j2pi nr/N) in lane r,
/// transformed.
void TransformColumn(const TransformTables& tables, const LaneElement* staged, int column) {
  const LaneElement* columnLanes = tables.ColumnLanes + column;
  const int within = column % 4;
  const auto load = [ =, &tables ](int a, int lane, Vec& re, Vec& im) __attribute__((always_inline)) {
    re = staged[a].Re[within] - Vec{};
    im = staged[a].Im[within] - Vec{};
    Multiply(re, im, At(columnLanes->Re + lane), At(columnLanes->Im + lane));
    Multiply(re, im, At(tables.RowLanes[a].Re + lane), At(tables.RowLanes[a].Im + lane));
  };
  const auto store = [ =, &tables ](int k, int lane, Vec re, Vec im) __attribute__((always_inline)) {
    ToBuffer{tables.Work + column}(k * tables.Stride, lane, re, im);
  };
  Stockham(tables.Rows, tables.ColumnTwiddles, tables.Scratch + 128, tables.Scratch + 256, load, store);
}

/// Row k of the work matrix to the power of the points 4 (k + Rows * m) + r, 0 Hz moved to N/2.
void TransformRow(const TransformTables& tables, int k, double* power) {
  const LaneElement* row = tables.Work + static_cast<long>(k) * tables.Stride;
  const double* cross = tables.CrossTwiddles + 2L * k * tables.Columns;
  const int rows = tables.Rows;
  const int half = tables.Columns / 2;
  const auto load = [=](int c, int lane, Vec& re, Vec& im) __attribute__((always_inline)) {
    FromBuffer{row}(c, lane, re, im);
    Multiply(re, im, cross[2 * c], cross[2 * c + 1]);
  };
  const auto store = [=](int m, int lane, Vec re, Vec im) __attribute__((always_inline)) {
    *reinterpret_cast<UnalignedVec*>(power + 4L * (k + rows * (m ^ half)) + lane) = re * re + im * im;
  };
  Stockham(tables.Columns, tables.RowTwiddles, tables.Scratch, tables.Scratch + 128, load, store);
}

void Transform(const TransformTables& tables, const ChannelMatrix& matrix, const std::int16_t* samples,
               double* power) {
  for (int column = 0; column < tables.Columns; ++column) {
    if (column % 4 == 0) StageColumns(tables, matrix, samples, column, tables.Scratch);
    TransformColumn(tables, tables.Scratch, column);
  }
  for (int k = 0; k < tables.Rows; ++k) TransformRow(tables, k, power);
}

}  // namespace
}  // namespace spectrino
