// RGB/BGR to 4:2:0, 4:2:2 and 4:1:1 YCbCr (BT.601 studio, BT.709 studio and
// full range) and YUV: planar, two-plane and packed destinations.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "src/subsampled/encode.cc"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "src/core/dispatch.h"
#include "src/core/frame.h"
#include "src/core/map3-inl.h"
#include "src/subsampled/encode.h"

HWY_BEFORE_NAMESPACE();
namespace zyl {
namespace HWY_NAMESPACE {

// ------------------------------------------------------------- matrices --
// Each matrix gives the exact scalar definition of its outputs (Luma of one
// pixel; Chroma4 of the sums over a 2x2 block; Chroma2 of the sums over a
// pixel pair; Chroma1 of a lone last pixel) and, for vector bodies, the same
// values in int16 lanes.

// The studio and full-range YCbCr matrices share one shape: Y and the two
// chroma rows as 16.16 weights with added constants, and an output range.
template <int kYR, int kYG, int kYB, int kYAdd, int kYAddOdd, int kCbR, int kCbG, int kCbB,
          int kCrR, int kCrG, int kCrB, int kAdd4, int kAdd2, int kAdd1, int kLo, int kHi>
struct YccMatrix {
  static int Clamp(int v) {
    // 0..255 matrices keep the low 8 bits (their weights keep them in range).
    if constexpr (kLo == 0 && kHi == 255) return v & 255;
    return v < kLo ? kLo : v > kHi ? kHi : v;
  }
  static int Luma(int r, int g, int b, bool odd = false) {
    return Clamp((kYR * r + kYG * g + kYB * b + (odd ? kYAddOdd : kYAdd)) >> 16);
  }
  static void Chroma4(int sr, int sg, int sb, int& cb, int& cr) {
    cb = Clamp((kCbR * sr + kCbG * sg + kCbB * sb + kAdd4) >> 18);
    cr = Clamp((kCrR * sr + kCrG * sg + kCrB * sb + kAdd4) >> 18);
  }
  static void Chroma2(int sr, int sg, int sb, int& cb, int& cr) {
    cb = Clamp((kCbR * sr + kCbG * sg + kCbB * sb + kAdd2) >> 17);
    cr = Clamp((kCrR * sr + kCrG * sg + kCrB * sb + kAdd2) >> 17);
  }
  static void Chroma1(int r, int g, int b, int& cb, int& cr) {
    cb = Clamp((kCbR * r + kCbG * g + kCbB * b + kAdd1) >> 16);
    cr = Clamp((kCrR * r + kCrG * g + kCrB * b + kAdd1) >> 16);
  }
#if ZYL_SIMD
  template <class D, class V = hn::Vec<D>>
  static V ClampVec(D d, V v) {
    if constexpr (kLo == 0 && kHi == 255) return hn::And(v, hn::Set(d, int16_t{255}));
    return hn::Min(hn::Max(v, hn::Set(d, int16_t{kLo})), hn::Set(d, int16_t{kHi}));
  }
  // Even lanes are the first pixel of a pair, odd lanes the second.
  template <class D, class V = hn::Vec<D>>
  static V LumaVec(D d, V r, V g, V b) {
    return ClampVec(d, FixedDot16EvenOdd<kYAdd, kYAddOdd, kYR, kYG, kYB>(d, r, g, b));
  }
  template <class D, class V = hn::Vec<D>>
  static void Chroma4Vec(D d, V sr, V sg, V sb, V& cb, V& cr) {
    cb = ClampVec(d, hn::ShiftRight<2>(FixedDot16<kAdd4, kCbR, kCbG, kCbB>(d, sr, sg, sb)));
    cr = ClampVec(d, hn::ShiftRight<2>(FixedDot16<kAdd4, kCrR, kCrG, kCrB>(d, sr, sg, sb)));
  }
  template <class D, class V = hn::Vec<D>>
  static void Chroma2Vec(D d, V sr, V sg, V sb, V& cb, V& cr) {
    cb = ClampVec(d, hn::ShiftRight<1>(FixedDot16<kAdd2, kCbR, kCbG, kCbB>(d, sr, sg, sb)));
    cr = ClampVec(d, hn::ShiftRight<1>(FixedDot16<kAdd2, kCrR, kCrG, kCrB>(d, sr, sg, sb)));
  }
#endif
};

// BT.601 studio range. The 2x2 chroma rounding term is 2^15 at >> 18 (an
// eighth of a step, by definition); the pair form adds the true half 2^16 at
// >> 17; a lone pixel adds the half 2^15 at >> 16.
using Bt601 = YccMatrix<16843, 33030, 6423, 0x108000, 0x108000, -9699, -19071, 28770, 28770,
                        -24117, -4653, 0x2008000, 0x1010000, 0x808000, 0, 255>;
// The packed Y0 Cb Y1 Cr pair loop: the second luma of a pair takes 0x100000
// (truncating) where the first takes 0x108000 (rounding); kept as defined.
using Bt601Packed = YccMatrix<16843, 33030, 6423, 0x108000, 0x100000, -9699, -19071, 28770,
                              28770, -24117, -4653, 0x2008000, 0x1010000, 0x808000, 0, 255>;
// BT.709 studio range, same structure and rounding as BT.601.
using Bt709Csc = YccMatrix<11993, 40239, 4063, 0x108000, 0x108000, -6619, -22151, 28770, 28770,
                           -26149, -2621, 0x2008000, 0x1010000, 0x808000, 0, 255>;
// BT.709 full range, every output clamped to 1..254. The pair adds
// 128 * 2^17 + 2^16 - 2; the 2x2 form scales that to >> 18 (128 * 2^18 +
// 2^17 - 4); the pair Cb uses the lone-pixel Cb weights.
using Bt709Hdtv = YccMatrix<13959, 46858, 4719, 32768, 32768, -7668, -25821, 33489, 33489, -30409,
                            -3080, 0x201FFFC, 0x100FFFE, 0x808000, 1, 254>;

// Analogue YUV in 14-bit scale, chroma from differences with the unrounded
// luma sums: U = ((sum B - sum y / 2^14) * 8061 >> 16) + 128, not clamped;
// V = ((sum R - sum y / 2^14) * 14369 >> 16) + 128, clamped. The sums of a
// pixel pair are taken at twice the scale (>> 13) so that pair and 2x2
// chroma agree for flat colour.
struct Yuv {
  static constexpr int kR = 4899, kG = 9617, kB = 1868;
  static int Y(int r, int g, int b) { return kR * r + kG * g + kB * b; }
  static int Luma(int r, int g, int b, bool = false) { return (Y(r, g, b) + 2) >> 14; }
  static void FromDiff(int db, int dr, int& u, int& v) {
    u = (((db * 8061) >> 16) + 128) & 255;
    const int vv = ((dr * 14369) >> 16) + 128;
    v = vv < 0 ? 0 : vv > 255 ? 255 : vv;
  }
  static void Chroma4(int sr, int sg, int sb, int& u, int& v) {
    const int sy = Y(sr, sg, sb);
    FromDiff(((sb << 14) - sy) >> 14, ((sr << 14) - sy) >> 14, u, v);
  }
  static void Chroma2(int sr, int sg, int sb, int& u, int& v) {
    const int sy = Y(sr, sg, sb);
    FromDiff(((sb << 14) - sy) >> 13, ((sr << 14) - sy) >> 13, u, v);
  }
  static void Chroma1(int r, int g, int b, int& u, int& v) {
    const int y = Y(r, g, b);
    FromDiff(((b << 14) - y) >> 12, ((r << 14) - y) >> 12, u, v);
  }
#if ZYL_SIMD
  template <class D, class V = hn::Vec<D>>
  static void FromDiffVec(D d, V db, V dr, V& u, V& v) {
    const V c128 = hn::Set(d, int16_t{128});
    u = hn::And(hn::Add(hn::MulHigh(db, hn::Set(d, int16_t{8061})), c128), hn::Set(d, int16_t{255}));
    v = hn::Add(hn::MulHigh(dr, hn::Set(d, int16_t{14369})), c128);
    v = hn::Min(hn::Max(v, hn::Zero(d)), hn::Set(d, int16_t{255}));
  }
  // (y + 2) >> 14 = floor((4y + 8) / 65536).
  template <class D, class V = hn::Vec<D>>
  static V LumaVec(D d, V r, V g, V b) {
    return FixedDot16<8, 4 * kR, 4 * kG, 4 * kB>(d, r, g, b);
  }
  // (s << 14) - sum y) >> 14 = s + floor(-4 sum y / 65536).
  template <class D, class V = hn::Vec<D>>
  static void Chroma4Vec(D d, V sr, V sg, V sb, V& u, V& v) {
    const V t = FixedDot16<0, -4 * kR, -4 * kG, -4 * kB>(d, sr, sg, sb);
    FromDiffVec(d, hn::Add(sb, t), hn::Add(sr, t), u, v);
  }
  // ((s << 14) - sum y) >> 13 = 2 s + floor(-8 sum y / 65536).
  template <class D, class V = hn::Vec<D>>
  static void Chroma2Vec(D d, V sr, V sg, V sb, V& u, V& v) {
    const V t = FixedDot16<0, -8 * kR, -8 * kG, -8 * kB>(d, sr, sg, sb);
    FromDiffVec(d, hn::Add(hn::Add(sb, sb), t), hn::Add(hn::Add(sr, sr), t), u, v);
  }
#endif
};

template <int kId>
struct MatrixOf;
template <>
struct MatrixOf<kMatBt601> {
  using type = Bt601;
};
template <>
struct MatrixOf<kMatBt601Packed> {
  using type = Bt601Packed;
};
template <>
struct MatrixOf<kMatBt709Csc> {
  using type = Bt709Csc;
};
template <>
struct MatrixOf<kMatBt709Hdtv> {
  using type = Bt709Hdtv;
};
template <>
struct MatrixOf<kMatYuv> {
  using type = Yuv;
};

// ---------------------------------------------------------- pixel access --

// R, G, B of pixel x of a source row (plane pointers), in the source order.
template <class SL, bool kBgr>
inline void Rgb(const uint8_t* const* row, ptrdiff_t x, int& r, int& g, int& b) {
  uint8_t c[4];
  LoadPixel<SL>(row, x, c);
  r = c[kBgr ? 2 : 0];
  g = c[1];
  b = c[kBgr ? 0 : 2];
}

#if ZYL_SIMD
template <class SL, bool kBgr, class D8, class V8 = hn::Vec<D8>>
HWY_INLINE void LoadRgb(D8 d8, const uint8_t* const* row, ptrdiff_t x, V8& r, V8& g, V8& b) {
  V8 a;
  if constexpr (kBgr) {
    LoadPixels<SL>(d8, row, x, b, g, r, a);
  } else {
    LoadPixels<SL>(d8, row, x, r, g, b, a);
  }
}

// Sums of adjacent pixel pairs, as int16 lanes in pixel-pair order.
template <class D8, class V8 = hn::Vec<D8>>
HWY_INLINE hn::Vec<hn::Repartition<int16_t, D8>> PairSums(D8 /*d8*/, V8 v) {
  const hn::Repartition<uint16_t, D8> du16;
  const hn::Repartition<int16_t, D8> d16;
  const auto w = hn::BitCast(du16, v);
  return hn::BitCast(d16, hn::Add(hn::And(w, hn::Set(du16, uint16_t{0xFF})), hn::ShiftRight<8>(w)));
}

// Luma of full 8-bit vectors of R, G, B.
template <class M, class D8, class V8 = hn::Vec<D8>>
HWY_INLINE V8 Luma8(D8 d8, V8 r, V8 g, V8 b) {
  const hn::Repartition<int16_t, D8> d16;
  hn::Vec<decltype(d16)> r2[2], g2[2], b2[2];
  Widen8(d8, r, r2[0], r2[1]);
  Widen8(d8, g, g2[0], g2[1]);
  Widen8(d8, b, b2[0], b2[1]);
  return Narrow8(d8, M::LumaVec(d16, r2[0], g2[0], b2[0]), M::LumaVec(d16, r2[1], g2[1], b2[1]));
}

// Two chroma vectors of int16 lanes holding 0..255 as one byte vector
// first, second, first, second, ...
template <class D16, class V16 = hn::Vec<D16>>
HWY_INLINE hn::Vec<hn::Repartition<uint8_t, D16>> Interleave8(D16 d16, V16 first, V16 second) {
  return hn::BitCast(hn::Repartition<uint8_t, D16>(),
                     hn::Or(first, hn::ShiftLeft<8>(second)));
  (void)d16;
}

template <class D16, class V16 = hn::Vec<D16>>
HWY_INLINE void StoreNarrow(D16 d16, V16 v, uint8_t* p) {
  const hn::Rebind<uint8_t, D16> d8h;
  hn::StoreU(hn::DemoteTo(d8h, v), d8h, p);
  (void)d16;
}

// The capped vector of 8-bit lanes for a source layout: interleaved rows stay
// at 256 bits (their shuffles cross 128-bit blocks).
template <class SL>
using EncTag = std::conditional_t<SL::kPlanes == 1, hn::CappedTag<uint8_t, 32>,
                                  hn::ScalableTag<uint8_t>>;
#endif  // ZYL_SIMD

// ------------------------------------------------------------------- 4:2:0 --
// Two source rows to two luma rows and one chroma row: chroma planes c[0],
// c[1] (Cb, Cr or, for kCrFirst, Cr, Cb), or, for kTwoPlane, c[0] holds Cb Cr
// byte pairs. `pairs` pixel pairs are converted; an odd last column is never
// read or written.
template <class SL, bool kBgr, int kM, bool kCrFirst, bool kTwoPlane>
HWY_NOINLINE void Rows420(const uint8_t* const* s0, const uint8_t* const* s1, uint8_t* y0,
                          uint8_t* y1, uint8_t* const* c, ptrdiff_t pairs) {
  using M = typename MatrixOf<kM>::type;
  ptrdiff_t i = 0;
#if ZYL_SIMD
  const EncTag<SL> d8;
  const hn::Repartition<int16_t, decltype(d8)> d16;
  const ptrdiff_t n = static_cast<ptrdiff_t>(hn::Lanes(d8));
  for (; 2 * i + n <= 2 * pairs; i += n / 2) {
    const ptrdiff_t x = 2 * i;
    hn::Vec<decltype(d8)> r0, g0, b0, r1, g1, b1;
    LoadRgb<SL, kBgr>(d8, s0, x, r0, g0, b0);
    LoadRgb<SL, kBgr>(d8, s1, x, r1, g1, b1);
    hn::StoreU(Luma8<M>(d8, r0, g0, b0), d8, y0 + x);
    hn::StoreU(Luma8<M>(d8, r1, g1, b1), d8, y1 + x);
    const auto sr = hn::Add(PairSums(d8, r0), PairSums(d8, r1));
    const auto sg = hn::Add(PairSums(d8, g0), PairSums(d8, g1));
    const auto sb = hn::Add(PairSums(d8, b0), PairSums(d8, b1));
    hn::Vec<decltype(d16)> cb, cr;
    M::Chroma4Vec(d16, sr, sg, sb, cb, cr);
    if constexpr (kTwoPlane) {
      hn::StoreU(Interleave8(d16, cb, cr), d8, c[0] + x);
    } else {
      StoreNarrow(d16, kCrFirst ? cr : cb, c[0] + i);
      StoreNarrow(d16, kCrFirst ? cb : cr, c[1] + i);
    }
  }
#endif
  for (; i < pairs; ++i) {
    int r[4], g[4], b[4];
    Rgb<SL, kBgr>(s0, 2 * i, r[0], g[0], b[0]);
    Rgb<SL, kBgr>(s0, 2 * i + 1, r[1], g[1], b[1]);
    Rgb<SL, kBgr>(s1, 2 * i, r[2], g[2], b[2]);
    Rgb<SL, kBgr>(s1, 2 * i + 1, r[3], g[3], b[3]);
    y0[2 * i] = static_cast<uint8_t>(M::Luma(r[0], g[0], b[0]));
    y0[2 * i + 1] = static_cast<uint8_t>(M::Luma(r[1], g[1], b[1]));
    y1[2 * i] = static_cast<uint8_t>(M::Luma(r[2], g[2], b[2]));
    y1[2 * i + 1] = static_cast<uint8_t>(M::Luma(r[3], g[3], b[3]));
    int cb, cr;
    M::Chroma4(r[0] + r[1] + r[2] + r[3], g[0] + g[1] + g[2] + g[3], b[0] + b[1] + b[2] + b[3],
               cb, cr);
    if constexpr (kTwoPlane) {
      c[0][2 * i] = static_cast<uint8_t>(cb);
      c[0][2 * i + 1] = static_cast<uint8_t>(cr);
    } else {
      c[0][i] = static_cast<uint8_t>(kCrFirst ? cr : cb);
      c[1][i] = static_cast<uint8_t>(kCrFirst ? cb : cr);
    }
  }
}

// ----------------------------------------------------------- 4:2:2 planar --
template <class SL, bool kBgr, int kM>
HWY_NOINLINE void Row422Planar(const uint8_t* const* s, uint8_t* y, uint8_t* cb_row,
                               uint8_t* cr_row, ptrdiff_t pairs) {
  using M = typename MatrixOf<kM>::type;
  ptrdiff_t i = 0;
#if ZYL_SIMD
  const EncTag<SL> d8;
  const hn::Repartition<int16_t, decltype(d8)> d16;
  const ptrdiff_t n = static_cast<ptrdiff_t>(hn::Lanes(d8));
  for (; 2 * i + n <= 2 * pairs; i += n / 2) {
    const ptrdiff_t x = 2 * i;
    hn::Vec<decltype(d8)> r, g, b;
    LoadRgb<SL, kBgr>(d8, s, x, r, g, b);
    hn::StoreU(Luma8<M>(d8, r, g, b), d8, y + x);
    hn::Vec<decltype(d16)> cb, cr;
    M::Chroma2Vec(d16, PairSums(d8, r), PairSums(d8, g), PairSums(d8, b), cb, cr);
    StoreNarrow(d16, cb, cb_row + i);
    StoreNarrow(d16, cr, cr_row + i);
  }
#endif
  for (; i < pairs; ++i) {
    int r0, g0, b0, r1, g1, b1;
    Rgb<SL, kBgr>(s, 2 * i, r0, g0, b0);
    Rgb<SL, kBgr>(s, 2 * i + 1, r1, g1, b1);
    y[2 * i] = static_cast<uint8_t>(M::Luma(r0, g0, b0));
    y[2 * i + 1] = static_cast<uint8_t>(M::Luma(r1, g1, b1, true));
    int cb, cr;
    M::Chroma2(r0 + r1, g0 + g1, b0 + b1, cb, cr);
    cb_row[i] = static_cast<uint8_t>(cb);
    cr_row[i] = static_cast<uint8_t>(cr);
  }
}

// ----------------------------------------------------------- 4:2:2 packed --
// Byte orders of a packed pair: Y0 C0 Y1 C1 or C0 Y0 C1 Y1, with C0 = Cb or
// Cr.
enum PackedOrder { kYCbYCr, kYCrYCb, kCbYCrY };

// A lone last pixel of an odd-width row is written as two bytes, its luma and
// the first chroma of the order computed from that pixel alone, in the
// order's byte positions.
template <class SL, bool kBgr, int kM, int kOrder>
HWY_NOINLINE void Row422Packed(const uint8_t* const* s, uint8_t* dst, ptrdiff_t width) {
  using M = typename MatrixOf<kM>::type;
  const ptrdiff_t pairs = width / 2;
  constexpr bool kChromaFirst = kOrder == kCbYCrY;
  constexpr bool kCrFirst = kOrder == kYCrYCb;
  ptrdiff_t i = 0;
#if ZYL_SIMD
  const EncTag<SL> d8;
  const hn::Repartition<int16_t, decltype(d8)> d16;
  const ptrdiff_t n = static_cast<ptrdiff_t>(hn::Lanes(d8));
  for (; 2 * i + n <= 2 * pairs; i += n / 2) {
    const ptrdiff_t x = 2 * i;
    hn::Vec<decltype(d8)> r, g, b;
    LoadRgb<SL, kBgr>(d8, s, x, r, g, b);
    const auto y = Luma8<M>(d8, r, g, b);
    hn::Vec<decltype(d16)> cb, cr;
    M::Chroma2Vec(d16, PairSums(d8, r), PairSums(d8, g), PairSums(d8, b), cb, cr);
    const auto chroma = kCrFirst ? Interleave8(d16, cr, cb) : Interleave8(d16, cb, cr);
    if constexpr (kChromaFirst) {
      hn::StoreInterleaved2(chroma, y, d8, dst + 2 * x);
    } else {
      hn::StoreInterleaved2(y, chroma, d8, dst + 2 * x);
    }
  }
#endif
  for (; i < pairs; ++i) {
    int r0, g0, b0, r1, g1, b1;
    Rgb<SL, kBgr>(s, 2 * i, r0, g0, b0);
    Rgb<SL, kBgr>(s, 2 * i + 1, r1, g1, b1);
    int cb, cr;
    M::Chroma2(r0 + r1, g0 + g1, b0 + b1, cb, cr);
    uint8_t* p = dst + 4 * i;
    const int ya = kChromaFirst ? 1 : 0, ca = kChromaFirst ? 0 : 1;
    p[ya] = static_cast<uint8_t>(M::Luma(r0, g0, b0));
    p[ya + 2] = static_cast<uint8_t>(M::Luma(r1, g1, b1, true));
    p[ca] = static_cast<uint8_t>(kCrFirst ? cr : cb);
    p[ca + 2] = static_cast<uint8_t>(kCrFirst ? cb : cr);
  }
  if (width & 1) {
    int r, g, b, cb, cr;
    Rgb<SL, kBgr>(s, width - 1, r, g, b);
    M::Chroma1(r, g, b, cb, cr);
    uint8_t* p = dst + 4 * pairs;
    p[kChromaFirst ? 1 : 0] = static_cast<uint8_t>(M::Luma(r, g, b));
    p[kChromaFirst ? 0 : 1] = static_cast<uint8_t>(kCrFirst ? cr : cb);
  }
}

// The three-tap chroma of packed Cb Y0 Cr Y1 (BT.601): per pixel q(p) is the
// unscaled chroma row; the chroma of pair (p0, p1) is
// ((q(p0) >> 1) + (q(p-1) >> 2) + (q(p1) >> 2) + 128 * 65536 + 32767) >> 16,
// each term shifted on its own, weights 1/4, 1/2, 1/4 co-sited with p0. The
// first pair of a row has no left neighbour: p0 stands in for it (the edge
// pixel repeated, so flat colour stays flat at the border).
template <class SL, bool kBgr>
HWY_NOINLINE void RowCbYCrFiltered(const uint8_t* const* s, uint8_t* dst, ptrdiff_t width) {
  constexpr int kRound = 128 * 65536 + 32767;
  constexpr int kQbR = -9699, kQbG = -19071, kQbB = 28770;
  constexpr int kQrR = 28770, kQrG = -24117, kQrB = -4653;
  auto q = [&](ptrdiff_t x, int& qb, int& qr, int& y) {
    int r, g, b;
    Rgb<SL, kBgr>(s, x, r, g, b);
    qb = kQbR * r + kQbG * g + kQbB * b;
    qr = kQrR * r + kQrG * g + kQrB * b;
    y = Bt601::Luma(r, g, b);
  };
  const ptrdiff_t pairs = width / 2;
  ptrdiff_t i = 0;
  int prev_b = 0, prev_r = 0;
#if ZYL_SIMD
  // Per block: luma and the per-pixel q of both rows in int32 lanes go to
  // small arrays whose slot 0 holds q(p-1); the pairs are then read back
  // deinterleaved (even, odd, and odd of the pair before).
  const hn::CappedTag<uint8_t, 32> d8;
  const hn::Half<hn::Half<decltype(d8)>> dq8;
  const hn::Rebind<int32_t, decltype(dq8)> d32;
  const hn::Rebind<uint16_t, decltype(dq8)> du16;
  constexpr ptrdiff_t kMax = 32;
  const ptrdiff_t n = static_cast<ptrdiff_t>(hn::Lanes(d8));
  const ptrdiff_t n32 = static_cast<ptrdiff_t>(hn::Lanes(d32));
  HWY_ALIGN int32_t qb[kMax + 1 + 16], qr[kMax + 1 + 16];
  HWY_ALIGN uint8_t ybuf[kMax], cbcr[kMax];
  for (; 2 * i + n <= 2 * pairs; i += n / 2) {
    const ptrdiff_t x = 2 * i;
    hn::Vec<decltype(d8)> r, g, b;
    LoadRgb<SL, kBgr>(d8, s, x, r, g, b);
    hn::Store(Luma8<Bt601>(d8, r, g, b), d8, ybuf);
    const hn::Half<decltype(d8)> dh8;
    for (ptrdiff_t k = 0; k < 4; ++k) {
      auto quarter = [&](hn::Vec<decltype(d8)> v) {
        const auto h = (k & 2) ? hn::UpperHalf(dh8, v) : hn::LowerHalf(dh8, v);
        return hn::PromoteTo(d32, (k & 1) ? hn::UpperHalf(dq8, h) : hn::LowerHalf(dq8, h));
      };
      const auto r32 = quarter(r), g32 = quarter(g), b32 = quarter(b);
      auto dot = [&](int kr, int kg, int kb) {
        return hn::Add(hn::Add(hn::Mul(r32, hn::Set(d32, kr)), hn::Mul(g32, hn::Set(d32, kg))),
                       hn::Mul(b32, hn::Set(d32, kb)));
      };
      hn::StoreU(dot(kQbR, kQbG, kQbB), d32, qb + 1 + k * n32);
      hn::StoreU(dot(kQrR, kQrG, kQrB), d32, qr + 1 + k * n32);
    }
    if (i == 0) {  // the first pair of the row is its own left neighbour
      qb[0] = qb[1];
      qr[0] = qr[1];
    } else {
      qb[0] = prev_b;
      qr[0] = prev_r;
    }
    for (ptrdiff_t k = 0; k < n / 2; k += n32) {
      hn::Vec<decltype(d32)> eb, ob, mb, er, orr, mr, unused;
      hn::LoadInterleaved2(d32, qb + 1 + 2 * k, eb, ob);
      hn::LoadInterleaved2(d32, qb + 2 * k, mb, unused);
      hn::LoadInterleaved2(d32, qr + 1 + 2 * k, er, orr);
      hn::LoadInterleaved2(d32, qr + 2 * k, mr, unused);
      auto tap = [&](hn::Vec<decltype(d32)> e, hn::Vec<decltype(d32)> m, hn::Vec<decltype(d32)> o) {
        const auto sum = hn::Add(hn::Add(hn::ShiftRight<1>(e), hn::ShiftRight<2>(m)),
                                 hn::Add(hn::ShiftRight<2>(o), hn::Set(d32, kRound)));
        return hn::And(hn::ShiftRight<16>(sum), hn::Set(d32, 255));
      };
      const auto pair = hn::Or(tap(eb, mb, ob), hn::ShiftLeft<8>(tap(er, mr, orr)));
      hn::StoreU(hn::DemoteTo(du16, pair), du16, reinterpret_cast<uint16_t*>(cbcr) + k);
    }
    prev_b = qb[n];
    prev_r = qr[n];
    hn::StoreInterleaved2(hn::Load(d8, cbcr), hn::Load(d8, ybuf), d8, dst + 2 * x);
  }
#endif
  for (; i < pairs; ++i) {
    int qb0, qr0, y0, qb1, qr1, y1;
    q(2 * i, qb0, qr0, y0);
    q(2 * i + 1, qb1, qr1, y1);
    if (i == 0) {
      prev_b = qb0;
      prev_r = qr0;
    }
    uint8_t* p = dst + 4 * i;
    p[0] = static_cast<uint8_t>(((qb0 >> 1) + (prev_b >> 2) + (qb1 >> 2) + kRound) >> 16);
    p[1] = static_cast<uint8_t>(y0);
    p[2] = static_cast<uint8_t>(((qr0 >> 1) + (prev_r >> 2) + (qr1 >> 2) + kRound) >> 16);
    p[3] = static_cast<uint8_t>(y1);
    prev_b = qb1;
    prev_r = qr1;
  }
  if (width & 1) {
    int qb, qr, y;
    q(width - 1, qb, qr, y);
    dst[4 * pairs] = static_cast<uint8_t>((qb + 0x808000) >> 16);
    dst[4 * pairs + 1] = static_cast<uint8_t>(y);
  }
}

// ------------------------------------------------------------------- 4:1:1 --
// One chroma sample per four pixels of a row: the box average of the four
// (the group's own pixels), with the BT.601 weights applied to the sums and
// rounded to nearest (2^17 at >> 18).
template <class SL, bool kBgr>
HWY_NOINLINE void Row411(const uint8_t* const* s, uint8_t* y, uint8_t* cb_row, uint8_t* cr_row,
                         ptrdiff_t quads) {
  ptrdiff_t x = 0;
#if ZYL_SIMD
  const EncTag<SL> d8;
  const ptrdiff_t n = static_cast<ptrdiff_t>(hn::Lanes(d8));
  for (; x + n <= 4 * quads; x += n) {
    hn::Vec<decltype(d8)> r, g, b;
    LoadRgb<SL, kBgr>(d8, s, x, r, g, b);
    hn::StoreU(Luma8<Bt601>(d8, r, g, b), d8, y + x);
  }
#endif
  for (; x < 4 * quads; ++x) {
    int r, g, b;
    Rgb<SL, kBgr>(s, x, r, g, b);
    y[x] = static_cast<uint8_t>(Bt601::Luma(r, g, b));
  }
  for (ptrdiff_t i = 0; i < quads; ++i) {
    int sr = 0, sg = 0, sb = 0;
    for (int k = 0; k < 4; ++k) {
      int r, g, b;
      Rgb<SL, kBgr>(s, 4 * i + k, r, g, b);
      sr += r;
      sg += g;
      sb += b;
    }
    constexpr int kAdd = 128 * (1 << 18) + (1 << 17);
    cb_row[i] = static_cast<uint8_t>((-9699 * sr - 19071 * sg + 28770 * sb + kAdd) >> 18);
    cr_row[i] = static_cast<uint8_t>((28770 * sr - 24117 * sg - 4653 * sb + kAdd) >> 18);
  }
}

}  // namespace HWY_NAMESPACE
}  // namespace zyl
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zyl {

// Row pointers of a source: one interleaved plane, or three planes sharing
// one step.
template <class SL>
struct Source {
  const uint8_t* p[3];
  ptrdiff_t step;
  const uint8_t* const* Row(ptrdiff_t y, const uint8_t* (&out)[3]) const {
    for (int i = 0; i < SL::kPlanes; ++i) out[i] = p[i] + y * step;
    return out;
  }
};

template <class SL>
Source<SL> MakeSource(const uint8_t* src, int step) {
  return {{src, nullptr, nullptr}, step};
}
template <class SL>
Source<SL> MakeSource(const uint8_t* const* src, int step) {
  return {{src[0], src[1], src[2]}, step};
}

inline ZylStatus OddWarning(bool odd) { return odd ? zylStsDoubleSize : zylStsOk; }

// The checks of a member with planar destinations, in the order its family
// defines; 0 when all pass.
template <class SL, int kCheck, int kMin, class SP, class... P>
ZylStatus CheckPlanar(SP src, ZylSize roi, Zyl8u* const* planes, int plane_count, P... more) {
  if (kCheck == kSizeFirst && BadSize(roi, kMin, kMin)) return zylStsSizeErr;
  if (AnyNull(src, planes, more...)) return zylStsNullPtrErr;
  if (kCheck == kPlanesAlong &&
      (SidePlanesNull<SL>(src, 3) || AnyPlaneNull(planes, plane_count))) {
    return zylStsNullPtrErr;
  }
  if (BadSize(roi, kMin, kMin)) return zylStsSizeErr;
  if (SidePlanesNull<SL>(src, 3) || AnyPlaneNull(planes, plane_count)) return zylStsNullPtrErr;
  return zylStsOk;
}

// 4:2:0 into planes: luma, then plane 1 and plane 2 (Cb, Cr, or Cr, Cb for
// kCrFirst) or, two-plane, luma and Cb Cr pairs. floor(height / 2) row pairs
// and floor(width / 2) pixel pairs are converted; an odd size gives +35.
template <class SL, bool kBgr, int kM, bool kCrFirst, bool kTwoPlane, class SP>
ZylStatus Run420(SP src, int src_step, Zyl8u* const* planes, const ptrdiff_t* steps, ZylSize roi) {
  const Source<SL> source = MakeSource<SL>(src, src_step);
  const auto kernel = ZYL_DISPATCH(Rows420<SL, kBgr, kM, kCrFirst, kTwoPlane>);
  for (int k = 0; k < roi.height / 2; ++k) {
    const uint8_t* r0[3];
    const uint8_t* r1[3];
    uint8_t* c[2] = {planes[1] + k * steps[1], kTwoPlane ? nullptr : planes[2] + k * steps[2]};
    kernel(source.Row(2 * k, r0), source.Row(2 * k + 1, r1), planes[0] + 2 * k * steps[0],
           planes[0] + (2 * k + 1) * steps[0], c, roi.width / 2);
  }
  return OddWarning((roi.width | roi.height) & 1);
}

template <class SL, bool kBgr, int kM, bool kCrFirst, int kCheck = kPointersFirst, int kMin = 1,
          class SP>
ZylStatus Encode420P3(SP src, int src_step, Zyl8u* const dst[3], const int dst_step[3],
                      ZylSize roi) {
  if (const ZylStatus st = CheckPlanar<SL, kCheck, kMin>(src, roi, dst, 3, dst_step)) return st;
  const ptrdiff_t steps[3] = {dst_step[0], dst_step[1], dst_step[2]};
  return Run420<SL, kBgr, kM, kCrFirst, false>(src, src_step, dst, steps, roi);
}

template <class SL, bool kBgr, int kM, int kMin = 1>
ZylStatus Encode420P2(const Zyl8u* src, int src_step, Zyl8u* y, int y_step, Zyl8u* cbcr,
                      int cbcr_step, ZylSize roi) {
  if (AnyNull(src, y, cbcr)) return zylStsNullPtrErr;
  if (BadSize(roi, kMin, kMin)) return zylStsSizeErr;
  Zyl8u* const planes[2] = {y, cbcr};
  const ptrdiff_t steps[2] = {y_step, cbcr_step};
  return Run420<SL, kBgr, kM, false, true>(src, src_step, planes, steps, roi);
}

// 4:2:2 into three planes: every row, floor(width / 2) pairs; odd width +35.
template <class SL, bool kBgr, int kM, class SP>
ZylStatus Run422P3(SP src, int src_step, Zyl8u* const dst[3], const ptrdiff_t* steps,
                   ZylSize roi) {
  const Source<SL> source = MakeSource<SL>(src, src_step);
  const auto kernel = ZYL_DISPATCH(Row422Planar<SL, kBgr, kM>);
  for (int y = 0; y < roi.height; ++y) {
    const uint8_t* r[3];
    kernel(source.Row(y, r), dst[0] + y * steps[0], dst[1] + y * steps[1], dst[2] + y * steps[2],
           roi.width / 2);
  }
  return OddWarning(roi.width & 1);
}

template <class SL, bool kBgr, int kM, class SP>
ZylStatus Encode422P3(SP src, int src_step, Zyl8u* const dst[3], const int dst_step[3],
                      ZylSize roi) {
  if (const ZylStatus st = CheckPlanar<SL, kPointersFirst, 1>(src, roi, dst, 3, dst_step)) {
    return st;
  }
  const ptrdiff_t steps[3] = {dst_step[0], dst_step[1], dst_step[2]};
  return Run422P3<SL, kBgr, kM>(src, src_step, dst, steps, roi);
}

// Packed 4:2:2: every row, every pixel; always 0.
template <class SL, class SP, class Kernel>
ZylStatus EncodePacked(SP src, int src_step, Zyl8u* dst, int dst_step, ZylSize roi,
                       Kernel kernel) {
  if (AnyNull(src, dst)) return zylStsNullPtrErr;
  if (BadSize(roi)) return zylStsSizeErr;
  if (SidePlanesNull<SL>(src, 3)) return zylStsNullPtrErr;
  const Source<SL> source = MakeSource<SL>(src, src_step);
  for (int y = 0; y < roi.height; ++y) {
    const uint8_t* r[3];
    kernel(source.Row(y, r), dst + static_cast<ptrdiff_t>(y) * dst_step, roi.width);
  }
  return zylStsOk;
}

template <class SL, bool kBgr, int kM, int kOrder, class SP>
ZylStatus Encode422C2(SP src, int src_step, Zyl8u* dst, int dst_step, ZylSize roi) {
  return EncodePacked<SL>(src, src_step, dst, dst_step, roi,
                          ZYL_DISPATCH(Row422Packed<SL, kBgr, kM, kOrder>));
}

// 4:1:1 into three planes: floor(width / 4) groups of four pixels per row;
// a width that is not a multiple of 4 leaves the last 1 to 3 columns
// unwritten and gives +35, as an odd width does for the 2:1 layouts.
template <class SL, bool kBgr>
ZylStatus Encode411P3(const Zyl8u* src, int src_step, Zyl8u* const dst[3], const int dst_step[3],
                      ZylSize roi) {
  if (const ZylStatus st = CheckPlanar<SL, kPointersFirst, 1>(src, roi, dst, 3, dst_step)) {
    return st;
  }
  const auto kernel = ZYL_DISPATCH(Row411<SL, kBgr>);
  for (int y = 0; y < roi.height; ++y) {
    const uint8_t* row[1] = {src + static_cast<ptrdiff_t>(y) * src_step};
    kernel(row, dst[0] + static_cast<ptrdiff_t>(y) * dst_step[0],
           dst[1] + static_cast<ptrdiff_t>(y) * dst_step[1],
           dst[2] + static_cast<ptrdiff_t>(y) * dst_step[2], roi.width / 4);
  }
  return OddWarning(roi.width & 3);
}

// Whole-image members: steps implied by the width (source 3 * width for
// interleaved or width for planar RGB, luma width, 4:2:0 chroma width / 2,
// 4:2:2 chroma ceil(width / 2)).
template <class SL, bool k420, class SP>
ZylStatus EncodeWholeYuv(SP src, Zyl8u* const dst[3], ZylSize size) {
  if (const ZylStatus st = CheckPlanar<SL, kPointersFirst, 1>(src, size, dst, 3)) return st;
  const int src_step = SL::kPlanes == 1 ? 3 * size.width : size.width;
  const ptrdiff_t c_step = k420 ? size.width / 2 : (size.width + 1) / 2;
  const ptrdiff_t steps[3] = {size.width, c_step, c_step};
  if constexpr (k420) {
    return Run420<SL, false, kMatYuv, false, false>(src, src_step, dst, steps, size);
  } else {
    return Run422P3<SL, false, kMatYuv>(src, src_step, dst, steps, size);
  }
}

}  // namespace zyl

using zyl::AC4;
using zyl::C3;
using zyl::P3;
using zyl::kMatBt601;
using zyl::kMatBt601Packed;
using zyl::kMatBt709Csc;
using zyl::kMatBt709Hdtv;
using zyl::kMatYuv;
using zyl::kPlanesAlong;
using zyl::kPointersFirst;
using zyl::kSizeFirst;
namespace hn_enc = zyl::HWY_NAMESPACE;
constexpr bool kRgb = false, kBgr = true;
constexpr int kYCbYCr = hn_enc::kYCbYCr, kYCrYCb = hn_enc::kYCrYCb, kCbYCrY = hn_enc::kCbYCrY;

extern "C" {

// ---- 4:2:0, three planes
ZYL_API ZylStatus zyliBGRToYCbCr420_8u_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                             const int dstStep[3], ZylSize roiSize) {
  return zyl::Encode420P3<C3, kBgr, kMatBt601, false>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliBGRToYCbCr420_8u_AC4P3R(const Zyl8u* pSrc, int srcStep,
                                              Zyl8u* const pDst[3], const int dstStep[3],
                                              ZylSize roiSize) {
  return zyl::Encode420P3<AC4, kBgr, kMatBt601, false>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliRGBToYCbCr420_8u_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                             const int dstStep[3], ZylSize roiSize) {
  return zyl::Encode420P3<C3, kRgb, kMatBt601, false>(pSrc, srcStep, pDst, dstStep, roiSize);
}
// The YCrCb 4:2:0 members test the size before the pointers.
ZYL_API ZylStatus zyliBGRToYCrCb420_8u_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                             const int dstStep[3], ZylSize roiSize) {
  return zyl::Encode420P3<C3, kBgr, kMatBt601, true, kSizeFirst>(pSrc, srcStep, pDst, dstStep,
                                                                 roiSize);
}
ZYL_API ZylStatus zyliBGRToYCrCb420_8u_AC4P3R(const Zyl8u* pSrc, int srcStep,
                                              Zyl8u* const pDst[3], const int dstStep[3],
                                              ZylSize roiSize) {
  return zyl::Encode420P3<AC4, kBgr, kMatBt601, true, kSizeFirst>(pSrc, srcStep, pDst, dstStep,
                                                                  roiSize);
}
ZYL_API ZylStatus zyliRGBToYCrCb420_8u_AC4P3R(const Zyl8u* pSrc, int srcStep,
                                              Zyl8u* const pDst[3], const int dstStep[3],
                                              ZylSize roiSize) {
  return zyl::Encode420P3<AC4, kRgb, kMatBt601, true, kSizeFirst>(pSrc, srcStep, pDst, dstStep,
                                                                  roiSize);
}
// BT.709 studio: every pointer in one test, then a minimum size of 2.
ZYL_API ZylStatus zyliBGRToYCbCr420_709CSC_8u_C3P3R(const Zyl8u* pSrc, int srcStep,
                                                    Zyl8u* const pDst[3], const int dstStep[3],
                                                    ZylSize roiSize) {
  return zyl::Encode420P3<C3, kBgr, kMatBt709Csc, false, kPlanesAlong, 2>(pSrc, srcStep, pDst,
                                                                          dstStep, roiSize);
}
ZYL_API ZylStatus zyliBGRToYCbCr420_709CSC_8u_AC4P3R(const Zyl8u* pSrc, int srcStep,
                                                     Zyl8u* const pDst[3], const int dstStep[3],
                                                     ZylSize roiSize) {
  return zyl::Encode420P3<AC4, kBgr, kMatBt709Csc, false, kPlanesAlong, 2>(pSrc, srcStep, pDst,
                                                                           dstStep, roiSize);
}
ZYL_API ZylStatus zyliBGRToYCrCb420_709CSC_8u_C3P3R(const Zyl8u* pSrc, int srcStep,
                                                    Zyl8u* const pDst[3], const int dstStep[3],
                                                    ZylSize roiSize) {
  return zyl::Encode420P3<C3, kBgr, kMatBt709Csc, true, kPlanesAlong, 2>(pSrc, srcStep, pDst,
                                                                         dstStep, roiSize);
}
ZYL_API ZylStatus zyliBGRToYCrCb420_709CSC_8u_AC4P3R(const Zyl8u* pSrc, int srcStep,
                                                     Zyl8u* const pDst[3], const int dstStep[3],
                                                     ZylSize roiSize) {
  return zyl::Encode420P3<AC4, kBgr, kMatBt709Csc, true, kPlanesAlong, 2>(pSrc, srcStep, pDst,
                                                                          dstStep, roiSize);
}
ZYL_API ZylStatus zyliBGRToYCbCr420_709HDTV_8u_AC4P3R(const Zyl8u* pSrc, int srcStep,
                                                      Zyl8u* const pDst[3], const int dstStep[3],
                                                      ZylSize roiSize) {
  return zyl::Encode420P3<AC4, kBgr, kMatBt709Hdtv, false>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliBGRToYUV420_8u_AC4P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                            const int dstStep[3], ZylSize roiSize) {
  return zyl::Encode420P3<AC4, kBgr, kMatYuv, false>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliRGBToYUV420_8u_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                           const int dstStep[3], ZylSize roiSize) {
  return zyl::Encode420P3<C3, kRgb, kMatYuv, false>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliRGBToYUV420_8u_P3R(const Zyl8u* const pSrc[3], int srcStep,
                                         Zyl8u* const pDst[3], const int dstStep[3],
                                         ZylSize roiSize) {
  return zyl::Encode420P3<P3, kRgb, kMatYuv, false>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliRGBToYUV420_8u_C3P3(const Zyl8u* pSrc, Zyl8u* const pDst[3],
                                          ZylSize imgSize) {
  return zyl::EncodeWholeYuv<C3, true>(pSrc, pDst, imgSize);
}
ZYL_API ZylStatus zyliRGBToYUV420_8u_P3(const Zyl8u* const pSrc[3], Zyl8u* const pDst[3],
                                        ZylSize imgSize) {
  return zyl::EncodeWholeYuv<P3, true>(pSrc, pDst, imgSize);
}

// ---- 4:2:0, luma plane and Cb Cr pairs
ZYL_API ZylStatus zyliBGRToYCbCr420_8u_C3P2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDstY,
                                             int dstYStep, Zyl8u* pDstCbCr, int dstCbCrStep,
                                             ZylSize roiSize) {
  return zyl::Encode420P2<C3, kBgr, kMatBt601>(pSrc, srcStep, pDstY, dstYStep, pDstCbCr,
                                               dstCbCrStep, roiSize);
}
ZYL_API ZylStatus zyliBGRToYCbCr420_8u_AC4P2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDstY,
                                              int dstYStep, Zyl8u* pDstCbCr, int dstCbCrStep,
                                              ZylSize roiSize) {
  return zyl::Encode420P2<AC4, kBgr, kMatBt601>(pSrc, srcStep, pDstY, dstYStep, pDstCbCr,
                                                dstCbCrStep, roiSize);
}
ZYL_API ZylStatus zyliRGBToYCbCr420_8u_C3P2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDstY,
                                             int dstYStep, Zyl8u* pDstCbCr, int dstCbCrStep,
                                             ZylSize roiSize) {
  return zyl::Encode420P2<C3, kRgb, kMatBt601>(pSrc, srcStep, pDstY, dstYStep, pDstCbCr,
                                               dstCbCrStep, roiSize);
}
ZYL_API ZylStatus zyliRGBToYCbCr420_8u_C4P2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDstY,
                                             int dstYStep, Zyl8u* pDstCbCr, int dstCbCrStep,
                                             ZylSize roiSize) {
  return zyl::Encode420P2<AC4, kRgb, kMatBt601>(pSrc, srcStep, pDstY, dstYStep, pDstCbCr,
                                                dstCbCrStep, roiSize);
}
ZYL_API ZylStatus zyliBGRToYCbCr420_709CSC_8u_C3P2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDstY,
                                                    int dstYStep, Zyl8u* pDstCbCr,
                                                    int dstCbCrStep, ZylSize roiSize) {
  return zyl::Encode420P2<C3, kBgr, kMatBt709Csc, 2>(pSrc, srcStep, pDstY, dstYStep, pDstCbCr,
                                                     dstCbCrStep, roiSize);
}
ZYL_API ZylStatus zyliBGRToYCbCr420_709CSC_8u_AC4P2R(const Zyl8u* pSrc, int srcStep,
                                                     Zyl8u* pDstY, int dstYStep,
                                                     Zyl8u* pDstCbCr, int dstCbCrStep,
                                                     ZylSize roiSize) {
  return zyl::Encode420P2<AC4, kBgr, kMatBt709Csc, 2>(pSrc, srcStep, pDstY, dstYStep, pDstCbCr,
                                                      dstCbCrStep, roiSize);
}

// ---- 4:2:2, three planes
ZYL_API ZylStatus zyliBGRToYCbCr422_8u_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                             const int dstStep[3], ZylSize roiSize) {
  return zyl::Encode422P3<C3, kBgr, kMatBt601Packed>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliBGRToYCbCr422_8u_AC4P3R(const Zyl8u* pSrc, int srcStep,
                                              Zyl8u* const pDst[3], const int dstStep[3],
                                              ZylSize roiSize) {
  return zyl::Encode422P3<AC4, kBgr, kMatBt601Packed>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliRGBToYCbCr422_8u_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                             const int dstStep[3], ZylSize roiSize) {
  return zyl::Encode422P3<C3, kRgb, kMatBt601Packed>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliRGBToYUV422_8u_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                           const int dstStep[3], ZylSize roiSize) {
  return zyl::Encode422P3<C3, kRgb, kMatYuv>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliRGBToYUV422_8u_P3R(const Zyl8u* const pSrc[3], int srcStep,
                                         Zyl8u* const pDst[3], const int dstStep[3],
                                         ZylSize roiSize) {
  return zyl::Encode422P3<P3, kRgb, kMatYuv>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliRGBToYUV422_8u_C3P3(const Zyl8u* pSrc, Zyl8u* const pDst[3],
                                          ZylSize imgSize) {
  return zyl::EncodeWholeYuv<C3, false>(pSrc, pDst, imgSize);
}
ZYL_API ZylStatus zyliRGBToYUV422_8u_P3(const Zyl8u* const pSrc[3], Zyl8u* const pDst[3],
                                        ZylSize imgSize) {
  return zyl::EncodeWholeYuv<P3, false>(pSrc, pDst, imgSize);
}

// ---- 4:2:2, packed
ZYL_API ZylStatus zyliBGRToYCbCr422_8u_C3C2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize) {
  return zyl::Encode422C2<C3, kBgr, kMatBt601Packed, kYCbYCr>(pSrc, srcStep, pDst, dstStep,
                                                              roiSize);
}
ZYL_API ZylStatus zyliBGRToYCbCr422_8u_AC4C2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                              int dstStep, ZylSize roiSize) {
  return zyl::Encode422C2<AC4, kBgr, kMatBt601Packed, kYCbYCr>(pSrc, srcStep, pDst, dstStep,
                                                               roiSize);
}
ZYL_API ZylStatus zyliRGBToYCbCr422_8u_C3C2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize) {
  return zyl::Encode422C2<C3, kRgb, kMatBt601Packed, kYCbYCr>(pSrc, srcStep, pDst, dstStep,
                                                              roiSize);
}
ZYL_API ZylStatus zyliRGBToYCbCr422_8u_P3C2R(const Zyl8u* const pSrc[3], int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize) {
  return zyl::Encode422C2<P3, kRgb, kMatBt601Packed, kYCbYCr>(pSrc, srcStep, pDst, dstStep,
                                                              roiSize);
}
ZYL_API ZylStatus zyliRGBToYCrCb422_8u_C3C2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize) {
  return zyl::Encode422C2<C3, kRgb, kMatBt601Packed, kYCrYCb>(pSrc, srcStep, pDst, dstStep,
                                                              roiSize);
}
ZYL_API ZylStatus zyliRGBToYCrCb422_8u_P3C2R(const Zyl8u* const pSrc[3], int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize) {
  return zyl::Encode422C2<P3, kRgb, kMatBt601Packed, kYCrYCb>(pSrc, srcStep, pDst, dstStep,
                                                              roiSize);
}
ZYL_API ZylStatus zyliRGBToYUV422_8u_C3C2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                           int dstStep, ZylSize roiSize) {
  return zyl::Encode422C2<C3, kRgb, kMatYuv, kYCbYCr>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliBGRToCbYCr422_709HDTV_8u_C3C2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                                     int dstStep, ZylSize roiSize) {
  return zyl::Encode422C2<C3, kBgr, kMatBt709Hdtv, kCbYCrY>(pSrc, srcStep, pDst, dstStep,
                                                            roiSize);
}
ZYL_API ZylStatus zyliBGRToCbYCr422_709HDTV_8u_AC4C2R(const Zyl8u* pSrc, int srcStep,
                                                      Zyl8u* pDst, int dstStep, ZylSize roiSize) {
  return zyl::Encode422C2<AC4, kBgr, kMatBt709Hdtv, kCbYCrY>(pSrc, srcStep, pDst, dstStep,
                                                             roiSize);
}
ZYL_API ZylStatus zyliRGBToCbYCr422_8u_C3C2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize) {
  return zyl::EncodePacked<C3>(pSrc, srcStep, pDst, dstStep, roiSize,
                               ZYL_DISPATCH(RowCbYCrFiltered<C3, kRgb>));
}
ZYL_API ZylStatus zyliBGRToCbYCr422_8u_AC4C2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                              int dstStep, ZylSize roiSize) {
  return zyl::EncodePacked<AC4>(pSrc, srcStep, pDst, dstStep, roiSize,
                                ZYL_DISPATCH(RowCbYCrFiltered<AC4, kBgr>));
}

// ---- 4:1:1, three planes
ZYL_API ZylStatus zyliBGRToYCbCr411_8u_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                             const int dstStep[3], ZylSize roiSize) {
  return zyl::Encode411P3<C3, kBgr>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliBGRToYCbCr411_8u_AC4P3R(const Zyl8u* pSrc, int srcStep,
                                              Zyl8u* const pDst[3], const int dstStep[3],
                                              ZylSize roiSize) {
  return zyl::Encode411P3<AC4, kBgr>(pSrc, srcStep, pDst, dstStep, roiSize);
}

}  // extern "C"
#endif  // HWY_ONCE
