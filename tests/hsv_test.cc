// HSV: the 8 exports against hand-worked values, the tie rule that differs
// between the groups and the tail of 8u forward rows, a per-pixel reference
// written from the definitions on every target, odd 16u byte steps and dense
// round trips.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cfenv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "include/zylcc.h"
#include "src/perceptual/rcp12.h"
#include "tests/support/generators.h"
#include "tests/support/pixel_family.h"

namespace zyl::test {
namespace {

// ------------------------------------------------------------ reference --

using Px = std::array<int, 3>;

// Round to nearest, ties to even: the tests run in the default mode.
int Nearest(float v, int top) { return std::clamp(static_cast<int>(std::nearbyint(v)), 0, top); }

// Single precision, one rounding per operation, left to right. `group`: the
// groups' precedence (red, then blue, then green), else the tail's (blue
// over green over red); 16u always takes the tail's.
Px Forward(Px p, bool wide, bool group) {
  const float r = p[0], g = p[1], b = p[2], mx = std::max({r, g, b});
  const float d = mx - std::min({r, g, b});
  if (mx == 0 || d == 0) return {0, 0, static_cast<int>(mx)};
  const float q = wide ? 1.0f / d : Rcp12(d);
  const float hr = (mx - b) * q - (mx - g) * q;
  const float hg = (mx - r) * q - (mx - b) * q + 2.0f;
  const float hb = (mx - g) * q - (mx - r) * q + 4.0f;
  const bool rm = r == mx, gm = g == mx, bm = b == mx;
  float h = group && !wide ? (rm ? hr : bm ? hb : hg) : (bm ? hb : gm ? hg : hr);
  if (wide) {
    if (h + 1.1920929e-7f < 0) h += 6.0f;
    return {static_cast<int>(0.5f + 65535.0f * h / 6.0f),
            static_cast<int>(0.5f + 65535.0f * d / mx), static_cast<int>(mx)};
  }
  float code = h * 42.5f;
  if (code < 0) code += 255.0f;
  return {Nearest(code, 255), Nearest(Rcp12(mx) * d * 255.0f, 255), static_cast<int>(mx)};
}

Px Inverse(Px p, bool wide) {
  const int top = wide ? 65535 : 255;
  if (p[1] == 0) return {p[2], p[2], p[2]};
  const float h = p[0] == top ? 0.0f : static_cast<float>(p[0]), v = static_cast<float>(p[2]);
  const float sixths = wide ? h * 0.005493248f * 0.016666668f : h * 0.016666668f * 1.4117647f;
  const int sector = static_cast<int>(sixths);
  const float f = sixths - static_cast<float>(sector);
  const float c = v * (static_cast<float>(p[1]) * (wide ? 1.5259022e-5f : 0.003921569f));
  const float lo = v - c, rise = lo + f * c, fall = v - f * c;
  const float rgb[6][3] = {{v, rise, lo}, {fall, v, lo}, {lo, v, rise},
                           {lo, fall, v}, {rise, lo, v}, {v, lo, fall}};
  return {Nearest(rgb[sector][0], top), Nearest(rgb[sector][1], top), Nearest(rgb[sector][2], top)};
}

// ------------------------------------------------------- export adapters --

const PixelExport kExports[] = {ZYL_PIXEL_ROWS(Zyl8u, 8u, HSV), ZYL_PIXEL_ROWS(Zyl16u, 16u, HSV)};

bool Wide(const PixelExport& e) { return std::holds_alternative<Zyl16u>(e.type); }
int Group(const PixelExport& e) { return e.format.channels == 3 ? 8 : 4; }
// Pixel x of a row `width` wide.
Px Want(const PixelExport& e, Px in, int x, int width) {
  return e.forward ? Forward(in, Wide(e), x < (width & ~(Group(e) - 1))) : Inverse(in, Wide(e));
}

INSTANTIATE_TEST_SUITE_P(Hsv, ArgCheck, ::testing::ValuesIn(RowsOf(kExports)), ExportRowName);

// On every target: every pixel of a width x height image holds `in`.
template <class T>
void Flat(const PixelExport& e, int width, int height, Px in) {
  FlatKnown<T, T>(e.row, e.format, e.format, width, height, {0.0 + in[0], 0.0 + in[1], 0.0 + in[2]},
                  [&](int x, int c) -> std::optional<T> {
                    if (c == 3) return std::nullopt;
                    return static_cast<T>(Want(e, in, x, width)[c]);
                  });
}

// ---------------------------------------------------------- known answers --

struct Known {
  const char* name;
  Px in, out;
};

// 8u forward: delta * Rcp12 = 1 + e, |e| < 4e-4, moves S by < 0.1 and the hue
// code by < 42.5 * 5 * 4e-4 < 0.09; every code below is >= 0.16 from a
// rounding boundary. 16u and the inverses: exact single-precision steps.
const Known kKnown[] = {
    // Gray and black: H = S = 0, V = max. Red: h = 255 q - 255 q = 0, S = 255 (1 + e);
    // green h = 2, 85; blue h = 4, 170.
    {"zyliRGBToHSV_8u_C3R", {0, 0, 0}, {0, 0, 0}},
    {"zyliRGBToHSV_8u_AC4R", {77, 77, 77}, {0, 0, 77}},
    {"zyliRGBToHSV_8u_C3R", {255, 0, 0}, {0, 255, 255}},
    {"zyliRGBToHSV_8u_AC4R", {0, 255, 0}, {85, 255, 255}},
    {"zyliRGBToHSV_8u_C3R", {0, 0, 255}, {170, 255, 255}},
    // delta 150, S = 150/200 * 255 = 191.25. Red max: h = (150 - 100)/150, 42.5/3 = 14.17;
    // G < B: -14.17 + 255 = 240.83; blue max: 4 - 1/3, 155.83.
    {"zyliRGBToHSV_8u_C3R", {200, 100, 50}, {14, 191, 200}},
    {"zyliRGBToHSV_8u_AC4R", {200, 50, 100}, {241, 191, 200}},
    {"zyliRGBToHSV_8u_C3R", {50, 100, 200}, {156, 191, 200}},
    // 16u: S = trunc(0.5 + 65535 delta / max) = 65535 (65535.5) and 49151 (49151.75);
    // H = trunc(0.5 + 65535 h / 6): yellow takes green, h = 2 - 65535 fl(1/65535) = 2 - 1,
    // 10923.0; h = 1/3: 3641.33; -1/3 + 6: 61894.67.
    {"zyliRGBToHSV_16u_C3R", {30000, 30000, 30000}, {0, 0, 30000}},
    {"zyliRGBToHSV_16u_AC4R", {65535, 0, 0}, {0, 65535, 65535}},
    {"zyliRGBToHSV_16u_C3R", {65535, 65535, 0}, {10923, 65535, 65535}},
    {"zyliRGBToHSV_16u_C3R", {40000, 20000, 10000}, {3641, 49151, 40000}},
    {"zyliRGBToHSV_16u_AC4R", {40000, 10000, 20000}, {61894, 49151, 40000}},
    // 8u inverse. S = 0: V. H = 0 or 255 (the same hue), S = 200, V = 100: sector 0, f = 0,
    // chroma 78.43: (100, 21.57, 21.57). S = 255: chroma = V (255 fl(1/255) rounds to 1): H = 0
    // red, H = 85 is 2 sixths within 3e-7: green. H = 128: sector 3, f = 0.011765, chroma 100.39,
    // f * chroma = 1.18: (99.61, 198.82, 200).
    {"zyliHSVToRGB_8u_C3R", {123, 0, 77}, {77, 77, 77}},
    {"zyliHSVToRGB_8u_C3R", {0, 200, 100}, {100, 22, 22}},
    {"zyliHSVToRGB_8u_AC4R", {255, 200, 100}, {100, 22, 22}},
    {"zyliHSVToRGB_8u_C3R", {255, 255, 255}, {255, 0, 0}},
    {"zyliHSVToRGB_8u_AC4R", {85, 255, 255}, {0, 255, 0}},
    {"zyliHSVToRGB_8u_C3R", {128, 128, 200}, {100, 199, 200}},
    // 16u inverse, hue 65535 taken as 0. S = 40000, V = 50000: chroma 30518.04. H = 10000:
    // 0.915541 of sector 0, chroma 20000.30, f * chroma 18311.11: (40000, 38310.80, 19999.70).
    {"zyliHSVToRGB_16u_C3R", {0, 40000, 50000}, {50000, 19482, 19482}},
    {"zyliHSVToRGB_16u_AC4R", {65535, 40000, 50000}, {50000, 19482, 19482}},
    {"zyliHSVToRGB_16u_C3R", {10000, 32768, 40000}, {40000, 38311, 20000}},
};

// The reference gives the hand-worked value in groups and tail alike, and every
// export on every target gives the reference over two 256-bit vectors and a tail.
TEST(HsvKnown, HandWorkedValues) {
  for (const Known& k : kKnown) {
    SCOPED_TRACE(k.name);
    const PixelExport& e = FindRow(kExports, k.name);
    EXPECT_EQ(Want(e, k.in, 0, 67), k.out);
    EXPECT_EQ(Want(e, k.in, 66, 67), k.out);
    Wide(e) ? Flat<Zyl16u>(e, 67, 2, k.in) : Flat<Zyl8u>(e, 67, 2, k.in);
  }
}

// A tie for the maximum with delta v, q = Rcp12(v), v q = 1 + e. Yellow
// (v, v, 0): groups take red, h = v q - 0 = 1 + e; the tail green, h = 0 - v q
// + 2 = 1 - e; 42.5 (1 +- e) rounds to 43 above 42.5, 42 below. Magenta
// (v, 0, v): red, 255 - 42.5 (1 + e) = 212.5 - 42.5 e, against blue,
// 42.5 (5 + e). Cyan (0, v, v): blue in both, 42.5 (3 - e). Only the sign of
// e matters; |e| < 1e-5 (too near the float rounding) is skipped.
TEST(HsvTies, GroupsAndTailSettleTiesDifferently) {
  int tested = 0;
  for (int v = 1; v < 256; ++v) {
    const double e = static_cast<double>(Rcp12(static_cast<float>(v)) * static_cast<float>(v)) - 1;
    if (std::abs(e) < 1e-5) continue;
    ++tested;
    const bool up = e > 0;
    const struct {
      Px in;
      int group, tail;
    } kTies[] = {{{v, v, 0}, up ? 43 : 42, up ? 42 : 43},
                 {{v, 0, v}, up ? 212 : 213, up ? 213 : 212},
                 {{0, v, v}, up ? 127 : 128, up ? 127 : 128}};
    for (const char* name : {"zyliRGBToHSV_8u_C3R", "zyliRGBToHSV_8u_AC4R"}) {
      const PixelExport& ex = FindRow(kExports, name);
      const int width = Group(ex) + 1;
      for (const auto& t : kTies) {
        SCOPED_TRACE(::testing::Message()
                     << name << " " << t.in[0] << " " << t.in[1] << " " << t.in[2]);
        ASSERT_EQ(Want(ex, t.in, 0, width), (Px{t.group, 255, v}));
        ASSERT_EQ(Want(ex, t.in, width - 1, width), (Px{t.tail, 255, v}));
        Flat<Zyl8u>(ex, width, 1, t.in);
      }
    }
  }
  EXPECT_GT(tested, 100);
}

// ---------------------------------------------------- against reference --

// Random pixels, every third one a tie of two or three channels (or black),
// on every target over the shared sweep of widths, heights and steps, in a
// rounding mode cycling through all four.
template <class T>
void AgainstReference(const PixelExport& e) {
  SweepPixels<T, T>(
      e.row, e.format, e.format, Plans::kCycled, {1, 3}, SweepWidths({255, 257}),
      [](GuardedImage<T>& src, const SweepCase& k) {
        FillRandom(src, k.seed);
        std::mt19937 rng(k.seed);
        for (int y = 0; y < k.height; ++y) {
          for (int x = y % 3; x < k.width; x += 3) {
            const T v = static_cast<T>(rng()), a = static_cast<T>(rng() % (v + 1u));
            const Px ties[] = {{v, v, a}, {v, a, v}, {a, v, v}, {v, v, v}, {0, 0, 0}};
            for (int c = 0; c < 3; ++c) src.At(x, y, c) = static_cast<T>(ties[rng() % 5][c]);
          }
        }
      },
      [&](const GuardedImage<T>& src, int x, int y, int c, const SweepCase& k) -> std::optional<T> {
        if (c == 3) return std::nullopt;
        const std::array<T, 3> in = Pixel3(src, x, y);
        return static_cast<T>(Want(e, {in[0], in[1], in[2]}, x, k.width)[c]);
      });
}

class HsvExports : public ::testing::TestWithParam<PixelExport> {};

TEST_P(HsvExports, MatchesReference) {
  Wide(GetParam()) ? AgainstReference<Zyl16u>(GetParam()) : AgainstReference<Zyl8u>(GetParam());
}

// 16u steps become element counts by >> 1 (upward too: -s + 1 >> 1 is -s/2).
TEST_P(HsvExports, OddSteps) { ExpectOddStepsHonoured(GetParam().row, Wide(GetParam()) ? 2 : 1); }

INSTANTIATE_TEST_SUITE_P(Hsv, HsvExports, ::testing::ValuesIn(kExports), FamilyRowName());

// ------------------------------------------------------------ round trip --

// RGB -> HSV -> RGB over a grid of every channel value `stride` apart and the
// maximum, on every target; every channel must come back within `bound`.
template <class T>
void RoundTrip(ZylStatus (*fwd)(const T*, int, T*, int, ZylSize),
               ZylStatus (*inv)(const T*, int, T*, int, ZylSize), int stride, int bound) {
  constexpr int kMax = (1 << (8 * sizeof(T))) - 1;
  ColorGrid<T> grid((kMax + stride - 1) / stride + 1,
                    [&](int k) { return std::min(k * stride, kMax); });
  const auto keep = [](const ColorGrid<T>&, int) { return true; };
  RoundTripErrors(grid, fwd, inv, keep).ExpectWithin("HSV round trip", bound);
}

// 8u: S is off by <= 0.5 + 0.1 (reciprocal), so chroma by <= 0.6 V/255 <= 0.6;
// the hue code by <= 0.59, 0.59/42.5 = 0.0139 of a sixth, which moves the
// middle channel by <= 0.0139 * 255 = 3.54; with the final rounding 0.5: 4.64.
// The sector table is continuous across sector edges, so this holds for every
// channel there too.
TEST(HsvRoundTrip, Dense8u) { RoundTrip<Zyl8u>(zyliRGBToHSV_8u_C3R, zyliHSVToRGB_8u_C3R, 3, 4); }

// 16u: the hue code is off by <= 0.5 of 10922.5 per sixth (plus float error
// below 2e-6 of a sixth): 3.1 codes at chroma 65535; S by 0.5 code, 0.5 in
// chroma; rounding 0.5: 4.1.
TEST(HsvRoundTrip, Dense16u) {
  RoundTrip<Zyl16u>(zyliRGBToHSV_16u_C3R, zyliHSVToRGB_16u_C3R, 1285, 4);
}

}  // namespace
}  // namespace zyl::test
