// RGB/BGR to 4:2:0, 4:2:2 and 4:1:1: the 42 encoders, each with its memcpy twin; the 4:2:0
// C3P3R and packed C3C2R members also per forced SIMD target; peers next to the exports that
// do the same work.
//
// libyuv names channel order as a little-endian word: "RGB24" is B,G,R in memory (our BGR
// C3), "RAW" R,G,B (our RGB C3) and "ARGB" B,G,R,A (our BGR AC4). Its I420, NV12 and YUY2
// encoders are studio-range BT.601 with the 2x2 (or pair) average, like ours, in their own
// coarser fixed point (results may differ by a unit). Its UYVY averages each pair where our
// Cb Y0 Cr Y1 filters three taps, hence "_approx". OpenCV's BGR2YUV_I420 is studio-range
// BT.601 into one buffer holding the Y, U and V planes; it runs single-threaded.
//
// The whole-image members (no final R) take steps implied by the width; the harness rounds
// every step up to 64 bytes, which at 1920 and 3840 pixels is exactly the implied step.
#include <memory>
#include <string>
#include <type_traits>

#include "bench/bench_common.h"
#include "bench/peers.h"

#ifdef ZYL_BENCH_HAVE_LIBYUV
#include <libyuv.h>
#endif

namespace zyl::bench {
namespace {

// Destination layouts: luma plus subsampled chroma planes, luma plus Cb Cr pairs, packed.
const Layout k420P3{{{1, 1, 1}, {1, 2, 2}, {1, 2, 2}}};
const Layout k420P2{{{1, 1, 1}, {1, 1, 2}}};
const Layout k422P3{{{1, 1, 1}, {1, 2, 1}, {1, 2, 1}}};
const Layout k411P3{{{1, 1, 1}, {1, 4, 1}, {1, 4, 1}}};
const Layout kC2 = Interleaved8u(2);

// Calls export F on a frame with the arguments of its signature.
template <auto F>
ZylStatus Adapt(const Frame& f) {
  using Fn = decltype(F);
  using Src = const Zyl8u*;
  using Dst = Zyl8u* const*;
  if constexpr (std::is_same_v<Fn, ZylStatus (*)(Src, int, Dst, const int*, ZylSize)>) {
    return F(f.src[0], f.src_step[0], f.dst, f.dst_step, f.roi);
  } else if constexpr (std::is_same_v<Fn, ZylStatus (*)(const Zyl8u* const*, int, Dst, const int*,
                                                        ZylSize)>) {
    return F(f.src, f.src_step[0], f.dst, f.dst_step, f.roi);
  } else if constexpr (std::is_same_v<Fn,
                                      ZylStatus (*)(Src, int, Zyl8u*, int, Zyl8u*, int, ZylSize)>) {
    return F(f.src[0], f.src_step[0], f.dst[0], f.dst_step[0], f.dst[1], f.dst_step[1], f.roi);
  } else if constexpr (std::is_same_v<Fn, ZylStatus (*)(Src, int, Zyl8u*, int, ZylSize)>) {
    return F(f.src[0], f.src_step[0], f.dst[0], f.dst_step[0], f.roi);
  } else if constexpr (std::is_same_v<Fn, ZylStatus (*)(const Zyl8u* const*, int, Zyl8u*, int,
                                                        ZylSize)>) {
    return F(f.src, f.src_step[0], f.dst[0], f.dst_step[0], f.roi);
  } else if constexpr (std::is_same_v<Fn, ZylStatus (*)(Src, Dst, ZylSize)>) {
    return F(f.src[0], f.dst, f.roi);
  } else {
    return F(f.src, f.dst, f.roi);
  }
}

#ifdef ZYL_BENCH_HAVE_LIBYUV
using ToI420 = int (*)(const uint8_t*, int, uint8_t*, int, uint8_t*, int, uint8_t*, int, int, int);
using ToPacked = int (*)(const uint8_t*, int, uint8_t*, int, int, int);

PeerPrepareFn LibyuvToI420(ToI420 fn) {
  return [fn](const Frame& f) -> PeerCall {
    return [f, fn] {
      return fn(f.src[0], f.src_step[0], f.dst[0], f.dst_step[0], f.dst[1], f.dst_step[1], f.dst[2],
                f.dst_step[2], f.roi.width, f.roi.height) == 0;
    };
  };
}

PeerPrepareFn LibyuvToPacked(ToPacked fn) {
  return [fn](const Frame& f) -> PeerCall {
    return [f, fn] {
      return fn(f.src[0], f.src_step[0], f.dst[0], f.dst_step[0], f.roi.width, f.roi.height) == 0;
    };
  };
}
#endif

#ifdef ZYL_BENCH_HAVE_OPENCV
// cv::cvtColor to I420 writes Y, U and V one after the other into a single (3h/2) x w
// buffer, owned by the call; the counters use the same bytes as the three-plane export.
PeerCall OpenCvToI420(const Frame& f) {
  cv::setNumThreads(1);
  const int w = f.roi.width, h = f.roi.height;
  auto out = std::make_shared<AlignedBuffer>(static_cast<size_t>(w) * h * 3 / 2);
  cv::Mat src(h, w, CV_8UC3, const_cast<Zyl8u*>(f.src[0]), static_cast<size_t>(f.src_step[0]));
  cv::Mat dst(h * 3 / 2, w, CV_8UC1, out->data());
  return [src, dst, out]() mutable {
    const uchar* const before = dst.data;
    cv::cvtColor(src, dst, cv::COLOR_BGR2YUV_I420);
    return dst.data == before;
  };
}
#endif

}  // namespace
}  // namespace zyl::bench

// One export: its name without the "zyli" prefix, layouts, flags.
#define ZYL_ENCODER(f, src, dst, flags) \
  AddExport(std::string(#f).substr(4), src, dst, Adapt<f>, flags)

ZYL_BENCH_FAMILY(encode) {
  using namespace zyl::bench;

  // 4:2:0, three planes.
  ZYL_ENCODER(zyliBGRToYCbCr420_8u_C3P3R, kC3, k420P3, kPerTarget);
#ifdef ZYL_BENCH_HAVE_LIBYUV
  AddPeer("peer_libyuv/RGB24ToI420_bt601", kC3, k420P3, LibyuvToI420(libyuv::RGB24ToI420));
#endif
#ifdef ZYL_BENCH_HAVE_OPENCV
  AddPeer("peer_opencv/BGR2YUV_I420_bt601_one_buffer", kC3, k420P3, OpenCvToI420);
#endif
  ZYL_ENCODER(zyliBGRToYCbCr420_8u_AC4P3R, kC4, k420P3, kNoFlags);
#ifdef ZYL_BENCH_HAVE_LIBYUV
  AddPeer("peer_libyuv/ARGBToI420_bt601", kC4, k420P3, LibyuvToI420(libyuv::ARGBToI420));
#endif
  ZYL_ENCODER(zyliRGBToYCbCr420_8u_C3P3R, kC3, k420P3, kPerTarget);
#ifdef ZYL_BENCH_HAVE_LIBYUV
  AddPeer("peer_libyuv/RAWToI420_bt601", kC3, k420P3, LibyuvToI420(libyuv::RAWToI420));
#endif
  ZYL_ENCODER(zyliBGRToYCrCb420_8u_C3P3R, kC3, k420P3, kPerTarget);
  ZYL_ENCODER(zyliBGRToYCrCb420_8u_AC4P3R, kC4, k420P3, kNoFlags);
  ZYL_ENCODER(zyliRGBToYCrCb420_8u_AC4P3R, kC4, k420P3, kNoFlags);
  ZYL_ENCODER(zyliBGRToYCbCr420_709CSC_8u_C3P3R, kC3, k420P3, kPerTarget);
  ZYL_ENCODER(zyliBGRToYCbCr420_709CSC_8u_AC4P3R, kC4, k420P3, kNoFlags);
  ZYL_ENCODER(zyliBGRToYCrCb420_709CSC_8u_C3P3R, kC3, k420P3, kPerTarget);
  ZYL_ENCODER(zyliBGRToYCrCb420_709CSC_8u_AC4P3R, kC4, k420P3, kNoFlags);
  ZYL_ENCODER(zyliBGRToYCbCr420_709HDTV_8u_AC4P3R, kC4, k420P3, kNoFlags);
  ZYL_ENCODER(zyliBGRToYUV420_8u_AC4P3R, kC4, k420P3, kNoFlags);
  ZYL_ENCODER(zyliRGBToYUV420_8u_C3P3R, kC3, k420P3, kPerTarget);
  ZYL_ENCODER(zyliRGBToYUV420_8u_P3R, kP3, k420P3, kNoFlags);
  ZYL_ENCODER(zyliRGBToYUV420_8u_C3P3, kC3, k420P3, kNoFlags);
  ZYL_ENCODER(zyliRGBToYUV420_8u_P3, kP3, k420P3, kNoFlags);

  // 4:2:0, luma plane and Cb Cr pairs.
  ZYL_ENCODER(zyliBGRToYCbCr420_8u_C3P2R, kC3, k420P2, kNoFlags);
  ZYL_ENCODER(zyliBGRToYCbCr420_8u_AC4P2R, kC4, k420P2, kNoFlags);
#ifdef ZYL_BENCH_HAVE_LIBYUV
  AddPeer("peer_libyuv/ARGBToNV12_bt601", kC4, k420P2, [](const Frame& f) -> PeerCall {
    return [f] {
      return libyuv::ARGBToNV12(f.src[0], f.src_step[0], f.dst[0], f.dst_step[0], f.dst[1],
                                f.dst_step[1], f.roi.width, f.roi.height) == 0;
    };
  });
#endif
  ZYL_ENCODER(zyliRGBToYCbCr420_8u_C3P2R, kC3, k420P2, kNoFlags);
  ZYL_ENCODER(zyliRGBToYCbCr420_8u_C4P2R, kC4, k420P2, kNoFlags);
  ZYL_ENCODER(zyliBGRToYCbCr420_709CSC_8u_C3P2R, kC3, k420P2, kNoFlags);
  ZYL_ENCODER(zyliBGRToYCbCr420_709CSC_8u_AC4P2R, kC4, k420P2, kNoFlags);

  // 4:2:2, three planes.
  ZYL_ENCODER(zyliBGRToYCbCr422_8u_C3P3R, kC3, k422P3, kNoFlags);
  ZYL_ENCODER(zyliBGRToYCbCr422_8u_AC4P3R, kC4, k422P3, kNoFlags);
  ZYL_ENCODER(zyliRGBToYCbCr422_8u_C3P3R, kC3, k422P3, kNoFlags);
  ZYL_ENCODER(zyliRGBToYUV422_8u_C3P3R, kC3, k422P3, kNoFlags);
  ZYL_ENCODER(zyliRGBToYUV422_8u_P3R, kP3, k422P3, kNoFlags);
  ZYL_ENCODER(zyliRGBToYUV422_8u_C3P3, kC3, k422P3, kNoFlags);
  ZYL_ENCODER(zyliRGBToYUV422_8u_P3, kP3, k422P3, kNoFlags);

  // 4:2:2, packed.
  ZYL_ENCODER(zyliBGRToYCbCr422_8u_C3C2R, kC3, kC2, kPerTarget);
  ZYL_ENCODER(zyliBGRToYCbCr422_8u_AC4C2R, kC4, kC2, kNoFlags);
#ifdef ZYL_BENCH_HAVE_LIBYUV
  AddPeer("peer_libyuv/ARGBToYUY2_bt601", kC4, kC2, LibyuvToPacked(libyuv::ARGBToYUY2));
#endif
  ZYL_ENCODER(zyliRGBToYCbCr422_8u_C3C2R, kC3, kC2, kPerTarget);
  ZYL_ENCODER(zyliRGBToYCbCr422_8u_P3C2R, kP3, kC2, kNoFlags);
  ZYL_ENCODER(zyliRGBToYCrCb422_8u_C3C2R, kC3, kC2, kPerTarget);
  ZYL_ENCODER(zyliRGBToYCrCb422_8u_P3C2R, kP3, kC2, kNoFlags);
  ZYL_ENCODER(zyliRGBToYUV422_8u_C3C2R, kC3, kC2, kPerTarget);
  ZYL_ENCODER(zyliBGRToCbYCr422_709HDTV_8u_C3C2R, kC3, kC2, kPerTarget);
  ZYL_ENCODER(zyliBGRToCbYCr422_709HDTV_8u_AC4C2R, kC4, kC2, kNoFlags);
  ZYL_ENCODER(zyliRGBToCbYCr422_8u_C3C2R, kC3, kC2, kPerTarget);
  ZYL_ENCODER(zyliBGRToCbYCr422_8u_AC4C2R, kC4, kC2, kNoFlags);
#ifdef ZYL_BENCH_HAVE_LIBYUV
  AddPeer("peer_libyuv_approx/ARGBToUYVY_bt601_pair_chroma", kC4, kC2,
          LibyuvToPacked(libyuv::ARGBToUYVY));
#endif

  // 4:1:1, three planes.
  ZYL_ENCODER(zyliBGRToYCbCr411_8u_C3P3R, kC3, k411P3, kNoFlags);
  ZYL_ENCODER(zyliBGRToYCbCr411_8u_AC4P3R, kC4, k411P3, kNoFlags);
}

#undef ZYL_ENCODER
