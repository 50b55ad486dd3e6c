// RGB/BGR <-> HLS (hue, lightness, saturation), single precision for every
// element type.
//
// 8u and 16u forward rows: the row is cut at width & ~7 (C3) or width & ~3
// (AC4, planar): pixels before the cut are "group" pixels, which take the
// unrefined 12-bit reciprocal and round to nearest-even; the pixels after it
// take the reciprocal refined by one Newton step and either truncate (C3 8u,
// every 16u/16s row) or round (AC4 8u and the planar BGR members). Wider
// vectors take several groups at once; the fallback target runs the same
// group arithmetic per pixel. Two equal pixels can therefore get codes one
// apart depending on where they sit in the row: that is the defined output.
//
// Operation order, in body, tail and tests alike, is the left-to-right
// reading of the formulas: (G - B) * 60 * (1/delta) is ((G - B) * 60) * rcp,
// delta * (1/den) * 255 is (delta * rcp) * 255, the Newton step 2r - x*r*r is
// (2 * r) - ((x * r) * r), L + S - L*S is (L + S) - (L * S), and
// (m2 - m1) * x / 60 is ((m2 - m1) * x) * 0.016666668.
//
// Our choices where the arithmetic is left open:
//  - 16u rows use groups of 8 (C3) and 4 (AC4) like 8u, and every 16u tail,
//    AC4 included, refines its reciprocals and truncates.
//  - 16s is the 16u arithmetic on code + 32768 for every channel, and the
//    result less 32768 (the top bit flipped on the way in and out).
//  - 16u inverse: hue = H * 0.005493248 (360/65535), L and S times
//    1.5259022e-5 (1/65535), results times 65535 truncated, as in 8u.
//  - BGRToHLS_8u_AC4R and the planar/four-plane BGR members store H, L, S as
//    channels (planes) 0, 1, 2; the inverse BGR members read H, L, S there
//    and write B, G, R. The planar members use the arithmetic of
//    BGRToHLS_8u_AC4R forward (groups of 4, refined and rounded tail) and of
//    HLSToRGB_8u_C3R inverse. Four-plane members carry alpha through as is.
//  - Integer members hold round-to-nearest for the call, so neither the
//    conversions nor the float arithmetic depend on the caller's mode; 32f
//    follows the caller's mode like any float code.
//  - 16u/16s/32f steps become element counts by an arithmetic right shift
//    (>> 1, >> 2): an odd byte step drops its remainder.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "src/perceptual/hls.cc"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "src/core/dispatch.h"
#include "src/core/frame.h"
#include "src/core/layout.h"
#include "src/core/map3-inl.h"
#include "src/core/rounding.h"
#include "src/perceptual/rcp12-inl.h"
#include "src/perceptual/rcp12.h"

#ifndef ZYL_PERCEPTUAL_HLS_ONCE_
#define ZYL_PERCEPTUAL_HLS_ONCE_
namespace zyl {

// Per-pixel arithmetic of a forward integer pixel: group, or one of the two
// tails.
enum HlsMode { kHlsGroup, kHlsTailTrunc, kHlsTailRound };

// Scales of each element type. kHue: degrees to code; kInvHue: code to
// degrees; kUnit: code to 0..1.
template <class T>
struct HlsRange {
  static constexpr bool kFloat = true;
};
template <>
struct HlsRange<uint8_t> {
  static constexpr bool kFloat = false;
  static constexpr float kMax = 255.0f, kHalf = 127.5f, kTwice = 510.0f;
  static constexpr float kHue = 0.70833331f, kInvHue = 1.4117647f, kUnit = 0.003921569f;
  static constexpr int32_t kCodeMax = 255, kBias = 0;
};
template <>
struct HlsRange<uint16_t> {
  static constexpr bool kFloat = false;
  static constexpr float kMax = 65535.0f, kHalf = 32767.5f, kTwice = 131070.0f;
  static constexpr float kHue = 182.04167f, kInvHue = 0.005493248f, kUnit = 1.5259022e-5f;
  static constexpr int32_t kCodeMax = 65535, kBias = 0;
};
template <>
struct HlsRange<int16_t> : HlsRange<uint16_t> {
  static constexpr int32_t kBias = 32768;
};

constexpr float kHlsEpsilon = 1.1920929e-7f;  // 32f gray test
constexpr float kHlsSixtieth = 0.016666668f;  // the inverse divides by 60 this way

}  // namespace zyl
#endif  // ZYL_PERCEPTUAL_HLS_ONCE_

// The vector bodies use x86 in-block packs and rcpps; elsewhere the
// reciprocal goes lane by lane anyway, so the per-pixel definition runs.
#undef ZYL_HLS_SIMD
#if ZYL_SIMD && HWY_ARCH_X86
#define ZYL_HLS_SIMD 1
#else
#define ZYL_HLS_SIMD 0
#endif

HWY_BEFORE_NAMESPACE();
namespace zyl {
namespace HWY_NAMESPACE {

// ------------------------------------------------------------ formulas --

// The formulas are written once for a float (HlsScalarK) and for vectors
// (HlsVectorK). Max and Min keep the x86 operand rule (the second operand
// unless the first compares greater / less), so every form agrees.
struct HlsScalarK {
  float operator()(float c) const { return c; }
  static float Max(float a, float b) { return a > b ? a : b; }
  static float Min(float a, float b) { return a < b ? a : b; }
  static float If(bool m, float a, float b) { return m ? a : b; }
  static float Rcp(float x) { return ::zyl::Rcp12(x); }
};

// Newton step of a reciprocal estimate r of x.
template <class K, class V>
HWY_INLINE V HlsRefine(const K& k, V x, V r) {
  return k(2.0f) * r - x * r * r;
}

// 8u/16u forward on float codes; results are float codes before conversion.
// All three hue candidates share one product: the selected difference,
// then the sector offset except for red, so no +0 is added to red's hue.
template <class R, bool kRefine, class K, class V>
HWY_INLINE void HlsForwardInt(const K& k, V r, V g, V b, V& h, V& l, V& s) {
  const V mx = k.Max(k.Max(r, g), b), mn = k.Min(k.Min(r, g), b);
  const V delta = mx - mn, sum = mx + mn;
  l = sum * k(0.5f);
  const V den = k.If(l > k(R::kHalf), k(R::kTwice) - sum, sum);
  V rs = k.Rcp(den), rh = k.Rcp(delta);
  if constexpr (kRefine) {
    rs = HlsRefine(k, den, rs);
    rh = HlsRefine(k, delta, rh);
  }
  const V sat = delta * rs * k(R::kMax);
  const auto red = r == mx, green = g == mx;
  V hue = k.If(red, g - b, k.If(green, b - r, r - g)) * k(60.0f) * rh;
  hue = k.If(red, hue, hue + k.If(green, k(120.0f), k(240.0f)));
  hue = k.If(hue < k(0.0f), hue + k(360.0f), hue);
  // Gray lanes computed 0 * inf above; they take 0 here.
  const auto gray = delta == k(0.0f);
  h = k.If(gray, k(0.0f), hue * k(R::kHue));
  s = k.If(gray, k(0.0f), sat);
}

// 32f forward: exact divisions, the epsilon test, H as a fraction of a turn.
template <class K, class V>
HWY_INLINE void HlsForward32f(const K& k, V r, V g, V b, V& h, V& l, V& s) {
  const V mx = k.Max(k.Max(r, g), b), mn = k.Min(k.Min(r, g), b);
  const V delta = mx - mn, sum = mx + mn;
  l = sum * k(0.5f);
  const V sat = delta / k.If(l <= k(0.5f), sum, k(2.0f) - sum);
  const auto red = r == mx, green = g == mx;
  V hue = k.If(red, g - b, k.If(green, b - r, r - g)) * k(60.0f) / delta;
  hue = k.If(red, hue, hue + k.If(green, k(120.0f), k(240.0f)));
  hue = k.If(hue < k(0.0f), hue + k(360.0f), hue);
  const auto gray = delta <= k(kHlsEpsilon);
  h = k.If(gray, k(0.0f), hue / k(360.0f));
  s = k.If(gray, k(0.0f), sat);
}

// Inverse on codes (or 32f values); integer results are float codes before
// the truncation. The rising and falling ramps share one product.
template <class R, class K, class V>
HWY_INLINE void HlsInverse(const K& k, V hh, V ll, V ss, V& r, V& g, V& b) {
  V hue = hh * k(360.0f), l = ll, s = ss;
  if constexpr (!R::kFloat) {
    hue = hh * k(R::kInvHue);
    l = ll * k(R::kUnit);
    s = ss * k(R::kUnit);
  }
  const V m2 = k.If(l <= k(0.5f), l + l * s, l + s - l * s);
  const V m1 = k(2.0f) * l - m2;
  const V d = m2 - m1;
  // Integer hues lie in 0..360 (255 * 1.4117647 and 65535 * 0.005493248 are
  // 360.0 in float): only R can pass 360 and only B fall below 0, so the
  // wrap tests that could never fire are left out there.
  constexpr bool kAny = R::kFloat;
  auto value = [&](V x, auto above, auto below) {
    if constexpr (decltype(above)::value) x = k.If(x > k(360.0f), x - k(360.0f), x);
    if constexpr (decltype(below)::value) x = k.If(x < k(0.0f), x + k(360.0f), x);
    const auto rising = x < k(60.0f);
    const V t = m1 + d * k.If(rising, x, k(240.0f) - x) * k(kHlsSixtieth);
    return k.If(rising, t, k.If(x < k(180.0f), m2, k.If(x < k(240.0f), t, m1)));
  };
  using Yes = std::true_type;
  using Any = std::bool_constant<kAny>;
  const auto gray = ss == k(0.0f);
  r = k.If(gray, l, value(hue + k(120.0f), Yes(), Any()));
  g = k.If(gray, l, value(hue, Any(), Any()));
  b = k.If(gray, l, value(hue - k(120.0f), Any(), Yes()));
  if constexpr (!R::kFloat) {
    r = r * k(R::kMax);
    g = g * k(R::kMax);
    b = b * k(R::kMax);
  }
}

#if ZYL_HLS_SIMD
template <class DF>
struct HlsVectorK {
  using V = hn::Vec<DF>;
  using M = hn::Mask<DF>;
  DF d;
  V operator()(float c) const { return hn::Set(d, c); }
  static V Max(V a, V b) { return hn::Max(a, b); }
  static V Min(V a, V b) { return hn::Min(a, b); }
  static V If(M m, V a, V b) { return hn::IfThenElse(m, a, b); }
  static V Rcp(V x) { return Rcp12(x); }
};

#endif  // ZYL_HLS_SIMD

// -------------------------------------------------------------- one pixel --

template <class T>
HWY_INLINE float HlsIn(T v) {
  if constexpr (HlsRange<T>::kFloat) {
    return v;
  } else {
    return static_cast<float>(static_cast<int32_t>(v) + HlsRange<T>::kBias);
  }
}

// Codes 0..65551 only: 1.5 * 2^23 added and taken away rounds by the mode,
// which the entry holds at nearest-even, like the vector conversion.
template <class T, bool kTrunc>
HWY_INLINE T HlsOut(float f) {
  if constexpr (HlsRange<T>::kFloat) {
    return f;
  } else {
    constexpr float kRounder = 12582912.0f;
    int32_t code = static_cast<int32_t>(kTrunc ? f : (f + kRounder) - kRounder);
    if (code < 0) code = 0;
    if (code > HlsRange<T>::kCodeMax) code = HlsRange<T>::kCodeMax;
    return static_cast<T>(code - HlsRange<T>::kBias);
  }
}

template <class T, bool kForward, bool kBgr>
struct HlsOp {
  using R = HlsRange<T>;

  template <HlsMode kMode>
  void Pixel(const T in[4], T out[4]) const {
    const HlsScalarK k;
    const float c0 = HlsIn(in[0]), c1 = HlsIn(in[1]), c2 = HlsIn(in[2]);
    float o[3];
    if constexpr (kForward) {
      const float r = kBgr ? c2 : c0, b = kBgr ? c0 : c2;
      if constexpr (R::kFloat) {
        HlsForward32f(k, r, c1, b, o[0], o[1], o[2]);
      } else {
        HlsForwardInt<R, kMode != kHlsGroup>(k, r, c1, b, o[0], o[1], o[2]);
      }
    } else {
      float r, g, b;
      HlsInverse<R>(k, c0, c1, c2, r, g, b);
      o[0] = kBgr ? b : r;
      o[1] = g;
      o[2] = kBgr ? r : b;
    }
    constexpr bool kTrunc = !kForward || kMode == kHlsTailTrunc;
    for (int c = 0; c < 3; ++c) out[c] = HlsOut<T, kTrunc>(o[c]);
  }

#if ZYL_HLS_SIMD
  // Group arithmetic on float vectors; integer results still to convert
  // (forward rounds, inverse truncates).
  static constexpr bool kTruncVec = !kForward;

  template <class DF, class VF>
  HWY_INLINE void Vec(DF df, VF c0, VF c1, VF c2, VF& o0, VF& o1, VF& o2) const {
    const HlsVectorK<DF> k{df};
    if constexpr (kForward) {
      const VF r = kBgr ? c2 : c0, b = kBgr ? c0 : c2;
      if constexpr (R::kFloat) {
        HlsForward32f(k, r, c1, b, o0, o1, o2);
      } else {
        HlsForwardInt<R, false>(k, r, c1, b, o0, o1, o2);
      }
    } else {
      VF r, g, b;
      HlsInverse<R>(k, c0, c1, c2, r, g, b);
      o0 = kBgr ? b : r;
      o1 = g;
      o2 = kBgr ? r : b;
    }
  }
#endif
};

template <class SL, class DL, HlsMode kMode, class Op, class T>
HWY_INLINE void HlsPixelAt(const Op& op, const T* const* src, T* const* dst, ptrdiff_t x) {
  T c[4] = {}, o[4];
  LoadPixel<SL>(src, x, c);
  op.template Pixel<kMode>(c, o);
  o[3] = c[3];
  StorePixel<DL>(dst, x, o);
}

// ------------------------------------------------------------- vectors --

#if ZYL_HLS_SIMD

// Rows that touch interleaved pixels stay at 256 bits: interleaved loads and
// stores shuffle across blocks, which costs more than wider arithmetic gains.
template <class T, class SL, class DL>
using HlsTag = std::conditional_t<SL::kPlanes == 1 || DL::kPlanes == 1,
                                  hn::CappedTag<T, 32 / sizeof(T)>, hn::ScalableTag<T>>;

template <class Op, class DF, class VF>
HWY_INLINE hn::Vec<hn::RebindToSigned<DF>> HlsToInt(DF df, VF v) {
  // Forward rounds by the mode (held at nearest-even), inverse truncates.
  if constexpr (Op::kTruncVec) return hn::ConvertTo(hn::RebindToSigned<DF>(), v);
  (void)df;
  return hn::NearestInt(v);
}

// One vector of pixels at x: channels widened to float (8-bit: four quarter
// vectors, 16-bit: two halves), the group arithmetic, saturating packs.
template <class SL, class DL, class Op, class D>
HWY_INLINE void HlsBlock(D d, const hn::TFromD<D>* const* src, hn::TFromD<D>* const* dst,
                         ptrdiff_t x) {
  using T = hn::TFromD<D>;
  const Op op;
  hn::Vec<D> c[4] = {hn::Zero(d), hn::Zero(d), hn::Zero(d), hn::Zero(d)}, out[3];
  LoadPixels<SL>(d, src, x, c[0], c[1], c[2], c[3]);
  if constexpr (std::is_same_v<T, float>) {
    op.Vec(d, c[0], c[1], c[2], out[0], out[1], out[2]);
  } else {
    const hn::Repartition<float, D> df;
    const hn::Repartition<int32_t, D> di;
    const hn::Repartition<uint32_t, D> du32;
    const hn::Repartition<uint16_t, D> du16;
    using VF = hn::Vec<decltype(df)>;
    using VI = hn::Vec<decltype(di)>;
    constexpr int kParts = sizeof(T) == 1 ? 4 : 2;
    const auto z16 = hn::Zero(du16);
    // 16s codes flip their top bit: code + 32768 on the way in, - 32768 out.
    const auto flip = hn::Set(du16, std::is_signed_v<T> ? uint16_t{0x8000} : uint16_t{0});
    auto widen = [&](hn::Vec<D> v, VF(&f)[kParts]) {
      hn::Vec<decltype(du16)> w[2];
      if constexpr (sizeof(T) == 1) {
        w[0] = hn::ZipLower(du16, v, hn::Zero(d));
        w[1] = hn::ZipUpper(du16, v, hn::Zero(d));
      } else {
        w[0] = hn::Xor(hn::BitCast(du16, v), flip);
      }
      for (int i = 0; i < kParts / 2; ++i) {
        f[2 * i] = hn::ConvertTo(df, hn::BitCast(di, hn::ZipLower(du32, w[i], z16)));
        f[2 * i + 1] = hn::ConvertTo(df, hn::BitCast(di, hn::ZipUpper(du32, w[i], z16)));
      }
    };
    VF f[3][kParts];
    for (int ch = 0; ch < 3; ++ch) widen(c[ch], f[ch]);
    VI o[3][kParts];
    for (int q = 0; q < kParts; ++q) {
      VF r0, r1, r2;
      op.Vec(df, f[0][q], f[1][q], f[2][q], r0, r1, r2);
      o[0][q] = HlsToInt<Op>(df, r0);
      o[1][q] = HlsToInt<Op>(df, r1);
      o[2][q] = HlsToInt<Op>(df, r2);
    }
    for (int ch = 0; ch < 3; ++ch) {
      if constexpr (sizeof(T) == 1) {
        out[ch] = Narrow8(d, Narrow32(di, o[ch][0], o[ch][1]), Narrow32(di, o[ch][2], o[ch][3]));
      } else {
        out[ch] = hn::BitCast(d, hn::Xor(Narrow32U(di, o[ch][0], o[ch][1]), flip));
      }
    }
  }
  StorePixels<DL>(d, dst, x, out[0], out[1], out[2], c[3]);
}

// The last group pixels of a row that do not fill a vector: through a copy,
// so they still take the group arithmetic and nothing outside the row is
// touched. The destination is copied in too, for the alpha an AC4 store
// reads back; unused lanes hold zeros.
template <class SL, class DL, class Op, class D>
HWY_INLINE void HlsPartial(D d, const hn::TFromD<D>* const* src, hn::TFromD<D>* const* dst,
                           ptrdiff_t x, ptrdiff_t count) {
  using T = hn::TFromD<D>;
  constexpr size_t kCap = 4 * HWY_MAX_BYTES / sizeof(T);
  HWY_ALIGN T sbuf[4][kCap];
  HWY_ALIGN T dbuf[4][kCap];
  std::memset(sbuf, 0, sizeof(sbuf));
  std::memset(dbuf, 0, sizeof(dbuf));
  const T* sp[4];
  T* dp[4];
  const size_t sbytes = static_cast<size_t>(count) * SL::kStride * sizeof(T);
  const size_t dbytes = static_cast<size_t>(count) * DL::kStride * sizeof(T);
  for (int p = 0; p < SL::kPlanes; ++p) {
    std::memcpy(sbuf[p], src[p] + x * SL::kStride, sbytes);
    sp[p] = sbuf[p];
  }
  for (int p = 0; p < DL::kPlanes; ++p) {
    std::memcpy(dbuf[p], dst[p] + x * DL::kStride, dbytes);
    dp[p] = dbuf[p];
  }
  HlsBlock<SL, DL, Op>(d, sp, dp, 0);
  for (int p = 0; p < DL::kPlanes; ++p) std::memcpy(dst[p] + x * DL::kStride, dbuf[p], dbytes);
}

#endif  // ZYL_HLS_SIMD

// ------------------------------------------------------------------- rows --

// One row. kGroup: pixels per group (8, 4; 1 where body and tail agree);
// kTailTrunc: the tail truncates rather than rounds.
template <class SL, class DL, class T, bool kForward, bool kBgr, int kGroup, bool kTailTrunc>
HWY_NOINLINE void HlsRow(const T* const* src, T* const* dst, ptrdiff_t width) {
  using Op = HlsOp<T, kForward, kBgr>;
  const Op op;
  const ptrdiff_t groups = width & ~static_cast<ptrdiff_t>(kGroup - 1);
  ptrdiff_t x = 0;
#if ZYL_HLS_SIMD
  const HlsTag<T, SL, DL> d;
  const ptrdiff_t n = static_cast<ptrdiff_t>(hn::Lanes(d));
  for (; x + n <= groups; x += n) HlsBlock<SL, DL, Op>(d, src, dst, x);
  if (x < groups) {
    HlsPartial<SL, DL, Op>(d, src, dst, x, groups - x);
    x = groups;
  }
#endif
  for (; x < groups; ++x) HlsPixelAt<SL, DL, kHlsGroup>(op, src, dst, x);
  constexpr HlsMode kTail = kTailTrunc ? kHlsTailTrunc : kHlsTailRound;
  for (; x < width; ++x) HlsPixelAt<SL, DL, kTail>(op, src, dst, x);
}

}  // namespace HWY_NAMESPACE
}  // namespace zyl
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zyl {
namespace {

// C3R and AC4R members: no step check. 16u/16s/32f steps count whole
// elements: the arithmetic shift drops an odd byte remainder.
template <class L, class T, bool kForward, bool kBgr, int kGroup, bool kTailTrunc>
ZylStatus HlsPixels(const T* src, int src_step, T* dst, int dst_step, ZylSize roi) {
  return Convert444Float<L, L, !std::is_same_v<T, Zyl32f>>(
      src, WholeElementStep<T>(src_step), dst, WholeElementStep<T>(dst_step), roi,
      ZYL_DISPATCH(HlsRow<L, L, T, kForward, kBgr, kGroup, kTailTrunc>));
}

// Planar and four-plane BGR members: every pointer and plane pointer as one
// test, then the steps, then the size.
template <class SL, class DL, bool kForward, class SP, class DP>
ZylStatus HlsPlanes(SP src, int src_step, DP dst, int dst_step, ZylSize roi) {
  if (AnyNull(src, dst) || SidePlanesNull<SL>(src, SL::kPlanes) ||
      SidePlanesNull<DL>(dst, DL::kPlanes)) {
    return zylStsNullPtrErr;
  }
  if (src_step < 1 || dst_step < 1) return zylStsStepErr;
  if (BadSize(roi)) return zylStsSizeErr;
  const NearestRounding nearest;
  WalkRows(SideRows<SL>(src, src_step), SideRows<DL>(dst, dst_step), roi,
           ZYL_DISPATCH(HlsRow < SL, DL, Zyl8u, kForward, true, kForward ? 4 : 1, false >));
  return zylStsOk;
}

}  // namespace
}  // namespace zyl

using zyl::AC4;
using zyl::C3;
using zyl::C4;
using zyl::P3;
using zyl::P4;

#define ZYL_HLS_PIXELS(name, T, L, fwd, bgr, group, trunc)                                      \
  ZYL_API ZylStatus name(const T* pSrc, int srcStep, T* pDst, int dstStep, ZylSize roiSize) {   \
    return zyl::HlsPixels<L, T, fwd, bgr, group, trunc>(pSrc, srcStep, pDst, dstStep, roiSize); \
  }
#define ZYL_HLS_PLANES(name, SP, SL, DP, DL, fwd)                                       \
  ZYL_API ZylStatus name(SP pSrc, int srcStep, DP pDst, int dstStep, ZylSize roiSize) { \
    return zyl::HlsPlanes<SL, DL, fwd>(pSrc, srcStep, pDst, dstStep, roiSize);          \
  }

extern "C" {

ZYL_HLS_PIXELS(zyliRGBToHLS_8u_C3R, Zyl8u, C3, true, false, 8, true)
ZYL_HLS_PIXELS(zyliRGBToHLS_8u_AC4R, Zyl8u, AC4, true, false, 4, false)
ZYL_HLS_PIXELS(zyliRGBToHLS_16u_C3R, Zyl16u, C3, true, false, 8, true)
ZYL_HLS_PIXELS(zyliRGBToHLS_16u_AC4R, Zyl16u, AC4, true, false, 4, true)
ZYL_HLS_PIXELS(zyliRGBToHLS_16s_C3R, Zyl16s, C3, true, false, 8, true)
ZYL_HLS_PIXELS(zyliRGBToHLS_16s_AC4R, Zyl16s, AC4, true, false, 4, true)
ZYL_HLS_PIXELS(zyliRGBToHLS_32f_C3R, Zyl32f, C3, true, false, 1, false)
ZYL_HLS_PIXELS(zyliRGBToHLS_32f_AC4R, Zyl32f, AC4, true, false, 1, false)
ZYL_HLS_PIXELS(zyliHLSToRGB_8u_C3R, Zyl8u, C3, false, false, 1, false)
ZYL_HLS_PIXELS(zyliHLSToRGB_8u_AC4R, Zyl8u, AC4, false, false, 1, false)
ZYL_HLS_PIXELS(zyliHLSToRGB_16u_C3R, Zyl16u, C3, false, false, 1, false)
ZYL_HLS_PIXELS(zyliHLSToRGB_16u_AC4R, Zyl16u, AC4, false, false, 1, false)
ZYL_HLS_PIXELS(zyliHLSToRGB_16s_C3R, Zyl16s, C3, false, false, 1, false)
ZYL_HLS_PIXELS(zyliHLSToRGB_16s_AC4R, Zyl16s, AC4, false, false, 1, false)
ZYL_HLS_PIXELS(zyliHLSToRGB_32f_C3R, Zyl32f, C3, false, false, 1, false)
ZYL_HLS_PIXELS(zyliHLSToRGB_32f_AC4R, Zyl32f, AC4, false, false, 1, false)
ZYL_HLS_PIXELS(zyliBGRToHLS_8u_AC4R, Zyl8u, AC4, true, true, 4, false)

ZYL_HLS_PLANES(zyliBGRToHLS_8u_C3P3R, const Zyl8u*, C3, Zyl8u* const*, P3, true)
ZYL_HLS_PLANES(zyliBGRToHLS_8u_P3C3R, const Zyl8u* const*, P3, Zyl8u*, C3, true)
ZYL_HLS_PLANES(zyliBGRToHLS_8u_P3R, const Zyl8u* const*, P3, Zyl8u* const*, P3, true)
ZYL_HLS_PLANES(zyliBGRToHLS_8u_AP4R, const Zyl8u* const*, P4, Zyl8u* const*, P4, true)
ZYL_HLS_PLANES(zyliBGRToHLS_8u_AP4C4R, const Zyl8u* const*, P4, Zyl8u*, C4, true)
ZYL_HLS_PLANES(zyliBGRToHLS_8u_AC4P4R, const Zyl8u*, C4, Zyl8u* const*, P4, true)
ZYL_HLS_PLANES(zyliHLSToBGR_8u_C3P3R, const Zyl8u*, C3, Zyl8u* const*, P3, false)
ZYL_HLS_PLANES(zyliHLSToBGR_8u_P3C3R, const Zyl8u* const*, P3, Zyl8u*, C3, false)
ZYL_HLS_PLANES(zyliHLSToBGR_8u_P3R, const Zyl8u* const*, P3, Zyl8u* const*, P3, false)
ZYL_HLS_PLANES(zyliHLSToBGR_8u_AP4R, const Zyl8u* const*, P4, Zyl8u* const*, P4, false)
ZYL_HLS_PLANES(zyliHLSToBGR_8u_AP4C4R, const Zyl8u* const*, P4, Zyl8u*, C4, false)
ZYL_HLS_PLANES(zyliHLSToBGR_8u_AC4P4R, const Zyl8u*, C4, Zyl8u* const*, P4, false)

}  // extern "C"

#undef ZYL_HLS_PIXELS
#undef ZYL_HLS_PLANES
#endif  // HWY_ONCE
