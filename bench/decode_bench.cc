// 4:2:0, 4:2:2 and 4:1:1 (and v210) to RGB/BGR: the 48 decoders, each with its memcpy twin;
// the 4:2:0 P3C3R and packed C2C3R members also per forced SIMD target; peers next to the
// exports that do the same work.
//
// libyuv names channel order as a little-endian word: "RGB24" is B,G,R in memory (our BGR
// C3) and "ARGB" B,G,R,A (our BGR C4). Its I420, NV12, YUY2 and UYVY decoders are
// studio-range BT.601 with replicated chroma, like ours, in their own coarser fixed point
// (results may differ by a unit or two). OpenCV's YUV2BGR_I420 and YUV2BGR_NV12 read one
// buffer holding the luma and chroma planes one after the other (made once, outside the
// timed loop); its YUY2 and UYVY decoders read the packed image as two-channel pixels; all
// studio-range BT.601, run single-threaded.
//
// The whole-image members (no final R) take steps implied by the width; the harness rounds
// every step up to 64 bytes, which at 1920 and 3840 pixels is exactly the implied step. The
// v210 members read rows of 16 bytes per 6 pixels (steps in 32-bit words) and write one
// 16-bit element per pixel (steps in elements).
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

// Alpha value passed to the C4 exports: 255, the value the peers write.
constexpr Zyl8u kAlpha = 255;

// Source layouts: luma plus subsampled chroma planes, luma plus Cb Cr pairs, packed, v210;
// 16-bit destination elements of the v210 members.
const Layout k420P3{{{1, 1, 1}, {1, 2, 2}, {1, 2, 2}}};
const Layout k420P2{{{1, 1, 1}, {1, 1, 2}}};
const Layout k422P3{{{1, 1, 1}, {1, 2, 1}, {1, 2, 1}}};
const Layout k411P3{{{1, 1, 1}, {1, 4, 1}, {1, 4, 1}}};
const Layout kC2 = Interleaved8u(2);
const Layout kV210{{{16, 6, 1}}};
const Layout kC1x16 = Interleaved8u(2);

// Calls export F on a frame with the arguments of its signature.
template <auto F>
ZylStatus Adapt(const Frame& f) {
  using Fn = decltype(F);
  using Src = const Zyl8u*;
  using SrcPlanes = const Zyl8u* const*;
  using DstPlanes = Zyl8u* const*;
  if constexpr (std::is_same_v<Fn, ZylStatus (*)(SrcPlanes, const int*, Zyl8u*, int, ZylSize)>) {
    return F(f.src, f.src_step, f.dst[0], f.dst_step[0], f.roi);
  } else if constexpr (std::is_same_v<Fn, ZylStatus (*)(SrcPlanes, const int*, Zyl8u*, int, ZylSize,
                                                        Zyl8u)>) {
    return F(f.src, f.src_step, f.dst[0], f.dst_step[0], f.roi, kAlpha);
  } else if constexpr (std::is_same_v<Fn, ZylStatus (*)(SrcPlanes, const int*, DstPlanes, int,
                                                        ZylSize)>) {
    return F(f.src, f.src_step, f.dst, f.dst_step[0], f.roi);
  } else if constexpr (std::is_same_v<Fn,
                                      ZylStatus (*)(Src, int, Src, int, Zyl8u*, int, ZylSize)>) {
    return F(f.src[0], f.src_step[0], f.src[1], f.src_step[1], f.dst[0], f.dst_step[0], f.roi);
  } else if constexpr (std::is_same_v<Fn, ZylStatus (*)(Src, int, Src, int, Zyl8u*, int, ZylSize,
                                                        Zyl8u)>) {
    return F(f.src[0], f.src_step[0], f.src[1], f.src_step[1], f.dst[0], f.dst_step[0], f.roi,
             kAlpha);
  } else if constexpr (std::is_same_v<Fn, ZylStatus (*)(Src, int, Zyl8u*, int, ZylSize)>) {
    return F(f.src[0], f.src_step[0], f.dst[0], f.dst_step[0], f.roi);
  } else if constexpr (std::is_same_v<Fn, ZylStatus (*)(Src, int, Zyl8u*, int, ZylSize, Zyl8u)>) {
    return F(f.src[0], f.src_step[0], f.dst[0], f.dst_step[0], f.roi, kAlpha);
  } else if constexpr (std::is_same_v<Fn, ZylStatus (*)(Src, int, DstPlanes, int, ZylSize)>) {
    return F(f.src[0], f.src_step[0], f.dst, f.dst_step[0], f.roi);
  } else if constexpr (std::is_same_v<Fn, ZylStatus (*)(SrcPlanes, DstPlanes, ZylSize)>) {
    return F(f.src, f.dst, f.roi);
  } else if constexpr (std::is_same_v<Fn, ZylStatus (*)(SrcPlanes, Zyl8u*, ZylSize)>) {
    return F(f.src, f.dst[0], f.roi);
  } else {  // v210: 32-bit words in, 16-bit elements out, steps counted in those units
    return F(reinterpret_cast<const Zyl32u*>(f.src[0]), f.src_step[0] / 4,
             reinterpret_cast<Zyl16u*>(f.dst[0]), f.dst_step[0] / 2, f.roi);
  }
}

#ifdef ZYL_BENCH_HAVE_LIBYUV
using FromI420 = int (*)(const uint8_t*, int, const uint8_t*, int, const uint8_t*, int, uint8_t*,
                         int, int, int);
using FromNv12 = int (*)(const uint8_t*, int, const uint8_t*, int, uint8_t*, int, int, int);
using FromPacked = int (*)(const uint8_t*, int, uint8_t*, int, int, int);

PeerPrepareFn LibyuvFromI420(FromI420 fn) {
  return [fn](const Frame& f) -> PeerCall {
    return [f, fn] {
      return fn(f.src[0], f.src_step[0], f.src[1], f.src_step[1], f.src[2], f.src_step[2], f.dst[0],
                f.dst_step[0], f.roi.width, f.roi.height) == 0;
    };
  };
}

PeerPrepareFn LibyuvFromNv12(FromNv12 fn) {
  return [fn](const Frame& f) -> PeerCall {
    return [f, fn] {
      return fn(f.src[0], f.src_step[0], f.src[1], f.src_step[1], f.dst[0], f.dst_step[0],
                f.roi.width, f.roi.height) == 0;
    };
  };
}

PeerPrepareFn LibyuvFromPacked(FromPacked fn) {
  return [fn](const Frame& f) -> PeerCall {
    return [f, fn] {
      return fn(f.src[0], f.src_step[0], f.dst[0], f.dst_step[0], f.roi.width, f.roi.height) == 0;
    };
  };
}
#endif

#ifdef ZYL_BENCH_HAVE_OPENCV
// cv::cvtColor from one (3h/2) x w buffer (luma, then the chroma planes or pairs), filled
// once with the pattern, into the frame's destination.
PeerPrepareFn OpenCvFromOneBuffer(int code) {
  return [code](const Frame& f) -> PeerCall {
    cv::setNumThreads(1);
    const int w = f.roi.width, h = f.roi.height;
    auto in = std::make_shared<AlignedBuffer>(static_cast<size_t>(w) * h * 3 / 2);
    FillPattern(in->data(), in->size(), 1);
    cv::Mat src(h * 3 / 2, w, CV_8UC1, in->data());
    cv::Mat dst(h, w, CV_8UC3, f.dst[0], static_cast<size_t>(f.dst_step[0]));
    return [src, dst, in, code]() mutable {
      const uchar* const before = dst.data;
      cv::cvtColor(src, dst, code);
      return dst.data == before;
    };
  };
}
#endif

}  // namespace
}  // namespace zyl::bench

// One export: its name without the "zyli" prefix, layouts, flags.
#define ZYL_DECODER(f, src, dst, flags) \
  AddExport(std::string(#f).substr(4), src, dst, Adapt<f>, flags)

ZYL_BENCH_FAMILY(decode) {
  using namespace zyl::bench;

  // 4:2:0, three planes.
  ZYL_DECODER(zyliYCbCr420ToBGR_8u_P3C3R, k420P3, kC3, kPerTarget);
#ifdef ZYL_BENCH_HAVE_LIBYUV
  AddPeer("peer_libyuv/I420ToRGB24_bt601", k420P3, kC3, LibyuvFromI420(libyuv::I420ToRGB24));
#endif
#ifdef ZYL_BENCH_HAVE_OPENCV
  AddPeer("peer_opencv/YUV2BGR_I420_bt601_one_buffer", k420P3, kC3,
          OpenCvFromOneBuffer(cv::COLOR_YUV2BGR_I420));
#endif
  ZYL_DECODER(zyliYCbCr420ToBGR_8u_P3C4R, k420P3, kC4, kNoFlags);
#ifdef ZYL_BENCH_HAVE_LIBYUV
  AddPeer("peer_libyuv/I420ToARGB_bt601_alpha255", k420P3, kC4, LibyuvFromI420(libyuv::I420ToARGB));
#endif
  ZYL_DECODER(zyliYCbCr420ToRGB_8u_P3C3R, k420P3, kC3, kPerTarget);
  ZYL_DECODER(zyliYCrCb420ToRGB_8u_P3C4R, k420P3, kC4, kNoFlags);
  ZYL_DECODER(zyliYCrCb420ToBGR_Filter_8u_P3C4R, k420P3, kC4, kNoFlags);
  ZYL_DECODER(zyliYCbCr420ToBGR_709CSC_8u_P3C3R, k420P3, kC3, kPerTarget);
  ZYL_DECODER(zyliYCbCr420ToBGR_709HDTV_8u_P3C4R, k420P3, kC4, kNoFlags);
  ZYL_DECODER(zyliYUV420ToBGR_8u_P3C3R, k420P3, kC3, kPerTarget);
  ZYL_DECODER(zyliYUV420ToRGB_8u_P3C3R, k420P3, kC3, kPerTarget);
  ZYL_DECODER(zyliYUV420ToRGB_8u_P3AC4R, k420P3, kC4, kNoFlags);
  ZYL_DECODER(zyliYUV420ToRGB_8u_P3R, k420P3, kP3, kNoFlags);
  ZYL_DECODER(zyliYUV420ToRGB_8u_P3C3, k420P3, kC3, kNoFlags);
  ZYL_DECODER(zyliYUV420ToRGB_8u_P3, k420P3, kP3, kNoFlags);

  // 4:2:0, luma plane and chroma pairs.
  ZYL_DECODER(zyliYCbCr420ToBGR_8u_P2C3R, k420P2, kC3, kNoFlags);
#ifdef ZYL_BENCH_HAVE_LIBYUV
  AddPeer("peer_libyuv/NV12ToRGB24_bt601", k420P2, kC3, LibyuvFromNv12(libyuv::NV12ToRGB24));
#endif
#ifdef ZYL_BENCH_HAVE_OPENCV
  AddPeer("peer_opencv/YUV2BGR_NV12_bt601_one_buffer", k420P2, kC3,
          OpenCvFromOneBuffer(cv::COLOR_YUV2BGR_NV12));
#endif
  ZYL_DECODER(zyliYCbCr420ToBGR_8u_P2C4R, k420P2, kC4, kNoFlags);
#ifdef ZYL_BENCH_HAVE_LIBYUV
  AddPeer("peer_libyuv/NV12ToARGB_bt601_alpha255", k420P2, kC4, LibyuvFromNv12(libyuv::NV12ToARGB));
#endif
  ZYL_DECODER(zyliYCbCr420ToRGB_8u_P2C3R, k420P2, kC3, kNoFlags);
  ZYL_DECODER(zyliYCbCr420ToRGB_8u_P2C4R, k420P2, kC4, kNoFlags);
  ZYL_DECODER(zyliYCrCb420ToBGR_8u_P2C3R, k420P2, kC3, kNoFlags);
  ZYL_DECODER(zyliYCrCb420ToBGR_8u_P2C4R, k420P2, kC4, kNoFlags);
  ZYL_DECODER(zyliYCrCb420ToRGB_8u_P2C3R, k420P2, kC3, kNoFlags);
  ZYL_DECODER(zyliYCrCb420ToRGB_8u_P2C4R, k420P2, kC4, kNoFlags);

  // 4:2:2, three planes.
  ZYL_DECODER(zyliYCbCr422ToBGR_8u_P3C3R, k422P3, kC3, kNoFlags);
  ZYL_DECODER(zyliYCbCr422ToRGB_8u_P3C3R, k422P3, kC3, kNoFlags);
  ZYL_DECODER(zyliYUV422ToRGB_8u_P3C3R, k422P3, kC3, kNoFlags);
  ZYL_DECODER(zyliYUV422ToRGB_8u_P3AC4R, k422P3, kC4, kNoFlags);
  ZYL_DECODER(zyliYUV422ToRGB_8u_P3R, k422P3, kP3, kNoFlags);
  ZYL_DECODER(zyliYUV422ToRGB_8u_P3C3, k422P3, kC3, kNoFlags);
  ZYL_DECODER(zyliYUV422ToRGB_8u_P3, k422P3, kP3, kNoFlags);

  // 4:2:2, packed.
  ZYL_DECODER(zyliYCbCr422ToBGR_8u_C2C3R, kC2, kC3, kPerTarget);
#ifdef ZYL_BENCH_HAVE_OPENCV
  AddPeer("peer_opencv/YUV2BGR_YUY2_bt601", kC2, kC3,
          OpenCvCvtColor(CV_8UC2, CV_8UC3, cv::COLOR_YUV2BGR_YUY2));
#endif
  ZYL_DECODER(zyliYCbCr422ToBGR_8u_C2C4R, kC2, kC4, kNoFlags);
#ifdef ZYL_BENCH_HAVE_LIBYUV
  AddPeer("peer_libyuv/YUY2ToARGB_bt601_alpha255", kC2, kC4, LibyuvFromPacked(libyuv::YUY2ToARGB));
#endif
  ZYL_DECODER(zyliYCbCr422ToRGB_8u_C2C3R, kC2, kC3, kPerTarget);
  ZYL_DECODER(zyliYCbCr422ToRGB_8u_C2C4R, kC2, kC4, kNoFlags);
  ZYL_DECODER(zyliYCbCr422ToRGB_8u_C2P3R, kC2, kP3, kNoFlags);
  ZYL_DECODER(zyliCbYCr422ToRGB_8u_C2C3R, kC2, kC3, kPerTarget);
#ifdef ZYL_BENCH_HAVE_OPENCV
  AddPeer("peer_opencv/YUV2RGB_UYVY_bt601", kC2, kC3,
          OpenCvCvtColor(CV_8UC2, CV_8UC3, cv::COLOR_YUV2RGB_UYVY));
#endif
  ZYL_DECODER(zyliCbYCr422ToBGR_8u_C2C4R, kC2, kC4, kNoFlags);
#ifdef ZYL_BENCH_HAVE_LIBYUV
  AddPeer("peer_libyuv/UYVYToARGB_bt601_alpha255", kC2, kC4, LibyuvFromPacked(libyuv::UYVYToARGB));
#endif
#ifdef ZYL_BENCH_HAVE_OPENCV
  AddPeer("peer_opencv/YUV2BGRA_UYVY_bt601_alpha255", kC2, kC4,
          OpenCvCvtColor(CV_8UC2, CV_8UC4, cv::COLOR_YUV2BGRA_UYVY));
#endif
  ZYL_DECODER(zyliCbYCr422ToBGR_709HDTV_8u_C2C3R, kC2, kC3, kPerTarget);
  ZYL_DECODER(zyliCbYCr422ToBGR_709HDTV_8u_C2C4R, kC2, kC4, kNoFlags);
  ZYL_DECODER(zyliYCrCb422ToBGR_8u_C2C3R, kC2, kC3, kPerTarget);
  ZYL_DECODER(zyliYCrCb422ToBGR_8u_C2C4R, kC2, kC4, kNoFlags);
  ZYL_DECODER(zyliYCrCb422ToRGB_8u_C2C3R, kC2, kC3, kPerTarget);
  ZYL_DECODER(zyliYCrCb422ToRGB_8u_C2C4R, kC2, kC4, kNoFlags);
  ZYL_DECODER(zyliYCrCb422ToRGB_8u_C2P3R, kC2, kP3, kNoFlags);
  ZYL_DECODER(zyliYUV422ToRGB_8u_C2C3R, kC2, kC3, kPerTarget);

  // 4:1:1, three planes.
  ZYL_DECODER(zyliYCbCr411ToBGR_8u_P3C3R, k411P3, kC3, kNoFlags);
  ZYL_DECODER(zyliYCbCr411ToBGR_8u_P3C4R, k411P3, kC4, kNoFlags);

  // v210.
  ZYL_DECODER(zyliYUV422v210ToGray_709HDTV_32u16u_C3C1, kV210, kC1x16, kNoFlags);
  ZYL_DECODER(zyliYUV422v210ToRGB_709HDTV_32u16u_C3, kV210, kC1x16, kNoFlags);
  ZYL_DECODER(zyliYUV422v210ToBGR_709HDTV_32u16u_C3, kV210, kC1x16, kNoFlags);
}

#undef ZYL_DECODER
