// What the families of per-pixel conversions share: rows for the common
// (src, step, dst, step, size) signature, one checked call in a rounding
// mode, the sweep against a per-pixel reference, flat known answers, odd
// byte steps and round trips over a grid of colours.
#ifndef ZYL_TESTS_SUPPORT_PIXEL_FAMILY_H_
#define ZYL_TESTS_SUPPORT_PIXEL_FAMILY_H_

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cfenv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <optional>
#include <ostream>
#include <random>
#include <type_traits>
#include <variant>
#include <vector>

#include "include/zylcc.h"
#include "tests/support/arg_check.h"
#include "tests/support/guarded_image.h"
#include "tests/support/sweep.h"
#include "tests/support/targets.h"

namespace zyl::test {

inline constexpr int kRoundingModes[] = {FE_TONEAREST, FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO};

// Integer results must not depend on the caller's rounding mode, so sweeps
// cycle them through all four; float results follow it and take the default.
template <class T>
int ModeFor(const SweepCase& s) {
  return std::is_floating_point_v<T> ? FE_TONEAREST : kRoundingModes[s.seed / 8 % 4];
}

// A row for an export taking (const T* src, int step, T* dst, int step, size).
template <class T, auto kFn>
ExportRow PixelRow(const char* name, Format src, Format dst) {
  auto call = [](const ArgCall& a) {
    return kFn(a.Ptr<const T>(0), a.Step(0), a.Ptr<T>(1), a.Step(1), a.size);
  };
  const int size = static_cast<int>(sizeof(T));
  return ExportRow(name, {Image(src.channels * size), Image(dst.channels * size)}, call);
}

// An export of a family whose members take C3 or AC4 pixels of one element
// type to the same layout, and the four members of one element type.
struct PixelExport {
  ExportRow row;
  std::variant<Zyl8u, Zyl16u, Zyl16s, Zyl32f> type;
  bool forward;
  Format format;  // kC3, or kC4 for AC4 (the fourth element must not change)
  bool bgr = false;
};
inline void PrintTo(const PixelExport& e, std::ostream* os) { *os << e.row.name; }

template <class T, auto kFn>
PixelExport PixelExportRow(const char* name, bool forward, Format format, bool bgr = false) {
  return {PixelRow<T, kFn>(name, format, format), T{}, forward, format, bgr};
}
#define ZYL_PIXEL_ROWS(T, t, X)                                                                \
  PixelExportRow<T, &zyliRGBTo##X##_##t##_C3R>("zyliRGBTo" #X "_" #t "_C3R", true, kC3),       \
      PixelExportRow<T, &zyliRGBTo##X##_##t##_AC4R>("zyliRGBTo" #X "_" #t "_AC4R", true, kC4), \
      PixelExportRow<T, &zyli##X##ToRGB_##t##_C3R>("zyli" #X "ToRGB_" #t "_C3R", false, kC3),  \
      PixelExportRow<T, &zyli##X##ToRGB_##t##_AC4R>("zyli" #X "ToRGB_" #t "_AC4R", false, kC4)

// Calls fn<T>(e, args...) with T the export's element type.
#define ZYL_TYPED(fn, e, ...) std::visit([&](auto t) { fn<decltype(t)>(e, __VA_ARGS__); }, (e).type)

// Channels 0..2 of a pixel.
template <class T>
std::array<T, 3> Pixel3(const GuardedImage<T>& img, int x, int y) {
  return {img.At(x, y, 0), img.At(x, y, 1), img.At(x, y, 2)};
}

// Calls the row on src and dst in rounding mode `mode`, which it must give
// back, expects `status`, and checks the whole destination memory: element
// (x, y, c) as want(x, y, c) says, unchanged where it says nullopt.
template <class S, class D, class Want>
bool RunAndMatch(const ExportRow& row, const GuardedImage<S>& src, const GuardedImage<D>& dst,
                 Want want, int mode = FE_TONEAREST, int param = 0, ZylStatus status = zylStsOk) {
  const auto before = dst.Save();
  std::fesetround(mode);
  const ZylStatus got = CallOnImages(row, param, src, dst);
  const int mode_after = std::fegetround();
  std::fesetround(FE_TONEAREST);
  EXPECT_EQ(got, status);
  EXPECT_EQ(mode_after, mode) << "the rounding mode was not given back";
  const auto same =
      dst.Matches(before, [&](int x, int y, int c) -> std::optional<D> { return want(x, y, c); });
  EXPECT_TRUE(same);
  return got == status && mode_after == mode && same;
}

template <class Param>
int ParamOf(const Param& param, const SweepCase& s) {
  if constexpr (std::is_pointer_v<Param>) {
    return param ? param(s) : 0;
  } else {
    return param(s);
  }
}

// On every target over the shared sweep: fill(src, case) prepares the source,
// want(src, x, y, c, case) the destination (nullopt: unchanged), in the mode
// ModeFor<D> picks, with the parameter param(case) gives.
template <class S, class D, class Fill, class Want, class Param = int (*)(const SweepCase&)>
void SweepPixels(const ExportRow& row, Format sf, Format df, Plans plans,
                 std::initializer_list<int> heights, const std::vector<int>& widths, Fill fill,
                 Want want, Param param = nullptr) {
  ForEachTarget([&](int) {
    Sweep(plans, heights, widths, [&](const SweepCase& s) {
      GuardedImage<S> src(s.width, s.height, sf, s.Src());
      GuardedImage<D> dst(s.width, s.height, df, s.Dst());
      fill(src, s);
      return RunAndMatch(
          row, src, dst, [&](int x, int y, int c) { return want(src, x, y, c, s); }, ModeFor<D>(s),
          ParamOf(param, s));
    });
  });
}

// On every target: a width x height image of one colour `in` (alpha 7), and
// want(x, c) for the destination (nullopt: unchanged).
template <class S, class D, class Want>
void FlatKnown(const ExportRow& row, Format sf, Format df, int width, int height,
               const std::array<double, 3>& in, Want want, int param = 0, double tol = 0) {
  ForEachTarget([&](int) {
    GuardedImage<S> src(width, height, sf);
    GuardedImage<D> dst(width, height, df);
    src.Fill([&](int, int, int c) { return static_cast<S>(c < 3 ? in[c] : 7); });
    RunAndMatch(
        row, src, dst,
        [&](int x, int y, int c) -> std::optional<D> {
          const std::optional<D> w = want(x, c);
          const D got = dst.At(x, y, c);
          return w && std::abs(static_cast<double>(got) - *w) <= tol ? got : w;
        },
        FE_TONEAREST, param);
  });
}

// Hand-worked values of a PixelExport family: every pixel of a row of
// `width` (vector bodies and a tail) holds `in`.
struct PixelKnown {
  const char* name;
  std::array<double, 3> in, out;
  double tol = 0;
};
template <size_t N, size_t K>
void ExpectPixelKnown(const PixelExport (&family)[N], const PixelKnown (&known)[K], int width) {
  for (const PixelKnown& k : known) {
    SCOPED_TRACE(k.name);
    const PixelExport& e = FindRow(family, k.name);
    std::visit(
        [&](auto t) {
          using T = decltype(t);
          FlatKnown<T, T>(
              e.row, e.format, e.format, width, 2, k.in,
              [&](int, int c) -> std::optional<T> {
                if (c == 3) return std::nullopt;
                return static_cast<T>(k.out[c]);
              },
              0, k.tol);
        },
        e.type);
  }
}

// Byte steps that are no whole number of `unit`s (the element size where a
// family takes steps in whole elements, 1 where it takes them as they are),
// both signs, on every target: each row must come out as the export makes it
// from an aligned copy of the row the step reaches, and nothing else may
// change.
inline void ExpectOddStepsHonoured(const ExportRow& row, int unit, int param = 0) {
  constexpr int kWidth = 37, kHeight = 3;
  const int bytes[2] = {kWidth * row.slots[0].bytes_per_pixel,
                        kWidth * row.slots[1].bytes_per_pixel};
  ForEachTarget([&](int) {
    for (int sign : {1, -1}) {
      std::mt19937 rng(static_cast<uint32_t>(sign + 5));
      std::vector<uint8_t> mem[2];
      uint8_t* row0[2];
      int step[2];
      ptrdiff_t advance[2];
      for (int i = 0; i < 2; ++i) {
        step[i] = sign * (bytes[i] + (i + 1) * unit + 2 * i + 1);
        advance[i] = static_cast<ptrdiff_t>(std::floor(1.0 * step[i] / unit)) * unit;
        const ptrdiff_t span = (kHeight - 1) * std::abs(advance[i]);
        mem[i].resize(static_cast<size_t>(span + bytes[i] + 128));
        for (uint8_t& b : mem[i]) b = static_cast<uint8_t>(rng());
        row0[i] = mem[i].data() + 64 + (sign < 0 ? span : 0);
      }
      std::vector<uint8_t> want = mem[1];
      std::vector<uint64_t> in(static_cast<size_t>(bytes[0]) / 8 + 1),
          out(static_cast<size_t>(bytes[1]) / 8 + 1);
      ArgCall a;
      a.param = param;
      a.size = {kWidth, 1};
      for (int y = 0; y < kHeight; ++y) {
        std::memcpy(in.data(), row0[0] + y * advance[0], static_cast<size_t>(bytes[0]));
        const ptrdiff_t at = row0[1] - mem[1].data() + y * advance[1];
        std::memcpy(out.data(), &want[static_cast<size_t>(at)], static_cast<size_t>(bytes[1]));
        a.Bind(0, in.data(), bytes[0]);
        a.Bind(1, out.data(), bytes[1]);
        ASSERT_EQ(row.call(a), zylStsOk);
        std::memcpy(&want[static_cast<size_t>(at)], out.data(), static_cast<size_t>(bytes[1]));
      }
      a.size = {kWidth, kHeight};
      a.Bind(0, row0[0], step[0]);
      a.Bind(1, row0[1], step[1]);
      ASSERT_EQ(row.call(a), zylStsOk);
      EXPECT_TRUE(mem[1] == want) << "steps " << step[0] << ", " << step[1];
    }
  });
}

// Per-channel range of out - gain * in over the pixels a round trip keeps.
struct ErrorRange {
  std::array<double, 3> lo{}, hi{}, sum{};
  double count = 0;  // per channel

  void Add(int c, double in, double out, double gain = 1) {
    lo[c] = std::min(lo[c], out - gain * in);
    hi[c] = std::max(hi[c], out - gain * in);
    sum[c] += out - gain * in;
    count += c == 0;
  }
  // The mean error of each channel within 0.1 of a prediction.
  void ExpectMean(const char* what, const std::array<double, 3>& mean) const {
    for (int c = 0; c < 3; ++c) {
      std::printf("[ figures  ] %s, channel %d: mean error %+.3f (predicted %+.3f)\n", what, c,
                  sum[c] / count, mean[c]);
      EXPECT_NEAR(sum[c] / count, mean[c], 0.1) << what << ", channel " << c;
    }
  }
  void Expect(const char* what, const std::array<double, 3>& lo_bound,
              const std::array<double, 3>& hi_bound) const {
    std::printf("[ figures  ] %s: out - in within [%g, %g] [%g, %g] [%g, %g]\n", what, lo[0], hi[0],
                lo[1], hi[1], lo[2], hi[2]);
    for (int c = 0; c < 3; ++c) {
      EXPECT_GE(lo[c], lo_bound[c]) << what << ", channel " << c;
      EXPECT_LE(hi[c], hi_bound[c]) << what << ", channel " << c;
    }
  }
  void ExpectWithin(const char* what, double bound) const {
    Expect(what, {-bound, -bound, -bound}, {bound, bound, bound});
  }
};

// n^3 colours (channel 0 slowest), level(k) for k = 0..n-1, as an image of n
// pixels a row and n^2 rows, `lead` bytes into its memory, rows `pad` bytes
// apart beyond the pixels, and `step_extra` more bytes in the step the
// exports get (a remainder they must drop).
template <class T>
class ColorGrid {
 public:
  struct Layout {
    int lead = 0, pad = 0, step_extra = 0;
  };
  template <class Level>
  ColorGrid(int n, Level level, Layout layout = {})
      : n_(n), layout_(layout), pitch_(3 * n * static_cast<int>(sizeof(T)) + layout.pad) {
    const size_t bytes = static_cast<size_t>(layout.lead) + static_cast<size_t>(pitch_) * n * n;
    for (auto* v : {&in_, &mid_, &back_}) v->assign(bytes + sizeof(T), 0);
    for (int i = 0; i < Count(); ++i) {
      const int k[3] = {i / (n * n), i / n % n, i % n};
      for (int c = 0; c < 3; ++c) Set(in_, i, c, static_cast<T>(level(k[c])));
    }
  }
  int Count() const { return n_ * n_ * n_; }
  T In(int i, int c) const { return Get(in_, i, c); }
  T Mid(int i, int c) const { return Get(mid_, i, c); }
  T Back(int i, int c) const { return Get(back_, i, c); }

  // fwd from the colours, inv back; false after a failed call.
  template <class Fwd, class Inv>
  bool Run(Fwd fwd, Inv inv) {
    const int step = pitch_ + layout_.step_extra;
    const ZylSize size{n_, n_ * n_};
    EXPECT_EQ(fwd(Ptr(in_), step, Ptr(mid_), step, size), zylStsOk);
    EXPECT_EQ(inv(Ptr(mid_), step, Ptr(back_), step, size), zylStsOk);
    return !::testing::Test::HasFailure();
  }

 private:
  T* Ptr(std::vector<uint8_t>& v) { return reinterpret_cast<T*>(v.data() + layout_.lead); }
  size_t At(int i, int c) const {
    return static_cast<size_t>(layout_.lead) + static_cast<size_t>(i / n_) * pitch_ +
           (static_cast<size_t>(i % n_) * 3 + c) * sizeof(T);
  }
  T Get(const std::vector<uint8_t>& v, int i, int c) const {
    T t;
    std::memcpy(&t, &v[At(i, c)], sizeof(T));
    return t;
  }
  void Set(std::vector<uint8_t>& v, int i, int c, T t) { std::memcpy(&v[At(i, c)], &t, sizeof(T)); }

  int n_;
  Layout layout_;
  int pitch_;
  std::vector<uint8_t> in_, mid_, back_;
};

// Runs the grid there and back on every target and collects out - gain * in
// over the colours keep(grid, i) accepts.
template <class T, class Fwd, class Inv, class Keep>
ErrorRange RoundTripErrors(ColorGrid<T>& grid, Fwd fwd, Inv inv, Keep keep, double gain = 1) {
  ErrorRange range;
  ForEachTarget([&](int) {
    if (!grid.Run(fwd, inv)) return;
    for (int i = 0; i < grid.Count(); ++i) {
      if (!keep(grid, i)) continue;
      for (int c = 0; c < 3; ++c) range.Add(c, grid.In(i, c), grid.Back(i, c), gain);
    }
  });
  return range;
}

}  // namespace zyl::test

#endif  // ZYL_TESTS_SUPPORT_PIXEL_FAMILY_H_
