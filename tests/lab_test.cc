// Lab: the 18 exports against hand-worked values and against a per-pixel
// reference written here from the defining formulas, on every target, at
// widths around each vector with packed, padded, upward and zero steps; every
// 8u triple both ways; plain vs _L; round trips with bounds worked out below.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <optional>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "include/zylcc.h"
#include "src/perceptual/cie.h"
#include "tests/support/every_triple.h"
#include "tests/support/generators.h"
#include "tests/support/pixel_family.h"

namespace zyl::test {
namespace {

// ------------------------------------------------------------ reference --

// A constant in the precision T: the float literal for float, the double of
// the same decimal for double.
#define K(v) static_cast<T>(sizeof(T) == 4 ? static_cast<double>(v##f) : v)

template <class T>
T F(T t) {
  if (t <= K(0.008856)) return K(7.787) * t + K(0.13793103);
  const T x = t * K(127.99805);
  const int i = x > 0 ? (x < 127 ? static_cast<int>(x) : 127) : 0;
  const T r = cie::kCubeRootTable[i][0], d = cie::kCubeRootTable[i][1] * (t - r * r * r);
  return r * (K(1.0) + d * K(0.33333334) - d * d * K(0.11111111) + d * d * d * K(0.061728396) -
              d * d * d * d * K(0.041152265));
}

// RGB (R first) -> L, a, b; s: the X, Y, Z multipliers.
template <class T>
std::array<T, 3> ToLab(const T rgb[3], const T (&s)[3]) {
  const T m[3][3] = {{K(0.412453), K(0.35758), K(0.180423)},
                     {K(0.212671), K(0.71516), K(0.072169)},
                     {K(0.019334), K(0.119193), K(0.950227)}};
  T v[3];
  for (int i = 0; i < 3; ++i)
    v[i] = (m[i][0] * rgb[0] + m[i][1] * rgb[1] + m[i][2] * rgb[2]) * s[i];
  const T l = v[1] <= K(0.008856) ? K(903.3) * v[1] : K(116.0) * F(v[1]) - K(16.0);
  return {l, K(500.0) * (F(v[0]) - F(v[1])), K(200.0) * (F(v[1]) - F(v[2]))};
}

// L, a, b -> R, G, B through pure cubes; w: the white.
template <class T>
std::array<T, 3> ToRgb(T l, T a, T b, const T (&w)[3]) {
  const T m[3][3] = {{K(3.240479), K(-1.53715), K(-0.498535)},
                     {K(-0.969256), K(1.875991), K(0.041556)},
                     {K(0.055648), K(-0.204043), K(1.057311)}};
  const T fy = (l + K(16.0)) * K(0.00862069), fx = fy + a * K(0.002), fz = fy - b * K(0.005);
  const T v[3] = {fx * fx * fx * w[0], fy * fy * fy * w[1], fz * fz * fz * w[2]};
  std::array<T, 3> o;
  for (int i = 0; i < 3; ++i) o[i] = m[i][0] * v[0] + m[i][1] * v[1] + m[i][2] * v[2];
  return o;
}

// nearest-even(clamp(v)) for integer elements (default mode), v for floats.
template <class TD, class T>
TD Out(T v) {
  if constexpr (std::is_integral_v<TD>) {
    return static_cast<TD>(std::nearbyint(std::clamp(v, T(0), T(std::numeric_limits<TD>::max()))));
  }
  return static_cast<TD>(v);
}

// Any export: 8u/16u codes, 32f/64f values; kBgr: B first on the RGB side.
template <class TS, class TD, bool kToLab, bool kBgr>
std::array<TD, 3> Ref(const TS in[3]) {
  using T = std::conditional_t<std::is_same_v<TS, double>, double, float>;
  std::array<T, 3> o;
  if constexpr (kToLab) {
    const T rgb[3] = {T(in[kBgr ? 2 : 0]), T(in[1]), T(in[kBgr ? 0 : 2])};
    constexpr bool k8 = std::is_same_v<TS, Zyl8u>;
    const T s[3] = {k8 ? T(0.0041259914f) : K(1.0521265), k8 ? T(0.003921569f) : T(1),
                    k8 ? T(0.0036018905f) : K(0.9184812)};
    o = ToLab<T>(rgb, s);
    if constexpr (std::is_same_v<TD, Zyl8u>) o = {o[0] * 2.55f, o[1] + 128, o[2] + 128};
    if constexpr (std::is_same_v<TD, Zyl16u>) {
      o = {o[0] * 655.35f, (o[1] + 128) * 255.0f, (o[2] + 128) * 255.0f};
    }
  } else {
    T l = T(in[0]), a = T(in[1]), b = T(in[2]);
    if constexpr (std::is_same_v<TS, Zyl8u>) l = l * 0.39215687f, a = a - 128, b = b - 128;
    if constexpr (std::is_same_v<TS, Zyl16u>) {
      l = l / 655.35f, a = a / 255.0f - 128, b = b / 255.0f - 128;
    }
    if constexpr (std::is_integral_v<TD>) {
      o = ToRgb<T>(l, a, b, {242.366f, 255.0f, 277.632f});
    } else {
      o = ToRgb<T>(l, a, b, {K(0.950456), T(1), K(1.088754)});
      for (T& v : o) v = v < 0 ? 0 : (v > 1 ? 1 : v);
    }
    if (kBgr) std::swap(o[0], o[2]);
  }
  return {Out<TD>(o[0]), Out<TD>(o[1]), Out<TD>(o[2])};
}
#undef K

// ------------------------------------------------------------- exports --

struct LabExport {
  ExportRow row;
  void (*sweep)(const ExportRow&);
  void (*known)(const ExportRow&, const std::array<double, 3>&, const std::array<double, 3>&,
                double tol);
};
void PrintTo(const LabExport& e, std::ostream* os) { *os << e.row.name; }

// 8u/16u over their whole range; float RGB a little beyond 0..1, float Lab
// beyond L 0..100 and a, b -128..127, where the inverse clamps.
template <class TS, bool kToLab>
void Fill(GuardedImage<TS>& img, uint32_t seed) {
  if constexpr (std::is_integral_v<TS>) {
    FillRandom(img, seed);
  } else {
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> u(-0.05, 1.05);
    img.Fill([&](int, int, int c) {
      return static_cast<TS>(kToLab ? u(rng) : (c == 0 ? 104 * u(rng) - 0.2 : 280 * u(rng) - 140));
    });
  }
}

template <class TS, class TD, bool kToLab, bool kBgr, bool kPlanar>
void SweepCheck(const ExportRow& row) {
  SweepPixels<TS, TD>(
      row, kPlanar ? kP3 : kC3, kPlanar ? kP3 : kC3, Plans::kCycled, {1, 3}, SweepWidths(),
      [](GuardedImage<TS>& src, const SweepCase& s) { Fill<TS, kToLab>(src, s.seed); },
      [](const GuardedImage<TS>& src, int x, int y, int c, const SweepCase&) {
        return Ref<TS, TD, kToLab, kBgr>(Pixel3(src, x, y).data())[c];
      });
}

template <class TS, class TD, bool kPlanar>
void KnownCheck(const ExportRow& row, const std::array<double, 3>& in,
                const std::array<double, 3>& out, double tol) {
  FlatKnown<TS, TD>(
      row, kPlanar ? kP3 : kC3, kPlanar ? kP3 : kC3, 35, 1, in,
      [&](int, int c) { return std::optional<TD>(static_cast<TD>(out[c])); }, 0, tol);
}

template <class TS, class TD, bool kToLab, bool kBgr, auto kFn>
LabExport C3Row(const char* name) {
  auto call = [](const ArgCall& a) {
    return kFn(a.Ptr<const TS>(0), a.Step(0), a.Ptr<TD>(1), a.Step(1), a.size);
  };
  return {ExportRow(name, {Image(3 * sizeof(TS)), Image(3 * sizeof(TD))}, call),
          SweepCheck<TS, TD, kToLab, kBgr, false>, KnownCheck<TS, TD, false>};
}

template <class T, bool kToLab, auto kFn, auto kFnL>
std::array<LabExport, 2> P3Rows(const char* name, const char* name_l) {
  auto call = [](const ArgCall& a) {
    return kFn(a.Planes<const T>(0), a.Step(0), a.Planes<T>(1), a.Step(1), a.size);
  };
  auto call_l = [](const ArgCall& a) {
    return kFnL(a.Planes<const T>(0), a.Step(0), a.Planes<T>(1), a.Step(1),
                ZylSizeL{a.size.width, a.size.height});
  };
  const std::vector<ArgSlot> slots = {Planes(3, sizeof(T)), Planes(3, sizeof(T))};
  return {LabExport{ExportRow(name, slots, call), SweepCheck<T, T, kToLab, false, true>,
                    KnownCheck<T, T, true>},
          LabExport{ExportRow(name_l, slots, call_l), SweepCheck<T, T, kToLab, false, true>,
                    KnownCheck<T, T, true>}};
}

#define ZYL_LAB_C3(TS, TD, to_lab, bgr, fn) C3Row<TS, TD, to_lab, bgr, &fn>(#fn)
#define ZYL_LAB_P3(T, to_lab, fn) P3Rows<T, to_lab, &fn, &fn##_L>(#fn, #fn "_L")

const std::vector<LabExport> kExports = [] {
  std::vector<LabExport> v = {ZYL_LAB_C3(Zyl8u, Zyl8u, true, false, zyliRGBToLab_8u_C3R),
                              ZYL_LAB_C3(Zyl8u, Zyl8u, true, true, zyliBGRToLab_8u_C3R),
                              ZYL_LAB_C3(Zyl8u, Zyl16u, true, true, zyliBGRToLab_8u16u_C3R),
                              ZYL_LAB_C3(Zyl32f, Zyl32f, true, false, zyliRGBToLab_32f_C3R),
                              ZYL_LAB_C3(Zyl32f, Zyl32f, true, true, zyliBGRToLab_32f_C3R),
                              ZYL_LAB_C3(Zyl8u, Zyl8u, false, false, zyliLabToRGB_8u_C3R),
                              ZYL_LAB_C3(Zyl8u, Zyl8u, false, true, zyliLabToBGR_8u_C3R),
                              ZYL_LAB_C3(Zyl16u, Zyl8u, false, true, zyliLabToBGR_16u8u_C3R),
                              ZYL_LAB_C3(Zyl32f, Zyl32f, false, false, zyliLabToRGB_32f_C3R),
                              ZYL_LAB_C3(Zyl32f, Zyl32f, false, true, zyliLabToBGR_32f_C3R)};
  for (const auto& pair : {ZYL_LAB_P3(Zyl32f, true, zyliRGBToLab_32f_P3R),
                           ZYL_LAB_P3(Zyl64f, true, zyliRGBToLab_64f_P3R),
                           ZYL_LAB_P3(Zyl32f, false, zyliLabToRGB_32f_P3R),
                           ZYL_LAB_P3(Zyl64f, false, zyliLabToRGB_64f_P3R)}) {
    v.insert(v.end(), pair.begin(), pair.end());
  }
  return v;
}();

class LabExports : public ::testing::TestWithParam<LabExport> {};
TEST_P(LabExports, MatchesReference) { GetParam().sweep(GetParam().row); }
INSTANTIATE_TEST_SUITE_P(Lab, LabExports, ::testing::ValuesIn(kExports), FamilyRowName());
std::vector<ExportRow> Rows() {
  std::vector<ExportRow> rows;
  for (const LabExport& e : kExports) rows.push_back(e.row);
  return rows;
}
INSTANTIATE_TEST_SUITE_P(Lab, ArgCheck, ::testing::ValuesIn(Rows()), ExportRowName);

const LabExport& Find(const std::string& name) {
  return *std::find_if(kExports.begin(), kExports.end(),
                       [&](const LabExport& e) { return e.row.name == name; });
}

// ---------------------------------------------------------- known answers --

struct Known {
  const char* name;
  std::array<double, 3> in, out;
  double tol;
};

const Known kKnown[] = {
    // Lab (0, 128, 128): fY = 16 * 0.00862069 = 0.1379310, fY^3 = 0.0026241; X, Y, Z =
    // 0.63600, 0.66915, 0.72853; R = 2.06096 - 1.02858 - 0.36320 = 0.6692, G = -0.61645 +
    // 1.25532 + 0.03027 = 0.6691, B = 0.03539 - 0.13653 + 0.77028 = 0.6691: all round up to 1.
    {"zyliLabToRGB_8u_C3R", {0, 128, 128}, {1, 1, 1}, 0},
    {"zyliLabToBGR_8u_C3R", {0, 128, 128}, {1, 1, 1}, 0},
    // 16u: 32640 / 255 - 128 = 0 exactly and L = 0: the same pixel.
    {"zyliLabToBGR_16u8u_C3R", {0, 32640, 32640}, {1, 1, 1}, 0},
    // White: the matrix rows sum to Xn, 1, Zn, so X = Y = Z = 1 within float error, f = 1,
    // L = 100 -> 255, a = b = 0 -> 128 (within one code, as the table root is not exact).
    {"zyliRGBToLab_8u_C3R", {255, 255, 255}, {255, 128, 128}, 1},
    {"zyliBGRToLab_8u_C3R", {255, 255, 255}, {255, 128, 128}, 1},
    {"zyliBGRToLab_8u16u_C3R", {255, 255, 255}, {65535, 32640, 32640}, 255},
    // Gray 1: Y = 1.0 * 0.003921569 <= 0.008856 takes the slope: L = 903.3 * 0.003921569 =
    // 3.54235, L8 = 9.033 -> 9 (the cube root would give 116 * 0.15768 - 16 = 2.29 -> 6);
    // X and Z are 0.0039216 too, so f(X) = f(Y) = f(Z) on the linear segment: a8 = b8 = 128.
    {"zyliRGBToLab_8u_C3R", {1, 1, 1}, {9, 128, 128}, 0},
    // Gray 2: L = 903.3 * 0.007843138 = 7.0847, * 2.55 = 18.066 -> 18.
    {"zyliBGRToLab_8u_C3R", {2, 2, 2}, {18, 128, 128}, 0},
    {"zyliRGBToLab_32f_C3R", {1, 1, 1}, {100, 0, 0}, 2e-4},
    {"zyliRGBToLab_32f_P3R_L", {0.002, 0.002, 0.002}, {1.8066, 0, 0}, 1e-4},
    {"zyliRGBToLab_64f_P3R", {1, 1, 1}, {100, 0, 0}, 2e-4},
    // L = 100, a = b = 0: f = 1, X, Y, Z = the white, R = G = B = 1 (the matrices are
    // inverses to about 1e-6), and above 1 clamps.
    {"zyliLabToRGB_32f_C3R", {100, 0, 0}, {1, 1, 1}, 1e-4},
    // L = 100, b = 200: fZ = 0, so X, Y, Z = 0.950456, 1, 0: R = 3.07993 - 1.53715 = 1.54
    // clamps to 1, G = 1.875991 - 0.921235 = 0.954756, B = 0.05289 - 0.20404 clamps to 0.
    {"zyliLabToBGR_32f_C3R", {100, 0, 200}, {0, 0.954756, 1}, 1e-5},
    {"zyliLabToRGB_64f_P3R_L", {0, 0, 0}, {0.0026241, 0.0026241, 0.0026241}, 2e-6},
};

TEST(LabKnown, HandWorkedValues) {
  for (const Known& k : kKnown) {
    SCOPED_TRACE(k.name);
    Find(k.name).known(Find(k.name).row, k.in, k.out, k.tol);
  }
}

// ------------------------------------------------------ every 8u triple --

TEST(LabEveryTriple, BothWays8u) {
  ExhaustiveC3<zyliRGBToLab_8u_C3R>(
      "RGBToLab_8u", [](Triple8u p) { return Ref<Zyl8u, Zyl8u, true, false>(p.data()); });
  ExhaustiveC3<zyliLabToRGB_8u_C3R>(
      "LabToRGB_8u", [](Triple8u p) { return Ref<Zyl8u, Zyl8u, false, false>(p.data()); });
}

// ------------------------------------------------------------ round trip --

// The inverse is pure cubes: below 0.008856 each of X, Y, Z (relative to the
// white) comes back high by at most 0.13793103^3 = 0.0026241 (at 0, falling to
// 0 at the threshold), times the absolute row sums of the inverse matrix with
// the white, 5.160 (R), 2.843 (G), 1.408 (B); the series adds at most 1.1e-3
// relative to f on row 1 (t < 0.0157), 5e-5 on X, Y, Z: R 0.014, G 0.008,
// B 0.004 in float and double.
// 8u adds the Lab codes' half steps: f(Y) 0.196 / 116 = 0.0017, f(X) 0.0017 +
// 0.001, f(Z) 0.0017 + 0.0025; times 3 f^2 (f <= 1) and the 8u white: X 1.96,
// Y 1.29, Z 3.49 codes; through the matrix R 10.1, G 4.5, B 4.1, plus the dark
// segment (0.67 codes times the row sums: 3.5, 1.9, 0.9) and the last rounding
// (0.5): R 14, G 7, B 6.
// RGB -> Lab -> RGB of every 8u triple: the largest |out - in| per channel.
TEST(LabRoundTrip, Every8uTriple) {
  const AllTriples& all = Triples();
  std::vector<Zyl8u> lab(all.interleaved.size()), back(lab.size());
  ASSERT_EQ(zyliRGBToLab_8u_C3R(all.interleaved.data(), kSide3, lab.data(), kSide3, kAllSize),
            zylStsOk);
  ASSERT_EQ(zyliLabToRGB_8u_C3R(lab.data(), kSide3, back.data(), kSide3, kAllSize), zylStsOk);
  ErrorRange range;
  for (size_t i = 0; i < back.size(); ++i) range.Add(i % 3, all.interleaved[i], back[i]);
  range.Expect("8u round trip", {-14, -7, -6}, {14, 7, 6});
}

// Float and double over a grid of 1/64 steps.
template <class T, auto kFwd, auto kInv>
void RoundTripF(const char* what) {
  constexpr int kN = 65;
  std::vector<T> in(3 * kN * kN * kN), lab(in.size()), out(in.size());
  const size_t plane = kN * kN * kN;
  for (size_t i = 0; i < plane; ++i) {
    in[i] = T(i / (kN * kN)) / 64, in[plane + i] = T(i / kN % kN) / 64,
    in[2 * plane + i] = T(i % kN) / 64;
  }
  const T* src[3] = {&in[0], &in[plane], &in[2 * plane]};
  T* mid[3] = {&lab[0], &lab[plane], &lab[2 * plane]};
  T* dst[3] = {&out[0], &out[plane], &out[2 * plane]};
  const int step = static_cast<int>(plane * sizeof(T));
  ASSERT_EQ(kFwd(src, step, mid, step, {static_cast<int>(plane), 1}), zylStsOk);
  ASSERT_EQ(kInv(mid, step, dst, step, {static_cast<int>(plane), 1}), zylStsOk);
  double worst[3] = {0, 0, 0};
  for (size_t i = 0; i < in.size(); ++i) {
    worst[i / plane] = std::max<double>(worst[i / plane], std::abs(out[i] - in[i]));
  }
  std::printf("[ figures  ] %s round trip: max |out - in| R %.6f G %.6f B %.6f\n", what, worst[0],
              worst[1], worst[2]);
  EXPECT_LE(worst[0], 0.014);
  EXPECT_LE(worst[1], 0.008);
  EXPECT_LE(worst[2], 0.004);
}
TEST(LabRoundTrip, Grid32f) {
  RoundTripF<Zyl32f, zyliRGBToLab_32f_P3R, zyliLabToRGB_32f_P3R>("32f");
}
TEST(LabRoundTrip, Grid64f) {
  RoundTripF<Zyl64f, zyliRGBToLab_64f_P3R, zyliLabToRGB_64f_P3R>("64f");
}

}  // namespace
}  // namespace zyl::test
