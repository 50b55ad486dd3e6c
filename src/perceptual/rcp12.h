// The processor's 12-bit approximate reciprocal, which the HLS and HSV
// definitions use as is. Every x86 target calls rcpss/rcpps itself (never the
// 14-bit AVX-512 form or a Newton-refined one), so results do not depend on
// the dispatched target; other processors reproduce the instruction from the
// table of its result mantissas.
#ifndef ZYL_PERCEPTUAL_RCP12_H_
#define ZYL_PERCEPTUAL_RCP12_H_

#include <cstdint>
#include <cstring>

#if defined(__SSE__) || defined(__x86_64__) || defined(_M_X64) || \
    (defined(_M_IX86_FP) && _M_IX86_FP >= 1)
#include <xmmintrin.h>
#define ZYL_HAVE_RCPSS 1
#else
#define ZYL_HAVE_RCPSS 0
#endif

namespace zyl {

// Bits 22..11 of the result mantissa of rcpss(1 + p/4096), p = 0..4095.
extern const uint16_t kRcp12Mantissa[4096];

// rcpss in software: the result depends only on the sign, the exponent and
// the top 12 mantissa bits. Zero and denormal inputs give a signed infinity,
// results below the normal range flush to a signed zero, infinities give
// zero and NaNs come back quiet.
inline float EmulatedRcp12(float x) {
  uint32_t b;
  std::memcpy(&b, &x, 4);
  const uint32_t sign = b & 0x80000000u;
  const uint32_t e = (b >> 23) & 0xffu;
  uint32_t out;
  if (e == 0xff) {
    out = (b & 0x7fffffu) ? (b | 0x400000u) : sign;
  } else if (e == 0) {
    out = sign | 0x7f800000u;
  } else if (e >= 253) {
    out = sign;
  } else {
    out = sign | ((253u - e) << 23) | (uint32_t{kRcp12Mantissa[(b >> 11) & 0xfffu]} << 11);
  }
  float r;
  std::memcpy(&r, &out, 4);
  return r;
}

// One value through the instruction itself where there is one.
inline float Rcp12(float x) {
#if ZYL_HAVE_RCPSS
  return _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(x)));
#else
  return EmulatedRcp12(x);
#endif
}

}  // namespace zyl

#endif  // ZYL_PERCEPTUAL_RCP12_H_
