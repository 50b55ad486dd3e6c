// Per-target forms of the shared CIE pieces in src/perceptual/cie.h; lane for
// lane identical to the scalar ones.
#if defined(ZYL_PERCEPTUAL_CIE_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ZYL_PERCEPTUAL_CIE_INL_H_
#undef ZYL_PERCEPTUAL_CIE_INL_H_
#else
#define ZYL_PERCEPTUAL_CIE_INL_H_
#endif

#include "hwy/highway.h"
#include "src/perceptual/cie.h"

HWY_BEFORE_NAMESPACE();
namespace zyl {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// root and recip of each lane's table row. With hardware gathers each row
// comes in as one 64-bit element (root in the low half) and the pairs are
// split by even and odd lanes: half the gathered elements of two 32-bit
// gathers.
template <class D, class VI, class V = hn::Vec<D>>
HWY_INLINE void TableRow(D d, VI row, V& root, V& recip) {
#if HWY_TARGET == HWY_AVX2 || HWY_TARGET == HWY_AVX3
  if constexpr (hn::MaxLanes(D()) >= 8) {
    const hn::Half<hn::RebindToSigned<D>> dih;
    const hn::Rebind<int64_t, decltype(dih)> dl;  // a full vector of row numbers
    const hn::RebindToUnsigned<decltype(dl)> du;
    const auto* base = reinterpret_cast<const uint64_t*>(&cie::kCubeRootTable[0][0]);
    const V lo =
        hn::BitCast(d, hn::GatherIndex(du, base, hn::PromoteTo(dl, hn::LowerHalf(dih, row))));
    const V hi =
        hn::BitCast(d, hn::GatherIndex(du, base, hn::PromoteTo(dl, hn::UpperHalf(dih, row))));
    root = hn::ConcatEven(d, hi, lo);
    recip = hn::ConcatOdd(d, hi, lo);
    return;
  }
#endif
  const float* base = &cie::kCubeRootTable[0][0];
  const auto row2 = hn::ShiftLeft<1>(row);
  root = hn::GatherIndex(d, base, row2);
  recip = hn::GatherIndex(d, base + 1, row2);
}

// CubeRootSeries for every lane: the row index clamped in float (so NaN and
// negative lanes take row 0 as in the scalar form), root and recip gathered.
template <class D, class V = hn::Vec<D>>
HWY_INLINE V CubeRootSeries(D d, V t) {
  const hn::RebindToSigned<D> di;
  const V zero = hn::Zero(d);
  V x = hn::Mul(t, hn::Set(d, cie::kIndexScale));
  x = hn::IfThenElse(hn::Gt(x, zero), x, zero);
  x = hn::Min(x, hn::Set(d, 127.0f));
  const auto row = hn::ConvertTo(di, x);
  V root, recip;
  TableRow(d, row, root, recip);
  const V dd = hn::Mul(recip, hn::Sub(t, hn::Mul(hn::Mul(root, root), root)));
  const V d2 = hn::Mul(dd, dd);
  const V d3 = hn::Mul(d2, dd);
  const V d4 = hn::Mul(d3, dd);
  V s = hn::Add(hn::Set(d, 1.0f), hn::Mul(dd, hn::Set(d, cie::kSeries1)));
  s = hn::Sub(s, hn::Mul(d2, hn::Set(d, cie::kSeries2)));
  s = hn::Add(s, hn::Mul(d3, hn::Set(d, cie::kSeries3)));
  s = hn::Sub(s, hn::Mul(d4, hn::Set(d, cie::kSeries4)));
  return hn::Mul(root, s);
}

template <class D, class V = hn::Vec<D>>
HWY_INLINE V CieF(D d, V t) {
  const V linear =
      hn::Add(hn::Mul(hn::Set(d, cie::kLinearSlope), t), hn::Set(d, cie::kLinearOffset));
  return hn::IfThenElse(hn::Le(t, hn::Set(d, cie::kThreshold)), linear, CubeRootSeries(d, t));
}

}  // namespace HWY_NAMESPACE
}  // namespace zyl
HWY_AFTER_NAMESPACE();

#endif  // include guard toggle
