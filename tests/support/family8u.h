// What the full-resolution 8-bit families between three-channel layouts
// (C3, AC4, C4, P3, P4) share: the call adapter, the alpha rules, the check
// of a whole destination, hand-worked pixels side by side, and the sweep.
#ifndef ZYL_TESTS_SUPPORT_FAMILY8U_H_
#define ZYL_TESTS_SUPPORT_FAMILY8U_H_

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <optional>
#include <ostream>
#include <type_traits>
#include <vector>

#include "include/zylcc.h"
#include "tests/support/arg_check.h"
#include "tests/support/generators.h"
#include "tests/support/guarded_image.h"
#include "tests/support/sweep.h"
#include "tests/support/targets.h"

namespace zyl::test {

using Img8 = GuardedImage<Zyl8u>;
using Px8 = std::array<uint8_t, 3>;

enum class Alpha {
  kNone,        // no fourth destination channel, or one that is never written
  kFromSource,  // plane 3 receives the source's fourth channel
  kArgument,    // the fourth channel receives the alpha argument
};

struct Export8u {
  ExportRow row;
  int kind;  // the family's own choice of formula
  Format src, dst;
  Alpha alpha;
};
inline void PrintTo(const Export8u& e, std::ostream* os) { *os << e.row.name; }

// Calls F with an image or a plane array (ONE step for all planes) on each
// side, and the alpha argument last where F takes one.
template <auto F>
ZylStatus Call8u(const ArgCall& a) {
  using Fn = decltype(F);
  using In = const Zyl8u*;
  using InPlanes = const Zyl8u* const*;
  using OutPlanes = Zyl8u* const*;
  if constexpr (std::is_invocable_v<Fn, In, int, Zyl8u*, int, ZylSize, Zyl8u>) {
    return F(a.Ptr<const Zyl8u>(0), a.Step(0), a.Ptr<Zyl8u>(1), a.Step(1), a.size,
             static_cast<Zyl8u>(a.param));
  } else if constexpr (std::is_invocable_v<Fn, InPlanes, int, Zyl8u*, int, ZylSize, Zyl8u>) {
    return F(a.Planes<const Zyl8u>(0), a.Step(0), a.Ptr<Zyl8u>(1), a.Step(1), a.size,
             static_cast<Zyl8u>(a.param));
  } else if constexpr (std::is_invocable_v<Fn, In, int, Zyl8u*, int, ZylSize>) {
    return F(a.Ptr<const Zyl8u>(0), a.Step(0), a.Ptr<Zyl8u>(1), a.Step(1), a.size);
  } else if constexpr (std::is_invocable_v<Fn, In, int, OutPlanes, int, ZylSize>) {
    return F(a.Ptr<const Zyl8u>(0), a.Step(0), a.Planes<Zyl8u>(1), a.Step(1), a.size);
  } else if constexpr (std::is_invocable_v<Fn, InPlanes, int, Zyl8u*, int, ZylSize>) {
    return F(a.Planes<const Zyl8u>(0), a.Step(0), a.Ptr<Zyl8u>(1), a.Step(1), a.size);
  } else {
    return F(a.Planes<const Zyl8u>(0), a.Step(0), a.Planes<Zyl8u>(1), a.Step(1), a.size);
  }
}

// The exports take three planes; a fourth, filled from the source, is not
// tested for null (a fourth destination plane otherwise only guards).
inline Export8u Row8u(const char* name, ArgCallFn call, int kind, Format src, Format dst,
                      Alpha alpha = Alpha::kNone) {
  const bool four = alpha == Alpha::kFromSource;
  auto slot = [&](Format f) { return f.planes > 1 ? Planes(four ? 4 : 3) : Image(f.channels); };
  const ArgSlot dst_slot = four ? slot(dst).Checked(3) : slot(dst);
  return {ExportRow(name, {slot(src), dst_slot}, call), kind, src, dst, alpha};
}
#define ZYL_ROW8U(f, ...) Row8u(#f, Call8u<f>, __VA_ARGS__)

// Runs e on src into dst and checks the whole destination memory:
// color_of(x, y) in the first three channels, the alpha rule in the fourth.
template <class ColorOf>
bool RunAndCheck8u(const Export8u& e, const Img8& src, const Img8& dst, Zyl8u aval,
                   ColorOf color_of) {
  const auto before = dst.Save();
  const ZylStatus status = CallOnImages(e.row, aval, src, dst);
  EXPECT_EQ(status, zylStsOk);
  const ::testing::AssertionResult same =
      dst.Matches(before, [&](int x, int y, int c) -> std::optional<uint8_t> {
        if (c < 3) return color_of(x, y)[c];
        if (e.alpha == Alpha::kArgument) return aval;
        if (e.alpha == Alpha::kFromSource) return src.At(x, y, 3);
        return std::nullopt;
      });
  EXPECT_TRUE(same);
  return status == zylStsOk && same;
}

// Hand-worked pixels (in, out) side by side in a row long enough for two
// AVX-512 blocks and a tail, once shifted, so vector body and per-pixel tail
// both meet each of them on every target.
struct Known8u {
  Px8 in, out;
};
template <class Post>
void ExpectKnown8u(const Export8u& e, const std::vector<Known8u>& table, Post post) {
  std::vector<Px8> inputs;
  for (const Known8u& k : table) inputs.push_back(k.in);
  ForEachTarget([&](int) {
    for (int shift = 0; shift < 2; ++shift) {
      Img8 src(131, 2, e.src, {Steps::kPadded, Placement::kHeap, 11});
      Img8 dst(131, 2, e.dst, {Steps::kPadded, Placement::kHeap, 12});
      FillPixels(src, inputs, shift);
      RunAndCheck8u(e, src, dst, 0xA7, [&](int x, int y) {
        return post(table[(shift + y * 131 + x) % table.size()].out);
      });
    }
  });
}

// Random sources (random source alpha too; the alpha argument changes from
// call to call) over the shared sweep, then the range ends and the chroma
// midpoint in every combination, against reference(pixel).
template <class Reference>
void ExpectMatchesReference8u(const Export8u& e, Reference reference) {
  auto color = [&](const Img8& src) {
    return [&](int x, int y) {
      return reference(Px8{src.At(x, y, 0), src.At(x, y, 1), src.At(x, y, 2)});
    };
  };
  const std::vector<Px8> extremes = ExtremeTriples8u();
  ForEachTarget([&](int) {
    Sweep(Plans::kEvery, {1, 3, 7}, SweepWidths(), [&](const SweepCase& c) {
      Img8 src(c.width, c.height, e.src, c.Src());
      Img8 dst(c.width, c.height, e.dst, c.Dst());
      FillRandom(src, c.seed);
      return RunAndCheck8u(e, src, dst, static_cast<Zyl8u>(c.seed * 37), color(src));
    });
    Img8 src(129, 5, e.src, {Steps::kPadded, Placement::kHeap, 3});
    Img8 dst(129, 5, e.dst, {Steps::kNegative, Placement::kHeap, 4});
    FillPixels(src, extremes);
    RunAndCheck8u(e, src, dst, 0x5C, color(src));
  });
}

}  // namespace zyl::test

#endif  // ZYL_TESTS_SUPPORT_FAMILY8U_H_
