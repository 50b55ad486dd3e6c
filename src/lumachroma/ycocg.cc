// B, G, R pixels (signed 16-bit for SBGR, R, G, B for the 8-bit-plane pair)
// to and from three planes Y, Co, Cg: the plain transform, which halves the
// chroma with rounding shifts, and the lifting scheme (_Rev), whose inverse
// undoes every step exactly.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "src/lumachroma/ycocg.cc"
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

// Target-independent part: the per-pixel definitions, seen once. They are the
// whole row on the one-lane fallback and the tail of every row elsewhere.
#ifndef ZYL_LUMACHROMA_YCOCG_ONCE_
#define ZYL_LUMACHROMA_YCOCG_ONCE_
namespace zyl::ycocg {

// The low 16 bits as a signed value: what a 16-bit plane or pixel keeps.
inline int64_t Wrap16(int64_t v) { return ((v & 0xFFFF) ^ 0x8000) - 0x8000; }

// Each transform is the exact integer definition on B, G, R and Y, Co, Cg,
// and the tag that picks its vector form. kInverseWraps: the inverse is
// defined modulo 2^16, before any clamp to 8 bits, as 16-bit lanes compute it.
struct Plain {
  static constexpr bool kInverseWraps = true;
  static void Forward(int64_t b, int64_t g, int64_t r, int64_t ycocg[3]) {
    ycocg[0] = (r + 2 * g + b + 2) >> 2;
    ycocg[1] = (r - b + 1) >> 1;
    ycocg[2] = (2 * g - r - b + 2) >> 2;
  }
  static void Inverse(int64_t y, int64_t co, int64_t cg, int64_t bgr[3]) {
    bgr[0] = Wrap16(y - co - cg);
    bgr[1] = Wrap16(y + cg);
    bgr[2] = Wrap16(y + co - cg);
  }
};

// The inverse runs exactly (no 16-bit wrap in its definition): 8-bit pixels
// clamp the true values, 16-bit pixels keep their low 16 bits.
struct Lifting {
  static constexpr bool kInverseWraps = false;
  static void Forward(int64_t b, int64_t g, int64_t r, int64_t ycocg[3]) {
    const int64_t co = r - b, t = b + (co >> 1), cg = g - t;
    ycocg[0] = t + (cg >> 1);
    ycocg[1] = co;
    ycocg[2] = cg;
  }
  static void Inverse(int64_t y, int64_t co, int64_t cg, int64_t bgr[3]) {
    const int64_t t = y - (cg >> 1), g = cg + t, b = t - (co >> 1);
    bgr[0] = b;
    bgr[1] = g;
    bgr[2] = b + co;
  }
};

// 8-bit planes, Co and Cg stored plus 128. Every result rounds to nearest
// with ties down (Co = floor((R - B) / 2), Y and Cg add 1, not 2, before >> 2),
// which keeps Co and Cg in -128..127 without a clamp; with the plain inverse
// each channel comes back within one level (R, G never above, B never below),
// exactly for 4243456 of the 2^24 triples (25.29%, measured): one per distinct
// code, the most any inverse can reach.
struct Bytes {
  static constexpr bool kInverseWraps = true;
  static void Forward(int64_t b, int64_t g, int64_t r, int64_t ycocg[3]) {
    ycocg[0] = (r + 2 * g + b + 1) >> 2;
    ycocg[1] = (r - b) >> 1;
    ycocg[2] = (2 * g - r - b + 1) >> 2;
  }
  static void Inverse(int64_t y, int64_t co, int64_t cg, int64_t bgr[3]) {
    Plain::Inverse(y, co, cg, bgr);
  }
};

// A result as element type T stores it: 8-bit values clamp, 16-bit ones wrap,
// 32-bit planes hold every forward result of 16-bit pixels as it is.
template <class T>
inline T Narrow(int64_t v) {
  if constexpr (sizeof(T) == 1) {
    return static_cast<T>(v < 0 ? 0 : v > 255 ? 255 : v);
  } else if constexpr (sizeof(T) == 2) {
    return static_cast<T>(Wrap16(v));
  } else {
    return static_cast<T>(v);
  }
}

// 8-bit planes carry Co and Cg offset into unsigned bytes.
template <class PlaneT>
constexpr int kChromaOffset = sizeof(PlaneT) == 1 ? 128 : 0;

// An odd byte step leaves 16- and 32-bit rows unaligned, which is accepted:
// single elements move through memcpy.
template <class T>
inline T Get(const T* p) {
  T v;
  std::memcpy(&v, p, sizeof v);
  return v;
}
template <class T>
inline void Put(T* p, T v) {
  std::memcpy(p, &v, sizeof v);
}

template <class Tr, class L, bool kRgb, class PixT, class PlaneT>
inline void ForwardPixel(const PixT* const* src, PlaneT* const* dst, ptrdiff_t x) {
  const PixT* p = src[0] + x * L::kStride;
  int64_t o[3];
  Tr::Forward(Get(p + (kRgb ? 2 : 0)), Get(p + 1), Get(p + (kRgb ? 0 : 2)), o);
  Put(dst[0] + x, Narrow<PlaneT>(o[0]));
  Put(dst[1] + x, Narrow<PlaneT>(o[1] + kChromaOffset<PlaneT>));
  Put(dst[2] + x, Narrow<PlaneT>(o[2] + kChromaOffset<PlaneT>));
}

template <class Tr, class L, bool kRgb, class PlaneT, class PixT>
inline void InversePixel(const PlaneT* const* src, PixT* const* dst, ptrdiff_t x) {
  int64_t o[3];
  Tr::Inverse(Get(src[0] + x), Get(src[1] + x) - kChromaOffset<PlaneT>,
              Get(src[2] + x) - kChromaOffset<PlaneT>, o);
  PixT* p = dst[0] + x * L::kStride;
  Put(p + (kRgb ? 2 : 0), Narrow<PixT>(o[0]));
  Put(p + 1, Narrow<PixT>(o[1]));
  Put(p + (kRgb ? 0 : 2), Narrow<PixT>(o[2]));
}

}  // namespace zyl::ycocg
#endif  // ZYL_LUMACHROMA_YCOCG_ONCE_

HWY_BEFORE_NAMESPACE();
namespace zyl {
namespace HWY_NAMESPACE {
namespace ycocg_rows {

#if ZYL_SIMD
namespace hn = hwy::HWY_NAMESPACE;
using ::zyl::ycocg::Bytes;
using ::zyl::ycocg::Lifting;
using ::zyl::ycocg::Plain;

// Lanes of element type T in the lane width of DW, and back the way the
// scalar Narrow stores them (8-bit clamps, 16-bit from 32-bit lanes wraps).
template <class DW, class VT>
HWY_INLINE hn::Vec<DW> Widen(DW dw, VT v) {
  if constexpr (std::is_same_v<VT, hn::Vec<DW>>) {
    return v;
  } else {
    return hn::PromoteTo(dw, v);
  }
}

template <class T, class DW>
HWY_INLINE hn::Vec<hn::Rebind<T, DW>> NarrowTo(DW /*dw*/, hn::Vec<DW> v) {
  if constexpr (std::is_same_v<T, hn::TFromD<DW>>) {
    return v;
  } else if constexpr (sizeof(T) == 1) {
    // Never from 32-bit lanes: Highway 1.0.3's 32-to-8-bit demotion on AVX2
    // and AVX-512 maps values from 32768 up into 0..255 instead of 255.
    static_assert(sizeof(hn::TFromD<DW>) == 2, "8-bit results come from 16-bit lanes");
    return hn::DemoteTo(hn::Rebind<T, DW>(), v);
  } else {
    return hn::DemoteTo(hn::Rebind<T, DW>(), hn::ShiftRight<16>(hn::ShiftLeft<16>(v)));
  }
}

template <class L, bool kRgb, class DW, class T, class V = hn::Vec<DW>>
HWY_INLINE void LoadBgr(DW dw, const T* p, V& b, V& g, V& r) {
  const hn::Rebind<T, DW> dt;
  hn::Vec<decltype(dt)> c0, c1, c2, c3;
  if constexpr (L::kStride == 3) {
    hn::LoadInterleaved3(dt, p, c0, c1, c2);
  } else {
    hn::LoadInterleaved4(dt, p, c0, c1, c2, c3);
  }
  b = Widen(dw, kRgb ? c2 : c0);
  g = Widen(dw, c1);
  r = Widen(dw, kRgb ? c0 : c2);
}

template <class L, bool kRgb, class DW, class T, class V = hn::Vec<DW>>
HWY_INLINE void StoreBgr(DW dw, V b, V g, V r, T* p) {
  const hn::Rebind<T, DW> dt;
  const auto c0 = NarrowTo<T>(dw, kRgb ? r : b), c1 = NarrowTo<T>(dw, g),
             c2 = NarrowTo<T>(dw, kRgb ? b : r);
  if constexpr (L::kStride == 3) {
    hn::StoreInterleaved3(c0, c1, c2, dt, p);
  } else {
    // The fourth channel keeps the caller's values: read, then stored unchanged.
    hn::Vec<decltype(dt)> o0, o1, o2, alpha;
    hn::LoadInterleaved4(dt, p, o0, o1, o2, alpha);
    hn::StoreInterleaved4(c0, c1, c2, alpha, dt, p);
  }
}

// Halved sums and differences without a wider lane: a + b = (a ^ b) +
// 2 (a & b) = (a | b) + (a & b), so these are exact for any signed lanes, and
// a - b = a + ~b + 1. That lets 16-bit pixels use 16-bit lanes, where the
// definition's 17- and 18-bit intermediate sums do not fit.
template <class V>
HWY_INLINE V FloorAvg(V a, V b) {  // floor((a + b) / 2)
  return hn::Add(hn::And(a, b), hn::ShiftRight<1>(hn::Xor(a, b)));
}
template <class V>
HWY_INLINE V CeilAvg(V a, V b) {  // floor((a + b + 1) / 2)
  return hn::Sub(hn::Or(a, b), hn::ShiftRight<1>(hn::Xor(a, b)));
}
template <class V>
HWY_INLINE V FloorHalfDiff(V a, V b) {  // floor((a - b) / 2)
  return CeilAvg(a, hn::Not(b));
}

// Forward forms, s = R + B: (s + 2G + 2) >> 2 = ceil((floor(s/2) + G) / 2);
// (R - B + 1) >> 1 = -floor((B - R) / 2); (2G - s + 2) >> 2 =
// -floor((ceil(s/2) - G) / 2). Only Co and Cg can leave 16 bits, and there a
// lane's Sub or Neg wraps exactly as a 16-bit plane stores them.
template <class V>
HWY_INLINE void Forward(Plain, V b, V g, V r, V& y, V& co, V& cg) {
  y = CeilAvg(FloorAvg(r, b), g);
  co = hn::Neg(FloorHalfDiff(b, r));
  cg = hn::Neg(FloorHalfDiff(CeilAvg(r, b), g));
}

// t lies between B and R and Y between t and G, so both fit the lane.
template <class V>
HWY_INLINE void Forward(Lifting, V b, V g, V r, V& y, V& co, V& cg) {
  const V t = hn::Add(b, FloorHalfDiff(r, b));
  co = hn::Sub(r, b);
  cg = hn::Sub(g, t);
  y = hn::Add(t, FloorHalfDiff(g, t));
}

// 8-bit planes in 8-bit lanes: with the 128 offset each result is a halved
// sum of two bytes, rounded up (AverageRound) or down (one less where the
// sum is odd): Y = floor((ceil(s/2) + G) / 2), Co + 128 = ceil((R + 255 - B)
// / 2), Cg + 128 = ceil((G + 255 - floor(s/2)) / 2).
template <class V>
HWY_INLINE void Forward(Bytes, V b, V g, V r, V& y, V& co, V& cg) {
  const V one = hn::Set(hn::DFromV<V>(), uint8_t{1});
  const V ceil_s = hn::AverageRound(r, b);
  const V floor_s = hn::Sub(ceil_s, hn::And(hn::Xor(r, b), one));
  y = hn::Sub(hn::AverageRound(ceil_s, g), hn::And(hn::Xor(ceil_s, g), one));
  co = hn::AverageRound(r, hn::Not(b));
  cg = hn::AverageRound(g, hn::Not(floor_s));
}

template <class V>
HWY_INLINE void Inverse(Plain, V y, V co, V cg, V& b, V& g, V& r) {
  const V y_cg = hn::Sub(y, cg);
  g = hn::Add(y, cg);
  r = hn::Add(y_cg, co);
  b = hn::Sub(y_cg, co);
}

template <class V>
HWY_INLINE void Inverse(Bytes, V y, V co, V cg, V& b, V& g, V& r) {
  Inverse(Plain(), y, co, cg, b, g, r);
}

// The halvings act on the inputs only, in the lane width they arrive in; the
// sums then wrap the same way modulo 2^16 in 16- or 32-bit lanes.
template <class V>
HWY_INLINE void Inverse(Lifting, V y, V co, V cg, V& b, V& g, V& r) {
  const V t = hn::Sub(y, hn::ShiftRight<1>(cg));
  g = hn::Add(cg, t);
  b = hn::Sub(t, hn::ShiftRight<1>(co));
  r = hn::Add(b, co);
}

// The lifting's inverse for 8-bit pixels in 16-bit lanes. Its exact results
// reach 19 bits, but each is y plus at most two halves of 16-bit inputs
// (|half| <= 16384): G = y + ceil(cg/2), B = t - floor(co/2), R = t +
// ceil(co/2) with t = y - floor(cg/2). Saturating a partial sum to 16 bits
// leaves it at least 32767 from zero, which one more half cannot bring within
// 0..255, so the clamp to 8 bits still sees the right side.
template <class V>
HWY_INLINE void InverseLiftingClamped(V y, V co, V cg, V& b, V& g, V& r) {
  const V half_cg = hn::ShiftRight<1>(cg), half_co = hn::ShiftRight<1>(co);
  const V t = hn::SaturatedSub(y, half_cg);
  g = hn::SaturatedAdd(y, hn::Sub(cg, half_cg));
  b = hn::SaturatedSub(t, half_co);
  r = hn::SaturatedAdd(t, hn::Sub(co, half_co));
}

// 8-bit planes: whole byte vectors through 16-bit lanes, the clamp done by
// the narrowing back (Map8ViaI16).
struct BytesInverse16 {
  template <class D, class V>
  HWY_INLINE void Vec16(D d, V y, V co, V cg, V& b, V& g, V& r) const {
    const V offset = hn::Set(d, int16_t{128});
    Inverse(Plain(), y, hn::Sub(co, offset), hn::Sub(cg, offset), b, g, r);
  }
};

// Interleaved loads and stores shuffle across 128-bit blocks, which costs
// more than wider arithmetic gains: blocks stay at 256 bits.
template <class W>
using RowTag = hn::CappedTag<W, 32 / sizeof(W)>;

#endif  // ZYL_SIMD

template <class Tr, class L, bool kRgb, class PixT, class PlaneT>
HWY_NOINLINE void ForwardRow(const PixT* const* src, PlaneT* const* dst, ptrdiff_t width) {
  ptrdiff_t x = 0;
#if ZYL_SIMD
  // 32-bit planes need 32-bit lanes; 16-bit ones get 16-bit lanes, where all
  // fits or wraps as the plane does; 8-bit planes stay in 8-bit lanes.
  using W = std::conditional_t<sizeof(PlaneT) == 2, int16_t, PlaneT>;
  const RowTag<W> dw;
  const hn::Rebind<PlaneT, decltype(dw)> dp;
  const ptrdiff_t n = static_cast<ptrdiff_t>(hn::Lanes(dw));
  for (; x + n <= width; x += n) {
    hn::Vec<decltype(dw)> b, g, r, y, co, cg;
    LoadBgr<L, kRgb>(dw, src[0] + x * L::kStride, b, g, r);
    Forward(Tr(), b, g, r, y, co, cg);
    hn::StoreU(NarrowTo<PlaneT>(dw, y), dp, dst[0] + x);
    hn::StoreU(NarrowTo<PlaneT>(dw, co), dp, dst[1] + x);
    hn::StoreU(NarrowTo<PlaneT>(dw, cg), dp, dst[2] + x);
  }
#endif
  for (; x < width; ++x) ycocg::ForwardPixel<Tr, L, kRgb>(src, dst, x);
}

template <class Tr, class L, bool kRgb, class PlaneT, class PixT>
HWY_NOINLINE void InverseRow(const PlaneT* const* src, PixT* const* dst, ptrdiff_t width) {
  ptrdiff_t x = 0;
#if ZYL_SIMD
  if constexpr (sizeof(PlaneT) == 1) {
    const RowTag<uint8_t> d8;
    const ptrdiff_t n8 = static_cast<ptrdiff_t>(hn::Lanes(d8));
    for (; x + n8 <= width; x += n8) {
      hn::Vec<decltype(d8)> b, g, r;
      Map8ViaI16(d8, BytesInverse16(), hn::LoadU(d8, src[0] + x), hn::LoadU(d8, src[1] + x),
                 hn::LoadU(d8, src[2] + x), b, g, r);
      StoreBgr<L, kRgb>(d8, b, g, r, dst[0] + x * L::kStride);
    }
  }
  // 32-bit planes need 32-bit lanes; 16-bit lanes compute the rest exactly.
  const RowTag<std::conditional_t<sizeof(PlaneT) == 4, int32_t, int16_t>> dw;
  const hn::Rebind<PlaneT, decltype(dw)> dp;
  const ptrdiff_t n = static_cast<ptrdiff_t>(hn::Lanes(dw));
  const auto offset =
      hn::Set(dw, static_cast<hn::TFromD<decltype(dw)>>(ycocg::kChromaOffset<PlaneT>));
  for (; x + n <= width; x += n) {
    const auto y = Widen(dw, hn::LoadU(dp, src[0] + x));
    const auto co = hn::Sub(Widen(dw, hn::LoadU(dp, src[1] + x)), offset);
    const auto cg = hn::Sub(Widen(dw, hn::LoadU(dp, src[2] + x)), offset);
    hn::Vec<decltype(dw)> b, g, r;
    if constexpr (!Tr::kInverseWraps && sizeof(PixT) == 1) {
      InverseLiftingClamped(y, co, cg, b, g, r);
    } else {
      Inverse(Tr(), y, co, cg, b, g, r);
    }
    StoreBgr<L, kRgb>(dw, b, g, r, dst[0] + x * L::kStride);
  }
#endif
  for (; x < width; ++x) ycocg::InversePixel<Tr, L, kRgb>(src, dst, x);
}

}  // namespace ycocg_rows
}  // namespace HWY_NAMESPACE
}  // namespace zyl
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zyl::ycocg {

// This family tests every pointer, the plane entries included, before the size.
template <class Tr, class L, bool kRgb = false, class PixT, class PlaneT>
ZylStatus ToPlanes(const PixT* src, int src_step, PlaneT* const* dst, int dst_step, ZylSize roi) {
  if (AnyNull(src, dst) || AnyPlaneNull(dst, 3)) return zylStsNullPtrErr;
  if (BadSize(roi)) return zylStsSizeErr;
  WalkRows(Interleaved(src, src_step), Planar<3>(dst, dst_step), roi,
           ZYL_DISPATCH(ycocg_rows::ForwardRow<Tr, L, kRgb, PixT, PlaneT>));
  return zylStsOk;
}

template <class Tr, class L, bool kRgb = false, class PlaneT, class PixT>
ZylStatus FromPlanes(const PlaneT* const* src, int src_step, PixT* dst, int dst_step, ZylSize roi) {
  if (AnyNull(src, dst) || AnyPlaneNull(src, 3)) return zylStsNullPtrErr;
  if (BadSize(roi)) return zylStsSizeErr;
  WalkRows(Planar<3>(src, src_step), Interleaved(dst, dst_step), roi,
           ZYL_DISPATCH(ycocg_rows::InverseRow<Tr, L, kRgb, PlaneT, PixT>));
  return zylStsOk;
}

}  // namespace zyl::ycocg

using zyl::ycocg::FromPlanes;
using zyl::ycocg::ToPlanes;
using Plain = zyl::ycocg::Plain;
using Lifting = zyl::ycocg::Lifting;
using Bytes = zyl::ycocg::Bytes;
// Four-channel sources are never read in their fourth channel, and
// four-channel destinations leave it untouched: both are the AC4 layout.
using C3 = zyl::C3;
using C4 = zyl::AC4;

extern "C" {

ZYL_API ZylStatus zyliBGRToYCoCg_8u16s_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl16s* const pDst[3],
                                             int dstStep, ZylSize roiSize) {
  return ToPlanes<Plain, C3>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliBGRToYCoCg_8u16s_C4P3R(const Zyl8u* pSrc, int srcStep, Zyl16s* const pDst[3],
                                             int dstStep, ZylSize roiSize) {
  return ToPlanes<Plain, C4>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliBGRToYCoCg_Rev_8u16s_C3P3R(const Zyl8u* pSrc, int srcStep,
                                                 Zyl16s* const pDst[3], int dstStep,
                                                 ZylSize roiSize) {
  return ToPlanes<Lifting, C3>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliBGRToYCoCg_Rev_8u16s_C4P3R(const Zyl8u* pSrc, int srcStep,
                                                 Zyl16s* const pDst[3], int dstStep,
                                                 ZylSize roiSize) {
  return ToPlanes<Lifting, C4>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliYCoCgToBGR_16s8u_P3C3R(const Zyl16s* const pSrc[3], int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize) {
  return FromPlanes<Plain, C3>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliYCoCgToBGR_16s8u_P3C4R(const Zyl16s* const pSrc[3], int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize) {
  return FromPlanes<Plain, C4>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliYCoCgToBGR_Rev_16s8u_P3C3R(const Zyl16s* const pSrc[3], int srcStep,
                                                 Zyl8u* pDst, int dstStep, ZylSize roiSize) {
  return FromPlanes<Lifting, C3>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliYCoCgToBGR_Rev_16s8u_P3C4R(const Zyl16s* const pSrc[3], int srcStep,
                                                 Zyl8u* pDst, int dstStep, ZylSize roiSize) {
  return FromPlanes<Lifting, C4>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliSBGRToYCoCg_16s_C3P3R(const Zyl16s* pSrc, int srcStep, Zyl16s* const pDst[3],
                                            int dstStep, ZylSize roiSize) {
  return ToPlanes<Plain, C3>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliSBGRToYCoCg_16s_C4P3R(const Zyl16s* pSrc, int srcStep, Zyl16s* const pDst[3],
                                            int dstStep, ZylSize roiSize) {
  return ToPlanes<Plain, C4>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliSBGRToYCoCg_16s32s_C3P3R(const Zyl16s* pSrc, int srcStep,
                                               Zyl32s* const pDst[3], int dstStep,
                                               ZylSize roiSize) {
  return ToPlanes<Plain, C3>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliSBGRToYCoCg_16s32s_C4P3R(const Zyl16s* pSrc, int srcStep,
                                               Zyl32s* const pDst[3], int dstStep,
                                               ZylSize roiSize) {
  return ToPlanes<Plain, C4>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliSBGRToYCoCg_Rev_16s_C3P3R(const Zyl16s* pSrc, int srcStep,
                                                Zyl16s* const pDst[3], int dstStep,
                                                ZylSize roiSize) {
  return ToPlanes<Lifting, C3>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliSBGRToYCoCg_Rev_16s_C4P3R(const Zyl16s* pSrc, int srcStep,
                                                Zyl16s* const pDst[3], int dstStep,
                                                ZylSize roiSize) {
  return ToPlanes<Lifting, C4>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliSBGRToYCoCg_Rev_16s32s_C3P3R(const Zyl16s* pSrc, int srcStep,
                                                   Zyl32s* const pDst[3], int dstStep,
                                                   ZylSize roiSize) {
  return ToPlanes<Lifting, C3>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliSBGRToYCoCg_Rev_16s32s_C4P3R(const Zyl16s* pSrc, int srcStep,
                                                   Zyl32s* const pDst[3], int dstStep,
                                                   ZylSize roiSize) {
  return ToPlanes<Lifting, C4>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliYCoCgToSBGR_16s_P3C3R(const Zyl16s* const pSrc[3], int srcStep, Zyl16s* pDst,
                                            int dstStep, ZylSize roiSize) {
  return FromPlanes<Plain, C3>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliYCoCgToSBGR_16s_P3C4R(const Zyl16s* const pSrc[3], int srcStep, Zyl16s* pDst,
                                            int dstStep, ZylSize roiSize) {
  return FromPlanes<Plain, C4>(pSrc, srcStep, pDst, dstStep, roiSize);
}
// 32-bit planes give 16-bit pixels as the 16-bit planes do: the low 16 bits of
// each result. For the plain inverse that equals converting the planes' low 16
// bits; the lifting halves Co and Cg at their full 32 bits first.
ZYL_API ZylStatus zyliYCoCgToSBGR_32s16s_P3C3R(const Zyl32s* const pSrc[3], int srcStep,
                                               Zyl16s* pDst, int dstStep, ZylSize roiSize) {
  return FromPlanes<Plain, C3>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliYCoCgToSBGR_32s16s_P3C4R(const Zyl32s* const pSrc[3], int srcStep,
                                               Zyl16s* pDst, int dstStep, ZylSize roiSize) {
  return FromPlanes<Plain, C4>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliYCoCgToSBGR_Rev_16s_P3C3R(const Zyl16s* const pSrc[3], int srcStep,
                                                Zyl16s* pDst, int dstStep, ZylSize roiSize) {
  return FromPlanes<Lifting, C3>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliYCoCgToSBGR_Rev_16s_P3C4R(const Zyl16s* const pSrc[3], int srcStep,
                                                Zyl16s* pDst, int dstStep, ZylSize roiSize) {
  return FromPlanes<Lifting, C4>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliYCoCgToSBGR_Rev_32s16s_P3C3R(const Zyl32s* const pSrc[3], int srcStep,
                                                   Zyl16s* pDst, int dstStep, ZylSize roiSize) {
  return FromPlanes<Lifting, C3>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliYCoCgToSBGR_Rev_32s16s_P3C4R(const Zyl32s* const pSrc[3], int srcStep,
                                                   Zyl16s* pDst, int dstStep, ZylSize roiSize) {
  return FromPlanes<Lifting, C4>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliRGBToYCoCg_8u_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                          int dstStep, ZylSize roiSize) {
  return ToPlanes<Bytes, C3, true>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliYCoCgToRGB_8u_P3C3R(const Zyl8u* const pSrc[3], int srcStep, Zyl8u* pDst,
                                          int dstStep, ZylSize roiSize) {
  return FromPlanes<Bytes, C3, true>(pSrc, srcStep, pDst, dstStep, roiSize);
}

}  // extern "C"
#endif  // HWY_ONCE
