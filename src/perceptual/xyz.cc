// RGB <-> CIE XYZ with the D65 matrices of cie.h. Values are not normalised
// by the white: XYZ shares the RGB scale. 8u works in 16.16 fixed point;
// 16u, 16s and 32f apply the single-precision matrices to the element values
// directly.
//
// 16u and 16s (our choice, identical in vector body and per-pixel tail): each
// result is rounded to nearest, ties to even, and saturated to the element's
// range. 16s values are used as they are, with no +32768 offset: the map is
// linear with black at 0, and signed values keep it so (-v gives -M v, 0
// stays 0), where an offset would turn it into an affine map of the codes.
// The entries hold round-to-nearest for the call, so the caller's rounding
// mode changes nothing; 32f stores no integers and needs no guard.
//
// Every entry turns its byte steps into whole elements with an arithmetic
// shift (>> 1 for 16-bit, >> 2 for float elements) and walks rows by that
// many elements: the low bits of an odd byte step are dropped, by definition.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "src/perceptual/xyz.cc"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "src/core/dispatch.h"
#include "src/core/frame.h"
#include "src/core/layout.h"
#include "src/core/map3-inl.h"
#include "src/core/rounding.h"
#include "src/core/saturate.h"
#include "src/perceptual/cie.h"

#ifndef ZYL_PERCEPTUAL_XYZ_ONCE_
#define ZYL_PERCEPTUAL_XYZ_ONCE_
namespace zyl {

// 8u weights: the float matrices times 65536, truncated toward zero (not
// rounded); rows X, Y, Z and R, G, B as in cie.h.
constexpr int32_t kXyzFixed[3][3] = {
    {27030, 23434, 11824}, {13937, 46868, 4729}, {1267, 7811, 62274}};
constexpr int32_t kRgbFixed[3][3] = {
    {212368, -100738, -32671}, {-63521, 122944, 2723}, {3646, -13372, 69291}};

constexpr bool IsTruncatedMatrix(const int32_t (&fixed)[3][3], const float (&m)[3][3]) {
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) {
      if (fixed[i][j] != static_cast<int32_t>(m[i][j] * 65536.0f)) return false;
    }
  }
  return true;
}
static_assert(IsTruncatedMatrix(kXyzFixed, cie::kRgbToXyz), "forward weights");
static_assert(IsTruncatedMatrix(kRgbFixed, cie::kXyzToRgb), "inverse weights");

}  // namespace zyl
#endif  // ZYL_PERCEPTUAL_XYZ_ONCE_

HWY_BEFORE_NAMESPACE();
namespace zyl {
namespace HWY_NAMESPACE {

// ------------------------------------------------------------------- 8u --

// No rounding term before either shift: the truncation (a floor, for the
// signed sums of the inverse) is part of the defined output.
template <const int32_t (&kM)[3][3]>
HWY_INLINE int32_t FixedRow(const uint8_t in[4], int i) {
  return (kM[i][0] * in[0] + kM[i][1] * in[1] + kM[i][2] * in[2]) >> 16;
}

#if ZYL_SIMD
// Each 16.16 row is one exact FixedDot16 (results stay within -520..826);
// narrowing back to bytes saturates, which is the clamp of each direction.
template <const int32_t (&kM)[3][3]>
struct FixedVec {
  template <class D8, class V8>
  HWY_INLINE void Vec(D8 d8, V8 a, V8 b, V8 c, V8& x, V8& y, V8& z) const {
    Map8ViaI16(d8, *this, a, b, c, x, y, z);
  }
  template <class D, class V>
  HWY_INLINE void Vec16(D d, V a, V b, V c, V& x, V& y, V& z) const {
    x = FixedDot16<0, kM[0][0], kM[0][1], kM[0][2]>(d, a, b, c);
    y = FixedDot16<0, kM[1][0], kM[1][1], kM[1][2]>(d, a, b, c);
    z = FixedDot16<0, kM[2][0], kM[2][1], kM[2][2]>(d, a, b, c);
  }
};
#else
template <const int32_t (&kM)[3][3]>
struct FixedVec {};
#endif

// X and Y stay below 256 (weight sums 62288 and 65534); only Z, whose
// weights sum to 71352, needs its clamp.
struct RgbToXyz8 : FixedVec<kXyzFixed> {
  void Pixel(const uint8_t in[4], uint8_t out[4]) const {
    const int32_t z = FixedRow<kXyzFixed>(in, 2);
    out[0] = static_cast<uint8_t>(FixedRow<kXyzFixed>(in, 0));
    out[1] = static_cast<uint8_t>(FixedRow<kXyzFixed>(in, 1));
    out[2] = static_cast<uint8_t>(z < 255 ? z : 255);
  }
};

struct XyzToRgb8 : FixedVec<kRgbFixed> {
  void Pixel(const uint8_t in[4], uint8_t out[4]) const {
    for (int i = 0; i < 3; ++i) out[i] = Clamp8(FixedRow<kRgbFixed>(in, i));
  }
};

template <class L, bool kToXyz>
HWY_NOINLINE void XyzRow8(const uint8_t* const* src, uint8_t* const* dst, ptrdiff_t width) {
  using Op = std::conditional_t<kToXyz, RgbToXyz8, XyzToRgb8>;
  Map3Row8<L, L, Op>(src, dst, width, uint8_t{0});
}

// -------------------------------------------------- 16u, 16s and 32f --

// One matrix row in single precision, summed left to right from separately
// rounded products; written once for floats and for vectors of floats.
template <class V, class K>
HWY_INLINE V Dot(const K& k, const float (&row)[3], V a, V b, V c) {
  return k(row[0]) * a + k(row[1]) * b + k(row[2]) * c;
}

template <bool kToXyz, class V, class K>
HWY_INLINE void Matrix(const K& k, V a, V b, V c, V& x, V& y, V& z) {
  const auto& m = kToXyz ? cie::kRgbToXyz : cie::kXyzToRgb;
  x = Dot(k, m[0], a, b, c);
  y = Dot(k, m[1], a, b, c);
  z = Dot(k, m[2], a, b, c);
}

// 32f: the forward direction clamps Z alone, the inverse every channel.
template <bool kToXyz, class V, class K>
HWY_INLINE void Clamp32f(const K& k, V& x, V& y, V& z) {
  if constexpr (!kToXyz) {
    x = k.Clamp(x, 0.0f, 1.0f);
    y = k.Clamp(y, 0.0f, 1.0f);
  }
  z = k.Clamp(z, 0.0f, 1.0f);
}

// A NaN fails both comparisons and passes through, in both forms.
// Saturated, then rounded by adding and taking away 1.5 * 2^23: nearest-even
// under the mode the entry holds, like the vector conversion.
template <class T>
HWY_INLINE T ToElement(float f) {
  constexpr float kLo = std::numeric_limits<T>::min(), kHi = std::numeric_limits<T>::max();
  constexpr float kRounder = 12582912.0f;
  const float v = ScalarClampK().Clamp(f, kLo, kHi);
  return static_cast<T>(static_cast<int32_t>((v + kRounder) - kRounder));
}

template <bool kToXyz, class T>
HWY_INLINE void XyzPixel(const T* src, T* dst) {
  float o[3];
  Matrix<kToXyz>(ScalarClampK(), static_cast<float>(src[0]), static_cast<float>(src[1]),
                 static_cast<float>(src[2]), o[0], o[1], o[2]);
  if constexpr (std::is_same_v<T, float>) {
    Clamp32f<kToXyz>(ScalarClampK(), o[0], o[1], o[2]);
    for (int i = 0; i < 3; ++i) dst[i] = o[i];
  } else {
    for (int i = 0; i < 3; ++i) dst[i] = ToElement<T>(o[i]);
  }
}

#if ZYL_SIMD
template <class L, bool kToXyz, class D>
HWY_INLINE ptrdiff_t XyzBlocks32f(D d, const float* const* src, float* const* dst,
                                  ptrdiff_t width) {
  const VectorClampK<D> k{d};
  const ptrdiff_t n = static_cast<ptrdiff_t>(hn::Lanes(d));
  ptrdiff_t x = 0;
  for (; x + n <= width; x += n) {
    hn::Vec<D> c0, c1, c2, c3, o0, o1, o2;
    LoadPixels<L>(d, src, x, c0, c1, c2, c3);
    Matrix<kToXyz>(k, c0, c1, c2, o0, o1, o2);
    Clamp32f<kToXyz>(k, o0, o1, o2);
    StorePixels<L>(d, dst, x, o0, o1, o2, c3);
  }
  return x;
}

// 16-bit values: each 32-bit lane holds an even pixel's value (low half) and
// an odd one's (high half). Shifts widen either without a shuffle (arithmetic
// for 16s), and the two results go back into the same halves.
template <class L, bool kToXyz, class D>
HWY_INLINE ptrdiff_t XyzBlocks16(D d, const hn::TFromD<D>* const* src, hn::TFromD<D>* const* dst,
                                 ptrdiff_t width) {
  using T = hn::TFromD<D>;
  const hn::Repartition<int32_t, D> di;
  const hn::Repartition<uint32_t, D> du;
  const hn::Repartition<float, D> df;
  using VI = hn::Vec<decltype(di)>;
  using VF = hn::Vec<decltype(df)>;
  const VectorClampK<decltype(df)> k{df};
  auto even = [&](VI v) {
    if constexpr (std::is_signed_v<T>) return hn::ShiftRight<16>(hn::ShiftLeft<16>(v));
    return hn::And(v, hn::Set(di, 0xFFFF));
  };
  auto odd = [&](VI v) {
    if constexpr (std::is_signed_v<T>) return hn::ShiftRight<16>(v);
    return hn::BitCast(di, hn::ShiftRight<16>(hn::BitCast(du, v)));
  };
  const VF lo = hn::Set(df, static_cast<float>(std::numeric_limits<T>::min()));
  const VF hi = hn::Set(df, static_cast<float>(std::numeric_limits<T>::max()));
  // Saturated in float (integer bounds, so before or after rounding is the
  // same), then rounded by the mode the entry holds.
  auto element = [&](VF f) { return hn::NearestInt(hn::Min(hn::Max(f, lo), hi)); };
  const ptrdiff_t n = static_cast<ptrdiff_t>(hn::Lanes(d));
  ptrdiff_t x = 0;
  for (; x + n <= width; x += n) {
    hn::Vec<D> c[4];
    LoadPixels<L>(d, src, x, c[0], c[1], c[2], c[3]);
    VI v[3];
    for (int i = 0; i < 3; ++i) v[i] = hn::BitCast(di, c[i]);
    VF e[3], o[3];
    Matrix<kToXyz>(k, hn::ConvertTo(df, even(v[0])), hn::ConvertTo(df, even(v[1])),
                   hn::ConvertTo(df, even(v[2])), e[0], e[1], e[2]);
    Matrix<kToXyz>(k, hn::ConvertTo(df, odd(v[0])), hn::ConvertTo(df, odd(v[1])),
                   hn::ConvertTo(df, odd(v[2])), o[0], o[1], o[2]);
    hn::Vec<D> out[3];
    for (int i = 0; i < 3; ++i) {
      const VI low = hn::And(element(e[i]), hn::Set(di, 0xFFFF));
      out[i] = hn::BitCast(d, hn::Or(low, hn::ShiftLeft<16>(element(o[i]))));
    }
    StorePixels<L>(d, dst, x, out[0], out[1], out[2], c[3]);
  }
  return x;
}
#endif  // ZYL_SIMD

template <class L, class T, bool kToXyz>
HWY_NOINLINE void XyzRowF(const T* const* src, T* const* dst, ptrdiff_t width) {
  ptrdiff_t x = 0;
#if ZYL_SIMD
  // Interleaved loads and stores shuffle across 128-bit blocks; beyond 256
  // bits that costs more than the wider arithmetic gains.
  if constexpr (std::is_same_v<T, float>) {
    x = XyzBlocks32f<L, kToXyz>(hn::CappedTag<float, 8>(), src, dst, width);
  } else {
    x = XyzBlocks16<L, kToXyz>(hn::CappedTag<T, 16>(), src, dst, width);
  }
#endif
  for (; x < width; ++x) XyzPixel<kToXyz>(src[0] + x * L::kStride, dst[0] + x * L::kStride);
}

}  // namespace HWY_NAMESPACE
}  // namespace zyl
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zyl {
namespace {

template <class L, bool kToXyz, class T>
ZylStatus Xyz(const T* src, int src_step, T* dst, int dst_step, ZylSize roi) {
  const int s = WholeElementStep<T>(src_step), d = WholeElementStep<T>(dst_step);
  if constexpr (std::is_same_v<T, Zyl8u>) {
    return Convert444<L, L>(src, s, dst, d, roi, ZYL_DISPATCH(XyzRow8<L, kToXyz>));
  } else {
    return Convert444Float<L, L, !std::is_same_v<T, Zyl32f>>(src, s, dst, d, roi,
                                                             ZYL_DISPATCH(XyzRowF<L, T, kToXyz>));
  }
}

}  // namespace
}  // namespace zyl

using zyl::AC4;
using zyl::C3;

#define ZYL_XYZ_EXPORT(name, T, L, to_xyz)                                                    \
  ZYL_API ZylStatus name(const T* pSrc, int srcStep, T* pDst, int dstStep, ZylSize roiSize) { \
    return zyl::Xyz<L, to_xyz>(pSrc, srcStep, pDst, dstStep, roiSize);                        \
  }

extern "C" {

ZYL_XYZ_EXPORT(zyliRGBToXYZ_8u_C3R, Zyl8u, C3, true)
ZYL_XYZ_EXPORT(zyliRGBToXYZ_8u_AC4R, Zyl8u, AC4, true)
ZYL_XYZ_EXPORT(zyliRGBToXYZ_16u_C3R, Zyl16u, C3, true)
ZYL_XYZ_EXPORT(zyliRGBToXYZ_16u_AC4R, Zyl16u, AC4, true)
ZYL_XYZ_EXPORT(zyliRGBToXYZ_16s_C3R, Zyl16s, C3, true)
ZYL_XYZ_EXPORT(zyliRGBToXYZ_16s_AC4R, Zyl16s, AC4, true)
ZYL_XYZ_EXPORT(zyliRGBToXYZ_32f_C3R, Zyl32f, C3, true)
ZYL_XYZ_EXPORT(zyliRGBToXYZ_32f_AC4R, Zyl32f, AC4, true)
ZYL_XYZ_EXPORT(zyliXYZToRGB_8u_C3R, Zyl8u, C3, false)
ZYL_XYZ_EXPORT(zyliXYZToRGB_8u_AC4R, Zyl8u, AC4, false)
ZYL_XYZ_EXPORT(zyliXYZToRGB_16u_C3R, Zyl16u, C3, false)
ZYL_XYZ_EXPORT(zyliXYZToRGB_16u_AC4R, Zyl16u, AC4, false)
ZYL_XYZ_EXPORT(zyliXYZToRGB_16s_C3R, Zyl16s, C3, false)
ZYL_XYZ_EXPORT(zyliXYZToRGB_16s_AC4R, Zyl16s, AC4, false)
ZYL_XYZ_EXPORT(zyliXYZToRGB_32f_C3R, Zyl32f, C3, false)
ZYL_XYZ_EXPORT(zyliXYZToRGB_32f_AC4R, Zyl32f, AC4, false)

}  // extern "C"

#undef ZYL_XYZ_EXPORT
#endif  // HWY_ONCE
