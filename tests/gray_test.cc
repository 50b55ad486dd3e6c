// Gray conversions: the 25 exports against hand-worked values and against a
// per-pixel reference written from the defining formulas, on every target, at
// widths around the 16-pixel block of the 8-bit sums and around each target's
// vector, with packed, padded, upward, zero and odd steps; the overlap rule of
// GrayToRGB; and results that do not depend on the caller's rounding mode.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cfenv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <random>
#include <string>
#include <type_traits>
#include <variant>
#include <vector>

#include "include/zylcc.h"
#include "tests/support/pixel_family.h"

namespace zyl::test {
namespace {

// ------------------------------------------------------ coefficient sets --

// ColorToGray weights by ArgCall::param; param 0 passes a null pointer.
// In 1.15 (8u): set 1 is 32768, 0, 0; set 3 is 49152, 49153 (-16383 wrapped)
// and 0 (65536 wrapped), whose sums pass 32767 in the vector body.
const Zyl32f kCoeffs32[][3] = {
    {0, 0, 0},  // unused
    {1.0f, 0.0f, 0.0f},
    {0.2126f, 0.7152f, 0.0722f},
    {1.5f, -0.5f, 2.0f},
    {0.5f, 0.0f, 0.0f},                               // halves: rounding ties
    {1.0f, 1.0f, 1.0f},                               // order of the additions
    {-1.0f, 1.0f + 1.0f / 8192, 1.0f + 1.0f / 8192},  // a fused multiply-add shows
    {NAN, 0.0f, 0.0f},  // known answers only: no integer weight, no number to saturate
};
const Zyl64f kCoeffs64[][3] = {
    {0, 0, 0},
    {1.0, 0.0, 0.0},
    {0.2126, 0.7152, 0.0722},
    {1.5, -0.5, 2.0},
    {0.5, 0.0, 0.0},
    {1.0, 1.0, 1.0},
    {-1.0, 1.0 + 1.0 / 134217728, 1.0 + 1.0 / 134217728},  // 1 + 2^-27
    {NAN, 0.0, 0.0},
};
constexpr int kCoeffSets = 7;  // the sets the random images cycle through

template <class T>
auto Coeffs(int param) {
  if constexpr (std::is_same_v<T, Zyl64f>) {
    return param == 0 ? nullptr : kCoeffs64[param];
  } else {
    return param == 0 ? nullptr : kCoeffs32[param];
  }
}

// ------------------------------------------------------------ reference --

float FromBits(uint32_t bits) {
  float f;
  std::memcpy(&f, &bits, sizeof f);
  return f;
}

// Float weights: the caller's set, else the single-precision defaults given
// by their bit patterns, or for 64f those same values written out as doubles.
template <class T>
std::array<double, 3> FloatWeights(int param) {
  if (param != 0) return {Coeffs<T>(param)[0], Coeffs<T>(param)[1], Coeffs<T>(param)[2]};
  if constexpr (std::is_same_v<T, Zyl64f>) {
    return {0.29899999499320984, 0.5870000123977661, 0.11400000005960464};
  }
  return {FromBits(0x3E991687), FromBits(0x3F1645A2), FromBits(0x3DE978D5)};
}

// 8-bit weights: trunc(c * 32768 + 0.5), low 16 bits, or the defaults.
std::array<int64_t, 3> Weights8(int param) {
  std::array<int64_t, 3> w = {9798, 19235, 3736};
  for (int i = 0; i < 3 && param != 0; ++i) {
    w[i] = static_cast<int64_t>(std::trunc(kCoeffs32[param][i] * 32768.0 + 0.5)) & 0xFFFF;
  }
  return w;
}

// The two 8-bit forms. Body: (p * 256 * w) >> 16 per channel, unsigned 16-bit
// saturating sums, + 64 wrapping in the 16-bit lane, that lane read as signed
// and shifted right by 7 (floor), unsigned saturation to a byte.
// Tail: (w . c) >> 15, saturated to 255.
uint8_t Gray8(const std::array<int64_t, 3>& w, const Zyl8u* c, bool body) {
  const int64_t tail = (w[0] * c[0] + w[1] * c[1] + w[2] * c[2]) >> 15;
  if (!body) return static_cast<uint8_t>(std::min<int64_t>(tail, 255));
  int64_t s = 0;
  for (int i = 0; i < 3; ++i) s = std::min<int64_t>(s + c[i] * 256 * w[i] / 65536, 65535);
  const int64_t lane = (s + 64) % 65536 - ((s + 64) % 65536 >= 32768 ? 65536 : 0);
  return static_cast<uint8_t>(std::clamp<int64_t>(lane >= 0 ? lane / 128 : -1, 0, 255));
}

// 16u / 16s: (w0 c0 + w1 c1) + w2 c2 in single precision, saturated, rounded
// to nearest even (the reference runs in the default rounding mode).
// 32f / 64f: the same sum in the type's precision, no clamp.
template <class T>
T Weighted(int param, const T* c, bool body) {
  if constexpr (std::is_same_v<T, Zyl8u>) {
    return Gray8(Weights8(param), c, body);
  } else {
    using F = std::conditional_t<std::is_same_v<T, Zyl64f>, double, float>;
    const std::array<double, 3> w = FloatWeights<T>(param);
    F p[3];
    for (int i = 0; i < 3; ++i) p[i] = static_cast<F>(c[i]) * static_cast<F>(w[i]);
    const F first_two = p[0] + p[1];
    const F sum = first_two + p[2];
    if constexpr (std::is_floating_point_v<T>) return sum;
    const double lo = std::numeric_limits<T>::min(), hi = std::numeric_limits<T>::max();
    return static_cast<T>(std::nearbyint(std::clamp(static_cast<double>(sum), lo, hi)));
  }
}

// ------------------------------------------------------- export adapters --

enum class Kind { kWeighted, kReplicate, kLuma };

struct GrayExport {
  ExportRow row;
  Kind kind;
  std::variant<Zyl8u, Zyl16u, Zyl16s, Zyl32f, Zyl64f> type;  // element type, for std::visit
  Format src, dst;
  bool coeffs;  // ColorToGray: param selects the coefficient set
};

void PrintTo(const GrayExport& e, std::ostream* os) { *os << e.row.name; }

// Five arguments, then a coefficient pointer (set `param`) or an alpha value
// (`param` itself) where the export has one.
template <class T, auto kFn>
ZylStatus Call(const ArgCall& a) {
  using Fn = decltype(kFn);
  if constexpr (std::is_invocable_v<Fn, const T*, int, T*, int, ZylSize>) {
    return kFn(a.Ptr<const T>(0), a.Step(0), a.Ptr<T>(1), a.Step(1), a.size);
  } else if constexpr (std::is_invocable_v<Fn, const T*, int, T*, int, ZylSize,
                                           decltype(Coeffs<T>(1))>) {
    return kFn(a.Ptr<const T>(0), a.Step(0), a.Ptr<T>(1), a.Step(1), a.size, Coeffs<T>(a.param));
  } else {
    return kFn(a.Ptr<const T>(0), a.Step(0), a.Ptr<T>(1), a.Step(1), a.size,
               static_cast<T>(a.param));
  }
}

template <class T, auto kFn>
GrayExport Row(const char* name, Kind kind, Format src, Format dst) {
  const int size = static_cast<int>(sizeof(T));
  const bool coeffs = kind == Kind::kWeighted &&
                      !std::is_invocable_v<decltype(kFn), const T*, int, T*, int, ZylSize>;
  return {ExportRow(name, {Image(src.channels * size), Image(dst.channels * size)}, Call<T, kFn>),
          kind,
          T{},
          src,
          dst,
          coeffs};
}
#define ZYL_GRAY_ROW(T, fn, kind, src, dst) Row<T, &fn>(#fn, Kind::kind, src, dst)

const GrayExport kExports[] = {
    ZYL_GRAY_ROW(Zyl8u, zyliRGBToGray_8u_C3C1R, kWeighted, kC3, kC1),
    ZYL_GRAY_ROW(Zyl8u, zyliRGBToGray_8u_AC4C1R, kWeighted, kC4, kC1),
    ZYL_GRAY_ROW(Zyl16u, zyliRGBToGray_16u_C3C1R, kWeighted, kC3, kC1),
    ZYL_GRAY_ROW(Zyl16u, zyliRGBToGray_16u_AC4C1R, kWeighted, kC4, kC1),
    ZYL_GRAY_ROW(Zyl16s, zyliRGBToGray_16s_C3C1R, kWeighted, kC3, kC1),
    ZYL_GRAY_ROW(Zyl16s, zyliRGBToGray_16s_AC4C1R, kWeighted, kC4, kC1),
    ZYL_GRAY_ROW(Zyl32f, zyliRGBToGray_32f_C3C1R, kWeighted, kC3, kC1),
    ZYL_GRAY_ROW(Zyl32f, zyliRGBToGray_32f_AC4C1R, kWeighted, kC4, kC1),
    ZYL_GRAY_ROW(Zyl8u, zyliColorToGray_8u_C3C1R, kWeighted, kC3, kC1),
    ZYL_GRAY_ROW(Zyl8u, zyliColorToGray_8u_AC4C1R, kWeighted, kC4, kC1),
    ZYL_GRAY_ROW(Zyl16u, zyliColorToGray_16u_C3C1R, kWeighted, kC3, kC1),
    ZYL_GRAY_ROW(Zyl16u, zyliColorToGray_16u_AC4C1R, kWeighted, kC4, kC1),
    ZYL_GRAY_ROW(Zyl16s, zyliColorToGray_16s_C3C1R, kWeighted, kC3, kC1),
    ZYL_GRAY_ROW(Zyl16s, zyliColorToGray_16s_AC4C1R, kWeighted, kC4, kC1),
    ZYL_GRAY_ROW(Zyl32f, zyliColorToGray_32f_C3C1R, kWeighted, kC3, kC1),
    ZYL_GRAY_ROW(Zyl32f, zyliColorToGray_32f_AC4C1R, kWeighted, kC4, kC1),
    ZYL_GRAY_ROW(Zyl64f, zyliColorToGray_64f_C3C1R, kWeighted, kC3, kC1),
    ZYL_GRAY_ROW(Zyl64f, zyliColorToGray_64f_AC4C1R, kWeighted, kC4, kC1),
    ZYL_GRAY_ROW(Zyl8u, zyliGrayToRGB_8u_C1C3R, kReplicate, kC1, kC3),
    ZYL_GRAY_ROW(Zyl8u, zyliGrayToRGB_8u_C1C4R, kReplicate, kC1, kC4),
    ZYL_GRAY_ROW(Zyl16u, zyliGrayToRGB_16u_C1C3R, kReplicate, kC1, kC3),
    ZYL_GRAY_ROW(Zyl16u, zyliGrayToRGB_16u_C1C4R, kReplicate, kC1, kC4),
    ZYL_GRAY_ROW(Zyl32f, zyliGrayToRGB_32f_C1C3R, kReplicate, kC1, kC3),
    ZYL_GRAY_ROW(Zyl32f, zyliGrayToRGB_32f_C1C4R, kReplicate, kC1, kC4),
    ZYL_GRAY_ROW(Zyl8u, zyliYCbCr422ToGray_8u_C2C1R, kLuma, kC2, kC1),
};

// Destination channel c of pixel x in a row of `width` pixels whose source
// pixel holds `in`.
template <class T>
T Expected(const GrayExport& e, int param, int width, int x, int c, const T* in) {
  switch (e.kind) {
    case Kind::kWeighted:
      return Weighted<T>(e.coeffs ? param : 0, in, x < (width & ~15));
    case Kind::kReplicate:
      return c < 3 ? in[0] : static_cast<T>(param);
    case Kind::kLuma:
      break;
  }
  return in[0];  // channel 0 of pixel x of a two-channel row: byte 2x
}

// A quarter of the inputs are the type's extremes, the rest uniform.
template <class T>
T RandomValue(std::mt19937& rng) {
  using L = std::numeric_limits<T>;
  if constexpr (std::is_floating_point_v<T>) {
    const T kExtremes[] = {0, T(-0.0), 1, -1, 0.5, 255, 65535, T(1e30), T(-1e30)};
    if (rng() % 4 == 0) return kExtremes[rng() % 9];
    return static_cast<T>(std::uniform_real_distribution<double>(-300.0, 300.0)(rng));
  } else {
    const T kExtremes[] = {L::min(), T(L::min() + 1), 0, 1, 127, 128, T(L::max() - 1), L::max()};
    if (rng() % 4 == 0) return kExtremes[rng() % 8];
    return static_cast<T>(std::uniform_int_distribution<int>(L::min(), L::max())(rng));
  }
}

class GrayExports : public ::testing::TestWithParam<GrayExport> {};

// ---------------------------------------------------------- known answers --

struct Known {
  const char* name;
  int param;
  std::array<double, 3> in;  // a fourth source channel holds 7
  double body, tail;         // at x < 16 and x = 16 of a row of 17 equal pixels
};

const Known kKnown[] = {
    // White: body (65280 * w) >> 16 = 9759 + 19159 + 3721 = 32639, + 64 = 32703 >> 7 = 255;
    // tail (32769 * 255) >> 15 = 8356095 >> 15 = 255.
    {"zyliRGBToGray_8u_C3C1R", 0, {255, 255, 255}, 255, 255},
    // Green: body 19159 + 64 = 19223 >> 7 = 150; tail 19235 * 255 = 4904925 >> 15 = 149.
    {"zyliRGBToGray_8u_AC4C1R", 0, {0, 255, 0}, 150, 149},
    {"zyliColorToGray_8u_C3C1R", 0, {0, 255, 0}, 150, 149},
    // Weights (1, 0, 0), w0 = 32768: body (200 * 256 * 32768) >> 16 = 25600, + 64 >> 7 = 200;
    // tail (32768 * 200) >> 15 = 200: the first channel is copied by both.
    {"zyliColorToGray_8u_AC4C1R", 1, {200, 17, 99}, 200, 200},
    // w0 = 49152: body (51200 * 49152) >> 16 = 38400, + 64 = 38464, negative as int16 -> 0;
    // tail 49152 * 200 >> 15 = 300 -> 255.
    {"zyliColorToGray_8u_C3C1R", 3, {200, 0, 0}, 0, 255},
    // w2 = 2.0 * 32768 = 65536, low 16 bits 0: blue counts for nothing.
    {"zyliColorToGray_8u_C3C1R", 3, {0, 0, 255}, 0, 0},
    // Halves round to even: 2.5 -> 2, 3.5 -> 4, -1.5 -> -2, 32767.5 -> 32768, 0.5 -> 0.
    {"zyliColorToGray_16s_C3C1R", 4, {5, 1, 1}, 2, 2},
    {"zyliColorToGray_16s_AC4C1R", 4, {7, 1, 1}, 4, 4},
    {"zyliColorToGray_16s_C3C1R", 4, {-3, 0, 0}, -2, -2},
    {"zyliColorToGray_16u_C3C1R", 4, {65535, 9, 9}, 32768, 32768},
    {"zyliColorToGray_16u_AC4C1R", 4, {1, 0, 0}, 0, 0},
    // Saturation, weights (1.5, -0.5, 2): 30000 + 10000 = 40000 -> 32767; -40000 -> -32768;
    // 16u: -500 -> 0, and 98302.5 + 131070 -> 65535.
    {"zyliColorToGray_16s_C3C1R", 3, {20000, -20000, 0}, 32767, 32767},
    {"zyliColorToGray_16s_C3C1R", 3, {-20000, 20000, 0}, -32768, -32768},
    {"zyliColorToGray_16u_C3C1R", 3, {0, 1000, 0}, 0, 0},
    {"zyliColorToGray_16u_C3C1R", 3, {65535, 0, 65535}, 65535, 65535},
    // A NaN weight: the 8-bit weight is 0; a NaN sum saturates to the type's minimum.
    {"zyliColorToGray_8u_C3C1R", 7, {255, 9, 9}, 0, 0},
    {"zyliColorToGray_16s_C3C1R", 7, {1, 2, 3}, -32768, -32768},
    {"zyliColorToGray_16u_AC4C1R", 7, {1, 2, 3}, 0, 0},
    // The default float weights, bit for bit: 0x3E991687 and 0x3DE978D5.
    {"zyliRGBToGray_32f_C3C1R", 0, {1, 0, 0}, 0.29899999499320984, 0.29899999499320984},
    {"zyliRGBToGray_32f_AC4C1R", 0, {0, 0, 1}, 0.11400000005960464, 0.11400000005960464},
    // ... widened, not the doubles nearest to 0.299 and 0.587.
    {"zyliColorToGray_64f_C3C1R", 0, {1, 0, 0}, 0.29899999499320984, 0.29899999499320984},
    {"zyliColorToGray_64f_AC4C1R", 0, {0, 1, 0}, 0.5870000123977661, 0.5870000123977661},
    // Order, weights 1: (1e8 - 1e8) + 1 = 1, where 1e8 + (-1e8 + 1) would give 0 (the float
    // spacing at 1e8 is 8); (1 + 1e8) - 1e8 = 0. In double the same at 1e17 (spacing 16).
    {"zyliColorToGray_32f_C3C1R", 5, {1e8, -1e8, 1}, 1, 1},
    {"zyliColorToGray_32f_C3C1R", 5, {1, 1e8, -1e8}, 0, 0},
    {"zyliColorToGray_64f_C3C1R", 5, {1e17, -1e17, 1}, 1, 1},
    {"zyliColorToGray_64f_C3C1R", 5, {1, 1e17, -1e17}, 0, 0},
    // Each product is rounded before it is added: (1 + 2^-13)^2 = 1 + 2^-12 + 2^-26 is
    // 1 + 2^-12 in float, and -(1 + 2^-12) plus that is 0, where a fused multiply-add of
    // the second or third product would leave 2^-26. In double the same with 2^-27, 2^-54.
    {"zyliColorToGray_32f_C3C1R", 6, {1.0 + 1.0 / 4096, 1.0 + 1.0 / 8192, 0}, 0, 0},
    {"zyliColorToGray_32f_AC4C1R", 6, {1.0 + 1.0 / 4096, 0, 1.0 + 1.0 / 8192}, 0, 0},
    {"zyliColorToGray_64f_C3C1R", 6, {1.0 + 1.0 / 67108864, 1.0 + 1.0 / 134217728, 0}, 0, 0},
    {"zyliColorToGray_64f_AC4C1R", 6, {1.0 + 1.0 / 67108864, 0, 1.0 + 1.0 / 134217728}, 0, 0},
    // Replication; the fourth channel is the alpha argument, 7.
    {"zyliGrayToRGB_8u_C1C4R", 7, {100}, 100, 100},
    {"zyliGrayToRGB_32f_C1C4R", 7, {-2.5}, -2.5, -2.5},
};

TEST(GrayKnown, HandWorkedValues) {
  for (const Known& k : kKnown) {
    SCOPED_TRACE(::testing::Message() << k.name << " coefficient set " << k.param);
    const GrayExport& e = FindRow(kExports, k.name);
    std::visit(
        [&](auto tag) {
          using T = decltype(tag);
          FlatKnown<T, T>(
              e.row, e.src, e.dst, 17, 1, k.in,
              [&](int x, int c) {
                return std::optional<T>(static_cast<T>(c == 3   ? k.param
                                                       : x < 16 ? k.body
                                                                : k.tail));
              },
              k.param);
        },
        e.type);
  }
}

// Y0 Cb Y1 Cr = 10 20 30 40 gives 10, 30; an odd width ends on the Y0 of its group.
TEST(GrayKnown, LumaOf422) {
  const Zyl8u src[8] = {10, 20, 30, 40, 50, 60, 70, 80};
  const Zyl8u want[2][4] = {{10, 30, 3, 4}, {10, 30, 50, 4}};
  ForEachTarget([&](int) {
    for (int width : {2, 3}) {
      Zyl8u dst[4] = {1, 2, 3, 4};
      ASSERT_EQ(zyliYCbCr422ToGray_8u_C2C1R(src, 8, dst, 4, {width, 1}), zylStsOk);
      EXPECT_EQ(0, std::memcmp(dst, want[width - 2], 4)) << "width " << width;
    }
  });
}

// ---------------------------------------------------- against reference --

// The 8-bit rows show the body formula on exactly the first width & ~15
// pixels and the tail formula after them, on every target; widths 47..49 take
// one to three of their 16-pixel blocks. Integer results do not depend on the
// caller's rounding mode, which the calls leave as they found it (float
// results follow it, so those run in the default mode).
TEST_P(GrayExports, MatchesReference) {
  const GrayExport& e = GetParam();
  auto param = [&](const SweepCase& s) {
    return e.coeffs ? static_cast<int>(s.seed % kCoeffSets) : 7;
  };
  std::visit(
      [&](auto tag) {
        using T = decltype(tag);
        SweepPixels<T, T>(
            e.row, e.src, e.dst, Plans::kEvery, {1, 3}, SweepWidths({47, 48, 49}),
            [](GuardedImage<T>& src, const SweepCase& s) {
              std::mt19937 rng(s.seed);
              src.Fill([&](int, int, int) { return RandomValue<T>(rng); });
            },
            [&](const GuardedImage<T>& src, int x, int y, int c, const SweepCase& s) {
              T in[4] = {};
              for (int k = 0; k < e.src.channels; ++k) in[k] = src.At(x, y, k);
              return Expected<T>(e, param(s), s.width, x, c, in);
            },
            param);
      },
      e.type);
}

// Odd byte steps of either sign: 16u and 16s rows advance by (step >> 1)
// elements and 32f rows by (step >> 2), dropping the low bits; 8u and 64f rows
// by the byte step as given (64f rows then sit off their natural alignment).
TEST_P(GrayExports, OddSteps) {
  std::visit(
      [&](auto tag) {
        const int size = sizeof(tag);
        ExpectOddStepsHonoured(GetParam().row, size == 2 || size == 4 ? size : 1, 2);
      },
      GetParam().type);
}

INSTANTIATE_TEST_SUITE_P(Gray, GrayExports, ::testing::ValuesIn(kExports), FamilyRowName());

// ---------------------------------------------------------------- overlap --

// An overlapping row is converted pixel by pixel in address order, each gray
// value read just before its pixel is written.
TEST(GrayOverlap, ExpansionInPlace) {
  constexpr int kWidth = 100;  // several vectors on every target
  auto gray = [](int x) { return static_cast<Zyl8u>(3 * x + 11); };
  ForEachTarget([&](int) {
    std::vector<Zyl8u> buf(4 * kWidth);
    // Source at the start of its own destination: pixel 0 reads 11 and writes
    // it into bytes 0..2, so pixel 1 reads byte 1 = 11 and writes bytes 3..5,
    // and so on: every pixel replicates 11.
    for (int x = 0; x < kWidth; ++x) buf[x] = gray(x);
    ASSERT_EQ(zyliGrayToRGB_8u_C1C3R(buf.data(), 0, buf.data(), 0, {kWidth, 1}), zylStsOk);
    for (int i = 0; i < 3 * kWidth; ++i) ASSERT_EQ(buf[i], 11) << "byte " << i;
    // Source at the end: pixel x writes up to byte n x + n - 1 and the next
    // read is byte (n - 1) w + x + 1, further on, so the samples expand intact.
    for (int n : {3, 4}) {
      Zyl8u* src = buf.data() + (n - 1) * kWidth;
      for (int x = 0; x < kWidth; ++x) src[x] = gray(x);
      ASSERT_EQ(n == 3 ? zyliGrayToRGB_8u_C1C3R(src, 0, buf.data(), 0, {kWidth, 1})
                       : zyliGrayToRGB_8u_C1C4R(src, 0, buf.data(), 0, {kWidth, 1}, 7),
                zylStsOk);
      for (int i = 0; i < n * kWidth; ++i) {
        ASSERT_EQ(buf[i], i % n == 3 ? 7 : gray(i / n)) << "byte " << i;
      }
    }
  });
}

// A rejected call does not read the coefficients either: here they sit on an
// inaccessible page.
TEST(GrayArgs, CoefficientsUnreadWhenRejected) {
  const GuardedMemory page(0, Placement::kPageEnd);
  const auto* c32 = reinterpret_cast<const Zyl32f*>(page.data());
  const auto* c64 = reinterpret_cast<const Zyl64f*>(page.data());
  Zyl64f buf[4] = {};
  auto* b8 = reinterpret_cast<Zyl8u*>(buf);
  EXPECT_EQ(zyliColorToGray_8u_C3C1R(nullptr, 3, b8, 1, {1, 1}, c32), zylStsNullPtrErr);
  EXPECT_EQ(zyliColorToGray_8u_AC4C1R(b8, 4, b8, 1, {0, 1}, c32), zylStsSizeErr);
  EXPECT_EQ(zyliColorToGray_16s_C3C1R(nullptr, 6, nullptr, 2, {1, 1}, c32), zylStsNullPtrErr);
  EXPECT_EQ(zyliColorToGray_64f_C3C1R(buf, 24, buf, 8, {1, -1}, c64), zylStsSizeErr);
}

// ------------------------------------------------------- argument checks --

INSTANTIATE_TEST_SUITE_P(Gray, ArgCheck, ::testing::ValuesIn(RowsOf(kExports)), ExportRowName);

}  // namespace
}  // namespace zyl::test
