// RGB <-> PhotoYCC (Y, C1, C2): luma scaled by 1/1.402, C1 from B - luma and
// C2 from R - luma, centred on 156 and 137 of the 8-bit scale. 8u in fixed
// point; 16u, 16s and 32f through one single-precision definition.
//
// 16u and 16s (our choice, kept identical in vector body and per-pixel tail):
// a 16u code v becomes v / 65535.0f (one correctly rounded division, so 0 and
// 65535 are exactly 0.0 and 1.0), runs through the 32f formulas below, and
// each result f becomes nearest-even(clamp(f * 65535.0f, 0, 65535)). A 16s
// code is v + 32768 on the way in and the result - 32768 on the way out, i.e.
// the 16u arithmetic on codes with their top bit flipped. These entries hold
// round-to-nearest for the call, so the caller's rounding mode changes
// nothing; 32f follows the caller's mode like any float code.
//
// Every member advances its rows by the byte step as given, also 16u, 16s and
// 32f: an odd step leaves rows unaligned, which the kernels accept.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "src/lumachroma/photoycc.cc"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <cstdint>
#include <cstring>
#include <type_traits>

#include "src/core/dispatch.h"
#include "src/core/frame.h"
#include "src/core/layout.h"
#include "src/core/map3-inl.h"
#include "src/core/rounding.h"
#include "src/core/saturate.h"

#ifndef ZYL_LUMACHROMA_PHOTOYCC_ONCE_
#define ZYL_LUMACHROMA_PHOTOYCC_ONCE_
namespace zyl {

// 8u forward: luma weights 0.299, 0.587, 0.114 in units of 1/16384
// (truncated), then 16.16 scales of the luma and the two differences.
constexpr int kYccLumaR = 4898, kYccLumaG = 9617, kYccLumaB = 1867;
constexpr int kYccYScale = 2921, kYccC1Scale = 1789, kYccC2Scale = 2178;
constexpr int kYccC1Center = 156, kYccC2Center = 137;

// 8u inverse, units of 1/4096: y = 5564 Y, c = scale * (C - centre).
constexpr int kRgbY = 5564, kRgbC1 = 9084, kRgbC2 = 7460;
constexpr int kRgbC1Offset = kRgbC1 * kYccC1Center;  // 1417104
constexpr int kRgbC2Offset = kRgbC2 * kYccC2Center;  // 1022020
// Green takes the scaled chroma terms (>> 8) once more, in 1/65536.
constexpr int kRgbGC1 = 794, kRgbGC2 = 2084;

// Single precision, on the 0..1 scale (156/255 and 137/255 as centres).
constexpr float kLumaR = 0.299f, kLumaG = 0.587f, kLumaB = 0.114f;
constexpr float kYScale = 0.7132668f, kC1Scale = 0.4368627f, kC2Scale = 0.53192f;
constexpr float kC1Center = 0.6117647f, kC2Center = 0.5372549f;
constexpr float kInvY = 1.3584f, kInvC1 = 2.2179f, kInvC2 = 1.8215f;
constexpr float kGFromC1 = 0.194f, kGFromC2 = 0.509f;

// 1.0 on the 16-bit scales.
constexpr float kCodeMax = 65535.0f;

}  // namespace zyl
#endif  // ZYL_LUMACHROMA_PHOTOYCC_ONCE_

HWY_BEFORE_NAMESPACE();
namespace zyl {
namespace HWY_NAMESPACE {

// ------------------------------------------------------------------- 8u --

struct RgbToYcc8 {
  // The differences stay within +-3615, so C1 lands in 57..254 and C2 in
  // 41..232: the low byte stored is the whole result, no clamp needed.
  void Pixel(const uint8_t in[4], uint8_t out[4]) const {
    const int32_t r = in[0], g = in[1], b = in[2];
    const int32_t s = kYccLumaR * r + kYccLumaG * g + kYccLumaB * b;
    out[0] = static_cast<uint8_t>(((s >> 10) * kYccYScale) >> 16);
    out[1] = static_cast<uint8_t>(((((b * 16384 - s) >> 10) * kYccC1Scale) >> 16) + kYccC1Center);
    out[2] = static_cast<uint8_t>(((((r * 16384 - s) >> 10) * kYccC2Scale) >> 16) + kYccC2Center);
  }
#if ZYL_SIMD
  template <class D8, class V8>
  HWY_INLINE void Vec(D8 d8, V8 r, V8 g, V8 b, V8& y, V8& c1, V8& c2) const {
    Map8ViaI16(d8, *this, r, g, b, y, c1, c2);
  }
  // x >> 10 is floor(64 x / 65536), so each shifted sum is one exact 16.16
  // dot product with the weights times 64; the scales are then (t * k) >> 16
  // of a 16-bit t, the signed multiply-high.
  template <class D, class V>
  HWY_INLINE void Vec16(D d, V r, V g, V b, V& y, V& c1, V& c2) const {
    constexpr int32_t kR = 64 * kYccLumaR, kG = 64 * kYccLumaG, kB = 64 * kYccLumaB;
    constexpr int32_t kOne = 64 * 16384;
    const V luma = FixedDot16<0, kR, kG, kB>(d, r, g, b);
    const V db = FixedDot16<0, -kR, -kG, kOne - kB>(d, r, g, b);
    const V dr = FixedDot16<0, kOne - kR, -kG, -kB>(d, r, g, b);
    y = hn::MulHigh(luma, hn::Set(d, int16_t{kYccYScale}));
    c1 = hn::Add(hn::MulHigh(db, hn::Set(d, int16_t{kYccC1Scale})),
                 hn::Set(d, int16_t{kYccC1Center}));
    c2 = hn::Add(hn::MulHigh(dr, hn::Set(d, int16_t{kYccC2Scale})),
                 hn::Set(d, int16_t{kYccC2Center}));
  }
#endif
};

struct YccToRgb8 {
  // R and B reach -346..566 and G -152..540 before the table clamps them.
  void Pixel(const uint8_t in[4], uint8_t out[4]) const {
    const int32_t y = kRgbY * in[0];
    const int32_t c1 = kRgbC1 * in[1] - kRgbC1Offset;
    const int32_t c2 = kRgbC2 * in[2] - kRgbC2Offset;
    out[0] = Clamp8((y + c2) >> 12);
    out[1] = Clamp8((16 * y - kRgbGC1 * (c1 >> 8) - kRgbGC2 * (c2 >> 8)) >> 16);
    out[2] = Clamp8((y + c1) >> 12);
  }
#if ZYL_SIMD
  template <class D8, class V8>
  HWY_INLINE void Vec(D8 d8, V8 y, V8 c1, V8 c2, V8& r, V8& g, V8& b) const {
    Map8ViaI16(d8, *this, y, c1, c2, r, g, b);
  }
  // R and B: >> 12 is floor(16 x / 65536), one exact 16.16 dot product each.
  // c1 >> 8 with u = C1 - 156: 9084 = 35 * 256 + 124, so floor(9084 u / 256)
  // = 35 u + floor(31 u / 64), and with v = C2 - 137, 7460 = 29 * 256 + 36
  // gives 29 v + floor(9 v / 64); all of it fits 16 bits. The narrowing back
  // to bytes saturates: that is the clamp.
  template <class D, class V>
  HWY_INLINE void Vec16(D d, V yy, V cc1, V cc2, V& r, V& g, V& b) const {
    static_assert(kRgbC1 % 256 == 124 && kRgbC2 % 256 == 36, "the split of c >> 8 above");
    const V u = hn::Sub(cc1, hn::Set(d, int16_t{kYccC1Center}));
    const V v = hn::Sub(cc2, hn::Set(d, int16_t{kYccC2Center}));
    const V c1_high = hn::Add(hn::Mul(u, hn::Set(d, int16_t{kRgbC1 / 256})),
                              hn::ShiftRight<6>(hn::Mul(u, hn::Set(d, int16_t{kRgbC1 % 256 / 4}))));
    const V c2_high = hn::Add(hn::Mul(v, hn::Set(d, int16_t{kRgbC2 / 256})),
                              hn::ShiftRight<6>(hn::Mul(v, hn::Set(d, int16_t{kRgbC2 % 256 / 4}))));
    r = FixedDot16<0, 16 * kRgbY, 16 * kRgbC2>(d, yy, v);
    g = FixedDot16<0, 16 * kRgbY, -kRgbGC1, -kRgbGC2>(d, yy, c1_high, c2_high);
    b = FixedDot16<0, 16 * kRgbY, 16 * kRgbC1>(d, yy, u);
  }
#endif
};

template <class L, bool kToYcc>
HWY_NOINLINE void PhotoRow8(const uint8_t* const* src, uint8_t* const* dst, ptrdiff_t width) {
  using Op = std::conditional_t<kToYcc, RgbToYcc8, YccToRgb8>;
  Map3Row8<L, L, Op>(src, dst, width, uint8_t{0});
}

// -------------------------------------------------- 16u, 16s and 32f --

// The single-precision formulas, written once for a float and for a vector
// of floats: K turns constants into operands and clamps. Left-to-right
// order and separately rounded products are part of the result.
template <class V, class K>
HWY_INLINE void YccFromRgb(const K& k, V r, V g, V b, V& y, V& c1, V& c2) {
  const V luma = k(kLumaR) * r + k(kLumaG) * g + k(kLumaB) * b;
  y = luma * k(kYScale);
  c1 = (b - luma) * k(kC1Scale) + k(kC1Center);
  c2 = k(kC2Center) + k(kC2Scale) * (r - luma);
}

// Green takes the already scaled chroma terms, on purpose.
template <class V, class K>
HWY_INLINE void RgbFromYcc(const K& k, V yy, V cc1, V cc2, V& r, V& g, V& b) {
  const V y = k(kInvY) * yy;
  const V c2 = (cc2 - k(kC2Center)) * k(kInvC2);
  const V c1 = k(kInvC1) * (cc1 - k(kC1Center));
  r = k.Clamp(y + c2, 0.0f, 1.0f);
  g = k.Clamp(y - k(kGFromC1) * c1 - k(kGFromC2) * c2, 0.0f, 1.0f);
  b = k.Clamp(y + c1, 0.0f, 1.0f);
}

// A NaN fails both comparisons and passes through, in both forms.
template <bool kToYcc, class V, class K>
HWY_INLINE void Photo(const K& k, V a, V b, V c, V& x, V& y, V& z) {
  if constexpr (kToYcc) {
    YccFromRgb(k, a, b, c, x, y, z);
  } else {
    RgbFromYcc(k, a, b, c, x, y, z);
  }
}

template <class T>
HWY_INLINE float ToUnit(T v) {
  if constexpr (std::is_same_v<T, float>) return v;
  if constexpr (std::is_signed_v<T>) return static_cast<float>(v + 32768) / kCodeMax;
  return static_cast<float>(v) / kCodeMax;
}

// 1.5 * 2^23 added and taken away rounds 0..65535 to an integer by the
// current mode, which the entry holds at nearest-even like the vector
// conversion.
template <class T>
HWY_INLINE T FromUnit(float f) {
  if constexpr (std::is_same_v<T, float>) {
    return f;
  } else {
    constexpr float kRounder = 12582912.0f;
    const float v = ScalarClampK().Clamp(f * kCodeMax, 0.0f, kCodeMax);
    const int32_t code = static_cast<int32_t>((v + kRounder) - kRounder);
    return static_cast<T>(std::is_signed_v<T> ? code - 32768 : code);
  }
}

// One pixel; bytewise, since rows may sit at any byte address.
template <bool kToYcc, class T>
HWY_INLINE void PhotoPixel(const T* src, T* dst) {
  T in[3];
  std::memcpy(in, src, sizeof in);
  float o[3];
  Photo<kToYcc>(ScalarClampK(), ToUnit(in[0]), ToUnit(in[1]), ToUnit(in[2]), o[0], o[1], o[2]);
  const T out[3] = {FromUnit<T>(o[0]), FromUnit<T>(o[1]), FromUnit<T>(o[2])};
  std::memcpy(dst, out, sizeof out);
}

#if ZYL_SIMD
template <class L, bool kToYcc, class D>
HWY_INLINE ptrdiff_t PhotoBlocks32f(D d, const float* const* src, float* const* dst,
                                    ptrdiff_t width) {
  const VectorClampK<D> k{d};
  const ptrdiff_t n = static_cast<ptrdiff_t>(hn::Lanes(d));
  ptrdiff_t x = 0;
  for (; x + n <= width; x += n) {
    hn::Vec<D> c0, c1, c2, c3, o0, o1, o2;
    LoadPixels<L>(d, src, x, c0, c1, c2, c3);
    Photo<kToYcc>(k, c0, c1, c2, o0, o1, o2);
    StorePixels<L>(d, dst, x, o0, o1, o2, c3);
  }
  return x;
}

// 16-bit codes: each 32-bit lane holds an even pixel's code (low half) and an
// odd one's (high half); masks and shifts widen either without a shuffle, and
// the two results go back into the same halves. 16s flips the top bit of each
// code on the way in and out: that is the +-32768.
template <class L, bool kToYcc, class D>
HWY_INLINE ptrdiff_t PhotoBlocks16(D d, const hn::TFromD<D>* const* src, hn::TFromD<D>* const* dst,
                                   ptrdiff_t width) {
  using T = hn::TFromD<D>;
  const hn::Repartition<uint32_t, D> du;
  const hn::Repartition<int32_t, D> di;
  const hn::Repartition<float, D> df;
  using VU = hn::Vec<decltype(du)>;
  using VF = hn::Vec<decltype(df)>;
  const VectorClampK<decltype(df)> k{df};
  const VU flip = hn::Set(du, std::is_signed_v<T> ? 0x80008000u : 0u);
  const VU low = hn::Set(du, 0xFFFFu);
  const VF max = hn::Set(df, kCodeMax);
  auto unit = [&](VU code) { return hn::Div(hn::ConvertTo(df, hn::BitCast(di, code)), max); };
  // The entry holds round-to-nearest-even for NearestInt.
  auto code = [&](VF f) {
    return hn::BitCast(du, hn::NearestInt(k.Clamp(hn::Mul(f, max), 0.0f, kCodeMax)));
  };
  const ptrdiff_t n = static_cast<ptrdiff_t>(hn::Lanes(d));
  ptrdiff_t x = 0;
  for (; x + n <= width; x += n) {
    hn::Vec<D> c[4];
    LoadPixels<L>(d, src, x, c[0], c[1], c[2], c[3]);
    VU u[3];
    for (int i = 0; i < 3; ++i) u[i] = hn::Xor(hn::BitCast(du, c[i]), flip);
    VF e[3], o[3];
    Photo<kToYcc>(k, unit(hn::And(u[0], low)), unit(hn::And(u[1], low)), unit(hn::And(u[2], low)),
                  e[0], e[1], e[2]);
    Photo<kToYcc>(k, unit(hn::ShiftRight<16>(u[0])), unit(hn::ShiftRight<16>(u[1])),
                  unit(hn::ShiftRight<16>(u[2])), o[0], o[1], o[2]);
    hn::Vec<D> out[3];
    for (int i = 0; i < 3; ++i) {
      out[i] = hn::BitCast(d, hn::Xor(hn::Or(code(e[i]), hn::ShiftLeft<16>(code(o[i]))), flip));
    }
    StorePixels<L>(d, dst, x, out[0], out[1], out[2], c[3]);
  }
  return x;
}
#endif  // ZYL_SIMD

template <class L, class T, bool kToYcc>
HWY_NOINLINE void PhotoRowF(const T* const* src, T* const* dst, ptrdiff_t width) {
  ptrdiff_t x = 0;
#if ZYL_SIMD
  if constexpr (std::is_same_v<T, float>) {
    x = PhotoBlocks32f<L, kToYcc>(hn::ScalableTag<float>(), src, dst, width);
  } else {
    x = PhotoBlocks16<L, kToYcc>(hn::ScalableTag<T>(), src, dst, width);
  }
#endif
  for (; x < width; ++x) PhotoPixel<kToYcc>(src[0] + x * L::kStride, dst[0] + x * L::kStride);
}

}  // namespace HWY_NAMESPACE
}  // namespace zyl
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zyl {
namespace {

template <class L, bool kToYcc>
ZylStatus Photo8(const Zyl8u* src, int src_step, Zyl8u* dst, int dst_step, ZylSize roi) {
  return Convert444<L, L>(src, src_step, dst, dst_step, roi, ZYL_DISPATCH(PhotoRow8<L, kToYcc>));
}

template <class L, bool kToYcc, class T>
ZylStatus PhotoF(const T* src, int src_step, T* dst, int dst_step, ZylSize roi) {
  return Convert444Float<L, L, !std::is_same_v<T, Zyl32f>>(src, src_step, dst, dst_step, roi,
                                                           ZYL_DISPATCH(PhotoRowF<L, T, kToYcc>));
}

}  // namespace
}  // namespace zyl

using zyl::AC4;
using zyl::C3;

// One export: its name, element type, layout, direction and entry template.
#define ZYL_PHOTOYCC_EXPORT(name, T, L, to_ycc, impl)                                         \
  ZYL_API ZylStatus name(const T* pSrc, int srcStep, T* pDst, int dstStep, ZylSize roiSize) { \
    return zyl::impl<L, to_ycc>(pSrc, srcStep, pDst, dstStep, roiSize);                       \
  }

extern "C" {

ZYL_PHOTOYCC_EXPORT(zyliRGBToYCC_8u_C3R, Zyl8u, C3, true, Photo8)
ZYL_PHOTOYCC_EXPORT(zyliRGBToYCC_8u_AC4R, Zyl8u, AC4, true, Photo8)
ZYL_PHOTOYCC_EXPORT(zyliRGBToYCC_16u_C3R, Zyl16u, C3, true, PhotoF)
ZYL_PHOTOYCC_EXPORT(zyliRGBToYCC_16u_AC4R, Zyl16u, AC4, true, PhotoF)
ZYL_PHOTOYCC_EXPORT(zyliRGBToYCC_16s_C3R, Zyl16s, C3, true, PhotoF)
ZYL_PHOTOYCC_EXPORT(zyliRGBToYCC_16s_AC4R, Zyl16s, AC4, true, PhotoF)
ZYL_PHOTOYCC_EXPORT(zyliRGBToYCC_32f_C3R, Zyl32f, C3, true, PhotoF)
ZYL_PHOTOYCC_EXPORT(zyliRGBToYCC_32f_AC4R, Zyl32f, AC4, true, PhotoF)
ZYL_PHOTOYCC_EXPORT(zyliYCCToRGB_8u_C3R, Zyl8u, C3, false, Photo8)
ZYL_PHOTOYCC_EXPORT(zyliYCCToRGB_8u_AC4R, Zyl8u, AC4, false, Photo8)
ZYL_PHOTOYCC_EXPORT(zyliYCCToRGB_16u_C3R, Zyl16u, C3, false, PhotoF)
ZYL_PHOTOYCC_EXPORT(zyliYCCToRGB_16u_AC4R, Zyl16u, AC4, false, PhotoF)
ZYL_PHOTOYCC_EXPORT(zyliYCCToRGB_16s_C3R, Zyl16s, C3, false, PhotoF)
ZYL_PHOTOYCC_EXPORT(zyliYCCToRGB_16s_AC4R, Zyl16s, AC4, false, PhotoF)
ZYL_PHOTOYCC_EXPORT(zyliYCCToRGB_32f_C3R, Zyl32f, C3, false, PhotoF)
ZYL_PHOTOYCC_EXPORT(zyliYCCToRGB_32f_AC4R, Zyl32f, AC4, false, PhotoF)

}  // extern "C"

#undef ZYL_PHOTOYCC_EXPORT
#endif  // HWY_ONCE
