// Per-target half of the 3-channel families: vector loads and stores for each
// layout, and the row kernel that maps three channels to three channels with
// a vector body and the exact per-pixel tail.
//
// Include inside a family file after hwy/highway.h; it is re-included once
// per target by hwy/foreach_target.h.
#if defined(ZYL_CORE_MAP3_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ZYL_CORE_MAP3_INL_H_
#undef ZYL_CORE_MAP3_INL_H_
#else
#define ZYL_CORE_MAP3_INL_H_
#endif

#include <hwy/highway.h>

#include <type_traits>

#include "src/core/layout.h"

// The one-lane fallback targets run the per-pixel definition over the whole
// row: it is the reference, and HWY_SCALAR lacks the shuffles the bodies use.
#undef ZYL_SIMD
#if HWY_TARGET == HWY_SCALAR || HWY_TARGET == HWY_EMU128
#define ZYL_SIMD 0
#else
#define ZYL_SIMD 1
#endif

HWY_BEFORE_NAMESPACE();
namespace zyl {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if ZYL_SIMD

template <class L, class D, class V = hn::Vec<D>, class T = hn::TFromD<D>>
HWY_INLINE void LoadPixels(D d, const T* const* rows, ptrdiff_t x, V& c0, V& c1, V& c2, V& c3) {
  if constexpr (L::kPlanes == 1 && L::kStride == 3) {
    hn::LoadInterleaved3(d, rows[0] + 3 * x, c0, c1, c2);
  } else if constexpr (L::kPlanes == 1) {
    hn::LoadInterleaved4(d, rows[0] + 4 * x, c0, c1, c2, c3);
  } else {
    c0 = hn::LoadU(d, rows[0] + x);
    c1 = hn::LoadU(d, rows[1] + x);
    c2 = hn::LoadU(d, rows[2] + x);
    if constexpr (L::kAlpha) c3 = hn::LoadU(d, rows[3] + x);
  }
}

template <class L, class D, class V = hn::Vec<D>, class T = hn::TFromD<D>>
HWY_INLINE void StorePixels(D d, T* const* rows, ptrdiff_t x, V c0, V c1, V c2, V c3) {
  if constexpr (L::kPlanes == 1 && L::kStride == 3) {
    hn::StoreInterleaved3(c0, c1, c2, d, rows[0] + 3 * x);
  } else if constexpr (L::kPlanes == 1) {
    T* p = rows[0] + 4 * x;
    if constexpr (!L::kAlpha) {
      // Alpha keeps the caller's bytes: they are read back and stored unchanged.
      V o0, o1, o2;
      hn::LoadInterleaved4(d, p, o0, o1, o2, c3);
    }
    hn::StoreInterleaved4(c0, c1, c2, c3, d, p);
  } else {
    hn::StoreU(c0, d, rows[0] + x);
    hn::StoreU(c1, d, rows[1] + x);
    hn::StoreU(c2, d, rows[2] + x);
    if constexpr (L::kAlpha) hn::StoreU(c3, d, rows[3] + x);
  }
}

// Widens full 8-bit vectors to two int16 vectors and narrows them back with
// saturation to 0..255. On x86 both directions stay inside 128-bit blocks
// (unpack low/high with zero, then pack with unsigned saturation), which
// restores the lane order without any cross-block permute.
#if HWY_ARCH_X86
template <class D8, class V8 = hn::Vec<D8>>
HWY_INLINE void Widen8(D8 d8, V8 v, hn::Vec<hn::Repartition<int16_t, D8>>& lo,
                       hn::Vec<hn::Repartition<int16_t, D8>>& hi) {
  const hn::Repartition<uint16_t, D8> du16;
  const hn::Repartition<int16_t, D8> d16;
  lo = hn::BitCast(d16, hn::ZipLower(du16, v, hn::Zero(d8)));
  hi = hn::BitCast(d16, hn::ZipUpper(du16, v, hn::Zero(d8)));
}
HWY_INLINE hn::Vec128<uint8_t> Narrow8(hn::Full128<uint8_t>, hn::Vec128<int16_t> lo,
                                       hn::Vec128<int16_t> hi) {
  return hn::Vec128<uint8_t>{_mm_packus_epi16(lo.raw, hi.raw)};
}
#if HWY_TARGET <= HWY_AVX2
HWY_INLINE hn::Vec256<uint8_t> Narrow8(hn::Full256<uint8_t>, hn::Vec256<int16_t> lo,
                                       hn::Vec256<int16_t> hi) {
  return hn::Vec256<uint8_t>{_mm256_packus_epi16(lo.raw, hi.raw)};
}
#endif
#if HWY_TARGET <= HWY_AVX3
HWY_INLINE hn::Vec512<uint8_t> Narrow8(hn::Full512<uint8_t>, hn::Vec512<int16_t> lo,
                                       hn::Vec512<int16_t> hi) {
  return hn::Vec512<uint8_t>{_mm512_packus_epi16(lo.raw, hi.raw)};
}
#endif
// int32 to int16 with signed saturation (Narrow32) or to uint16 with
// unsigned saturation (Narrow32U), likewise inside each 128-bit block: the
// inverse of ZipLower/ZipUpper of 16-bit lanes.
template <class D32>
HWY_INLINE hn::Vec<hn::Repartition<int16_t, D32>> Narrow32(D32 /*d32*/, hn::Vec<D32> lo,
                                                           hn::Vec<D32> hi) {
  using V16 = hn::Vec<hn::Repartition<int16_t, D32>>;
  if constexpr (sizeof(lo.raw) == 16) return V16{_mm_packs_epi32(lo.raw, hi.raw)};
#if HWY_TARGET <= HWY_AVX2
  if constexpr (sizeof(lo.raw) == 32) return V16{_mm256_packs_epi32(lo.raw, hi.raw)};
#endif
#if HWY_TARGET <= HWY_AVX3
  if constexpr (sizeof(lo.raw) == 64) return V16{_mm512_packs_epi32(lo.raw, hi.raw)};
#endif
}
template <class D32>
HWY_INLINE hn::Vec<hn::Repartition<uint16_t, D32>> Narrow32U(D32 /*d32*/, hn::Vec<D32> lo,
                                                             hn::Vec<D32> hi) {
  using V16 = hn::Vec<hn::Repartition<uint16_t, D32>>;
  if constexpr (sizeof(lo.raw) == 16) return V16{_mm_packus_epi32(lo.raw, hi.raw)};
#if HWY_TARGET <= HWY_AVX2
  if constexpr (sizeof(lo.raw) == 32) return V16{_mm256_packus_epi32(lo.raw, hi.raw)};
#endif
#if HWY_TARGET <= HWY_AVX3
  if constexpr (sizeof(lo.raw) == 64) return V16{_mm512_packus_epi32(lo.raw, hi.raw)};
#endif
}
#else
template <class D8, class V8 = hn::Vec<D8>>
HWY_INLINE void Widen8(D8 d8, V8 v, hn::Vec<hn::Repartition<int16_t, D8>>& lo,
                       hn::Vec<hn::Repartition<int16_t, D8>>& hi) {
  const hn::Half<D8> dh;
  const hn::Repartition<int16_t, D8> d16;
  lo = hn::PromoteTo(d16, hn::LowerHalf(dh, v));
  hi = hn::PromoteTo(d16, hn::UpperHalf(dh, v));
}
template <class D8, class V16>
HWY_INLINE hn::Vec<D8> Narrow8(D8 d8, V16 lo, V16 hi) {
  const hn::Half<D8> dh;
  return hn::Combine(d8, hn::DemoteTo(dh, hi), hn::DemoteTo(dh, lo));
}
template <class D32>
HWY_INLINE hn::Vec<hn::Repartition<int16_t, D32>> Narrow32(D32 /*d32*/, hn::Vec<D32> lo,
                                                           hn::Vec<D32> hi) {
  const hn::Repartition<int16_t, D32> d16;
  const hn::Half<decltype(d16)> dh;
  return hn::Combine(d16, hn::DemoteTo(dh, hi), hn::DemoteTo(dh, lo));
}
template <class D32>
HWY_INLINE hn::Vec<hn::Repartition<uint16_t, D32>> Narrow32U(D32 /*d32*/, hn::Vec<D32> lo,
                                                             hn::Vec<D32> hi) {
  const hn::Repartition<uint16_t, D32> d16;
  const hn::Half<decltype(d16)> dh;
  return hn::Combine(d16, hn::DemoteTo(dh, hi), hn::DemoteTo(dh, lo));
}
#endif

// Runs op.Vec16 on full 8-bit vectors widened to int16 lanes and narrows its
// results back with saturation to 0..255.
template <class Op, class D8, class V8 = hn::Vec<D8>>
HWY_INLINE void Map8ViaI16(D8 d8, const Op& op, V8 a, V8 b, V8 c, V8& x, V8& y, V8& z) {
  const hn::Repartition<int16_t, D8> d16;
  hn::Vec<decltype(d16)> a2[2], b2[2], c2[2], x2[2], y2[2], z2[2];
  Widen8(d8, a, a2[0], a2[1]);
  Widen8(d8, b, b2[0], b2[1]);
  Widen8(d8, c, c2[0], c2[1]);
  for (int i = 0; i < 2; ++i) op.Vec16(d16, a2[i], b2[i], c2[i], x2[i], y2[i], z2[i]);
  x = Narrow8(d8, x2[0], x2[1]);
  y = Narrow8(d8, y2[0], y2[1]);
  z = Narrow8(d8, z2[0], z2[1]);
}

// Exact 16-bit pieces of 16.16 fixed-point products, for bodies that keep
// whole rows in 16-bit lanes.
//
// floor((a * k) / 65536) + floor(((a * k) mod 65536 + 32768) / 65536): the
// product rounded to nearest after >> 16, for signed a and k.
template <class D, class V = hn::Vec<D>>
HWY_INLINE V MulRound16(D d, V a, int16_t k) {
  const hn::RebindToUnsigned<D> du;
  const V kv = hn::Set(d, k);
  const auto lo = hn::BitCast(du, hn::Mul(a, kv));
  return hn::Add(hn::MulHigh(a, kv), hn::BitCast(d, hn::ShiftRight<15>(lo)));
}

// All-ones lanes where the unsigned 16-bit sum a + b wraps around.
template <class DU, class VU = hn::Vec<DU>>
HWY_INLINE VU Carry16(DU du, VU a, VU b) {
  return hn::VecFromMask(du, hn::Ne(hn::SaturatedAdd(a, b), hn::Add(a, b)));
}

// floor((x0 * K0 + x1 * K1 + ... + C) / 65536), exactly, for int16 lanes x
// and any 32-bit constants: the 16.16 fixed-point dot product of a 3x3
// colour matrix row, in lanes half as wide as the products. Each K splits as
// 65536 q + r with r in [-32768, 32767], so x K = 65536 x q + x r, and the
// result is the sum of the x q plus floor((sum of x r + C) / 65536).
// Exact whenever the true result fits in int16 and the x r sum in int32.
template <int32_t K>
struct Split16 {
  static constexpr int16_t kR = static_cast<int16_t>(K & 0xFFFF);
  static constexpr int32_t kQ = (K - kR) / 65536;
};

template <int32_t kQ, class D, class V = hn::Vec<D>>
HWY_INLINE V AddTimes(D d, V acc, V v) {
  if constexpr (kQ == 1) return hn::Add(acc, v);
  if constexpr (kQ == -1) return hn::Sub(acc, v);
  if constexpr (kQ == 2) return hn::Add(acc, hn::Add(v, v));
  if constexpr (kQ != 0 && kQ != 1 && kQ != -1 && kQ != 2) {
    return hn::Add(acc, hn::Mul(v, hn::Set(d, static_cast<int16_t>(kQ))));
  }
  return acc;
}

// ZYL_PORTABLE_DOT selects the portable form on x86 too, so that it can be
// tested there.
#if HWY_ARCH_X86 && !defined(ZYL_PORTABLE_DOT)
// On x86 the x r are summed pairwise by the 16x16 -> 32-bit multiply-add
// (inputs interleaved two by two), the constant added and the sum shifted
// in 32-bit lanes. kCEven and kCOdd are the constants of even and odd lanes.
template <int32_t kCEven, int32_t kCOdd, int32_t... K, class D, class... V>
HWY_INLINE hn::Vec<D> FixedDot16EvenOdd(D d, V... x) {
  const hn::Repartition<int32_t, D> d32;
  const hn::Vec<D> xs[] = {x...};
  constexpr int16_t kRs[] = {Split16<K>::kR...};
  constexpr int kN = sizeof...(K);
  // The zips keep lanes in order inside each half, so lane parity survives.
  const auto c = hn::OddEven(hn::Set(d32, kCOdd), hn::Set(d32, kCEven));
  auto lo = c, hi = c, unused = hn::Zero(d32);
  for (int i = 0; i < kN; i += 2) {
    const hn::Vec<D> xb = i + 1 < kN ? xs[i + 1] : xs[i];
    const int16_t rb = i + 1 < kN ? kRs[i + 1] : 0;
    const auto k = hn::BitCast(
        d,
        hn::Set(d32, static_cast<int32_t>((static_cast<uint32_t>(static_cast<uint16_t>(rb)) << 16) |
                                          static_cast<uint16_t>(kRs[i]))));
    lo = hn::ReorderWidenMulAccumulate(d32, hn::BitCast(d, hn::ZipLower(d32, xs[i], xb)), k, lo,
                                       unused);
    hi = hn::ReorderWidenMulAccumulate(d32, hn::BitCast(d, hn::ZipUpper(d32, xs[i], xb)), k, hi,
                                       unused);
  }
  hn::Vec<D> sum = Narrow32(d32, hn::ShiftRight<16>(lo), hn::ShiftRight<16>(hi));
  ((sum = AddTimes<Split16<K>::kQ>(d, sum, x)), ...);
  return sum;
}
#else
// Elsewhere the signed high halves of the x r are summed directly and their
// unsigned low halves with C's low part, counting the carries out of 16 bits.
template <int32_t kCEven, int32_t kCOdd, int32_t... K, class D, class... V>
HWY_INLINE hn::Vec<D> FixedDot16EvenOdd(D d, V... x) {
  const hn::RebindToUnsigned<D> du;
  hn::Vec<D> hi = hn::OddEven(hn::Set(d, static_cast<int16_t>(kCOdd >> 16)),
                              hn::Set(d, static_cast<int16_t>(kCEven >> 16)));
  hn::Vec<decltype(du)> lo = hn::OddEven(hn::Set(du, static_cast<uint16_t>(kCOdd & 0xFFFF)),
                                         hn::Set(du, static_cast<uint16_t>(kCEven & 0xFFFF)));
  hn::Vec<decltype(du)> carries = hn::Zero(du);  // -1 per carry
  auto term = [&](auto k, hn::Vec<D> v) {
    constexpr int16_t kR = Split16<decltype(k)::value>::kR;
    hi = AddTimes<Split16<decltype(k)::value>::kQ>(d, hi, v);
    if constexpr (kR != 0) {
      const hn::Vec<D> kv = hn::Set(d, kR);
      hi = hn::Add(hi, hn::MulHigh(v, kv));
      const auto l = hn::BitCast(du, hn::Mul(v, kv));
      carries = hn::Add(carries, Carry16(du, lo, l));
      lo = hn::Add(lo, l);
    }
  };
  (term(std::integral_constant<int32_t, K>{}, x), ...);
  return hn::Sub(hi, hn::BitCast(d, carries));
}
#endif

template <int32_t C, int32_t... K, class D, class... V>
HWY_INLINE hn::Vec<D> FixedDot16(D d, V... x) {
  return FixedDot16EvenOdd<C, C, K...>(d, x...);
}

#endif  // ZYL_SIMD

// An op whose first and third outputs trade places: BGR where the op makes
// RGB.
template <class Op>
struct SwapOuter : Op {
  void Pixel(const uint8_t in[4], uint8_t out[4]) const {
    Op::Pixel(in, out);
    const uint8_t t = out[0];
    out[0] = out[2];
    out[2] = t;
  }
#if ZYL_SIMD
  template <class D8, class V8>
  HWY_INLINE void Vec(D8 d8, V8 a, V8 b, V8 c, V8& x, V8& y, V8& z) const {
    Op::Vec(d8, a, b, c, z, y, x);
  }
#endif
};

// One row of an 8-bit three-channel conversion. Op supplies Pixel (the exact
// per-pixel definition) and Vec (the same arithmetic on full 8-bit vectors,
// usually through Map8ViaI16). The fourth channel flows from an
// alpha-carrying source layout, else from aval.
template <class SL, class DL, class Op>
HWY_INLINE void Map3Row8(const uint8_t* const* src, uint8_t* const* dst, ptrdiff_t width,
                         uint8_t aval) {
  const Op op;
  ptrdiff_t x = 0;
#if ZYL_SIMD
  // Interleaved loads and stores shuffle across 128-bit blocks; beyond 256
  // bits that costs more than the wider arithmetic gains, so such rows stay
  // at 32 pixels per block even where 512-bit vectors exist.
  using Tag = typename std::conditional<SL::kPlanes == 1 || DL::kPlanes == 1,
                                        hn::CappedTag<uint8_t, 32>, hn::ScalableTag<uint8_t>>::type;
  const Tag d8;
  const ptrdiff_t n = static_cast<ptrdiff_t>(hn::Lanes(d8));
  const auto alpha = hn::Set(d8, aval);
  for (; x + n <= width; x += n) {
    hn::Vec<decltype(d8)> c0, c1, c2, c3 = alpha, o0, o1, o2;
    LoadPixels<SL>(d8, src, x, c0, c1, c2, c3);
    if constexpr (!SL::kAlpha) c3 = alpha;
    op.Vec(d8, c0, c1, c2, o0, o1, o2);
    StorePixels<DL>(d8, dst, x, o0, o1, o2, c3);
  }
#endif
  for (; x < width; ++x) {
    uint8_t c[4], o[4];
    LoadPixel<SL>(src, x, c);
    if constexpr (!SL::kAlpha) c[3] = aval;
    op.Pixel(c, o);
    o[3] = c[3];
    StorePixel<DL>(dst, x, o);
  }
}

// A float formula written once for one value (ScalarClampK) and for vectors
// (VectorClampK): k(c) is the constant c, k.Clamp(v, lo, hi) bounds v by two
// comparisons in that order, so a NaN passes through both forms alike.
struct ScalarClampK {
  float operator()(float c) const { return c; }
  float Clamp(float v, float lo, float hi) const {
    if (v < lo) v = lo;
    if (v > hi) v = hi;
    return v;
  }
};

#if ZYL_SIMD
template <class DF>
struct VectorClampK {
  using V = hn::Vec<DF>;
  DF d;
  V operator()(float c) const { return hn::Set(d, c); }
  V Clamp(V v, float lo, float hi) const {
    v = hn::IfThenElse(hn::Lt(v, hn::Set(d, lo)), hn::Set(d, lo), v);
    return hn::IfThenElse(hn::Gt(v, hn::Set(d, hi)), hn::Set(d, hi), v);
  }
};
#endif

}  // namespace HWY_NAMESPACE
}  // namespace zyl
HWY_AFTER_NAMESPACE();

#endif  // include guard toggle
