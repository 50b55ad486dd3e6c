// CIE LUV: the 20 exports against hand-worked values and a per-pixel reference
// written from the definitions, on every target (widths around each vector,
// packed, padded, upward and zero steps, every rounding mode); every 8-bit
// triple both ways; round trips with stated bounds.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <initializer_list>
#include <optional>
#include <random>
#include <type_traits>

#include "include/zylcc.h"
#include "src/perceptual/cie.h"
#include "tests/support/every_triple.h"
#include "tests/support/generators.h"
#include "tests/support/pixel_family.h"

namespace zyl::test {
namespace {

// ------------------------------------------------------------ reference --

using F3 = std::array<float, 3>;

// Integer scales: rgb_in on the matrix sums, rgb_out on the cube Y; codes are
// (L, u + 134, v + 140) times l, u, v and back by l_in, u_in, v_in; 16s codes
// are the 16u ones less bias.
struct Scales {
  float rgb_in, rgb_out, l, u, v, l_in, u_in, v_in, max, eps;
  int bias;
};
// clang-format off
constexpr Scales k8u = {0.003921569f, 255, 2.55f, 0.720339f, 0.97328246f, 0.39215687f, 1.3882353f,
                        1.027451f, 255, 1.1920929e-5f, 0};
constexpr Scales k16u = {1 / 65535.0f, 65535, 655.35f, 65535 / 354.0f, 65535 / 262.0f,
                         100 / 65535.0f, 354 / 65535.0f, 262 / 65535.0f, 65535, 1.1920929e-7f, 0};
constexpr Scales k16s = {k16u.rgb_in, k16u.rgb_out, k16u.l, k16u.u, k16u.v, k16u.l_in, k16u.u_in,
                         k16u.v_in, k16u.max, k16u.eps, 32768};
// clang-format on

constexpr float kM[3][3] = {{0.412453f, 0.35758f, 0.180423f},
                            {0.212671f, 0.71516f, 0.072169f},
                            {0.019334f, 0.119193f, 0.950227f}};
constexpr float kMi[3][3] = {{3.240479f, -1.53715f, -0.498535f},
                             {-0.969256f, 1.875991f, 0.041556f},
                             {0.055648f, -0.204043f, 1.057311f}};
constexpr float kUn = 0.197839f, kVn = 0.468342f;

float Dot(const float (&row)[3], float a, float b, float c) {
  const float ab = row[0] * a + row[1] * b;
  return ab + row[2] * c;
}

// RGB (codes, or 0..1 when s is null) to L, u, v (codes before rounding).
F3 LuvRef(F3 p, const Scales* s) {
  float x = Dot(kM[0], p[0], p[1], p[2]), y = Dot(kM[1], p[0], p[1], p[2]),
        z = Dot(kM[2], p[0], p[1], p[2]);
  if (s) x *= s->rgb_in, y *= s->rgb_in, z *= s->rgb_in;
  const float den = (x + 15.0f * y) + 3.0f * z;
  float up = kUn, vp = kVn;  // black
  if (den != 0.0f) up = 4.0f * x / den, vp = 9.0f * y / den;
  const float l = y <= 0.008856f ? 903.3f * y : 116.0f * cie::CieF(y) - 16.0f;
  const float u = 13.0f * l * (up - kUn), v = 13.0f * l * (vp - kVn);
  if (!s) return {l, u, v};
  return {l * s->l, (u + 134.0f) * s->u, (v + 140.0f) * s->v};
}

// L, u, v (codes, or unscaled when s is null) to R, G, B (codes before rounding).
F3 RgbRef(F3 p, const Scales* s) {
  float l = p[0], u = p[1], v = p[2];
  if (s) l *= s->l_in, u = u * s->u_in - 134.0f, v = v * s->v_in - 140.0f;
  const float eps = s ? s->eps : 1.1920929e-7f;
  const float t = (l + 16.0f) * 0.00862069f;
  float y = t * t * t;
  if (s) y *= s->rgb_out;
  const float d = 13.0f * l + eps;
  const float up = u / d + kUn, vp = v / d + kVn;
  const float q = 4.0f * vp + eps;
  const float x = y * (9.0f * up) / q;
  const float z = y * ((12.0f - 3.0f * up) - 20.0f * vp) / q;
  F3 rgb;
  for (int c = 0; c < 3; ++c) {
    rgb[c] = Dot(kMi[c], x, y, z);
    if (!s && rgb[c] < 0.0f) rgb[c] = 0.0f;
    if (!s && rgb[c] > 1.0f) rgb[c] = 1.0f;
  }
  return rgb;
}

template <class T>
const Scales* ScalesOf() {
  if constexpr (std::is_same_v<T, Zyl8u>) return &k8u;
  if constexpr (std::is_same_v<T, Zyl16u>) return &k16u;
  if constexpr (std::is_same_v<T, Zyl16s>) return &k16s;
  return nullptr;
}

// One pixel as stored: bgr swaps the first and third elements of the RGB side.
template <class T>
std::array<T, 3> Reference(bool fwd, bool bgr, std::array<T, 3> in) {
  const Scales* s = ScalesOf<T>();
  if (bgr && fwd) std::swap(in[0], in[2]);
  F3 f;
  for (int c = 0; c < 3; ++c) f[c] = static_cast<float>(in[c] + (s ? s->bias : 0));
  f = fwd ? LuvRef(f, s) : RgbRef(f, s);
  std::array<T, 3> out;
  for (int c = 0; c < 3; ++c) {
    // In the default mode: nearest, ties to even.
    out[c] = s ? static_cast<T>(std::nearbyint(std::clamp(f[c], 0.0f, s->max)) - s->bias)
               : static_cast<T>(f[c]);
  }
  if (bgr && !fwd) std::swap(out[0], out[2]);
  return out;
}

// ------------------------------------------------------- export adapters --

const PixelExport kExports[] = {
    ZYL_PIXEL_ROWS(Zyl8u, 8u, LUV),
    ZYL_PIXEL_ROWS(Zyl16u, 16u, LUV),
    ZYL_PIXEL_ROWS(Zyl16s, 16s, LUV),
    ZYL_PIXEL_ROWS(Zyl32f, 32f, LUV),
    PixelExportRow<Zyl8u, &zyliBGRToLUV_8u_C3R>("zyliBGRToLUV_8u_C3R", true, kC3, true),
    PixelExportRow<Zyl32f, &zyliBGRToLUV_32f_C3R>("zyliBGRToLUV_32f_C3R", true, kC3, true),
    PixelExportRow<Zyl8u, &zyliLUVToBGR_8u_C3R>("zyliLUVToBGR_8u_C3R", false, kC3, true),
    PixelExportRow<Zyl32f, &zyliLUVToBGR_32f_C3R>("zyliLUVToBGR_32f_C3R", false, kC3, true),
};

// ---------------------------------------------------------- known answers --

// 8u forward. White: Y = 255 * 1.0 * 0.003921569 = 1.0, L = 100, L8 = 255; X, Z
// are Xn, Zn: d = 0.950456 + 15 + 3.266262 = 19.216718, u' = 3.801824 / d =
// 0.1978394, v' = 9 / d = 0.4683422, within 5e-7 of u'n, v'n: u, v < 1e-3, so
// the codes are the offsets', 134 * 0.720339 = 96.525 -> 97 and 140 *
// 0.97328246 = 136.26 -> 136, as for black (d = 0, guarded).
// (0, 0, 3): X = 0.0021226, Y = 0.00084905 (903.3 slope: L = 0.766944), Z =
// 0.0111791; d = 0.0483958, u' = 0.175439, v' = 0.157895; 13 L = 9.970274:
// u = -0.22334, v = -3.09525; codes 1.9557 -> 2, 133.77666 * 0.720339 =
// 96.3645 -> 96, 136.90475 * 0.97328246 = 133.2470 -> 133.
// (3, 0, 0): X = 0.0048524, Y = 0.0025020 (L = 2.260067, L8 = 5.7632 -> 6),
// Z = 0.00022746; d = 0.0430649, u' = 0.450704, v' = 0.522887; u = 29.38087 *
// 0.252865 = 7.42940, v = 1.60258; codes 101.8771 -> 102, 137.8193 -> 138.
// 16u: 655.35, 65535/354 = 185.12712, 65535/262 = 250.13359: white 65535,
// 134.00054 * 185.12712 = 24807.13 -> 24807, 140.00031 * 250.13359 = 35018.78
// -> 35019; (0, 0, 771) = 8u (0, 0, 3): 502.62 -> 503, 24765.69 -> 24766,
// 34244.48 -> 34244. 16s: the 16u codes less 32768.
// 8u inverse. (255, 97, 136): L = 100, u = 97 * 1.3882353 - 134 = 0.658829,
// v = -0.266663; Y = 255; u' = u / 1300 + u'n = 0.198346, v' = 0.468137;
// X = 255 * 9 u' / 4 v' = 243.0917, Z = 255 * (12 - 3 u' - 20 v') / 4 v' =
// 278.1046; R = 787.7403 - 391.9733 - 138.6439 = 257.12 -> 255, G = -235.6197
// + 478.3777 + 11.5568 = 254.317 -> 254, B = 13.5276 - 52.0310 + 294.0431 =
// 255.54 -> 255. (0, 97, 136), black's code: Y = (16 * 0.00862069)^3 * 255 =
// 0.669154; 13 L + eps = 1.1920929e-5: u' = 55266.76, v' = -22368.81,
// 4 v' + eps = -89475.24; X = 0.669154 * 497400.8 / -89475.24 = -3.71989,
// Z = 0.669154 * 281587.9 / -89475.24 = -2.10590; R = -12.054 - 1.029 + 1.050,
// G = 3.60553 + 1.25533 - 0.08751 = 4.773 -> 5, B < 0. 16u (0, 24807, 35019)
// likewise with eps 1.1920929e-7: G = 345.4. 32f (100, 0, 0): X = 9 u'n /
// (4 v'n + eps) = 0.950454, Z = 1.088757: R = 0.999994, G and B just above 1.
const PixelKnown kKnown[] = {
    {"zyliRGBToLUV_8u_C3R", {255, 255, 255}, {255, 97, 136}, 0},
    {"zyliRGBToLUV_8u_AC4R", {0, 0, 0}, {0, 97, 136}, 0},
    {"zyliRGBToLUV_8u_C3R", {0, 0, 3}, {2, 96, 133}, 0},
    {"zyliRGBToLUV_8u_AC4R", {3, 0, 0}, {6, 102, 138}, 0},
    {"zyliBGRToLUV_8u_C3R", {0, 0, 3}, {6, 102, 138}, 0},
    {"zyliRGBToLUV_16u_C3R", {65535, 65535, 65535}, {65535, 24807, 35019}, 0},
    {"zyliRGBToLUV_16u_AC4R", {0, 0, 771}, {503, 24766, 34244}, 0},
    {"zyliRGBToLUV_16s_C3R", {32767, 32767, 32767}, {32767, -7961, 2251}, 0},
    {"zyliRGBToLUV_16s_AC4R", {-32768, -32768, -32768}, {-32768, -7961, 2251}, 0},
    {"zyliLUVToRGB_8u_C3R", {255, 97, 136}, {255, 254, 255}, 0},
    {"zyliLUVToRGB_8u_AC4R", {0, 97, 136}, {0, 5, 0}, 0},
    {"zyliLUVToBGR_8u_C3R", {0, 97, 136}, {0, 5, 0}, 0},
    {"zyliLUVToRGB_16u_C3R", {0, 24807, 35019}, {0, 345, 0}, 0},
    {"zyliLUVToRGB_16s_AC4R", {-32768, -7961, 2251}, {-32768, 345 - 32768, -32768}, 0},
    {"zyliRGBToLUV_32f_C3R", {0, 0, 0}, {0, 0, 0}, 0},
    {"zyliBGRToLUV_32f_C3R", {0, 0, 0}, {0, 0, 0}, 0},
    {"zyliLUVToRGB_32f_AC4R", {100, 0, 0}, {1, 1, 1}, 1e-5},
    {"zyliLUVToBGR_32f_C3R", {100, 0, 0}, {1, 1, 1}, 1e-5},
};

// Two rows of 131 (two 512-bit blocks of bytes and a tail): body and tail
// both meet the pixel on every target.
TEST(LuvKnown, HandWorkedValues) { ExpectPixelKnown(kExports, kKnown, 131); }

// ---------------------------------------------------- against reference --

// Random codes; floats a little past their ranges (RGB 0..1; L 0..100,
// u -134..220, v -140..122), so clamps and negative L are met too. Integer
// results must not depend on the caller's rounding mode; 32f follows it.
template <class T>
void AgainstReference(const PixelExport& e, int) {
  const double lo[3] = {e.forward ? -0.1 : -5, e.forward ? -0.1 : -140, e.forward ? -0.1 : -145};
  const double hi[3] = {e.forward ? 1.1 : 105, e.forward ? 1.1 : 225, e.forward ? 1.1 : 125};
  SweepPixels<T, T>(
      e.row, e.format, e.format, Plans::kEvery, {1, 3}, SweepWidths(),
      [&](GuardedImage<T>& src, const SweepCase& s) {
        FillRandom(src, s.seed);
        std::mt19937 rng(s.seed);
        if (std::is_floating_point_v<T>)
          src.Fill([&](int, int, int ch) {
            return static_cast<T>(std::uniform_real_distribution<>(lo[ch % 3], hi[ch % 3])(rng));
          });
      },
      [&](const GuardedImage<T>& src, int x, int y, int c, const SweepCase&) -> std::optional<T> {
        if (c == 3) return std::nullopt;
        return Reference<T>(e.forward, e.bgr, Pixel3(src, x, y))[c];
      });
}

class LuvExports : public ::testing::TestWithParam<PixelExport> {};

TEST_P(LuvExports, MatchesReference) { ZYL_TYPED(AgainstReference, GetParam(), 0); }

INSTANTIATE_TEST_SUITE_P(Luv, LuvExports, ::testing::ValuesIn(kExports), FamilyRowName());

INSTANTIATE_TEST_SUITE_P(Luv, ArgCheck, ::testing::ValuesIn(RowsOf(kExports)), ExportRowName);

TEST(LuvExhaustive, EveryTripleBothWays) {
  ExhaustiveC3<zyliRGBToLUV_8u_C3R>("zyliRGBToLUV_8u_C3R",
                                    [](Triple8u p) { return Reference<Zyl8u>(true, false, p); });
  ExhaustiveC3<zyliLUVToRGB_8u_C3R>("zyliLUVToRGB_8u_C3R",
                                    [](Triple8u p) { return Reference<Zyl8u>(false, false, p); });
}

// ------------------------------------------------------------ round trip --

// RGB -> LUV -> RGB of n^3 values spread over lo..hi (n = 256 for 8u: every
// triple) on the active target; over pixels whose L is at least l_min,
// |out - in| must stay within the bound.
//
// Above L = 8.2 both directions use the cube and only the codes' rounding is
// lost: half a step of L, u, v (0.196, 0.694, 0.514 at 8u). Through the
// derivatives of the exact inverse at every 5th 8-bit value, the worst
// channel moves 4.04 levels, plus 0.5 for its own rounding: 4 (8u, and 16u in
// its codes). Just above the threshold the table root is off by up to
// 7.5e-4 relative (row 1: d = recip (t - root^3) = -0.44 at t = 0.008856,
// series tail from 22 d^5 / 729 on); Y by three times that and X, Z with it
// (u', v' come back whole), so a channel c <= Y / 0.072169 moves by at most
// 13.9 * 0.0096 * 2.25e-3 = 3e-4: 5e-4 in 32f, 4 + 33 codes in 16u. Below
// L = 8 the forward slope 903.3 Y meets the inverse's pure cube, Y' - Y <=
// 0.0026241 (at L = 0): c (Y' / Y - 1) <= 0.0026241 / 0.072169 = 0.0364 in
// 32f; 8u codes add u and v rounding divided by 13 L: (0, 0, 2) -> (1, 96,
// 134) -> (0, 1, 170) (v' = 0.013, Z = 160.7), the worst triple.
template <class T>
void RoundTrip(ZylStatus (*fwd)(const T*, int, T*, int, ZylSize),
               ZylStatus (*inv)(const T*, int, T*, int, ZylSize), int n, double lo, double hi,
               double l_code, std::initializer_list<std::array<double, 2>> bands) {
  ColorGrid<T> grid(n, [&](int k) { return lo + (hi - lo) * k / (n - 1); });
  ASSERT_TRUE(grid.Run(fwd, inv));
  for (const auto& [l_min, bound] : bands) {
    double worst = 0;
    for (int i = 0; i < grid.Count(); ++i) {
      if ((grid.Mid(i, 0) - lo) * l_code < l_min) continue;
      for (int c = 0; c < 3; ++c)
        worst = std::max(worst, std::abs(0.0 + grid.Back(i, c) - grid.In(i, c)));
    }
    std::printf("[ figures  ] %d-bit round trip, L >= %g: max |out - in| = %g (bound %g)\n",
                8 * static_cast<int>(sizeof(T)), l_min, worst, bound);
    EXPECT_LE(worst, bound) << "L >= " << l_min;
  }
}

TEST(LuvRoundTrip, DenseGrids) {
  RoundTrip<Zyl8u>(zyliRGBToLUV_8u_C3R, zyliLUVToRGB_8u_C3R, 256, 0, 255, 1 / 2.55,
                   {{8.2, 4}, {0, 168}});
  RoundTrip<Zyl16u>(zyliRGBToLUV_16u_C3R, zyliLUVToRGB_16u_C3R, 103, 0, 65535, 1 / 655.35,
                    {{25, 4}, {8.2, 37}});
  RoundTrip<Zyl16s>(zyliRGBToLUV_16s_C3R, zyliLUVToRGB_16s_C3R, 103, -32768, 32767, 1 / 655.35,
                    {{25, 4}, {8.2, 37}});
  RoundTrip<Zyl32f>(zyliRGBToLUV_32f_C3R, zyliLUVToRGB_32f_C3R, 129, 0, 1, 1,
                    {{25, 1e-5}, {8.2, 5e-4}, {0, 0.0365}});
}

}  // namespace
}  // namespace zyl::test
