// RGB <-> CIE LUV through XYZ with the D65 white, in single precision for
// every element type; integer images are scaled in and out at the ends.
//
// Forward, one pixel:
//   X = (0.412453 R + 0.35758 G + 0.180423 B) * s, Y and Z likewise with their
//   rows: the sums first, then the input scale s (1/255 for 8u, 1/65535 for
//   16u and 16s, none for 32f), as the Lab 8u form reads;
//   L = 116 f(Y) - 16, or 903.3 Y when Y <= 0.008856 (Yn = 1);
//   d = X + 15 Y + 3 Z; u' = 4X / d, v' = 9Y / d; u = 13L (u' - u'n), v = 13L (v' - v'n).
//   Black has d = 0: there u' and v' are taken as u'n and v'n (a select, no
//   division by zero), so u = v = 0 exactly; any other d, however small or
//   negative, is divided by as it is.
// Inverse, one pixel:
//   Y = ((L + 16) * 0.00862069)^3, a pure cube (no linear segment), times the
//   output scale (255 for 8u, 65535 for 16u and 16s), folded into Y once so
//   that X and Z, derived from it, come out on the same scale;
//   u' = u / (13L + eps) + u'n, v' = v / (13L + eps) + v'n,
//   X = Y * (9u') / (4v' + eps), Z = Y * (12 - 3u' - 20v') / (4v' + eps),
//   eps = 1.1920929e-5 for 8u, 1.1920929e-7 for the others, added to every
//   denominator (not a floor under it: a floor would send the negative v' of
//   dark codes to +eps and their colours to the opposite end, while the sum
//   keeps them near black; the 8u black code (0, 97, 136) decodes to (0, 5, 0));
//   R, G, B by the inverse matrix.
// Every expression is evaluated left to right, each product and quotient
// rounded on its own (no fused multiply-add, exact divisions).
//
// Codes (integer images), rounded to nearest-even after clamping to the
// type's range; the entries hold round-to-nearest for the call, so the
// caller's rounding mode changes nothing:
//   8u   L * 2.55, (u + 134) * 0.720339, (v + 140) * 0.97328246; back by
//        0.39215687 (a multiplication, not a division by 2.55), 1.3882353, 1.027451
//   16u  L * 655.35, (u + 134) * 65535/354, (v + 140) * 65535/262; back by
//        100/65535, 354/65535, 262/65535 (each the float nearest the quotient)
//   16s  the 16u codes less 32768, on both sides (the top bit flipped)
// 32f takes R, G, B in 0..1 and gives L, u, v unscaled; its inverse clamps
// R, G, B to 0..1 (a NaN passes through).
//
// Every member advances its rows by the byte step as given, also 16u, 16s and
// 32f (no division by the element size): an odd step leaves rows unaligned,
// which the kernels accept. AC4 leaves the destination's fourth element as it
// was.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "src/perceptual/luv.cc"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

#include "src/core/dispatch.h"
#include "src/core/frame.h"
#include "src/core/layout.h"
#include "src/core/map3-inl.h"
#include "src/core/rounding.h"
#include "src/perceptual/cie-inl.h"
#include "src/perceptual/cie.h"

#ifndef ZYL_PERCEPTUAL_LUV_ONCE_
#define ZYL_PERCEPTUAL_LUV_ONCE_
namespace zyl {

// Per element type: scales and guard of the definitions above.
template <class T>
struct LuvCodes;
template <>
struct LuvCodes<uint8_t> {
  static constexpr float kRgbIn = cie::kScaleY8;  // 0.003921569
  static constexpr float kRgbOut = 255.0f;
  static constexpr float kL = 2.55f, kU = 0.720339f, kV = 0.97328246f;
  static constexpr float kLIn = 0.39215687f, kUIn = 1.3882353f, kVIn = 1.027451f;
  static constexpr float kMax = 255.0f;
  static constexpr float kEps = 1.1920929e-5f;
};
template <>
struct LuvCodes<uint16_t> {
  static constexpr float kRgbIn = 1.0f / 65535.0f;
  static constexpr float kRgbOut = 65535.0f;
  static constexpr float kL = 655.35f, kU = 65535.0f / 354.0f, kV = 65535.0f / 262.0f;
  static constexpr float kLIn = 100.0f / 65535.0f, kUIn = 354.0f / 65535.0f,
                         kVIn = 262.0f / 65535.0f;
  static constexpr float kMax = 65535.0f;
  static constexpr float kEps = 1.1920929e-7f;
};
template <>
struct LuvCodes<int16_t> : LuvCodes<uint16_t> {};
template <>
struct LuvCodes<float> {
  static constexpr float kEps = 1.1920929e-7f;
};

constexpr float kUOffset = 134.0f, kVOffset = 140.0f;
constexpr float kInv116 = 0.00862069f;

}  // namespace zyl
#endif  // ZYL_PERCEPTUAL_LUV_ONCE_

HWY_BEFORE_NAMESPACE();
namespace zyl {
namespace HWY_NAMESPACE {

// The formulas are written once (LuvFromRgb, RgbFromLuv) for a float and for
// a vector of floats; K supplies constants, comparisons, selects and the
// table cube root, so both forms run the same operations in the same order.
struct ScalarK {
  float operator()(float c) const { return c; }
  static bool Eq(float a, float b) { return a == b; }
  static bool Le(float a, float b) { return a <= b; }
  static float Select(bool m, float a, float b) { return m ? a : b; }
  static float Cbrt(float t) { return cie::CubeRootSeries(t); }
  // Float results: a NaN fails both tests and passes through.
  static float Clamp01(float v) {
    if (v < 0.0f) v = 0.0f;
    if (v > 1.0f) v = 1.0f;
    return v;
  }
};

// r, g, b as read (codes for integer images); l, u, v as stored before
// rounding (codes for integer images).
template <class T, class K, class V>
HWY_INLINE void LuvFromRgb(const K& k, V r, V g, V b, V& l, V& u, V& v) {
  constexpr auto& m = cie::kRgbToXyz;
  V x = k(m[0][0]) * r + k(m[0][1]) * g + k(m[0][2]) * b;
  V y = k(m[1][0]) * r + k(m[1][1]) * g + k(m[1][2]) * b;
  V z = k(m[2][0]) * r + k(m[2][1]) * g + k(m[2][2]) * b;
  if constexpr (!std::is_same_v<T, float>) {
    x = x * k(LuvCodes<T>::kRgbIn);
    y = y * k(LuvCodes<T>::kRgbIn);
    z = z * k(LuvCodes<T>::kRgbIn);
  }
  const V den = x + k(15.0f) * y + k(3.0f) * z;
  const auto black = k.Eq(den, k(0.0f));
  const V safe = k.Select(black, k(1.0f), den);
  const V up = k.Select(black, k(cie::kUn), k(4.0f) * x / safe);
  const V vp = k.Select(black, k(cie::kVn), k(9.0f) * y / safe);
  // CieF(Y) above the threshold is the series cube root; at or below it L
  // takes the 903.3 slope instead of the linear segment.
  const V lum =
      k.Select(k.Le(y, k(cie::kThreshold)), k(cie::kDarkL) * y, k(116.0f) * k.Cbrt(y) - k(16.0f));
  const V l13 = k(13.0f) * lum;
  const V uu = l13 * (up - k(cie::kUn));
  const V vv = l13 * (vp - k(cie::kVn));
  if constexpr (std::is_same_v<T, float>) {
    l = lum;
    u = uu;
    v = vv;
  } else {
    l = lum * k(LuvCodes<T>::kL);
    u = (uu + k(kUOffset)) * k(LuvCodes<T>::kU);
    v = (vv + k(kVOffset)) * k(LuvCodes<T>::kV);
  }
}

// l, u, v as read (codes for integer images); r, g, b as stored before
// rounding.
template <class T, class K, class V>
HWY_INLINE void RgbFromLuv(const K& k, V l, V u, V v, V& r, V& g, V& b) {
  if constexpr (!std::is_same_v<T, float>) {
    l = l * k(LuvCodes<T>::kLIn);
    u = u * k(LuvCodes<T>::kUIn) - k(kUOffset);
    v = v * k(LuvCodes<T>::kVIn) - k(kVOffset);
  }
  constexpr float kEps = LuvCodes<T>::kEps;
  const V t = (l + k(16.0f)) * k(kInv116);
  V y = t * t * t;
  if constexpr (!std::is_same_v<T, float>) y = y * k(LuvCodes<T>::kRgbOut);
  const V l13 = k(13.0f) * l + k(kEps);
  const V up = u / l13 + k(cie::kUn);
  const V vp = v / l13 + k(cie::kVn);
  const V q = k(4.0f) * vp + k(kEps);
  const V x = y * (k(9.0f) * up) / q;
  const V z = y * (k(12.0f) - k(3.0f) * up - k(20.0f) * vp) / q;
  constexpr auto& m = cie::kXyzToRgb;
  r = k(m[0][0]) * x + k(m[0][1]) * y + k(m[0][2]) * z;
  g = k(m[1][0]) * x + k(m[1][1]) * y + k(m[1][2]) * z;
  b = k(m[2][0]) * x + k(m[2][1]) * y + k(m[2][2]) * z;
  if constexpr (std::is_same_v<T, float>) {
    r = k.Clamp01(r);
    g = k.Clamp01(g);
    b = k.Clamp01(b);
  }
}

template <class T, bool kFwd, class K, class V>
HWY_INLINE void Luv(const K& k, V a, V b, V c, V& x, V& y, V& z) {
  if constexpr (kFwd) {
    LuvFromRgb<T>(k, a, b, c, x, y, z);
  } else {
    RgbFromLuv<T>(k, a, b, c, x, y, z);
  }
}

// An integer code as a float: 16s codes count from -32768.
template <class T>
HWY_INLINE float FromCode(T c) {
  if constexpr (std::is_same_v<T, int16_t>) return static_cast<float>(c + 32768);
  return static_cast<float>(c);
}

// Clamp to 0..max (NaN to 0, never reached by integer inputs), then round to
// nearest-even: 1.5 * 2^23 added and taken away rounds by the current mode,
// which the entry holds at nearest like the vector conversion.
template <class T>
HWY_INLINE T ToCode(float f) {
  constexpr float kRounder = 12582912.0f;
  f = f > 0.0f ? f : 0.0f;
  f = f < LuvCodes<T>::kMax ? f : LuvCodes<T>::kMax;
  const int32_t code = static_cast<int32_t>((f + kRounder) - kRounder);
  return static_cast<T>(std::is_same_v<T, int16_t> ? code - 32768 : code);
}

// One pixel; bytewise, since rows may sit at any byte address. kBgr: the
// RGB side is stored B, G, R.
template <class T, bool kFwd, bool kBgr>
HWY_INLINE void LuvPixel(const T* src, T* dst) {
  T in[3];
  std::memcpy(in, src, sizeof in);
  if constexpr (kBgr && kFwd) std::swap(in[0], in[2]);
  float o[3];
  if constexpr (std::is_same_v<T, float>) {
    Luv<T, kFwd>(ScalarK(), in[0], in[1], in[2], o[0], o[1], o[2]);
  } else {
    Luv<T, kFwd>(ScalarK(), FromCode(in[0]), FromCode(in[1]), FromCode(in[2]), o[0], o[1], o[2]);
  }
  T out[3];
  for (int i = 0; i < 3; ++i) {
    if constexpr (std::is_same_v<T, float>) {
      out[i] = o[i];
    } else {
      out[i] = ToCode<T>(o[i]);
    }
  }
  if constexpr (kBgr && !kFwd) std::swap(out[0], out[2]);
  std::memcpy(dst, out, sizeof out);
}

#if ZYL_SIMD
template <class DF>
struct VectorK {
  using V = hn::Vec<DF>;
  DF d;
  V operator()(float c) const { return hn::Set(d, c); }
  auto Eq(V a, V b) const { return hn::Eq(a, b); }
  auto Le(V a, V b) const { return hn::Le(a, b); }
  template <class M>
  V Select(M m, V a, V b) const {
    return hn::IfThenElse(m, a, b);
  }
  V Cbrt(V t) const { return CubeRootSeries(d, t); }
  V Clamp01(V v) const {
    v = hn::IfThenElse(hn::Lt(v, hn::Zero(d)), hn::Zero(d), v);
    return hn::IfThenElse(hn::Gt(v, hn::Set(d, 1.0f)), hn::Set(d, 1.0f), v);
  }
};

// Whole vectors of T. Integer codes are widened without shuffles: each
// 32-bit lane holds 4 (8u) or 2 (16-bit) codes of neighbouring pixels, taken
// out by shifts and a mask, converted, and their results shifted back into
// the same places; every pixel gets the per-pixel arithmetic whatever lane it
// runs in. 16s flips the top bit of each code on the way in and out: that is
// the +-32768.
template <class L, class T, bool kFwd, bool kBgr, class D>
HWY_INLINE ptrdiff_t LuvBlocks(D d, const T* const* src, T* const* dst, ptrdiff_t width) {
  const hn::Repartition<float, D> df;
  const VectorK<decltype(df)> k{df};
  using VF = hn::Vec<decltype(df)>;
  const ptrdiff_t n = static_cast<ptrdiff_t>(hn::Lanes(d));
  ptrdiff_t x = 0;
  for (; x + n <= width; x += n) {
    hn::Vec<D> c[4];
    LoadPixels<L>(d, src, x, c[0], c[1], c[2], c[3]);
    if constexpr (kBgr && kFwd) std::swap(c[0], c[2]);
    hn::Vec<D> out[3];
    if constexpr (std::is_same_v<T, float>) {
      Luv<T, kFwd>(k, c[0], c[1], c[2], out[0], out[1], out[2]);
    } else {
      const hn::Repartition<uint32_t, D> du;
      const hn::Repartition<int32_t, D> di;
      using VU = hn::Vec<decltype(du)>;
      constexpr int kBits = 8 * sizeof(T), kSub = 4 / sizeof(T);
      const VU flip = hn::Set(du, std::is_signed_v<T> ? 0x80008000u : 0u);
      const VU mask = hn::Set(du, (1u << kBits) - 1);
      const VF max = hn::Set(df, LuvCodes<T>::kMax);
      VU in[3], acc[3];
      for (int i = 0; i < 3; ++i) {
        in[i] = hn::Xor(hn::BitCast(du, c[i]), flip);
        acc[i] = hn::Zero(du);
      }
      for (int s = 0; s < kSub; ++s) {
        VF f[3], o[3];
        for (int i = 0; i < 3; ++i) {
          f[i] = hn::ConvertTo(
              df, hn::BitCast(di, hn::And(hn::ShiftRightSame(in[i], s * kBits), mask)));
        }
        Luv<T, kFwd>(k, f[0], f[1], f[2], o[0], o[1], o[2]);
        for (int i = 0; i < 3; ++i) {
          // Clamp as ToCode (NaN to 0); the entry holds round-to-nearest-even.
          VF v = hn::IfThenElse(hn::Gt(o[i], hn::Zero(df)), o[i], hn::Zero(df));
          v = hn::IfThenElse(hn::Lt(v, max), v, max);
          const VU code = hn::BitCast(du, hn::NearestInt(v));
          acc[i] = hn::Or(acc[i], hn::ShiftLeftSame(code, s * kBits));
        }
      }
      for (int i = 0; i < 3; ++i) out[i] = hn::BitCast(d, hn::Xor(acc[i], flip));
    }
    if constexpr (kBgr && !kFwd) std::swap(out[0], out[2]);
    StorePixels<L>(d, dst, x, out[0], out[1], out[2], c[3]);
  }
  return x;
}
#endif  // ZYL_SIMD

// One row: whole vectors, then the per-pixel tail (the whole row on the
// one-lane fallback).
template <class L, class T, bool kFwd, bool kBgr>
HWY_NOINLINE void LuvRow(const T* const* src, T* const* dst, ptrdiff_t width) {
  ptrdiff_t x = 0;
#if ZYL_SIMD
  x = LuvBlocks<L, T, kFwd, kBgr>(hn::ScalableTag<T>(), src, dst, width);
#endif
  for (; x < width; ++x) {
    LuvPixel<T, kFwd, kBgr>(src[0] + x * L::kStride, dst[0] + x * L::kStride);
  }
}

}  // namespace HWY_NAMESPACE
}  // namespace zyl
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zyl {
namespace {

template <class L, class T, bool kFwd, bool kBgr>
ZylStatus LuvEntry(const T* src, int src_step, T* dst, int dst_step, ZylSize roi) {
  return Convert444Float<L, L, !std::is_same_v<T, float>>(src, src_step, dst, dst_step, roi,
                                                          ZYL_DISPATCH(LuvRow<L, T, kFwd, kBgr>));
}

}  // namespace
}  // namespace zyl

using zyl::AC4;
using zyl::C3;

// One export: name, element type, layout, direction (true: to LUV) and
// whether the RGB side is in B, G, R order.
#define ZYL_LUV_EXPORT(name, T, L, fwd, bgr)                                                  \
  ZYL_API ZylStatus name(const T* pSrc, int srcStep, T* pDst, int dstStep, ZylSize roiSize) { \
    return zyl::LuvEntry<L, T, fwd, bgr>(pSrc, srcStep, pDst, dstStep, roiSize);              \
  }

extern "C" {

ZYL_LUV_EXPORT(zyliRGBToLUV_8u_C3R, Zyl8u, C3, true, false)
ZYL_LUV_EXPORT(zyliRGBToLUV_8u_AC4R, Zyl8u, AC4, true, false)
ZYL_LUV_EXPORT(zyliBGRToLUV_8u_C3R, Zyl8u, C3, true, true)
ZYL_LUV_EXPORT(zyliRGBToLUV_16u_C3R, Zyl16u, C3, true, false)
ZYL_LUV_EXPORT(zyliRGBToLUV_16u_AC4R, Zyl16u, AC4, true, false)
ZYL_LUV_EXPORT(zyliRGBToLUV_16s_C3R, Zyl16s, C3, true, false)
ZYL_LUV_EXPORT(zyliRGBToLUV_16s_AC4R, Zyl16s, AC4, true, false)
ZYL_LUV_EXPORT(zyliRGBToLUV_32f_C3R, Zyl32f, C3, true, false)
ZYL_LUV_EXPORT(zyliRGBToLUV_32f_AC4R, Zyl32f, AC4, true, false)
ZYL_LUV_EXPORT(zyliBGRToLUV_32f_C3R, Zyl32f, C3, true, true)
ZYL_LUV_EXPORT(zyliLUVToRGB_8u_C3R, Zyl8u, C3, false, false)
ZYL_LUV_EXPORT(zyliLUVToRGB_8u_AC4R, Zyl8u, AC4, false, false)
ZYL_LUV_EXPORT(zyliLUVToBGR_8u_C3R, Zyl8u, C3, false, true)
ZYL_LUV_EXPORT(zyliLUVToRGB_16u_C3R, Zyl16u, C3, false, false)
ZYL_LUV_EXPORT(zyliLUVToRGB_16u_AC4R, Zyl16u, AC4, false, false)
ZYL_LUV_EXPORT(zyliLUVToRGB_16s_C3R, Zyl16s, C3, false, false)
ZYL_LUV_EXPORT(zyliLUVToRGB_16s_AC4R, Zyl16s, AC4, false, false)
ZYL_LUV_EXPORT(zyliLUVToRGB_32f_C3R, Zyl32f, C3, false, false)
ZYL_LUV_EXPORT(zyliLUVToRGB_32f_AC4R, Zyl32f, AC4, false, false)
ZYL_LUV_EXPORT(zyliLUVToBGR_32f_C3R, Zyl32f, C3, false, true)

}  // extern "C"

#undef ZYL_LUV_EXPORT
#endif  // HWY_ONCE
