// CIE XYZ: hand-worked values, every export on every target against a
// per-pixel reference written from the defining formulas (and every 8-bit
// triple for 8u), odd byte steps, and round trips with worked-out bounds.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <type_traits>

#include "include/zylcc.h"
#include "tests/support/every_triple.h"
#include "tests/support/generators.h"
#include "tests/support/pixel_family.h"

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

const PixelExport kExports[] = {ZYL_PIXEL_ROWS(Zyl8u, 8u, XYZ), ZYL_PIXEL_ROWS(Zyl16u, 16u, XYZ),
                                ZYL_PIXEL_ROWS(Zyl16s, 16s, XYZ), ZYL_PIXEL_ROWS(Zyl32f, 32f, XYZ)};

INSTANTIATE_TEST_SUITE_P(Xyz, ArgCheck, ::testing::ValuesIn(RowsOf(kExports)), ExportRowName);

// ---------------------------------------------------------- known answers --

const PixelKnown kKnown[] = {
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

// A row of two 512-bit blocks and a tail: vector body and per-pixel tail.
TEST(XyzKnown, HandWorkedValues) { ExpectPixelKnown(kExports, kKnown, 67); }

// ---------------------------------------------------- against reference --

class XyzExports : public ::testing::TestWithParam<PixelExport> {};

// Random images (floats in -0.25..1.25, where the clamps act) at widths around
// every target's blocks, heights 1 and 3, every step plan.
template <class T>
void AgainstReference(const PixelExport& e, int) {
  SweepPixels<T, T>(
      e.row, e.format, e.format, Plans::kEvery, {1, 3}, SweepWidths(),
      [](GuardedImage<T>& src, const SweepCase& s) { FillRandom(src, s.seed, -0.25, 1.25); },
      [&](const GuardedImage<T>& src, int x, int y, int c, const SweepCase&) -> std::optional<T> {
        if (c == 3) return std::nullopt;
        return Reference<T>(e.forward, Pixel3(src, x, y).data())[c];
      });
}

TEST_P(XyzExports, MatchesReference) { ZYL_TYPED(AgainstReference, GetParam(), 0); }

// Rows advance by floor(step / element size) elements (for 8u, the step).
TEST_P(XyzExports, OddSteps) {
  ExpectOddStepsHonoured(GetParam().row,
                         GetParam().row.slots[0].bytes_per_pixel / GetParam().format.channels);
}

INSTANTIATE_TEST_SUITE_P(Xyz, XyzExports, ::testing::ValuesIn(kExports), FamilyRowName());

// Every 8-bit triple through both 8u directions on every target.
std::array<uint8_t, 3> Ref8(bool to_xyz, Triple8u p) { return Reference<Zyl8u>(to_xyz, p.data()); }

TEST(XyzEveryTriple, EightBit) {
  ExhaustiveC3<zyliRGBToXYZ_8u_C3R>("RGBToXYZ_8u", [](Triple8u p) { return Ref8(true, p); });
  ExhaustiveC3<zyliXYZToRGB_8u_C3R>("XYZToRGB_8u", [](Triple8u p) { return Ref8(false, p); });
}

// ------------------------------------------------------------ round trip --

// RGB -> XYZ -> RGB on every target over n values a channel from 0 to `top`:
// out - in must lie in [lo, hi] per channel. Pixels whose Z reaches the top
// (0.019334 r + 0.119193 g + 0.950227 b > 0.999 top) are left out: their Z is
// clamped, which no inverse can undo.
template <class T>
void RoundTrip(ZylStatus (*fwd)(const T*, int, T*, int, ZylSize),
               ZylStatus (*inv)(const T*, int, T*, int, ZylSize), int n, double top,
               const std::array<double, 3>& lo, const std::array<double, 3>& hi) {
  ColorGrid<T> grid(n, [&](int k) { return k * top / (n - 1); });
  const ErrorRange range = RoundTripErrors(grid, fwd, inv, [&](const ColorGrid<T>& g, int i) {
    return 0.019334 * g.In(i, 0) + 0.119193 * g.In(i, 1) + 0.950227 * g.In(i, 2) <= 0.999 * top;
  });
  range.Expect("XYZ round trip, Z clamped left out", lo, hi);
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
