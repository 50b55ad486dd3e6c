// Run-time choice among the SIMD targets each family is compiled for.
//
// Every family file is compiled once per target (hwy/foreach_target.h); a
// kernel is picked per call from its per-target entries by the index of the
// active target. The index is found once from CPUID; tests and benchmarks can
// force a target through ForceTarget (internal, never exported).
#ifndef ZYL_CORE_DISPATCH_H_
#define ZYL_CORE_DISPATCH_H_

#include <hwy/detect_targets.h>

namespace zyl {

enum TargetIndex : int {
  kTargetFallback = 0,  // portable one-lane target: per-pixel definition over the whole row
  kTargetSse4 = 1,
  kTargetAvx2 = 2,
  kTargetAvx3 = 3,
  kTargetCount = 4
};

// Target whose kernels run now: the forced one if any, else the best one that
// is both compiled in and supported by this processor.
int ActiveTarget();

// Whether a target's kernels are in this build / can run on this processor.
bool TargetCompiled(int target);
bool TargetSupported(int target);
const char* TargetName(int target);

// Forces a compiled and supported target (returns false otherwise and changes
// nothing); -1 returns to the automatic choice. Not thread-safe with respect
// to concurrent conversions: meant for tests and benchmarks only.
bool ForceTarget(int target);

// Reports the target of the code it was compiled into: lets tests prove which
// target's kernels a forced dispatch really reaches.
int DispatchProbe();

template <class F>
inline F Pick(F fallback, F sse4, F avx2, F avx3) {
  const F table[kTargetCount] = {fallback, sse4, avx2, avx3};
  return table[ActiveTarget()];
}

}  // namespace zyl

#if HWY_TARGETS & HWY_SCALAR
#define ZYL_T_FALLBACK(...) &::zyl::N_SCALAR::__VA_ARGS__
#else
#define ZYL_T_FALLBACK(...) &::zyl::N_EMU128::__VA_ARGS__
#endif
#if HWY_TARGETS & HWY_SSE4
#define ZYL_T_SSE4(...) &::zyl::N_SSE4::__VA_ARGS__
#else
#define ZYL_T_SSE4(...) nullptr
#endif
#if HWY_TARGETS & HWY_AVX2
#define ZYL_T_AVX2(...) &::zyl::N_AVX2::__VA_ARGS__
#else
#define ZYL_T_AVX2(...) nullptr
#endif
#if HWY_TARGETS & HWY_AVX3
#define ZYL_T_AVX3(...) &::zyl::N_AVX3::__VA_ARGS__
#else
#define ZYL_T_AVX3(...) nullptr
#endif

// The active target's instance of a kernel (a function or a function template
// instance) compiled in every target namespace. Use after the HWY_ONCE guard.
#define ZYL_DISPATCH(...)                                                          \
  ::zyl::Pick<decltype(ZYL_T_FALLBACK(__VA_ARGS__))>(                              \
      ZYL_T_FALLBACK(__VA_ARGS__), ZYL_T_SSE4(__VA_ARGS__), ZYL_T_AVX2(__VA_ARGS__), \
      ZYL_T_AVX3(__VA_ARGS__))

#endif  // ZYL_CORE_DISPATCH_H_
