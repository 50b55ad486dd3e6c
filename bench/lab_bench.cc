// Lab: the 18 exports, each with its memcpy twin; the 8u and 32f RGB pairs also per forced SIMD
// target; OpenCV's linear-RGB Lab conversions (COLOR_LRGB2Lab / COLOR_Lab2LRGB, 8u and 32f)
// next to ours. Both use the D65 matrices and the 2.55 / +128 8-bit coding, but OpenCV has its
// own cube root and its inverse keeps the linear segment, so codes can differ.
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

#include "bench/bench_common.h"
#include "bench/peers.h"

namespace zyl::bench {
namespace {

template <class T>
Layout Planes3() {
  const PlaneShape p{static_cast<int>(sizeof(T)), 1, 1};
  return Layout{{p, p, p}};
}

// Random bytes read as floats are full of NaNs and huge values; the untimed warm-up call rewrites
// a float source (once: a fresh pattern shows in its first 32 elements, which lie in -100..100
// by chance about once in 10^9) to valid values: RGB 0..1, L 0..100, a and b -100..100.
template <class T>
void SaneSource(const Frame& f, bool rgb, bool planar) {
  const int planes = planar ? 3 : 1, per_row = f.roi.width * (planar ? 1 : 3);
  bool sane = true;
  for (int i = 0; i < 32 && sane; ++i) {
    T v;
    std::memcpy(&v, f.src[0] + sizeof(T) * i, sizeof(T));
    sane = v >= T(-100) && v <= T(100);
  }
  if (sane) return;
  for (int p = 0; p < planes; ++p) {
    auto* row = const_cast<Zyl8u*>(f.src[p]);  // the harness's own, writable buffer
    for (int y = 0; y < f.roi.height; ++y, row += f.src_step[0]) {
      for (int i = 0; i < per_row; ++i) {
        uint32_t bits;
        std::memcpy(&bits, row + sizeof(T) * i, 4);
        const int c = planar ? p : i % 3;
        T v = static_cast<T>(bits & 0x7FFFFF) / T(8388608);
        if (!rgb) v = c == 0 ? v * 100 : v * 200 - 100;
        std::memcpy(row + sizeof(T) * i, &v, sizeof(T));
      }
    }
  }
}

template <class TS, class TD, bool kRgbSource, auto kFn>
ZylStatus CallC3(const Frame& f) {
  if constexpr (std::is_floating_point_v<TS>) SaneSource<TS>(f, kRgbSource, false);
  return kFn(reinterpret_cast<const TS*>(f.src[0]), f.src_step[0], reinterpret_cast<TD*>(f.dst[0]),
             f.dst_step[0], f.roi);
}

template <class T, bool kRgbSource, bool kL, auto kFn>
ZylStatus CallP3(const Frame& f) {
  SaneSource<T>(f, kRgbSource, true);
  const T* src[3];
  T* dst[3];
  for (int i = 0; i < 3; ++i) {
    src[i] = reinterpret_cast<const T*>(f.src[i]);
    dst[i] = reinterpret_cast<T*>(f.dst[i]);
  }
  if constexpr (kL) {
    return kFn(src, f.src_step[0], dst, f.dst_step[0], ZylSizeL{f.roi.width, f.roi.height});
  } else {
    return kFn(src, f.src_step[0], dst, f.dst_step[0], f.roi);
  }
}

template <class TS, class TD, bool kRgbSource, auto kFn>
void AddC3(const char* name, unsigned flags = kNoFlags) {
  AddExport(name + 4, Pixels<TS>(3), Pixels<TD>(3), CallC3<TS, TD, kRgbSource, kFn>, flags);
}
template <class T, bool kRgbSource, auto kFn, auto kFnL>
void AddP3(const char* name, const char* name_l) {
  AddExport(name + 4, Planes3<T>(), Planes3<T>(), CallP3<T, kRgbSource, false, kFn>);
  AddExport(name_l + 4, Planes3<T>(), Planes3<T>(), CallP3<T, kRgbSource, true, kFnL>);
}

#ifdef ZYL_BENCH_HAVE_OPENCV
// A peer gets a fresh source pattern: float sources are made valid before timing.
void AddOpenCv(const char* what, bool float32, bool rgb_source, int code) {
  const int type = float32 ? CV_32FC3 : CV_8UC3;
  const PeerPrepareFn inner = OpenCvCvtColor(type, type, code);
  AddPeer(std::string("peer_opencv/") + what, Pixels<uint8_t>(float32 ? 12 : 3),
          Pixels<uint8_t>(float32 ? 12 : 3), [=](const Frame& f) {
            if (float32) SaneSource<float>(f, rgb_source, false);
            return inner(f);
          });
}
#endif

}  // namespace
}  // namespace zyl::bench

#define ZYL_LAB_C3(TS, TD, rgb, fn, ...) AddC3<TS, TD, rgb, &fn>(#fn, ##__VA_ARGS__)
#define ZYL_LAB_P3(T, rgb, fn) AddP3<T, rgb, &fn, &fn##_L>(#fn, #fn "_L")

ZYL_BENCH_FAMILY(lab) {
  using namespace zyl::bench;
  ZYL_LAB_C3(Zyl8u, Zyl8u, true, zyliRGBToLab_8u_C3R, kPerTarget);
#ifdef ZYL_BENCH_HAVE_OPENCV
  AddOpenCv("LRGB2Lab_8u", false, true, cv::COLOR_LRGB2Lab);
#endif
  ZYL_LAB_C3(Zyl8u, Zyl8u, true, zyliBGRToLab_8u_C3R);
  ZYL_LAB_C3(Zyl8u, Zyl16u, true, zyliBGRToLab_8u16u_C3R);
  ZYL_LAB_C3(Zyl32f, Zyl32f, true, zyliRGBToLab_32f_C3R, kPerTarget);
#ifdef ZYL_BENCH_HAVE_OPENCV
  AddOpenCv("LRGB2Lab_32f", true, true, cv::COLOR_LRGB2Lab);
#endif
  ZYL_LAB_C3(Zyl32f, Zyl32f, true, zyliBGRToLab_32f_C3R);
  ZYL_LAB_P3(Zyl32f, true, zyliRGBToLab_32f_P3R);
  ZYL_LAB_P3(Zyl64f, true, zyliRGBToLab_64f_P3R);
  ZYL_LAB_C3(Zyl8u, Zyl8u, false, zyliLabToRGB_8u_C3R, kPerTarget);
#ifdef ZYL_BENCH_HAVE_OPENCV
  AddOpenCv("Lab2LRGB_8u", false, false, cv::COLOR_Lab2LRGB);
#endif
  ZYL_LAB_C3(Zyl8u, Zyl8u, false, zyliLabToBGR_8u_C3R);
  ZYL_LAB_C3(Zyl16u, Zyl8u, false, zyliLabToBGR_16u8u_C3R);
  ZYL_LAB_C3(Zyl32f, Zyl32f, false, zyliLabToRGB_32f_C3R, kPerTarget);
#ifdef ZYL_BENCH_HAVE_OPENCV
  AddOpenCv("Lab2LRGB_32f", true, false, cv::COLOR_Lab2LRGB);
#endif
  ZYL_LAB_C3(Zyl32f, Zyl32f, false, zyliLabToBGR_32f_C3R);
  ZYL_LAB_P3(Zyl32f, false, zyliLabToRGB_32f_P3R);
  ZYL_LAB_P3(Zyl64f, false, zyliLabToRGB_64f_P3R);
}
