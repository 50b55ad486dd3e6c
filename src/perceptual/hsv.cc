// RGB <-> HSV (hue, saturation, value), 8u and 16u, C3 and AC4, in single
// precision. H, S, V take the places of R, G, B.
//
// 8u forward: hue in sixths of a turn times 42.5, S and hue from the
// processor's 12-bit approximate reciprocals of max and delta, unrefined. A
// row converts its first width & ~7 pixels (C3) or width & ~3 (AC4) as groups
// and the rest one by one, and the two settle a tie for the maximum
// differently, by design: groups take red, then blue, then green; the
// per-pixel tail makes the three tests in turn and a later match replaces an
// earlier one (blue, then green, then red). At a tie the formulas agree only
// up to the reciprocal's error e (delta * q = 1 + e): yellow codes
// 42.5 (1 + e) in a group and 42.5 (1 - e) in the tail, i.e. 43 and 42 or 42
// and 43 unless e is 0; magenta 212.5 - 42.5 e against 212.5 + 42.5 e. Cyan
// takes blue in both.
//
// 16u forward: exact divisions, tail precedence everywhere, and "integer part
// of x + 0.5" (truncation), so body and tail agree.
//
// Choices where the definition is silent (one line each):
// - every entry holds round-to-nearest-even for the call: conversions round
//   by it and the float operations of 16u (which truncate) no longer depend
//   on the caller's mode either;
// - operation order is left to right as written: (Rcp12(max) * delta) * 255,
//   (a * q - b * q) + 2, 0.5f + (65535.0f * delta) / max,
//   0.5f + (65535.0f * h) / 6.0f, (H * 0.016666668f) * 1.4117647f for 8u and
//   (H * 0.005493248f) * 0.016666668f for 16u, V * (S * scale),
//   (V - chroma) + part;
// - the 16u inverse takes hue 65535 as 0, as 8u takes 255 (65535 would
//   otherwise land in a seventh sector, 360 degrees);
// - results are saturated to the element's range (only ever a tiny negative
//   V - chroma, which rounds to 0 anyway);
// - 16u steps: bytes turned into elements by an arithmetic shift (>> 1), so
//   an odd byte step loses its remainder.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "src/perceptual/hsv.cc"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "src/core/dispatch.h"
#include "src/core/frame.h"
#include "src/core/layout.h"
#include "src/core/map3-inl.h"
#include "src/core/rounding.h"
#include "src/perceptual/rcp12-inl.h"
#include "src/perceptual/rcp12.h"

#ifndef ZYL_PERCEPTUAL_HSV_ONCE_
#define ZYL_PERCEPTUAL_HSV_ONCE_
namespace zyl {

constexpr float kHsvSixthCode8 = 42.5f;  // 255 / 6: one sixth of a turn in 8u hue codes
constexpr float kHsvCode8 = 255.0f;
constexpr float kHsvCode16 = 65535.0f;
constexpr float kHsvEpsilon = 1.1920929e-7f;  // single-precision epsilon
constexpr float kHsvInvSixty = 0.016666668f;  // 1/60: degrees to sixths

// The inverse per element type: hue code to sixths as (H * kHueA) * kHueB,
// S to 0..1, and the hue code that means 0.
template <class T>
struct HsvInverse;
template <>
struct HsvInverse<uint8_t> {
  static constexpr float kHueA = kHsvInvSixty, kHueB = 1.4117647f;  // 360/255
  static constexpr float kSat = 0.003921569f;                       // 1/255
  static constexpr int kHueWrap = 255;
};
template <>
struct HsvInverse<uint16_t> {
  static constexpr float kHueA = 0.005493248f, kHueB = kHsvInvSixty;  // 360/65535
  static constexpr float kSat = 1.5259022e-5f;                        // 1/65535
  static constexpr int kHueWrap = 65535;
};

// Rounds by the current mode, which the entries hold at nearest-even (the
// vector NearestInt does the same): adding and taking away 1.5 * 2^23 leaves
// an integer, exact for |v| < 2^22.
inline int32_t HsvRound(float v) {
  constexpr float kRounder = 12582912.0f;
  return static_cast<int32_t>((v + kRounder) - kRounder);
}

template <class T>
inline T HsvSaturate(int32_t v) {
  return static_cast<T>(std::min<int32_t>(std::max<int32_t>(v, 0), (1 << (8 * sizeof(T))) - 1));
}

// ------------------------------------------------------------ per pixel --

// 8u forward. kGroup: the precedence of the groups (red, blue, green),
// else that of the tail (blue, green, red). Both are kept on purpose.
template <bool kGroup>
inline void RgbToHsv8Pixel(const uint8_t* in, uint8_t* out) {
  const float r = in[0], g = in[1], b = in[2];
  const float mx = std::max(std::max(r, g), b), mn = std::min(std::min(r, g), b);
  const float delta = mx - mn;
  int32_t h = 0, s = 0;
  if (mx != 0.0f && delta != 0.0f) {
    s = HsvRound((Rcp12(mx) * delta) * kHsvCode8);
    const float q = Rcp12(delta);
    const float hr = (mx - b) * q - (mx - g) * q;
    const float hg = ((mx - r) * q - (mx - b) * q) + 2.0f;
    const float hb = ((mx - g) * q - (mx - r) * q) + 4.0f;
    float hue = 0.0f;  // max is one of the three: a test always matches
    if constexpr (kGroup) {
      hue = r == mx ? hr : (b == mx ? hb : hg);
    } else {
      if (r == mx) hue = hr;
      if (g == mx) hue = hg;
      if (b == mx) hue = hb;
    }
    float code = hue * kHsvSixthCode8;
    if (code < 0.0f) code = code + kHsvCode8;
    h = HsvRound(code);
  }
  out[0] = HsvSaturate<uint8_t>(h);
  out[1] = HsvSaturate<uint8_t>(s);
  out[2] = static_cast<uint8_t>(mx);
}

// 16u forward: exact divisions; the sequence of tests lets blue, then green
// override. No rounding term beyond the defined + 0.5: truncation is part of
// the result.
inline void RgbToHsv16Pixel(const uint16_t* in, uint16_t* out) {
  const float r = in[0], g = in[1], b = in[2];
  const float mx = std::max(std::max(r, g), b), mn = std::min(std::min(r, g), b);
  const float delta = mx - mn;
  int32_t h = 0, s = 0;
  if (mx != 0.0f && delta != 0.0f) {
    s = static_cast<int32_t>(0.5f + (kHsvCode16 * delta) / mx);
    const float q = 1.0f / delta;
    float hue = 0.0f;
    if (r == mx) hue = (mx - b) * q - (mx - g) * q;
    if (g == mx) hue = ((mx - r) * q - (mx - b) * q) + 2.0f;
    if (b == mx) hue = ((mx - g) * q - (mx - r) * q) + 4.0f;
    if (hue + kHsvEpsilon < 0.0f) hue = hue + 6.0f;
    h = static_cast<int32_t>(0.5f + (kHsvCode16 * hue) / 6.0f);
  }
  out[0] = HsvSaturate<uint16_t>(h);
  out[1] = HsvSaturate<uint16_t>(s);
  out[2] = static_cast<uint16_t>(mx);
}

// The inverse, 8u and 16u.
template <class T>
inline void HsvToRgbPixel(const T* in, T* out) {
  using K = HsvInverse<T>;
  const float v = in[2];
  if (in[1] == 0) {
    out[0] = out[1] = out[2] = in[2];
    return;
  }
  const float hue = in[0] == K::kHueWrap ? 0.0f : static_cast<float>(in[0]);
  const float sixths = (hue * K::kHueA) * K::kHueB;
  const int sector = static_cast<int>(sixths);
  const float f = sixths - static_cast<float>(sector);
  const float chroma = v * (static_cast<float>(in[1]) * K::kSat);
  const float part = f * chroma;
  const float lo = v - chroma, rise = lo + part, fall = v - part;
  // R, G, B per sector; the last row also takes anything above 5, as the
  // vector form does (the hue wrap keeps sectors below 6).
  const float rgb[6][3] = {{v, rise, lo}, {fall, v, lo}, {lo, v, rise},
                           {lo, fall, v}, {rise, lo, v}, {v, lo, fall}};
  const int row = std::min(sector, 5);
  for (int c = 0; c < 3; ++c) out[c] = HsvSaturate<T>(HsvRound(rgb[row][c]));
}

// One pixel of a row, copied in and out bytewise: the caller's 16u pointers
// need not be 2-byte aligned.
template <class T, bool kToHsv, bool kGroup>
inline void HsvPixel(const T* src, T* dst) {
  T in[3], out[3];
  std::memcpy(in, src, sizeof in);
  if constexpr (!kToHsv) {
    HsvToRgbPixel<T>(in, out);
  } else if constexpr (sizeof(T) == 1) {
    RgbToHsv8Pixel<kGroup>(in, out);
  } else {
    RgbToHsv16Pixel(in, out);
  }
  std::memcpy(dst, out, sizeof out);
}

}  // namespace zyl
#endif  // ZYL_PERCEPTUAL_HSV_ONCE_

HWY_BEFORE_NAMESPACE();
namespace zyl {
namespace HWY_NAMESPACE {

#if ZYL_SIMD

// ------------------------------------------------ widening and narrowing --
//
// Integer vectors to float lanes and back. On x86 both directions stay inside
// 128-bit blocks (unpack with zero, then pack with saturation), which puts
// the lanes back in order without a cross-block permute; elsewhere promote
// and demote by halves.
#if HWY_ARCH_X86
template <class D16>
HWY_INLINE void WidenLanes(D16 d16, hn::Vec<D16> v, hn::Vec<hn::RepartitionToWide<D16>>& lo,
                           hn::Vec<hn::RepartitionToWide<D16>>& hi) {
  const hn::RepartitionToWide<D16> d32;
  lo = hn::ZipLower(d32, v, hn::Zero(d16));
  hi = hn::ZipUpper(d32, v, hn::Zero(d16));
}
#else
template <class D16>
HWY_INLINE void WidenLanes(D16 d16, hn::Vec<D16> v, hn::Vec<hn::RepartitionToWide<D16>>& lo,
                           hn::Vec<hn::RepartitionToWide<D16>>& hi) {
  const hn::RepartitionToWide<D16> d32;
  const hn::Half<D16> dh;
  lo = hn::PromoteTo(d32, hn::LowerHalf(dh, v));
  hi = hn::PromoteTo(d32, hn::UpperHalf(dh, v));
}
#endif

// Bytes to four float vectors; NarrowU8 is the inverse, saturating to 0..255.
template <class D8, class VF = hn::Vec<hn::Repartition<float, D8>>>
HWY_INLINE void WidenU8(D8 d8, hn::Vec<D8> v, VF f[4]) {
  const hn::Repartition<int16_t, D8> d16;
  const hn::Repartition<int32_t, D8> d32;
  const hn::Repartition<float, D8> df;
  hn::Vec<decltype(d16)> w[2];
  Widen8(d8, v, w[0], w[1]);
  for (int i = 0; i < 2; ++i) {
    hn::Vec<decltype(d32)> lo, hi;
    WidenLanes(d16, w[i], lo, hi);
    f[2 * i] = hn::ConvertTo(df, lo);
    f[2 * i + 1] = hn::ConvertTo(df, hi);
  }
}
template <class D8, class VI>
HWY_INLINE hn::Vec<D8> NarrowU8(D8 d8, const VI i[4]) {
  const hn::DFromV<VI> d32;
  return Narrow8(d8, Narrow32(d32, i[0], i[1]), Narrow32(d32, i[2], i[3]));
}

// 16-bit codes to two float vectors; NarrowU16 saturates to 0..65535.
template <class D16, class VF = hn::Vec<hn::Repartition<float, D16>>>
HWY_INLINE void WidenU16(D16 d16, hn::Vec<D16> v, VF f[2]) {
  const hn::Repartition<int32_t, D16> di;
  const hn::Repartition<float, D16> df;
  hn::Vec<hn::RepartitionToWide<D16>> lo, hi;
  WidenLanes(d16, v, lo, hi);
  f[0] = hn::ConvertTo(df, hn::BitCast(di, lo));
  f[1] = hn::ConvertTo(df, hn::BitCast(di, hi));
}
template <class D16, class VI>
HWY_INLINE hn::Vec<D16> NarrowU16(D16 /*d16*/, const VI i[2]) {
  return Narrow32U(hn::DFromV<VI>(), i[0], i[1]);
}

// ----------------------------------------------------------- float lanes --

// The 8u group arithmetic: as RgbToHsv8Pixel<true>. Gray lanes (which include
// black) have delta 0 and infinite reciprocals; their NaNs are replaced by 0
// before the conversion.
template <class DF, class VF = hn::Vec<DF>, class VI = hn::Vec<hn::RebindToSigned<DF>>>
HWY_INLINE void HueSat8(DF df, VF r, VF g, VF b, VI& h, VI& s) {
  const VF mx = hn::Max(hn::Max(r, g), b);
  const VF delta = hn::Sub(mx, hn::Min(hn::Min(r, g), b));
  const auto gray = hn::Eq(delta, hn::Zero(df));
  s = hn::NearestInt(
      hn::IfThenZeroElse(gray, hn::Mul(hn::Mul(Rcp12(mx), delta), hn::Set(df, kHsvCode8))));
  const VF q = Rcp12(delta);
  const VF dr = hn::Mul(hn::Sub(mx, r), q), dg = hn::Mul(hn::Sub(mx, g), q);
  const VF db = hn::Mul(hn::Sub(mx, b), q);
  const VF hr = hn::Sub(db, dg);
  const VF hg = hn::Add(hn::Sub(dr, db), hn::Set(df, 2.0f));
  const VF hb = hn::Add(hn::Sub(dg, dr), hn::Set(df, 4.0f));
  // Groups: red first, blue only where red is not the maximum, then green.
  const VF hue = hn::IfThenElse(hn::Eq(r, mx), hr, hn::IfThenElse(hn::Eq(b, mx), hb, hg));
  VF code = hn::Mul(hue, hn::Set(df, kHsvSixthCode8));
  code = hn::IfThenElse(hn::Lt(code, hn::Zero(df)), hn::Add(code, hn::Set(df, kHsvCode8)), code);
  h = hn::NearestInt(hn::IfThenZeroElse(gray, code));
}

// 16u: as RgbToHsv16Pixel (blue, then green, then red).
template <class DF, class VF = hn::Vec<DF>, class VI = hn::Vec<hn::RebindToSigned<DF>>>
HWY_INLINE void HueSat16(DF df, VF r, VF g, VF b, VI& h, VI& s) {
  const hn::RebindToSigned<DF> di;
  const VF mx = hn::Max(hn::Max(r, g), b);
  const VF delta = hn::Sub(mx, hn::Min(hn::Min(r, g), b));
  const auto gray = hn::Eq(delta, hn::Zero(df));
  const VF half = hn::Set(df, 0.5f), code = hn::Set(df, kHsvCode16);
  s = hn::ConvertTo(di, hn::IfThenZeroElse(gray, hn::Add(half, hn::Div(hn::Mul(code, delta), mx))));
  const VF q = hn::Div(hn::Set(df, 1.0f), delta);
  const VF dr = hn::Mul(hn::Sub(mx, r), q), dg = hn::Mul(hn::Sub(mx, g), q);
  const VF db = hn::Mul(hn::Sub(mx, b), q);
  const VF hr = hn::Sub(db, dg);
  const VF hg = hn::Add(hn::Sub(dr, db), hn::Set(df, 2.0f));
  const VF hb = hn::Add(hn::Sub(dg, dr), hn::Set(df, 4.0f));
  VF hue = hn::IfThenElse(hn::Eq(b, mx), hb, hn::IfThenElse(hn::Eq(g, mx), hg, hr));
  hue = hn::IfThenElse(hn::Lt(hn::Add(hue, hn::Set(df, kHsvEpsilon)), hn::Zero(df)),
                       hn::Add(hue, hn::Set(df, 6.0f)), hue);
  h = hn::ConvertTo(
      di, hn::IfThenZeroElse(gray, hn::Add(half, hn::Div(hn::Mul(code, hue), hn::Set(df, 6.0f)))));
}

// The inverse, as HsvToRgbPixel. S == 0 needs no lane of its own: chroma and
// part are then exactly 0 and every candidate is V.
template <class T, class DF, class VF = hn::Vec<DF>, class VI = hn::Vec<hn::RebindToSigned<DF>>>
HWY_INLINE void RgbFromHsv(DF df, VF h, VF s, VF v, VI& r, VI& g, VI& b) {
  using K = HsvInverse<T>;
  const hn::RebindToSigned<DF> di;
  h = hn::IfThenZeroElse(hn::Eq(h, hn::Set(df, static_cast<float>(K::kHueWrap))), h);
  const VF sixths = hn::Mul(hn::Mul(h, hn::Set(df, K::kHueA)), hn::Set(df, K::kHueB));
  const VF sector = hn::ConvertTo(df, hn::ConvertTo(di, sixths));  // truncation: sixths >= 0
  const VF f = hn::Sub(sixths, sector);
  const VF chroma = hn::Mul(v, hn::Mul(s, hn::Set(df, K::kSat)));
  const VF part = hn::Mul(f, chroma);
  const VF lo = hn::Sub(v, chroma), rise = hn::Add(lo, part), fall = hn::Sub(v, part);
  const auto below1 = hn::Lt(sector, hn::Set(df, 1.0f)), below2 = hn::Lt(sector, hn::Set(df, 2.0f));
  const auto below3 = hn::Lt(sector, hn::Set(df, 3.0f)), below4 = hn::Lt(sector, hn::Set(df, 4.0f));
  const auto below5 = hn::Lt(sector, hn::Set(df, 5.0f));
  const VF rr = hn::IfThenElse(
      below1, v,
      hn::IfThenElse(below2, fall, hn::IfThenElse(below4, lo, hn::IfThenElse(below5, rise, v))));
  const VF gg =
      hn::IfThenElse(below1, rise, hn::IfThenElse(below3, v, hn::IfThenElse(below4, fall, lo)));
  const VF bb =
      hn::IfThenElse(below2, lo, hn::IfThenElse(below3, rise, hn::IfThenElse(below5, v, fall)));
  r = hn::NearestInt(rr);
  g = hn::NearestInt(gg);
  b = hn::NearestInt(bb);
}

// ---------------------------------------------------------------- blocks --

// One vector of pixels from x on: 32 (16 on 128-bit targets) for 8u, half
// as many for 16u. Interleaved loads shuffle across blocks, so 512-bit
// targets stay at 256 bits, like the other three-channel families.
template <class T>
using HsvTag = hn::CappedTag<T, 32 / sizeof(T)>;

template <class L, bool kToHsv, class T>
HWY_INLINE void HsvBlock(const T* const* src, T* const* dst, ptrdiff_t x) {
  const HsvTag<T> d;
  const hn::Repartition<float, decltype(d)> df;
  using VF = hn::Vec<decltype(df)>;
  using VI = hn::Vec<hn::RebindToSigned<decltype(df)>>;
  constexpr int kParts = static_cast<int>(4 / sizeof(T));  // float vectors per element vector
  hn::Vec<decltype(d)> c[4], o[3];
  LoadPixels<L>(d, src, x, c[0], c[1], c[2], c[3]);
  VF in[3][kParts];
  VI out[3][kParts];
  for (int ch = 0; ch < 3; ++ch) {
    if constexpr (sizeof(T) == 1) {
      WidenU8(d, c[ch], in[ch]);
    } else {
      WidenU16(d, c[ch], in[ch]);
    }
  }
  for (int i = 0; i < kParts; ++i) {
    if constexpr (!kToHsv) {
      RgbFromHsv<T>(df, in[0][i], in[1][i], in[2][i], out[0][i], out[1][i], out[2][i]);
    } else if constexpr (sizeof(T) == 1) {
      HueSat8(df, in[0][i], in[1][i], in[2][i], out[0][i], out[1][i]);
    } else {
      HueSat16(df, in[0][i], in[1][i], in[2][i], out[0][i], out[1][i]);
    }
  }
  // The forward V is max itself, taken on the integers.
  constexpr int kComputed = kToHsv ? 2 : 3;
  for (int ch = 0; ch < kComputed; ++ch) {
    if constexpr (sizeof(T) == 1) {
      o[ch] = NarrowU8(d, out[ch]);
    } else {
      o[ch] = NarrowU16(d, out[ch]);
    }
  }
  if constexpr (kToHsv) o[2] = hn::Max(hn::Max(c[0], c[1]), c[2]);
  StorePixels<L>(d, dst, x, o[0], o[1], o[2], c[3]);
}

#endif  // ZYL_SIMD

// One row. 8u forward: the first width & ~7 (C3) or width & ~3 (AC4) pixels
// are groups, the rest the per-pixel tail; they differ on ties by design. The
// other members have one arithmetic, so the vector body runs as far as whole
// vectors go and the exact per-pixel function finishes the row.
template <class L, class T, bool kToHsv>
HWY_NOINLINE void HsvRow(const T* const* src, T* const* dst, ptrdiff_t width) {
  constexpr bool kGrouped = kToHsv && sizeof(T) == 1;
  constexpr ptrdiff_t kGroup = L::kStride == 3 ? 8 : 4;
  const ptrdiff_t grouped = kGrouped ? (width & ~(kGroup - 1)) : 0;
  ptrdiff_t x = 0;
#if ZYL_SIMD
  const ptrdiff_t n = static_cast<ptrdiff_t>(hn::Lanes(HsvTag<T>()));
  const ptrdiff_t body = kGrouped ? grouped : width;
  for (; x + n <= body; x += n) HsvBlock<L, kToHsv>(src, dst, x);
  if (kGrouped && x < grouped) {
    // Whole groups short of a vector: one vector through stack copies keeps
    // the group arithmetic (copying the destination keeps AC4 alpha).
    constexpr size_t kMax = 32 * 4;
    T s[kMax] = {}, d[kMax] = {};
    const size_t bytes = static_cast<size_t>(grouped - x) * L::kStride * sizeof(T);
    std::memcpy(s, src[0] + x * L::kStride, bytes);
    std::memcpy(d, dst[0] + x * L::kStride, bytes);
    const T* const s_rows[1] = {s};
    T* const d_rows[1] = {d};
    HsvBlock<L, kToHsv>(s_rows, d_rows, 0);
    std::memcpy(dst[0] + x * L::kStride, d, bytes);
    x = grouped;
  }
#else
  for (; x < grouped; ++x) {
    HsvPixel<T, kToHsv, true>(src[0] + x * L::kStride, dst[0] + x * L::kStride);
  }
#endif
  for (; x < width; ++x) {
    HsvPixel<T, kToHsv, false>(src[0] + x * L::kStride, dst[0] + x * L::kStride);
  }
}

}  // namespace HWY_NAMESPACE
}  // namespace zyl
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zyl {
namespace {

template <class L, class T, bool kToHsv>
ZylStatus Hsv(const T* src, int src_step, T* dst, int dst_step, ZylSize roi) {
  // 16u: an odd byte step drops its last byte.
  return Convert444Float<L, L, true>(src, WholeElementStep<T>(src_step), dst,
                                     WholeElementStep<T>(dst_step), roi,
                                     ZYL_DISPATCH(HsvRow<L, T, kToHsv>));
}

}  // namespace
}  // namespace zyl

using zyl::AC4;
using zyl::C3;

#define ZYL_HSV_EXPORT(name, T, L, to_hsv)                                                    \
  ZYL_API ZylStatus name(const T* pSrc, int srcStep, T* pDst, int dstStep, ZylSize roiSize) { \
    return zyl::Hsv<L, T, to_hsv>(pSrc, srcStep, pDst, dstStep, roiSize);                     \
  }

extern "C" {

ZYL_HSV_EXPORT(zyliRGBToHSV_8u_C3R, Zyl8u, C3, true)
ZYL_HSV_EXPORT(zyliRGBToHSV_8u_AC4R, Zyl8u, AC4, true)
ZYL_HSV_EXPORT(zyliRGBToHSV_16u_C3R, Zyl16u, C3, true)
ZYL_HSV_EXPORT(zyliRGBToHSV_16u_AC4R, Zyl16u, AC4, true)
ZYL_HSV_EXPORT(zyliHSVToRGB_8u_C3R, Zyl8u, C3, false)
ZYL_HSV_EXPORT(zyliHSVToRGB_8u_AC4R, Zyl8u, AC4, false)
ZYL_HSV_EXPORT(zyliHSVToRGB_16u_C3R, Zyl16u, C3, false)
ZYL_HSV_EXPORT(zyliHSVToRGB_16u_AC4R, Zyl16u, AC4, false)

}  // extern "C"

#undef ZYL_HSV_EXPORT
#endif  // HWY_ONCE
