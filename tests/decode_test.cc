// 4:2:0, 4:2:2 and 4:1:1 (three-plane, two-plane, packed) and v210 to RGB/BGR: the 48 decoders
// against a reference written from the defining formulas, on every target, at widths around
// each target's vector block, heights 1 to 7, contiguous, padded, negative and zero steps and
// page-end placement; hand-worked answers per matrix; the deliberate oddities (the lone last
// pixel of an odd packed row, the filtered chroma of the _Filter member, the 5-6-5 v210
// colour); round trips through the encoders with bounds worked out below; the argument checks.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "include/zylcc.h"
#include "tests/support/arg_check.h"
#include "tests/support/generators.h"
#include "tests/support/guarded_image.h"
#include "tests/support/pixel_family.h"
#include "tests/support/sweep.h"
#include "tests/support/targets.h"

namespace zyl::test {
namespace {

using Img = GuardedImage<Zyl8u>;
using Px = std::array<int, 3>;  // the values of the R, G and B formulas, in that order

// ------------------------------------------------------------------- exports --

enum class Shape { k420P3, k420P2, k422P3, k422C2, k411P3 };
enum class Mat { k601, k601Packed, k709Csc, k709Hdtv, kYuv };

// What an export does, read from its name: source sampling and layout (420/422/411; P3, P2,
// C2), matrix (709CSC, 709HDTV, YUV; else BT.601, with its own constants for packed sources),
// chroma order (YCrCb, CbYCr), destination (C3, C4 = alpha argument, AC4 = alpha kept, P3),
// BGR order, _Filter, and no final R (steps implied by the width).
struct DecodeExport {
  ExportRow row;
  Shape shape;
  Mat mat;
  Format dst;
  bool alpha_arg, bgr, cr_first, cby_first, filter, whole;
};

void PrintTo(const DecodeExport& e, std::ostream* os) { *os << e.row.name; }

// ArgCall::param is the alpha value.
// Calls F with `args`, and the alpha value last when F takes one (C4 members).
template <auto F, class... Args>
ZylStatus WithAlpha(const ArgCall& a, Args... args) {
  if constexpr (std::is_invocable_v<decltype(F), Args..., Zyl8u>) {
    return F(args..., static_cast<Zyl8u>(a.param));
  } else {
    return F(args...);
  }
}

// Whether F takes these arguments, with or without the alpha value after them.
template <class Fn, class... Args>
constexpr bool kTakes = std::is_invocable_v<Fn, Args...> || std::is_invocable_v<Fn, Args..., Zyl8u>;

// Slot 0 the source (plane array with per-plane steps, luma image, packed image), slot 1 the
// chroma pairs of P2 members, the last slot the destination (an image or a plane array).
template <auto F>
ZylStatus Adapt(const ArgCall& a) {
  using Fn = decltype(F);
  using SrcPlanes = const Zyl8u* const*;
  const int* steps = a.Steps(0);
  const auto src = a.Planes<const Zyl8u>(0);
  const auto dst_planes = a.Planes<Zyl8u>(1);
  if constexpr (kTakes<Fn, SrcPlanes, const int*, Zyl8u*, int, ZylSize>) {
    return WithAlpha<F>(a, src, steps, a.Ptr<Zyl8u>(1), a.Step(1), a.size);
  } else if constexpr (std::is_invocable_v<Fn, SrcPlanes, const int*, Zyl8u* const*, int,
                                           ZylSize>) {
    return F(src, steps, dst_planes, a.Step(1), a.size);
  } else if constexpr (kTakes<Fn, const Zyl8u*, int, const Zyl8u*, int, Zyl8u*, int, ZylSize>) {
    return WithAlpha<F>(a, a.Ptr<const Zyl8u>(0), a.Step(0), a.Ptr<const Zyl8u>(1), a.Step(1),
                        a.Ptr<Zyl8u>(2), a.Step(2), a.size);
  } else if constexpr (kTakes<Fn, const Zyl8u*, int, Zyl8u*, int, ZylSize>) {
    return WithAlpha<F>(a, a.Ptr<const Zyl8u>(0), a.Step(0), a.Ptr<Zyl8u>(1), a.Step(1), a.size);
  } else if constexpr (std::is_invocable_v<Fn, const Zyl8u*, int, Zyl8u* const*, int, ZylSize>) {
    return F(a.Ptr<const Zyl8u>(0), a.Step(0), dst_planes, a.Step(1), a.size);
  } else if constexpr (std::is_invocable_v<Fn, SrcPlanes, Zyl8u* const*, ZylSize>) {
    return F(src, dst_planes, a.size);
  } else {
    return F(src, a.Ptr<Zyl8u>(1), a.size);
  }
}

DecodeExport Describe(const std::string& name, ArgCallFn call) {
  auto has = [&](const char* part) { return name.find(part) != std::string::npos; };
  const std::string layout = name.substr(name.rfind('_') + 1);  // e.g. P3C3R, C2P3R, P3
  const std::string out = layout.substr(2);                     // C3R, AC4R, R, P3R, ...
  DecodeExport e{ExportRow(name.c_str(), {}, call),
                 layout.rfind("P2", 0) == 0   ? Shape::k420P2
                 : layout.rfind("C2", 0) == 0 ? Shape::k422C2
                 : has("420")                 ? Shape::k420P3
                 : has("422")                 ? Shape::k422P3
                                              : Shape::k411P3,
                 has("709CSC")                ? Mat::k709Csc
                 : has("709HDTV")             ? Mat::k709Hdtv
                 : has("YUV")                 ? Mat::kYuv
                 : layout.rfind("C2", 0) == 0 ? Mat::k601Packed
                                              : Mat::k601,
                 out.rfind("C3", 0) == 0               ? kC3
                 : out.find("C4") != std::string::npos ? kC4
                                                       : kP3,
                 out == "C4R",
                 has("ToBGR"),
                 has("YCrCb"),
                 has("CbYCr"),
                 has("_Filter"),
                 name.back() != 'R'};
  const bool planar_src = e.shape != Shape::k420P2 && e.shape != Shape::k422C2;
  ArgSlot src = e.whole ? Planes(3).NoStep() : Planes(3).PerPlaneSteps();
  ArgSlot dst = e.dst.planes > 1 ? Planes(3) : Image(e.dst.channels);
  if (e.whole) dst = dst.NoStep();
  e.row.slots = planar_src                 ? std::vector<ArgSlot>{src, dst}
                : e.shape == Shape::k422C2 ? std::vector<ArgSlot>{Image(2), dst}
                                           : std::vector<ArgSlot>{Image(1), Image(1), dst};
  if (has("YCrCb420")) e.row = e.row.Order(CheckOrder::kSizeFirst);
  return e;
}

#define ZYL_DECODER(f) Describe(#f, Adapt<f>)
const DecodeExport kExports[] = {
    ZYL_DECODER(zyliCbYCr422ToBGR_709HDTV_8u_C2C3R),
    ZYL_DECODER(zyliCbYCr422ToBGR_709HDTV_8u_C2C4R),
    ZYL_DECODER(zyliCbYCr422ToBGR_8u_C2C4R),
    ZYL_DECODER(zyliCbYCr422ToRGB_8u_C2C3R),
    ZYL_DECODER(zyliYCbCr411ToBGR_8u_P3C3R),
    ZYL_DECODER(zyliYCbCr411ToBGR_8u_P3C4R),
    ZYL_DECODER(zyliYCbCr420ToBGR_709CSC_8u_P3C3R),
    ZYL_DECODER(zyliYCbCr420ToBGR_709HDTV_8u_P3C4R),
    ZYL_DECODER(zyliYCbCr420ToBGR_8u_P2C3R),
    ZYL_DECODER(zyliYCbCr420ToBGR_8u_P2C4R),
    ZYL_DECODER(zyliYCbCr420ToBGR_8u_P3C3R),
    ZYL_DECODER(zyliYCbCr420ToBGR_8u_P3C4R),
    ZYL_DECODER(zyliYCbCr420ToRGB_8u_P2C3R),
    ZYL_DECODER(zyliYCbCr420ToRGB_8u_P2C4R),
    ZYL_DECODER(zyliYCbCr420ToRGB_8u_P3C3R),
    ZYL_DECODER(zyliYCbCr422ToBGR_8u_C2C3R),
    ZYL_DECODER(zyliYCbCr422ToBGR_8u_C2C4R),
    ZYL_DECODER(zyliYCbCr422ToBGR_8u_P3C3R),
    ZYL_DECODER(zyliYCbCr422ToRGB_8u_C2C3R),
    ZYL_DECODER(zyliYCbCr422ToRGB_8u_C2C4R),
    ZYL_DECODER(zyliYCbCr422ToRGB_8u_C2P3R),
    ZYL_DECODER(zyliYCbCr422ToRGB_8u_P3C3R),
    ZYL_DECODER(zyliYCrCb420ToBGR_8u_P2C3R),
    ZYL_DECODER(zyliYCrCb420ToBGR_8u_P2C4R),
    ZYL_DECODER(zyliYCrCb420ToBGR_Filter_8u_P3C4R),
    ZYL_DECODER(zyliYCrCb420ToRGB_8u_P2C3R),
    ZYL_DECODER(zyliYCrCb420ToRGB_8u_P2C4R),
    ZYL_DECODER(zyliYCrCb420ToRGB_8u_P3C4R),
    ZYL_DECODER(zyliYCrCb422ToBGR_8u_C2C3R),
    ZYL_DECODER(zyliYCrCb422ToBGR_8u_C2C4R),
    ZYL_DECODER(zyliYCrCb422ToRGB_8u_C2C3R),
    ZYL_DECODER(zyliYCrCb422ToRGB_8u_C2C4R),
    ZYL_DECODER(zyliYCrCb422ToRGB_8u_C2P3R),
    ZYL_DECODER(zyliYUV420ToBGR_8u_P3C3R),
    ZYL_DECODER(zyliYUV420ToRGB_8u_P3),
    ZYL_DECODER(zyliYUV420ToRGB_8u_P3AC4R),
    ZYL_DECODER(zyliYUV420ToRGB_8u_P3C3),
    ZYL_DECODER(zyliYUV420ToRGB_8u_P3C3R),
    ZYL_DECODER(zyliYUV420ToRGB_8u_P3R),
    ZYL_DECODER(zyliYUV422ToRGB_8u_C2C3R),
    ZYL_DECODER(zyliYUV422ToRGB_8u_P3),
    ZYL_DECODER(zyliYUV422ToRGB_8u_P3AC4R),
    ZYL_DECODER(zyliYUV422ToRGB_8u_P3C3),
    ZYL_DECODER(zyliYUV422ToRGB_8u_P3C3R),
    ZYL_DECODER(zyliYUV422ToRGB_8u_P3R),
};
#undef ZYL_DECODER

// ----------------------------------------------------------------- reference --

int Clamp8(int64_t v) { return static_cast<int>(std::clamp<int64_t>(v, 0, 255)); }

// R = S[(kY Y + r_cr Cr' + off_r) >> 16], G = S[(kY Y - g_cb Cb' - g_cr Cr' + off_g) >> 16],
// B = S[(kY Y + b_cb Cb' + off_b) >> 16], Cb' = Cb - 128, Cr' = Cr - 128.
struct Matrix {
  int64_t y, r_cr, g_cb, g_cr, b_cb, off_r, off_g, off_b;
};
constexpr Matrix kMatrices[] = {
    // BT.601 studio: -1187776 = -16 x 76284 (the luma offset) + 32768 (the rounding half).
    {76284, 104595, 25690, 53281, 132186, -1187776, -1187776, -1187776},
    // Packed sources: every constant 2 lower; -1187744 = -16 x 76282 + 32768.
    {76282, 104593, 25689, 53279, 132184, -1187744, -1187744, -1187744},
    // BT.709 studio: 1.164, 1.793, 0.213, 0.533, 2.112 x 2^16.
    {76284, 117506, 13959, 34931, 138412, -1187776, -1187776, -1187776},
    // BT.709 full range: 1, 1.540, 0.183, 0.459, 1.816 x 2^16, no luma offset, a half on each.
    {65536, 100925, 11993, 30081, 119013, 32768, 32768, 32768},
    // Analogue YUV: 1, 1.140, 0.394, 0.581, 2.032 x 2^16; G has no rounding term.
    {65536, 74711, 25821, 38076, 133169, 32768, 0, 32768},
};

Px Convert(Mat m, int y, int cb, int cr) {
  const Matrix& k = kMatrices[static_cast<int>(m)];
  const int64_t yy = k.y * y, u = cb - 128, v = cr - 128;
  return {Clamp8(Shr(yy + k.r_cr * v + k.off_r, 16)),
          Clamp8(Shr(yy - k.g_cb * u - k.g_cr * v + k.off_g, 16)),
          Clamp8(Shr(yy + k.b_cb * u + k.off_b, 16))};
}

// Source images: luma and two chroma planes (chroma in the name's order), luma and chroma
// pairs, or one packed image. Chroma planes hold exactly the samples that are read (floor of
// the subsampled size, at least one), so at a page end a read past them faults; the 4:2:2
// whole-image members imply a chroma step of ceil(width / 2).
struct SrcShape {
  int w, h;
  Format f;
};
std::vector<SrcShape> SourceShapes(const DecodeExport& e, int w, int h) {
  const int w2 = std::max(1, w / 2), h2 = std::max(1, h / 2);
  switch (e.shape) {
    case Shape::k420P3:
      return {{w, h, kC1}, {w2, h2, kC1}, {w2, h2, kC1}};
    case Shape::k420P2:
      return {{w, h, kC1}, {w2, h2, kC2}};
    case Shape::k422P3: {
      const int cw = e.whole ? (w + 1) / 2 : w2;
      return {{w, h, kC1}, {cw, h, kC1}, {cw, h, kC1}};
    }
    case Shape::k411P3:
      return {{w, h, kC1}, {std::max(1, w / 4), h, kC1}, {std::max(1, w / 4), h, kC1}};
    case Shape::k422C2:
      return {{w, h, kC2}};
  }
  return {};
}

enum class Pixel { kUnwritten, kWritten, kLoneSwapped };

// Whole chroma blocks: 2 (4:1:1: 4) columns wide, 2 rows high in 4:2:0.
int BlockWidth(const DecodeExport& e) { return e.shape == Shape::k411P3 ? 4 : 2; }
int BlockHeight(const DecodeExport& e) {
  return e.shape == Shape::k420P3 || e.shape == Shape::k420P2 ? 2 : 1;
}

// Which pixels a conversion writes: its whole blocks; packed rows write every pixel, an odd
// last one with R and B swapped.
Pixel Written(const DecodeExport& e, int w, int h, int x, int y) {
  const int bw = BlockWidth(e), bh = BlockHeight(e);
  if (x < w / bw * bw && y < h / bh * bh) return Pixel::kWritten;
  return e.shape == Shape::k422C2 ? Pixel::kLoneSwapped : Pixel::kUnwritten;
}

// +35 when a planar source does not fill its last block; packed sources always 0.
ZylStatus ExpectedStatus(const DecodeExport& e, int w, int h) {
  const bool partial = w % BlockWidth(e) != 0 || h % BlockHeight(e) != 0;
  return partial && e.shape != Shape::k422C2 ? zylStsDoubleSize : zylStsOk;
}

struct Case {
  std::vector<std::unique_ptr<Img>> src;
  std::unique_ptr<Img> dst;
  Img::Snapshot before;
};

// Chroma value halfway between chroma rows k and k + 1 of a plane with `rows` rows, by the
// four-tap (-1, 9, 9, -1) / 16; taps outside the plane take its nearest row.
int Halfway(const Img& plane, int i, int k, int rows) {
  auto at = [&](int r) { return int64_t{plane.At(i, std::clamp(r, 0, rows - 1), 0)}; };
  return Clamp8(Shr(9 * (at(k) + at(k + 1)) - at(k - 1) - at(k + 2) + 8, 4));
}

std::optional<Px> Expected(const DecodeExport& e, const Case& c, int x, int y) {
  const int w = c.dst->width(), h = c.dst->height();
  const Pixel where = Written(e, w, h, x, y);
  if (where == Pixel::kUnwritten) return std::nullopt;
  const int cb_plane = e.cr_first ? 2 : 1, cr_plane = 3 - cb_plane;
  int luma, cb, cr;
  if (e.shape != Shape::k422C2) {
    const int i = x / BlockWidth(e), k = y / BlockHeight(e);  // the block's chroma sample
    luma = c.src[0]->At(x, y, 0);
    if (e.shape == Shape::k420P2) {
      cb = c.src[1]->At(i, k, e.cr_first ? 1 : 0);
      cr = c.src[1]->At(i, k, e.cr_first ? 0 : 1);
    } else if (e.filter && (y & 1)) {
      cb = Halfway(*c.src[cb_plane], i, k, h / 2);
      cr = Halfway(*c.src[cr_plane], i, k, h / 2);
    } else {
      cb = c.src[cb_plane]->At(i, k, 0);
      cr = c.src[cr_plane]->At(i, k, 0);
    }
  } else {
    // Pair i is bytes 4i..4i+3: Y0 C0 Y1 C1 or C0 Y0 C1 Y1, C0 = Cb (Cr for YCrCb). The lone
    // pixel has its Y and a C0; its C1 is the one of the pair before it, or its own C0 when
    // fewer than two pairs precede it.
    auto byte = [&](int k) { return int{c.src[0]->At(k / 2, y, k % 2)}; };
    const int y_at = e.cby_first ? 1 : 0, c_at = 1 - y_at, at = 4 * (x / 2);
    const bool lone = where == Pixel::kLoneSwapped;
    luma = byte(at + (lone ? 0 : 2 * (x & 1)) + y_at);
    const int c0 = byte(at + c_at);
    const int c1 = !lone ? byte(at + 2 + c_at) : w / 2 >= 2 ? byte(at - 2 + c_at) : c0;
    cb = e.cr_first ? c1 : c0;
    cr = e.cr_first ? c0 : c1;
  }
  Px p = Convert(e.mat, luma, cb, cr);
  if (where == Pixel::kLoneSwapped) std::swap(p[0], p[2]);
  return p;
}

// The destination byte of channel ch for the formula values p (nullopt: keeps its bytes).
std::optional<uint8_t> DstByte(const DecodeExport& e, const std::optional<Px>& p, int ch,
                               Zyl8u aval) {
  if (!p) return std::nullopt;
  if (ch == 3) return e.alpha_arg ? std::optional<uint8_t>(aval) : std::nullopt;
  return static_cast<uint8_t>((*p)[e.bgr ? 2 - ch : ch]);
}

// ------------------------------------------------------------------- running --

Case MakeCase(const DecodeExport& e, int w, int h, const StepPlan& plan, uint32_t seed) {
  Case c;
  const std::vector<SrcShape> shapes = SourceShapes(e, w, h);
  for (size_t i = 0; i < shapes.size(); ++i) {
    const Steps s = e.whole ? Steps::kPacked : plan.src[i];  // implied steps: contiguous only
    c.src.push_back(std::make_unique<Img>(shapes[i].w, shapes[i].h, shapes[i].f,
                                          ImageOptions{s, plan.src_place, seed + uint32_t(i)}));
  }
  c.dst = std::make_unique<Img>(
      w, h, e.dst, ImageOptions{e.whole ? Steps::kPacked : plan.dst[0], plan.dst_place, seed + 5});
  c.before = c.dst->Save();
  return c;
}

ZylStatus Call(const DecodeExport& e, const Case& c, int param) {
  std::vector<const Img*> images;
  for (const auto& img : c.src) images.push_back(img.get());
  images.push_back(c.dst.get());
  return CallOnImageList(e.row, param, {c.dst->width(), c.dst->height()}, images);
}

// Runs the export and checks its status and the whole destination memory against `want`.
template <class Want>
bool RunAndCheck(const DecodeExport& e, const Case& c, Zyl8u aval, Want want) {
  const int w = c.dst->width(), h = c.dst->height();
  EXPECT_EQ(Call(e, c, aval), ExpectedStatus(e, w, h));
  const ::testing::AssertionResult same = c.dst->Matches(
      c.before, [&](int x, int y, int ch) { return DstByte(e, want(x, y), ch, aval); });
  EXPECT_TRUE(same);
  return !::testing::Test::HasFailure();
}

class DecodeExports : public ::testing::TestWithParam<DecodeExport> {};

// -------------------------------------------------------- reference comparison --

// Height 1 writes nothing in 4:2:0 (+35); heights 3 and 7 leave an odd last row; height 4 takes
// the range ends and the chroma midpoint (every clamp) instead of random bytes. Widths 1 and 3
// take the packed lone pixel's own chroma for both, widths from 5 the chroma of the pair before
// it.
TEST_P(DecodeExports, MatchesReference) {
  const DecodeExport& e = GetParam();
  ForEachTarget([&](int) {
    Sweep(Plans::kCycled, {1, 2, 3, 4, 7}, SweepWidths(), [&](const SweepCase& s) {
      const Case c = MakeCase(e, s.width, s.height, s.plan, s.seed);
      std::mt19937 rng(s.seed);
      for (const auto& img : c.src) {
        if (s.height == 4) {
          img->Fill([&](int, int, int) { return Extremes8u()[rng() % Extremes8u().size()]; });
        } else {
          FillRandom(*img, s.seed + 99);
        }
      }
      return RunAndCheck(e, c, static_cast<Zyl8u>(s.seed * 37),
                         [&](int x, int y) { return Expected(e, c, x, y); });
    });
  });
}

// ------------------------------------------------------------- known answers --

// Flat (Y, Cb, Cr) images and the R, G, B of each matrix, by hand. Planar BT.601 and BT.709
// studio: yy = 76284 Y; packed BT.601: yy = 76282 Y (offsets -1187776 and -1187744).
//   Y 16: 1220544 - 1187776 = 32768 (packed 1220512 - 1187744 = 32768) -> 0.5 -> 0.
//   Y 235: 17926740 - 1187776 = 16738964 = 255.41 x 2^16 -> 255 (packed 16738526 -> 255).
//   Y 255, Cr 255 (Cr' 127): R = 19452420 + 104595 x 127 - 1187776 = 31548209 -> 481 -> 255;
//     G = 19452420 - 53281 x 127 - 1187776 = 11497957 -> 175; B = 18264644 -> 278 -> 255.
//     Packed: G = 19451910 - 6766433 - 1187744 = 11497733 -> 175. BT.709 studio: G =
//     19452420 - 34931 x 127 - 1187776 = 13828407 -> 211.
//   Y 100, Cb 50, Cr 200 (Cb' -78, Cr' 72): R = 7628400 + 7530840 - 1187776 = 13971464 -> 213;
//     G = 7628400 + 2003820 - 3836232 - 1187776 = 4608212 -> 70; B = 7628400 - 10310508 - 1187776
//     < 0 -> 0. Packed: 7628200 + 7530696 - 1187744 = 13971152 -> 213, G 4608110 -> 70. BT.709
//     studio: R = 7628400 + 8460432 - 1187776 = 14901056 -> 227; G = 7628400 + 1088802 -
//     2515032 - 1187776 = 5014394 -> 76.
// BT.709 full range (yy = 65536 Y, + 32768): Y 16 -> 16, Y 235 -> 235; Y 255, Cr 255: R =
//   16711680 + 12817475 + 32768 -> 451 -> 255, G = 16711680 - 3820287 + 32768 = 12924161 ->
//   197, B = 16744448 -> 255.5 -> 255; (100, 50, 200): R = 6553600 + 7266600 + 32768 =
//   13852968 -> 211, G = 6553600 + 935454 - 2165832 + 32768 = 5355990 -> 81, B < 0 -> 0.
// YUV (G without the half): Y 16 -> 16, 235 -> 235; Y 255, V 255: R = 16711680 + 9488297 +
//   32768 -> 400 -> 255, G = 16711680 - 4835652 = 11876028 -> 181, B -> 255; (100, 50, 200):
//   R = 6553600 + 5379192 + 32768 = 11965560 -> 182, G = 6553600 + 2014038 - 2741472 =
//   5826166 = 88.9 -> 88 (89 with a half), B < 0 -> 0.
struct Known {
  std::array<int, 3> in;  // Y, Cb, Cr
  std::array<Px, 5> out;  // per Mat
};
const Known kKnown[] = {
    {{16, 128, 128}, {{{0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {16, 16, 16}, {16, 16, 16}}}},
    {{235, 128, 128},
     {{{255, 255, 255}, {255, 255, 255}, {255, 255, 255}, {235, 235, 235}, {235, 235, 235}}}},
    {{255, 128, 255},
     {{{255, 175, 255}, {255, 175, 255}, {255, 211, 255}, {255, 197, 255}, {255, 181, 255}}}},
    {{100, 50, 200}, {{{213, 70, 0}, {213, 70, 0}, {227, 76, 0}, {211, 81, 0}, {182, 88, 0}}}},
};

// Sets every luma sample to y and every chroma sample to cb or cr, by its role.
void FillFlat(const DecodeExport& e, const Case& c, int y, int cb, int cr) {
  const int c0 = e.cr_first ? cr : cb, c1 = e.cr_first ? cb : cr;
  switch (e.shape) {
    case Shape::k422C2:  // bytes alternate luma and chroma; chroma alternates C0, C1
      c.src[0]->Fill([&](int x, int, int ch) {
        return static_cast<uint8_t>((ch == (e.cby_first ? 0 : 1)) ? (x & 1 ? c1 : c0) : y);
      });
      return;
    case Shape::k420P2:
      c.src[0]->Fill([&](int, int, int) { return static_cast<uint8_t>(y); });
      c.src[1]->Fill([&](int, int, int ch) { return static_cast<uint8_t>(ch ? c1 : c0); });
      return;
    default:
      for (int i = 0; i < 3; ++i) {
        const int v = i == 0 ? y : i == 1 ? c0 : c1;
        c.src[i]->Fill([&](int, int, int) { return static_cast<uint8_t>(v); });
      }
  }
}

// Odd sizes (the packed lone pixel, the unwritten last column and row), once in the per-pixel
// tails only and once through the vector bodies of every target.
TEST_P(DecodeExports, KnownAnswers) {
  const DecodeExport& e = GetParam();
  for (const Known& k : kKnown) {
    for (int w : {5, 131}) {
      ForEachTarget([&](int) {
        SCOPED_TRACE(::testing::Message() << "Y Cb Cr " << k.in[0] << " " << k.in[1] << " "
                                          << k.in[2] << ", width " << w);
        const Case c = MakeCase(e, w, 3, kStepPlans[1], 4);
        FillFlat(e, c, k.in[0], k.in[1], k.in[2]);
        RunAndCheck(e, c, 0xC3, [&](int x, int y) -> std::optional<Px> {
          const Pixel where = Written(e, w, 3, x, y);
          if (where == Pixel::kUnwritten) return std::nullopt;
          Px p = k.out[static_cast<int>(e.mat)];
          if (where == Pixel::kLoneSwapped) std::swap(p[0], p[2]);
          return p;
        });
      });
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Decode, DecodeExports, ::testing::ValuesIn(kExports), FamilyRowName());

// The lone last pixel of the BT.601 packed members, by hand (packed constants). Bytes by role
// C0 (Cb, or Cr for YCrCb) and C1:
//   width 3: pair (Y 16, C0 128, Y 16, C1 128) -> 0, 0, 0; lone Y 100, C0 200, and with one
//     pair before it its own 200 as C1: Cb' = Cr' = 72, yy = 7628200: R = 7628200 + 7530696 -
//     1187744 = 13971152 -> 213; G = 7628200 - 1849608 - 3836088 - 1187744 = 754760 -> 11;
//     B = 7628200 + 9517248 - 1187744 = 15957704 -> 243; stored swapped: 243, 11, 213.
//   width 5: pairs (16, 128, 16, 128) and (16, 128, 16, 60); the lone C1 is that 60.
//     Cb first: pair 1 Cb 128, Cr 60: R < 0, G = 32768 + 53279 x 68 = 3655740 -> 55, B 0;
//       lone Cb 200, Cr 60: R < 0 -> 0, G = 7628200 - 1849608 + 3622972 - 1187744 = 8213820
//       -> 125, B = 243; stored 243, 125, 0 (243, 11, 213 had it taken its own C0 as C1).
//     YCrCb: pair 1 Cr 128, Cb 60: G = 32768 + 25689 x 68 = 1779620 -> 27, R = B = 0;
//       lone Cr 200, Cb 60: R = 213, G = 7628200 + 1746852 - 3836088 - 1187744 = 4351220 ->
//       66, B < 0 -> 0; stored 0, 66, 213.
TEST(DecodePacked, LonePixelByHand) {
  for (const DecodeExport& e : kExports) {
    if (e.mat != Mat::k601Packed) continue;
    SCOPED_TRACE(e.row.name);
    const Px kZero{0, 0, 0};
    const std::vector<Px> want3 = {kZero, kZero, {243, 11, 213}};
    const std::vector<Px> want5 =
        e.cr_first ? std::vector<Px>{kZero, kZero, {0, 27, 0}, {0, 27, 0}, {0, 66, 213}}
                   : std::vector<Px>{kZero, kZero, {0, 55, 0}, {0, 55, 0}, {243, 125, 0}};
    for (const auto& [w, want] : {std::pair{3, want3}, std::pair{5, want5}}) {
      // Role order Y C0 Y C1 per pair, then the lone Y C0.
      const std::vector<int> row =
          w == 3 ? std::vector<int>{16, 128, 16, 128, 100, 200}
                 : std::vector<int>{16, 128, 16, 128, 16, 128, 16, 60, 100, 200};
      ForEachTarget([&](int) {
        const Case c = MakeCase(e, w, 2, kStepPlans[0], 5);
        c.src[0]->Fill([&](int x, int, int ch) {
          // Cb Y0 Cr Y1 swaps each (Y, C) byte pair of the role order.
          return static_cast<uint8_t>(row[2 * x + (e.cby_first ? 1 - ch : ch)]);
        });
        RunAndCheck(e, c, 0x11, [&](int x, int) { return std::optional<Px>(want[x]); });
      });
    }
  }
}

// zyliYCrCb420ToBGR_Filter_8u_P3C4R by hand: Y 16, Cb 128 everywhere, Cr rows 128, 128, 240,
// 240. Even luma rows take their chroma row: 128 -> 0, 0, 0; 240 (Cr' 112): R = 32768 +
// 11714640 = 11747408 -> 179. Odd rows take the filtered value between rows k and k + 1:
//   k 0: (9 x 256 - 128 - 240 + 8) >> 4 = 1944 >> 4 = 121 (Cr' -7): R < 0, G = 32768 + 372967
//        -> 6;
//   k 1: (9 x 368 - 128 - 240 + 8) >> 4 = 184: R = 32768 + 5857320 = 5890088 -> 89, G < 0;
//   k 2: (9 x 480 - 128 - 240 + 8) >> 4 = 247 (row 4 -> 3): R = 32768 + 12446805 -> 190;
//   k 3: (9 x 480 - 240 - 240 + 8) >> 4 = 240 (rows 4, 5 -> 3): R = 179.
// Plain replication would give 0, 179, 179 on rows 1, 3, 5.
TEST(DecodeFilter, VerticalHalfSampleByHand) {
  const DecodeExport& e = *std::find_if(std::begin(kExports), std::end(kExports),
                                        [](const DecodeExport& x) { return x.filter; });
  const Px kRows[8] = {{0, 0, 0},   {0, 6, 0},   {0, 0, 0},   {89, 0, 0},
                       {179, 0, 0}, {190, 0, 0}, {179, 0, 0}, {179, 0, 0}};
  for (int w : {4, 130}) {
    ForEachTarget([&](int) {
      const Case c = MakeCase(e, w, 8, kStepPlans[1], 6);
      FillFlat(e, c, 16, 128, 128);
      c.src[1]->Fill([](int, int y, int) { return static_cast<uint8_t>(y < 2 ? 128 : 240); });
      RunAndCheck(e, c, 0x80, [&](int, int y) { return std::optional<Px>(kRows[y]); });
    });
  }
}

// ----------------------------------------------------------------------- v210 --

using V210Fn = ZylStatus (*)(const Zyl32u*, int, Zyl16u*, int, ZylSize);
enum class V210Out { kGray, kRgb565, kBgr565 };

// Word and bit offset of the Y of pixel j (0..5) of a group, and of the Cb and Cr of its pair.
constexpr int kYAt[6][2] = {{0, 10}, {1, 0}, {1, 20}, {2, 10}, {3, 0}, {3, 20}};
constexpr int kCbAt[3][2] = {{0, 0}, {1, 10}, {2, 20}};
constexpr int kCrAt[3][2] = {{0, 20}, {2, 0}, {3, 10}};

int Field(const Zyl32u* group, const int (&at)[2]) { return (group[at[0]] >> at[1]) & 0x3FF; }

// Single precision in the defined order, rounded to nearest even, clamped to 5-6-5.
uint16_t V210Value(V210Out out, int y, int cb, int cr) {
  if (out == V210Out::kGray) return static_cast<uint16_t>(y);
  const float fy = static_cast<float>(y), u = static_cast<float>(cb) - 512.0f,
              v = static_cast<float>(cr) - 512.0f;
  const float r = fy + 1.54f * v, g = fy - 0.183f * u - 0.459f * v, b = fy + 1.816f * u;
  auto q = [](float f, int hi) { return std::clamp(static_cast<int>(std::nearbyint(f)), 0, hi); };
  const int first = q(out == V210Out::kRgb565 ? r : b, 31),
            last = q(out == V210Out::kRgb565 ? b : r, 31);
  return static_cast<uint16_t>(first << 11 | q(g, 63) << 5 | last);
}

struct V210Export {
  ExportRow row;
  V210Fn fn;
  V210Out out;
};

// Steps in words and elements; the shared table's byte steps are whole rows of each.
template <V210Fn F>
ZylStatus AdaptV210(const ArgCall& a) {
  return F(a.Ptr<const Zyl32u>(0), a.Step(0) / 4, a.Ptr<Zyl16u>(1), a.Step(1) / 2, a.size);
}
#define ZYL_V210(f, out) \
  V210Export { ExportRow(#f, {Image(4).NoStep(), Image(2).NoStep()}, AdaptV210<f>), f, out }
const V210Export kV210[] = {
    ZYL_V210(zyliYUV422v210ToGray_709HDTV_32u16u_C3C1, V210Out::kGray),
    ZYL_V210(zyliYUV422v210ToRGB_709HDTV_32u16u_C3, V210Out::kRgb565),
    ZYL_V210(zyliYUV422v210ToBGR_709HDTV_32u16u_C3, V210Out::kBgr565),
};
#undef ZYL_V210

constexpr uint32_t Words(int a, int b, int c, uint32_t top = 0) {
  return static_cast<uint32_t>(a) | static_cast<uint32_t>(b) << 10 |
         static_cast<uint32_t>(c) << 20 | top << 30;
}

// Runs `e` on src (whole groups of words per row) into a guarded w x h destination.
bool RunV210(const V210Export& e, const GuardedImage<Zyl32u>& src, int w, int h,
             ImageOptions dst_opt) {
  GuardedImage<Zyl16u> dst(w, h, kC1, dst_opt);
  const auto before = dst.Save();
  EXPECT_EQ(e.fn(src.Ptr(), src.Step() / 4, dst.Ptr(), dst.Step() / 2, {w, h}), zylStsOk);
  EXPECT_TRUE(dst.Matches(before, [&](int x, int y, int) -> std::optional<Zyl16u> {
    const Zyl32u* group = &src.At(4 * (x / 6), y, 0);
    const int j = x % 6;
    return V210Value(e.out, Field(group, kYAt[j]), Field(group, kCbAt[j / 2]),
                     Field(group, kCrAt[j / 2]));
  }));
  return !::testing::Test::HasFailure();
}

// Fields drawn from the whole range, near 0 and near the chroma midpoint, so that many
// colours stay inside 5-6-5 and are not all clamped; bits 30-31 random (ignored).
TEST(DecodeV210, MatchesReference) {
  for (const V210Export& e : kV210) {
    SCOPED_TRACE(e.row.name);
    uint32_t seed = 3;
    for (int h : {1, 3}) {
      for (int w : SweepWidths()) {
        SCOPED_TRACE(::testing::Message() << w << "x" << h);
        ++seed;
        const Steps steps = seed & 1 ? Steps::kPacked : Steps::kPadded;
        const Placement place = seed & 2 ? Placement::kPageEnd : Placement::kHeap;
        GuardedImage<Zyl32u> src(4 * ((w + 5) / 6), h, kC1, {steps, place, seed});
        std::mt19937 rng(seed);
        auto field = [&] {
          const int kind = static_cast<int>(rng() % 3);
          return kind == 0   ? static_cast<int>(rng() % 1024)
                 : kind == 1 ? static_cast<int>(rng() % 64)
                             : 480 + static_cast<int>(rng() % 64);
        };
        src.Fill([&](int, int, int) { return Words(field(), field(), field(), rng() & 3); });
        if (!RunV210(e, src, w, h, {steps, place, seed + 1})) return;
      }
    }
  }
}

// Width 7 = one group and a one-pixel partial group from word 0 of the next group (its other
// words hold values that would show if they were read for pixel 6). By hand (floats):
//   pixels 0, 1: Y 1023, Cb = Cr = 512: every field clamps to its top: 0xFFFF; gray 1023.
//   pixels 2, 3: Y 20 and 21, Cb 522, Cr 507 (Cb' 10, Cr' -5): R = 20 - 7.7 = 12.3 -> 12,
//     G = 20 - 1.83 + 2.295 = 20.465 -> 20, B = 20 + 18.16 -> 31: RGB 12 << 11 | 20 << 5 | 31
//     = 25247, BGR 31 << 11 | 20 << 5 | 12 = 64140; Y 21: 13, 21, 31: 27327 and 64173.
//   pixels 4, 5: Y 0 and 1, Cb = Cr = 0 (-512): R, B < 0 -> 0; G = 0 + 93.696 + 235.008 -> 63:
//     63 << 5 = 2016 in both.
//   pixel 6: Y 20, Cb 522, Cr 507 again: 25247 and 64140; gray 20.
TEST(DecodeV210, SevenPixelsByHand) {
  const uint32_t kRow[8] = {Words(512, 1023, 512, 3), Words(1023, 522, 20),
                            Words(507, 21, 0),        Words(0, 0, 1, 1),
                            Words(522, 20, 507),      Words(1000, 1000, 1000),
                            Words(1000, 1000, 1000),  Words(1000, 1000, 1000)};
  const uint16_t kWant[3][7] = {{1023, 1023, 20, 21, 0, 1, 20},
                                {0xFFFF, 0xFFFF, 25247, 27327, 2016, 2016, 25247},
                                {0xFFFF, 0xFFFF, 64140, 64173, 2016, 2016, 64140}};
  for (const V210Export& e : kV210) {
    SCOPED_TRACE(e.row.name);
    GuardedImage<Zyl32u> src(8, 2, kC1, {Steps::kPadded, Placement::kPageEnd, 8});
    src.Fill([&](int x, int, int) { return kRow[x]; });
    GuardedImage<Zyl16u> dst(7, 2, kC1, {Steps::kPadded, Placement::kPageEnd, 9});
    const auto before = dst.Save();
    EXPECT_EQ(e.fn(src.Ptr(), src.Step() / 4, dst.Ptr(), dst.Step() / 2, {7, 2}), zylStsOk);
    EXPECT_TRUE(dst.Matches(before, [&](int x, int, int) {
      return std::optional<Zyl16u>(kWant[static_cast<int>(e.out)][x]);
    }));
  }
}

// Steps below 1 are reported as size errors (-6), after the pointers (-8); nothing written.
TEST(DecodeV210, StepsBelowOneAreSizeErrors) {
  for (const V210Export& e : kV210) {
    SCOPED_TRACE(e.row.name);
    std::vector<Zyl32u> src(8, Words(512, 100, 512));
    std::vector<Zyl16u> dst(16, 0x5A5A);
    const std::pair<int, int> kBadSteps[] = {{0, 8}, {-1, 8}, {8, 0}, {8, -8}};
    for (const auto& [src_step, dst_step] : kBadSteps) {
      EXPECT_EQ(e.fn(src.data(), src_step, dst.data(), dst_step, {6, 2}), zylStsSizeErr);
      EXPECT_EQ(e.fn(nullptr, src_step, dst.data(), dst_step, {6, 2}), zylStsNullPtrErr);
    }
    EXPECT_EQ(dst, std::vector<Zyl16u>(16, 0x5A5A));
  }
}

// ---------------------------------------------------------------- round trips --

// Colours on a grid of 86 levels (0, 3, ..., 255) per channel, each as a flat block of bw x bh
// pixels, 86 x 86 blocks a row: the chroma of a block is then the chroma of its one colour.
constexpr int kLevels = 86;
struct FlatImage {
  int w, h;
  std::vector<uint8_t> rgb;
  std::array<int, 3> At(int x, int y) const {
    const uint8_t* p = &rgb[3 * (static_cast<size_t>(y) * w + x)];
    return {p[0], p[1], p[2]};
  }
};
FlatImage FlatBlocks(int bw, int bh) {
  FlatImage img{bw * kLevels * kLevels, bh * kLevels, {}};
  img.rgb.resize(3 * static_cast<size_t>(img.w) * img.h);
  for (int y = 0; y < img.h; ++y) {
    for (int x = 0; x < img.w; ++x) {
      const int block = y / bh * kLevels * kLevels + x / bw;
      uint8_t* p = &img.rgb[3 * (static_cast<size_t>(y) * img.w + x)];
      p[0] = static_cast<uint8_t>(3 * (block / (kLevels * kLevels)));
      p[1] = static_cast<uint8_t>(3 * (block / kLevels % kLevels));
      p[2] = static_cast<uint8_t>(3 * (block % kLevels));
    }
  }
  return img;
}

// Decoded minus original per channel lies in [lo, hi] wherever `use` holds.
template <class Use>
void ExpectErrorsWithin(const char* what, const FlatImage& in, const std::vector<uint8_t>& back,
                        std::array<double, 3> lo, std::array<double, 3> hi, Use use) {
  ErrorRange range;
  for (int y = 0; y < in.h; ++y) {
    for (int x = 0; x < in.w; ++x) {
      if (!use(in.At(x, y))) continue;
      for (int c = 0; c < 3; ++c)
        range.Add(c, in.At(x, y)[c], back[3 * (static_cast<size_t>(y) * in.w + x) + c]);
    }
  }
  range.Expect(what, lo, hi);
}

// Encodes flat 2x2 blocks of every grid colour to three 4:2:0 planes and decodes them back.
template <class Use>
void RoundTrip420(const char* what,
                  ZylStatus (*encode)(const Zyl8u*, int, Zyl8u* const*, const int*, ZylSize),
                  ZylStatus (*decode)(const Zyl8u* const*, const int*, Zyl8u*, int, ZylSize),
                  std::array<double, 3> lo, std::array<double, 3> hi, Use use) {
  const FlatImage in = FlatBlocks(2, 2);
  std::vector<uint8_t> y(static_cast<size_t>(in.w) * in.h), c1(y.size() / 4), c2(y.size() / 4),
      back(3 * y.size());
  Zyl8u* const planes[3] = {y.data(), c1.data(), c2.data()};
  const int steps[3] = {in.w, in.w / 2, in.w / 2};
  ASSERT_EQ(encode(in.rgb.data(), 3 * in.w, planes, steps, {in.w, in.h}), zylStsOk);
  ASSERT_EQ(decode(planes, steps, back.data(), 3 * in.w, {in.w, in.h}), zylStsOk);
  ExpectErrorsWithin(what, in, back, lo, hi, use);
}

// Why the bounds. The decoded channel before its rounding is v = T + m + sum w_k e_k: T the
// original, e_k the encoder's rounding error of Y, Cb, Cr (or U, V), w_k the decoder weight on
// it (1.164 on Y, 1.596 on Cr for R, ...), m = (decoder x encoder - I) RGB, linear in RGB and so
// extreme at the cube's corners: for BT.601 (planar) R -0.224..+0.195, G -0.095..+0.067,
// B -0.194..+0.165, and (packed) R -0.231..+0.195, G -0.103..+0.068, B -0.200..+0.164, worked
// per corner with the weights. The decoders round (floor(v + 1/2)); the clamp only moves the
// result toward T.
//
// 4:2:0 on flat blocks: e_Y in (-1/2, 1/2]; the block chroma adds 2^15 at the >> 18 scale, an
// eighth: e_C in (-7/8, 1/8].
//   R: [-0.224 - 0.582 - 1.596 x 7/8, 0.195 + 0.582 + 1.596 / 8] + 1/2 = [-1.70, 1.48] -> -2..1
//   G: -0.392 e_Cb - 0.813 e_Cr in [-0.151, 1.054]: [-0.33, 2.20] -> -1..2
//   B: [-0.194 - 0.582 - 2.017 x 7/8, 0.165 + 0.582 + 2.017 / 8] + 1/2 = [-2.04, 1.50] -> -3..1
TEST(DecodeRoundTrip, YCbCr420FlatBlocks) {
  RoundTrip420("BT.601 4:2:0", zyliRGBToYCbCr420_8u_C3P3R, zyliYCbCr420ToRGB_8u_P3C3R, {-2, -1, -3},
               {1, 2, 1}, [](auto) { return true; });
}

// Packed 4:2:2 on flat pairs: the pair loop rounds Y0 (e in (-1/2, 1/2]) and truncates Y1
// (e in (-1, 0]); the pair chroma adds a half: e_C in (-1/2, 1/2]. Packed decoder weights.
//   R: Y0 [-0.231 - 0.582 - 0.798, 0.195 + 0.582 + 0.798] + 1/2 = [-1.11, 2.08] -> -2..2;
//      Y1 [-0.231 - 1.164 - 0.798, 0.195 + 0.798] + 1/2 = [-1.69, 1.49] -> -2..1
//   G: chroma +-(0.196 + 0.407): Y0 [-0.79, 1.75] -> -1..1; Y1 [-1.37, 1.17] -> -2..1
//   B: chroma +-1.008: Y0 [-1.29, 2.25] -> -2..2; Y1 [-1.87, 1.67] -> -2..1
TEST(DecodeRoundTrip, YCbCr422PackedFlatPairs) {
  const FlatImage in = FlatBlocks(2, 1);
  std::vector<uint8_t> packed(2 * static_cast<size_t>(in.w) * in.h), back(in.rgb.size());
  ASSERT_EQ(
      zyliRGBToYCbCr422_8u_C3C2R(in.rgb.data(), 3 * in.w, packed.data(), 2 * in.w, {in.w, in.h}),
      zylStsOk);
  ASSERT_EQ(
      zyliYCbCr422ToRGB_8u_C2C3R(packed.data(), 2 * in.w, back.data(), 3 * in.w, {in.w, in.h}),
      zylStsOk);
  ExpectErrorsWithin("BT.601 packed 4:2:2", in, back, {-2, -2, -2}, {2, 1, 2},
                     [](auto) { return true; });
}

// Analogue YUV 4:2:0 on flat blocks. Encoder: Y = (4899 R + 9617 G + 1868 B + 2) >> 14, so
// e_Y in (-1, 0.0001]; U = ((4 (B - Y*) floored) x 8061 >> 16), V likewise with 14369: with
// d = B - Y*, U' lies in (0.4920 d - 1 - 0.123, 0.4920 d], V' in (0.8770 (R - Y*) - 1.219, ...];
// V saturates (0..255) where 0.877 |R - Y*| passes 127, so those colours are left out. m:
// R +-0.037, G +-0.092, B +-0.056. Decoder: R, B rounded, G truncated.
//   R: (-0.037 - 1 - 1.140 x 1.219, 0.037] + 1/2 = (-1.93, 0.54] -> -2..0
//   G: (-0.092 - 1, 0.092 + 0.394 x 1.123 + 0.581 x 1.219] = (-1.09, 1.24) -> -2..1
//   B: (-0.056 - 1 - 2.032 x 1.123, 0.056] + 1/2 = (-2.84, 0.56] -> -3..0
TEST(DecodeRoundTrip, Yuv420FlatBlocks) {
  RoundTrip420("YUV 4:2:0", zyliRGBToYUV420_8u_C3P3R, zyliYUV420ToRGB_8u_P3C3R, {-2, -2, -3},
               {0, 1, 0}, [](std::array<int, 3> p) {
                 const double luma = 0.299 * p[0] + 0.587 * p[1] + 0.114 * p[2];
                 return std::abs(0.877 * (p[0] - luma)) <= 126.0;
               });
}

// ------------------------------------------------------------ argument checks --

std::vector<ExportRow> ArgRows() {
  std::vector<ExportRow> rows = RowsOf(kExports);
  for (const V210Export& e : kV210) rows.push_back(e.row);
  return rows;
}

INSTANTIATE_TEST_SUITE_P(Decode, ArgCheck, ::testing::ValuesIn(ArgRows()), ExportRowName);

}  // namespace
}  // namespace zyl::test
