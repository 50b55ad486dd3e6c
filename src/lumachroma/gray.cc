// Gray conversions: a weighted sum of three channels into one (RGBToGray with
// fixed weights, ColorToGray with the caller's), one channel replicated into
// three (GrayToRGB), and the luma bytes of packed 4:2:2 (YCbCr422ToGray).
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "src/lumachroma/gray.cc"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "src/core/dispatch.h"
#include "src/core/frame.h"
#include "src/core/layout.h"
#include "src/core/map3-inl.h"
#include "src/core/rounding.h"

// Target-independent part: the weights and their defaults, seen once.
#ifndef ZYL_LUMACHROMA_GRAY_ONCE_
#define ZYL_LUMACHROMA_GRAY_ONCE_
namespace zyl {

// 8-bit rows: the vector body covers the first width & ~15 pixels of every
// row, on every target (the one-lane fallback computes the body formula for
// them too), so that the body/tail split, and with it the result, never
// depends on the vector width.
constexpr int kGrayBlock8u = 16;

// Unsigned 1.15 fixed-point weights of the 8-bit sums.
struct GrayWeights8 {
  uint16_t w[3];
};

// Single- or double-precision weights of the 16u, 16s, 32f and 64f sums.
template <class F>
struct GrayWeights {
  F w[3];
};

// 0.299, 0.587, 0.114 in 1.15: the sum is 32769, one over 32768; kept, it is
// part of the defined output (white stays 255 in the tail).
constexpr GrayWeights8 kGrayDefault8u = {{9798, 19235, 3736}};
// Bit patterns 0x3E991687, 0x3F1645A2, 0x3DE978D5.
constexpr GrayWeights<float> kGrayDefault32f = {{0.299f, 0.587f, 0.114f}};
// The 64f default is the single-precision one widened (0.29899999499320984,
// ...), not the nearest doubles to the decimals.
constexpr GrayWeights<double> kGrayDefault64f = {{static_cast<double>(kGrayDefault32f.w[0]),
                                                  static_cast<double>(kGrayDefault32f.w[1]),
                                                  static_cast<double>(kGrayDefault32f.w[2])}};

}  // namespace zyl
#endif  // ZYL_LUMACHROMA_GRAY_ONCE_

HWY_BEFORE_NAMESPACE();
namespace zyl {
namespace HWY_NAMESPACE {

// ------------------------------------------------------- 8u weighted sum --

// Vector-body form of one pixel: each (p * 256 * w) >> 16, the three summed
// with unsigned 16-bit saturation, 64 added in the 16-bit lane (wrapping),
// then an arithmetic shift by 7 and a narrowing with unsigned saturation. A
// lane of 32768 or more is negative to that shift and ends as 0; only caller
// weights summing past 1.0 get there (defaults: white sums to 32639 + 64).
HWY_INLINE uint8_t GrayBody8(const uint8_t* p, GrayWeights8 w) {
  uint32_t s = 0;
  for (int i = 0; i < 3; ++i) {
    s += (uint32_t{p[i]} * 256u * w.w[i]) >> 16;
    if (s > 0xFFFF) s = 0xFFFF;
  }
  const uint32_t lane = (s + 64) & 0xFFFF;
  return lane >= 0x8000 ? 0 : static_cast<uint8_t>(lane >> 7);
}

// Tail form: (w0 c0 + w1 c1 + w2 c2) >> 15 with no rounding term, so it rounds
// differently from the body by definition; saturated to 255 (caller weights).
HWY_INLINE uint8_t GrayTail8(const uint8_t* p, GrayWeights8 w) {
  const uint32_t v =
      (uint32_t{w.w[0]} * p[0] + uint32_t{w.w[1]} * p[1] + uint32_t{w.w[2]} * p[2]) >> 15;
  return static_cast<uint8_t>(v > 255 ? 255 : v);
}

#if ZYL_SIMD
// The body form on whole vectors of 8-bit pixels, from x while x + Lanes <= end.
// Each 16-bit lane holds an even pixel (low byte) and an odd one (high byte):
// shifting left by 8 or masking the low byte off gives p << 8 for either
// without a shuffle, and the high half of its unsigned product with w is
// (p * 256 * w) >> 16. The two results (0..255 once negatives are 0) are put
// back into the low and high bytes.
template <class SL, class D8>
HWY_INLINE ptrdiff_t GrayBodyBlocks8(D8 d8, const uint8_t* const* src, uint8_t* dst, ptrdiff_t x,
                                     ptrdiff_t end, GrayWeights8 w) {
  const hn::Repartition<uint16_t, D8> du;
  const hn::Repartition<int16_t, D8> di;
  const auto w0 = hn::Set(du, w.w[0]), w1 = hn::Set(du, w.w[1]), w2 = hn::Set(du, w.w[2]);
  const auto k64 = hn::Set(du, uint16_t{64});
  const auto high_byte = hn::Set(du, uint16_t{0xFF00});
  const auto zero = hn::Zero(di);
  auto gray = [&](auto p0, auto p1, auto p2) {
    auto s = hn::SaturatedAdd(hn::MulHigh(p0, w0), hn::MulHigh(p1, w1));
    s = hn::Add(hn::SaturatedAdd(s, hn::MulHigh(p2, w2)), k64);
    return hn::BitCast(du, hn::Max(hn::ShiftRight<7>(hn::BitCast(di, s)), zero));
  };
  const ptrdiff_t n = static_cast<ptrdiff_t>(hn::Lanes(d8));
  for (; x + n <= end; x += n) {
    hn::Vec<D8> c0, c1, c2, c3;
    LoadPixels<SL>(d8, src, x, c0, c1, c2, c3);
    const auto u0 = hn::BitCast(du, c0), u1 = hn::BitCast(du, c1), u2 = hn::BitCast(du, c2);
    const auto even = gray(hn::ShiftLeft<8>(u0), hn::ShiftLeft<8>(u1), hn::ShiftLeft<8>(u2));
    const auto odd = gray(hn::And(u0, high_byte), hn::And(u1, high_byte), hn::And(u2, high_byte));
    hn::StoreU(hn::BitCast(d8, hn::Or(even, hn::ShiftLeft<8>(odd))), d8, dst + x);
  }
  return x;
}
#endif

template <class SL>
HWY_NOINLINE void WeightedGray8Row(const uint8_t* const* src, uint8_t* const* dst, ptrdiff_t width,
                                   GrayWeights8 w) {
  const uint8_t* s = src[0];
  uint8_t* d = dst[0];
  const ptrdiff_t body = width & ~ptrdiff_t{kGrayBlock8u - 1};
  ptrdiff_t x = 0;
#if ZYL_SIMD
  static_assert(kGrayBlock8u == 16, "the last body blocks are one 128-bit vector each");
  // Interleaved 8-bit loads gain nothing beyond 256 bits here.
  x = GrayBodyBlocks8<SL>(hn::CappedTag<uint8_t, 32>(), src, d, x, body, w);
  x = GrayBodyBlocks8<SL>(hn::Full128<uint8_t>(), src, d, x, body, w);
#endif
  for (; x < body; ++x) d[x] = GrayBody8(s + x * SL::kStride, w);
  for (; x < width; ++x) d[x] = GrayTail8(s + x * SL::kStride, w);
}

// ------------------------------------------------- 16u / 16s weighted sum --

template <class T>
struct Range16 {
  static constexpr float kLo = std::is_signed<T>::value ? -32768.0f : 0.0f;
  static constexpr float kHi = std::is_signed<T>::value ? 32767.0f : 65535.0f;
};

// (w0 c0 + w1 c1) + w2 c2 in single precision, saturated to T (NaN to T's
// minimum) and rounded to nearest, ties to even. Clamping before rounding is
// the same as after: both bounds are integers. Adding and taking away 1.5 * 2^23
// rounds |v| <= 65535 to an integer by the current mode, which the entry holds
// at nearest-even, like the vector conversion.
template <class T>
HWY_INLINE T GrayPixel16(const T* p, GrayWeights<float> w) {
  constexpr float kRounder = 12582912.0f;
  float v = w.w[0] * static_cast<float>(p[0]);
  v = v + w.w[1] * static_cast<float>(p[1]);
  v = v + w.w[2] * static_cast<float>(p[2]);
  if (!(v >= Range16<T>::kLo)) v = Range16<T>::kLo;
  if (v > Range16<T>::kHi) v = Range16<T>::kHi;
  const float r = (v + kRounder) - kRounder;
  return static_cast<T>(static_cast<int32_t>(r));
}

#if ZYL_SIMD
// Float to int32 with saturation of the float first: NaN and values below lo
// become lo, values above hi become hi, then rounding by the current mode.
#if HWY_ARCH_X86
// maxps returns its second operand when the first is NaN, so NaN becomes lo;
// the clamped values convert without overflow, so no fix-up is needed.
template <class DF, class VF = hn::Vec<DF>>
HWY_INLINE hn::Vec<hn::RebindToSigned<DF>> SaturateNearest(DF, VF v, VF lo, VF hi) {
  const auto raw = hn::Min(hn::Max(v, lo), hi).raw;
  if constexpr (sizeof(raw) == 16) {
    return hn::Vec<hn::RebindToSigned<DF>>{_mm_cvtps_epi32(raw)};
#if HWY_TARGET <= HWY_AVX2
  } else if constexpr (sizeof(raw) == 32) {
    return hn::Vec<hn::RebindToSigned<DF>>{_mm256_cvtps_epi32(raw)};
#endif
#if HWY_TARGET <= HWY_AVX3
  } else {
    return hn::Vec<hn::RebindToSigned<DF>>{_mm512_cvtps_epi32(raw)};
#endif
  }
}
#else
template <class DF, class VF = hn::Vec<DF>>
HWY_INLINE hn::Vec<hn::RebindToSigned<DF>> SaturateNearest(DF, VF v, VF lo, VF hi) {
  v = hn::IfThenElse(hn::Ge(v, lo), v, lo);  // NaN fails the test
  return hn::NearestInt(hn::Min(v, hi));
}
#endif
#endif  // ZYL_SIMD

template <class SL, class T>
HWY_NOINLINE void WeightedGray16Row(const T* const* src, T* const* dst, ptrdiff_t width,
                                    GrayWeights<float> w) {
  ptrdiff_t x = 0;
#if ZYL_SIMD
  const hn::ScalableTag<T> d;
  const hn::Repartition<int32_t, decltype(d)> di;
  const hn::Repartition<float, decltype(d)> df;
  using VI = hn::Vec<decltype(di)>;
  const auto w0 = hn::Set(df, w.w[0]), w1 = hn::Set(df, w.w[1]), w2 = hn::Set(df, w.w[2]);
  const auto lo = hn::Set(df, Range16<T>::kLo), hi = hn::Set(df, Range16<T>::kHi);
  const VI low_half = hn::Set(di, 0xFFFF);
  // Each 32-bit lane holds an even element (low half) and an odd one (high
  // half): shifts and masks widen either without a shuffle.
  auto even = [&](VI v) {
    if constexpr (std::is_signed<T>::value) return hn::ShiftRight<16>(hn::ShiftLeft<16>(v));
    return hn::And(v, low_half);
  };
  auto odd = [&](VI v) {
    if constexpr (std::is_signed<T>::value) return hn::ShiftRight<16>(v);
    return hn::BitCast(di,
                       hn::ShiftRight<16>(hn::BitCast(hn::RebindToUnsigned<decltype(di)>(), v)));
  };
  // The rounding mode is held at nearest-even by the entry.
  auto gray = [&](VI a, VI b, VI c) {
    auto v = hn::Mul(w0, hn::ConvertTo(df, a));
    v = hn::Add(v, hn::Mul(w1, hn::ConvertTo(df, b)));
    v = hn::Add(v, hn::Mul(w2, hn::ConvertTo(df, c)));
    return SaturateNearest(df, v, lo, hi);
  };
  const ptrdiff_t n = static_cast<ptrdiff_t>(hn::Lanes(d));
  for (; x + n <= width; x += n) {
    hn::Vec<decltype(d)> c0, c1, c2, c3;
    LoadPixels<SL>(d, src, x, c0, c1, c2, c3);
    const VI v0 = hn::BitCast(di, c0), v1 = hn::BitCast(di, c1), v2 = hn::BitCast(di, c2);
    const VI e = gray(even(v0), even(v1), even(v2));
    const VI o = gray(odd(v0), odd(v1), odd(v2));
    hn::StoreU(hn::BitCast(d, hn::Or(hn::And(e, low_half), hn::ShiftLeft<16>(o))), d, dst[0] + x);
  }
#endif
  for (; x < width; ++x) dst[0][x] = GrayPixel16(src[0] + x * SL::kStride, w);
}

// ------------------------------------------------- 32f / 64f weighted sum --

// c0 w0 + c1 w1 first, then + c2 w2, in the type's precision; no clamp.
// Accessed bytewise: 64f rows advance by the byte step as given, so they need
// not be aligned.
template <class F>
HWY_INLINE void GrayPixelF(const F* src, F* dst, GrayWeights<F> w) {
  F c[3];
  std::memcpy(c, src, sizeof c);
  F v = c[0] * w.w[0];
  v = v + c[1] * w.w[1];
  v = v + c[2] * w.w[2];
  std::memcpy(dst, &v, sizeof v);
}

template <class SL, class F>
HWY_NOINLINE void WeightedGrayFRow(const F* const* src, F* const* dst, ptrdiff_t width,
                                   GrayWeights<F> w) {
  ptrdiff_t x = 0;
#if ZYL_SIMD
  const hn::ScalableTag<F> d;
  const auto w0 = hn::Set(d, w.w[0]), w1 = hn::Set(d, w.w[1]), w2 = hn::Set(d, w.w[2]);
  const ptrdiff_t n = static_cast<ptrdiff_t>(hn::Lanes(d));
  for (; x + n <= width; x += n) {
    hn::Vec<decltype(d)> c0, c1, c2, c3;
    LoadPixels<SL>(d, src, x, c0, c1, c2, c3);
    const auto v = hn::Add(hn::Mul(c0, w0), hn::Mul(c1, w1));
    hn::StoreU(hn::Add(v, hn::Mul(c2, w2)), d, dst[0] + x);
  }
#endif
  for (; x < width; ++x) GrayPixelF(src[0] + x * SL::kStride, dst[0] + x, w);
}

// ------------------------------------------------------------ GrayToRGB --

// Whether a row's source and destination bytes share any address.
template <class T>
HWY_INLINE bool RowsOverlap(const T* src, const T* dst, ptrdiff_t width, int stride) {
  const uintptr_t s = reinterpret_cast<uintptr_t>(src);
  const uintptr_t d = reinterpret_cast<uintptr_t>(dst);
  const uintptr_t s_bytes = static_cast<uintptr_t>(width) * sizeof(T);
  return s < d + s_bytes * static_cast<uintptr_t>(stride) && d < s + s_bytes;
}

// An overlapping row goes entirely through this loop: pixel by pixel in
// address order, each gray value read just before its pixel is written, so the
// result is that of the plain loop (a sample already overwritten by an earlier
// pixel is replicated as it now reads). Elsewhere the body gives the same bytes.
template <class DL, class T>
HWY_INLINE void GrayToColorPixels(const T* s, T* d, ptrdiff_t x, ptrdiff_t width, T alpha) {
  for (; x < width; ++x) {
    const T g = s[x];
    T* p = d + x * DL::kStride;
    p[0] = g;
    p[1] = g;
    p[2] = g;
    if constexpr (DL::kAlpha) p[3] = alpha;
  }
}

template <class DL, class T>
HWY_NOINLINE void GrayToColorRow(const T* const* src, T* const* dst, ptrdiff_t width, T alpha) {
  ptrdiff_t x = 0;
#if ZYL_SIMD
  if (!RowsOverlap(src[0], dst[0], width, DL::kStride)) {
    // 8-bit interleaved stores shuffle across 128-bit blocks: capped at 256 bits.
    using Tag =
        typename std::conditional<sizeof(T) == 1, hn::CappedTag<T, 32>, hn::ScalableTag<T>>::type;
    const Tag d;
    const auto a = hn::Set(d, alpha);
    const ptrdiff_t n = static_cast<ptrdiff_t>(hn::Lanes(d));
    for (; x + n <= width; x += n) {
      const auto g = hn::LoadU(d, src[0] + x);
      StorePixels<DL>(d, dst, x, g, g, g, a);
    }
  }
#endif
  GrayToColorPixels<DL>(src[0], dst[0], x, width, alpha);
}

// -------------------------------------------------------- YCbCr422ToGray --

// Pixel k takes byte 2k of the row (Y0 and Y1 of each Y0 Cb Y1 Cr group); an
// odd width ends on the Y0 of its last group.
HWY_NOINLINE void LumaOf422Row(const uint8_t* const* src, uint8_t* const* dst, ptrdiff_t width) {
  const uint8_t* s = src[0];
  uint8_t* d = dst[0];
  ptrdiff_t x = 0;
#if ZYL_SIMD
  const hn::ScalableTag<uint8_t> d8;
  const ptrdiff_t n = static_cast<ptrdiff_t>(hn::Lanes(d8));
  for (; x + n <= width; x += n) {
    hn::Vec<decltype(d8)> luma, chroma;
    hn::LoadInterleaved2(d8, s + 2 * x, luma, chroma);
    hn::StoreU(luma, d8, d + x);
  }
#endif
  for (; x < width; ++x) d[x] = s[2 * x];
}

}  // namespace HWY_NAMESPACE
}  // namespace zyl
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zyl {
namespace {

struct NoGuard {};

// The row walk of this family. 16u and 16s entries use (step >> 1) elements
// and 32f entries (step >> 2) elements as their row advance, so the low bits
// of an odd byte step are dropped; 8u and 64f advance by the byte step as is.
template <class T>
constexpr int StepShift() {
  return sizeof(T) == 2 ? 1 : (sizeof(T) == 4 ? 2 : 0);
}

template <class T>
Rows<T, 1> GrayRows(T* p, int step) {
  constexpr int kShift = StepShift<typename std::remove_const<T>::type>();
  return Rows<T, 1>{{p}, {static_cast<ptrdiff_t>(step >> kShift) * (ptrdiff_t{1} << kShift)}};
}

// The checks of every entry: both image pointers, then the size. The weights
// are read only once they pass.
template <class S, class D>
ZylStatus Check(const S* src, const D* dst, ZylSize roi) {
  if (AnyNull(src, dst)) return zylStsNullPtrErr;
  if (BadSize(roi)) return zylStsSizeErr;
  return zylStsOk;
}

// One kernel call per row; Guard holds round-to-nearest where float results
// become integers.
template <class Guard = NoGuard, class S, class D, class Kernel, class... Args>
ZylStatus Walk(const S* src, int src_step, D* dst, int dst_step, ZylSize roi, Kernel kernel,
               Args... args) {
  Guard guard;
  (void)guard;
  WalkRows(GrayRows(src, src_step), GrayRows(dst, dst_step), roi, kernel, args...);
  return zylStsOk;
}

// Caller weights in 1.15: trunc(c * 32768 + 0.5) in double, keeping the low
// 16 bits of that integer (two's complement, so negative weights wrap). A
// non-finite value has no integer and gives 0.
uint16_t Weight8(Zyl32f c) {
  const double t = std::trunc(static_cast<double>(c) * 32768.0 + 0.5);
  if (!std::isfinite(t)) return 0;
  double low = std::fmod(t, 65536.0);  // exact
  if (low < 0) low += 65536.0;
  return static_cast<uint16_t>(low);
}

GrayWeights8 Weights8(const Zyl32f* c) {
  if (c == nullptr) return kGrayDefault8u;
  return GrayWeights8{{Weight8(c[0]), Weight8(c[1]), Weight8(c[2])}};
}

template <class F>
GrayWeights<F> WeightsOr(const F* c, GrayWeights<F> defaults) {
  return c == nullptr ? defaults : GrayWeights<F>{{c[0], c[1], c[2]}};
}

template <class SL>
ZylStatus Gray8(const Zyl8u* src, int src_step, Zyl8u* dst, int dst_step, ZylSize roi,
                const Zyl32f* coeffs) {
  if (const ZylStatus bad = Check(src, dst, roi)) return bad;
  return Walk(src, src_step, dst, dst_step, roi, ZYL_DISPATCH(WeightedGray8Row<SL>),
              Weights8(coeffs));
}

template <class SL, class T>
ZylStatus Gray16(const T* src, int src_step, T* dst, int dst_step, ZylSize roi,
                 const Zyl32f* coeffs) {
  if (const ZylStatus bad = Check(src, dst, roi)) return bad;
  return Walk<NearestRounding>(src, src_step, dst, dst_step, roi,
                               ZYL_DISPATCH(WeightedGray16Row<SL, T>),
                               WeightsOr(coeffs, kGrayDefault32f));
}

GrayWeights<float> DefaultWeights(float) { return kGrayDefault32f; }
GrayWeights<double> DefaultWeights(double) { return kGrayDefault64f; }

template <class SL, class F>
ZylStatus GrayF(const F* src, int src_step, F* dst, int dst_step, ZylSize roi,
                const std::remove_const_t<F>* coeffs) {
  if (const ZylStatus bad = Check(src, dst, roi)) return bad;
  return Walk(src, src_step, dst, dst_step, roi, ZYL_DISPATCH(WeightedGrayFRow<SL, F>),
              WeightsOr(coeffs, DefaultWeights(F{})));
}

template <class DL, class T>
ZylStatus GrayToColor(const T* src, int src_step, T* dst, int dst_step, ZylSize roi, T alpha) {
  if (const ZylStatus bad = Check(src, dst, roi)) return bad;
  return Walk(src, src_step, dst, dst_step, roi, ZYL_DISPATCH(GrayToColorRow<DL, T>), alpha);
}

}  // namespace
}  // namespace zyl

using zyl::AC4;
using zyl::C3;
using zyl::C4;

extern "C" {

ZYL_API ZylStatus zyliRGBToGray_8u_C3C1R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                         ZylSize roiSize) {
  return zyl::Gray8<C3>(pSrc, srcStep, pDst, dstStep, roiSize, nullptr);
}
ZYL_API ZylStatus zyliRGBToGray_8u_AC4C1R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                          ZylSize roiSize) {
  return zyl::Gray8<AC4>(pSrc, srcStep, pDst, dstStep, roiSize, nullptr);
}
ZYL_API ZylStatus zyliRGBToGray_16u_C3C1R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst,
                                          int dstStep, ZylSize roiSize) {
  return zyl::Gray16<C3>(pSrc, srcStep, pDst, dstStep, roiSize, nullptr);
}
ZYL_API ZylStatus zyliRGBToGray_16u_AC4C1R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst,
                                           int dstStep, ZylSize roiSize) {
  return zyl::Gray16<AC4>(pSrc, srcStep, pDst, dstStep, roiSize, nullptr);
}
ZYL_API ZylStatus zyliRGBToGray_16s_C3C1R(const Zyl16s* pSrc, int srcStep, Zyl16s* pDst,
                                          int dstStep, ZylSize roiSize) {
  return zyl::Gray16<C3>(pSrc, srcStep, pDst, dstStep, roiSize, nullptr);
}
ZYL_API ZylStatus zyliRGBToGray_16s_AC4C1R(const Zyl16s* pSrc, int srcStep, Zyl16s* pDst,
                                           int dstStep, ZylSize roiSize) {
  return zyl::Gray16<AC4>(pSrc, srcStep, pDst, dstStep, roiSize, nullptr);
}
ZYL_API ZylStatus zyliRGBToGray_32f_C3C1R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst,
                                          int dstStep, ZylSize roiSize) {
  return zyl::GrayF<C3>(pSrc, srcStep, pDst, dstStep, roiSize, nullptr);
}
ZYL_API ZylStatus zyliRGBToGray_32f_AC4C1R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst,
                                           int dstStep, ZylSize roiSize) {
  return zyl::GrayF<AC4>(pSrc, srcStep, pDst, dstStep, roiSize, nullptr);
}

ZYL_API ZylStatus zyliColorToGray_8u_C3C1R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                           ZylSize roiSize, const Zyl32f pCoeffs[3]) {
  return zyl::Gray8<C3>(pSrc, srcStep, pDst, dstStep, roiSize, pCoeffs);
}
ZYL_API ZylStatus zyliColorToGray_8u_AC4C1R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                            int dstStep, ZylSize roiSize, const Zyl32f pCoeffs[3]) {
  return zyl::Gray8<AC4>(pSrc, srcStep, pDst, dstStep, roiSize, pCoeffs);
}
ZYL_API ZylStatus zyliColorToGray_16u_C3C1R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst,
                                            int dstStep, ZylSize roiSize, const Zyl32f pCoeffs[3]) {
  return zyl::Gray16<C3>(pSrc, srcStep, pDst, dstStep, roiSize, pCoeffs);
}
ZYL_API ZylStatus zyliColorToGray_16u_AC4C1R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst,
                                             int dstStep, ZylSize roiSize,
                                             const Zyl32f pCoeffs[3]) {
  return zyl::Gray16<AC4>(pSrc, srcStep, pDst, dstStep, roiSize, pCoeffs);
}
ZYL_API ZylStatus zyliColorToGray_16s_C3C1R(const Zyl16s* pSrc, int srcStep, Zyl16s* pDst,
                                            int dstStep, ZylSize roiSize, const Zyl32f pCoeffs[3]) {
  return zyl::Gray16<C3>(pSrc, srcStep, pDst, dstStep, roiSize, pCoeffs);
}
ZYL_API ZylStatus zyliColorToGray_16s_AC4C1R(const Zyl16s* pSrc, int srcStep, Zyl16s* pDst,
                                             int dstStep, ZylSize roiSize,
                                             const Zyl32f pCoeffs[3]) {
  return zyl::Gray16<AC4>(pSrc, srcStep, pDst, dstStep, roiSize, pCoeffs);
}
ZYL_API ZylStatus zyliColorToGray_32f_C3C1R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst,
                                            int dstStep, ZylSize roiSize, const Zyl32f pCoeffs[3]) {
  return zyl::GrayF<C3>(pSrc, srcStep, pDst, dstStep, roiSize, pCoeffs);
}
ZYL_API ZylStatus zyliColorToGray_32f_AC4C1R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst,
                                             int dstStep, ZylSize roiSize,
                                             const Zyl32f pCoeffs[3]) {
  return zyl::GrayF<AC4>(pSrc, srcStep, pDst, dstStep, roiSize, pCoeffs);
}
ZYL_API ZylStatus zyliColorToGray_64f_C3C1R(const Zyl64f* pSrc, int srcStep, Zyl64f* pDst,
                                            int dstStep, ZylSize roiSize, const Zyl64f pCoeffs[3]) {
  return zyl::GrayF<C3>(pSrc, srcStep, pDst, dstStep, roiSize, pCoeffs);
}
ZYL_API ZylStatus zyliColorToGray_64f_AC4C1R(const Zyl64f* pSrc, int srcStep, Zyl64f* pDst,
                                             int dstStep, ZylSize roiSize,
                                             const Zyl64f pCoeffs[3]) {
  return zyl::GrayF<AC4>(pSrc, srcStep, pDst, dstStep, roiSize, pCoeffs);
}

ZYL_API ZylStatus zyliGrayToRGB_8u_C1C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                         ZylSize roiSize) {
  return zyl::GrayToColor<C3>(pSrc, srcStep, pDst, dstStep, roiSize, Zyl8u{0});
}
ZYL_API ZylStatus zyliGrayToRGB_8u_C1C4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                         ZylSize roiSize, Zyl8u aval) {
  return zyl::GrayToColor<C4>(pSrc, srcStep, pDst, dstStep, roiSize, aval);
}
ZYL_API ZylStatus zyliGrayToRGB_16u_C1C3R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst,
                                          int dstStep, ZylSize roiSize) {
  return zyl::GrayToColor<C3>(pSrc, srcStep, pDst, dstStep, roiSize, Zyl16u{0});
}
ZYL_API ZylStatus zyliGrayToRGB_16u_C1C4R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst,
                                          int dstStep, ZylSize roiSize, Zyl16u aval) {
  return zyl::GrayToColor<C4>(pSrc, srcStep, pDst, dstStep, roiSize, aval);
}
ZYL_API ZylStatus zyliGrayToRGB_32f_C1C3R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst,
                                          int dstStep, ZylSize roiSize) {
  return zyl::GrayToColor<C3>(pSrc, srcStep, pDst, dstStep, roiSize, Zyl32f{0});
}
ZYL_API ZylStatus zyliGrayToRGB_32f_C1C4R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst,
                                          int dstStep, ZylSize roiSize, Zyl32f aval) {
  return zyl::GrayToColor<C4>(pSrc, srcStep, pDst, dstStep, roiSize, aval);
}

ZYL_API ZylStatus zyliYCbCr422ToGray_8u_C2C1R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                              int dstStep, ZylSize roiSize) {
  if (const ZylStatus bad = zyl::Check(pSrc, pDst, roiSize)) return bad;
  return zyl::Walk(pSrc, srcStep, pDst, dstStep, roiSize, ZYL_DISPATCH(LumaOf422Row));
}

}  // extern "C"
#endif  // HWY_ONCE
