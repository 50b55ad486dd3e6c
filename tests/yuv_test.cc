// RGB <-> YUV at full resolution: the ten exports against hand-worked values
// and against a per-pixel reference written from the defining formulas, on
// every target, at widths around each target's vector block, with padded,
// negative, zero and contiguous steps, and exhaustively over all 2^24 inputs.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "include/zylcc.h"
#include "tests/support/every_triple.h"
#include "tests/support/family8u.h"

namespace zyl::test {
namespace {

using Px = Px8;

// ------------------------------------------------------------ reference --

int64_t Shr16(int64_t v) { return Shr(v, 16); }
uint8_t Clamp(int64_t v) { return static_cast<uint8_t>(std::clamp<int64_t>(v, 0, 255)); }

Px RgbToYuvRef(Px in) {
  const int64_t r = in[0], g = in[1], b = in[2];
  const int64_t s = 19595 * r + 38470 * g + 7471 * b;
  const int64_t db = Shr16(b * 65536 - s + 32768);
  const int64_t dr = Shr16(r * 65536 - s + 32768);
  return {static_cast<uint8_t>(Shr16(s + 32768)),
          static_cast<uint8_t>(Shr16(db * 32244) + 128),  // low 8 bits, no clamp
          Clamp(Shr16(dr * 57475) + 128)};
}

Px YuvToRgbRef(Px in) {
  const int64_t y = int64_t{in[0]} * 65536, u = in[1] - 128, v = in[2] - 128;
  return {Clamp(Shr16(y + v * 74711 + 32768)), Clamp(Shr16(y - u * 25821 - v * 38076)),
          Clamp(Shr16(y + u * 133169 + 32768))};
}

// ------------------------------------------------------- export adapters --

const Export8u kExports[] = {
    ZYL_ROW8U(zyliRGBToYUV_8u_C3R, 1, kC3, kC3),
    ZYL_ROW8U(zyliRGBToYUV_8u_AC4R, 1, kC4, kC4),
    ZYL_ROW8U(zyliRGBToYUV_8u_C3P3R, 1, kC3, kP3),
    ZYL_ROW8U(zyliRGBToYUV_8u_AC4P4R, 1, kC4, kP4, Alpha::kFromSource),
    ZYL_ROW8U(zyliRGBToYUV_8u_P3R, 1, kP3, kP3),
    ZYL_ROW8U(zyliYUVToRGB_8u_C3R, 0, kC3, kC3),
    ZYL_ROW8U(zyliYUVToRGB_8u_AC4R, 0, kC4, kC4),
    ZYL_ROW8U(zyliYUVToRGB_8u_C3C4R, 0, kC3, kC4, Alpha::kArgument),
    ZYL_ROW8U(zyliYUVToRGB_8u_P3C3R, 0, kP3, kC3),
    ZYL_ROW8U(zyliYUVToRGB_8u_P3R, 0, kP3, kP3),
};

class YuvExports : public ::testing::TestWithParam<Export8u> {};

// ---------------------------------------------------------- known answers --

// RGB -> YUV, worked by hand. S = 19595R + 38470G + 7471B; Y = (S + 32768) >> 16;
// dB = (65536B - S + 32768) >> 16, U = (dB * 32244 >> 16) + 128;
// dR = (65536R - S + 32768) >> 16, V = clamp((dR * 57475 >> 16) + 128).
const Known8u kToYuv[] = {
    // Gray g: S = 65536g, so Y = g and dB = dR = 32768 >> 16 = 0, U = V = 128.
    {{0, 0, 0}, {0, 128, 128}},
    {{1, 1, 1}, {1, 128, 128}},
    {{128, 128, 128}, {128, 128, 128}},
    {{255, 255, 255}, {255, 128, 128}},
    // Red: S = 255 * 19595 = 4996725; Y = 5029493 >> 16 = 76 (76 * 65536 = 4980736).
    // dB = -4963957 >> 16 = floor(-75.74) = -76; -76 * 32244 = -2450544 >> 16 =
    // floor(-37.39) = -38 (a truncating shift would give -37), U = 90.
    // dR = 11747723 >> 16 = 179; 179 * 57475 = 10288025 >> 16 = 156, V = 284 -> 255.
    {{255, 0, 0}, {76, 90, 255}},
    // Green: S = 255 * 38470 = 9809850; Y = 9842618 >> 16 = 150.
    // dB = dR = -9777082 >> 16 = floor(-149.19) = -150;
    // U: -150 * 32244 = -4836600 >> 16 = floor(-73.8) = -74, U = 54;
    // V: -150 * 57475 = -8621250 >> 16 = floor(-131.55) = -132, V = -4 -> 0.
    {{0, 255, 0}, {150, 54, 0}},
    // Blue: S = 255 * 7471 = 1905105; Y = 1937873 >> 16 = 29.
    // dB = 14839343 >> 16 = 226 (the largest |dB|); 226 * 32244 = 7287144 >> 16 = 111,
    // U = 239 with no clamp. dR = -1872337 >> 16 = -29; -29 * 57475 = -1666775 >> 16 = -26,
    // V = 102.
    {{0, 0, 255}, {29, 239, 102}},
};

// YUV -> RGB, worked by hand: u = U - 128, v = V - 128, y = 65536Y;
// R = (y + 74711v + 32768) >> 16, G = (y - 25821u - 38076v) >> 16 (no rounding
// term), B = (y + 133169u + 32768) >> 16, each clamped.
const Known8u kToRgb[] = {
    // u = v = 0: R = B = (65536Y + 32768) >> 16 = Y and G = Y.
    {{0, 128, 128}, {0, 0, 0}},
    {{255, 128, 128}, {255, 255, 255}},
    {{128, 128, 128}, {128, 128, 128}},
    // Y = 128, v = -1: R = (8388608 - 74711 + 32768) >> 16 = 8346665 >> 16 = 127;
    // G = (8388608 + 38076) >> 16 = 128.58 -> 128, where a rounding term would give 129;
    // B = 128.
    {{128, 128, 127}, {127, 128, 128}},
    // Y = 128, u = v = -1: G = (8388608 + 25821 + 38076) = 8452505 >> 16 = 128 (rounded:
    // 8485273 >> 16 = 129); B = (8388608 - 133169 + 32768) = 8288207 >> 16 = 126.
    {{128, 127, 127}, {127, 128, 126}},
    // u = v = -128: R = (-9563008 + 32768) < 0 -> 0; G = 128 * 25821 + 128 * 38076 =
    // 3305088 + 4873728 = 8178816 >> 16 = 124.8 -> 124 (rounded: 125); B < 0 -> 0.
    {{0, 0, 0}, {0, 124, 0}},
    // u = v = 127: R = 16711680 + 9488297 + 32768 >> 16 = 400 -> 255;
    // G = 16711680 - 3279267 - 4835652 = 8596761 >> 16 = 131; B = 513 -> 255.
    {{255, 255, 255}, {255, 131, 255}},
};

// The known pixels side by side in a row long enough for two AVX-512 blocks
// and a tail, so vector body and per-pixel tail both meet each of them.
TEST_P(YuvExports, KnownAnswers) {
  const Export8u& e = GetParam();
  ExpectKnown8u(e,
                e.kind ? std::vector<Known8u>(std::begin(kToYuv), std::end(kToYuv))
                       : std::vector<Known8u>(std::begin(kToRgb), std::end(kToRgb)),
                [](Px8 p) { return p; });
}

// -------------------------------------------------- reference comparison --

TEST_P(YuvExports, MatchesReference) {
  ExpectMatchesReference8u(GetParam(), GetParam().kind ? RgbToYuvRef : YuvToRgbRef);
}

INSTANTIATE_TEST_SUITE_P(Yuv, YuvExports, ::testing::ValuesIn(kExports), FamilyRowName());

// ------------------------------------------------------------ exhaustive --

TEST(YuvExhaustive, EveryRgbTriple) {
  ExhaustiveC3<zyliRGBToYUV_8u_C3R>("zyliRGBToYUV_8u_C3R", RgbToYuvRef);
}

TEST(YuvExhaustive, EveryYuvTriple) {
  ExhaustiveC3<zyliYUVToRGB_8u_C3R>("zyliYUVToRGB_8u_C3R", YuvToRgbRef);
}

// ------------------------------------------------------- argument checks --

INSTANTIATE_TEST_SUITE_P(Yuv, ArgCheck, ::testing::ValuesIn(RowsOf(kExports)), ExportRowName);

}  // namespace
}  // namespace zyl::test
