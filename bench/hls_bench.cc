// HLS: the 29 exports, each with its memcpy twin; RGBToHLS/HLSToRGB 8u and 32f C3R also per
// forced SIMD target; OpenCV's cvtColor with RGB2HLS_FULL / HLS2RGB_FULL next to them.
//
// OpenCV's _FULL codes scale 8-bit hue to 0..255 like ours, but with its own rounding and
// exact reciprocals, so codes can differ by one or two; its 32f hue is in degrees (ours is a
// fraction of a turn): compare speed only.
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

#include "bench/bench_common.h"
#include "bench/peers.h"

namespace zyl::bench {
namespace {

// Planar sides take the frame's plane arrays, interleaved ones plane 0.
template <auto kFn, bool kSrcPlanes, bool kDstPlanes>
ZylStatus CallPlanes(const Frame& f) {
  const Zyl8u* const* src_planes = f.src;
  Zyl8u* const* dst_planes = f.dst;
  if constexpr (kSrcPlanes && kDstPlanes) {
    return kFn(src_planes, f.src_step[0], dst_planes, f.dst_step[0], f.roi);
  } else if constexpr (kSrcPlanes) {
    return kFn(src_planes, f.src_step[0], f.dst[0], f.dst_step[0], f.roi);
  } else if constexpr (kDstPlanes) {
    return kFn(f.src[0], f.src_step[0], dst_planes, f.dst_step[0], f.roi);
  }
}

template <class T, auto kFwdC3, auto kFwdAC4, auto kInvC3, auto kInvAC4>
void AddType(const std::string& t, bool peer) {
  const unsigned c3_flags = peer ? kPerTarget : kNoFlags;
  AddExport("RGBToHLS_" + t + "_C3R", Pixels<T>(3), Pixels<T>(3), CallPixels<T, 3, kFwdC3>,
            c3_flags);
#ifdef ZYL_BENCH_HAVE_OPENCV
  const int cv3 = std::is_same_v<T, Zyl32f> ? CV_32FC3 : CV_8UC3;
  const std::string cv_name = std::is_same_v<T, Zyl32f> ? "_32f_hue_in_degrees" : "";
  if (peer) {
    AddPeer("peer_opencv/RGB2HLS_FULL" + cv_name, Pixels<T>(3), Pixels<T>(3),
            OpenCvCvtColor(cv3, cv3, cv::COLOR_RGB2HLS_FULL));
  }
#endif
  AddExport("RGBToHLS_" + t + "_AC4R", Pixels<T>(4), Pixels<T>(4), CallPixels<T, 4, kFwdAC4>);
  AddExport("HLSToRGB_" + t + "_C3R", Pixels<T>(3), Pixels<T>(3), CallPixels<T, 3, kInvC3>,
            c3_flags);
#ifdef ZYL_BENCH_HAVE_OPENCV
  if (peer) {
    AddPeer("peer_opencv/HLS2RGB_FULL" + cv_name, Pixels<T>(3), Pixels<T>(3),
            OpenCvCvtColor(cv3, cv3, cv::COLOR_HLS2RGB_FULL));
  }
#endif
  AddExport("HLSToRGB_" + t + "_AC4R", Pixels<T>(4), Pixels<T>(4), CallPixels<T, 4, kInvAC4>);
}

}  // namespace
}  // namespace zyl::bench

#define ZYL_HLS_BENCH(T, t, peer)                                                        \
  AddType<T, &zyliRGBToHLS_##t##_C3R, &zyliRGBToHLS_##t##_AC4R, &zyliHLSToRGB_##t##_C3R, \
          &zyliHLSToRGB_##t##_AC4R>(#t, peer)
#define ZYL_HLS_PLANES(layout, src, dst, src_planes, dst_planes)            \
  AddExport("BGRToHLS_8u_" #layout, src, dst,                               \
            CallPlanes<&zyliBGRToHLS_8u_##layout, src_planes, dst_planes>); \
  AddExport("HLSToBGR_8u_" #layout, src, dst,                               \
            CallPlanes<&zyliHLSToBGR_8u_##layout, src_planes, dst_planes>)

ZYL_BENCH_FAMILY(hls) {
  using namespace zyl::bench;
  ZYL_HLS_BENCH(Zyl8u, 8u, true);
  ZYL_HLS_BENCH(Zyl16u, 16u, false);
  ZYL_HLS_BENCH(Zyl16s, 16s, false);
  ZYL_HLS_BENCH(Zyl32f, 32f, true);
  AddExport("BGRToHLS_8u_AC4R", kC4, kC4, CallPixels<Zyl8u, 4, &zyliBGRToHLS_8u_AC4R>);
  ZYL_HLS_PLANES(C3P3R, kC3, kP3, false, true);
  ZYL_HLS_PLANES(P3C3R, kP3, kC3, true, false);
  ZYL_HLS_PLANES(P3R, kP3, kP3, true, true);
  ZYL_HLS_PLANES(AP4R, kP4, kP4, true, true);
  ZYL_HLS_PLANES(AP4C4R, kP4, kC4, true, false);
  ZYL_HLS_PLANES(AC4P4R, kC4, kP4, false, true);
}
