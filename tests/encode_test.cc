// RGB/BGR to 4:2:0, 4:2:2 and 4:1:1 (planar, two-plane and packed): the 42 encoders against a
// reference written from the defining formulas, on every target, at widths around each
// target's vector block, with padded, negative, zero and contiguous steps and page-end
// placement; hand-worked answers for each shape and matrix; the deliberate oddities (the
// truncating second luma of the packed pair loop, the three-tap edge, the lone last pixel of
// an odd packed row, the 1..254 range of the full-range BT.709 members); and the argument
// checks with their per-family orders.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "include/zylcc.h"
#include "tests/support/arg_check.h"
#include "tests/support/generators.h"
#include "tests/support/guarded_image.h"
#include "tests/support/sweep.h"
#include "tests/support/targets.h"

namespace zyl::test {
namespace {

using Img = GuardedImage<Zyl8u>;
using Px = std::array<uint8_t, 3>;  // R, G, B

// ------------------------------------------------------------------ exports --

enum class Shape { k420P3, k420P2, k422P3, k422C2, k411P3 };
enum class Mat { k601, k709Csc, k709Hdtv, kYuv };

// What an export does, read from its name by the naming rules: source order and layout
// (BGR, AC4/C4, P3), sampling and destination (420, 422, 411; P2, C2), matrix (709CSC,
// 709HDTV, YUV, else BT.601), chroma order (YCrCb, CbYCr) and steps (no final R: none).
struct EncodeExport {
  ExportRow row;
  Shape shape;
  Mat mat;
  Format src;      // kC3, kC4 (AC4 and C4) or kP3
  bool bgr;        // source bytes B, G, R
  bool cr_first;   // plane 1 is Cr / packed Y0 Cr Y1 Cb
  bool cby_first;  // packed Cb Y0 Cr Y1
  bool whole;      // steps implied by the width

  int MinSize() const { return row.min_size.width; }
  // The YCrCb 4:2:0 BT.601 members test the size before the pointers.
  bool SizeFirst() const { return shape == Shape::k420P3 && mat == Mat::k601 && cr_first; }
  // Three-tap filtered chroma: the BT.601 Cb Y0 Cr Y1 members only.
  bool ThreeTap() const { return cby_first && mat == Mat::k601; }
};

void PrintTo(const EncodeExport& e, std::ostream* os) { *os << e.row.name; }

// Calls export F with the arguments of its signature: slot 0 the source, then a plane array
// with per-plane steps, a luma and a Cb Cr image, or one packed image.
template <auto F>
ZylStatus Adapt(const ArgCall& a) {
  using Fn = decltype(F);
  using Src = const Zyl8u*;
  using SrcPlanes = const Zyl8u* const*;
  using Dst = Zyl8u* const*;
  const int* steps = a.Steps(1);
  if constexpr (std::is_same_v<Fn, ZylStatus (*)(Src, int, Dst, const int*, ZylSize)>) {
    return F(a.Ptr<const Zyl8u>(0), a.Step(0), a.Planes<Zyl8u>(1), steps, a.size);
  } else if constexpr (std::is_same_v<Fn,
                                      ZylStatus (*)(SrcPlanes, int, Dst, const int*, ZylSize)>) {
    return F(a.Planes<const Zyl8u>(0), a.Step(0), a.Planes<Zyl8u>(1), steps, a.size);
  } else if constexpr (std::is_same_v<Fn,
                                      ZylStatus (*)(Src, int, Zyl8u*, int, Zyl8u*, int, ZylSize)>) {
    return F(a.Ptr<const Zyl8u>(0), a.Step(0), a.Ptr<Zyl8u>(1), a.Step(1), a.Ptr<Zyl8u>(2),
             a.Step(2), a.size);
  } else if constexpr (std::is_same_v<Fn, ZylStatus (*)(Src, int, Zyl8u*, int, ZylSize)>) {
    return F(a.Ptr<const Zyl8u>(0), a.Step(0), a.Ptr<Zyl8u>(1), a.Step(1), a.size);
  } else if constexpr (std::is_same_v<Fn, ZylStatus (*)(SrcPlanes, int, Zyl8u*, int, ZylSize)>) {
    return F(a.Planes<const Zyl8u>(0), a.Step(0), a.Ptr<Zyl8u>(1), a.Step(1), a.size);
  } else if constexpr (std::is_same_v<Fn, ZylStatus (*)(Src, Dst, ZylSize)>) {
    return F(a.Ptr<const Zyl8u>(0), a.Planes<Zyl8u>(1), a.size);
  } else {
    return F(a.Planes<const Zyl8u>(0), a.Planes<Zyl8u>(1), a.size);
  }
}

EncodeExport Describe(const std::string& name, ArgCallFn call) {
  auto has = [&](const char* part) { return name.find(part) != std::string::npos; };
  const std::string layout = name.substr(name.find("_8u_") + 4);
  EncodeExport e{ExportRow(name.c_str(), {}, call),
                 has("P2R")   ? Shape::k420P2
                 : has("C2R") ? Shape::k422C2
                 : has("420") ? Shape::k420P3
                 : has("422") ? Shape::k422P3
                              : Shape::k411P3,
                 has("709CSC")    ? Mat::k709Csc
                 : has("709HDTV") ? Mat::k709Hdtv
                 : has("YUV")     ? Mat::kYuv
                                  : Mat::k601,
                 layout.rfind("P3", 0) == 0   ? kP3
                 : layout.rfind("C3", 0) == 0 ? kC3
                                              : kC4,
                 name.rfind("zyliBGR", 0) == 0,
                 has("YCrCb"),
                 has("CbYCr"),
                 name.back() != 'R'};
  ArgSlot src = e.src.planes > 1 ? Planes(3) : Image(e.src.channels);
  if (e.whole) src = src.NoStep();
  if (e.shape == Shape::k420P2) {
    e.row.slots = {src, Image(1), Image(2)};
  } else if (e.shape == Shape::k422C2) {
    e.row.slots = {src, Image(2)};
  } else {
    e.row.slots = {src, e.whole ? Planes(3).NoStep() : Planes(3).PerPlaneSteps()};
  }
  if (e.mat == Mat::k709Csc) {
    e.row = e.row.MinSize({2, 2}, {8, 2});
    // The studio BT.709 three-plane members test their plane entries with the pointers.
    if (e.shape == Shape::k420P3) e.row = e.row.PlaneEntriesWithPointers();
  }
  if (e.SizeFirst()) e.row = e.row.Order(CheckOrder::kSizeFirst);
  return e;
}

#define ZYL_ENCODER(f) Describe(#f, Adapt<f>)
const EncodeExport kExports[] = {
    // 4:2:0, three planes.
    ZYL_ENCODER(zyliBGRToYCbCr420_8u_C3P3R),
    ZYL_ENCODER(zyliBGRToYCbCr420_8u_AC4P3R),
    ZYL_ENCODER(zyliRGBToYCbCr420_8u_C3P3R),
    ZYL_ENCODER(zyliBGRToYCrCb420_8u_C3P3R),
    ZYL_ENCODER(zyliBGRToYCrCb420_8u_AC4P3R),
    ZYL_ENCODER(zyliRGBToYCrCb420_8u_AC4P3R),
    ZYL_ENCODER(zyliBGRToYCbCr420_709CSC_8u_C3P3R),
    ZYL_ENCODER(zyliBGRToYCbCr420_709CSC_8u_AC4P3R),
    ZYL_ENCODER(zyliBGRToYCrCb420_709CSC_8u_C3P3R),
    ZYL_ENCODER(zyliBGRToYCrCb420_709CSC_8u_AC4P3R),
    ZYL_ENCODER(zyliBGRToYCbCr420_709HDTV_8u_AC4P3R),
    ZYL_ENCODER(zyliBGRToYUV420_8u_AC4P3R),
    ZYL_ENCODER(zyliRGBToYUV420_8u_C3P3R),
    ZYL_ENCODER(zyliRGBToYUV420_8u_P3R),
    ZYL_ENCODER(zyliRGBToYUV420_8u_C3P3),
    ZYL_ENCODER(zyliRGBToYUV420_8u_P3),
    // 4:2:0, luma plane and Cb Cr pairs.
    ZYL_ENCODER(zyliBGRToYCbCr420_8u_C3P2R),
    ZYL_ENCODER(zyliBGRToYCbCr420_8u_AC4P2R),
    ZYL_ENCODER(zyliRGBToYCbCr420_8u_C3P2R),
    ZYL_ENCODER(zyliRGBToYCbCr420_8u_C4P2R),
    ZYL_ENCODER(zyliBGRToYCbCr420_709CSC_8u_C3P2R),
    ZYL_ENCODER(zyliBGRToYCbCr420_709CSC_8u_AC4P2R),
    // 4:2:2, three planes.
    ZYL_ENCODER(zyliBGRToYCbCr422_8u_C3P3R),
    ZYL_ENCODER(zyliBGRToYCbCr422_8u_AC4P3R),
    ZYL_ENCODER(zyliRGBToYCbCr422_8u_C3P3R),
    ZYL_ENCODER(zyliRGBToYUV422_8u_C3P3R),
    ZYL_ENCODER(zyliRGBToYUV422_8u_P3R),
    ZYL_ENCODER(zyliRGBToYUV422_8u_C3P3),
    ZYL_ENCODER(zyliRGBToYUV422_8u_P3),
    // 4:2:2, packed.
    ZYL_ENCODER(zyliBGRToYCbCr422_8u_C3C2R),
    ZYL_ENCODER(zyliBGRToYCbCr422_8u_AC4C2R),
    ZYL_ENCODER(zyliRGBToYCbCr422_8u_C3C2R),
    ZYL_ENCODER(zyliRGBToYCbCr422_8u_P3C2R),
    ZYL_ENCODER(zyliRGBToYCrCb422_8u_C3C2R),
    ZYL_ENCODER(zyliRGBToYCrCb422_8u_P3C2R),
    ZYL_ENCODER(zyliRGBToYUV422_8u_C3C2R),
    ZYL_ENCODER(zyliBGRToCbYCr422_709HDTV_8u_C3C2R),
    ZYL_ENCODER(zyliBGRToCbYCr422_709HDTV_8u_AC4C2R),
    ZYL_ENCODER(zyliRGBToCbYCr422_8u_C3C2R),
    ZYL_ENCODER(zyliBGRToCbYCr422_8u_AC4C2R),
    // 4:1:1, three planes.
    ZYL_ENCODER(zyliBGRToYCbCr411_8u_C3P3R),
    ZYL_ENCODER(zyliBGRToYCbCr411_8u_AC4P3R),
};
#undef ZYL_ENCODER

// ---------------------------------------------------------------- reference --

int Clamp(int64_t v, int lo, int hi) { return static_cast<int>(std::clamp<int64_t>(v, lo, hi)); }
int Low8(int64_t v) { return static_cast<int>(v & 255); }

struct Rgb {
  int64_t r = 0, g = 0, b = 0;
  Rgb operator+(const Rgb& o) const { return {r + o.r, g + o.g, b + o.b}; }
};
struct Row3 {
  int64_t r, g, b;
  int64_t Dot(const Rgb& p) const { return r * p.r + g * p.g + b * p.b; }
};
struct Weights {
  Row3 y, cb, cr;
};
constexpr Weights kW601{{16843, 33030, 6423}, {-9699, -19071, 28770}, {28770, -24117, -4653}};
constexpr Weights kW709Csc{{11993, 40239, 4063}, {-6619, -22151, 28770}, {28770, -26149, -2621}};
constexpr Weights kW709Hdtv{{13959, 46858, 4719}, {-7668, -25821, 33489}, {33489, -30409, -3080}};

int64_t YuvY(const Rgb& p) { return 4899 * p.r + 9617 * p.g + 1868 * p.b; }

// Luma of one pixel; `truncating` is the second pixel of a BT.601 pair loop.
int Luma(Mat m, const Rgb& p, bool truncating) {
  switch (m) {
    case Mat::k601:  // 16 * 2^16 + the half 2^15, or without the half
      return Low8(Shr(kW601.y.Dot(p) + (truncating ? 0x100000 : 0x108000), 16));
    case Mat::k709Csc:
      return Low8(Shr(kW709Csc.y.Dot(p) + 0x108000, 16));
    case Mat::k709Hdtv:  // full range, no offset, never 0 or 255
      return Clamp(Shr(kW709Hdtv.y.Dot(p) + 32768, 16), 1, 254);
    case Mat::kYuv:  // rounding term 2, not 2^13
      return static_cast<int>(Shr(YuvY(p) + 2, 14));
  }
  return -1;
}

// Chroma (Cb, Cr) or (U, V) of the sums `s` over n = 4 (2x2 block), 2 (pair) or 1 (lone)
// pixels, at the scale 2^shift = 2^16 * n. The studio matrices add 128 * 2^shift plus 2^15,
// 2^16, 2^15: an eighth of a step for the block, a half for the pair and the lone pixel.
std::array<int, 2> Chroma(Mat m, const Rgb& s, int n) {
  const int shift = n == 4 ? 18 : n == 2 ? 17 : 16;
  switch (m) {
    case Mat::k601:
    case Mat::k709Csc: {
      const Weights& w = m == Mat::k601 ? kW601 : kW709Csc;
      const int64_t add = (int64_t{128} << shift) + (n == 2 ? 1 << 16 : 1 << 15);
      return {Low8(Shr(w.cb.Dot(s) + add, shift)), Low8(Shr(w.cr.Dot(s) + add, shift))};
    }
    case Mat::k709Hdtv: {
      // 128 * 2^shift plus a rounding term just under a half: 2^17 - 4, 2^16 - 2, 2^15.
      const int64_t add = (int64_t{128} << shift) + (n == 4 ? 0x1FFFC : n == 2 ? 0xFFFE : 0x8000);
      return {Clamp(Shr(kW709Hdtv.cb.Dot(s) + add, shift), 1, 254),
              Clamp(Shr(kW709Hdtv.cr.Dot(s) + add, shift), 1, 254)};
    }
    case Mat::kYuv: {
      // Differences at the scale of one pixel for the block (>> 14), twice for the pair
      // (>> 13), four times for a lone pixel (>> 12); U wraps, V clamps.
      const int diff_shift = n == 4 ? 14 : n == 2 ? 13 : 12;
      const int64_t du = Shr((s.b << 14) - YuvY(s), diff_shift);
      const int64_t dv = Shr((s.r << 14) - YuvY(s), diff_shift);
      return {Low8(Shr(du * 8061, 16) + 128), Clamp(Shr(dv * 14369, 16) + 128, 0, 255)};
    }
  }
  return {-1, -1};
}

// 4:1:1: BT.601 on the sums of four pixels, 128 * 2^18 plus the half 2^17.
std::array<int, 2> Chroma411(const Rgb& s) {
  const int64_t add = (int64_t{128} << 18) + (1 << 17);
  return {Low8(Shr(kW601.cb.Dot(s) + add, 18)), Low8(Shr(kW601.cr.Dot(s) + add, 18))};
}

// Expected contents of one destination image in logical (x, y, channel) order; -1 is "must
// keep its previous bytes".
struct Plane {
  int w, h, ch;
  std::vector<int> v;
  Plane(int width, int height, int channels)
      : w(width), h(height), ch(channels), v(static_cast<size_t>(width * height * channels), -1) {}
  int& At(int x, int y, int c = 0) { return v[static_cast<size_t>((y * w + x) * ch + c)]; }
  int At(int x, int y, int c = 0) const { return v[static_cast<size_t>((y * w + x) * ch + c)]; }
};

// Destination images: luma and two chroma planes, luma and Cb Cr pairs, or one packed image.
// Chroma planes get the rounded-up size, so a sample written for an odd last column or row
// lands in guarded memory; whole-image members get the exact size their implied steps assume.
std::vector<Plane> EmptyPlanes(const EncodeExport& e, int w, int h) {
  auto div = [&](int v, int by) { return std::max(1, e.whole ? v / by : (v + by - 1) / by); };
  switch (e.shape) {
    case Shape::k420P3:
      return {Plane(w, h, 1), Plane(div(w, 2), div(h, 2), 1), Plane(div(w, 2), div(h, 2), 1)};
    case Shape::k420P2:
      return {Plane(w, h, 1), Plane(div(w, 2), div(h, 2), 2)};
    case Shape::k422P3:  // whole-image chroma steps are ceil(width / 2)
      return {Plane(w, h, 1), Plane((w + 1) / 2, h, 1), Plane((w + 1) / 2, h, 1)};
    case Shape::k411P3:
      return {Plane(w, h, 1), Plane((w + 3) / 4, h, 1), Plane((w + 3) / 4, h, 1)};
    case Shape::k422C2:
      return {Plane(w, h, 2)};
  }
  return {};
}

ZylStatus ExpectedStatus(const EncodeExport& e, int w, int h) {
  if (w < e.MinSize() || h < e.MinSize()) return zylStsSizeErr;
  switch (e.shape) {
    case Shape::k420P3:
    case Shape::k420P2:
      return (w | h) & 1 ? zylStsDoubleSize : zylStsOk;
    case Shape::k422P3:
      return w & 1 ? zylStsDoubleSize : zylStsOk;
    case Shape::k411P3:
      return w & 3 ? zylStsDoubleSize : zylStsOk;
    case Shape::k422C2:
      return zylStsOk;
  }
  return zylStsOk;
}

Rgb PixelOf(const EncodeExport& e, const Img& src, int x, int y) {
  const int64_t c0 = src.At(x, y, 0), c1 = src.At(x, y, 1), c2 = src.At(x, y, 2);
  return e.bgr ? Rgb{c2, c1, c0} : Rgb{c0, c1, c2};
}

// Packed row: the byte positions of the two luma and two chroma of pair i, per order.
void PutPair(const EncodeExport& e, Plane& p, int y, int i, int y0, int y1, std::array<int, 2> c) {
  const int first = e.cr_first ? c[1] : c[0], second = e.cr_first ? c[0] : c[1];
  const int bytes[4] = {e.cby_first ? first : y0, e.cby_first ? y0 : first,
                        e.cby_first ? second : y1, e.cby_first ? y1 : second};
  for (int k = 0; k < 4; ++k) p.At(2 * i + k / 2, y, k % 2) = bytes[k];
}

std::vector<Plane> Reference(const EncodeExport& e, const Img& src) {
  const int w = src.width(), h = src.height();
  std::vector<Plane> out = EmptyPlanes(e, w, h);
  if (w < e.MinSize() || h < e.MinSize()) return out;
  auto px = [&](int x, int y) { return PixelOf(e, src, x, y); };
  const bool trunc = e.mat == Mat::k601 && !e.ThreeTap();  // Y1 of the BT.601 pair loop
  for (int y = 0; y < h; ++y) {
    switch (e.shape) {
      case Shape::k420P3:
      case Shape::k420P2: {
        if ((y & 1) || y + 1 >= h) break;
        for (int i = 0; i < w / 2; ++i) {
          Rgb sum;
          for (int k = 0; k < 4; ++k) {
            const Rgb p = px(2 * i + (k & 1), y + k / 2);
            out[0].At(2 * i + (k & 1), y + k / 2) = Luma(e.mat, p, false);
            sum = sum + p;
          }
          const std::array<int, 2> c = Chroma(e.mat, sum, 4);
          if (e.shape == Shape::k420P2) {
            out[1].At(i, y / 2, 0) = c[0];
            out[1].At(i, y / 2, 1) = c[1];
          } else {
            out[1].At(i, y / 2) = e.cr_first ? c[1] : c[0];
            out[2].At(i, y / 2) = e.cr_first ? c[0] : c[1];
          }
        }
        break;
      }
      case Shape::k422P3:
        for (int i = 0; i < w / 2; ++i) {
          const Rgb p0 = px(2 * i, y), p1 = px(2 * i + 1, y);
          out[0].At(2 * i, y) = Luma(e.mat, p0, false);
          out[0].At(2 * i + 1, y) = Luma(e.mat, p1, trunc);
          const std::array<int, 2> c = Chroma(e.mat, p0 + p1, 2);
          out[1].At(i, y) = c[0];
          out[2].At(i, y) = c[1];
        }
        break;
      case Shape::k411P3:
        for (int i = 0; i < w / 4; ++i) {
          Rgb sum;
          for (int k = 0; k < 4; ++k) {
            out[0].At(4 * i + k, y) = Luma(e.mat, px(4 * i + k, y), false);
            sum = sum + px(4 * i + k, y);
          }
          const std::array<int, 2> c = Chroma411(sum);
          out[1].At(i, y) = c[0];
          out[2].At(i, y) = c[1];
        }
        break;
      case Shape::k422C2: {
        // Three-tap: chroma of pair (p0, p1) = ((q(p0) >> 1) + (q(p-1) >> 2) + (q(p1) >> 2) +
        // 128 * 2^16 + 2^15 - 1) >> 16, with p-1 = p0 at the start of a row.
        auto three_tap = [&](int x, const Row3& q) {
          const int64_t q0 = q.Dot(px(x, y)), q1 = q.Dot(px(x + 1, y));
          const int64_t qm = q.Dot(px(x > 0 ? x - 1 : x, y));
          return Low8(Shr(Shr(q0, 1) + Shr(qm, 2) + Shr(q1, 2) + (128 << 16) + 32767, 16));
        };
        for (int i = 0; i < w / 2; ++i) {
          const Rgb p0 = px(2 * i, y), p1 = px(2 * i + 1, y);
          std::array<int, 2> c = Chroma(e.mat, p0 + p1, 2);
          if (e.ThreeTap()) c = {three_tap(2 * i, kW601.cb), three_tap(2 * i, kW601.cr)};
          PutPair(e, out[0], y, i, Luma(e.mat, p0, false), Luma(e.mat, p1, trunc), c);
        }
        if (w & 1) {  // the lone pixel: its luma and the order's first chroma, from it alone
          const Rgb p = px(w - 1, y);
          const std::array<int, 2> c = Chroma(e.mat, p, 1);
          const int chroma = e.cr_first ? c[1] : c[0];
          out[0].At(w - 1, y, e.cby_first ? 1 : 0) = Luma(e.mat, p, false);
          out[0].At(w - 1, y, e.cby_first ? 0 : 1) = chroma;
        }
        break;
      }
    }
  }
  return out;
}

// ------------------------------------------------------------------ running --

struct Case {
  std::unique_ptr<Img> src;
  std::vector<std::unique_ptr<Img>> dst;
  std::vector<Img::Snapshot> before;
};

Case MakeCase(const EncodeExport& e, int w, int h, const StepPlan& plan, uint32_t seed) {
  Case c;
  const bool whole = e.whole;  // implied steps: contiguous images only
  c.src = std::make_unique<Img>(
      w, h, e.src, ImageOptions{whole ? Steps::kPacked : plan.src[0], plan.src_place, seed});
  const std::vector<Plane> shape = EmptyPlanes(e, w, h);
  for (size_t i = 0; i < shape.size(); ++i) {
    const Format f = shape[i].ch == 2 ? kC2 : kC1;
    const Steps s = whole ? Steps::kPacked : plan.dst[i];
    c.dst.push_back(std::make_unique<Img>(shape[i].w, shape[i].h, f,
                                          ImageOptions{s, plan.dst_place, seed + 1 + uint32_t(i)}));
    c.before.push_back(c.dst.back()->Save());
  }
  return c;
}

// Calls the export on the case's images.
ZylStatus Call(const EncodeExport& e, const Case& c) {
  std::vector<const Img*> images = {c.src.get()};
  for (const auto& img : c.dst) images.push_back(img.get());
  return CallOnImageList(e.row, 0, {c.src->width(), c.src->height()}, images);
}

// Every destination image equals its snapshot with the expected bytes put in.
bool Matches(const Case& c, const std::vector<Plane>& want) {
  bool ok = true;
  for (size_t i = 0; i < c.dst.size(); ++i) {
    const ::testing::AssertionResult same =
        c.dst[i]->Matches(c.before[i], [&](int x, int y, int ch) -> std::optional<uint8_t> {
          const int v = want[i].At(x, y, ch);
          if (v < 0) return std::nullopt;
          return static_cast<uint8_t>(v);
        });
    EXPECT_TRUE(same) << "destination image " << i;
    ok = ok && same;
  }
  return ok;
}

// Runs the export on the case and checks status and every destination byte.
bool RunAndCheck(const EncodeExport& e, const Case& c) {
  EXPECT_EQ(Call(e, c), ExpectedStatus(e, c.src->width(), c.src->height()));
  Matches(c, Reference(e, *c.src));
  return !::testing::Test::HasFailure();
}

class EncodeExports : public ::testing::TestWithParam<EncodeExport> {};

// ------------------------------------------------------ reference comparison --

// Heights 1 and 3 leave an odd last row; 1x1 writes nothing (+35), 3x2 one block with column 2
// untouched. Height 4 takes the range ends and the chroma midpoint in every combination instead of
// random pixels: the clamps (V of YUV, every output of full-range BT.709), the largest sums.
TEST_P(EncodeExports, MatchesReference) {
  const EncodeExport& e = GetParam();
  const std::vector<Px> extremes = ExtremeTriples8u();
  ForEachTarget([&](int) {
    Sweep(Plans::kCycled, {1, 2, 3, 4, 7}, SweepWidths(), [&](const SweepCase& s) {
      const Case c = MakeCase(e, s.width, s.height, s.plan, s.seed);
      if (s.height == 4) {
        FillPixels(*c.src, extremes, s.seed);
      } else {
        FillRandom(*c.src, s.seed);
      }
      return RunAndCheck(e, c);
    });
  });
}

// ------------------------------------------------------------ known answers --

// Flat white and black give the matrix's range ends for luma and exactly 128 for every chroma
// sample of every form (block, pair, three-tap, lone pixel): the chroma weights of each row
// sum to 0, so only the offset and rounding term remain, each under one step:
//   BT.601 / BT.709 studio: Y(white) = (56296 or 56295) * 255 + 0x108000 >> 16 = 235 (the
//   truncating Y1: 15404056 >> 16 = 235 too); Y(black) = 0x108000 >> 16 = 16 (Y1 also 16);
//   chroma 0x2008000 >> 18, 0x1010000 >> 17, 0x808000 >> 16, (2^23 + 32767) >> 16 = 128.
//   BT.709 full range: Y(white) = 65536 * 255 + 32768 >> 16 = 255 -> 254, Y(black) 0 -> 1.
//   YUV: Y(white) = (16384 * 255 + 2) >> 14 = 255, Y(black) = 0; differences 0 -> 128.
TEST_P(EncodeExports, FlatWhiteAndBlack) {
  const EncodeExport& e = GetParam();
  struct Flat {
    uint8_t in, y601, y_hdtv, y_yuv;
  };
  for (const Flat f : {Flat{255, 235, 254, 255}, Flat{0, 16, 1, 0}}) {
    const int want_y = e.mat == Mat::k709Hdtv ? f.y_hdtv : e.mat == Mat::kYuv ? f.y_yuv : f.y601;
    ForEachTarget([&](int) {
      const Case c = MakeCase(e, 67, 3, kStepPlans[2], 9);
      c.src->Fill([&](int, int, int) { return f.in; });
      ASSERT_EQ(Call(e, c), ExpectedStatus(e, 67, 3));
      std::vector<Plane> want = Reference(e, *c.src);  // used only for which bytes are written
      for (size_t i = 0; i < want.size(); ++i) {
        for (size_t k = 0; k < want[i].v.size(); ++k) {
          if (want[i].v[k] < 0) continue;
          const bool chroma_byte = e.shape == Shape::k422C2 ? (k % 2 == 0) == e.cby_first : i > 0;
          want[i].v[k] = chroma_byte ? 128 : want_y;
        }
      }
      Matches(c, want);
    });
  }
}

// A hand-worked case: a tile of source columns repeated across the row, then tail columns.
struct Hand {
  std::vector<std::vector<Px>> tile;  // rows of the tile (R, G, B)
  std::vector<Px> tail;               // last columns, the same in every row
  std::vector<std::vector<int>> y;    // luma of the tile columns per row, or packed tile bytes
  std::vector<int> y_tail;            // luma of the tail (-1: untouched), or packed tail bytes
  std::array<int, 2> c;               // (Cb, Cr) or (U, V) of the tile's one chroma sample
  std::vector<int> first = {};        // packed bytes of the first tile, where it differs
};

constexpr Px kRed{255, 0, 0}, kGreen{0, 255, 0}, kBlue{0, 0, 255}, kWhite{255, 255, 255},
    kBlack{0, 0, 0}, kGray1{1, 1, 1};

// Worked by hand from the definitions (R, G, B = 255 or 0 below).
Hand HandCase(const EncodeExport& e) {
  switch (e.shape) {
    case Shape::k420P3:
    case Shape::k420P2: {
      // Tile red green | blue red (sums R 510, G 255, B 255); an odd white last column that
      // is never read or written.
      Hand hd{{{kRed, kGreen}, {kBlue, kRed}}, {kWhite}, {}, {-1}, {}};
      auto put = [&](int yr, int yg, int yb, int cb, int cr) {
        hd.y = {{yr, yg}, {yb, yr}};
        hd.c = {cb, cr};
      };
      switch (e.mat) {
        case Mat::k601:
          // Y: red 4294965 + 1081344 = 5376309 >> 16 = 82; green 8422650 + 1081344 -> 145;
          // blue 1637865 + 1081344 = 2719209 -> 41. Cb = -4946490 - 4863105 + 7336350 +
          // 33587200 = 31113955 >> 18 = 118; Cr = 14672700 - 6149835 - 1186515 + 33587200 =
          // 40923550 >> 18 = 156.
          put(82, 145, 41, 118, 156);
          break;
        case Mat::k709Csc:
          // Y: 3058215 + 1081344 -> 63; 10260945 + 1081344 -> 173; 1036065 + 1081344 -> 32.
          // Cb = -3375690 - 5648505 + 7336350 + 33587200 = 31899355 >> 18 = 121; Cr =
          // 14672700 - 6667995 - 668355 + 33587200 = 40923550 -> 156.
          put(63, 173, 32, 121, 156);
          break;
        case Mat::k709Hdtv:
          // Y: 3559545 + 32768 -> 54; 11948790 + 32768 -> 182; 1203345 + 32768 -> 18.
          // Cb = -3910680 - 6584355 + 8539695 + 33685500 = 31730160 >> 18 = 121; Cr =
          // 17079390 - 7754295 - 785400 + 33685500 = 42225195 >> 18 = 161.
          put(54, 182, 18, 121, 161);
          break;
        case Mat::kYuv:
          // y: red 1249245, green 2452335, blue 476340; Y = (y + 2) >> 14 = 76, 149, 29.
          // Sum y = 5427165; U: (4177920 - 5427165) >> 14 = -77, -77 * 8061 >> 16 = -10 ->
          // 118; V: (8355840 - 5427165) >> 14 = 178, 178 * 14369 >> 16 = 39 -> 167.
          put(76, 149, 29, 118, 167);
          break;
      }
      return hd;
    }
    case Shape::k422P3:
      // Tile red green, white last column untouched (+35).
      // BT.601: Y0 = 82, Y1 truncates: 8422650 + 1048576 = 9471226 >> 16 = 144 (145 if it
      // rounded); Cb = -2473245 - 4863105 + 16842752 = 9506402 >> 17 = 72; Cr = 7336350 -
      // 6149835 + 16842752 = 18029267 >> 17 = 137.
      // YUV: Y 76, 149; sum y = 3701580; U: -3701580 >> 13 = -452, -452 * 8061 >> 16 = -56 ->
      // 72; V: (4177920 - 3701580) >> 13 = 58, 58 * 14369 >> 16 = 12 -> 140.
      if (e.mat == Mat::kYuv) return {{{kRed, kGreen}}, {kWhite}, {{76, 149}}, {-1}, {72, 140}};
      return {{{kRed, kGreen}}, {kWhite}, {{82, 144}}, {-1}, {72, 137}};
    case Shape::k411P3:
      // Tile red red green blue (sums R 510, G 255, B 255): Cb = -2473245 + 2^25 + 2^17 =
      // 31212259 >> 18 = 119; Cr = 7336350 + 33685504 = 41021854 >> 18 = 156. Two white
      // last columns, never read or written (+35).
      return {{{kRed, kRed, kGreen, kBlue}},
              {kWhite, kWhite},
              {{82, 82, 145, 41}},
              {-1, -1},
              {119, 156}};
    case Shape::k422C2:
      if (e.ThreeTap()) {
        // Tile blue blue black black, lone red last. q(blue) = 7336350 (Cb), -1186515 (Cr);
        // q >> 1 = 3668175, -593258; q >> 2 = 1834087, -296629; rounding 8421375.
        // Blue pair after black: Cb = 3668175 + 1834087 + 8421375 = 13923637 >> 16 = 212;
        // Cr = -593258 - 296629 + 8421375 = 7531488 -> 114. Black pair after blue: Cb =
        // 1834087 + 8421375 -> 156; Cr = -296629 + 8421375 -> 123. The first pair of a row
        // repeats p0 for p-1: Cb = 15757724 >> 16 = 240 (212 if the edge read 0), Cr =
        // 7234859 -> 110. Lone red: Cb = -2473245 + 8421376 = 5948131 >> 16 = 90, Y 82.
        // Both luma of a pair round: blue 41, black 16.
        return {{{kBlue, kBlue, kBlack, kBlack}},
                {kRed},
                {{212, 41, 114, 41, 156, 16, 123, 16}},
                {90, 82},
                {},
                {240, 41, 110, 41}};
      }
      // Tile gray(1) gray(1), lone red last. BT.601: Y0 = 56296 + 1081344 = 1137640 >> 16 =
      // 17, Y1 = 56296 + 1048576 = 1104872 >> 16 = 16; pair chroma 0x1010000 >> 17 = 128;
      // lone red: Y 82, Cb 90 or Cr = 7336350 + 8421376 = 15757726 >> 16 = 240.
      // YUV: Y = (16384 + 2) >> 14 = 1 twice; U = V = 128; lone red: Y 76, U = (-1249245 >>
      // 12 = -305) * 8061 >> 16 = -38 -> 90.
      // BT.709 full range: Y = 98304 >> 16 = 1; Cb = Cr = 0x100FFFE >> 17 = 128; lone red:
      // Y = 3592313 >> 16 = 54, Cb = -1955340 + 8421376 = 6466036 >> 16 = 98.
      if (e.mat == Mat::kYuv) return {{{kGray1, kGray1}}, {kRed}, {{1, 128, 1, 128}}, {76, 90}, {}};
      if (e.mat == Mat::k709Hdtv) {
        return {{{kGray1, kGray1}}, {kRed}, {{128, 1, 128, 1}}, {98, 54}, {}};
      }
      return {{{kGray1, kGray1}}, {kRed}, {{17, 128, 16, 128}}, {82, e.cr_first ? 240 : 90}, {}};
  }
  return {};
}

// Once with a single tile (the per-pixel tails) and once with 65 tiles, through the vector
// bodies of every target.
TEST_P(EncodeExports, HandWorkedValues) {
  const EncodeExport& e = GetParam();
  const Hand hd = HandCase(e);
  const int tile_w = static_cast<int>(hd.tile[0].size()), h = static_cast<int>(hd.tile.size());
  for (int reps : {1, 65}) {
    const int tiled = reps * tile_w, w = tiled + static_cast<int>(hd.tail.size());
    ForEachTarget([&](int) {
      SCOPED_TRACE(::testing::Message() << w << "x" << h);
      const Case c = MakeCase(e, w, h, kStepPlans[1], 3);
      std::vector<Plane> want = EmptyPlanes(e, w, h);
      for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
          const Px p = x < tiled ? hd.tile[y][x % tile_w] : hd.tail[x - tiled];
          for (int ch = 0; ch < 3; ++ch) c.src->At(x, y, ch) = p[e.bgr ? 2 - ch : ch];
        }
        if (e.shape == Shape::k422C2) {
          const std::vector<int>& t = hd.y[0];
          for (int k = 0; k < 2 * w; ++k) {
            const size_t at = static_cast<size_t>(k);
            want[0].At(k / 2, y, k % 2) = k >= 2 * tiled         ? hd.y_tail[at - 2 * tiled]
                                          : at < hd.first.size() ? hd.first[at]
                                                                 : t[at % t.size()];
          }
          continue;
        }
        for (int x = 0; x < w; ++x) {
          want[0].At(x, y) = x < tiled ? hd.y[y][x % tile_w] : hd.y_tail[x - tiled];
        }
        if (y >= want[1].h) continue;  // 4:2:0: one chroma row for the two
        for (int i = 0; i < reps; ++i) {
          if (e.shape == Shape::k420P2) {
            want[1].At(i, y, 0) = hd.c[0];
            want[1].At(i, y, 1) = hd.c[1];
          } else {
            want[1].At(i, y) = hd.c[e.cr_first ? 1 : 0];
            want[2].At(i, y) = hd.c[e.cr_first ? 0 : 1];
          }
        }
      }
      EXPECT_EQ(Call(e, c), ExpectedStatus(e, w, h));
      Matches(c, want);
    });
  }
}

INSTANTIATE_TEST_SUITE_P(Encode, EncodeExports, ::testing::ValuesIn(kExports), FamilyRowName());

// ------------------------------------------------------------ argument checks --

INSTANTIATE_TEST_SUITE_P(Encode, ArgCheck, ::testing::ValuesIn(RowsOf(kExports)), ExportRowName);

}  // namespace
}  // namespace zyl::test
