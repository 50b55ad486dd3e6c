// zylcore: the size of the processor's largest cache.
#include <cstdint>
#include <initializer_list>

#include "include/zylcore.h"

#if defined(_WIN32)
#include <windows.h>
#elif defined(__unix__) || defined(__APPLE__)
#include <unistd.h>
#endif
#if defined(_MSC_VER)
#include <intrin.h>
#elif defined(__i386__) || defined(__x86_64__)
#include <cpuid.h>
#endif

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

// Deterministic cache parameters: leaf 4 (Intel) or 0x8000001D (AMD with
// topology extensions) enumerate every cache level with the same layout.
int64_t LargestFromLeaf(unsigned leaf) {
  int64_t largest = 0;
  for (unsigned sub = 0; sub < 16; ++sub) {
    unsigned r[4];
    Cpuid(leaf, sub, r);
    const unsigned type = r[0] & 31;
    if (type == 0) break;
    const int64_t ways = ((r[1] >> 22) & 0x3FF) + 1;
    const int64_t partitions = ((r[1] >> 12) & 0x3FF) + 1;
    const int64_t line = (r[1] & 0xFFF) + 1;
    const int64_t sets = static_cast<int64_t>(r[2]) + 1;
    const int64_t size = ways * partitions * line * sets;
    if (size > largest) largest = size;
  }
  return largest;
}

int64_t FromCpuid() {
  unsigned r[4];
  Cpuid(0, 0, r);
  const unsigned max_leaf = r[0];
  const bool amd = r[1] == 0x68747541u;  // "Auth"enticAMD
  const bool hygon = r[1] == 0x6f677948u;  // "Hygo"nGenuine
  Cpuid(0x80000000u, 0, r);
  const unsigned max_ext = r[0];
  if ((amd || hygon) && max_ext >= 0x8000001Du) {
    Cpuid(0x80000001u, 0, r);
    if ((r[2] >> 22) & 1) return LargestFromLeaf(0x8000001Du);
  }
  if (!amd && !hygon && max_leaf >= 4) return LargestFromLeaf(4);
  if (max_ext >= 0x80000006u) {  // AMD legacy: L2 in KiB, L3 in 512 KiB units
    Cpuid(0x80000006u, 0, r);
    const int64_t l2 = static_cast<int64_t>(r[2] >> 16) * 1024;
    const int64_t l3 = static_cast<int64_t>(r[3] >> 18) * 512 * 1024;
    return l3 > l2 ? l3 : l2;
  }
  return 0;
}
#else
int64_t FromCpuid() { return 0; }
#endif

int64_t FromOs() {
#if defined(_WIN32)
  // A fixed array on the stack: the query allocates nothing.
  SYSTEM_LOGICAL_PROCESSOR_INFORMATION info[256];
  DWORD bytes = sizeof(info);
  if (!GetLogicalProcessorInformation(info, &bytes)) return 0;
  int64_t largest = 0;
  const DWORD n = bytes / sizeof(info[0]);
  for (DWORD i = 0; i < n; ++i) {
    if (info[i].Relationship == RelationCache &&
        static_cast<int64_t>(info[i].Cache.Size) > largest) {
      largest = info[i].Cache.Size;
    }
  }
  return largest;
#elif defined(_SC_LEVEL3_CACHE_SIZE)
  int64_t largest = 0;
  for (int name : {_SC_LEVEL1_DCACHE_SIZE, _SC_LEVEL2_CACHE_SIZE, _SC_LEVEL3_CACHE_SIZE,
                   _SC_LEVEL4_CACHE_SIZE}) {
    const long v = sysconf(name);
    if (v > largest) largest = v;
  }
  return largest;
#else
  return 0;
#endif
}

}  // namespace

extern "C" ZYLCORE_API int32_t zylGetMaxCacheSizeB(int32_t* pSizeByte) {
  if (pSizeByte == nullptr) return -8;
  int64_t size = FromCpuid();
  if (size <= 0) size = FromOs();
  if (size > INT32_MAX) size = INT32_MAX;
  *pSizeByte = static_cast<int32_t>(size > 0 ? size : 0);
  return 0;
}
