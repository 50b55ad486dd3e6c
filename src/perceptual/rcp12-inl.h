// Per-target vector form of Rcp12 (src/perceptual/rcp12.h): rcpps on 128- and
// 256-bit vectors, the two 256-bit halves of a 512-bit vector each through
// the 256-bit rcpps (vrcp14ps has 14 bits and would change results), lane by
// lane elsewhere.
#if defined(ZYL_PERCEPTUAL_RCP12_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ZYL_PERCEPTUAL_RCP12_INL_H_
#undef ZYL_PERCEPTUAL_RCP12_INL_H_
#else
#define ZYL_PERCEPTUAL_RCP12_INL_H_
#endif

#include "hwy/highway.h"
#include "src/perceptual/rcp12.h"

HWY_BEFORE_NAMESPACE();
namespace zyl {
namespace HWY_NAMESPACE {

#if HWY_TARGET == HWY_SSE4 || HWY_TARGET == HWY_AVX2 || HWY_TARGET == HWY_AVX3
template <size_t N>
HWY_INLINE hwy::HWY_NAMESPACE::Vec128<float, N> Rcp12(hwy::HWY_NAMESPACE::Vec128<float, N> v) {
  return hwy::HWY_NAMESPACE::Vec128<float, N>{_mm_rcp_ps(v.raw)};
}
#endif
#if HWY_TARGET == HWY_AVX2 || HWY_TARGET == HWY_AVX3
HWY_INLINE hwy::HWY_NAMESPACE::Vec256<float> Rcp12(hwy::HWY_NAMESPACE::Vec256<float> v) {
  return hwy::HWY_NAMESPACE::Vec256<float>{_mm256_rcp_ps(v.raw)};
}
#endif
#if HWY_TARGET == HWY_AVX3
HWY_INLINE hwy::HWY_NAMESPACE::Vec512<float> Rcp12(hwy::HWY_NAMESPACE::Vec512<float> v) {
  const __m256 lo = _mm256_rcp_ps(_mm512_castps512_ps256(v.raw));
  const __m256 hi = _mm256_rcp_ps(_mm512_extractf32x8_ps(v.raw, 1));
  return hwy::HWY_NAMESPACE::Vec512<float>{_mm512_insertf32x8(_mm512_castps256_ps512(lo), hi, 1)};
}
#endif
#if HWY_TARGET != HWY_SSE4 && HWY_TARGET != HWY_AVX2 && HWY_TARGET != HWY_AVX3
template <class V>
HWY_INLINE V Rcp12(V v) {
  namespace hn = hwy::HWY_NAMESPACE;
  const hn::DFromV<V> d;
  HWY_ALIGN float lanes[HWY_MAX_BYTES / sizeof(float)];
  hn::Store(v, d, lanes);
  for (size_t i = 0; i < hn::Lanes(d); ++i) lanes[i] = ::zyl::Rcp12(lanes[i]);
  return hn::Load(d, lanes);
}
#endif

}  // namespace HWY_NAMESPACE
}  // namespace zyl
HWY_AFTER_NAMESPACE();

#endif  // include guard toggle
