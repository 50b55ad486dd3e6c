// RGB <-> YCbCr at full resolution (BT.601 studio range; BT.709 for the two 709CSC inverses):
// the fourteen exports against hand-worked values and against a per-pixel reference written
// from the defining formulas, on every target, at widths around each target's vector block,
// with padded, negative, zero and contiguous steps and the alpha rules; exhaustively over all
// 2^24 inputs; and round trips that bound what the studio-range pairs lose.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <vector>

#include "include/zylcc.h"
#include "tests/support/every_triple.h"
#include "tests/support/family8u.h"
#include "tests/support/pixel_family.h"

namespace zyl::test {
namespace {

using Px = Px8;

// ------------------------------------------------------------ reference --

uint8_t Clamp(int64_t v) { return static_cast<uint8_t>(std::clamp<int64_t>(v, 0, 255)); }

// BT.601 forward: rounded, never clamped (the chroma bytes are the low 8 bits of the sum).
Px RgbToYcbcrRef(Px in) {
  const int64_t r = in[0], g = in[1], b = in[2];
  return {static_cast<uint8_t>(Shr(16843 * r + 33030 * g + 6423 * b + 1081344, 16)),
          static_cast<uint8_t>(Shr(-9699 * r - 19071 * g + 28770 * b + 8421376, 16)),
          static_cast<uint8_t>(Shr(28770 * r - 24117 * g - 4653 * b + 8421376, 16))};
}

// Inverse chroma weights in 16.16 (G's two are subtracted); the luma scale 1.164 and its
// offset 16 x 76284 are shared by both matrices.
struct InverseWeights {
  int64_t r_cr, g_cb, g_cr, b_cb;
};
constexpr InverseWeights kBt601{104595, 25690, 53281, 132186};  // 1.596 0.392 0.813 2.017
constexpr InverseWeights kBt709{117506, 13959, 34931, 138412};  // 1.793 0.213 0.533 2.112

// Inverse: no rounding term, every channel truncates toward minus infinity, then clamps.
Px YcbcrToRgbRef(Px in, const InverseWeights& w) {
  const int64_t y = int64_t{in[0]} * 76284 - 1220544, cb = in[1] - 128, cr = in[2] - 128;
  return {Clamp(Shr(y + cr * w.r_cr, 16)), Clamp(Shr(y - cb * w.g_cb - cr * w.g_cr, 16)),
          Clamp(Shr(y + cb * w.b_cb, 16))};
}

Px Reversed(Px p) { return {p[2], p[1], p[0]}; }
Px Ycbcr601ToRgb(Px in) { return YcbcrToRgbRef(in, kBt601); }
Px Ycbcr709ToBgr(Px in) { return Reversed(YcbcrToRgbRef(in, kBt709)); }

// ------------------------------------------------------- export adapters --

// kind: the formula, plus kBgr for a destination in B, G, R order.
enum Kind { kForward, kInverse601, kInverse709, kBgr = 4 };

// Planar sides take the plane array and ONE step shared by the three planes; the two sides'
// steps differ in most tests, so a plane walked with the other side's step shows up. AC4P3R
// drops the source alpha; a fourth destination plane, if any, stays as it was.
const Export8u kExports[] = {
    ZYL_ROW8U(zyliRGBToYCbCr_8u_C3R, kForward, kC3, kC3),
    ZYL_ROW8U(zyliRGBToYCbCr_8u_AC4R, kForward, kC4, kC4),
    ZYL_ROW8U(zyliRGBToYCbCr_8u_C3P3R, kForward, kC3, kP3),
    ZYL_ROW8U(zyliRGBToYCbCr_8u_AC4P3R, kForward, kC4, kP4),
    ZYL_ROW8U(zyliRGBToYCbCr_8u_P3R, kForward, kP3, kP3),
    ZYL_ROW8U(zyliYCbCrToRGB_8u_C3R, kInverse601, kC3, kC3),
    ZYL_ROW8U(zyliYCbCrToRGB_8u_AC4R, kInverse601, kC4, kC4),
    ZYL_ROW8U(zyliYCbCrToRGB_8u_P3C3R, kInverse601, kP3, kC3),
    ZYL_ROW8U(zyliYCbCrToRGB_8u_P3C4R, kInverse601, kP3, kC4, Alpha::kArgument),
    ZYL_ROW8U(zyliYCbCrToRGB_8u_P3R, kInverse601, kP3, kP3),
    ZYL_ROW8U(zyliYCbCrToBGR_8u_P3C3R, kInverse601 | kBgr, kP3, kC3),
    ZYL_ROW8U(zyliYCbCrToBGR_8u_P3C4R, kInverse601 | kBgr, kP3, kC4, Alpha::kArgument),
    ZYL_ROW8U(zyliYCbCrToBGR_709CSC_8u_P3C3R, kInverse709 | kBgr, kP3, kC3),
    ZYL_ROW8U(zyliYCbCrToBGR_709CSC_8u_P3C4R, kInverse709 | kBgr, kP3, kC4, Alpha::kArgument),
};

// The converted pixel in the export's destination order.
Px Convert(const Export8u& e, Px in) {
  const Px out = (e.kind & 3) == kForward      ? RgbToYcbcrRef(in)
                 : (e.kind & 3) == kInverse601 ? YcbcrToRgbRef(in, kBt601)
                                               : YcbcrToRgbRef(in, kBt709);
  return e.kind & kBgr ? Reversed(out) : out;
}

class YcbcrExports : public ::testing::TestWithParam<Export8u> {};

// ---------------------------------------------------------- known answers --

// Outputs in R, G, B (or Y, Cb, Cr) order.
// RGB -> YCbCr by hand: Y = (16843R + 33030G + 6423B + 1081344) >> 16,
// Cb = (-9699R - 19071G + 28770B + 8421376) >> 16, Cr = (28770R - 24117G - 4653B + 8421376) >> 16.
const Known8u kToYcbcr[] = {
    // Black: Y = 1081344 >> 16 = 16.5 -> 16; Cb = Cr = 8421376 >> 16 = 128.5 -> 128.
    {{0, 0, 0}, {16, 128, 128}},
    // White: the Y weights sum to 56296; 56296 * 255 + 1081344 = 15436824 = 235 * 65536 +
    // 35864 -> 235. Both chroma weight sets sum to 0, so Cb = Cr = 128.
    {{255, 255, 255}, {235, 128, 128}},
    // Red: Y = 4294965 + 1081344 = 5376309 = 82 * 65536 + 2357 -> 82;
    // Cb = -2473245 + 8421376 = 5948131 = 90 * 65536 + 49891 -> 90;
    // Cr = 7336350 + 8421376 = 15757726 = 240 * 65536 + 29086 -> 240 (the top of the range).
    {{255, 0, 0}, {82, 90, 240}},
    // Green: Y = 8422650 + 1081344 = 9503994 = 145 * 65536 + 1274 -> 145;
    // Cb = -4863105 + 8421376 = 3558271 -> 54; Cr = -6149835 + 8421376 = 2271541 -> 34.
    {{0, 255, 0}, {145, 54, 34}},
    // Blue: Y = 1637865 + 1081344 = 2719209 = 41 * 65536 + 32233 -> 41;
    // Cb = 15757726 -> 240; Cr = -1186515 + 8421376 = 7234861 = 110 * 65536 + 25901 -> 110.
    {{0, 0, 255}, {41, 240, 110}},
    // (10, 200, 30): Y = 168430 + 6606000 + 192690 + 1081344 = 8048464 -> 122;
    // Cb = -96990 - 3814200 + 863100 + 8421376 = 5373286 -> 81;
    // Cr = 287700 - 4823400 - 139590 + 8421376 = 3746086 = 57 * 65536 + 10534 -> 57.
    {{10, 200, 30}, {122, 81, 57}},
};

// YCbCr -> RGB by hand: base = 76284Y - 1220544, cb = Cb - 128, cr = Cr - 128; each channel
// (base + chroma terms) >> 16, truncating, then clamped. BT.601 weights 104595 (Cr on R),
// 25690 and 53281 (subtracted on G), 132186 (Cb on B).
const Known8u kToRgb601[] = {
    // base = 16 * 76284 - 1220544 = 0.
    {{16, 128, 128}, {0, 0, 0}},
    // base = 17926740 - 1220544 = 16706196 = 254 * 65536 + 60052: 254.92 truncates to 254.
    {{235, 128, 128}, {254, 254, 254}},
    // Below the studio black: base = -76284 and -1220544, negative -> 0.
    {{15, 128, 128}, {0, 0, 0}},
    {{0, 128, 128}, {0, 0, 0}},
    // cr = 112: R = 16706196 + 11714640 = 28420836 >> 16 = 433 -> 255;
    // G = 16706196 - 5967472 = 10738724 = 163 * 65536 + 56356 -> 163; B = 254.
    {{235, 128, 240}, {255, 163, 254}},
    // base = 6407856, cb = -78, cr = 72: R = 6407856 + 7530840 = 13938696 -> 212;
    // G = 6407856 + 2003820 - 3836232 = 4575444 = 69 * 65536 + 53460 -> 69;
    // B = 6407856 - 10310508 < 0 -> 0.
    {{100, 50, 200}, {212, 69, 0}},
    // base = 8543808, cb = 72, cr = -68: R = 8543808 - 7112460 = 1431348 -> 21;
    // G = 8543808 - 1849680 + 3623108 = 10317236 -> 157; B = 8543808 + 9517392 -> 275 -> 255.
    {{128, 200, 60}, {21, 157, 255}},
    // Encoded red comes back: base = 5034744, cb = -38, cr = 112: R = 16749384 -> 255;
    // G = 5034744 + 976220 - 5967472 = 43492 -> 0; B = 5034744 - 5023068 = 11676 -> 0.
    {{82, 90, 240}, {255, 0, 0}},
};

// The same by hand with the BT.709 weights 117506 (1.793), 13959 (0.213), 34931 (0.533),
// 138412 (2.112); the luma scale is the same, so neutral inputs agree with BT.601.
const Known8u kToRgb709[] = {
    {{16, 128, 128}, {0, 0, 0}},
    {{235, 128, 128}, {254, 254, 254}},
    {{15, 128, 128}, {0, 0, 0}},
    {{0, 128, 128}, {0, 0, 0}},
    // R = 16706196 + 13160672 -> 446 -> 255; G = 16706196 - 3912272 = 12793924 -> 195.
    {{235, 128, 240}, {255, 195, 254}},
    // R = 6407856 + 8460432 = 14868288 = 226 * 65536 + 57152 -> 226;
    // G = 6407856 + 1088802 - 2515032 = 4981626 = 76 * 65536 + 890 -> 76; B < 0 -> 0.
    {{100, 50, 200}, {226, 76, 0}},
    // R = 8543808 - 7990408 = 553400 -> 8; G = 8543808 - 1005048 + 2375308 = 9914068 -> 151;
    // B = 8543808 + 9965664 -> 282 -> 255.
    {{128, 200, 60}, {8, 151, 255}},
    // R = 5034744 + 13160672 -> 276 -> 255; G = 5034744 + 530442 - 3912272 = 1652914 -> 25;
    // B = 5034744 - 5259656 < 0 -> 0.
    {{82, 90, 240}, {255, 25, 0}},
};

// The known pixels side by side in a row long enough for two AVX-512 blocks and a tail, so
// vector body and per-pixel tail both meet each of them.
TEST_P(YcbcrExports, KnownAnswers) {
  const Export8u& e = GetParam();
  auto table = [](const auto& t) { return std::vector<Known8u>(std::begin(t), std::end(t)); };
  ExpectKnown8u(e,
                (e.kind & 3) == kForward      ? table(kToYcbcr)
                : (e.kind & 3) == kInverse601 ? table(kToRgb601)
                                              : table(kToRgb709),
                [&](Px p) { return e.kind & kBgr ? Reversed(p) : p; });
}

// -------------------------------------------------- reference comparison --

// Random sources include random source alpha (AC4R, AC4P3R); the alpha argument changes
// from call to call, so a P3C4R that writes a fixed value cannot pass. Range ends and the
// chroma midpoint in every combination: all the clamps of the inverse.
TEST_P(YcbcrExports, MatchesReference) {
  const Export8u& e = GetParam();
  ExpectMatchesReference8u(e, [&](Px in) { return Convert(e, in); });
}

INSTANTIATE_TEST_SUITE_P(Ycbcr, YcbcrExports, ::testing::ValuesIn(kExports), FamilyRowName());

// ------------------------------------------------------------ exhaustive --

TEST(YcbcrExhaustive, EveryRgbTriple) {
  ExhaustiveC3<zyliRGBToYCbCr_8u_C3R>("zyliRGBToYCbCr_8u_C3R", RgbToYcbcrRef);
}

TEST(YcbcrExhaustive, EveryYcbcrTripleBt601) {
  Exhaustive("zyliYCbCrToRGB_8u_P3C3R", Ycbcr601ToRgb, [](const AllTriples& all, Zyl8u* dst) {
    return zyliYCbCrToRGB_8u_P3C3R(all.Planes().data(), AllTriples::kSide, dst, kSide3, kAllSize);
  });
}

TEST(YcbcrExhaustive, EveryYcbcrTripleBt709) {
  Exhaustive("zyliYCbCrToBGR_709CSC_8u_P3C3R", Ycbcr709ToBgr,
             [](const AllTriples& all, Zyl8u* dst) {
               return zyliYCbCrToBGR_709CSC_8u_P3C3R(all.Planes().data(), AllTriples::kSide, dst,
                                                     kSide3, kAllSize);
             });
}

// ------------------------------------------------------------ round trips --

// Decoded minus original, per channel (R, G, B), over all 2^24 colors.
// Checks the errors over all 2^24 colours against bounds and predicted means worked out
// below. The predictions assume evenly spread fractional parts; clamping at the cube's faces
// and the small matrix mismatch move the mean by a few hundredths at most.
void ExpectErrors(const char* what, const std::vector<uint8_t>& rgb_back, std::array<double, 3> lo,
                  std::array<double, 3> hi, std::array<double, 3> mean) {
  ErrorRange range;
  for (size_t i = 0; i < AllTriples::kCount; ++i) {
    for (int c = 0; c < 3; ++c) range.Add(c, AllTriples::At(i)[c], rgb_back[3 * i + c]);
  }
  range.Expect(what, lo, hi);
  range.ExpectMean(what, mean);
}

// Per-pixel BT.709 studio-range encoder: the 2x2-block formulas of the 4:2:0 709CSC encoders
// fed one repeated pixel, so each block sum is 4 times the pixel. Their chroma rounding term
// 0x8000 is an eighth of a unit at the >> 18 scale (not a half), so chroma rounds as
// floor(c + 1/8): its error lies in (-7/8, 1/8], on average -3/8.
Px RgbToYcbcr709Ref(Px in) {
  const int64_t r = in[0], g = in[1], b = in[2];
  return {static_cast<uint8_t>(Shr(11993 * r + 40239 * g + 4063 * b + 0x108000, 16)),
          static_cast<uint8_t>(Shr(4 * (-6619 * r - 22151 * g + 28770 * b) + 0x2008000, 18)),
          static_cast<uint8_t>(Shr(4 * (28770 * r - 26149 * g - 2621 * b) + 0x2008000, 18))};
}

// Why the bounds. Write the decoded channel before its truncation as v = T + m + sum of
// w_k e_k: T the original value, e_k the encoder's rounding error of Y, Cb, Cr and w_k the
// inverse weight multiplying it (1.164 for Y); m = (inverse matrix x forward matrix - I) RGB,
// the mismatch of two independently rounded 3-decimal matrices, linear in RGB so extreme at
// the cube's corners. The output is floor(v), clamped (the clamp only moves it toward T, which
// lies in 0..255), so the error lies in [floor(min(v - T)), floor(max(v - T))] and averages
// about E[m] + sum w_k E[e_k] - 1/2 (truncation).
//
// BT.709: corner values of m: R -0.182..+0.149, G -0.170..+0.137, B -0.249..+0.215 (e.g. at
// white m = 255 (56295 x 76284 / 2^32 - 1) = -0.033; worked per corner with the weights above).
// e_Y in (-1/2, 1/2], e_C in (-7/8, 1/8].
//   R: v - T in [-0.182 - 0.582 - 1.793 x 7/8, 0.149 + 0.582 + 1.793 / 8] = [-2.33, 0.96]
//      -> error -3..0, mean -1/2 - 1.793 x 3/8 = -1.17.
//   G: w = 1.164, -0.213, -0.533: [-0.170 - 0.582 - 0.746 / 8, 0.137 + 0.582 + 0.746 x 7/8]
//      = [-0.85, 1.37] -> error -1..1, mean -1/2 + 0.746 x 3/8 = -0.22.
//   B: [-0.249 - 0.582 - 2.112 x 7/8, 0.215 + 0.582 + 2.112 / 8] = [-2.68, 1.06]
//      -> error -3..1, mean -1/2 - 2.112 x 3/8 = -1.29.
TEST(YcbcrRoundTrip, Bt709StudioPairOverAllColors) {
  constexpr size_t kN = AllTriples::kCount;
  std::vector<uint8_t> planes(3 * kN), bgr(3 * kN);
  for (size_t i = 0; i < kN; ++i) {
    const Px ycc = RgbToYcbcr709Ref(AllTriples::At(i));
    for (size_t c = 0; c < 3; ++c) planes[c * kN + i] = ycc[c];
  }
  const Zyl8u* const src[3] = {&planes[0], &planes[kN], &planes[2 * kN]};
  ASSERT_EQ(zyliYCbCrToBGR_709CSC_8u_P3C3R(src, AllTriples::kSide, bgr.data(), kSide3, kAllSize),
            zylStsOk);
  for (size_t i = 0; i < kN; ++i) std::swap(bgr[3 * i], bgr[3 * i + 2]);  // now R, G, B
  ExpectErrors("BT.709 per-pixel encoder + zyliYCbCrToBGR_709CSC_8u_P3C3R", bgr, {-3, -1, -3},
               {0, 1, 1}, {-1.17, -0.22, -1.29});
}

// BT.601: corner values of m: R -0.224..+0.195, G -0.095..+0.067, B -0.194..+0.165 (at
// white m = 255 (56296 x 76284 / 2^32 - 1) = -0.029). The forward rounds every channel by a
// half, so every e_k lies in (-1/2, 1/2] and averages 0.
//   R: +-(0.582 + 1.596 / 2) plus m = [-1.60, 1.58] -> error -2..1;
//   G: +-(0.582 + 0.392 / 2 + 0.813 / 2) plus m = [-1.28, 1.25] -> error -2..1;
//   B: +-(0.582 + 2.017 / 2) plus m = [-1.78, 1.76] -> error -2..1;
// each averaging the truncation's -1/2 (E[m] at mid-gray is -0.01). The BT.709 pair differs
// mainly by its encoder's chroma rounding, which pulls R and B down by a further 0.7 to 0.8.
TEST(YcbcrRoundTrip, Bt601StudioPairOverAllColors) {
  const AllTriples& all = Triples();
  std::vector<uint8_t> ycc(3 * AllTriples::kCount), rgb(3 * AllTriples::kCount);
  ASSERT_EQ(zyliRGBToYCbCr_8u_C3R(all.interleaved.data(), kSide3, ycc.data(), kSide3, kAllSize),
            zylStsOk);
  ASSERT_EQ(zyliYCbCrToRGB_8u_C3R(ycc.data(), kSide3, rgb.data(), kSide3, kAllSize), zylStsOk);
  ExpectErrors("BT.601 zyliRGBToYCbCr_8u_C3R + zyliYCbCrToRGB_8u_C3R", rgb, {-2, -2, -2}, {1, 1, 1},
               {-0.5, -0.5, -0.5});
}

// ------------------------------------------------------- argument checks --

INSTANTIATE_TEST_SUITE_P(Ycbcr, ArgCheck, ::testing::ValuesIn(RowsOf(kExports)), ExportRowName);

}  // namespace
}  // namespace zyl::test
