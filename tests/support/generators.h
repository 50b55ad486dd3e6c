// Test inputs: reproducible random images, and the values where fixed-point
// kernels go wrong (range ends, the midpoint where chroma is zero, ties).
#ifndef ZYL_TESTS_SUPPORT_GENERATORS_H_
#define ZYL_TESTS_SUPPORT_GENERATORS_H_

#include <array>
#include <cstdint>
#include <limits>
#include <random>
#include <type_traits>
#include <vector>

#include "tests/support/guarded_image.h"

namespace zyl::test {

// floor(v / 2^bits): the arithmetic right shift of the fixed-point formulas,
// spelled out so references do not lean on how the compiler shifts negative
// values.
inline int64_t Shr(int64_t v, int bits) {
  const int64_t d = int64_t{1} << bits;
  return v >= 0 ? v / d : -((-v + d - 1) / d);
}

// Uniform over the whole range of an integer type, or over [lo, hi) for floats.
template <class T>
void FillRandom(GuardedImage<T>& img, uint32_t seed, double lo = 0.0, double hi = 1.0) {
  std::mt19937 rng(seed);
  if constexpr (std::is_floating_point_v<T>) {
    std::uniform_real_distribution<double> dist(lo, hi);
    img.Fill([&](int, int, int) { return static_cast<T>(dist(rng)); });
  } else {
    using Wide = std::conditional_t<std::is_signed_v<T>, int64_t, uint64_t>;
    std::uniform_int_distribution<Wide> dist(std::numeric_limits<T>::min(),
                                             std::numeric_limits<T>::max());
    img.Fill([&](int, int, int) { return static_cast<T>(dist(rng)); });
  }
}

// 8-bit values at the ends of the range and around the midpoint.
inline const std::vector<uint8_t>& Extremes8u() {
  static const std::vector<uint8_t> kValues = {0, 1, 127, 128, 254, 255};
  return kValues;
}

// Every combination of three extreme values (this includes black, white and
// the saturated primaries and secondaries), then the whole gray ramp.
inline std::vector<std::array<uint8_t, 3>> ExtremeTriples8u() {
  std::vector<std::array<uint8_t, 3>> out;
  for (uint8_t a : Extremes8u())
    for (uint8_t b : Extremes8u())
      for (uint8_t c : Extremes8u()) out.push_back({a, b, c});
  for (int g = 0; g < 256; ++g) {
    const auto v = static_cast<uint8_t>(g);
    out.push_back({v, v, v});
  }
  return out;
}

// Pixel i of the region (row-major, walking order) takes values[(first + i) %
// size] in its first N channels; further channels are left as they are.
template <class T, size_t N>
void FillPixels(GuardedImage<T>& img, const std::vector<std::array<T, N>>& values,
                size_t first = 0) {
  size_t i = first;
  for (int y = 0; y < img.height(); ++y) {
    for (int x = 0; x < img.width(); ++x, ++i) {
      const auto& v = values[i % values.size()];
      for (size_t c = 0; c < N; ++c) img.At(x, y, static_cast<int>(c)) = v[c];
    }
  }
}

}  // namespace zyl::test

#endif  // ZYL_TESTS_SUPPORT_GENERATORS_H_
