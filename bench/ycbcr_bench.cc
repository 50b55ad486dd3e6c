// RGB <-> YCbCr at full resolution: the fourteen exports, each with its memcpy twin; the two
// C3R exports also per forced SIMD target; peers next to the exports they resemble.
//
// OpenCV's YCrCb is full range (Y 0..255, no offset of 16) with Cr stored before Cb: not the
// same conversion, only a speed reference for the interleaved pair. libyuv's I444 is the same
// studio-range BT.601 (or, with kYuvH709Constants, BT.709) 4:4:4 as the planar members, with
// its own coarser fixed point (results may differ by a unit or two); its names give channel
// order as a little-endian word, so "RAW" is R,G,B in memory, "RGB24" B,G,R, "ABGR" R,G,B,A
// and "ARGB" B,G,R,A. Each peer below is paired with the export of the same memory order.
#include "bench/bench_common.h"
#include "bench/peers.h"

#ifdef ZYL_BENCH_HAVE_LIBYUV
#include <libyuv.h>
#endif

namespace zyl::bench {
namespace {

// Alpha value passed to the P3C4R exports: 255, the value libyuv writes, so both fill alike.
constexpr Zyl8u kAlpha = 255;

#ifdef ZYL_BENCH_HAVE_LIBYUV
// libyuv's I444-to-packed calls, with or without a matrix argument, on the frame's planes.
using I444ToPacked = int (*)(const uint8_t*, int, const uint8_t*, int, const uint8_t*, int,
                             uint8_t*, int, int, int);
using I444ToPackedMatrix = int (*)(const uint8_t*, int, const uint8_t*, int, const uint8_t*, int,
                                   uint8_t*, int, const libyuv::YuvConstants*, int, int);

PeerPrepareFn LibyuvFromI444(I444ToPacked fn) {
  return [fn](const Frame& f) -> PeerCall {
    return [f, fn] {
      return fn(f.src[0], f.src_step[0], f.src[1], f.src_step[1], f.src[2], f.src_step[2], f.dst[0],
                f.dst_step[0], f.roi.width, f.roi.height) == 0;
    };
  };
}

PeerPrepareFn LibyuvFromI444(I444ToPackedMatrix fn, const libyuv::YuvConstants* matrix) {
  return [fn, matrix](const Frame& f) -> PeerCall {
    return [f, fn, matrix] {
      return fn(f.src[0], f.src_step[0], f.src[1], f.src_step[1], f.src[2], f.src_step[2], f.dst[0],
                f.dst_step[0], matrix, f.roi.width, f.roi.height) == 0;
    };
  };
}
#endif

}  // namespace
}  // namespace zyl::bench

ZYL_BENCH_FAMILY(ycbcr) {
  using namespace zyl::bench;

  AddExport(
      "RGBToYCbCr_8u_C3R", kC3, kC3,
      [](const Frame& f) {
        return zyliRGBToYCbCr_8u_C3R(f.src[0], f.src_step[0], f.dst[0], f.dst_step[0], f.roi);
      },
      kPerTarget);
#ifdef ZYL_BENCH_HAVE_OPENCV
  AddPeer("peer_opencv_approx/RGB2YCrCb_fullrange_CrCb", kC3, kC3,
          OpenCvCvtColor(CV_8UC3, CV_8UC3, cv::COLOR_RGB2YCrCb));
#endif

  AddExport("RGBToYCbCr_8u_AC4R", kC4, kC4, [](const Frame& f) {
    return zyliRGBToYCbCr_8u_AC4R(f.src[0], f.src_step[0], f.dst[0], f.dst_step[0], f.roi);
  });

  AddExport("RGBToYCbCr_8u_C3P3R", kC3, kP3, [](const Frame& f) {
    return zyliRGBToYCbCr_8u_C3P3R(f.src[0], f.src_step[0], f.dst, f.dst_step[0], f.roi);
  });

  AddExport("RGBToYCbCr_8u_AC4P3R", kC4, kP3, [](const Frame& f) {
    return zyliRGBToYCbCr_8u_AC4P3R(f.src[0], f.src_step[0], f.dst, f.dst_step[0], f.roi);
  });
#ifdef ZYL_BENCH_HAVE_LIBYUV
  // Same work (studio BT.601, four bytes in, three planes out, alpha dropped), but libyuv reads
  // B,G,R,A where the export reads R,G,B,A, and it has no R,G,B,A-to-I444 call.
  AddPeer("peer_libyuv/ARGBToI444_bgra_input", kC4, kP3, [](const Frame& f) -> PeerCall {
    return [f] {
      return libyuv::ARGBToI444(f.src[0], f.src_step[0], f.dst[0], f.dst_step[0], f.dst[1],
                                f.dst_step[1], f.dst[2], f.dst_step[2], f.roi.width,
                                f.roi.height) == 0;
    };
  });
#endif

  AddExport("RGBToYCbCr_8u_P3R", kP3, kP3, [](const Frame& f) {
    return zyliRGBToYCbCr_8u_P3R(f.src, f.src_step[0], f.dst, f.dst_step[0], f.roi);
  });

  AddExport(
      "YCbCrToRGB_8u_C3R", kC3, kC3,
      [](const Frame& f) {
        return zyliYCbCrToRGB_8u_C3R(f.src[0], f.src_step[0], f.dst[0], f.dst_step[0], f.roi);
      },
      kPerTarget);
#ifdef ZYL_BENCH_HAVE_OPENCV
  AddPeer("peer_opencv_approx/YCrCb2RGB_fullrange_CrCb", kC3, kC3,
          OpenCvCvtColor(CV_8UC3, CV_8UC3, cv::COLOR_YCrCb2RGB));
#endif

  AddExport("YCbCrToRGB_8u_AC4R", kC4, kC4, [](const Frame& f) {
    return zyliYCbCrToRGB_8u_AC4R(f.src[0], f.src_step[0], f.dst[0], f.dst_step[0], f.roi);
  });

  AddExport("YCbCrToRGB_8u_P3C3R", kP3, kC3, [](const Frame& f) {
    return zyliYCbCrToRGB_8u_P3C3R(f.src, f.src_step[0], f.dst[0], f.dst_step[0], f.roi);
  });
#ifdef ZYL_BENCH_HAVE_LIBYUV
  AddPeer("peer_libyuv/I444ToRAW_bt601", kP3, kC3, LibyuvFromI444(libyuv::I444ToRAW));
#endif

  AddExport("YCbCrToRGB_8u_P3C4R", kP3, kC4, [](const Frame& f) {
    return zyliYCbCrToRGB_8u_P3C4R(f.src, f.src_step[0], f.dst[0], f.dst_step[0], f.roi, kAlpha);
  });
#ifdef ZYL_BENCH_HAVE_LIBYUV
  AddPeer("peer_libyuv/I444ToABGR_bt601_alpha255", kP3, kC4, LibyuvFromI444(libyuv::I444ToABGR));
#endif

  AddExport("YCbCrToRGB_8u_P3R", kP3, kP3, [](const Frame& f) {
    return zyliYCbCrToRGB_8u_P3R(f.src, f.src_step[0], f.dst, f.dst_step[0], f.roi);
  });

  AddExport("YCbCrToBGR_8u_P3C3R", kP3, kC3, [](const Frame& f) {
    return zyliYCbCrToBGR_8u_P3C3R(f.src, f.src_step[0], f.dst[0], f.dst_step[0], f.roi);
  });
#ifdef ZYL_BENCH_HAVE_LIBYUV
  AddPeer("peer_libyuv/I444ToRGB24_bt601", kP3, kC3, LibyuvFromI444(libyuv::I444ToRGB24));
#endif

  AddExport("YCbCrToBGR_8u_P3C4R", kP3, kC4, [](const Frame& f) {
    return zyliYCbCrToBGR_8u_P3C4R(f.src, f.src_step[0], f.dst[0], f.dst_step[0], f.roi, kAlpha);
  });
#ifdef ZYL_BENCH_HAVE_LIBYUV
  AddPeer("peer_libyuv/I444ToARGB_bt601_alpha255", kP3, kC4, LibyuvFromI444(libyuv::I444ToARGB));
#endif

  AddExport("YCbCrToBGR_709CSC_8u_P3C3R", kP3, kC3, [](const Frame& f) {
    return zyliYCbCrToBGR_709CSC_8u_P3C3R(f.src, f.src_step[0], f.dst[0], f.dst_step[0], f.roi);
  });
#ifdef ZYL_BENCH_HAVE_LIBYUV
  AddPeer("peer_libyuv/I444ToRGB24Matrix_bt709", kP3, kC3,
          LibyuvFromI444(libyuv::I444ToRGB24Matrix, &libyuv::kYuvH709Constants));
#endif

  AddExport("YCbCrToBGR_709CSC_8u_P3C4R", kP3, kC4, [](const Frame& f) {
    return zyliYCbCrToBGR_709CSC_8u_P3C4R(f.src, f.src_step[0], f.dst[0], f.dst_step[0], f.roi,
                                          kAlpha);
  });
#ifdef ZYL_BENCH_HAVE_LIBYUV
  AddPeer("peer_libyuv/I444ToARGBMatrix_bt709_alpha255", kP3, kC4,
          LibyuvFromI444(libyuv::I444ToARGBMatrix, &libyuv::kYuvH709Constants));
#endif
}
