// The sweep the family tests share: guarded images at widths around every
// target's vector block, several heights, and contiguous, padded,
// upward-walking and zero steps on either side.
#ifndef ZYL_TESTS_SUPPORT_SWEEP_H_
#define ZYL_TESTS_SUPPORT_SWEEP_H_

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <vector>

#include "tests/support/guarded_image.h"

namespace zyl::test {

// Steps of up to three source and three destination images (or planes with
// steps of their own); single-image sides use entry 0. The entries differ
// per plane, so a plane walked with another plane's step shows up. Sources
// at a page end catch reads past the region, destinations there writes.
struct StepPlan {
  std::array<Steps, 3> src;
  Placement src_place;
  std::array<Steps, 3> dst;
  Placement dst_place;
};

// clang-format off
inline constexpr StepPlan kStepPlans[] = {
    {{Steps::kPacked, Steps::kPacked, Steps::kPacked}, Placement::kPageEnd,
     {Steps::kPacked, Steps::kPacked, Steps::kPacked}, Placement::kPageEnd},
    {{Steps::kPadded, Steps::kPadded, Steps::kPadded}, Placement::kHeap,
     {Steps::kPadded, Steps::kPadded, Steps::kPadded}, Placement::kHeap},
    {{Steps::kNegative, Steps::kPadded, Steps::kNegative}, Placement::kPageEnd,
     {Steps::kPadded, Steps::kNegative, Steps::kPacked}, Placement::kHeap},
    {{Steps::kPadded, Steps::kNegative, Steps::kPacked}, Placement::kHeap,
     {Steps::kNegative, Steps::kNegative, Steps::kNegative}, Placement::kPageEnd},
    {{Steps::kZero, Steps::kPadded, Steps::kPacked}, Placement::kHeap,
     {Steps::kPadded, Steps::kPacked, Steps::kPadded}, Placement::kHeap},
    {{Steps::kPadded, Steps::kZero, Steps::kZero}, Placement::kHeap,
     {Steps::kZero, Steps::kPadded, Steps::kZero}, Placement::kHeap},
};
// clang-format on

// 1..40 covers one block and its neighbours for SSE4 (16) and AVX2 (32);
// 63..65 and 127..129 do it for AVX-512 (64) and two of its blocks. `extra`
// widths go between the two runs.
inline std::vector<int> SweepWidths(std::initializer_list<int> extra = {}) {
  std::vector<int> w;
  for (int i = 1; i <= 40; ++i) w.push_back(i);
  w.insert(w.end(), extra);
  for (int i : {63, 64, 65, 127, 128, 129}) w.push_back(i);
  return w;
}

// One image pair of a sweep; `seed` differs from case to case, and the
// seeds from seed to seed + 7 are the case's to use.
struct SweepCase {
  int width, height;
  const StepPlan& plan;
  uint32_t seed;

  ImageOptions Src(int image = 0) const {
    return {plan.src[image], plan.src_place, seed + static_cast<uint32_t>(image)};
  }
  ImageOptions Dst(int image = 0) const {
    return {plan.dst[image], plan.dst_place, seed + 4 + static_cast<uint32_t>(image)};
  }
};

enum class Plans {
  kEvery,   // every plan at every size
  kCycled,  // one plan per size, taking them in turn
};

// Calls body(const SweepCase&) for each height, width and plan, under a
// trace naming them; stops when it returns false (one report is enough).
template <class Body>
void Sweep(Plans plans, std::initializer_list<int> heights, const std::vector<int>& widths,
           Body body) {
  uint32_t seed = 1;
  size_t next = 0;
  for (int height : heights) {
    for (int width : widths) {
      for (size_t p = 0; p < (plans == Plans::kEvery ? std::size(kStepPlans) : 1); ++p) {
        const StepPlan& plan =
            kStepPlans[plans == Plans::kEvery ? p : next++ % std::size(kStepPlans)];
        seed += 8;
        SCOPED_TRACE(::testing::Message()
                     << width << "x" << height << " src " << StepsName(plan.src[0]) << " dst "
                     << StepsName(plan.dst[0]));
        if (!body(SweepCase{width, height, plan, seed})) return;
      }
    }
  }
}

}  // namespace zyl::test

#endif  // ZYL_TESTS_SUPPORT_SWEEP_H_
