// RGB <-> YUV at full resolution, 8-bit, 16.16 fixed point.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "src/lumachroma/yuv.cc"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "src/core/dispatch.h"
#include "src/core/frame.h"
#include "src/core/map3-inl.h"
#include "src/core/saturate.h"

HWY_BEFORE_NAMESPACE();
namespace zyl {
namespace HWY_NAMESPACE {

constexpr int kYR = 19595, kYG = 38470, kYB = 7471;  // 0.299, 0.587, 0.114
constexpr int kU = 32244;                             // 0.492 on B - Y
constexpr int kV = 57475;                             // 0.877 on R - Y
constexpr int kRV = 74711, kGU = 25821, kGV = 38076, kBU = 133169;
constexpr int kHalf = 32768;

struct RgbToYuv {
  void Pixel(const uint8_t in[4], uint8_t out[4]) const {
    const int r = in[0], g = in[1], b = in[2];
    const int s = r * kYR + g * kYG + b * kYB;
    const int db = ((b << 16) - s + kHalf) >> 16;
    const int dr = ((r << 16) - s + kHalf) >> 16;
    out[0] = static_cast<uint8_t>((s + kHalf) >> 16);  // weights sum to 65536: no clamp
    // U is not clamped: |B - Y| <= 226 keeps it within 16..239.
    out[1] = static_cast<uint8_t>(((db * kU) >> 16) + 128);
    out[2] = Clamp8(((dr * kV) >> 16) + 128);
  }
  template <class D, class V>
  HWY_INLINE void Vec32(D d, V r, V g, V b, V& y, V& u, V& v) const {
    const V s = hn::Add(hn::Add(hn::Mul(r, hn::Set(d, kYR)), hn::Mul(g, hn::Set(d, kYG))),
                        hn::Mul(b, hn::Set(d, kYB)));
    const V half = hn::Set(d, kHalf);
    const V db = hn::ShiftRight<16>(hn::Add(hn::Sub(hn::ShiftLeft<16>(b), s), half));
    const V dr = hn::ShiftRight<16>(hn::Add(hn::Sub(hn::ShiftLeft<16>(r), s), half));
    const V c128 = hn::Set(d, 128);
    y = hn::ShiftRight<16>(hn::Add(s, half));
    u = hn::And(hn::Add(hn::ShiftRight<16>(hn::Mul(db, hn::Set(d, kU))), c128), hn::Set(d, 255));
    v = hn::Add(hn::ShiftRight<16>(hn::Mul(dr, hn::Set(d, kV))), c128);  // clamped by the narrowing
  }
};

struct YuvToRgb {
  void Pixel(const uint8_t in[4], uint8_t out[4]) const {
    const int y = in[0] << 16, u = in[1] - 128, v = in[2] - 128;
    out[0] = Clamp8((y + v * kRV + kHalf) >> 16);
    out[1] = Clamp8((y - u * kGU - v * kGV) >> 16);  // no rounding term on G, by definition
    out[2] = Clamp8((y + u * kBU + kHalf) >> 16);
  }
  template <class D, class V>
  HWY_INLINE void Vec32(D d, V yy, V uu, V vv, V& r, V& g, V& b) const {
    const V y = hn::ShiftLeft<16>(yy);
    const V u = hn::Sub(uu, hn::Set(d, 128));
    const V v = hn::Sub(vv, hn::Set(d, 128));
    const V half = hn::Set(d, kHalf);
    r = hn::ShiftRight<16>(hn::Add(hn::Add(y, hn::Mul(v, hn::Set(d, kRV))), half));
    g = hn::ShiftRight<16>(
        hn::Sub(hn::Sub(y, hn::Mul(u, hn::Set(d, kGU))), hn::Mul(v, hn::Set(d, kGV))));
    b = hn::ShiftRight<16>(hn::Add(hn::Add(y, hn::Mul(u, hn::Set(d, kBU))), half));
  }
};

template <class SL, class DL>
HWY_NOINLINE void RgbToYuvRow(const uint8_t* const* src, uint8_t* const* dst, ptrdiff_t width,
                              uint8_t aval) {
  Map3Row8<SL, DL, RgbToYuv>(src, dst, width, aval);
}

template <class SL, class DL>
HWY_NOINLINE void YuvToRgbRow(const uint8_t* const* src, uint8_t* const* dst, ptrdiff_t width,
                              uint8_t aval) {
  Map3Row8<SL, DL, YuvToRgb>(src, dst, width, aval);
}

}  // namespace HWY_NAMESPACE
}  // namespace zyl
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
using zyl::AC4;
using zyl::C3;
using zyl::C4;
using zyl::P3;
using zyl::P4;
using zyl::Convert444;

extern "C" {

ZYL_API ZylStatus zyliRGBToYUV_8u_C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                      ZylSize roiSize) {
  return Convert444<C3, C3>(pSrc, srcStep, pDst, dstStep, roiSize,
                            ZYL_DISPATCH(RgbToYuvRow<C3, C3>), Zyl8u{0});
}

ZYL_API ZylStatus zyliRGBToYUV_8u_AC4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                       ZylSize roiSize) {
  return Convert444<AC4, AC4>(pSrc, srcStep, pDst, dstStep, roiSize,
                              ZYL_DISPATCH(RgbToYuvRow<AC4, AC4>), Zyl8u{0});
}

ZYL_API ZylStatus zyliRGBToYUV_8u_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                        int dstStep, ZylSize roiSize) {
  return Convert444<C3, P3>(pSrc, srcStep, pDst, dstStep, roiSize,
                            ZYL_DISPATCH(RgbToYuvRow<C3, P3>), Zyl8u{0});
}

// Source alpha goes to plane 3, whose pointer is deliberately not tested.
ZYL_API ZylStatus zyliRGBToYUV_8u_AC4P4R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[4],
                                         int dstStep, ZylSize roiSize) {
  return Convert444<C4, P4, 3>(pSrc, srcStep, pDst, dstStep, roiSize,
                               ZYL_DISPATCH(RgbToYuvRow<C4, P4>), Zyl8u{0});
}

ZYL_API ZylStatus zyliRGBToYUV_8u_P3R(const Zyl8u* const pSrc[3], int srcStep,
                                      Zyl8u* const pDst[3], int dstStep, ZylSize roiSize) {
  return Convert444<P3, P3>(pSrc, srcStep, pDst, dstStep, roiSize,
                            ZYL_DISPATCH(RgbToYuvRow<P3, P3>), Zyl8u{0});
}

ZYL_API ZylStatus zyliYUVToRGB_8u_C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                      ZylSize roiSize) {
  return Convert444<C3, C3>(pSrc, srcStep, pDst, dstStep, roiSize,
                            ZYL_DISPATCH(YuvToRgbRow<C3, C3>), Zyl8u{0});
}

ZYL_API ZylStatus zyliYUVToRGB_8u_AC4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                       ZylSize roiSize) {
  return Convert444<AC4, AC4>(pSrc, srcStep, pDst, dstStep, roiSize,
                              ZYL_DISPATCH(YuvToRgbRow<AC4, AC4>), Zyl8u{0});
}

ZYL_API ZylStatus zyliYUVToRGB_8u_C3C4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                        ZylSize roiSize, Zyl8u aval) {
  return Convert444<C3, C4>(pSrc, srcStep, pDst, dstStep, roiSize,
                            ZYL_DISPATCH(YuvToRgbRow<C3, C4>), aval);
}

ZYL_API ZylStatus zyliYUVToRGB_8u_P3C3R(const Zyl8u* const pSrc[3], int srcStep, Zyl8u* pDst,
                                        int dstStep, ZylSize roiSize) {
  return Convert444<P3, C3>(pSrc, srcStep, pDst, dstStep, roiSize,
                            ZYL_DISPATCH(YuvToRgbRow<P3, C3>), Zyl8u{0});
}

ZYL_API ZylStatus zyliYUVToRGB_8u_P3R(const Zyl8u* const pSrc[3], int srcStep,
                                      Zyl8u* const pDst[3], int dstStep, ZylSize roiSize) {
  return Convert444<P3, P3>(pSrc, srcStep, pDst, dstStep, roiSize,
                            ZYL_DISPATCH(YuvToRgbRow<P3, P3>), Zyl8u{0});
}

}  // extern "C"
#endif  // HWY_ONCE
