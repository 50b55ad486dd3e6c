// YCoCg: the 26 exports against a per-pixel reference written from the
// defining formulas and against hand-worked values, on every target; the
// lifting pairs lossless (every 8-bit triple, dense 16-bit grids); the
// measured round trip of the 8-bit-plane pair; and the family's check order.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "include/zylcc.h"
#include "tests/support/every_triple.h"
#include "tests/support/generators.h"
#include "tests/support/pixel_family.h"

namespace zyl::test {
namespace {

using Triple = std::array<int64_t, 3>;

// ------------------------------------------------------------ reference --

// Floor division and the low 16 bits, spelled out rather than shifted/cast.
int64_t Floor(int64_t a, int64_t d) { return a >= 0 ? a / d : -((-a + d - 1) / d); }
int64_t Low16(int64_t v) {
  const int64_t m = ((v % 65536) + 65536) % 65536;
  return m >= 32768 ? m - 65536 : m;
}

enum class Tf { kPlain, kRev, kBytes };  // kBytes: the 8-bit-plane RGB pair

// (B, G, R) -> (Y, Co, Cg) before storing.
Triple Forward(Tf tf, Triple bgr) {
  const int64_t b = bgr[0], g = bgr[1], r = bgr[2];
  if (tf == Tf::kPlain)
    return {Floor(r + 2 * g + b + 2, 4), Floor(r - b + 1, 2), Floor(2 * g - r - b + 2, 4)};
  if (tf == Tf::kBytes)
    return {Floor(r + 2 * g + b + 1, 4), Floor(r - b, 2) + 128, Floor(2 * g - r - b + 1, 4) + 128};
  const int64_t co = r - b, t = b + Floor(co, 2), cg = g - t;
  return {t + Floor(cg, 2), co, cg};
}

// (Y, Co, Cg) -> (B, G, R) before storing; the plain sums wrap to 16 bits.
Triple Inverse(Tf tf, Triple ycc) {
  const int64_t y = ycc[0], co = ycc[1] - (tf == Tf::kBytes ? 128 : 0),
                cg = ycc[2] - (tf == Tf::kBytes ? 128 : 0);
  if (tf != Tf::kRev) return {Low16(y - co - cg), Low16(y + cg), Low16(y + co - cg)};
  const int64_t t = y - Floor(cg, 2), g = cg + t, b = t - Floor(co, 2);
  return {b, g, b + co};
}

// How an element keeps a value: 8-bit clamps, 16-bit wraps, 32-bit holds it.
template <class T>
T Store(int64_t v) {
  if constexpr (sizeof(T) == 1) return static_cast<T>(std::clamp<int64_t>(v, 0, 255));
  if constexpr (sizeof(T) == 2) return static_cast<T>(Low16(v));
  return static_cast<T>(v);
}

// ---------------------------------------------------------- export table --

struct Export {
  ExportRow row;
  Tf tf;
  bool forward;
  Format pixels;  // kC3 or kC4; the other side is kP3
  void (*check)(const Export&);
  void (*known)(const Export&, Triple in, Triple out);
};
void PrintTo(const Export& e, std::ostream* os) { *os << e.row.name; }

// Memory channels of a pixel side as (B, G, R), and back.
Triple Bgr(const Export& e, Triple c) { return e.tf == Tf::kBytes ? Triple{c[2], c[1], c[0]} : c; }

template <class Out>
Triple Expected(const Export& e, Triple in) {
  const Triple out = e.forward ? Forward(e.tf, Bgr(e, in)) : Bgr(e, Inverse(e.tf, in));
  return {Store<Out>(out[0]), Store<Out>(out[1]), Store<Out>(out[2])};
}

// One call on guarded images, each output pixel want(input pixel); the whole
// destination memory is compared, so a fourth channel, padding or guard
// bytes written fail.
template <class T>
std::vector<T> Extremes() {
  using L = std::numeric_limits<T>;
  if constexpr (sizeof(T) == 1) {
    return Extremes8u();
  } else if constexpr (sizeof(T) == 2) {
    return {L::min(), L::min() + 1, -16385, -16384, -1, 0, 1, 255, 16383, 16384, L::max()};
  } else {
    return {L::min(), L::min() + 1, -65537, -65536, -32769, -32768,  -1, 0,
            1,        32767,        32768,  65535,  65536,  L::max()};
  }
}

// The widths span two blocks and more of every target's 16- and 32-bit
// lanes (8 or 16, 4 or 8) and of its 8-bit lanes (16 or 32). Random values cover each element's
// whole range, the extremes its edges.
template <class In, class Out>
void Check(const Export& e) {
  const Format in_fmt = e.forward ? e.pixels : kP3, out_fmt = e.forward ? kP3 : e.pixels;
  // Channels 0..2 as the reference says, a fourth one unchanged.
  const auto want = [&](const GuardedImage<In>& src, int x, int y, int c) -> std::optional<Out> {
    if (c == 3) return std::nullopt;
    return static_cast<Out>(
        Expected<Out>(e, Triple{src.At(x, y, 0), src.At(x, y, 1), src.At(x, y, 2)})[c]);
  };
  std::vector<std::array<In, 3>> extremes;
  for (In a : Extremes<In>())
    for (In b : Extremes<In>())
      for (In c : Extremes<In>()) extremes.push_back({a, b, c});
  SweepPixels<In, Out>(
      e.row, in_fmt, out_fmt, Plans::kEvery, {1, 3}, SweepWidths(),
      [](GuardedImage<In>& src, const SweepCase& c) { FillRandom(src, c.seed); },
      [&](const GuardedImage<In>& src, int x, int y, int c, const SweepCase&) {
        return want(src, x, y, c);
      });
  ForEachTarget([&](int) {
    GuardedImage<In> src(61, static_cast<int>(extremes.size() + 60) / 61, in_fmt);
    GuardedImage<Out> dst(61, src.height(), out_fmt, {Steps::kNegative});
    FillPixels(src, extremes);
    RunAndMatch(e.row, src, dst, [&](int x, int y, int c) { return want(src, x, y, c); });
  });
}

// A known pixel repeated over 37 pixels, so vector body and tail both meet it.
template <class In, class Out>
void Known(const Export& e, Triple in, Triple want) {
  FlatKnown<In, Out>(e.row, e.forward ? e.pixels : kP3, e.forward ? kP3 : e.pixels, 37, 1,
                     {0.0 + in[0], 0.0 + in[1], 0.0 + in[2]},
                     [&](int, int c) -> std::optional<Out> {
                       if (c == 3) return std::nullopt;
                       return static_cast<Out>(want[c]);
                     });
}

template <class Pix, class Plane>
Export Row(const char* name, Tf tf, bool forward, Format pixels, ArgCallFn call) {
  const ArgSlot pix = Image(pixels.channels * static_cast<int>(sizeof(Pix)));
  const ArgSlot planes = Planes(3, static_cast<int>(sizeof(Plane)));
  return {ExportRow(name, forward ? std::vector{pix, planes} : std::vector{planes, pix}, call)
              .PlaneEntriesWithPointers(),
          tf,
          forward,
          pixels,
          forward ? &Check<Pix, Plane> : &Check<Plane, Pix>,
          forward ? &Known<Pix, Plane> : &Known<Plane, Pix>};
}

#define FWD(fn, Pix, Plane, tf, fmt)                                                  \
  Row<Pix, Plane>(#fn, Tf::tf, true, fmt, [](const ArgCall& a) {                      \
    return fn(a.Ptr<const Pix>(0), a.Step(0), a.Planes<Plane>(1), a.Step(1), a.size); \
  })
#define INV(fn, Plane, Pix, tf, fmt)                                                  \
  Row<Pix, Plane>(#fn, Tf::tf, false, fmt, [](const ArgCall& a) {                     \
    return fn(a.Planes<const Plane>(0), a.Step(0), a.Ptr<Pix>(1), a.Step(1), a.size); \
  })

const Export kExports[] = {
    FWD(zyliBGRToYCoCg_8u16s_C3P3R, Zyl8u, Zyl16s, kPlain, kC3),
    FWD(zyliBGRToYCoCg_8u16s_C4P3R, Zyl8u, Zyl16s, kPlain, kC4),
    FWD(zyliBGRToYCoCg_Rev_8u16s_C3P3R, Zyl8u, Zyl16s, kRev, kC3),
    FWD(zyliBGRToYCoCg_Rev_8u16s_C4P3R, Zyl8u, Zyl16s, kRev, kC4),
    INV(zyliYCoCgToBGR_16s8u_P3C3R, Zyl16s, Zyl8u, kPlain, kC3),
    INV(zyliYCoCgToBGR_16s8u_P3C4R, Zyl16s, Zyl8u, kPlain, kC4),
    INV(zyliYCoCgToBGR_Rev_16s8u_P3C3R, Zyl16s, Zyl8u, kRev, kC3),
    INV(zyliYCoCgToBGR_Rev_16s8u_P3C4R, Zyl16s, Zyl8u, kRev, kC4),
    FWD(zyliSBGRToYCoCg_16s_C3P3R, Zyl16s, Zyl16s, kPlain, kC3),
    FWD(zyliSBGRToYCoCg_16s_C4P3R, Zyl16s, Zyl16s, kPlain, kC4),
    FWD(zyliSBGRToYCoCg_16s32s_C3P3R, Zyl16s, Zyl32s, kPlain, kC3),
    FWD(zyliSBGRToYCoCg_16s32s_C4P3R, Zyl16s, Zyl32s, kPlain, kC4),
    FWD(zyliSBGRToYCoCg_Rev_16s_C3P3R, Zyl16s, Zyl16s, kRev, kC3),
    FWD(zyliSBGRToYCoCg_Rev_16s_C4P3R, Zyl16s, Zyl16s, kRev, kC4),
    FWD(zyliSBGRToYCoCg_Rev_16s32s_C3P3R, Zyl16s, Zyl32s, kRev, kC3),
    FWD(zyliSBGRToYCoCg_Rev_16s32s_C4P3R, Zyl16s, Zyl32s, kRev, kC4),
    INV(zyliYCoCgToSBGR_16s_P3C3R, Zyl16s, Zyl16s, kPlain, kC3),
    INV(zyliYCoCgToSBGR_16s_P3C4R, Zyl16s, Zyl16s, kPlain, kC4),
    INV(zyliYCoCgToSBGR_32s16s_P3C3R, Zyl32s, Zyl16s, kPlain, kC3),
    INV(zyliYCoCgToSBGR_32s16s_P3C4R, Zyl32s, Zyl16s, kPlain, kC4),
    INV(zyliYCoCgToSBGR_Rev_16s_P3C3R, Zyl16s, Zyl16s, kRev, kC3),
    INV(zyliYCoCgToSBGR_Rev_16s_P3C4R, Zyl16s, Zyl16s, kRev, kC4),
    INV(zyliYCoCgToSBGR_Rev_32s16s_P3C3R, Zyl32s, Zyl16s, kRev, kC3),
    INV(zyliYCoCgToSBGR_Rev_32s16s_P3C4R, Zyl32s, Zyl16s, kRev, kC4),
    FWD(zyliRGBToYCoCg_8u_C3P3R, Zyl8u, Zyl8u, kBytes, kC3),
    INV(zyliYCoCgToRGB_8u_P3C3R, Zyl8u, Zyl8u, kBytes, kC3),
};

class YCoCgExports : public ::testing::TestWithParam<Export> {};

TEST_P(YCoCgExports, MatchesReference) { GetParam().check(GetParam()); }

INSTANTIATE_TEST_SUITE_P(YCoCg, YCoCgExports, ::testing::ValuesIn(kExports), FamilyRowName());

INSTANTIATE_TEST_SUITE_P(YCoCg, ArgCheck, ::testing::ValuesIn(RowsOf(kExports)), ExportRowName);

// ---------------------------------------------------------- known answers --

struct KnownCase {
  const char* name;
  Triple in, out;  // in memory channel order
};

const KnownCase kKnown[] = {
    // White: Y = 1022 >> 2 = 255, Co = 1 >> 1 = 0, Cg = 2 >> 2 = 0. Blue (B, G,
    // R = 255, 0, 0): Y = 257 >> 2 = 64, Co = -254 >> 1 = -127, Cg = -253 >> 2 =
    // -64 (floor of -63.25); back: G = 64 - 64, R = 64 - 127 + 64, B = 255.
    {"zyliBGRToYCoCg_8u16s_C3P3R", {255, 255, 255}, {255, 0, 0}},
    {"zyliBGRToYCoCg_8u16s_C4P3R", {255, 0, 0}, {64, -127, -64}},
    {"zyliYCoCgToBGR_16s8u_P3C3R", {64, -127, -64}, {255, 0, 1}},
    // Blue by lifting: Co = -255, t = 255 - 128 = 127, Cg = -127, Y = 127 - 64;
    // back: t = 63 + 64, G = -127 + 127, B = 127 + 128, R = 255 - 255.
    {"zyliBGRToYCoCg_Rev_8u16s_C3P3R", {255, 0, 0}, {63, -255, -127}},
    {"zyliYCoCgToBGR_Rev_16s8u_P3C3R", {63, -255, -127}, {255, 0, 0}},
    // B = -32768, R = 32767: Y = 1 >> 2 = 0, Cg = 3 >> 2 = 0, Co = 65536 >> 1 =
    // 32768: -32768 in a 16-bit plane, 32768 in a 32-bit one.
    {"zyliSBGRToYCoCg_16s_C3P3R", {-32768, 0, 32767}, {0, -32768, 0}},
    {"zyliSBGRToYCoCg_16s32s_C4P3R", {-32768, 0, 32767}, {0, 32768, 0}},
    // Clamp: G = 300 -> 255, R = 200, B = 0. Wrap: G = 32767 + 1 wraps to -32768
    // before the clamp (-> 0), R = B = 32766 -> 255; the lifting does not wrap
    // (t = 32767, G = 32768 -> 255); 16-bit pixels keep the wrapped sums.
    {"zyliYCoCgToBGR_16s8u_P3C4R", {200, 100, 100}, {0, 255, 200}},
    {"zyliYCoCgToBGR_16s8u_P3C3R", {32767, 0, 1}, {255, 0, 255}},
    {"zyliYCoCgToBGR_Rev_16s8u_P3C4R", {32767, 0, 1}, {255, 255, 255}},
    {"zyliYCoCgToSBGR_16s_P3C3R", {32767, 0, 1}, {32766, -32768, 32766}},
    // 32-bit planes: Y = 65541 keeps its low 16 bits, 5. Lifting, Cg = 65537
    // halved at 32 bits = 32768: t = -32768, G = 32769 -> -32767, B = R = t
    // (halving its low 16 bits, 1, would give 0, 1, 0).
    {"zyliYCoCgToSBGR_32s16s_P3C4R", {65541, 0, 0}, {5, 5, 5}},
    {"zyliYCoCgToSBGR_Rev_32s16s_P3C3R", {0, 0, 65537}, {-32768, -32767, -32768}},
    // 8-bit planes, R, G, B. Green: Y = 511 >> 2 = 127, Co = 0 + 128, Cg = 127 +
    // 128 (the top). Blue: Y = 256 >> 2 = 64, Co = floor(-127.5) + 128 = 0 (the
    // bottom), Cg = (-254 >> 2) + 128 = 64; back: G = 0, R = 64 - 128 + 64, B = 256 -> 255.
    {"zyliRGBToYCoCg_8u_C3P3R", {0, 255, 0}, {127, 128, 255}},
    {"zyliRGBToYCoCg_8u_C3P3R", {0, 0, 255}, {64, 0, 64}},
    {"zyliYCoCgToRGB_8u_P3C3R", {64, 0, 64}, {0, 0, 255}},
};

TEST(YCoCgKnown, HandWorkedValues) {
  for (const KnownCase& k : kKnown) {
    SCOPED_TRACE(k.name);
    const Export& e = FindRow(kExports, k.name);
    e.known(e, k.in, k.out);
  }
}

// ---------------------------------------------------------- round trips --

// `src` (pixels of `channels`, rows of `width`) to planes and back into
// `out`; the fourth channel of C4 pixels must come back untouched.
template <class Pix, class Plane, class Fwd, class Inv>
void RoundTrip(const std::vector<Pix>& src, std::vector<Pix>& out, int channels, int width,
               std::vector<Plane> (&planes)[3], Fwd fwd, Inv inv) {
  const ZylSize roi{width, static_cast<int>(src.size()) / channels / width};
  out.assign(src.size(), Pix{0x55});
  for (size_t i = 3; channels == 4 && i < src.size(); i += 4) out[i] = src[i];
  Plane* p[3];
  for (int c = 0; c < 3; ++c) p[c] = (planes[c].resize(src.size() / channels), planes[c].data());
  const int plane_step = width * static_cast<int>(sizeof(Plane));
  const int pix_step = width * channels * static_cast<int>(sizeof(Pix));
  EXPECT_EQ(fwd(src.data(), pix_step, p, plane_step, roi), zylStsOk);
  EXPECT_EQ(inv(p, plane_step, out.data(), pix_step, roi), zylStsOk);
}

// Bound of the 8-bit-plane pair, by hand: Y, Co, Cg are the exact (R + 2G +
// B) / 4, (R - B) / 2, (2G - R - B) / 4 plus errors ey, eg in {-1/2, -1/4, 0,
// 1/4} and eo in {-1/2, 0}; R' - R = ey + eo - eg lies in [-5/4, 3/4], G' - G =
// ey + eg in [-1, 1/2], B' - B = ey - eo - eg in [-3/4, 5/4]: R and G come
// back 0 or 1 low, B 0 or 1 high. No inverse is exact for more triples than
// there are distinct codes (exact triples have distinct codes); this one
// reaches that bound.
TEST(YCoCgRoundTrip, EveryEightBitTriple) {
  const std::vector<uint8_t>& src = Triples().interleaved;
  std::vector<Zyl16s> p16[3];
  std::vector<Zyl8u> planes[3];
  std::vector<uint8_t> out, first;
  ForEachTarget([&](int) {
    RoundTrip(src, out, 3, 4096, p16, zyliBGRToYCoCg_Rev_8u16s_C3P3R,
              zyliYCoCgToBGR_Rev_16s8u_P3C3R);
    EXPECT_TRUE(out == src) << "the lifting pair is not lossless";
    RoundTrip(src, out, 3, 4096, planes, zyliRGBToYCoCg_8u_C3P3R, zyliYCoCgToRGB_8u_P3C3R);
    if (!first.empty()) {  // measured once: every target must give the same bytes
      EXPECT_TRUE(out == first);
      return;
    }
    first = out;
    std::vector<bool> seen(size_t{1} << 24);
    size_t exact = 0, codes = 0, bad = 0, abs_sum = 0;
    for (size_t i = 0; i < (size_t{1} << 24); ++i) {
      const int dr = out[3 * i] - src[3 * i], dg = out[3 * i + 1] - src[3 * i + 1],
                db = out[3 * i + 2] - src[3 * i + 2];
      bad += dr > 0 || dr < -1 || dg > 0 || dg < -1 || db < 0 || db > 1;
      exact += dr == 0 && dg == 0 && db == 0;
      abs_sum += static_cast<size_t>(db - dr - dg);
      const size_t code = size_t{planes[0][i]} << 16 | size_t{planes[1][i]} << 8 | planes[2][i];
      codes += !seen[code];
      seen[code] = true;
    }
    EXPECT_EQ(bad, 0u);
    EXPECT_EQ(exact, codes);
    std::printf(
        "[ measured ] 8-bit planes: %zu of 2^24 triples exact (%.2f%%), mean |error| %.4f "
        "per channel, max 1\n",
        exact, exact / 167772.16, abs_sum / 3.0 / 16777216.0);
  });
}

// The 16-bit lifting is lossless while no stored value wraps: with every
// input in a range of at most 2^15 values, |Co| and |Cg| stay below 2^15 and t
// and Y lie between inputs; [-16384, 16383] is such a range. 32-bit planes
// hold Co and Cg (17 bits) for any input, so there the full range is lossless.
TEST(YCoCgRoundTrip, SignedLiftingOnDenseGrids) {
  for (const int lo : {-16384, -32768}) {
    const int hi = -1 - lo;
    std::vector<Zyl16s> src;  // 129^3 pixels, C4
    for (int b = 0; b <= 128; ++b)
      for (int g = 0; g <= 128; ++g)
        for (int r = 0; r <= 128; ++r)
          for (int v : {b, g, r, 0}) src.push_back(static_cast<Zyl16s>(lo + (hi - lo) * v / 128));
    std::vector<Zyl16s> out, p16[3];
    std::vector<Zyl32s> p32[3];
    ForEachTarget([&](int) {
      if (lo == -16384) {
        RoundTrip(src, out, 4, 129, p16, zyliSBGRToYCoCg_Rev_16s_C4P3R,
                  zyliYCoCgToSBGR_Rev_16s_P3C4R);
      } else {
        RoundTrip(src, out, 4, 129, p32, zyliSBGRToYCoCg_Rev_16s32s_C4P3R,
                  zyliYCoCgToSBGR_Rev_32s16s_P3C4R);
      }
      EXPECT_TRUE(out == src) << "inputs in " << lo << ".." << hi;
    });
  }
}

}  // namespace
}  // namespace zyl::test
