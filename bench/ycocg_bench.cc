// YCoCg: the 26 exports, each with its memcpy twin; one plain and one lifting pair of the
// 8-bit members also per forced SIMD target. No peer library offers these transforms.
#include <cstddef>
#include <string>
#include <vector>

#include "bench/bench_common.h"

namespace zyl::bench {
namespace {

// Pixel and plane sides by element size (bytes per sample).
Layout Pixels(int channels, size_t bytes) {
  return Layout{{PlaneShape{channels * static_cast<int>(bytes), 1, 1}}};
}
Layout Planes3(size_t bytes) {
  return Layout{std::vector<PlaneShape>(3, PlaneShape{static_cast<int>(bytes), 1, 1})};
}

template <class T>
const T* In(const Zyl8u* p) {
  return reinterpret_cast<const T*>(p);
}
template <class T>
T* Out(Zyl8u* p) {
  return reinterpret_cast<T*>(p);
}

// A frame's plane pointers as the element type an export takes.
template <class T>
struct PlanePtrs {
  explicit PlanePtrs(Zyl8u* const* p) : ptr{Out<T>(p[0]), Out<T>(p[1]), Out<T>(p[2])} {}
  explicit PlanePtrs(const Zyl8u* const* p) : ptr{In<T>(p[0]), In<T>(p[1]), In<T>(p[2])} {}
  T* ptr[3];
};

}  // namespace
}  // namespace zyl::bench

// Forward: pixels of type P (channels C) to planes of type Q; inverse the other way.
#define ZYL_YCOCG_FWD(fn, P, C, Q, flags)                                                         \
  AddExport(                                                                                      \
      std::string(#fn).substr(4), Pixels(C, sizeof(P)), Planes3(sizeof(Q)),                       \
      [](const Frame& f) {                                                                        \
        return fn(In<P>(f.src[0]), f.src_step[0], PlanePtrs<Q>(f.dst).ptr, f.dst_step[0], f.roi); \
      },                                                                                          \
      flags)
#define ZYL_YCOCG_INV(fn, Q, P, C, flags)                                                        \
  AddExport(                                                                                     \
      std::string(#fn).substr(4), Planes3(sizeof(Q)), Pixels(C, sizeof(P)),                      \
      [](const Frame& f) {                                                                       \
        return fn(PlanePtrs<const Q>(f.src).ptr, f.src_step[0], Out<P>(f.dst[0]), f.dst_step[0], \
                  f.roi);                                                                        \
      },                                                                                         \
      flags)

ZYL_BENCH_FAMILY(ycocg) {
  using namespace zyl::bench;
  ZYL_YCOCG_FWD(zyliBGRToYCoCg_8u16s_C3P3R, Zyl8u, 3, Zyl16s, kPerTarget);
  ZYL_YCOCG_FWD(zyliBGRToYCoCg_8u16s_C4P3R, Zyl8u, 4, Zyl16s, kNoFlags);
  ZYL_YCOCG_FWD(zyliBGRToYCoCg_Rev_8u16s_C3P3R, Zyl8u, 3, Zyl16s, kPerTarget);
  ZYL_YCOCG_FWD(zyliBGRToYCoCg_Rev_8u16s_C4P3R, Zyl8u, 4, Zyl16s, kNoFlags);
  ZYL_YCOCG_INV(zyliYCoCgToBGR_16s8u_P3C3R, Zyl16s, Zyl8u, 3, kPerTarget);
  ZYL_YCOCG_INV(zyliYCoCgToBGR_16s8u_P3C4R, Zyl16s, Zyl8u, 4, kNoFlags);
  ZYL_YCOCG_INV(zyliYCoCgToBGR_Rev_16s8u_P3C3R, Zyl16s, Zyl8u, 3, kPerTarget);
  ZYL_YCOCG_INV(zyliYCoCgToBGR_Rev_16s8u_P3C4R, Zyl16s, Zyl8u, 4, kNoFlags);
  ZYL_YCOCG_FWD(zyliSBGRToYCoCg_16s_C3P3R, Zyl16s, 3, Zyl16s, kNoFlags);
  ZYL_YCOCG_FWD(zyliSBGRToYCoCg_16s_C4P3R, Zyl16s, 4, Zyl16s, kNoFlags);
  ZYL_YCOCG_FWD(zyliSBGRToYCoCg_16s32s_C3P3R, Zyl16s, 3, Zyl32s, kNoFlags);
  ZYL_YCOCG_FWD(zyliSBGRToYCoCg_16s32s_C4P3R, Zyl16s, 4, Zyl32s, kNoFlags);
  ZYL_YCOCG_FWD(zyliSBGRToYCoCg_Rev_16s_C3P3R, Zyl16s, 3, Zyl16s, kNoFlags);
  ZYL_YCOCG_FWD(zyliSBGRToYCoCg_Rev_16s_C4P3R, Zyl16s, 4, Zyl16s, kNoFlags);
  ZYL_YCOCG_FWD(zyliSBGRToYCoCg_Rev_16s32s_C3P3R, Zyl16s, 3, Zyl32s, kNoFlags);
  ZYL_YCOCG_FWD(zyliSBGRToYCoCg_Rev_16s32s_C4P3R, Zyl16s, 4, Zyl32s, kNoFlags);
  ZYL_YCOCG_INV(zyliYCoCgToSBGR_16s_P3C3R, Zyl16s, Zyl16s, 3, kNoFlags);
  ZYL_YCOCG_INV(zyliYCoCgToSBGR_16s_P3C4R, Zyl16s, Zyl16s, 4, kNoFlags);
  ZYL_YCOCG_INV(zyliYCoCgToSBGR_32s16s_P3C3R, Zyl32s, Zyl16s, 3, kNoFlags);
  ZYL_YCOCG_INV(zyliYCoCgToSBGR_32s16s_P3C4R, Zyl32s, Zyl16s, 4, kNoFlags);
  ZYL_YCOCG_INV(zyliYCoCgToSBGR_Rev_16s_P3C3R, Zyl16s, Zyl16s, 3, kNoFlags);
  ZYL_YCOCG_INV(zyliYCoCgToSBGR_Rev_16s_P3C4R, Zyl16s, Zyl16s, 4, kNoFlags);
  ZYL_YCOCG_INV(zyliYCoCgToSBGR_Rev_32s16s_P3C3R, Zyl32s, Zyl16s, 3, kNoFlags);
  ZYL_YCOCG_INV(zyliYCoCgToSBGR_Rev_32s16s_P3C4R, Zyl32s, Zyl16s, 4, kNoFlags);
  ZYL_YCOCG_FWD(zyliRGBToYCoCg_8u_C3P3R, Zyl8u, 3, Zyl8u, kNoFlags);
  ZYL_YCOCG_INV(zyliYCoCgToRGB_8u_P3C3R, Zyl8u, Zyl8u, 3, kNoFlags);
}
