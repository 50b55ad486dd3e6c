// The call frame shared by every export: argument checks in the defined order
// and the row walker.
//
// Order of checks in an entry (first failure wins, nothing written before):
//   1. image pointers / plane arrays together  -> zylStsNullPtrErr
//   2. ROI below 1 (or the family minimum)     -> zylStsSizeErr
//   3. steps below 1, only where checked       -> zylStsStepErr
//   4. plane pointers one at a time, src first -> zylStsNullPtrErr
//   5. family parameters
#ifndef ZYL_CORE_FRAME_H_
#define ZYL_CORE_FRAME_H_

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "include/zylcc.h"
#include "src/core/rounding.h"

namespace zyl {

// ---------------------------------------------------------------- checks --

template <class... P>
inline bool AnyNull(P... p) {
  return ((p == nullptr) || ...);
}

inline bool BadSize(ZylSize roi, int min_width = 1, int min_height = 1) {
  return roi.width < min_width || roi.height < min_height;
}

// Plane pointers of an array, in plane order.
template <class T>
inline bool AnyPlaneNull(const T* const* planes, int count) {
  for (int i = 0; i < count; ++i) {
    if (planes[i] == nullptr) return true;
  }
  return false;
}

// ------------------------------------------------------------ row walking --

// Byte arithmetic on typed pointers: steps are byte counts of either sign.
template <class T>
inline T* ByteOffset(T* p, ptrdiff_t bytes) {
  using Byte = typename std::conditional<std::is_const<T>::value, const uint8_t, uint8_t>::type;
  return reinterpret_cast<T*>(reinterpret_cast<Byte*>(p) + bytes);
}

// One image side of a call: up to four plane row pointers and their steps.
// Interleaved images are one plane; planar 4:4:4 images share one step.
template <class T, int kPlanes>
struct Rows {
  T* p[kPlanes];
  ptrdiff_t step[kPlanes];

  void Next() {
    for (int i = 0; i < kPlanes; ++i) p[i] = ByteOffset(p[i], step[i]);
  }
};

template <class T>
inline Rows<T, 1> Interleaved(T* p, int step) {
  return Rows<T, 1>{{p}, {step}};
}

template <int kPlanes, class T>
inline Rows<T, kPlanes> Planar(T* const* planes, int step) {
  Rows<T, kPlanes> r;
  for (int i = 0; i < kPlanes; ++i) {
    r.p[i] = planes[i];
    r.step[i] = step;
  }
  return r;
}

template <int kPlanes, class T>
inline Rows<T, kPlanes> Planar(T* const* planes, const int* steps) {
  Rows<T, kPlanes> r;
  for (int i = 0; i < kPlanes; ++i) {
    r.p[i] = planes[i];
    r.step[i] = steps[i];
  }
  return r;
}

// Calls kernel(src_rows, dst_rows, width, args...) for each row, top row
// first, advancing every row pointer by its step.
template <class S, class D, class Kernel, class... Args>
inline void WalkRows(S src, D dst, ZylSize roi, Kernel kernel, Args... args) {
  for (int y = 0; y < roi.height; ++y) {
    kernel(src.p, dst.p, static_cast<ptrdiff_t>(roi.width), args...);
    src.Next();
    dst.Next();
  }
}

// The row pointers of one side of a call, from its export arguments: a pointer
// for interleaved layouts, a plane array (one shared step) for planar ones.
template <class L, class T>
inline Rows<T, 1> SideRows(T* p, int step) {
  static_assert(L::kPlanes == 1, "interleaved layout expected");
  return Interleaved(p, step);
}
template <class L, class T>
inline Rows<T, L::kPlanes> SideRows(T* const* planes, int step) {
  return Planar<L::kPlanes>(planes, step);
}

template <class L, class P>
inline bool SidePlanesNull(P side, int checked) {
  if constexpr (L::kPlanes > 1) {
    return AnyPlaneNull(side, checked);
  } else {
    (void)side;
    (void)checked;
    return false;
  }
}

// The whole call of a 4:4:4 three-channel export with one step per side:
// checks in the defined order, then one kernel call per row.
// kDstChecked: how many destination planes are tested for null.
template <class SL, class DL, int kDstChecked = DL::kPlanes, class SP, class DP, class Kernel,
          class... Args>
inline ZylStatus Convert444(SP src, int src_step, DP dst, int dst_step, ZylSize roi, Kernel kernel,
                            Args... args) {
  if (AnyNull(src, dst)) return zylStsNullPtrErr;
  if (BadSize(roi)) return zylStsSizeErr;
  if (SidePlanesNull<SL>(src, SL::kPlanes)) return zylStsNullPtrErr;
  if (SidePlanesNull<DL>(dst, kDstChecked)) return zylStsNullPtrErr;
  WalkRows(SideRows<SL>(src, src_step), SideRows<DL>(dst, dst_step), roi, kernel, args...);
  return zylStsOk;
}

// Convert444 for the families that compute in float: where the results are
// integer codes (kCodes) the call holds round-to-nearest-even, so neither the
// conversions nor the float arithmetic depend on the caller's mode; float
// results follow the caller's mode like any float code.
template <class SL, class DL, bool kCodes, class SP, class DP, class Kernel, class... Args>
inline ZylStatus Convert444Float(SP src, int src_step, DP dst, int dst_step, ZylSize roi,
                                 Kernel kernel, Args... args) {
  if constexpr (kCodes) {
    const NearestRounding nearest;
    return Convert444<SL, DL>(src, src_step, dst, dst_step, roi, kernel, args...);
  } else {
    return Convert444<SL, DL>(src, src_step, dst, dst_step, roi, kernel, args...);
  }
}

// A byte step as a count of whole T elements (arithmetic shift, so an odd
// remainder is dropped), given back in bytes for the row walker; for the
// families whose 16- and 32-bit members advance by elements.
template <class T>
inline int WholeElementStep(int step) {
  constexpr int kShift = sizeof(T) == 4 ? 2 : (sizeof(T) == 2 ? 1 : 0);
  return (step >> kShift) * static_cast<int>(sizeof(T));
}

}  // namespace zyl

#endif  // ZYL_CORE_FRAME_H_
