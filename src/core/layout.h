// Pixel layouts of the 3-channel (plus alpha) families, per-pixel side.
//
// A layout says where the channels of pixel x live in a set of row pointers
// and what happens to the fourth channel:
//   C3   three interleaved channels
//   AC4  four interleaved; the fourth is never read (source) and never
//        written (destination)
//   C4   four interleaved; the fourth is read (source) or written with the
//        call's alpha value (destination)
//   P3   three planes
//   P4   four planes; plane 3 is read or written like the C4 fourth channel
#ifndef ZYL_CORE_LAYOUT_H_
#define ZYL_CORE_LAYOUT_H_

#include <cstddef>

namespace zyl {

struct C3 {
  static constexpr int kPlanes = 1, kStride = 3;
  static constexpr bool kAlpha = false;
};
struct AC4 {
  static constexpr int kPlanes = 1, kStride = 4;
  static constexpr bool kAlpha = false;
};
struct C4 {
  static constexpr int kPlanes = 1, kStride = 4;
  static constexpr bool kAlpha = true;
};
struct P3 {
  static constexpr int kPlanes = 3, kStride = 1;
  static constexpr bool kAlpha = false;
};
struct P4 {
  static constexpr int kPlanes = 4, kStride = 1;
  static constexpr bool kAlpha = true;
};

// Reads channels 0..2 (and 3 where the layout carries alpha) of pixel x.
template <class L, class T>
inline void LoadPixel(const T* const* rows, ptrdiff_t x, T c[4]) {
  if constexpr (L::kPlanes == 1) {
    const T* p = rows[0] + x * L::kStride;
    c[0] = p[0];
    c[1] = p[1];
    c[2] = p[2];
    if constexpr (L::kAlpha) c[3] = p[3];
  } else {
    for (int i = 0; i < (L::kAlpha ? 4 : 3); ++i) c[i] = rows[i][x];
  }
}

// Writes channels 0..2 (and 3 where the layout carries alpha) of pixel x.
template <class L, class T>
inline void StorePixel(T* const* rows, ptrdiff_t x, const T c[4]) {
  if constexpr (L::kPlanes == 1) {
    T* p = rows[0] + x * L::kStride;
    p[0] = c[0];
    p[1] = c[1];
    p[2] = c[2];
    if constexpr (L::kAlpha) p[3] = c[3];
  } else {
    for (int i = 0; i < (L::kAlpha ? 4 : 3); ++i) rows[i][x] = c[i];
  }
}

}  // namespace zyl

#endif  // ZYL_CORE_LAYOUT_H_
