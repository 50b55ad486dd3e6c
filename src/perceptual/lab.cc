// RGB <-> CIE L*a*b* through XYZ with the D65 white. Every member runs one
// single-precision definition (double for 64f) written once below for a
// scalar and for a vector: the per-pixel tail and the vector body give the
// same bits, and the vector block may be any width.
//
// Forward: X, Y, Z from the matrix (sum left to right, then the white/input
// scale), f() from the table cube root and series above 0.008856 and the
// linear segment at or below it, L = 116 f(Y) - 16 (903.3 Y in the dark),
// a = 500 (f(X) - f(Y)), b = 200 (f(Y) - f(Z)). Inverse: pure cubes, no
// linear segment, by definition.
//
// Integer codes:
//   8u Lab: L * 2.55, a + 128, b + 128; back L8 * 0.39215687 and code - 128.
//   16u Lab (8u16u / 16u8u, our scaling): L * 655.35 and (a + 128) * 255
//   onto 0..65535; back by correctly rounded divisions L16 / 655.35 and
//   a16 / 255 - 128, so a code widened from 8u (times 255) decodes to
//   exactly the 8u value of a and b.
//   Every integer result is nearest-even(clamp(v, 0, max)); these entries
//   hold round-to-nearest for the call. 32f and 64f follow the caller's mode
//   like any float code; their inverses clamp R, G, B to 0..1 as the 8u
//   inverse saturates (a NaN passes through).
//
// 64f planar: the same steps in double, every constant the double of the
// same decimal value as its float twin, the cube-root table entries widened
// from the float table (and its row index t * 127.99805 taken in double).
//
// Rows advance by the byte step as given; the RGB/BGR order flag of a call
// (0: R first, 1: B first) swaps R and B at the RGB side of the one kernel.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "src/perceptual/lab.cc"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>

#include "src/core/dispatch.h"
#include "src/core/frame.h"
#include "src/core/layout.h"
#include "src/core/map3-inl.h"
#include "src/core/rounding.h"
#include "src/perceptual/cie-inl.h"
#include "src/perceptual/cie.h"

#ifndef ZYL_PERCEPTUAL_LAB_ONCE_
#define ZYL_PERCEPTUAL_LAB_ONCE_
namespace zyl::lab {

// The constants of one precision.
template <class T>
struct Consts;

template <>
struct Consts<float> {
  static constexpr const float (&kFwd)[3][3] = cie::kRgbToXyz;
  static constexpr const float (&kInv)[3][3] = cie::kXyzToRgb;
  static constexpr float kThreshold = cie::kThreshold, kDarkL = cie::kDarkL;
  static constexpr float kL116 = 116.0f, kL16 = 16.0f, kA500 = 500.0f, kB200 = 200.0f;
  static constexpr float kInv116 = 0.00862069f, kFromA = 0.002f, kFromB = 0.005f;
  // Float RGB: 1/Xn, 1, 1/Zn forward and Xn, 1, Zn back.
  static constexpr float kScale[3] = {cie::kInvXn, 1.0f, cie::kInvZn};
  static constexpr float kWhite[3] = {0.950456f, 1.0f, 1.088754f};
};

// Doubles of the same decimal values as the float constants above and in
// cie.h.
template <>
struct Consts<double> {
  static constexpr double kFwd[3][3] = {
      {0.412453, 0.35758, 0.180423}, {0.212671, 0.71516, 0.072169}, {0.019334, 0.119193, 0.950227}};
  static constexpr double kInv[3][3] = {{3.240479, -1.53715, -0.498535},
                                        {-0.969256, 1.875991, 0.041556},
                                        {0.055648, -0.204043, 1.057311}};
  static constexpr double kThreshold = 0.008856, kDarkL = 903.3;
  static constexpr double kL116 = 116.0, kL16 = 16.0, kA500 = 500.0, kB200 = 200.0;
  static constexpr double kInv116 = 0.00862069, kFromA = 0.002, kFromB = 0.005;
  static constexpr double kScale[3] = {1.0521265, 1.0, 0.9184812};
  static constexpr double kWhite[3] = {0.950456, 1.0, 1.088754};
  static constexpr double kLinearSlope = 7.787, kLinearOffset = 0.13793103;
  static constexpr double kIndexScale = 127.99805;
  static constexpr double kSeries1 = 0.33333334, kSeries2 = 0.11111111, kSeries3 = 0.061728396,
                          kSeries4 = 0.041152265;
};

// 8u RGB folds 1/255 into the forward scales and 255 into the inverse white.
inline constexpr float kScale8[3] = {cie::kScaleX8, cie::kScaleY8, cie::kScaleZ8};
inline constexpr float kWhite8[3] = {cie::kWhiteX8, 255.0f, cie::kWhiteZ8};

// Lab codes.
inline constexpr float kL8 = 2.55f, kL8Inv = 0.39215687f;  // 255/100, 100/255
inline constexpr float kL16 = 655.35f, kAb16 = 255.0f;
inline constexpr float kAbOffset = 128.0f;

// The table row of a double, as cie::CubeRootRow does for a float.
inline int CubeRootRow64(double t) {
  double x = t * Consts<double>::kIndexScale;
  x = x > 0.0 ? x : 0.0;
  x = x < 127.0 ? x : 127.0;
  return static_cast<int>(x);
}

// f(t) in double: cie::CieF with the table entries widened.
inline double CieF64(double t) {
  using C = Consts<double>;
  if (t <= C::kThreshold) return C::kLinearSlope * t + C::kLinearOffset;
  const float* e = cie::kCubeRootTable[CubeRootRow64(t)];
  const double root = e[0];
  const double d = static_cast<double>(e[1]) * (t - root * root * root);
  const double d2 = d * d;
  const double d3 = d2 * d;
  const double d4 = d3 * d;
  double s = 1.0 + d * C::kSeries1;
  s = s - d2 * C::kSeries2;
  s = s + d3 * C::kSeries3;
  s = s - d4 * C::kSeries4;
  return root * s;
}

}  // namespace zyl::lab
#endif  // ZYL_PERCEPTUAL_LAB_ONCE_

HWY_BEFORE_NAMESPACE();
namespace zyl {
namespace HWY_NAMESPACE {
namespace lab_impl {

using lab::Consts;

// --------------------------------------------------------- definition --

// The operations the formulas need, on one float or double.
template <class T>
struct ScalarK {
  using V = T;
  T operator()(T c) const { return c; }
  T F(T t) const {
    if constexpr (std::is_same_v<T, float>) {
      return cie::CieF(t);
    } else {
      return lab::CieF64(t);
    }
  }
  T IfLe(T a, T limit, T yes, T no) const { return a <= limit ? yes : no; }
  T Div(T a, T b) const { return a / b; }
  T Clamp01(T v) const {
    if (v < T(0)) v = T(0);
    if (v > T(1)) v = T(1);
    return v;
  }
};

// X, Y, Z and then L, a, b, in the defined order; scale: the per-axis
// multipliers (the white, with 1/255 for 8u sources).
template <class T, class K, class V>
HWY_INLINE void LabFromRgb(const K& k, const T (&scale)[3], V r, V g, V b, V& l, V& a, V& bb) {
  using C = Consts<T>;
  const auto& m = C::kFwd;
  const V x = (k(m[0][0]) * r + k(m[0][1]) * g + k(m[0][2]) * b) * k(scale[0]);
  const V y = (k(m[1][0]) * r + k(m[1][1]) * g + k(m[1][2]) * b) * k(scale[1]);
  const V z = (k(m[2][0]) * r + k(m[2][1]) * g + k(m[2][2]) * b) * k(scale[2]);
  const V fx = k.F(x), fy = k.F(y), fz = k.F(z);
  l = k.IfLe(y, C::kThreshold, k(C::kDarkL) * y, k(C::kL116) * fy - k(C::kL16));
  a = k(C::kA500) * (fx - fy);
  bb = k(C::kB200) * (fy - fz);
}

// Pure cubes over the whole range, deliberately unlike the forward f().
template <class T, class K, class V>
HWY_INLINE void RgbFromLab(const K& k, const T (&white)[3], V l, V a, V b, V& r, V& g, V& bb) {
  using C = Consts<T>;
  const auto& m = C::kInv;
  const V fy = (l + k(C::kL16)) * k(C::kInv116);
  const V fx = fy + a * k(C::kFromA);
  const V fz = fy - b * k(C::kFromB);
  const V x = fx * fx * fx * k(white[0]);
  const V y = fy * fy * fy * k(white[1]);
  const V z = fz * fz * fz * k(white[2]);
  r = k(m[0][0]) * x + k(m[0][1]) * y + k(m[0][2]) * z;
  g = k(m[1][0]) * x + k(m[1][1]) * y + k(m[1][2]) * z;
  bb = k(m[2][0]) * x + k(m[2][1]) * y + k(m[2][2]) * z;
}

// One conversion between an RGB side of element type TRgb and a Lab side of
// TLab, on values already in the compute type T (integers exactly). Results
// come out in the compute type; integer destinations round them after.
template <bool kToLab, class TRgb, class TLab>
struct LabOp {
  using T = std::conditional_t<std::is_same_v<TRgb, double>, double, float>;
  static constexpr bool kToLabDir = kToLab;

  template <class K, class V>
  HWY_INLINE void operator()(const K& k, V c0, V c1, V c2, V& o0, V& o1, V& o2) const {
    if constexpr (kToLab) {
      V l, a, b;
      LabFromRgb<T>(k, Scale(), c0, c1, c2, l, a, b);
      if constexpr (std::is_same_v<TLab, uint8_t>) {
        o0 = l * k(lab::kL8);
        o1 = a + k(lab::kAbOffset);
        o2 = b + k(lab::kAbOffset);
      } else if constexpr (std::is_same_v<TLab, uint16_t>) {
        o0 = l * k(lab::kL16);
        o1 = (a + k(lab::kAbOffset)) * k(lab::kAb16);
        o2 = (b + k(lab::kAbOffset)) * k(lab::kAb16);
      } else {
        o0 = l, o1 = a, o2 = b;
      }
    } else {
      V l = c0, a = c1, b = c2;
      if constexpr (std::is_same_v<TLab, uint8_t>) {
        l = c0 * k(lab::kL8Inv);
        a = c1 - k(lab::kAbOffset);
        b = c2 - k(lab::kAbOffset);
      } else if constexpr (std::is_same_v<TLab, uint16_t>) {
        l = k.Div(c0, k(lab::kL16));
        a = k.Div(c1, k(lab::kAb16)) - k(lab::kAbOffset);
        b = k.Div(c2, k(lab::kAb16)) - k(lab::kAbOffset);
      }
      RgbFromLab<T>(k, White(), l, a, b, o0, o1, o2);
      if constexpr (!std::is_integral_v<TRgb>) {
        o0 = k.Clamp01(o0);
        o1 = k.Clamp01(o1);
        o2 = k.Clamp01(o2);
      }
    }
  }

  static constexpr const T (&Scale())[3] {
    if constexpr (std::is_same_v<TRgb, uint8_t>) {
      return lab::kScale8;
    } else {
      return Consts<T>::kScale;
    }
  }
  static constexpr const T (&White())[3] {
    if constexpr (std::is_same_v<TRgb, uint8_t>) {
      return lab::kWhite8;
    } else {
      return Consts<T>::kWhite;
    }
  }
};

// An integer result: nearest-even(clamp(v, 0, max)). 1.5 * 2^23 added and
// taken away rounds 0..65535 by the current mode, which the entry holds at
// nearest-even like the vector conversion.
template <class TOut, class T>
HWY_INLINE TOut ToElement(T v) {
  if constexpr (std::is_integral_v<TOut>) {
    constexpr float kMax = std::numeric_limits<TOut>::max();
    constexpr float kRounder = 12582912.0f;
    v = v < 0.0f ? 0.0f : v;
    v = v > kMax ? kMax : v;
    return static_cast<TOut>(static_cast<int32_t>((v + kRounder) - kRounder));
  } else {
    return v;
  }
}

// One pixel; bytewise, since rows may sit at any byte address.
template <class L, class Op, class TIn, class TOut>
HWY_INLINE void LabPixel(const TIn* const* src, TOut* const* dst, ptrdiff_t x, int order) {
  using T = typename Op::T;
  TIn in[3];
  for (int c = 0; c < 3; ++c) {
    const TIn* p = L::kPlanes == 1 ? src[0] + 3 * x + c : src[c] + x;
    std::memcpy(&in[c], p, sizeof(TIn));
  }
  T o[3];
  if (Op::kToLabDir && order) std::swap(in[0], in[2]);
  Op()(ScalarK<T>(), static_cast<T>(in[0]), static_cast<T>(in[1]), static_cast<T>(in[2]), o[0],
       o[1], o[2]);
  if (!Op::kToLabDir && order) std::swap(o[0], o[2]);
  for (int c = 0; c < 3; ++c) {
    const TOut v = ToElement<TOut>(o[c]);
    TOut* p = L::kPlanes == 1 ? dst[0] + 3 * x + c : dst[c] + x;
    std::memcpy(p, &v, sizeof(TOut));
  }
}

// ------------------------------------------------------------- vectors --

#if ZYL_SIMD

// CieF on double lanes, as lab::CieF64 does it and as CieF does on floats:
// the row clamped in double, the float entries gathered and widened.
template <class D, class V = hn::Vec<D>>
HWY_INLINE V CieF64(D d, V t) {
  using C = Consts<double>;
  const hn::Rebind<int32_t, D> di;
  const hn::Rebind<float, D> df;
  const V zero = hn::Zero(d);
  V x = hn::Mul(t, hn::Set(d, C::kIndexScale));
  x = hn::IfThenElse(hn::Gt(x, zero), x, zero);
  x = hn::Min(x, hn::Set(d, 127.0));
  const auto row2 = hn::ShiftLeft<1>(hn::DemoteTo(di, x));
  const float* base = &cie::kCubeRootTable[0][0];
  const V root = hn::PromoteTo(d, hn::GatherIndex(df, base, row2));
  const V recip = hn::PromoteTo(d, hn::GatherIndex(df, base + 1, row2));
  const V dd = hn::Mul(recip, hn::Sub(t, hn::Mul(hn::Mul(root, root), root)));
  const V d2 = hn::Mul(dd, dd);
  const V d3 = hn::Mul(d2, dd);
  const V d4 = hn::Mul(d3, dd);
  V s = hn::Add(hn::Set(d, 1.0), hn::Mul(dd, hn::Set(d, C::kSeries1)));
  s = hn::Sub(s, hn::Mul(d2, hn::Set(d, C::kSeries2)));
  s = hn::Add(s, hn::Mul(d3, hn::Set(d, C::kSeries3)));
  s = hn::Sub(s, hn::Mul(d4, hn::Set(d, C::kSeries4)));
  const V series = hn::Mul(root, s);
  const V linear = hn::Add(hn::Mul(hn::Set(d, C::kLinearSlope), t), hn::Set(d, C::kLinearOffset));
  return hn::IfThenElse(hn::Le(t, hn::Set(d, C::kThreshold)), linear, series);
}

template <class D>
struct VectorK {
  using V = hn::Vec<D>;
  using T = hn::TFromD<D>;
  D d;
  V operator()(T c) const { return hn::Set(d, c); }
  V F(V t) const {
    if constexpr (std::is_same_v<T, float>) {
      return CieF(d, t);
    } else {
      return CieF64(d, t);
    }
  }
  V IfLe(V a, T limit, V yes, V no) const {
    return hn::IfThenElse(hn::Le(a, hn::Set(d, limit)), yes, no);
  }
  V Div(V a, V b) const { return hn::Div(a, b); }
  V Clamp01(V v) const {
    v = hn::IfThenElse(hn::Lt(v, hn::Zero(d)), hn::Zero(d), v);
    return hn::IfThenElse(hn::Gt(v, hn::Set(d, T(1))), hn::Set(d, T(1)), v);
  }
};

// Element vectors to and from the compute type: integers exactly in, and
// out as nearest-even(clamp(v, 0, max)) (the entry holds the mode).
template <class DC, class DE>
HWY_INLINE hn::Vec<DC> ToCompute(DC dc, DE, hn::Vec<DE> v) {
  if constexpr (std::is_integral_v<hn::TFromD<DE>>) {
    return hn::ConvertTo(dc, hn::PromoteTo(hn::Rebind<int32_t, DC>(), v));
  } else {
    return v;
  }
}
template <class DE, class DC>
HWY_INLINE hn::Vec<DE> FromCompute(DE de, DC dc, hn::Vec<DC> v) {
  using TE = hn::TFromD<DE>;
  if constexpr (std::is_integral_v<TE>) {
    constexpr float kMax = std::numeric_limits<TE>::max();
    v = hn::Min(hn::Max(v, hn::Zero(dc)), hn::Set(dc, kMax));
    return hn::DemoteTo(de, hn::NearestInt(v));
  } else {
    (void)de;
    return v;
  }
}

#endif  // ZYL_SIMD

// One row: whole vectors of pixels, then the per-pixel definition.
template <class L, bool kToLab, class TIn, class TOut>
HWY_NOINLINE void LabRow(const TIn* const* src, TOut* const* dst, ptrdiff_t width, int order) {
  using TRgb = std::conditional_t<kToLab, TIn, TOut>;
  using TLab = std::conditional_t<kToLab, TOut, TIn>;
  using Op = LabOp<kToLab, TRgb, TLab>;
  ptrdiff_t x = 0;
#if ZYL_SIMD
  const hn::ScalableTag<typename Op::T> dc;
  const hn::Rebind<TIn, decltype(dc)> din;
  const hn::Rebind<TOut, decltype(dc)> dout;
  const VectorK<decltype(dc)> k{dc};
  const ptrdiff_t n = static_cast<ptrdiff_t>(hn::Lanes(dc));
  for (; x + n <= width; x += n) {
    hn::Vec<decltype(din)> c0, c1, c2, unused;
    LoadPixels<L>(din, src, x, c0, c1, c2, unused);
    if (kToLab && order) std::swap(c0, c2);
    hn::Vec<decltype(dc)> o0, o1, o2;
    Op()(k, ToCompute(dc, din, c0), ToCompute(dc, din, c1), ToCompute(dc, din, c2), o0, o1, o2);
    if (!kToLab && order) std::swap(o0, o2);
    auto e0 = FromCompute(dout, dc, o0), e1 = FromCompute(dout, dc, o1),
         e2 = FromCompute(dout, dc, o2);
    StorePixels<L>(dout, dst, x, e0, e1, e2, e2);
  }
#endif
  for (; x < width; ++x) LabPixel<L, Op>(src, dst, x, order);
}

}  // namespace lab_impl
}  // namespace HWY_NAMESPACE
}  // namespace zyl
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zyl {
namespace {

constexpr int kRgbOrder = 0, kBgrOrder = 1;

// Interleaved members; integer destinations round to nearest-even whatever
// the caller's mode.
template <bool kToLab, int kOrder, class TS, class TD>
ZylStatus LabC3(const TS* src, int src_step, TD* dst, int dst_step, ZylSize roi) {
  return Convert444Float<C3, C3, std::is_integral_v<TD>>(
      src, src_step, dst, dst_step, roi, ZYL_DISPATCH(lab_impl::LabRow<C3, kToLab, TS, TD>),
      kOrder);
}

// Planar members take pointer-sized steps and sizes; the plain forms forward
// to these. Checks: the arrays, the size, then the plane entries in order.
template <bool kToLab, class T>
ZylStatus LabP3(const T* const src[3], intptr_t src_step, T* const dst[3], intptr_t dst_step,
                ZylSizeL roi) {
  if (AnyNull(src, dst)) return zylStsNullPtrErr;
  if (roi.width < 1 || roi.height < 1) return zylStsSizeErr;
  if (AnyPlaneNull(src, 3) || AnyPlaneNull(dst, 3)) return zylStsNullPtrErr;
  const auto kernel = ZYL_DISPATCH(lab_impl::LabRow<P3, kToLab, T, T>);
  Rows<const T, 3> s;
  Rows<T, 3> d;
  for (int i = 0; i < 3; ++i) {
    s.p[i] = src[i];
    s.step[i] = src_step;
    d.p[i] = dst[i];
    d.step[i] = dst_step;
  }
  for (intptr_t y = 0; y < roi.height; ++y) {
    kernel(s.p, d.p, roi.width, kRgbOrder);
    s.Next();
    d.Next();
  }
  return zylStsOk;
}

inline ZylSizeL Widen(ZylSize roi) { return ZylSizeL{roi.width, roi.height}; }

}  // namespace
}  // namespace zyl

// One interleaved export: name, element types, direction, channel order.
#define ZYL_LAB_C3(name, TS, TD, to_lab, order)                                                 \
  ZYL_API ZylStatus name(const TS* pSrc, int srcStep, TD* pDst, int dstStep, ZylSize roiSize) { \
    return zyl::LabC3<to_lab, zyl::order>(pSrc, srcStep, pDst, dstStep, roiSize);               \
  }
// A planar pair: the _L form and the plain one forwarding to it.
#define ZYL_LAB_P3(name, T, to_lab)                                                          \
  ZYL_API ZylStatus name##_L(const T* const pSrc[3], intptr_t srcStep, T* const pDst[3],     \
                             intptr_t dstStep, ZylSizeL roiSize) {                           \
    return zyl::LabP3<to_lab>(pSrc, srcStep, pDst, dstStep, roiSize);                        \
  }                                                                                          \
  ZYL_API ZylStatus name(const T* const pSrc[3], int srcStep, T* const pDst[3], int dstStep, \
                         ZylSize roiSize) {                                                  \
    return name##_L(pSrc, srcStep, pDst, dstStep, zyl::Widen(roiSize));                      \
  }

extern "C" {

ZYL_LAB_C3(zyliRGBToLab_8u_C3R, Zyl8u, Zyl8u, true, kRgbOrder)
ZYL_LAB_C3(zyliBGRToLab_8u_C3R, Zyl8u, Zyl8u, true, kBgrOrder)
ZYL_LAB_C3(zyliBGRToLab_8u16u_C3R, Zyl8u, Zyl16u, true, kBgrOrder)
ZYL_LAB_C3(zyliRGBToLab_32f_C3R, Zyl32f, Zyl32f, true, kRgbOrder)
ZYL_LAB_C3(zyliBGRToLab_32f_C3R, Zyl32f, Zyl32f, true, kBgrOrder)
ZYL_LAB_C3(zyliLabToRGB_8u_C3R, Zyl8u, Zyl8u, false, kRgbOrder)
ZYL_LAB_C3(zyliLabToBGR_8u_C3R, Zyl8u, Zyl8u, false, kBgrOrder)
ZYL_LAB_C3(zyliLabToBGR_16u8u_C3R, Zyl16u, Zyl8u, false, kBgrOrder)
ZYL_LAB_C3(zyliLabToRGB_32f_C3R, Zyl32f, Zyl32f, false, kRgbOrder)
ZYL_LAB_C3(zyliLabToBGR_32f_C3R, Zyl32f, Zyl32f, false, kBgrOrder)
ZYL_LAB_P3(zyliRGBToLab_32f_P3R, Zyl32f, true)
ZYL_LAB_P3(zyliRGBToLab_64f_P3R, Zyl64f, true)
ZYL_LAB_P3(zyliLabToRGB_32f_P3R, Zyl32f, false)
ZYL_LAB_P3(zyliLabToRGB_64f_P3R, Zyl64f, false)

}  // extern "C"

#undef ZYL_LAB_C3
#undef ZYL_LAB_P3
#endif  // HWY_ONCE
