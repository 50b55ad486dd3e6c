// Every 8-bit triple once, and a check that runs an export over all of them
// on every target against a per-pixel reference.
#ifndef ZYL_TESTS_SUPPORT_EVERY_TRIPLE_H_
#define ZYL_TESTS_SUPPORT_EVERY_TRIPLE_H_

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <vector>

#include "include/zylcc.h"
#include "src/core/dispatch.h"
#include "tests/support/targets.h"

namespace zyl::test {

using Triple8u = std::array<uint8_t, 3>;

// Every possible 8-bit triple once, as a 4096 x 4096 image whose pixel i holds
// (i >> 16, (i >> 8) & 255, i & 255), both interleaved and as three planes.
struct AllTriples {
  static constexpr int kSide = 4096;
  static constexpr size_t kCount = size_t{1} << 24;

  AllTriples() : interleaved(3 * kCount), planes(3 * kCount) {
    for (size_t i = 0; i < kCount; ++i) {
      const Triple8u p = At(i);
      for (size_t c = 0; c < 3; ++c) interleaved[3 * i + c] = planes[c * kCount + i] = p[c];
    }
  }
  static Triple8u At(size_t i) {
    return {static_cast<uint8_t>(i >> 16), static_cast<uint8_t>(i >> 8), static_cast<uint8_t>(i)};
  }
  std::array<const Zyl8u*, 3> Planes() const {
    return {&planes[0], &planes[kCount], &planes[2 * kCount]};
  }

  std::vector<uint8_t> interleaved, planes;
};

inline const AllTriples& Triples() {
  static const AllTriples* const kTriples = new AllTriples;
  return *kTriples;
}

// Runs `convert` (source triples -> 3-channel interleaved destination of 2^24 pixels) on each
// target and compares every byte with the reference.
inline void Exhaustive(const char* what, Triple8u (*reference)(Triple8u),
                       const std::function<ZylStatus(const AllTriples&, Zyl8u*)>& convert) {
  const AllTriples& all = Triples();
  std::vector<uint8_t> want(3 * AllTriples::kCount), got(want.size());
  for (size_t i = 0; i < AllTriples::kCount; ++i) {
    const Triple8u out = reference(AllTriples::At(i));
    std::copy(out.begin(), out.end(), &want[3 * i]);
  }
  ForEachTarget([&](int target) {
    std::fill(got.begin(), got.end(), uint8_t{0x5A});
    const auto start = std::chrono::steady_clock::now();
    ASSERT_EQ(convert(all, got.data()), zylStsOk);
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    std::printf("[ timing   ] %s, all 2^24 pixels, %s: %.3f s\n", what, TargetName(target),
                took.count());
    const auto bad = std::mismatch(got.begin(), got.end(), want.begin());
    if (bad.first != got.end()) {
      const size_t i = static_cast<size_t>(bad.first - got.begin()) / 3;
      const Triple8u in = AllTriples::At(i);
      ADD_FAILURE() << what << ": input (" << int{in[0]} << ", " << int{in[1]} << ", " << int{in[2]}
                    << ") expected (" << int{want[3 * i]} << ", " << int{want[3 * i + 1]} << ", "
                    << int{want[3 * i + 2]} << ") got (" << int{got[3 * i]} << ", "
                    << int{got[3 * i + 1]} << ", " << int{got[3 * i + 2]} << ")";
    }
  });
}

inline constexpr ZylSize kAllSize{AllTriples::kSide, AllTriples::kSide};
inline constexpr int kSide3 = 3 * AllTriples::kSide;

// Exhaustive for an export from interleaved triples to interleaved triples.
template <ZylStatus (*kFn)(const Zyl8u*, int, Zyl8u*, int, ZylSize)>
void ExhaustiveC3(const char* what, Triple8u (*reference)(Triple8u)) {
  Exhaustive(what, reference, [](const AllTriples& all, Zyl8u* out) {
    return kFn(all.interleaved.data(), kSide3, out, kSide3, kAllSize);
  });
}

}  // namespace zyl::test

#endif  // ZYL_TESTS_SUPPORT_EVERY_TRIPLE_H_
