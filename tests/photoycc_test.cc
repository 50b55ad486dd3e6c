// PhotoYCC: the 16 exports against hand-worked values and against a per-pixel
// reference written from the defining formulas, on every target, at widths
// around each target's vector, with packed, padded, upward and zero steps;
// and round trips (odd byte steps) with bounds worked out from the constants.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <type_traits>

#include "include/zylcc.h"
#include "tests/support/generators.h"
#include "tests/support/pixel_family.h"

namespace zyl::test {
namespace {

// ------------------------------------------------------------ reference --

using I3 = std::array<int64_t, 3>;
using F3 = std::array<float, 3>;

I3 Ycc8(I3 p) {
  const int64_t s = 4898 * p[0] + 9617 * p[1] + 1867 * p[2];
  return {Shr(Shr(s, 10) * 2921, 16), (Shr(Shr(p[2] * 16384 - s, 10) * 1789, 16) + 156) & 255,
          (Shr(Shr(p[0] * 16384 - s, 10) * 2178, 16) + 137) & 255};
}

I3 Rgb8(I3 p) {
  const int64_t y = 5564 * p[0], c1 = 9084 * p[1] - 1417104, c2 = 7460 * p[2] - 1022020;
  auto clamp = [](int64_t v) { return std::clamp<int64_t>(v, 0, 255); };
  return {clamp(Shr(y + c2, 12)), clamp(Shr(16 * y - 794 * Shr(c1, 8) - 2084 * Shr(c2, 8), 16)),
          clamp(Shr(y + c1, 12))};
}

// Single precision, one rounding per operation, in the defined order.
F3 YccF(F3 p) {
  float luma = 0.299f * p[0];
  luma = luma + 0.587f * p[1];
  luma = luma + 0.114f * p[2];
  const float c1 = (p[2] - luma) * 0.4368627f, c2 = 0.53192f * (p[0] - luma);
  return {luma * 0.7132668f, c1 + 0.6117647f, 0.5372549f + c2};
}

F3 RgbF(F3 p) {
  const float y = 1.3584f * p[0];
  const float c2 = (p[2] - 0.5372549f) * 1.8215f, c1 = 2.2179f * (p[1] - 0.6117647f);
  const float g1 = y - 0.194f * c1, g2 = 0.509f * c2;
  auto clamp = [](float v) { return v < 0.0f ? 0.0f : (v > 1.0f ? 1.0f : v); };
  return {clamp(y + c2), clamp(g1 - g2), clamp(y + c1)};
}

// 16u codes are v / 65535 on the float scale and come back as
// nearest-even(clamp(f * 65535)); 16s codes are the 16u ones less 32768.
template <class T>
std::array<T, 3> Reference(bool to_ycc, const T* in) {
  std::array<T, 3> out;
  if constexpr (std::is_same_v<T, Zyl8u>) {
    const I3 o = to_ycc ? Ycc8({in[0], in[1], in[2]}) : Rgb8({in[0], in[1], in[2]});
    for (int c = 0; c < 3; ++c) out[c] = static_cast<T>(o[c]);
  } else {
    constexpr bool kFloat = std::is_same_v<T, Zyl32f>;
    constexpr int kBias = std::is_same_v<T, Zyl16s> ? 32768 : 0;
    F3 f;
    for (int c = 0; c < 3; ++c) {
      f[c] = kFloat ? static_cast<float>(in[c]) : static_cast<float>(in[c] + kBias) / 65535.0f;
    }
    f = to_ycc ? YccF(f) : RgbF(f);
    for (int c = 0; c < 3; ++c) {
      const double code = std::nearbyint(std::clamp<double>(f[c] * 65535.0f, 0, 65535)) - kBias;
      out[c] = static_cast<T>(kFloat ? f[c] : code);  // default mode: ties to even
    }
  }
  return out;
}

// ------------------------------------------------------- export adapters --

const PixelExport kExports[] = {ZYL_PIXEL_ROWS(Zyl8u, 8u, YCC), ZYL_PIXEL_ROWS(Zyl16u, 16u, YCC),
                                ZYL_PIXEL_ROWS(Zyl16s, 16s, YCC), ZYL_PIXEL_ROWS(Zyl32f, 32f, YCC)};

// ---------------------------------------------------------- known answers --

const PixelKnown kKnown[] = {
    // 8u white: s = 255 * 16382 = 4177410, s >> 10 = 4079, 4079 * 2921 = 11914759 >> 16 = 181;
    // 255 * 16384 - s = 510 >> 10 = 0 for both differences, src_opt C1 = 156, C2 = 137.
    {"zyliRGBToYCC_8u_C3R", {255, 255, 255}, {181, 156, 137}},
    {"zyliRGBToYCC_8u_AC4R", {0, 0, 0}, {0, 156, 137}},
    // Red: s = 1248990 >> 10 = 1219, 1219 * 2921 = 3560699 >> 16 = 54;
    // -1248990 >> 10 = -1220 (floor), -1220 * 1789 = -2182580 >> 16 = -34, C1 = 122;
    // 4177920 - 1248990 = 2928930 >> 10 = 2860, 2860 * 2178 = 6229080 >> 16 = 95, C2 = 232.
    {"zyliRGBToYCC_8u_C3R", {255, 0, 0}, {54, 122, 232}},
    // Blue: s = 476085 >> 10 = 464, 464 * 2921 = 1355344 >> 16 = 20; 3701835 >> 10 = 3615,
    // 3615 * 1789 = 6467235 >> 16 = 98, C1 = 254 (the largest); -476085 >> 10 = -465,
    // -465 * 2178 = -1012770 >> 16 = -16, C2 = 121.
    {"zyliRGBToYCC_8u_AC4R", {0, 0, 255}, {20, 254, 121}},
    // 8u (0, 0, 0): R = -1022020 >> 12 = -250 -> 0, B = -1417104 >> 12 = -346 -> 0;
    // c1 >> 8 = -5536, c2 >> 8 = -3993: G = (794 * 5536 + 2084 * 3993) >> 16 = 12716996 >> 16.
    {"zyliYCCToRGB_8u_C3R", {0, 0, 0}, {0, 194, 0}},
    // The white of the forward direction: c1 = c2 = 0, y = 1007084; 1007084 >> 12 = 245 and
    // 16 y >> 16 = 245: the pair has a gain of about 0.969, by definition.
    {"zyliYCCToRGB_8u_AC4R", {181, 156, 137}, {245, 245, 245}},
    // y = 1418820, c1 = 899316, c2 = 880280: R, B > 255 -> 255;
    // G = (22701120 - 794 * 3512 - 2084 * 3438) >> 16 = 12747800 >> 16 = 194.
    {"zyliYCCToRGB_8u_C3R", {255, 255, 255}, {255, 194, 255}},
    // 32f black has zero differences: the centres come out as they are.
    {"zyliRGBToYCC_32f_C3R", {0, 0, 0}, {0, 0.6117647f, 0.5372549f}},
    {"zyliYCCToRGB_32f_AC4R", {0, 0.6117647f, 0.5372549f}, {0, 0, 0}},
    // Zero chroma, Y = 0.5: y = 1.3584 / 2 exactly; Y = 1: y = 1.3584 clamps to 1.
    {"zyliYCCToRGB_32f_C3R", {0.5, 0.6117647f, 0.5372549f}, {0.6792f, 0.6792f, 0.6792f}},
    {"zyliYCCToRGB_32f_C3R", {1, 0.6117647f, 0.5372549f}, {1, 1, 1}},
    // 16u white is 1.0 exactly: luma is 1 within 1e-7, 0.7132668 * 65535 = 46743.94 -> 46744;
    // the centres are 156 * 257 = 40092 and 137 * 257 = 35209 (0.6117647 and 0.5372549 are
    // the floats of 156/255 and 137/255). 16s is the same less 32768.
    {"zyliRGBToYCC_16u_C3R", {65535, 65535, 65535}, {46744, 40092, 35209}},
    {"zyliRGBToYCC_16u_AC4R", {0, 0, 0}, {0, 40092, 35209}},
    {"zyliRGBToYCC_16s_C3R", {32767, 32767, 32767}, {13976, 7324, 2441}},
    // Back: zero chroma, 65535 * 1.3584 * 46744 / 65535 = 63497.05 -> 63497 in all three.
    {"zyliYCCToRGB_16u_C3R", {46744, 40092, 35209}, {63497, 63497, 63497}},
    {"zyliYCCToRGB_16s_AC4R", {13976, 7324, 2441}, {30729, 30729, 30729}},
};

// A row of two 512-bit blocks and a tail: vector body and per-pixel tail.
TEST(PhotoYccKnown, HandWorkedValues) { ExpectPixelKnown(kExports, kKnown, 67); }

// ---------------------------------------------------- against reference --

// Random images (floats also outside 0..1, where the inverse clamps) over the
// shared sweep; then a 257 x 256 image whose channels each take all 65536
// 16-bit codes (8u: their low bytes, 32f: code / 65535).
template <class T>
void AgainstReference(const PixelExport& e, int) {
  auto want = [&](const GuardedImage<T>& src, int x, int y, int c) -> std::optional<T> {
    if (c == 3) return std::nullopt;
    return Reference<T>(e.forward, Pixel3(src, x, y).data())[c];
  };
  SweepPixels<T, T>(
      e.row, e.format, e.format, Plans::kEvery, {1, 3}, SweepWidths(),
      [](GuardedImage<T>& src, const SweepCase& s) { FillRandom(src, s.seed, -0.25, 1.25); },
      [&](const GuardedImage<T>& src, int x, int y, int c, const SweepCase&) {
        return want(src, x, y, c);
      });
  ForEachTarget([&](int) {
    GuardedImage<T> src(257, 256, e.format, {Steps::kPacked, Placement::kPageEnd}),
        dst(257, 256, e.format, {Steps::kNegative, Placement::kPageEnd});
    src.Fill([](int x, int y, int c) {
      const uint32_t code = ((y * 257u + x) * (c == 0 ? 1u : c == 1 ? 40503u : 20011u)) & 0xFFFF;
      if constexpr (std::is_floating_point_v<T>) return static_cast<T>(code / 65535.0f);
      return static_cast<T>(code - (std::is_signed_v<T> ? 32768 : 0));
    });
    RunAndMatch(e.row, src, dst, [&](int x, int y, int c) { return want(src, x, y, c); });
  });
}

class PhotoYccExports : public ::testing::TestWithParam<PixelExport> {};

TEST_P(PhotoYccExports, MatchesReference) { ZYL_TYPED(AgainstReference, GetParam(), 0); }

INSTANTIATE_TEST_SUITE_P(PhotoYcc, PhotoYccExports, ::testing::ValuesIn(kExports), FamilyRowName());

INSTANTIATE_TEST_SUITE_P(PhotoYcc, ArgCheck, ::testing::ValuesIn(RowsOf(kExports)), ExportRowName);

// ------------------------------------------------------------ round trip --

// RGB -> YCC -> RGB on every target over a grid of every channel value
// `stride` apart and the maximum: out - gain * in must lie in [lo, hi] per
// channel. Rows of n pixels sit at odd addresses an odd number of bytes
// apart, as the exports advance rows by the byte step as given.
template <class T>
void RoundTrip(ZylStatus (*fwd)(const T*, int, T*, int, ZylSize),
               ZylStatus (*inv)(const T*, int, T*, int, ZylSize), int stride, double gain,
               const std::array<double, 3>& lo, const std::array<double, 3>& hi) {
  constexpr int kMax = std::numeric_limits<T>::max();
  ColorGrid<T> grid((kMax + stride - 1) / stride + 1,
                    [&](int k) { return std::min(k * stride, kMax); }, {1, 1, 0});
  const auto keep = [](const ColorGrid<T>&, int) { return true; };
  RoundTripErrors(grid, fwd, inv, keep, gain).Expect("YCC round trip against gain * in", lo, hi);
}

// The pair is not an identity: Y is scaled by 16 * 2921 / 65536 = 0.713135
// and back by 5564 / 4096 = 1.358398 (product 0.968721), C1 by 0.436768 and
// 2.217773 (0.968652), C2 by 0.531738 and 1.821289 (0.968449); green's
// weights leave 0.968056 G + 0.0003 R + 0.0002 B. Against 0.9685 * in, gains
// and cross terms move a channel by at most 0.12 at 255. Each floor loses
// [0, 1): Y up to 2921 / 65536 + 1 = 1.045 (two floors), C1 1.027, C2 1.033.
// R = 1.358 Y + 1.821 C2' - [0, 1) loses up to 1.42 + 1.88 + 1 = 4.30, B up
// to 1.42 + 2.28 + 1 = 4.70; G subtracts C1 and C2 (0.430 and 0.927 per
// level), src_opt their losses come back: -1.42 - 1 = -2.42 .. 0.44 + 0.96 + 0.04
// (the >> 8 floors) = 1.44. With the 0.12: [-4.82, 1.56]. Clamping only
// brings a result nearer, as 0.9685 * in lies in 0..247.
TEST(PhotoYccRoundTrip, Dense8u) {
  RoundTrip<Zyl8u>(zyliRGBToYCC_8u_C3R, zyliYCCToRGB_8u_C3R, 3, 0.9685, {-4.85, -4.85, -4.85},
                   {1.6, 1.6, 1.6});
}

// In float the gains are 0.7132668 * 1.3584 = 0.968902, 0.4368627 * 2.2179 =
// 0.968918 and 0.53192 * 1.8215 = 0.968892; green comes to 0.968572 G +
// 0.000195 R + 0.000134 B. Against 0.9689 * in at 65535 that is -0.33..0.43
// codes for R, -0.95..1.05 for B and -21.5..21.6 for G (gain below, cross
// terms above). Rounding the YCC codes (half a code each, times 1.3584,
// 2.2179, 1.8215 back), the last rounding (0.5) and the float arithmetic
// (below 0.1) add 2.2 to R, 2.4 to B and 2.0 to G. Bounds: 4 codes for R and
// B, 24 for G: 0.016 and 0.09 of an 8-bit level, where 8u allows -4.85..1.6.
TEST(PhotoYccRoundTrip, Dense16u) {
  RoundTrip<Zyl16u>(zyliRGBToYCC_16u_C3R, zyliYCCToRGB_16u_C3R, 1285, 0.9689, {-4, -24, -4},
                    {4, 24, 4});
}

}  // namespace
}  // namespace zyl::test
