#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "src/core/dispatch.cc"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "src/core/dispatch.h"

HWY_BEFORE_NAMESPACE();
namespace zyl {
namespace HWY_NAMESPACE {

int ProbeTarget() {
#if HWY_TARGET == HWY_AVX3
  return kTargetAvx3;
#elif HWY_TARGET == HWY_AVX2
  return kTargetAvx2;
#elif HWY_TARGET == HWY_SSE4
  return kTargetSse4;
#else
  return kTargetFallback;
#endif
}

}  // namespace HWY_NAMESPACE
}  // namespace zyl
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include <atomic>

#if defined(_MSC_VER)
#include <intrin.h>
#elif defined(__i386__) || defined(__x86_64__)
#include <cpuid.h>
#endif

namespace zyl {
namespace {

#if defined(__i386__) || defined(__x86_64__) || defined(_M_IX86) || defined(_M_X64)
void Cpuid(unsigned leaf, unsigned sub, unsigned r[4]) {
#if defined(_MSC_VER)
  int regs[4];
  __cpuidex(regs, static_cast<int>(leaf), static_cast<int>(sub));
  for (int i = 0; i < 4; ++i) r[i] = static_cast<unsigned>(regs[i]);
#else
  __cpuid_count(leaf, sub, r[0], r[1], r[2], r[3]);
#endif
}

unsigned long long Xgetbv() {
#if defined(_MSC_VER)
  return _xgetbv(0);
#else
  unsigned lo, hi;
  __asm__ volatile("xgetbv" : "=a"(lo), "=d"(hi) : "c"(0));
  return (static_cast<unsigned long long>(hi) << 32) | lo;
#endif
}

bool Bit(unsigned reg, int bit) { return (reg >> bit) & 1u; }

// Mirrors what each target's code is compiled to use, so a chosen target can
// never execute an instruction the processor or the OS lacks.
int DetectBest() {
  unsigned r[4];
  Cpuid(0, 0, r);
  const unsigned max_leaf = r[0];
  if (max_leaf < 1) return kTargetFallback;
  Cpuid(1, 0, r);
  const unsigned ecx1 = r[2];
  const bool sse4 = Bit(ecx1, 9) && Bit(ecx1, 19) && Bit(ecx1, 20) && Bit(ecx1, 1) &&
                    Bit(ecx1, 25) && Bit(r[3], 26);
  if (!sse4) return kTargetFallback;
  unsigned ebx7 = 0;
  if (max_leaf >= 7) {
    Cpuid(7, 0, r);
    ebx7 = r[1];
  }
  Cpuid(0x80000000u, 0, r);
  unsigned ecx_ext = 0;
  if (r[0] >= 0x80000001u) {
    Cpuid(0x80000001u, 0, r);
    ecx_ext = r[2];
  }
  const bool osxsave = Bit(ecx1, 27);
  const unsigned long long xcr0 = osxsave ? Xgetbv() : 0;
  const bool os_avx = (xcr0 & 0x6) == 0x6;
  const bool os_avx512 = (xcr0 & 0xE6) == 0xE6;
  const bool avx2 = os_avx && Bit(ecx1, 28) && Bit(ecx1, 12) && Bit(ecx1, 29) && Bit(ebx7, 5) &&
                    Bit(ebx7, 3) && Bit(ebx7, 8) && Bit(ecx_ext, 5);
  if (!avx2) return kTargetSse4;
  const bool avx3 =
      os_avx512 && Bit(ebx7, 16) && Bit(ebx7, 17) && Bit(ebx7, 30) && Bit(ebx7, 31);
  return avx3 ? kTargetAvx3 : kTargetAvx2;
}
#else
int DetectBest() { return kTargetFallback; }
#endif

int BestCompiled(int supported) {
  for (int t = supported; t > kTargetFallback; --t) {
    if (TargetCompiled(t)) return t;
  }
  return kTargetFallback;
}

int Supported() {
  static const int best = DetectBest();
  return best;
}

int Automatic() {
  static const int best = BestCompiled(Supported());
  return best;
}

std::atomic<int> g_forced{-1};  // test/benchmark switch only; -1 = automatic

}  // namespace

bool TargetCompiled(int target) {
  switch (target) {
    case kTargetFallback:
      return true;
    case kTargetSse4:
      return (HWY_TARGETS & HWY_SSE4) != 0;
    case kTargetAvx2:
      return (HWY_TARGETS & HWY_AVX2) != 0;
    case kTargetAvx3:
      return (HWY_TARGETS & HWY_AVX3) != 0;
    default:
      return false;
  }
}

bool TargetSupported(int target) {
  return target >= kTargetFallback && target <= Supported();
}

const char* TargetName(int target) {
  static const char* const kNames[kTargetCount] = {"fallback", "SSE4", "AVX2", "AVX3"};
  return target >= 0 && target < kTargetCount ? kNames[target] : "?";
}

int ActiveTarget() {
  const int forced = g_forced.load(std::memory_order_relaxed);
  return forced >= 0 ? forced : Automatic();
}

bool ForceTarget(int target) {
  if (target == -1) {
    g_forced.store(-1, std::memory_order_relaxed);
    return true;
  }
  if (!TargetCompiled(target) || !TargetSupported(target)) return false;
  g_forced.store(target, std::memory_order_relaxed);
  return true;
}

int DispatchProbe() { return ZYL_DISPATCH(ProbeTarget)(); }

}  // namespace zyl
#endif  // HWY_ONCE
