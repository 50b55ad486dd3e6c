// Constant fills: the 8-bit ROI fill (tone mapping) and the 32-bit run fill
// (gamma). Large fills bypass the cache with non-temporal stores so that they
// do not evict the caller's working set; the size rule decides when.
#ifndef ZYL_CORE_FILL_H_
#define ZYL_CORE_FILL_H_

#include <cstddef>
#include <cstdint>

#include "include/zylcc.h"

namespace zyl {

// Reported largest cache in bytes, or 0 when unknown (failed query or <= 0).
using CacheQuery = int32_t (*)();
int32_t QueryCacheSize();

// 8-bit fill of n = width * height bytes: the cache is asked only when n is
// above 512 KiB, and streaming is used when n is at least the cache size.
bool Fill8Streams(int64_t n, CacheQuery query = QueryCacheSize);

// 32-bit fill of n = 4 * count bytes: the cache is asked only when n exceeds
// 2 MiB and the destination is 4-byte aligned; streaming when the cache is
// smaller than n.
bool Fill32Streams(int64_t n, bool aligned4, CacheQuery query = QueryCacheSize);

// Fills a width x height ROI of bytes (one row when step == width).
void FillConst8u(uint8_t value, uint8_t* dst, int step, ZylSize roi,
                 CacheQuery query = QueryCacheSize);

// Fills count 32-bit values.
void FillConst32(uint32_t value, uint32_t* dst, ptrdiff_t count,
                 CacheQuery query = QueryCacheSize);

}  // namespace zyl

#endif  // ZYL_CORE_FILL_H_
