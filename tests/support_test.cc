// The fixtures must catch the faults they exist for; a guard that never fires
// would make every family test vacuous.
#include <gtest/gtest.h>

#include <cstdint>
#include <optional>

#include "tests/support/guarded_image.h"

namespace zyl::test {
namespace {

// A stray write at each kind of place must make the comparison fail.
TEST(GuardedImage, CatchesWritesOutsideTheRegion) {
  GuardedImage<uint8_t> img(5, 3, kC4, {Steps::kPadded});
  const int step = img.Step();
  uint8_t* const row0 = img.Ptr();
  struct Stray {
    const char* what;
    ptrdiff_t offset;  // from the first pixel
  };
  const Stray strays[] = {
      {"byte before the region", -1},
      {"row padding", 5 * 4},
      {"byte after the last row", 2 * step + 5 * 4},
  };
  for (const Stray& s : strays) {
    const auto before = img.Save();
    row0[s.offset] ^= 1;
    EXPECT_FALSE(img.Unchanged(before)) << s.what;
    row0[s.offset] ^= 1;
  }
  // An untouchable fourth channel: a changed alpha fails, leaving it passes.
  const auto before = img.Save();
  img.At(2, 1, 0) ^= 1;
  const auto keep_alpha = [&](int x, int y, int c) -> std::optional<uint8_t> {
    if (c == 3) return std::nullopt;
    return img.At(x, y, c);
  };
  EXPECT_TRUE(img.Matches(before, keep_alpha));
  img.At(4, 2, 3) ^= 1;
  EXPECT_FALSE(img.Matches(before, keep_alpha));
}

// Logical rows map to memory as an export walking the steps would see them.
TEST(GuardedImage, StepsAddressRowsLikeTheExports) {
  for (Steps steps : {Steps::kPacked, Steps::kPadded, Steps::kNegative, Steps::kZero}) {
    SCOPED_TRACE(StepsName(steps));
    GuardedImage<uint16_t> img(7, 4, kP3, {steps});
    EXPECT_EQ(img.Step() % 2, 0);
    EXPECT_EQ(steps == Steps::kNegative, img.Step() < 0);
    EXPECT_EQ(steps == Steps::kPacked, img.Step() == 7 * 2);
    for (int plane = 0; plane < 3; ++plane) {
      for (int y = 0; y < 4; ++y) {
        const auto* row = reinterpret_cast<const uint8_t*>(img.Ptr(plane)) + y * img.Step();
        EXPECT_EQ(reinterpret_cast<const uint8_t*>(&img.At(6, y, plane)), row + 6 * 2);
      }
    }
  }
}

#if defined(__linux__) && defined(GTEST_HAS_DEATH_TEST)
TEST(GuardedImageDeathTest, PageEndFaultsJustPastTheRegion) {
  GuardedImage<uint8_t> img(9, 2, kC3, {Steps::kPacked, Placement::kPageEnd});
  volatile uint8_t* last = &img.At(8, 1, 2);
  const uint8_t readable = *last;  // the region itself is readable
  (void)readable;
  EXPECT_DEATH({ (void)last[1]; }, "");
}
#endif

}  // namespace
}  // namespace zyl::test
