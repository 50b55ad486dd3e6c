// Helpers for running peer libraries on the harness's buffers. Each peer is compiled only when
// CMake found it (ZYL_BENCH_HAVE_OPENCV, ZYL_BENCH_HAVE_LIBYUV); the library never uses them.
#ifndef ZYL_BENCH_PEERS_H_
#define ZYL_BENCH_PEERS_H_

#include "bench/bench_common.h"

#ifdef ZYL_BENCH_HAVE_OPENCV
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#endif

namespace zyl::bench {

#ifdef ZYL_BENCH_HAVE_OPENCV
// cv::cvtColor(code, dcn) single-threaded from plane 0 of the source to plane 0 of the
// destination, through cv::Mat headers made once over those buffers. The call reports false
// if OpenCV reallocated the destination instead of writing into it.
inline PeerPrepareFn OpenCvCvtColor(int src_type, int dst_type, int code, int dcn = 0) {
  return [=](const Frame& f) -> PeerCall {
    cv::setNumThreads(1);
    cv::Mat src(f.roi.height, f.roi.width, src_type, const_cast<Zyl8u*>(f.src[0]),
                static_cast<size_t>(f.src_step[0]));
    cv::Mat dst(f.roi.height, f.roi.width, dst_type, f.dst[0], static_cast<size_t>(f.dst_step[0]));
    return [src, dst, code, dcn]() mutable {
      const uchar* const before = dst.data;
      cv::cvtColor(src, dst, code, dcn);
      return dst.data == before;
    };
  };
}
#endif

}  // namespace zyl::bench

#endif  // ZYL_BENCH_PEERS_H_
