#include <gtest/gtest.h>
#include "include/zylcc.h"
#include "src/core/dispatch.h"
TEST(Smoke, Yuv) {
  for (int t = 0; t < zyl::kTargetCount; ++t) {
    if (!zyl::ForceTarget(t)) continue;
    EXPECT_EQ(zyl::DispatchProbe(), t);
    uint8_t src[300], dst[300], back[300];
    for (int i = 0; i < 300; ++i) src[i] = (i * 37) & 255;
    ASSERT_EQ(zyliRGBToYUV_8u_C3R(src, 300, dst, 300, {100, 1}), 0);
    ASSERT_EQ(zyliYUVToRGB_8u_C3R(dst, 300, back, 300, {100, 1}), 0);
    printf("%s %d %d %d -> %d %d %d\n", zyl::TargetName(t), dst[0], dst[1], dst[2], back[0], back[1], back[2]);
  }
  zyl::ForceTarget(-1);
}
