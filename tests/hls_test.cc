// HLS: the 29 exports against hand-worked values and a per-pixel reference
// written from the definitions (group pixels: unrefined reciprocal, rounded;
// tail pixels: refined, truncated or rounded) on every target, around each
// vector width, with packed, padded, upward and zero steps; the 8u group
// arithmetic over all 2^24 inputs; round trips; the software reciprocal.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cfenv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <optional>
#include <random>
#include <variant>
#include <vector>

#include "include/zylcc.h"
#include "src/perceptual/rcp12.h"
#include "tests/support/every_triple.h"
#include "tests/support/generators.h"
#include "tests/support/pixel_family.h"

namespace zyl::test {
namespace {

// ------------------------------------------------------------ reference --

using F3 = std::array<float, 3>;
struct Scale {
  float max, half, twice, hue, inv_hue, unit;
  int bias;
};
constexpr Scale k8{255, 127.5f, 510, 0.70833331f, 1.4117647f, 0.003921569f, 0};
constexpr Scale k16u{65535, 32767.5f, 131070, 182.04167f, 0.005493248f, 1.5259022e-5f, 0};
constexpr Scale k16s{65535, 32767.5f, 131070, 182.04167f, 0.005493248f, 1.5259022e-5f, 32768};

float Newton(float x, float r) {
  const float xr = x * r, xrr = xr * r;
  return 2.0f * r - xrr;
}

// Codes (sc) or 32f (null sc); `tail`: refined reciprocals, `trunc`: truncation.
F3 Forward(const Scale* sc, float r, float g, float b, bool tail, bool trunc) {
  const float mx = std::max({r, g, b}), mn = std::min({r, g, b});
  const float delta = mx - mn, sum = mx + mn, l = sum * 0.5f;
  auto code = [&](float v) {
    return sc ? std::clamp(trunc ? std::trunc(v) : std::nearbyint(v), 0.0f, sc->max) : v;
  };
  if (sc ? delta == 0.0f : delta <= 1.1920929e-7f) return {0.0f, code(l), 0.0f};
  float hue = (r == mx ? g - b : g == mx ? b - r : r - g) * 60.0f, s;
  if (sc) {
    const float den = l > sc->half ? sc->twice - sum : sum;
    const float rs = tail ? Newton(den, Rcp12(den)) : Rcp12(den);
    const float rh = tail ? Newton(delta, Rcp12(delta)) : Rcp12(delta);
    s = delta * rs * sc->max;
    hue = hue * rh;
  } else {
    s = l <= 0.5f ? delta / sum : delta / (2.0f - sum);
    hue = hue / delta;
  }
  if (r != mx) hue += g == mx ? 120.0f : 240.0f;
  if (hue < 0.0f) hue += 360.0f;
  return {sc ? code(hue * sc->hue) : hue / 360.0f, code(l), code(s)};
}

F3 Inverse(const Scale* sc, float h, float l, float s) {
  const float hue = sc ? h * sc->inv_hue : h * 360.0f;
  if (sc) l = l * sc->unit, s = s * sc->unit;
  const float m2 = l <= 0.5f ? l + l * s : l + s - l * s, m1 = 2.0f * l - m2;
  auto value = [&](float x) {
    if (s == 0.0f) return l;
    if (x > 360.0f) x -= 360.0f;
    if (x < 0.0f) x += 360.0f;
    if (x < 60.0f) return m1 + (m2 - m1) * x * 0.016666668f;
    if (x < 180.0f) return m2;
    if (x < 240.0f) return m1 + (m2 - m1) * (240.0f - x) * 0.016666668f;
    return m1;
  };
  F3 out = {value(hue + 120.0f), value(hue), value(hue - 120.0f)};
  for (float& v : out) v = sc ? std::clamp(std::trunc(v * sc->max), 0.0f, sc->max) : v;
  return out;
}

// ------------------------------------------------------- export adapters --

enum class Alpha { kNone, kKept, kCarried };

struct HlsExport {
  ExportRow row;
  std::variant<Zyl8u, Zyl16u, Zyl16s, Zyl32f> type;
  bool forward, bgr;
  Format src, dst;
  Alpha alpha;
  int group;        // pixels per group: 8, 4, or 1 where body and tail agree
  bool tail_trunc;  // the forward tail truncates (else rounds)
};
void PrintTo(const HlsExport& e, std::ostream* os) { *os << e.row.name; }

// Pixel x of a row `width` wide.
template <class T>
std::array<T, 3> Reference(const HlsExport& e, const T* in, int x, int width) {
  const Scale* sc = std::is_same_v<T, Zyl8u>    ? &k8
                    : std::is_same_v<T, Zyl16u> ? &k16u
                    : std::is_same_v<T, Zyl16s> ? &k16s
                                                : nullptr;
  const float bias = sc ? sc->bias : 0, c0 = in[0] + bias, c1 = in[1] + bias, c2 = in[2] + bias;
  const bool tail = x >= (width & ~(e.group - 1));
  F3 o = e.forward ? Forward(sc, e.bgr ? c2 : c0, c1, e.bgr ? c0 : c2, tail, tail && e.tail_trunc)
                   : Inverse(sc, c0, c1, c2);
  if (e.bgr && !e.forward) std::swap(o[0], o[2]);
  return {static_cast<T>(o[0] - bias), static_cast<T>(o[1] - bias), static_cast<T>(o[2] - bias)};
}

// A plane array (alive for the whole call) or an image pointer.
template <class T, bool kPlanes>
auto Side(const ArgCall& a, int slot) {
  if constexpr (kPlanes) {
    return a.Planes<T>(slot);
  } else {
    return a.Ptr<T>(slot);
  }
}
template <auto kFn, bool kSrcPlanes, bool kDstPlanes>
ZylStatus CallPlanes(const ArgCall& a) {
  return kFn(Side<const Zyl8u, kSrcPlanes>(a, 0), a.Step(0), Side<Zyl8u, kDstPlanes>(a, 1),
             a.Step(1), a.size);
}

ArgSlot Slot(Format f, int elem) {
  return f.planes > 1 ? Planes(f.planes) : Image(f.channels * elem);
}

template <class T, auto kFn>
HlsExport Pix(const char* name, bool fwd, bool bgr, Format f, int group, bool trunc) {
  return {PixelRow<T, kFn>(name, f, f),
          T{},
          fwd,
          bgr,
          f,
          f,
          f.channels == 4 ? Alpha::kKept : Alpha::kNone,
          group,
          trunc};
}
// Planar and four-plane members: pointers (plane entries too), then steps, then size.
HlsExport Planar(const char* name, ArgCallFn call, bool fwd, Format s, Format d) {
  const ExportRow row = ExportRow(name, {Slot(s, 1), Slot(d, 1)}, call)
                            .CheckSteps()
                            .Order(CheckOrder::kStepsBeforeSize)
                            .PlaneEntriesWithPointers();
  const Alpha alpha = d.Total() == 4 ? Alpha::kCarried : Alpha::kNone;
  return {row, Zyl8u{}, fwd, true, s, d, alpha, fwd ? 4 : 1, false};
}

#define ZYL_PIX(T, name, ...) Pix<T, &name>(#name, __VA_ARGS__)
#define ZYL_TYPE(T, t, c3, ac4, c3_trunc, ac4_trunc)                         \
  ZYL_PIX(T, zyliRGBToHLS_##t##_C3R, true, false, kC3, c3, c3_trunc),        \
      ZYL_PIX(T, zyliRGBToHLS_##t##_AC4R, true, false, kC4, ac4, ac4_trunc), \
      ZYL_PIX(T, zyliHLSToRGB_##t##_C3R, false, false, kC3, 1, false),       \
      ZYL_PIX(T, zyliHLSToRGB_##t##_AC4R, false, false, kC4, 1, false)
#define ZYL_PLANAR(name, fwd, s, d) \
  Planar(#name, CallPlanes<&name, (s.planes > 1), (d.planes > 1)>, fwd, s, d)
#define ZYL_PLANAR_PAIR(layout, s, d)               \
  ZYL_PLANAR(zyliBGRToHLS_8u_##layout, true, s, d), \
      ZYL_PLANAR(zyliHLSToBGR_8u_##layout, false, s, d)

// Forward groups of 8 (C3) and 4 (AC4); 8u AC4 rounds in its tail, every
// 16-bit tail truncates; 32f has no groups.
const HlsExport kExports[] = {
    ZYL_TYPE(Zyl8u, 8u, 8, 4, true, false),
    ZYL_TYPE(Zyl16u, 16u, 8, 4, true, true),
    ZYL_TYPE(Zyl16s, 16s, 8, 4, true, true),
    ZYL_TYPE(Zyl32f, 32f, 1, 1, false, false),
    ZYL_PIX(Zyl8u, zyliBGRToHLS_8u_AC4R, true, true, kC4, 4, false),
    ZYL_PLANAR_PAIR(C3P3R, kC3, kP3),
    ZYL_PLANAR_PAIR(P3C3R, kP3, kC3),
    ZYL_PLANAR_PAIR(P3R, kP3, kP3),
    ZYL_PLANAR_PAIR(AP4R, kP4, kP4),
    ZYL_PLANAR_PAIR(AP4C4R, kP4, kC4),
    ZYL_PLANAR_PAIR(AC4P4R, kC4, kP4),
};

INSTANTIATE_TEST_SUITE_P(Hls, ArgCheck, ::testing::ValuesIn(RowsOf(kExports)), ExportRowName);

// Calls e in a rounding mode (which it must give back) and checks the whole
// destination memory: channels 0..2 as `want`, alpha by the export's rule.
// Step-checking members must reject a step below 1 and write nothing.
template <class T, class Want>
void RunAndMatch(const HlsExport& e, const GuardedImage<T>& src, const GuardedImage<T>& dst,
                 Want want, int mode = FE_TONEAREST) {
  const bool bad_step = e.row.steps_checked && (src.Step() < 1 || dst.Step() < 1);
  RunAndMatch(
      e.row, src, dst,
      [&](int x, int y, int c) -> std::optional<T> {
        if (bad_step || (c == 3 && e.alpha == Alpha::kKept)) return std::nullopt;
        return c == 3 ? src.At(x, y, 3) : want(x, y, c);
      },
      mode, 0, bad_step ? zylStsStepErr : zylStsOk);
}

// ---------------------------------------------------------- known answers --

struct Known {
  const char* name;
  int width;
  std::array<double, 3> in, group, tail;
};

// Forward 8u (70, 48, 25): delta 45, sum 95, L = 47.5 (round to even 48, truncate 47);
// L <= 127.5: S = 45 * 255 / 95 = 120.79 (121, 120); red is max, hue = 23 * 60 / 45 =
// 30.667 degrees, H = 30.667 * 255 / 360 = 21.72 (22, 21). A 12-bit reciprocal moves S
// by < 0.05 and H by < 0.01, so nothing is near a boundary. Other orders take the other
// branches (degrees -> code): 329.33 -> 233.28 (wrapped), 150.67 -> 106.72, 270.67 -> 191.72.
// Width 9 (C3) or 5 (AC4): the last pixel is the tail.
// 16u (40098, 40002, 40001): delta 97, sum 80099, L = 40049.5 (40050, 40049); L > 32767.5:
// S = 97 * 65535 / (131070 - 80099) = 124.72 (125, 124); hue 60 / 97 = 0.6186 degrees,
// H = 112.60 (113, 112); the reciprocal moves S and H by < 0.05. 16s: the same - 32768.
// Inverse 8u, L = 100, S = 200: m2 = l (1 + s) = 178.43 / 255, m1 = 2 l - m2 = 21.57 / 255.
// H = 20 (28.24 degrees): R = m2, G rises to 21.57 + 156.86 * 28.24 / 60 = 95.39, B = m1;
// H = 150 (211.76): R (331.76) = m1, G falls to the same 95.39, B = m2; H = 200 (282.35):
// R wraps to 42.35, 132.30. L = 180, S = 100: m2 = l + s - l s = 209.41, m1 = 150.59 (/ 255);
// H = 100: B (21.18 degrees) rises to 171.35. H = 255 is 360.0 in float: the hue of 0
// (G at 360 is m1, as G at 0; R at 480 - 360 = 120 is m2).
// 16u: L, S and H times 257 give the 8u values times 257 (45856.86, 24514.30, 5543.14);
// H = 65535 is 360.0 in float (65535 * 0.005493248), the hue of 0: m2, m1, m1.
const Known kKnown[] = {
    {"zyliRGBToHLS_8u_C3R", 9, {70, 48, 25}, {22, 48, 121}, {21, 47, 120}},
    {"zyliRGBToHLS_8u_C3R", 9, {70, 25, 48}, {233, 48, 121}, {233, 47, 120}},
    {"zyliRGBToHLS_8u_C3R", 9, {25, 70, 48}, {107, 48, 121}, {106, 47, 120}},
    {"zyliRGBToHLS_8u_C3R", 9, {48, 25, 70}, {192, 48, 121}, {191, 47, 120}},
    {"zyliRGBToHLS_8u_AC4R", 5, {70, 48, 25}, {22, 48, 121}, {22, 48, 121}},
    {"zyliBGRToHLS_8u_AC4R", 5, {25, 48, 70}, {22, 48, 121}, {22, 48, 121}},
    {"zyliBGRToHLS_8u_P3C3R", 5, {25, 48, 70}, {22, 48, 121}, {22, 48, 121}},
    // Gray: no hue or saturation. Green and blue (groups only: S = 255 * rcp(255) * 255):
    // 120 * 0.70833331 = 85.0 and 240 * 0.70833331 = 170.0 in float.
    {"zyliRGBToHLS_8u_C3R", 9, {77, 77, 77}, {0, 77, 0}, {0, 77, 0}},
    {"zyliRGBToHLS_8u_AC4R", 5, {255, 255, 255}, {0, 255, 0}, {0, 255, 0}},
    {"zyliRGBToHLS_8u_C3R", 8, {0, 255, 0}, {85, 128, 255}, {}},
    {"zyliRGBToHLS_8u_C3R", 8, {0, 0, 255}, {170, 128, 255}, {}},
    {"zyliRGBToHLS_16u_C3R", 9, {40098, 40002, 40001}, {113, 40050, 125}, {112, 40049, 124}},
    {"zyliRGBToHLS_16u_AC4R", 5, {40098, 40002, 40001}, {113, 40050, 125}, {112, 40049, 124}},
    {"zyliRGBToHLS_16s_C3R", 9, {7330, 7234, 7233}, {-32655, 7282, -32643}, {-32656, 7281, -32644}},
    // 32f (1, 0.5, 0): delta 1, sum 1, L 0.5, S 1 / 1, hue 30; blue: hue 240.
    {"zyliRGBToHLS_32f_C3R", 9, {1, 0.5, 0}, {30.0f / 360.0f, 0.5, 1}, {30.0f / 360.0f, 0.5, 1}},
    {"zyliRGBToHLS_32f_AC4R", 5, {0, 0, 1}, {240.0f / 360.0f, 0.5, 1}, {240.0f / 360.0f, 0.5, 1}},
    {"zyliHLSToRGB_8u_C3R", 9, {20, 100, 200}, {178, 95, 21}, {178, 95, 21}},
    {"zyliHLSToRGB_8u_AC4R", 5, {150, 100, 200}, {21, 95, 178}, {21, 95, 178}},
    {"zyliHLSToBGR_8u_P3C3R", 5, {200, 100, 200}, {178, 21, 132}, {178, 21, 132}},
    {"zyliHLSToRGB_8u_C3R", 9, {100, 180, 100}, {150, 209, 171}, {150, 209, 171}},
    {"zyliHLSToRGB_8u_C3R", 9, {255, 100, 200}, {178, 21, 21}, {178, 21, 21}},
    {"zyliHLSToRGB_8u_C3R", 9, {40, 77, 0}, {77, 77, 77}, {77, 77, 77}},
    {"zyliHLSToRGB_16u_C3R", 9, {5140, 25700, 51400}, {45856, 24514, 5543}, {45856, 24514, 5543}},
    {"zyliHLSToRGB_16u_C3R", 9, {65535, 25700, 51400}, {45856, 5543, 5543}, {45856, 5543, 5543}},
    {"zyliHLSToRGB_16s_AC4R",
     5,
     {-27628, -7068, 18632},
     {13088, -8254, -27225},
     {13088, -8254, -27225}},
    // 32f H 0, L 0.5, S 1: m2 = 1, m1 = 0, red; H 0.5 (180): cyan (60 * 0.016666668 = 1.0).
    {"zyliHLSToRGB_32f_C3R", 9, {0, 0.5, 1}, {1, 0, 0}, {1, 0, 0}},
    {"zyliHLSToRGB_32f_AC4R", 5, {0.5, 0.5, 1}, {0, 1, 1}, {0, 1, 1}},
};

template <class T>
void KnownAnswer(const HlsExport& e, const Known& k) {
  ForEachTarget([&](int) {
    GuardedImage<T> src(k.width, 2, e.src), dst(k.width, 2, e.dst);
    src.Fill([&](int, int, int c) { return static_cast<T>(c < 3 ? k.in[c] : 9); });
    const int tail = k.width & ~(e.group - 1);
    RunAndMatch(e, src, dst, [&](int x, int, int c) {
      return static_cast<T>(x < tail ? k.group[c] : k.tail[c]);
    });
  });
}

TEST(HlsKnown, HandWorkedValues) {
  for (const Known& k : kKnown) {
    SCOPED_TRACE(::testing::Message()
                 << k.name << " " << k.in[0] << " " << k.in[1] << " " << k.in[2]);
    ZYL_TYPED(KnownAnswer, FindRow(kExports, k.name), k);
  }
}

// ---------------------------------------------------- against reference --

// Random codes with many ties: a channel copied onto another, gray, zero.
template <class T>
void AgainstReference(const HlsExport& e, int) {
  ForEachTarget([&](int) {
    Sweep(Plans::kCycled, {1, 3}, SweepWidths({47, 48, 49}), [&](const SweepCase& sc) {
      GuardedImage<T> src(sc.width, sc.height, e.src, sc.Src()),
          dst(sc.width, sc.height, e.dst, sc.Dst());
      FillRandom(src, sc.seed);
      std::mt19937 rng(sc.seed);
      src.Fill([&](int x, int y, int c) {
        const uint32_t pick = rng() % 12;
        return pick < 3 ? src.At(x, y, pick) : pick == 3 ? T{} : src.At(x, y, c);
      });
      // Integer members hold nearest-even whatever the caller's mode; 32f follows it.
      auto want = [&](int x, int y, int c) {
        return Reference<T>(e, Pixel3(src, x, y).data(), x, sc.width)[c];
      };
      RunAndMatch(e, src, dst, want, ModeFor<T>(sc));
      return !::testing::Test::HasFailure();
    });
  });
}

class HlsExports : public ::testing::TestWithParam<HlsExport> {};
TEST_P(HlsExports, MatchesReference) { ZYL_TYPED(AgainstReference, GetParam(), 0); }
INSTANTIATE_TEST_SUITE_P(Hls, HlsExports, ::testing::ValuesIn(kExports), FamilyRowName());

// The 8u group arithmetic of both directions over all 2^24 inputs (rows of
// 4096 pixels: no tail) on every target.
Triple8u ForwardGroup(Triple8u p) {
  const F3 o = Forward(&k8, p[0], p[1], p[2], false, false);
  return {static_cast<uint8_t>(o[0]), static_cast<uint8_t>(o[1]), static_cast<uint8_t>(o[2])};
}
Triple8u InverseAll(Triple8u p) {
  const F3 o = Inverse(&k8, p[0], p[1], p[2]);
  return {static_cast<uint8_t>(o[0]), static_cast<uint8_t>(o[1]), static_cast<uint8_t>(o[2])};
}
TEST(HlsExhaustive, Both8uDirections) {
  ExhaustiveC3<zyliRGBToHLS_8u_C3R>("RGBToHLS_8u_C3R", ForwardGroup);
  ExhaustiveC3<zyliHLSToRGB_8u_C3R>("HLSToRGB_8u_C3R", InverseAll);
}

// ------------------------------------------------------------ round trip --

// RGB -> HLS -> RGB (C3) on every target over 52 values per channel (0, 5,
// .., 255; 0, 1285, .., 65535; 0, 1/51, .., 1) in rows of 52 pixels (groups
// and a tail). 16u/32f byte steps are odd (one element
// less one byte beyond the row): the exports must drop that remainder.
template <class T>
void RoundTrip(ZylStatus (*fwd)(const T*, int, T*, int, ZylSize),
               ZylStatus (*inv)(const T*, int, T*, int, ZylSize), int bias, double bound) {
  constexpr int kSize = sizeof(T);
  ColorGrid<T> grid(52,
                    [&](int k) {
                      return std::is_same_v<T, Zyl32f> ? k / 51.0
                                                       : k * (kSize == 1 ? 5 : 1285) - bias;
                    },
                    {0, 0, kSize - 1});
  const auto keep = [](const ColorGrid<T>&, int) { return true; };
  RoundTripErrors(grid, fwd, inv, keep).ExpectWithin("HLS round trip", bound);
}

// The inverse moves a channel by at most 2 codes per code of L, 1 per code of
// S, C / 60 per degree of hue (C <= full scale), then truncates (< 1). The
// 12-bit reciprocal is within 1.5 * 2^-12 = 3.7e-4. 8u, worst at a C3 tail
// pixel: L < 1 off, S < 1.1, hue < 1.41 + 0.02 degrees: 2 + 1.1 + 255 * 1.43 / 60 + 1
// = 10.2. 16u/16s: L < 1, S < 1 + 65535 * 3.7e-4 = 25, hue 60 * 3.7e-4 degrees
// + one code (0.0055): 24 + 6; 2 + 25 + 30 + 1 = 58 codes, a quarter of an 8-bit
// level. 32f: exact divisions, only single-precision rounding: 1e-5.
TEST(HlsRoundTrip, EveryType) {
  RoundTrip<Zyl8u>(zyliRGBToHLS_8u_C3R, zyliHLSToRGB_8u_C3R, 0, 10);
  RoundTrip<Zyl16u>(zyliRGBToHLS_16u_C3R, zyliHLSToRGB_16u_C3R, 0, 58);
  RoundTrip<Zyl16s>(zyliRGBToHLS_16s_C3R, zyliHLSToRGB_16s_C3R, 32768, 58);
  RoundTrip<Zyl32f>(zyliRGBToHLS_32f_C3R, zyliHLSToRGB_32f_C3R, 0, 1e-5);
}

// ------------------------------------------------- the 12-bit reciprocal --

// The table emulation against the instruction: every mantissa of [1, 2),
// then every exponent and sign with every table entry (low bits varied) and
// special values. Another vendor's rcpss may differ in its last bits: then
// the table does not describe this processor and the check is skipped.
TEST(HlsRcp12, EmulationMatchesInstruction) {
#if !ZYL_HAVE_RCPSS
  GTEST_SKIP() << "no rcpss here to check the emulation against";
#else
  auto check = [](uint32_t b) {
    float x;
    std::memcpy(&x, &b, 4);
    const float r = Rcp12(x), e = EmulatedRcp12(x);
    return std::memcmp(&r, &e, 4) == 0;
  };
  for (uint32_t m = 0; m < (1u << 23); ++m) {
    if (!check(0x3F800000u | m))
      GTEST_SKIP() << "this rcpss has another table (at mantissa " << m << ")";
  }
  std::vector<uint32_t> in = {0x00000000u, 0x00000001u, 0x007FFFFFu, 0x7F800000u, 0x7FC00000u,
                              0x7F800001u, 0x7F7FFFFFu, 0x7E800000u, 0x7E7FFFFFu, 0x00800000u};
  for (uint32_t e = 1; e < 255; ++e) {
    for (uint32_t i = 0; i < 4096; ++i) in.push_back(e << 23 | i << 11 | ((i * 2654435761u) >> 21));
  }
  for (uint32_t b : in) {
    EXPECT_TRUE(check(b)) << std::hex << "input 0x" << b;
    EXPECT_TRUE(check(b | 0x80000000u)) << std::hex << "input 0x" << (b | 0x80000000u);
    if (::testing::Test::HasFailure()) return;
  }
#endif
}

}  // namespace
}  // namespace zyl::test
