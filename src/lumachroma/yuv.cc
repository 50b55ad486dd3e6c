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
#if ZYL_SIMD
  // The same results in 16-bit lanes. S = 65536 H + L is rebuilt from the
  // high and low halves of the three products, counting the carries of L.
  // B - Y and R - Y in the definition use (S + 32767) >> 16, which is Y less
  // one exactly when S + 32768 is a multiple of 65536. 57475 = 65536 - 8061.
  template <class D8, class V8>
  HWY_INLINE void Vec(D8 d8, V8 r, V8 g, V8 b, V8& y, V8& u, V8& v) const {
    Map8ViaI16(d8, *this, r, g, b, y, u, v);
  }
  template <class D, class V>
  HWY_INLINE void Vec16(D d, V r, V g, V b, V& y, V& u, V& v) const {
    const hn::RebindToUnsigned<D> du;
    const auto ur = hn::BitCast(du, r), ug = hn::BitCast(du, g), ub = hn::BitCast(du, b);
    const auto kr = hn::Set(du, uint16_t{kYR}), kg = hn::Set(du, uint16_t{kYG}),
               kb = hn::Set(du, uint16_t{kYB});
    const auto hi = hn::Add(hn::Add(hn::MulHigh(ur, kr), hn::MulHigh(ug, kg)), hn::MulHigh(ub, kb));
    const auto lr = hn::Mul(ur, kr), lg = hn::Mul(ug, kg), lb = hn::Mul(ub, kb);
    const auto l1 = hn::Add(lr, lg);
    const auto l2 = hn::Add(l1, lb);
    const auto half = hn::Set(du, uint16_t{0x8000});
    const auto carries = hn::Add(hn::Add(Carry16(du, lr, lg), Carry16(du, l1, lb)), Carry16(du, l2, half));
    const V yy = hn::BitCast(d, hn::Sub(hi, carries));
    const V y_less = hn::Add(yy, hn::VecFromMask(d, hn::RebindMask(d, hn::Eq(l2, half))));
    const V db = hn::Sub(b, y_less), dr = hn::Sub(r, y_less);
    const V c128 = hn::Set(d, int16_t{128});
    y = yy;
    u = hn::Add(hn::MulHigh(db, hn::Set(d, int16_t{kU})), c128);
    v = hn::Add(hn::Add(dr, hn::MulHigh(dr, hn::Set(d, int16_t{kV - 65536}))), c128);
  }
#endif
};

struct YuvToRgb {
  void Pixel(const uint8_t in[4], uint8_t out[4]) const {
    const int y = in[0] << 16, u = in[1] - 128, v = in[2] - 128;
    out[0] = Clamp8((y + v * kRV + kHalf) >> 16);
    out[1] = Clamp8((y - u * kGU - v * kGV) >> 16);  // no rounding term on G, by definition
    out[2] = Clamp8((y + u * kBU + kHalf) >> 16);
  }
#if ZYL_SIMD
  // The same results in 16-bit lanes: y is a multiple of 65536, so each
  // channel is Y plus a 16.16 product split as k = 65536 m + k' with |k'| <
  // 32768 (74711 = 65536 + 9175, 133169 = 2 * 65536 + 2097, -38076 = -65536 +
  // 27460). G's two products keep their floor: their high halves are added
  // with the carry of their low halves.
  template <class D8, class V8>
  HWY_INLINE void Vec(D8 d8, V8 yy, V8 uu, V8 vv, V8& r, V8& g, V8& b) const {
    Map8ViaI16(d8, *this, yy, uu, vv, r, g, b);
  }
  template <class D, class V>
  HWY_INLINE void Vec16(D d, V y, V uu, V vv, V& r, V& g, V& b) const {
    const hn::RebindToUnsigned<D> du;
    const V u = hn::Sub(uu, hn::Set(d, int16_t{128}));
    const V v = hn::Sub(vv, hn::Set(d, int16_t{128}));
    r = hn::Add(hn::Add(y, v), MulRound16(d, v, int16_t{kRV - 65536}));
    b = hn::Add(hn::Add(y, hn::Add(u, u)), MulRound16(d, u, int16_t{kBU - 2 * 65536}));
    const V ku = hn::Set(d, int16_t{-kGU}), kv = hn::Set(d, int16_t{65536 - kGV});
    const auto lu = hn::BitCast(du, hn::Mul(u, ku)), lv = hn::BitCast(du, hn::Mul(v, kv));
    const V hi = hn::Add(hn::MulHigh(u, ku), hn::MulHigh(v, kv));
    g = hn::Sub(hn::Sub(y, v), hn::Sub(hn::BitCast(d, Carry16(du, lu, lv)), hi));
  }
#endif
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
