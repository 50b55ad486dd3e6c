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
#include "tests/support/arg_check.h"
#include "tests/support/generators.h"
#include "tests/support/guarded_image.h"
#include "tests/support/sweep.h"
#include "tests/support/targets.h"

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

struct HsvExport {
  ExportRow row;
  bool wide, to_hsv;
  Format format;  // kC4 for AC4: the fourth element must not change
  int Group() const { return format.channels == 3 ? 8 : 4; }
  // Pixel x of a row `width` wide.
  Px Want(Px in, int x, int width) const {
    return to_hsv ? Forward(in, wide, x < (width & ~(Group() - 1))) : Inverse(in, wide);
  }
};

void PrintTo(const HsvExport& e, std::ostream* os) { *os << e.row.name; }

template <class T, auto kFn>
HsvExport Row(const char* name, bool to_hsv, Format format) {
  auto call = [](const ArgCall& a) {
    return kFn(a.Ptr<const T>(0), a.Step(0), a.Ptr<T>(1), a.Step(1), a.size);
  };
  const int bytes = format.channels * static_cast<int>(sizeof(T));
  return {ExportRow(name, {Image(bytes), Image(bytes)}, call), sizeof(T) == 2, to_hsv, format};
}
#define ZYL_HSV_ROWS(T, t)                                                     \
  Row<T, &zyliRGBToHSV_##t##_C3R>("zyliRGBToHSV_" #t "_C3R", true, kC3),       \
      Row<T, &zyliRGBToHSV_##t##_AC4R>("zyliRGBToHSV_" #t "_AC4R", true, kC4), \
      Row<T, &zyliHSVToRGB_##t##_C3R>("zyliHSVToRGB_" #t "_C3R", false, kC3),  \
      Row<T, &zyliHSVToRGB_##t##_AC4R>("zyliHSVToRGB_" #t "_AC4R", false, kC4)

const HsvExport kExports[] = {ZYL_HSV_ROWS(Zyl8u, 8u), ZYL_HSV_ROWS(Zyl16u, 16u)};

INSTANTIATE_TEST_SUITE_P(Hsv, ArgCheck, ::testing::ValuesIn(RowsOf(kExports)), ExportRowName);

template <class T>
Px At(const GuardedImage<T>& img, int x, int y) {
  return {img.At(x, y, 0), img.At(x, y, 1), img.At(x, y, 2)};
}

// Runs the export on a guarded image that fill(src) prepares, in a rounding
// mode it must give back, with `extra` added to both byte steps, and checks
// the whole destination memory: channels 0..2 of every pixel as the
// reference says, everything else (AC4 alpha, padding, guards) unchanged.
template <class T, class Fill>
void Check(const HsvExport& e, int width, int height, Fill fill, ImageOptions so = {},
           ImageOptions dopt = {}, int mode = FE_TONEAREST, int extra = 0) {
  GuardedImage<T> src(width, height, e.format, so), dst(width, height, e.format, dopt);
  fill(src);
  const auto before = dst.Save();
  ArgCall a;
  a.Bind(0, src.Ptr(), src.Step() + extra);
  a.Bind(1, dst.Ptr(), dst.Step() + extra);
  a.size = {width, height};
  std::fesetround(mode);
  const ZylStatus status = e.row.call(a);
  const int mode_after = std::fegetround();
  std::fesetround(FE_TONEAREST);
  ASSERT_EQ(status, zylStsOk);
  ASSERT_EQ(mode_after, mode);
  ASSERT_TRUE(dst.Matches(before, [&](int x, int y, int c) -> std::optional<T> {
    if (c == 3) return std::nullopt;
    return static_cast<T>(e.Want(At(src, x, y), x, width)[c]);
  }));
}

// Every pixel of the image holds `p` (alpha 7).
auto Uniform(Px p) {
  return [p](auto& img) { img.Fill([&](int, int, int c) { return c < 3 ? p[c] : 7; }); };
}

const HsvExport& Find(const std::string& name) {
  for (const HsvExport& e : kExports) {
    if (e.row.name == name) return e;
  }
  ADD_FAILURE() << name << " is not in the table";
  return kExports[0];
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
    // part 1.18: (99.61, 198.82, 200).
    {"zyliHSVToRGB_8u_C3R", {123, 0, 77}, {77, 77, 77}},
    {"zyliHSVToRGB_8u_C3R", {0, 200, 100}, {100, 22, 22}},
    {"zyliHSVToRGB_8u_AC4R", {255, 200, 100}, {100, 22, 22}},
    {"zyliHSVToRGB_8u_C3R", {255, 255, 255}, {255, 0, 0}},
    {"zyliHSVToRGB_8u_AC4R", {85, 255, 255}, {0, 255, 0}},
    {"zyliHSVToRGB_8u_C3R", {128, 128, 200}, {100, 199, 200}},
    // 16u inverse, hue 65535 taken as 0. S = 40000, V = 50000: chroma 30518.04. H = 10000:
    // 0.915541 of sector 0, chroma 20000.30, part 18311.11: (40000, 38310.80, 19999.70).
    {"zyliHSVToRGB_16u_C3R", {0, 40000, 50000}, {50000, 19482, 19482}},
    {"zyliHSVToRGB_16u_AC4R", {65535, 40000, 50000}, {50000, 19482, 19482}},
    {"zyliHSVToRGB_16u_C3R", {10000, 32768, 40000}, {40000, 38311, 20000}},
};

// The reference gives the hand-worked value in groups and tail alike, and every
// export on every target gives the reference over two 256-bit vectors and a tail.
TEST(HsvKnown, HandWorkedValues) {
  for (const Known& k : kKnown) {
    SCOPED_TRACE(k.name);
    const HsvExport& e = Find(k.name);
    EXPECT_EQ(e.Want(k.in, 0, 67), k.out);
    EXPECT_EQ(e.Want(k.in, 66, 67), k.out);
    ForEachTarget([&](int) {
      e.wide ? Check<Zyl16u>(e, 67, 2, Uniform(k.in)) : Check<Zyl8u>(e, 67, 2, Uniform(k.in));
    });
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
      const HsvExport& ex = Find(name);
      const int width = ex.Group() + 1;
      for (const auto& t : kTies) {
        SCOPED_TRACE(::testing::Message()
                     << name << " " << t.in[0] << " " << t.in[1] << " " << t.in[2]);
        ASSERT_EQ(ex.Want(t.in, 0, width), (Px{t.group, 255, v}));
        ASSERT_EQ(ex.Want(t.in, width - 1, width), (Px{t.tail, 255, v}));
        ForEachTarget([&](int) { Check<Zyl8u>(ex, width, 1, Uniform(t.in)); });
      }
    }
  }
  EXPECT_GT(tested, 100);
}

// ---------------------------------------------------- against reference --

// Random pixels, every third one a tie of two or three channels (or black),
// on every target over the shared sweep of widths, heights and steps, in a
// rounding mode cycling through all four. 16u steps become element counts by
// >> 1, so every other case adds a byte to both steps (even in every plan,
// upward too: -s + 1 >> 1 is -s/2): the result must not change.
template <class T>
void AgainstReference(const HsvExport& e) {
  const int kModes[] = {FE_TONEAREST, FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO};
  ForEachTarget([&](int) {
    Sweep(Plans::kCycled, {1, 3}, SweepWidths({255, 257}), [&](const SweepCase& k) {
      auto fill = [&](GuardedImage<T>& src) {
        FillRandom(src, k.seed);
        std::mt19937 rng(k.seed);
        for (int y = 0; y < k.height; ++y) {
          for (int x = y % 3; x < k.width; x += 3) {
            const T v = static_cast<T>(rng()), a = static_cast<T>(rng() % (v + 1u));
            const Px ties[] = {{v, v, a}, {v, a, v}, {a, v, v}, {v, v, v}, {0, 0, 0}};
            for (int c = 0; c < 3; ++c) src.At(x, y, c) = static_cast<T>(ties[rng() % 5][c]);
          }
        }
      };
      Check<T>(e, k.width, k.height, fill, k.Src(), k.Dst(), kModes[k.seed / 8 % 4],
               e.wide ? k.seed / 8 % 2 : 0);
      return !::testing::Test::HasFatalFailure();
    });
  });
}

class HsvExports : public ::testing::TestWithParam<HsvExport> {};

TEST_P(HsvExports, MatchesReference) {
  GetParam().wide ? AgainstReference<Zyl16u>(GetParam()) : AgainstReference<Zyl8u>(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Hsv, HsvExports, ::testing::ValuesIn(kExports), FamilyRowName());

// ------------------------------------------------------------ round trip --

// RGB -> HSV -> RGB over a grid of every channel value `stride` apart and the
// maximum, on every target; every channel must come back within `bound`.
template <class T>
void RoundTrip(ZylStatus (*fwd)(const T*, int, T*, int, ZylSize),
               ZylStatus (*inv)(const T*, int, T*, int, ZylSize), int stride, int bound) {
  constexpr int kMax = (1 << (8 * sizeof(T))) - 1;
  const int n = (kMax + stride - 1) / stride + 1, step = 3 * n * static_cast<int>(sizeof(T));
  std::vector<T> rgb(3 * n * n * n), hsv(rgb.size()), back(rgb.size());
  for (size_t i = 0; i < rgb.size(); ++i) {
    const int div = i % 3 == 0 ? n * n : i % 3 == 1 ? n : 1;
    rgb[i] = static_cast<T>(std::min(static_cast<int>(i / 3) / div % n * stride, kMax));
  }
  int worst = 0;
  ForEachTarget([&](int) {
    ASSERT_EQ(fwd(rgb.data(), step, hsv.data(), step, {n, n * n}), zylStsOk);
    ASSERT_EQ(inv(hsv.data(), step, back.data(), step, {n, n * n}), zylStsOk);
    for (size_t i = 0; i < rgb.size(); ++i) worst = std::max(worst, std::abs(back[i] - rgb[i]));
  });
  EXPECT_LE(worst, bound);
  std::printf("[ figures  ] %d-bit round trip: max |out - in| = %d\n", 8 * int{sizeof(T)}, worst);
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
