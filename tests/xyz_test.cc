// CIE XYZ: hand-worked values, every export on every target against a
// per-pixel reference written from the defining formulas (and every 8-bit
// triple for 8u), odd byte steps, and round trips with worked-out bounds.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cfenv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <optional>
#include <random>
#include <type_traits>
#include <variant>
#include <vector>

#include "include/zylcc.h"
#include "tests/support/arg_check.h"
#include "tests/support/every_triple.h"
#include "tests/support/generators.h"
#include "tests/support/guarded_image.h"
#include "tests/support/sweep.h"
#include "tests/support/targets.h"

namespace zyl::test {
namespace {

// ------------------------------------------------------------ reference --

constexpr int64_t kFwd8[3][3] = {{27030, 23434, 11824}, {13937, 46868, 4729}, {1267, 7811, 62274}};
constexpr int64_t kInv8[3][3] = {
    {212368, -100738, -32671}, {-63521, 122944, 2723}, {3646, -13372, 69291}};
constexpr float kFwd[3][3] = {{0.412453f, 0.35758f, 0.180423f},
                              {0.212671f, 0.71516f, 0.072169f},
                              {0.019334f, 0.119193f, 0.950227f}};
constexpr float kInv[3][3] = {{3.240479f, -1.53715f, -0.498535f},
                              {-0.969256f, 1.875991f, 0.041556f},
                              {0.055648f, -0.204043f, 1.057311f}};

// 8u: 16.16 sums floored, Z (forward) or every channel (inverse) clamped.
// Floats: products rounded one by one and summed left to right; 32f clamps Z
// (forward) or every channel (inverse) to 0..1, 16-bit results are rounded to
// nearest-even (the default mode here) and saturated.
template <class T>
std::array<T, 3> Reference(bool to_xyz, const T* in) {
  std::array<T, 3> out;
  for (int i = 0; i < 3; ++i) {
    if constexpr (std::is_same_v<T, Zyl8u>) {
      const auto& k = to_xyz ? kFwd8[i] : kInv8[i];
      const int64_t v = Shr(k[0] * in[0] + k[1] * in[1] + k[2] * in[2], 16);
      out[i] = static_cast<T>(to_xyz && i < 2 ? v : std::clamp<int64_t>(v, 0, 255));
    } else {
      const auto& k = to_xyz ? kFwd[i] : kInv[i];
      float s = k[0] * static_cast<float>(in[0]);
      s = s + k[1] * static_cast<float>(in[1]);
      s = s + k[2] * static_cast<float>(in[2]);
      if constexpr (std::is_same_v<T, Zyl32f>) {
        out[i] = to_xyz && i < 2 ? s : std::clamp(s, 0.0f, 1.0f);
      } else {
        using L = std::numeric_limits<T>;
        out[i] = static_cast<T>(std::nearbyint(std::clamp<double>(s, L::min(), L::max())));
      }
    }
  }
  return out;
}

// ------------------------------------------------------- export adapters --

struct XyzExport {
  ExportRow row;
  std::variant<Zyl8u, Zyl16u, Zyl16s, Zyl32f> type;
  bool to_xyz;
  Format format;  // kC3, or kC4 for AC4 (the fourth element must not change)
};

void PrintTo(const XyzExport& e, std::ostream* os) { *os << e.row.name; }

template <class T, auto kFn>
XyzExport Row(const char* name, bool to_xyz, Format format) {
  auto call = [](const ArgCall& a) {
    return kFn(a.Ptr<const T>(0), a.Step(0), a.Ptr<T>(1), a.Step(1), a.size);
  };
  const int bytes = format.channels * static_cast<int>(sizeof(T));
  return {ExportRow(name, {Image(bytes), Image(bytes)}, call), T{}, to_xyz, format};
}
#define ZYL_XYZ_ROWS(T, t)                                                     \
  Row<T, &zyliRGBToXYZ_##t##_C3R>("zyliRGBToXYZ_" #t "_C3R", true, kC3),       \
      Row<T, &zyliRGBToXYZ_##t##_AC4R>("zyliRGBToXYZ_" #t "_AC4R", true, kC4), \
      Row<T, &zyliXYZToRGB_##t##_C3R>("zyliXYZToRGB_" #t "_C3R", false, kC3),  \
      Row<T, &zyliXYZToRGB_##t##_AC4R>("zyliXYZToRGB_" #t "_AC4R", false, kC4)

const XyzExport kExports[] = {ZYL_XYZ_ROWS(Zyl8u, 8u), ZYL_XYZ_ROWS(Zyl16u, 16u),
                              ZYL_XYZ_ROWS(Zyl16s, 16s), ZYL_XYZ_ROWS(Zyl32f, 32f)};

INSTANTIATE_TEST_SUITE_P(Xyz, ArgCheck, ::testing::ValuesIn(RowsOf(kExports)), ExportRowName);

// Runs fn<T>(e, args...) with T the export's element type.
#define ZYL_XYZ_TYPED(fn, e, ...) \
  std::visit([&](auto t) { fn<decltype(t)>(e, __VA_ARGS__); }, (e).type)

// Calls the export in a rounding mode, which it must give back, and checks
// the whole memory: channels 0..2 of (x, y) become want(x, y, c), the rest
// (alpha, padding, guards) keeps its bytes.
template <class T, class Want>
bool RunAndMatch(const XyzExport& e, const GuardedImage<T>& src, const GuardedImage<T>& dst,
                 Want want, int mode = FE_TONEAREST) {
  const auto before = dst.Save();
  std::fesetround(mode);
  const ZylStatus status = CallOnImages(e.row, 0, src, dst);
  const int mode_after = std::fegetround();
  std::fesetround(FE_TONEAREST);
  EXPECT_EQ(status, zylStsOk);
  EXPECT_EQ(mode_after, mode);
  const auto same = dst.Matches(before, [&](int x, int y, int c) -> std::optional<T> {
    if (c == 3) return std::nullopt;
    return want(x, y, c);
  });
  EXPECT_TRUE(same);
  return status == zylStsOk && mode_after == mode && same;
}

// ---------------------------------------------------------- known answers --

struct Known {
  const char* name;
  std::array<double, 3> in, out;
};

const Known kKnown[] = {
    // White: 62288 * 255 = 15883440 >> 16 = 242 (242.4); 65534 * 255 = 16711170 >> 16 = 254
    // (254.99, truncated); 71352 * 255 = 18194760 >> 16 = 277, clamped to 255.
    {"zyliRGBToXYZ_8u_C3R", {255, 255, 255}, {242, 254, 255}},
    // Red: 27030 * 255 = 6892650 >> 16 = 105; 13937 * 255 = 3553935 >> 16 = 54;
    // 1267 * 255 = 323085 >> 16 = 4 (4.93: no rounding term).
    {"zyliRGBToXYZ_8u_AC4R", {255, 0, 0}, {105, 54, 4}},
    {"zyliXYZToRGB_8u_C3R", {0, 0, 0}, {0, 0, 0}},
    // Out of gamut: 212368 * 255 = 54153840 >> 16 = 826 -> 255; -63521 * 255 = -16197855
    // >> 16 = -248 -> 0; 3646 * 255 = 929730 >> 16 = 14. Clamped, not wrapped (826 & 255 = 58).
    {"zyliXYZToRGB_8u_AC4R", {255, 0, 0}, {255, 0, 14}},
    // White's XYZ: 17474499 >> 16 = 266 -> 255; 16550059 >> 16 = 252; 15155049 >> 16 = 231.
    {"zyliXYZToRGB_8u_C3R", {242, 254, 255}, {255, 252, 231}},
    // -32671 * 200 < 0 -> 0; 2723 * 200 = 544600 >> 16 = 8; 69291 * 200 = 13858200 >> 16 = 211.
    {"zyliXYZToRGB_8u_C3R", {0, 0, 200}, {0, 8, 211}},
    // 32f: one unit input gives a matrix column exactly; Z alone is clamped forward.
    {"zyliRGBToXYZ_32f_C3R", {1, 0, 0}, {0.412453f, 0.212671f, 0.019334f}},
    {"zyliRGBToXYZ_32f_AC4R",
     {-1, 0, 2},
     {-0.412453f + 2 * 0.180423f, -0.212671f + 2 * 0.072169f, 1}},
    {"zyliXYZToRGB_32f_C3R", {1, 0, 0}, {1, 0, 0.055648f}},
    {"zyliXYZToRGB_32f_AC4R", {0, 0.5, 0}, {0, 0.5f * 1.875991f, 0}},
    // 16u: 0.412453 * 65535 = 27030.1, 0.212671 * 65535 = 13937.4, 0.019334 * 65535 = 1267.05;
    // white: 0.950456 * 65535 = 62288.1, Y = 65535.0, Z = 71351.5 saturates.
    {"zyliRGBToXYZ_16u_C3R", {65535, 0, 0}, {27030, 13937, 1267}},
    {"zyliRGBToXYZ_16u_AC4R", {65535, 65535, 65535}, {62288, 65535, 65535}},
    // 3240.48 -> 3240, -969.3 -> 0, 55.65 -> 56; a Y alone saturates R and B low, G high.
    {"zyliXYZToRGB_16u_C3R", {1000, 0, 0}, {3240, 0, 56}},
    {"zyliXYZToRGB_16u_AC4R", {0, 65535, 0}, {0, 65535, 0}},
    // 16s values as they are: 13514.85, 6968.59, 633.52; -31144.54, -32768.0002 and
    // -35676.3 (the last two saturate); -50367.8 -> -32768, 61470.6 -> 32767, -6685.88.
    {"zyliRGBToXYZ_16s_C3R", {32767, 0, 0}, {13515, 6969, 634}},
    {"zyliRGBToXYZ_16s_AC4R", {-32768, -32768, -32768}, {-31145, -32768, -32768}},
    {"zyliXYZToRGB_16s_C3R", {0, 32767, 0}, {-32768, 32767, -6686}},
};

// Every pixel of a row of two 512-bit blocks and a tail holds the input, so
// vector body and per-pixel tail meet it on every target.
template <class T>
void KnownAnswer(const XyzExport& e, const Known& k) {
  ForEachTarget([&](int) {
    GuardedImage<T> src(67, 3, e.format), dst(67, 3, e.format);
    src.Fill([&](int, int, int c) { return static_cast<T>(c < 3 ? k.in[c] : 7); });
    RunAndMatch(e, src, dst, [&](int, int, int c) { return static_cast<T>(k.out[c]); });
  });
}

TEST(XyzKnown, HandWorkedValues) {
  for (const Known& k : kKnown) {
    SCOPED_TRACE(k.name);
    const XyzExport& e = FindRow(kExports, k.name);
    ZYL_XYZ_TYPED(KnownAnswer, e, k);
  }
}

// ---------------------------------------------------- against reference --

class XyzExports : public ::testing::TestWithParam<XyzExport> {};

// Random images (floats in -0.25..1.25, where the clamps act) at widths around
// every target's blocks, heights 1 and 3, every step plan; integer exports run
// in each rounding mode in turn, which must change nothing.
template <class T>
void AgainstReference(const XyzExport& e, int) {
  const int kModes[] = {FE_TONEAREST, FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO};
  ForEachTarget([&](int) {
    Sweep(Plans::kEvery, {1, 3}, SweepWidths(), [&](const SweepCase& s) {
      GuardedImage<T> src(s.width, s.height, e.format, s.Src());
      GuardedImage<T> dst(s.width, s.height, e.format, s.Dst());
      FillRandom(src, s.seed, -0.25, 1.25);
      const int mode = std::is_floating_point_v<T> ? FE_TONEAREST : kModes[s.seed / 8 % 4];
      return RunAndMatch(
          e, src, dst,
          [&](int x, int y, int c) {
            const T in[3] = {src.At(x, y, 0), src.At(x, y, 1), src.At(x, y, 2)};
            return Reference<T>(e.to_xyz, in)[c];
          },
          mode);
    });
  });
}

TEST_P(XyzExports, MatchesReference) { ZYL_XYZ_TYPED(AgainstReference, GetParam(), 0); }

// An odd byte step writes what the step with its remainder dropped writes:
// rows advance by floor(step / element size) elements (for 8u, the step).
TEST_P(XyzExports, OddSteps) {
  const XyzExport& e = GetParam();
  const int pixel = e.row.slots[0].bytes_per_pixel, size = pixel / e.format.channels;
  const int row = 37 * pixel;
  std::mt19937 rng(3);
  std::vector<uint8_t> src(8 * row), dst(src.size());
  for (size_t i = 0; i < src.size(); ++i) src[i] = static_cast<uint8_t>(rng());
  for (size_t i = 0; i < dst.size(); ++i) dst[i] = static_cast<uint8_t>(rng());
  auto whole = [&](int step) { return static_cast<int>(std::floor(1.0 * step / size)) * size; };
  ForEachTarget([&](int) {
    for (int sign : {1, -1}) {
      const int s = sign * (row + size + 1), d = sign * (row + 2 * size + 3);
      std::vector<uint8_t> got = dst, want = dst;
      ArgCall a;
      a.size = {37, 3};
      a.Bind(0, &src[4 * row], s);
      a.Bind(1, &got[4 * row], d);
      ASSERT_EQ(e.row.call(a), zylStsOk);
      a.Bind(0, &src[4 * row], whole(s));
      a.Bind(1, &want[4 * row], whole(d));
      ASSERT_EQ(e.row.call(a), zylStsOk);
      EXPECT_TRUE(got == want) << "steps " << s << ", " << d;
    }
  });
}

INSTANTIATE_TEST_SUITE_P(Xyz, XyzExports, ::testing::ValuesIn(kExports), FamilyRowName());

// Every 8-bit triple through both 8u directions on every target.
std::array<uint8_t, 3> Ref8(bool to_xyz, Triple8u p) { return Reference<Zyl8u>(to_xyz, p.data()); }

TEST(XyzEveryTriple, EightBit) {
  Exhaustive(
      "RGBToXYZ_8u", [](Triple8u p) { return Ref8(true, p); },
      [](const AllTriples& all, Zyl8u* out) {
        return zyliRGBToXYZ_8u_C3R(all.interleaved.data(), kSide3, out, kSide3, kAllSize);
      });
  Exhaustive(
      "XYZToRGB_8u", [](Triple8u p) { return Ref8(false, p); },
      [](const AllTriples& all, Zyl8u* out) {
        return zyliXYZToRGB_8u_C3R(all.interleaved.data(), kSide3, out, kSide3, kAllSize);
      });
}

// ------------------------------------------------------------ round trip --

// RGB -> XYZ -> RGB on every target over n values a channel from 0 to `top`:
// out - in must lie in [lo, hi] per channel. Pixels whose Z reaches the top
// (0.019334 r + 0.119193 g + 0.950227 b > 0.999 top) are left out: their Z is
// clamped, which no inverse can undo.
template <class T>
void RoundTrip(ZylStatus (*fwd)(const T*, int, T*, int, ZylSize),
               ZylStatus (*inv)(const T*, int, T*, int, ZylSize), int n, double top,
               const double (&lo)[3], const double (&hi)[3]) {
  const int step = 3 * n * static_cast<int>(sizeof(T));
  std::vector<T> rgb(3 * n * n * n), xyz(rgb.size()), back(rgb.size());
  for (int i = 0; i < n * n * n; ++i) {
    const int v[3] = {i / (n * n), i / n % n, i % n};
    for (int c = 0; c < 3; ++c) rgb[3 * i + c] = static_cast<T>(v[c] * top / (n - 1));
  }
  double low[3] = {0, 0, 0}, high[3] = {0, 0, 0};
  int skipped = 0;
  ForEachTarget([&](int) {
    ASSERT_EQ(fwd(rgb.data(), step, xyz.data(), step, {n, n * n}), zylStsOk);
    ASSERT_EQ(inv(xyz.data(), step, back.data(), step, {n, n * n}), zylStsOk);
    skipped = 0;
    for (size_t p = 0; p < rgb.size(); p += 3) {
      if (0.019334 * rgb[p] + 0.119193 * rgb[p + 1] + 0.950227 * rgb[p + 2] > 0.999 * top) {
        ++skipped;
        continue;
      }
      for (int c = 0; c < 3; ++c) {
        const double d = static_cast<double>(back[p + c]) - rgb[p + c];
        low[c] = std::min(low[c], d);
        high[c] = std::max(high[c], d);
      }
    }
  });
  for (int c = 0; c < 3; ++c) {
    EXPECT_GE(low[c], lo[c]) << "channel " << c;
    EXPECT_LE(high[c], hi[c]) << "channel " << c;
  }
  std::printf(
      "[ figures  ] round trip of %d^3 values (%d with Z clamped left out): out - in "
      "within [%g, %g] [%g, %g] [%g, %g]\n",
      n, skipped, low[0], high[0], low[1], high[1], low[2], high[2]);
}

// 8u: the forward weights are 65536 m - d (d in [0, 1)), so X = M p - e with
// e in [0, 1 + 3 * 255 / 65536) = [0, 1.0117); the inverse weights are off by
// under 3 * 255 / 65536 = 0.0117 in all and floor again, losing f in [0, 1);
// the matrices' product is the identity within 2e-6 (0.0005 at 255). So
// R - r = -(3.240479 eX - 1.53715 eY - 0.498535 eZ) - f lies in (-4.29, 2.07),
// G - g in (-2.95, 0.99) and B - b in (-2.14, 0.22); as integers: [-4, 2],
// [-2, 0], [-2, 0]. The clamps only bring results nearer, inputs being in range.
TEST(XyzRoundTrip, Dense8u) {
  RoundTrip<Zyl8u>(zyliRGBToXYZ_8u_C3R, zyliXYZToRGB_8u_C3R, 86, 255, {-4, -2, -2}, {2, 0, 0});
}

// 16u: each XYZ value is rounded (0.5) after float sums off by under 0.014;
// back through the inverse that is (3.24 + 1.54 + 0.50) * 0.514 = 2.71 for R,
// 2.89 * 0.514 = 1.48 for G and 1.32 * 0.514 = 0.68 for B, plus the last
// rounding (0.5), the inverse's float error (0.04) and the product's distance
// from the identity (2e-6, 6e-7, 1.1e-6 of 65535: 0.13, 0.04, 0.07):
// 3.38, 2.06, 1.29, so at most 3, 2 and 1 codes.
TEST(XyzRoundTrip, Dense16u) {
  RoundTrip<Zyl16u>(zyliRGBToXYZ_16u_C3R, zyliXYZToRGB_16u_C3R, 86, 65535, {-3, -2, -1}, {3, 2, 1});
}

// 32f: the product's distance from the identity (row sums of |error| 2.0e-6,
// 6.3e-7, 1.05e-6) plus the single-precision roundings of both directions
// (forward under 2.1e-7 per value, times the inverse row sums 5.28, 2.89,
// 1.32, and under 5e-7 within the inverse): 3.6e-6, 1.7e-6, 1.8e-6.
TEST(XyzRoundTrip, Dense32f) {
  RoundTrip<Zyl32f>(zyliRGBToXYZ_32f_C3R, zyliXYZToRGB_32f_C3R, 86, 1.0, {-4e-6, -2e-6, -2e-6},
                    {4e-6, 2e-6, 2e-6});
}

}  // namespace
}  // namespace zyl::test
