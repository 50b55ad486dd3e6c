// HSV: the 8 exports, each with its memcpy twin; the C3R members also per forced SIMD target;
// OpenCV's cvtColor with COLOR_RGB2HSV_FULL / COLOR_HSV2RGB_FULL beside the 8-bit C3R pair.
//
// OpenCV's _FULL codes also spread hue over 0..255, but with their own arithmetic (exact
// division tables, hue in 256ths of a turn), so the results differ; only the work is alike.
#include "bench/bench_common.h"
#include "bench/peers.h"

namespace zyl::bench {
namespace {

template <class T, auto kFn>
ZylStatus Call(const Frame& f) {
  return kFn(reinterpret_cast<const T*>(f.src[0]), f.src_step[0], reinterpret_cast<T*>(f.dst[0]),
             f.dst_step[0], f.roi);
}

template <class T, auto kFn>
void Add(const char* name, int channels, unsigned flags = kNoFlags) {
  AddExport(name + 4, Pixels<T>(channels), Pixels<T>(channels), Call<T, kFn>, flags);
}

}  // namespace
}  // namespace zyl::bench

#define ZYL_HSV_BENCH(T, fn, channels, flags) Add<T, &fn>(#fn, channels, flags)

ZYL_BENCH_FAMILY(hsv) {
  using namespace zyl::bench;
  ZYL_HSV_BENCH(Zyl8u, zyliRGBToHSV_8u_C3R, 3, kPerTarget);
#ifdef ZYL_BENCH_HAVE_OPENCV
  AddPeer("peer_opencv/RGB2HSV_FULL", kC3, kC3,
          OpenCvCvtColor(CV_8UC3, CV_8UC3, cv::COLOR_RGB2HSV_FULL));
#endif
  ZYL_HSV_BENCH(Zyl8u, zyliRGBToHSV_8u_AC4R, 4, kNoFlags);
  ZYL_HSV_BENCH(Zyl16u, zyliRGBToHSV_16u_C3R, 3, kPerTarget);
  ZYL_HSV_BENCH(Zyl16u, zyliRGBToHSV_16u_AC4R, 4, kNoFlags);
  ZYL_HSV_BENCH(Zyl8u, zyliHSVToRGB_8u_C3R, 3, kPerTarget);
#ifdef ZYL_BENCH_HAVE_OPENCV
  AddPeer("peer_opencv/HSV2RGB_FULL", kC3, kC3,
          OpenCvCvtColor(CV_8UC3, CV_8UC3, cv::COLOR_HSV2RGB_FULL));
#endif
  ZYL_HSV_BENCH(Zyl8u, zyliHSVToRGB_8u_AC4R, 4, kNoFlags);
  ZYL_HSV_BENCH(Zyl16u, zyliHSVToRGB_16u_C3R, 3, kPerTarget);
  ZYL_HSV_BENCH(Zyl16u, zyliHSVToRGB_16u_AC4R, 4, kNoFlags);
}
