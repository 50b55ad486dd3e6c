#include "src/core/fill.h"

#include <algorithm>
#include <cstring>

#include "include/zylcore.h"

#if defined(__SSE2__) || defined(_M_X64) || (defined(_M_IX86_FP) && _M_IX86_FP >= 2)
#include <emmintrin.h>
#define ZYL_FILL_SSE2 1
#else
#define ZYL_FILL_SSE2 0
#endif

namespace zyl {
namespace {

constexpr int64_t kFill8QueryAbove = 0x80000;    // 512 KiB
constexpr int64_t kFill32QueryFrom = 2097153;    // more than 2 MiB

// Ordinary stores, byte by byte up to a boundary or the end.
void StoreBytes(uint8_t* dst, const uint8_t* pattern16, size_t phase, size_t n) {
  for (size_t i = 0; i < n; ++i) dst[i] = pattern16[(phase + i) & 15];
}

void FillRow8(uint8_t value, uint8_t* dst, size_t n, bool stream) {
#if ZYL_FILL_SSE2
  if (stream) {
    uint8_t pattern[16];
    std::memset(pattern, value, sizeof(pattern));
    const size_t head = std::min(n, (16 - (reinterpret_cast<uintptr_t>(dst) & 15)) & 15);
    StoreBytes(dst, pattern, 0, head);
    const __m128i v = _mm_set1_epi8(static_cast<char>(value));
    size_t i = head;
    for (; i + 16 <= n; i += 16) _mm_stream_si128(reinterpret_cast<__m128i*>(dst + i), v);
    StoreBytes(dst + i, pattern, 0, n - i);
    _mm_sfence();
    return;
  }
#else
  (void)stream;
#endif
  std::memset(dst, value, n);
}

}  // namespace

int32_t QueryCacheSize() {
  int32_t size = 0;
  if (zylGetMaxCacheSizeB(&size) != 0 || size <= 0) return 0;
  return size;
}

bool Fill8Streams(int64_t n, CacheQuery query) {
  if (n <= kFill8QueryAbove) return false;
  const int32_t cache = query();
  return cache > 0 && n >= cache;
}

bool Fill32Streams(int64_t n, bool aligned4, CacheQuery query) {
  if (n < kFill32QueryFrom || !aligned4) return false;
  const int32_t cache = query();
  return cache > 0 && cache < n;
}

void FillConst8u(uint8_t value, uint8_t* dst, int step, ZylSize roi, CacheQuery query) {
  const int64_t n = static_cast<int64_t>(roi.width) * roi.height;
  const bool stream = Fill8Streams(n, query);
  if (step == roi.width) {
    FillRow8(value, dst, static_cast<size_t>(n), stream);
    return;
  }
  for (int y = 0; y < roi.height; ++y) {
    FillRow8(value, dst, static_cast<size_t>(roi.width), stream);
    dst += step;
  }
}

void FillConst32(uint32_t value, uint32_t* dst, ptrdiff_t count, CacheQuery query) {
  const int64_t n = 4 * static_cast<int64_t>(count);
  const bool aligned4 = (reinterpret_cast<uintptr_t>(dst) & 3) == 0;
#if ZYL_FILL_SSE2
  if (Fill32Streams(n, aligned4, query)) {
    // Ordinary stores up to the next 64-byte boundary, whole 128-byte blocks
    // streamed, then the 16-, 8- and 4-byte tail with ordinary stores.
    uint32_t* p = dst;
    uint32_t* const end = dst + count;
    while ((reinterpret_cast<uintptr_t>(p) & 63) != 0 && p < end) *p++ = value;
    const __m128i v = _mm_set1_epi32(static_cast<int>(value));
    for (; end - p >= 32; p += 32) {
      for (int k = 0; k < 8; ++k) _mm_stream_si128(reinterpret_cast<__m128i*>(p + 4 * k), v);
    }
    _mm_sfence();
    for (; end - p >= 4; p += 4) _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v);
    if (end - p >= 2) {
      _mm_storel_epi64(reinterpret_cast<__m128i*>(p), v);
      p += 2;
    }
    if (p < end) *p = value;
    return;
  }
#else
  (void)aligned4;
  (void)query;
#endif
  for (ptrdiff_t i = 0; i < count; ++i) dst[i] = value;
}

}  // namespace zyl
