// Gray conversions: the 25 exports, each with its memcpy twin; the 8-bit RGB <-> gray pair also
// per forced SIMD target; OpenCV's cvtColor next to the exports it resembles.
//
// OpenCV's RGB2GRAY uses the same 0.299, 0.587, 0.114 weights but its own fixed point (8-bit:
// 14-bit weights with a rounding term; 16-bit likewise), so results can differ by one; its
// GRAY2RGB / GRAY2RGBA replicate exactly as ours do (alpha 255 in both here).
#include <type_traits>

#include "bench/bench_common.h"
#include "bench/peers.h"

namespace zyl::bench {
namespace {

// Caller weights for the ColorToGray members (BT.709 luma); the speed does not depend on them.
constexpr Zyl32f kWeights32[3] = {0.2126f, 0.7152f, 0.0722f};
constexpr Zyl64f kWeights64[3] = {0.2126, 0.7152, 0.0722};
constexpr int kAlpha = 255;

// Calls an export with the frame's plane 0 on both sides, then its weights or alpha, if any.
template <class T, auto kFn>
ZylStatus Call(const Frame& f) {
  const T* src = reinterpret_cast<const T*>(f.src[0]);
  T* dst = reinterpret_cast<T*>(f.dst[0]);
  using Fn = decltype(kFn);
  if constexpr (std::is_invocable_v<Fn, const T*, int, T*, int, ZylSize>) {
    return kFn(src, f.src_step[0], dst, f.dst_step[0], f.roi);
  } else if constexpr (std::is_invocable_v<Fn, const T*, int, T*, int, ZylSize, const Zyl32f*>) {
    return kFn(src, f.src_step[0], dst, f.dst_step[0], f.roi, kWeights32);
  } else if constexpr (std::is_invocable_v<Fn, const T*, int, T*, int, ZylSize, const Zyl64f*>) {
    return kFn(src, f.src_step[0], dst, f.dst_step[0], f.roi, kWeights64);
  } else {
    return kFn(src, f.src_step[0], dst, f.dst_step[0], f.roi, static_cast<T>(kAlpha));
  }
}

template <class T, auto kFn>
void Add(const char* name, int src_channels, int dst_channels, unsigned flags = kNoFlags) {
  AddExport(name + 4, Pixels<T>(src_channels), Pixels<T>(dst_channels), Call<T, kFn>, flags);
}

}  // namespace
}  // namespace zyl::bench

#define ZYL_GRAY_BENCH(T, fn, src, dst) Add<T, &fn>(#fn, src, dst)

ZYL_BENCH_FAMILY(gray) {
  using namespace zyl::bench;

  Add<Zyl8u, &zyliRGBToGray_8u_C3C1R>("zyliRGBToGray_8u_C3C1R", 3, 1, kPerTarget);
#ifdef ZYL_BENCH_HAVE_OPENCV
  AddPeer("peer_opencv/RGB2GRAY", kC3, Pixels<Zyl8u>(1),
          OpenCvCvtColor(CV_8UC3, CV_8UC1, cv::COLOR_RGB2GRAY));
#endif
  ZYL_GRAY_BENCH(Zyl8u, zyliRGBToGray_8u_AC4C1R, 4, 1);
#ifdef ZYL_BENCH_HAVE_OPENCV
  AddPeer("peer_opencv/RGBA2GRAY", kC4, Pixels<Zyl8u>(1),
          OpenCvCvtColor(CV_8UC4, CV_8UC1, cv::COLOR_RGBA2GRAY));
#endif
  Add<Zyl16u, &zyliRGBToGray_16u_C3C1R>("zyliRGBToGray_16u_C3C1R", 3, 1, kPerTarget);
#ifdef ZYL_BENCH_HAVE_OPENCV
  AddPeer("peer_opencv/RGB2GRAY_16u", Pixels<Zyl16u>(3), Pixels<Zyl16u>(1),
          OpenCvCvtColor(CV_16UC3, CV_16UC1, cv::COLOR_RGB2GRAY));
#endif
  ZYL_GRAY_BENCH(Zyl16u, zyliRGBToGray_16u_AC4C1R, 4, 1);
  ZYL_GRAY_BENCH(Zyl16s, zyliRGBToGray_16s_C3C1R, 3, 1);
  ZYL_GRAY_BENCH(Zyl16s, zyliRGBToGray_16s_AC4C1R, 4, 1);
  ZYL_GRAY_BENCH(Zyl32f, zyliRGBToGray_32f_C3C1R, 3, 1);
#ifdef ZYL_BENCH_HAVE_OPENCV
  AddPeer("peer_opencv/RGB2GRAY_32f", Pixels<Zyl32f>(3), Pixels<Zyl32f>(1),
          OpenCvCvtColor(CV_32FC3, CV_32FC1, cv::COLOR_RGB2GRAY));
#endif
  ZYL_GRAY_BENCH(Zyl32f, zyliRGBToGray_32f_AC4C1R, 4, 1);

  ZYL_GRAY_BENCH(Zyl8u, zyliColorToGray_8u_C3C1R, 3, 1);
  ZYL_GRAY_BENCH(Zyl8u, zyliColorToGray_8u_AC4C1R, 4, 1);
  ZYL_GRAY_BENCH(Zyl16u, zyliColorToGray_16u_C3C1R, 3, 1);
  ZYL_GRAY_BENCH(Zyl16u, zyliColorToGray_16u_AC4C1R, 4, 1);
  ZYL_GRAY_BENCH(Zyl16s, zyliColorToGray_16s_C3C1R, 3, 1);
  ZYL_GRAY_BENCH(Zyl16s, zyliColorToGray_16s_AC4C1R, 4, 1);
  ZYL_GRAY_BENCH(Zyl32f, zyliColorToGray_32f_C3C1R, 3, 1);
  ZYL_GRAY_BENCH(Zyl32f, zyliColorToGray_32f_AC4C1R, 4, 1);
  ZYL_GRAY_BENCH(Zyl64f, zyliColorToGray_64f_C3C1R, 3, 1);
  ZYL_GRAY_BENCH(Zyl64f, zyliColorToGray_64f_AC4C1R, 4, 1);

  Add<Zyl8u, &zyliGrayToRGB_8u_C1C3R>("zyliGrayToRGB_8u_C1C3R", 1, 3, kPerTarget);
#ifdef ZYL_BENCH_HAVE_OPENCV
  AddPeer("peer_opencv/GRAY2RGB", Pixels<Zyl8u>(1), kC3,
          OpenCvCvtColor(CV_8UC1, CV_8UC3, cv::COLOR_GRAY2RGB));
#endif
  ZYL_GRAY_BENCH(Zyl8u, zyliGrayToRGB_8u_C1C4R, 1, 4);
#ifdef ZYL_BENCH_HAVE_OPENCV
  AddPeer("peer_opencv/GRAY2RGBA_alpha255", Pixels<Zyl8u>(1), kC4,
          OpenCvCvtColor(CV_8UC1, CV_8UC4, cv::COLOR_GRAY2RGBA));
#endif
  ZYL_GRAY_BENCH(Zyl16u, zyliGrayToRGB_16u_C1C3R, 1, 3);
  ZYL_GRAY_BENCH(Zyl16u, zyliGrayToRGB_16u_C1C4R, 1, 4);
  ZYL_GRAY_BENCH(Zyl32f, zyliGrayToRGB_32f_C1C3R, 1, 3);
#ifdef ZYL_BENCH_HAVE_OPENCV
  AddPeer("peer_opencv/GRAY2RGB_32f", Pixels<Zyl32f>(1), Pixels<Zyl32f>(3),
          OpenCvCvtColor(CV_32FC1, CV_32FC3, cv::COLOR_GRAY2RGB));
#endif
  ZYL_GRAY_BENCH(Zyl32f, zyliGrayToRGB_32f_C1C4R, 1, 4);

  ZYL_GRAY_BENCH(Zyl8u, zyliYCbCr422ToGray_8u_C2C1R, 2, 1);
}
