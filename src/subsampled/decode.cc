// 4:2:0, 4:2:2 and 4:1:1 YCbCr (BT.601 studio, BT.709 studio and full
// range) and YUV to RGB/BGR: planar, two-plane and packed sources; chroma is
// replicated over the pixels it serves.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "src/subsampled/decode.cc"
#include "src/subsampled/decode.h"

#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <cmath>

#include "src/core/dispatch.h"
#include "src/core/frame.h"
#include "src/core/map3-inl.h"
#include "src/core/rounding.h"
#include "src/core/saturate.h"

HWY_BEFORE_NAMESPACE();
namespace zyl {
namespace HWY_NAMESPACE {

// R = S[(kY Y + kRCr Cr' + kOffR) >> 16], G = S[(kY Y - kGCb Cb' - kGCr Cr' +
// kOffG) >> 16], B = S[(kY Y + kBCb Cb' + kOffB) >> 16], Cb' = Cb - 128,
// Cr' = Cr - 128, S the saturation to 0..255.
template <int kY, int kRCr, int kGCb, int kGCr, int kBCb, int kOffR, int kOffG, int kOffB>
struct DecodeMatrix {
  static void Pixel(int y, int cb, int cr, uint8_t rgb[3]) {
    cb -= 128;
    cr -= 128;
    rgb[0] = Clamp8((kY * y + kRCr * cr + kOffR) >> 16);
    rgb[1] = Clamp8((kY * y - kGCb * cb - kGCr * cr + kOffG) >> 16);
    rgb[2] = Clamp8((kY * y + kBCb * cb + kOffB) >> 16);
  }
#if ZYL_SIMD
  // Cb' and Cr' already centred.
  template <class D, class V = hn::Vec<D>>
  static void Vec16(D d, V y, V cb, V cr, V& r, V& g, V& b) {
    r = FixedDot16<kOffR, kY, kRCr>(d, y, cr);
    g = FixedDot16<kOffG, kY, -kGCb, -kGCr>(d, y, cb, cr);
    b = FixedDot16<kOffB, kY, kBCb>(d, y, cb);
  }
#endif
};

// BT.601 studio range, planar and two-plane sources: the luma offset 16 *
// 76284 = 1220544 with the rounding half folded in (1187776) on all three.
using Dec601 = DecodeMatrix<76284, 104595, 25690, 53281, 132186, -1187776, -1187776, -1187776>;
// Packed 4:2:2 sources keep their own set, every constant 2 below the planar
// one (16 * 76282 = 1220512, less the half: 1187744); kept as defined.
using Dec601Packed =
    DecodeMatrix<76282, 104593, 25689, 53279, 132184, -1187744, -1187744, -1187744>;
// BT.709 studio range in the planar scheme: 1.164, 1.793, 0.213, 0.533, 2.112
// (255/219 and the BT.709 chroma weights times 255/224, three decimals) times
// 65536.
using Dec709Csc = DecodeMatrix<76284, 117506, 13959, 34931, 138412, -1187776, -1187776, -1187776>;
// BT.709 full range: the inverse of the full-range encoder matrix (luma
// 0.213, 0.715, 0.072; chroma rows scaled by 0.511), which is R = Y +
// 1.540 Cr', G = Y - 0.183 Cb' - 0.459 Cr', B = Y + 1.816 Cb' to three
// decimals; no luma offset, rounding half on every channel.
using Dec709Hdtv = DecodeMatrix<65536, 100925, 11993, 30081, 119013, 32768, 32768, 32768>;
// Analogue YUV: the full-resolution YUV inverse (G without a rounding term).
using DecYuv = DecodeMatrix<65536, 74711, 25821, 38076, 133169, 32768, 0, 32768>;

template <int kId>
struct DecodeMatrixOf;
template <>
struct DecodeMatrixOf<kDec601> {
  using type = Dec601;
};
template <>
struct DecodeMatrixOf<kDec601Packed> {
  using type = Dec601Packed;
};
template <>
struct DecodeMatrixOf<kDec709Csc> {
  using type = Dec709Csc;
};
template <>
struct DecodeMatrixOf<kDec709Hdtv> {
  using type = Dec709Hdtv;
};
template <>
struct DecodeMatrixOf<kDecYuv> {
  using type = DecYuv;
};

// Writes pixel x of a destination row (BGR order swaps R and B).
template <class DL, bool kBgr>
inline void PutRgb(uint8_t* const* row, ptrdiff_t x, const uint8_t rgb[3], uint8_t aval) {
  const uint8_t c[4] = {rgb[kBgr ? 2 : 0], rgb[1], rgb[kBgr ? 0 : 2], aval};
  StorePixel<DL>(row, x, c);
}

#if ZYL_SIMD
template <class D8>
using Dec16 = hn::Repartition<int16_t, D8>;

// The chroma of n pixels from n / 2 samples, centred, as int16 lanes in the
// in-block order of Widen8 (each sample twice).
template <class D8, class V16 = hn::Vec<Dec16<D8>>>
HWY_INLINE void LoadPairChroma(D8 d8, const ChromaRow& c, ptrdiff_t i, V16 cb[2], V16 cr[2]) {
  const Dec16<D8> d16;
  const hn::Rebind<uint8_t, decltype(d16)> dh8;
  V16 cb16, cr16;
  if (c.paired) {
    const hn::Repartition<uint16_t, D8> du16;
    const auto w = hn::BitCast(du16, hn::LoadU(d8, c.cb + 2 * i));
    const V16 lo = hn::BitCast(d16, hn::And(w, hn::Set(du16, uint16_t{0xFF})));
    const V16 hi = hn::BitCast(d16, hn::ShiftRight<8>(w));
    cb16 = c.swap ? hi : lo;
    cr16 = c.swap ? lo : hi;
  } else {
    cb16 = hn::PromoteTo(d16, hn::LoadU(dh8, c.cb + i));
    cr16 = hn::PromoteTo(d16, hn::LoadU(dh8, c.cr + i));
  }
  const V16 c128 = hn::Set(d16, int16_t{128});
  cb16 = hn::Sub(cb16, c128);
  cr16 = hn::Sub(cr16, c128);
  cb[0] = hn::InterleaveLower(d16, cb16, cb16);
  cb[1] = hn::InterleaveUpper(d16, cb16, cb16);
  cr[0] = hn::InterleaveLower(d16, cr16, cr16);
  cr[1] = hn::InterleaveUpper(d16, cr16, cr16);
}

// One vector of pixels: luma y (full vector), chroma per Widen8 half.
template <class DL, bool kBgr, class M, class D8, class V8 = hn::Vec<D8>,
          class V16 = hn::Vec<Dec16<D8>>>
HWY_INLINE void DecodePixels(D8 d8, V8 y, const V16 cb[2], const V16 cr[2], uint8_t* const* dst,
                             ptrdiff_t x, V8 alpha) {
  const Dec16<D8> d16;
  V16 y2[2], r2[2], g2[2], b2[2];
  Widen8(d8, y, y2[0], y2[1]);
  for (int h = 0; h < 2; ++h) M::Vec16(d16, y2[h], cb[h], cr[h], r2[h], g2[h], b2[h]);
  const V8 r = Narrow8(d8, r2[0], r2[1]), g = Narrow8(d8, g2[0], g2[1]),
           b = Narrow8(d8, b2[0], b2[1]);
  if constexpr (kBgr) {
    StorePixels<DL>(d8, dst, x, b, g, r, alpha);
  } else {
    StorePixels<DL>(d8, dst, x, r, g, b, alpha);
  }
}

template <class DL>
using DecTag =
    std::conditional_t<DL::kPlanes == 1, hn::CappedTag<uint8_t, 32>, hn::ScalableTag<uint8_t>>;
#endif  // ZYL_SIMD

// Rows of luma (one, or two sharing a chroma row for 4:2:0) with chroma
// replicated over pixel pairs: `pairs` pairs per row.
template <class DL, bool kBgr, int kM, int kRows>
HWY_NOINLINE void RowsPairDecode(const uint8_t* const* y, ChromaRow c, uint8_t* const* const* dst,
                                 ptrdiff_t pairs, uint8_t aval) {
  using M = typename DecodeMatrixOf<kM>::type;
  ptrdiff_t i = 0;
#if ZYL_SIMD
  const DecTag<DL> d8;
  const ptrdiff_t n = static_cast<ptrdiff_t>(hn::Lanes(d8));
  const auto alpha = hn::Set(d8, aval);
  for (; 2 * i + n <= 2 * pairs; i += n / 2) {
    hn::Vec<Dec16<decltype(d8)>> cb[2], cr[2];
    LoadPairChroma(d8, c, i, cb, cr);
    for (int k = 0; k < kRows; ++k) {
      DecodePixels<DL, kBgr, M>(d8, hn::LoadU(d8, y[k] + 2 * i), cb, cr, dst[k], 2 * i, alpha);
    }
  }
#endif
  for (; i < pairs; ++i) {
    const int cb = c.paired ? c.cb[2 * i + (c.swap ? 1 : 0)] : c.cb[i];
    const int cr = c.paired ? c.cb[2 * i + (c.swap ? 0 : 1)] : c.cr[i];
    for (int k = 0; k < kRows; ++k) {
      uint8_t rgb[3];
      M::Pixel(y[k][2 * i], cb, cr, rgb);
      PutRgb<DL, kBgr>(dst[k], 2 * i, rgb, aval);
      M::Pixel(y[k][2 * i + 1], cb, cr, rgb);
      PutRgb<DL, kBgr>(dst[k], 2 * i + 1, rgb, aval);
    }
  }
}

// Packed 4:2:2: byte orders Y0 C0 Y1 C1 (kYFirst) or C0 Y0 C1 Y1, with C0 =
// Cb or, for kCrFirst, Cr.
template <class DL, bool kBgr, int kM, bool kYFirst, bool kCrFirst>
HWY_NOINLINE void RowPackedDecode(const uint8_t* src, uint8_t* const* dst, ptrdiff_t width,
                                  uint8_t aval) {
  using M = typename DecodeMatrixOf<kM>::type;
  const ptrdiff_t pairs = width / 2;
  constexpr int kY0 = kYFirst ? 0 : 1, kC0 = kYFirst ? 1 : 0;
  constexpr int kCb = kCrFirst ? kC0 + 2 : kC0, kCr = kCrFirst ? kC0 : kC0 + 2;
  ptrdiff_t i = 0;
#if ZYL_SIMD
  const DecTag<DL> d8;
  const Dec16<decltype(d8)> d16;
  const hn::Repartition<uint16_t, decltype(d8)> du16;
  const ptrdiff_t n = static_cast<ptrdiff_t>(hn::Lanes(d8));
  const auto alpha = hn::Set(d8, aval);
  for (; 2 * i + n <= 2 * pairs; i += n / 2) {
    hn::Vec<decltype(d8)> a, b;
    hn::LoadInterleaved2(d8, src + 4 * i, a, b);
    const auto y = kYFirst ? a : b;
    const auto w = hn::BitCast(du16, kYFirst ? b : a);  // C0 | C1 << 8 per pair
    auto c0 = hn::BitCast(d16, hn::And(w, hn::Set(du16, uint16_t{0xFF})));
    auto c1 = hn::BitCast(d16, hn::ShiftRight<8>(w));
    const auto c128 = hn::Set(d16, int16_t{128});
    c0 = hn::Sub(c0, c128);
    c1 = hn::Sub(c1, c128);
    const auto cb16 = kCrFirst ? c1 : c0, cr16 = kCrFirst ? c0 : c1;
    const hn::Vec<decltype(d16)> cb[2] = {hn::InterleaveLower(d16, cb16, cb16),
                                          hn::InterleaveUpper(d16, cb16, cb16)};
    const hn::Vec<decltype(d16)> cr[2] = {hn::InterleaveLower(d16, cr16, cr16),
                                          hn::InterleaveUpper(d16, cr16, cr16)};
    DecodePixels<DL, kBgr, M>(d8, y, cb, cr, dst, 2 * i, alpha);
  }
#endif
  for (; i < pairs; ++i) {
    const uint8_t* p = src + 4 * i;
    uint8_t rgb[3];
    M::Pixel(p[kY0], p[kCb], p[kCr], rgb);
    PutRgb<DL, kBgr>(dst, 2 * i, rgb, aval);
    M::Pixel(p[kY0 + 2], p[kCb], p[kCr], rgb);
    PutRgb<DL, kBgr>(dst, 2 * i + 1, rgb, aval);
  }
  if (width & 1) {
    // The lone last pixel holds its luma and one chroma byte (the first of
    // the order); the missing chroma is the other one of the pair before it,
    // except when at most one pair precedes (widths 1 and 3): then its own
    // chroma byte serves for both. Its R and B land swapped relative to the
    // pairs: the value of the R formula goes to byte 2, that of B to byte 0.
    const uint8_t* p = src + 4 * pairs;
    const int own = p[kC0];
    const int other = pairs >= 2 ? (p - 4)[kC0 + 2] : own;
    const int cb = kCrFirst ? other : own, cr = kCrFirst ? own : other;
    uint8_t rgb[3];
    M::Pixel(p[kY0], cb, cr, rgb);
    const uint8_t swapped[3] = {rgb[2], rgb[1], rgb[0]};
    PutRgb<DL, kBgr>(dst, width - 1, swapped, aval);
  }
}

// 4:1:1 and filtered rows: chroma already at full resolution (one sample per
// pixel) in cb and cr.
template <class DL, bool kBgr, int kM>
HWY_NOINLINE void RowFullChromaDecode(const uint8_t* y, const uint8_t* cb_p, const uint8_t* cr_p,
                                      uint8_t* const* dst, ptrdiff_t width, uint8_t aval) {
  using M = typename DecodeMatrixOf<kM>::type;
  ptrdiff_t x = 0;
#if ZYL_SIMD
  const DecTag<DL> d8;
  const Dec16<decltype(d8)> d16;
  const ptrdiff_t n = static_cast<ptrdiff_t>(hn::Lanes(d8));
  const auto alpha = hn::Set(d8, aval);
  const auto c128 = hn::Set(d16, int16_t{128});
  for (; x + n <= width; x += n) {
    hn::Vec<decltype(d16)> cb[2], cr[2];
    Widen8(d8, hn::LoadU(d8, cb_p + x), cb[0], cb[1]);
    Widen8(d8, hn::LoadU(d8, cr_p + x), cr[0], cr[1]);
    for (int h = 0; h < 2; ++h) {
      cb[h] = hn::Sub(cb[h], c128);
      cr[h] = hn::Sub(cr[h], c128);
    }
    DecodePixels<DL, kBgr, M>(d8, hn::LoadU(d8, y + x), cb, cr, dst, x, alpha);
  }
#endif
  for (; x < width; ++x) {
    uint8_t rgb[3];
    M::Pixel(y[x], cb_p[x], cr_p[x], rgb);
    PutRgb<DL, kBgr>(dst, x, rgb, aval);
  }
}

}  // namespace HWY_NAMESPACE
}  // namespace zyl
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zyl {

// Row y of a destination: an interleaved image or three planes sharing one
// step; x pixels in.
template <class DL>
struct Dest {
  uint8_t* p[3];
  ptrdiff_t step;
  uint8_t* const* Row(ptrdiff_t y, ptrdiff_t x, uint8_t* (&out)[4]) const {
    for (int i = 0; i < DL::kPlanes; ++i) out[i] = p[i] + y * step + x * DL::kStride;
    return out;
  }
};
template <class DL>
Dest<DL> MakeDest(Zyl8u* dst, int step) {
  return {{dst, nullptr, nullptr}, step};
}
template <class DL>
Dest<DL> MakeDest(Zyl8u* const* dst, int step) {
  return {{dst[0], dst[1], dst[2]}, step};
}

template <class DL, class DP>
bool DestPlanesNull(DP dst) {
  if constexpr (DL::kPlanes > 1) {
    return AnyPlaneNull(dst, 3);
  } else {
    (void)dst;
    return false;
  }
}

inline ZylStatus Warn(bool odd) { return odd ? zylStsDoubleSize : zylStsOk; }

// Luma plane and chroma planes (or one pair plane) with their steps, in
// Y, Cb, Cr roles.
struct YccPlanes {
  const uint8_t* y;
  ptrdiff_t y_step;
  const uint8_t* cb;
  ptrdiff_t cb_step;
  const uint8_t* cr;
  ptrdiff_t cr_step;
  bool paired, swap;
  ChromaRow Chroma(ptrdiff_t k) const {
    return {cb + k * cb_step, paired ? nullptr : cr + k * cr_step, paired, swap};
  }
};

// floor(height / 2) row pairs, each sharing one chroma row.
template <class DL, bool kBgr, int kM>
void Run420(const YccPlanes& in, const Dest<DL>& out, ZylSize roi, Zyl8u aval) {
  const auto kernel = ZYL_DISPATCH(RowsPairDecode<DL, kBgr, kM, 2>);
  for (int k = 0; k < roi.height / 2; ++k) {
    const uint8_t* y[2] = {in.y + 2 * k * in.y_step, in.y + (2 * k + 1) * in.y_step};
    uint8_t* r0[4];
    uint8_t* r1[4];
    uint8_t* const* dst[2] = {out.Row(2 * k, 0, r0), out.Row(2 * k + 1, 0, r1)};
    kernel(y, in.Chroma(k), dst, roi.width / 2, aval);
  }
}

// Every row with its own chroma row (4:2:2 planar).
template <class DL, bool kBgr, int kM>
void Run422(const YccPlanes& in, const Dest<DL>& out, ZylSize roi, Zyl8u aval) {
  const auto kernel = ZYL_DISPATCH(RowsPairDecode<DL, kBgr, kM, 1>);
  for (int k = 0; k < roi.height; ++k) {
    const uint8_t* y[1] = {in.y + k * in.y_step};
    uint8_t* r[4];
    uint8_t* const* dst[1] = {out.Row(k, 0, r)};
    kernel(y, in.Chroma(k), dst, roi.width / 2, aval);
  }
}

// The checks of the three-plane decoders: source array and destination,
// size (kSizeFirst: size first), then source planes and destination planes.
template <class DL, bool kSizeFirst, class DP>
ZylStatus CheckPlanes(const Zyl8u* const* src, const void* steps, DP dst, ZylSize roi) {
  if (kSizeFirst && BadSize(roi)) return zylStsSizeErr;
  if (AnyNull(src, steps, dst)) return zylStsNullPtrErr;
  if (BadSize(roi)) return zylStsSizeErr;
  if (AnyPlaneNull(src, 3) || DestPlanesNull<DL>(dst)) return zylStsNullPtrErr;
  return zylStsOk;
}

// 4:2:0 from three planes Y, Cb, Cr (Y, Cr, Cb with kCrFirst). The status
// is fixed before converting; a height below 2 converts nothing.
template <class DL, bool kBgr, int kM, bool kCrFirst, bool kSizeFirst = false, class DP>
ZylStatus Decode420P3(const Zyl8u* const src[3], const int src_step[3], DP dst, int dst_step,
                      ZylSize roi, Zyl8u aval = 0) {
  if (const ZylStatus st = CheckPlanes<DL, kSizeFirst>(src, src_step, dst, roi)) return st;
  const int c1 = kCrFirst ? 2 : 1, c2 = kCrFirst ? 1 : 2;
  const YccPlanes in{src[0],  src_step[0],  src[c1], src_step[c1],
                     src[c2], src_step[c2], false,   false};
  Run420<DL, kBgr, kM>(in, MakeDest<DL>(dst, dst_step), roi, aval);
  return Warn((roi.width | roi.height) & 1);
}

// 4:2:0 from a luma plane and a plane of chroma pairs (Cb Cr, or Cr Cb).
template <class DL, bool kBgr, bool kSwap, bool kSizeFirst = false>
ZylStatus Decode420P2(const Zyl8u* y, int y_step, const Zyl8u* c, int c_step, Zyl8u* dst,
                      int dst_step, ZylSize roi, Zyl8u aval = 0) {
  if (kSizeFirst && BadSize(roi)) return zylStsSizeErr;
  if (AnyNull(y, c, dst)) return zylStsNullPtrErr;
  if (BadSize(roi)) return zylStsSizeErr;
  const YccPlanes in{y, y_step, c, c_step, nullptr, 0, true, kSwap};
  Run420<DL, kBgr, kDec601>(in, MakeDest<DL>(dst, dst_step), roi, aval);
  return Warn((roi.width | roi.height) & 1);
}

// 4:2:2 from three planes: every row, floor(width / 2) pairs, +35 on an odd
// width (its last column is not written).
template <class DL, bool kBgr, int kM, class DP>
ZylStatus Decode422P3(const Zyl8u* const src[3], const int src_step[3], DP dst, int dst_step,
                      ZylSize roi, Zyl8u aval = 0) {
  if (const ZylStatus st = CheckPlanes<DL, false>(src, src_step, dst, roi)) return st;
  const YccPlanes in{src[0], src_step[0], src[1], src_step[1], src[2], src_step[2], false, false};
  Run422<DL, kBgr, kM>(in, MakeDest<DL>(dst, dst_step), roi, aval);
  return Warn(roi.width & 1);
}

// Packed 4:2:2: every row and pixel (the odd last pixel by its own rule);
// always 0.
template <class DL, bool kBgr, int kM, bool kYFirst, bool kCrFirst, class DP>
ZylStatus DecodePacked(const Zyl8u* src, int src_step, DP dst, int dst_step, ZylSize roi,
                       Zyl8u aval = 0) {
  if (AnyNull(src, dst)) return zylStsNullPtrErr;
  if (BadSize(roi)) return zylStsSizeErr;
  if (DestPlanesNull<DL>(dst)) return zylStsNullPtrErr;
  const Dest<DL> out = MakeDest<DL>(dst, dst_step);
  const auto kernel = ZYL_DISPATCH(RowPackedDecode<DL, kBgr, kM, kYFirst, kCrFirst>);
  for (int y = 0; y < roi.height; ++y) {
    uint8_t* r[4];
    kernel(src + static_cast<ptrdiff_t>(y) * src_step, out.Row(y, 0, r), roi.width, aval);
  }
  return zylStsOk;
}

// Rows whose chroma is first brought to one sample per pixel in a small
// buffer, a chunk of kChunk pixels at a time.
constexpr ptrdiff_t kChunk = 512;

// 4:1:1 from three planes: floor(width / 4) groups per row, each chroma
// sample serving its four pixels; a width that is not a multiple of 4 leaves
// the last 1 to 3 columns unwritten and gives +35.
template <class DL, bool kBgr>
ZylStatus Decode411P3(const Zyl8u* const src[3], const int src_step[3], Zyl8u* dst, int dst_step,
                      ZylSize roi, Zyl8u aval = 0) {
  if (const ZylStatus st = CheckPlanes<DL, false>(src, src_step, dst, roi)) return st;
  const Dest<DL> out = MakeDest<DL>(dst, dst_step);
  const auto kernel = ZYL_DISPATCH(RowFullChromaDecode<DL, kBgr, kDec601>);
  const ptrdiff_t width = roi.width & ~3;
  uint8_t cb[kChunk], cr[kChunk];
  for (int y = 0; y < roi.height; ++y) {
    const uint8_t* yr = src[0] + static_cast<ptrdiff_t>(y) * src_step[0];
    const uint8_t* cbr = src[1] + static_cast<ptrdiff_t>(y) * src_step[1];
    const uint8_t* crr = src[2] + static_cast<ptrdiff_t>(y) * src_step[2];
    for (ptrdiff_t x0 = 0; x0 < width; x0 += kChunk) {
      const ptrdiff_t n = width - x0 < kChunk ? width - x0 : kChunk;
      for (ptrdiff_t x = 0; x < n; ++x) {
        cb[x] = cbr[(x0 + x) >> 2];
        cr[x] = crr[(x0 + x) >> 2];
      }
      uint8_t* r[4];
      kernel(yr + x0, cb, cr, out.Row(y, x0, r), n, aval);
    }
  }
  return Warn(roi.width & 3);
}

// 4:2:0 with the chroma rows interpolated vertically by the half-sample
// filter (-1, 9, 9, -1) / 16, taps beyond the plane taking the nearest
// existing row: luma row 2k uses chroma row k as it stands, luma row 2k + 1
// the value halfway between chroma rows k and k + 1. Horizontally each
// sample serves its pixel pair.
template <class DL, bool kBgr>
ZylStatus DecodeFiltered420(const Zyl8u* const src[3], const int src_step[3], Zyl8u* dst,
                            int dst_step, ZylSize roi, Zyl8u aval) {
  if (const ZylStatus st = CheckPlanes<DL, true>(src, src_step, dst, roi)) return st;
  const Dest<DL> out = MakeDest<DL>(dst, dst_step);
  const auto kernel = ZYL_DISPATCH(RowsPairDecode<DL, kBgr, kDec601, 1>);
  const int rows = roi.height / 2;
  const ptrdiff_t pairs = roi.width / 2;
  // Planes Y, Cr, Cb.
  auto chroma = [&](int plane, int k) {
    k = k < 0 ? 0 : k >= rows ? rows - 1 : k;
    return src[plane] + static_cast<ptrdiff_t>(k) * src_step[plane];
  };
  uint8_t cb[kChunk], cr[kChunk];
  for (int k = 0; k < rows; ++k) {
    for (int half = 0; half < 2; ++half) {
      const int y = 2 * k + half;
      for (ptrdiff_t i0 = 0; i0 < pairs; i0 += kChunk) {
        const ptrdiff_t n = pairs - i0 < kChunk ? pairs - i0 : kChunk;
        ChromaRow c{chroma(2, k) + i0, chroma(1, k) + i0, false, false};
        if (half == 1) {
          for (int plane = 1; plane <= 2; ++plane) {
            const uint8_t* a = chroma(plane, k - 1) + i0;
            const uint8_t* b = chroma(plane, k) + i0;
            const uint8_t* e = chroma(plane, k + 1) + i0;
            const uint8_t* f = chroma(plane, k + 2) + i0;
            uint8_t* o = plane == 2 ? cb : cr;
            for (ptrdiff_t i = 0; i < n; ++i) {
              o[i] = Clamp8((9 * (b[i] + e[i]) - a[i] - f[i] + 8) >> 4);
            }
          }
          c = ChromaRow{cb, cr, false, false};
        }
        const uint8_t* yr[1] = {src[0] + static_cast<ptrdiff_t>(y) * src_step[0] + 2 * i0};
        uint8_t* r[4];
        uint8_t* const* d[1] = {out.Row(y, 2 * i0, r)};
        kernel(yr, c, d, n, aval);
      }
    }
  }
  return Warn((roi.width | roi.height) & 1);
}

// Whole-image members: steps implied by the width (luma and destination
// planes width, 4:2:0 chroma width / 2, 4:2:2 chroma ceil(width / 2),
// interleaved destination 3 * width).
template <class DL, bool k420, class DP>
ZylStatus DecodeWholeYuv(const Zyl8u* const src[3], DP dst, ZylSize size) {
  const int c_step = k420 ? size.width / 2 : (size.width + 1) / 2;
  const int steps[3] = {size.width, c_step, c_step};
  const int dst_step = DL::kPlanes == 1 ? 3 * size.width : size.width;
  if (AnyNull(src, dst)) return zylStsNullPtrErr;
  if constexpr (k420) {
    return Decode420P3<DL, false, kDecYuv, false>(src, steps, dst, dst_step, size);
  } else {
    return Decode422P3<DL, false, kDecYuv>(src, steps, dst, dst_step, size);
  }
}

}  // namespace zyl

using zyl::AC4;
using zyl::C3;
using zyl::C4;
using zyl::P3;

// ------------------------------------------------------------------ v210 --
// Rows of groups of four little-endian 32-bit words, six pixels each; the
// source step counts 32-bit words and the destination step 16-bit elements,
// and steps below 1 are reported as size errors.
namespace {

inline int Field(uint32_t word, int k) { return static_cast<int>((word >> (10 * k)) & 0x3FF); }

// Y, Cb, Cr of pixel j (0..5) of a group.
inline void V210Pixel(const uint32_t* g, int j, int& y, int& cb, int& cr) {
  static constexpr int kY[6][2] = {{0, 1}, {1, 0}, {1, 2}, {2, 1}, {3, 0}, {3, 2}};
  static constexpr int kCb[3][2] = {{0, 0}, {1, 1}, {2, 2}};
  static constexpr int kCr[3][2] = {{0, 2}, {2, 0}, {3, 1}};
  y = Field(g[kY[j][0]], kY[j][1]);
  cb = Field(g[kCb[j / 2][0]], kCb[j / 2][1]);
  cr = Field(g[kCr[j / 2][0]], kCr[j / 2][1]);
}

inline ZylStatus CheckV210(const void* src, int src_step, const void* dst, int dst_step,
                           ZylSize roi) {
  if (zyl::AnyNull(src, dst)) return zylStsNullPtrErr;
  if (zyl::BadSize(roi) || src_step < 1 || dst_step < 1) return zylStsSizeErr;
  return zylStsOk;
}

// 5-6-5: the first-named component in the top five bits (R for RGB, B for
// BGR), the middle one in six, the last in the low five.
template <bool kBgr>
inline uint16_t V210Color(int yi, float cb, float cr) {
  // |value| < 2^22, so adding and taking away 1.5 * 2^23 rounds by the
  // processor mode (nearest-even under the caller's guard) like nearbyint.
  constexpr float kRounder = 12582912.0f;
  auto clamp = [](float v, int hi) {
    const int i = static_cast<int>((v + kRounder) - kRounder);
    return i < 0 ? 0 : i > hi ? hi : i;
  };
  const float y = static_cast<float>(yi);
  const int r = clamp(y + 1.54f * cr, 31);
  const int g = clamp(y - 0.183f * cb - 0.459f * cr, 63);
  const int b = clamp(y + 1.816f * cb, 31);
  return static_cast<uint16_t>(kBgr ? (b << 11) | (g << 5) | r : (r << 11) | (g << 5) | b);
}

template <bool kBgr>
ZylStatus V210ToColor(const Zyl32u* src, int src_step, Zyl16u* dst, int dst_step, ZylSize roi) {
  if (const ZylStatus st = CheckV210(src, src_step, dst, dst_step, roi)) return st;
  const zyl::NearestRounding nearest;
  for (int row = 0; row < roi.height; ++row) {
    const uint32_t* s = src + static_cast<ptrdiff_t>(row) * src_step;
    uint16_t* d = dst + static_cast<ptrdiff_t>(row) * dst_step;
    // A group at a time: its six luma and three chroma pairs unpacked once.
    for (int x0 = 0; x0 < roi.width; x0 += 6, s += 4) {
      const int n = roi.width - x0 < 6 ? roi.width - x0 : 6;
      for (int j = 0; j < n; j += 2) {
        int y0, y1, cbi, cri;
        V210Pixel(s, j, y0, cbi, cri);
        const float cb = static_cast<float>(cbi) - 512.0f, cr = static_cast<float>(cri) - 512.0f;
        d[x0 + j] = V210Color<kBgr>(y0, cb, cr);
        if (j + 1 < n) {
          V210Pixel(s, j + 1, y1, cbi, cri);
          d[x0 + j + 1] = V210Color<kBgr>(y1, cb, cr);
        }
      }
    }
  }
  return zylStsOk;
}

}  // namespace

extern "C" {

ZYL_API ZylStatus zyliCbYCr422ToBGR_709HDTV_8u_C2C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                                     int dstStep, ZylSize roiSize) {
  return zyl::DecodePacked<C3, true, zyl::kDec709Hdtv, false, false>(pSrc, srcStep, pDst, dstStep,
                                                                     roiSize);
}

ZYL_API ZylStatus zyliCbYCr422ToBGR_709HDTV_8u_C2C4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                                     int dstStep, ZylSize roiSize, Zyl8u aval) {
  return zyl::DecodePacked<C4, true, zyl::kDec709Hdtv, false, false>(pSrc, srcStep, pDst, dstStep,
                                                                     roiSize, aval);
}

ZYL_API ZylStatus zyliCbYCr422ToBGR_8u_C2C4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize, Zyl8u aval) {
  return zyl::DecodePacked<C4, true, zyl::kDec601Packed, false, false>(pSrc, srcStep, pDst, dstStep,
                                                                       roiSize, aval);
}

ZYL_API ZylStatus zyliCbYCr422ToRGB_8u_C2C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize) {
  return zyl::DecodePacked<C3, false, zyl::kDec601Packed, false, false>(pSrc, srcStep, pDst,
                                                                        dstStep, roiSize);
}

ZYL_API ZylStatus zyliYCbCr411ToBGR_8u_P3C3R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                             Zyl8u* pDst, int dstStep, ZylSize roiSize) {
  return zyl::Decode411P3<C3, true>(pSrc, srcStep, pDst, dstStep, roiSize);
}

ZYL_API ZylStatus zyliYCbCr411ToBGR_8u_P3C4R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                             Zyl8u* pDst, int dstStep, ZylSize roiSize,
                                             Zyl8u aval) {
  return zyl::Decode411P3<C4, true>(pSrc, srcStep, pDst, dstStep, roiSize, aval);
}

ZYL_API ZylStatus zyliYCbCr420ToBGR_709CSC_8u_P3C3R(const Zyl8u* const pSrc[3],
                                                    const int srcStep[3], Zyl8u* pDst, int dstStep,
                                                    ZylSize roiSize) {
  return zyl::Decode420P3<C3, true, zyl::kDec709Csc, false, false>(pSrc, srcStep, pDst, dstStep,
                                                                   roiSize);
}

ZYL_API ZylStatus zyliYCbCr420ToBGR_709HDTV_8u_P3C4R(const Zyl8u* const pSrc[3],
                                                     const int srcStep[3], Zyl8u* pDst, int dstStep,
                                                     ZylSize roiSize, Zyl8u aval) {
  return zyl::Decode420P3<C4, true, zyl::kDec709Hdtv, false, false>(pSrc, srcStep, pDst, dstStep,
                                                                    roiSize, aval);
}

ZYL_API ZylStatus zyliYCbCr420ToBGR_8u_P2C3R(const Zyl8u* pSrcY, int srcYStep,
                                             const Zyl8u* pSrcCbCr, int srcCbCrStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize) {
  return zyl::Decode420P2<C3, true, false, false>(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst,
                                                  dstStep, roiSize);
}

ZYL_API ZylStatus zyliYCbCr420ToBGR_8u_P2C4R(const Zyl8u* pSrcY, int srcYStep,
                                             const Zyl8u* pSrcCbCr, int srcCbCrStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize, Zyl8u aval) {
  return zyl::Decode420P2<C4, true, false, false>(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst,
                                                  dstStep, roiSize, aval);
}

ZYL_API ZylStatus zyliYCbCr420ToRGB_8u_P2C3R(const Zyl8u* pSrcY, int srcYStep,
                                             const Zyl8u* pSrcCbCr, int srcCbCrStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize) {
  return zyl::Decode420P2<C3, false, false, false>(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst,
                                                   dstStep, roiSize);
}

ZYL_API ZylStatus zyliYCbCr420ToRGB_8u_P2C4R(const Zyl8u* pSrcY, int srcYStep,
                                             const Zyl8u* pSrcCbCr, int srcCbCrStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize, Zyl8u aval) {
  return zyl::Decode420P2<C4, false, false, false>(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst,
                                                   dstStep, roiSize, aval);
}

ZYL_API ZylStatus zyliYCbCr420ToBGR_8u_P3C3R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                             Zyl8u* pDst, int dstStep, ZylSize roiSize) {
  return zyl::Decode420P3<C3, true, zyl::kDec601, false, false>(pSrc, srcStep, pDst, dstStep,
                                                                roiSize);
}

ZYL_API ZylStatus zyliYCbCr420ToBGR_8u_P3C4R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                             Zyl8u* pDst, int dstStep, ZylSize roiSize,
                                             Zyl8u aval) {
  return zyl::Decode420P3<C4, true, zyl::kDec601, false, false>(pSrc, srcStep, pDst, dstStep,
                                                                roiSize, aval);
}

ZYL_API ZylStatus zyliYCbCr420ToRGB_8u_P3C3R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                             Zyl8u* pDst, int dstStep, ZylSize roiSize) {
  return zyl::Decode420P3<C3, false, zyl::kDec601, false, false>(pSrc, srcStep, pDst, dstStep,
                                                                 roiSize);
}

ZYL_API ZylStatus zyliYCbCr422ToBGR_8u_C2C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize) {
  return zyl::DecodePacked<C3, true, zyl::kDec601Packed, true, false>(pSrc, srcStep, pDst, dstStep,
                                                                      roiSize);
}

ZYL_API ZylStatus zyliYCbCr422ToBGR_8u_C2C4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize, Zyl8u aval) {
  return zyl::DecodePacked<C4, true, zyl::kDec601Packed, true, false>(pSrc, srcStep, pDst, dstStep,
                                                                      roiSize, aval);
}

ZYL_API ZylStatus zyliYCbCr422ToBGR_8u_P3C3R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                             Zyl8u* pDst, int dstStep, ZylSize roiSize) {
  return zyl::Decode422P3<C3, true, zyl::kDec601>(pSrc, srcStep, pDst, dstStep, roiSize);
}

ZYL_API ZylStatus zyliYCbCr422ToRGB_8u_C2C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize) {
  return zyl::DecodePacked<C3, false, zyl::kDec601Packed, true, false>(pSrc, srcStep, pDst, dstStep,
                                                                       roiSize);
}

ZYL_API ZylStatus zyliYCbCr422ToRGB_8u_C2C4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize, Zyl8u aval) {
  return zyl::DecodePacked<C4, false, zyl::kDec601Packed, true, false>(pSrc, srcStep, pDst, dstStep,
                                                                       roiSize, aval);
}

ZYL_API ZylStatus zyliYCbCr422ToRGB_8u_C2P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                             int dstStep, ZylSize roiSize) {
  return zyl::DecodePacked<P3, false, zyl::kDec601Packed, true, false>(pSrc, srcStep, pDst, dstStep,
                                                                       roiSize);
}

ZYL_API ZylStatus zyliYCbCr422ToRGB_8u_P3C3R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                             Zyl8u* pDst, int dstStep, ZylSize roiSize) {
  return zyl::Decode422P3<C3, false, zyl::kDec601>(pSrc, srcStep, pDst, dstStep, roiSize);
}

ZYL_API ZylStatus zyliYCrCb420ToBGR_8u_P2C3R(const Zyl8u* pSrcY, int srcYStep,
                                             const Zyl8u* pSrcCbCr, int srcCbCrStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize) {
  return zyl::Decode420P2<C3, true, true, true>(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst,
                                                dstStep, roiSize);
}

ZYL_API ZylStatus zyliYCrCb420ToBGR_8u_P2C4R(const Zyl8u* pSrcY, int srcYStep,
                                             const Zyl8u* pSrcCbCr, int srcCbCrStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize, Zyl8u aval) {
  return zyl::Decode420P2<C4, true, true, true>(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst,
                                                dstStep, roiSize, aval);
}

ZYL_API ZylStatus zyliYCrCb420ToRGB_8u_P2C3R(const Zyl8u* pSrcY, int srcYStep,
                                             const Zyl8u* pSrcCbCr, int srcCbCrStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize) {
  return zyl::Decode420P2<C3, false, true, true>(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst,
                                                 dstStep, roiSize);
}

ZYL_API ZylStatus zyliYCrCb420ToRGB_8u_P2C4R(const Zyl8u* pSrcY, int srcYStep,
                                             const Zyl8u* pSrcCbCr, int srcCbCrStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize, Zyl8u aval) {
  return zyl::Decode420P2<C4, false, true, true>(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst,
                                                 dstStep, roiSize, aval);
}

ZYL_API ZylStatus zyliYCrCb420ToBGR_Filter_8u_P3C4R(const Zyl8u* const pSrc[3],
                                                    const int srcStep[3], Zyl8u* pDst, int dstStep,
                                                    ZylSize roiSize, Zyl8u aval) {
  return zyl::DecodeFiltered420<C4, true>(pSrc, srcStep, pDst, dstStep, roiSize, aval);
}

ZYL_API ZylStatus zyliYCrCb420ToRGB_8u_P3C4R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                             Zyl8u* pDst, int dstStep, ZylSize roiSize,
                                             Zyl8u aval) {
  return zyl::Decode420P3<C4, false, zyl::kDec601, true, true>(pSrc, srcStep, pDst, dstStep,
                                                               roiSize, aval);
}

ZYL_API ZylStatus zyliYCrCb422ToBGR_8u_C2C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize) {
  return zyl::DecodePacked<C3, true, zyl::kDec601Packed, true, true>(pSrc, srcStep, pDst, dstStep,
                                                                     roiSize);
}

ZYL_API ZylStatus zyliYCrCb422ToBGR_8u_C2C4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize, Zyl8u aval) {
  return zyl::DecodePacked<C4, true, zyl::kDec601Packed, true, true>(pSrc, srcStep, pDst, dstStep,
                                                                     roiSize, aval);
}

ZYL_API ZylStatus zyliYCrCb422ToRGB_8u_C2C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize) {
  return zyl::DecodePacked<C3, false, zyl::kDec601Packed, true, true>(pSrc, srcStep, pDst, dstStep,
                                                                      roiSize);
}

ZYL_API ZylStatus zyliYCrCb422ToRGB_8u_C2C4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize, Zyl8u aval) {
  return zyl::DecodePacked<C4, false, zyl::kDec601Packed, true, true>(pSrc, srcStep, pDst, dstStep,
                                                                      roiSize, aval);
}

ZYL_API ZylStatus zyliYCrCb422ToRGB_8u_C2P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                             int dstStep, ZylSize roiSize) {
  return zyl::DecodePacked<P3, false, zyl::kDec601Packed, true, true>(pSrc, srcStep, pDst, dstStep,
                                                                      roiSize);
}

ZYL_API ZylStatus zyliYUV420ToBGR_8u_P3C3R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                           Zyl8u* pDst, int dstStep, ZylSize roiSize) {
  return zyl::Decode420P3<C3, true, zyl::kDecYuv, false, false>(pSrc, srcStep, pDst, dstStep,
                                                                roiSize);
}

ZYL_API ZylStatus zyliYUV420ToRGB_8u_P3(const Zyl8u* const pSrc[3], Zyl8u* const pDst[3],
                                        ZylSize imgSize) {
  return zyl::DecodeWholeYuv<P3, true>(pSrc, pDst, imgSize);
}

ZYL_API ZylStatus zyliYUV420ToRGB_8u_P3AC4R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                            Zyl8u* pDst, int dstStep, ZylSize roiSize) {
  return zyl::Decode420P3<AC4, false, zyl::kDecYuv, false, false>(pSrc, srcStep, pDst, dstStep,
                                                                  roiSize);
}

ZYL_API ZylStatus zyliYUV420ToRGB_8u_P3C3(const Zyl8u* const pSrc[3], Zyl8u* pDst,
                                          ZylSize imgSize) {
  return zyl::DecodeWholeYuv<C3, true>(pSrc, pDst, imgSize);
}

ZYL_API ZylStatus zyliYUV420ToRGB_8u_P3C3R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                           Zyl8u* pDst, int dstStep, ZylSize roiSize) {
  return zyl::Decode420P3<C3, false, zyl::kDecYuv, false, false>(pSrc, srcStep, pDst, dstStep,
                                                                 roiSize);
}

ZYL_API ZylStatus zyliYUV420ToRGB_8u_P3R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                         Zyl8u* const pDst[3], int dstStep, ZylSize roiSize) {
  return zyl::Decode420P3<P3, false, zyl::kDecYuv, false, false>(pSrc, srcStep, pDst, dstStep,
                                                                 roiSize);
}

ZYL_API ZylStatus zyliYUV422ToRGB_8u_C2C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                           ZylSize roiSize) {
  return zyl::DecodePacked<C3, false, zyl::kDecYuv, true, false>(pSrc, srcStep, pDst, dstStep,
                                                                 roiSize);
}

ZYL_API ZylStatus zyliYUV422ToRGB_8u_P3(const Zyl8u* const pSrc[3], Zyl8u* const pDst[3],
                                        ZylSize imgSize) {
  return zyl::DecodeWholeYuv<P3, false>(pSrc, pDst, imgSize);
}

ZYL_API ZylStatus zyliYUV422ToRGB_8u_P3AC4R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                            Zyl8u* pDst, int dstStep, ZylSize roiSize) {
  return zyl::Decode422P3<AC4, false, zyl::kDecYuv>(pSrc, srcStep, pDst, dstStep, roiSize);
}

ZYL_API ZylStatus zyliYUV422ToRGB_8u_P3C3(const Zyl8u* const pSrc[3], Zyl8u* pDst,
                                          ZylSize imgSize) {
  return zyl::DecodeWholeYuv<C3, false>(pSrc, pDst, imgSize);
}

ZYL_API ZylStatus zyliYUV422ToRGB_8u_P3C3R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                           Zyl8u* pDst, int dstStep, ZylSize roiSize) {
  return zyl::Decode422P3<C3, false, zyl::kDecYuv>(pSrc, srcStep, pDst, dstStep, roiSize);
}

ZYL_API ZylStatus zyliYUV422ToRGB_8u_P3R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                         Zyl8u* const pDst[3], int dstStep, ZylSize roiSize) {
  return zyl::Decode422P3<P3, false, zyl::kDecYuv>(pSrc, srcStep, pDst, dstStep, roiSize);
}

ZYL_API ZylStatus zyliYUV422v210ToGray_709HDTV_32u16u_C3C1(const Zyl32u* pSrc, int srcStep,
                                                           Zyl16u* pDst, int dstStep,
                                                           ZylSize roiSize) {
  if (const ZylStatus st = CheckV210(pSrc, srcStep, pDst, dstStep, roiSize)) return st;
  for (int row = 0; row < roiSize.height; ++row) {
    const uint32_t* s = pSrc + static_cast<ptrdiff_t>(row) * srcStep;
    uint16_t* d = pDst + static_cast<ptrdiff_t>(row) * dstStep;
    for (int x = 0; x < roiSize.width; ++x) {
      int y, cb, cr;
      V210Pixel(s + 4 * (x / 6), x % 6, y, cb, cr);
      d[x] = static_cast<uint16_t>(y);  // ten significant bits, not scaled
    }
  }
  return zylStsOk;
}
ZYL_API ZylStatus zyliYUV422v210ToRGB_709HDTV_32u16u_C3(const Zyl32u* pSrc, int srcStep,
                                                        Zyl16u* pDst, int dstStep,
                                                        ZylSize roiSize) {
  return V210ToColor<false>(pSrc, srcStep, pDst, dstStep, roiSize);
}
ZYL_API ZylStatus zyliYUV422v210ToBGR_709HDTV_32u16u_C3(const Zyl32u* pSrc, int srcStep,
                                                        Zyl16u* pDst, int dstStep,
                                                        ZylSize roiSize) {
  return V210ToColor<true>(pSrc, srcStep, pDst, dstStep, roiSize);
}

}  // extern "C"
#endif  // HWY_ONCE
