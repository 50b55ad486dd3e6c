// RGB <-> YUV at full resolution: the ten exports, each with its memcpy twin; the two C3R
// exports also per forced SIMD target; peers where they compute a comparable conversion.
#include "bench/bench_common.h"
#include "bench/peers.h"

#ifdef ZYL_BENCH_HAVE_LIBYUV
#include <libyuv.h>
#endif

namespace zyl::bench {
namespace {

// Alpha value passed to YUVToRGB_8u_C3C4R: 255, the value OpenCV writes, so both fill alike.
constexpr Zyl8u kAlpha = 255;

}  // namespace
}  // namespace zyl::bench

ZYL_BENCH_FAMILY(yuv) {
  using namespace zyl::bench;

  AddExport(
      "RGBToYUV_8u_C3R", kC3, kC3,
      [](const Frame& f) {
        return zyliRGBToYUV_8u_C3R(f.src[0], f.src_step[0], f.dst[0], f.dst_step[0], f.roi);
      },
      kPerTarget);
#ifdef ZYL_BENCH_HAVE_OPENCV
  // Same analog YUV (Y = 0.299R + 0.587G + 0.114B, U = 0.492(B-Y) + 128, V = 0.877(R-Y) + 128)
  // and the same R,G,B -> Y,U,V layout; OpenCV rounds its fixed point differently (off by 1 or 2).
  AddPeer("peer_opencv/RGB2YUV", kC3, kC3, OpenCvCvtColor(CV_8UC3, CV_8UC3, cv::COLOR_RGB2YUV));
#endif

  AddExport("RGBToYUV_8u_AC4R", kC4, kC4, [](const Frame& f) {
    return zyliRGBToYUV_8u_AC4R(f.src[0], f.src_step[0], f.dst[0], f.dst_step[0], f.roi);
  });

  AddExport("RGBToYUV_8u_C3P3R", kC3, kP3, [](const Frame& f) {
    return zyliRGBToYUV_8u_C3P3R(f.src[0], f.src_step[0], f.dst, f.dst_step[0], f.roi);
  });

  AddExport("RGBToYUV_8u_AC4P4R", kC4, kP4, [](const Frame& f) {
    return zyliRGBToYUV_8u_AC4P4R(f.src[0], f.src_step[0], f.dst, f.dst_step[0], f.roi);
  });
#ifdef ZYL_BENCH_HAVE_LIBYUV
  // Rough reference only: libyuv has no full-range analog YUV. ARGBToI444 is BT.601 studio
  // range (Y 16..235), reads 4-byte B,G,R,A pixels and writes three planes (no alpha plane).
  AddPeer("peer_libyuv_approx/ARGBToI444", kC4, kP3, [](const Frame& f) -> PeerCall {
    return [f] {
      return libyuv::ARGBToI444(f.src[0], f.src_step[0], f.dst[0], f.dst_step[0], f.dst[1],
                                f.dst_step[1], f.dst[2], f.dst_step[2], f.roi.width,
                                f.roi.height) == 0;
    };
  });
#endif

  AddExport("RGBToYUV_8u_P3R", kP3, kP3, [](const Frame& f) {
    return zyliRGBToYUV_8u_P3R(f.src, f.src_step[0], f.dst, f.dst_step[0], f.roi);
  });

  AddExport(
      "YUVToRGB_8u_C3R", kC3, kC3,
      [](const Frame& f) {
        return zyliYUVToRGB_8u_C3R(f.src[0], f.src_step[0], f.dst[0], f.dst_step[0], f.roi);
      },
      kPerTarget);
#ifdef ZYL_BENCH_HAVE_OPENCV
  // Same analog YUV inverse (R = Y + 1.140V', G = Y - 0.394U' - 0.581V', B = Y + 2.032U') and
  // layout; OpenCV rounds G like R and B, so results may differ slightly.
  AddPeer("peer_opencv/YUV2RGB", kC3, kC3, OpenCvCvtColor(CV_8UC3, CV_8UC3, cv::COLOR_YUV2RGB));
#endif

  AddExport("YUVToRGB_8u_AC4R", kC4, kC4, [](const Frame& f) {
    return zyliYUVToRGB_8u_AC4R(f.src[0], f.src_step[0], f.dst[0], f.dst_step[0], f.roi);
  });

  AddExport("YUVToRGB_8u_C3C4R", kC3, kC4, [](const Frame& f) {
    return zyliYUVToRGB_8u_C3C4R(f.src[0], f.src_step[0], f.dst[0], f.dst_step[0], f.roi, kAlpha);
  });
#ifdef ZYL_BENCH_HAVE_OPENCV
  // As peer_opencv/YUV2RGB with a fourth destination channel that OpenCV sets to 255.
  AddPeer("peer_opencv/YUV2RGBA_alpha255", kC3, kC4,
          OpenCvCvtColor(CV_8UC3, CV_8UC4, cv::COLOR_YUV2RGB, 4));
#endif

  AddExport("YUVToRGB_8u_P3C3R", kP3, kC3, [](const Frame& f) {
    return zyliYUVToRGB_8u_P3C3R(f.src, f.src_step[0], f.dst[0], f.dst_step[0], f.roi);
  });
#ifdef ZYL_BENCH_HAVE_LIBYUV
  // Rough reference only: the same layouts (Y, U, V planes -> R,G,B bytes; libyuv calls this
  // byte order RAW) but BT.601 studio range instead of full-range analog YUV.
  AddPeer("peer_libyuv_approx/I444ToRAW", kP3, kC3, [](const Frame& f) -> PeerCall {
    return [f] {
      return libyuv::I444ToRAW(f.src[0], f.src_step[0], f.src[1], f.src_step[1], f.src[2],
                               f.src_step[2], f.dst[0], f.dst_step[0], f.roi.width,
                               f.roi.height) == 0;
    };
  });
#endif

  AddExport("YUVToRGB_8u_P3R", kP3, kP3, [](const Frame& f) {
    return zyliYUVToRGB_8u_P3R(f.src, f.src_step[0], f.dst, f.dst_step[0], f.roi);
  });
}
