// PhotoYCC: the 16 exports, each with its memcpy twin; the C3R pairs also per forced SIMD
// target. No peer library offers PhotoYCC, so there is nothing to run beside them.
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

#include "bench/bench_common.h"

namespace zyl::bench {
namespace {

// Interleaved pixels of `channels` elements of T.
template <class T>
Layout Pixels(int channels) {
  return Interleaved8u(channels * static_cast<int>(sizeof(T)));
}

// The byte pattern read as floats is full of NaNs, infinities and subnormals, whose slow paths
// would be timed instead of the conversion. The first call on a fresh pattern (the harness's
// untimed warm-up) rewrites each element as (bits & 0x7FFFFF) / 2^23, a value in 0..1; a fresh
// pattern shows in its first 16 elements, which all lie in 0..1 by chance less than once in 10^9.
void SaneFloatSource(const Frame& f, int channels) {
  auto* row = const_cast<Zyl8u*>(f.src[0]);  // the harness's own, writable buffer
  bool sane = true;
  for (int i = 0; i < 16 && sane; ++i) {
    float v;
    std::memcpy(&v, row + 4 * i, 4);
    sane = v >= 0.0f && v <= 1.0f;
  }
  if (sane) return;
  for (int y = 0; y < f.roi.height; ++y, row += f.src_step[0]) {
    for (int i = 0; i < f.roi.width * channels; ++i) {
      uint32_t bits;
      std::memcpy(&bits, row + 4 * i, 4);
      const float v = static_cast<float>(bits & 0x7FFFFF) / 8388608.0f;
      std::memcpy(row + 4 * i, &v, 4);
    }
  }
}

template <class T, int kChannels, auto kFn>
ZylStatus Call(const Frame& f) {
  if constexpr (std::is_same_v<T, Zyl32f>) SaneFloatSource(f, kChannels);
  return kFn(reinterpret_cast<const T*>(f.src[0]), f.src_step[0], reinterpret_cast<T*>(f.dst[0]),
             f.dst_step[0], f.roi);
}

// Both directions, both layouts of one element type.
template <class T, auto kFwdC3, auto kFwdAC4, auto kInvC3, auto kInvAC4>
void AddType(const char* type) {
  const std::string t(type);
  AddExport("RGBToYCC_" + t + "_C3R", Pixels<T>(3), Pixels<T>(3), Call<T, 3, kFwdC3>, kPerTarget);
  AddExport("RGBToYCC_" + t + "_AC4R", Pixels<T>(4), Pixels<T>(4), Call<T, 4, kFwdAC4>);
  AddExport("YCCToRGB_" + t + "_C3R", Pixels<T>(3), Pixels<T>(3), Call<T, 3, kInvC3>, kPerTarget);
  AddExport("YCCToRGB_" + t + "_AC4R", Pixels<T>(4), Pixels<T>(4), Call<T, 4, kInvAC4>);
}

}  // namespace
}  // namespace zyl::bench

#define ZYL_PYCC_BENCH(T, t)                                                             \
  AddType<T, &zyliRGBToYCC_##t##_C3R, &zyliRGBToYCC_##t##_AC4R, &zyliYCCToRGB_##t##_C3R, \
          &zyliYCCToRGB_##t##_AC4R>(#t)

ZYL_BENCH_FAMILY(photoycc) {
  using namespace zyl::bench;
  ZYL_PYCC_BENCH(Zyl8u, 8u);
  ZYL_PYCC_BENCH(Zyl16u, 16u);
  ZYL_PYCC_BENCH(Zyl16s, 16s);
  ZYL_PYCC_BENCH(Zyl32f, 32f);
}
