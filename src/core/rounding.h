// Holds round-to-nearest-even for the lifetime of a conversion and gives the
// caller back its own rounding mode on every path out.
//
// On x86 both the SSE control register (vector and scalar float code) and the
// x87 control word (library calls such as lrintf on 32-bit) are covered, and
// each is written only if it is not already round-to-nearest.
#ifndef ZYL_CORE_ROUNDING_H_
#define ZYL_CORE_ROUNDING_H_

#include <cstdint>

#if defined(__i386__) || defined(__x86_64__) || defined(_M_IX86) || defined(_M_X64)
#define ZYL_ROUNDING_X86 1
#include <xmmintrin.h>
#else
#define ZYL_ROUNDING_X86 0
#include <cfenv>
#endif

namespace zyl {

class NearestRounding {
 public:
#if ZYL_ROUNDING_X86
  NearestRounding() {
    saved_csr_ = _mm_getcsr();
    if (saved_csr_ & kCsrRoundMask) _mm_setcsr(saved_csr_ & ~kCsrRoundMask);
#if defined(__GNUC__)
    __asm__ volatile("fnstcw %0" : "=m"(saved_cw_));
    if (saved_cw_ & kCwRoundMask) {
      uint16_t cw = static_cast<uint16_t>(saved_cw_ & ~kCwRoundMask);
      __asm__ volatile("fldcw %0" : : "m"(cw));
    }
#endif
  }
  ~NearestRounding() {
    if (saved_csr_ & kCsrRoundMask) _mm_setcsr(saved_csr_);
#if defined(__GNUC__)
    if (saved_cw_ & kCwRoundMask) __asm__ volatile("fldcw %0" : : "m"(saved_cw_));
#endif
  }
#else
  NearestRounding() : saved_(std::fegetround()) {
    if (saved_ != FE_TONEAREST) std::fesetround(FE_TONEAREST);
  }
  ~NearestRounding() {
    if (saved_ != FE_TONEAREST) std::fesetround(saved_);
  }
#endif
  NearestRounding(const NearestRounding&) = delete;
  NearestRounding& operator=(const NearestRounding&) = delete;

 private:
#if ZYL_ROUNDING_X86
  static constexpr unsigned kCsrRoundMask = 0x6000u;  // MXCSR RC bits 13-14
  static constexpr uint16_t kCwRoundMask = 0x0C00u;   // x87 RC bits 10-11
  unsigned saved_csr_;
  uint16_t saved_cw_ = 0;
#else
  int saved_;
#endif
};

}  // namespace zyl

#endif  // ZYL_CORE_ROUNDING_H_
