// RGB <-> YCbCr at full resolution: BT.601 studio range (and the BT.709
// studio inverse), 8-bit, 16.16 fixed point.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "src/lumachroma/ycbcr.cc"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "src/core/dispatch.h"
#include "src/core/frame.h"
#include "src/core/map3-inl.h"
#include "src/core/saturate.h"

HWY_BEFORE_NAMESPACE();
namespace zyl {
namespace HWY_NAMESPACE {

// Forward rows (R, G, B weights, then the constant added before >> 16: the
// offset of 16 or 128 times 65536 plus the rounding term 32768).
constexpr int kYR = 16843, kYG = 33030, kYB = 6423, kYAdd = 1081344;
constexpr int kCbR = -9699, kCbG = -19071, kCbB = 28770;
constexpr int kCrR = 28770, kCrG = -24117, kCrB = -4653;
constexpr int kCAdd = 8421376;

// Inverse weights: y = Y * kY, less the luma offset 16 * kY; no rounding term.
struct Inverse601 {
  static constexpr int kY = 76284, kRCr = 104595, kGCb = 25690, kGCr = 53281, kBCb = 132186;
};
// BT.709 studio range in the same scheme. With Kr = 0.2126, Kb = 0.0722,
// Kg = 0.7152 and the studio scales 255/219 (luma) and 255/224 (chroma):
// R = 1.164 (Y-16) + 2(1-Kr) 255/224 Cr' = 1.164 (Y-16) + 1.793 Cr',
// G = 1.164 (Y-16) - 2Kb(1-Kb)/Kg 255/224 Cb' - 2Kr(1-Kr)/Kg 255/224 Cr'
//   = 1.164 (Y-16) - 0.213 Cb' - 0.533 Cr',  B = 1.164 (Y-16) + 2(1-Kb) 255/224 Cb'
//   = 1.164 (Y-16) + 2.112 Cb'; rounded to three decimals as the BT.601 set is,
// then times 65536 rounded: 76284, 117506, 13959, 34931, 138412.
struct Inverse709 {
  static constexpr int kY = 76284, kRCr = 117506, kGCb = 13959, kGCr = 34931, kBCb = 138412;
};

struct RgbToYcc {
  void Pixel(const uint8_t in[4], uint8_t out[4]) const {
    const int r = in[0], g = in[1], b = in[2];
    // No clamp: the weights keep Y in 16..235 and Cb, Cr in 16..240.
    out[0] = static_cast<uint8_t>((r * kYR + g * kYG + b * kYB + kYAdd) >> 16);
    out[1] = static_cast<uint8_t>((r * kCbR + g * kCbG + b * kCbB + kCAdd) >> 16);
    out[2] = static_cast<uint8_t>((r * kCrR + g * kCrG + b * kCrB + kCAdd) >> 16);
  }
#if ZYL_SIMD
  template <class D8, class V8>
  HWY_INLINE void Vec(D8 d8, V8 r, V8 g, V8 b, V8& y, V8& cb, V8& cr) const {
    Map8ViaI16(d8, *this, r, g, b, y, cb, cr);
  }
  template <class D, class V>
  HWY_INLINE void Vec16(D d, V r, V g, V b, V& y, V& cb, V& cr) const {
    y = FixedDot16<kYAdd, kYR, kYG, kYB>(d, r, g, b);
    cb = FixedDot16<kCAdd, kCbR, kCbG, kCbB>(d, r, g, b);
    cr = FixedDot16<kCAdd, kCrR, kCrG, kCrB>(d, r, g, b);
  }
#endif
};

template <class W>
struct YccToRgb {
  static constexpr int kOffset = 16 * W::kY;  // 1220544

  void Pixel(const uint8_t in[4], uint8_t out[4]) const {
    const int y = in[0] * W::kY - kOffset, cb = in[1] - 128, cr = in[2] - 128;
    // Every channel truncates: no rounding term, unlike the forward direction.
    out[0] = Clamp8((y + cr * W::kRCr) >> 16);
    out[1] = Clamp8((y - cb * W::kGCb - cr * W::kGCr) >> 16);
    out[2] = Clamp8((y + cb * W::kBCb) >> 16);
  }
#if ZYL_SIMD
  template <class D8, class V8>
  HWY_INLINE void Vec(D8 d8, V8 y, V8 cb, V8 cr, V8& r, V8& g, V8& b) const {
    Map8ViaI16(d8, *this, y, cb, cr, r, g, b);
  }
  template <class D, class V>
  HWY_INLINE void Vec16(D d, V y, V cb8, V cr8, V& r, V& g, V& b) const {
    const V cb = hn::Sub(cb8, hn::Set(d, int16_t{128}));
    const V cr = hn::Sub(cr8, hn::Set(d, int16_t{128}));
    r = FixedDot16<-kOffset, W::kY, W::kRCr>(d, y, cr);
    g = FixedDot16<-kOffset, W::kY, -W::kGCb, -W::kGCr>(d, y, cb, cr);
    b = FixedDot16<-kOffset, W::kY, W::kBCb>(d, y, cb);
  }
#endif
};

template <class SL, class DL>
HWY_NOINLINE void RgbToYccRow(const uint8_t* const* src, uint8_t* const* dst, ptrdiff_t width,
                              uint8_t aval) {
  Map3Row8<SL, DL, RgbToYcc>(src, dst, width, aval);
}

// The inverse variants, by number so that one name reaches the op of every
// target's namespace.
enum InverseVariant { kTo601, kTo601Bgr, kTo709Bgr };

template <class SL, class DL, int kVariant>
HWY_NOINLINE void YccToRgbRow(const uint8_t* const* src, uint8_t* const* dst, ptrdiff_t width,
                              uint8_t aval) {
  using Op = std::conditional_t<
      kVariant == kTo601, YccToRgb<Inverse601>,
      std::conditional_t<kVariant == kTo601Bgr, SwapOuter<YccToRgb<Inverse601>>,
                         SwapOuter<YccToRgb<Inverse709>>>>;
  Map3Row8<SL, DL, Op>(src, dst, width, aval);
}

}  // namespace HWY_NAMESPACE
}  // namespace zyl
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
using zyl::AC4;
using zyl::C3;
using zyl::C4;
using zyl::Convert444;
using zyl::P3;

#define ZYL_FWD(SL, DL) ZYL_DISPATCH(RgbToYccRow<SL, DL>)
#define ZYL_INV(SL, DL, OP) ZYL_DISPATCH(YccToRgbRow<SL, DL, zyl::HWY_NAMESPACE::k##OP>)

extern "C" {

ZYL_API ZylStatus zyliRGBToYCbCr_8u_C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                        ZylSize roiSize) {
  return Convert444<C3, C3>(pSrc, srcStep, pDst, dstStep, roiSize, ZYL_FWD(C3, C3), Zyl8u{0});
}

ZYL_API ZylStatus zyliRGBToYCbCr_8u_AC4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                         ZylSize roiSize) {
  return Convert444<AC4, AC4>(pSrc, srcStep, pDst, dstStep, roiSize, ZYL_FWD(AC4, AC4), Zyl8u{0});
}

ZYL_API ZylStatus zyliRGBToYCbCr_8u_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                          int dstStep, ZylSize roiSize) {
  return Convert444<C3, P3>(pSrc, srcStep, pDst, dstStep, roiSize, ZYL_FWD(C3, P3), Zyl8u{0});
}

// The source's fourth channel is dropped.
ZYL_API ZylStatus zyliRGBToYCbCr_8u_AC4P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                           int dstStep, ZylSize roiSize) {
  return Convert444<AC4, P3>(pSrc, srcStep, pDst, dstStep, roiSize, ZYL_FWD(AC4, P3), Zyl8u{0});
}

ZYL_API ZylStatus zyliRGBToYCbCr_8u_P3R(const Zyl8u* const pSrc[3], int srcStep,
                                        Zyl8u* const pDst[3], int dstStep, ZylSize roiSize) {
  return Convert444<P3, P3>(pSrc, srcStep, pDst, dstStep, roiSize, ZYL_FWD(P3, P3), Zyl8u{0});
}

ZYL_API ZylStatus zyliYCbCrToRGB_8u_C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                        ZylSize roiSize) {
  return Convert444<C3, C3>(pSrc, srcStep, pDst, dstStep, roiSize, ZYL_INV(C3, C3, To601),
                            Zyl8u{0});
}

ZYL_API ZylStatus zyliYCbCrToRGB_8u_AC4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                         ZylSize roiSize) {
  return Convert444<AC4, AC4>(pSrc, srcStep, pDst, dstStep, roiSize, ZYL_INV(AC4, AC4, To601),
                              Zyl8u{0});
}

ZYL_API ZylStatus zyliYCbCrToRGB_8u_P3C3R(const Zyl8u* const pSrc[3], int srcStep, Zyl8u* pDst,
                                          int dstStep, ZylSize roiSize) {
  return Convert444<P3, C3>(pSrc, srcStep, pDst, dstStep, roiSize, ZYL_INV(P3, C3, To601),
                            Zyl8u{0});
}

ZYL_API ZylStatus zyliYCbCrToRGB_8u_P3C4R(const Zyl8u* const pSrc[3], int srcStep, Zyl8u* pDst,
                                          int dstStep, ZylSize roiSize, Zyl8u aval) {
  return Convert444<P3, C4>(pSrc, srcStep, pDst, dstStep, roiSize, ZYL_INV(P3, C4, To601), aval);
}

ZYL_API ZylStatus zyliYCbCrToRGB_8u_P3R(const Zyl8u* const pSrc[3], int srcStep,
                                        Zyl8u* const pDst[3], int dstStep, ZylSize roiSize) {
  return Convert444<P3, P3>(pSrc, srcStep, pDst, dstStep, roiSize, ZYL_INV(P3, P3, To601),
                            Zyl8u{0});
}

ZYL_API ZylStatus zyliYCbCrToBGR_8u_P3C3R(const Zyl8u* const pSrc[3], int srcStep, Zyl8u* pDst,
                                          int dstStep, ZylSize roiSize) {
  return Convert444<P3, C3>(pSrc, srcStep, pDst, dstStep, roiSize, ZYL_INV(P3, C3, To601Bgr),
                            Zyl8u{0});
}

ZYL_API ZylStatus zyliYCbCrToBGR_8u_P3C4R(const Zyl8u* const pSrc[3], int srcStep, Zyl8u* pDst,
                                          int dstStep, ZylSize roiSize, Zyl8u aval) {
  return Convert444<P3, C4>(pSrc, srcStep, pDst, dstStep, roiSize, ZYL_INV(P3, C4, To601Bgr),
                            aval);
}

ZYL_API ZylStatus zyliYCbCrToBGR_709CSC_8u_P3C3R(const Zyl8u* const pSrc[3], int srcStep,
                                                 Zyl8u* pDst, int dstStep, ZylSize roiSize) {
  return Convert444<P3, C3>(pSrc, srcStep, pDst, dstStep, roiSize, ZYL_INV(P3, C3, To709Bgr),
                            Zyl8u{0});
}

ZYL_API ZylStatus zyliYCbCrToBGR_709CSC_8u_P3C4R(const Zyl8u* const pSrc[3], int srcStep,
                                                 Zyl8u* pDst, int dstStep, ZylSize roiSize,
                                                 Zyl8u aval) {
  return Convert444<P3, C4>(pSrc, srcStep, pDst, dstStep, roiSize, ZYL_INV(P3, C4, To709Bgr),
                            aval);
}

}  // extern "C"
#endif  // HWY_ONCE
