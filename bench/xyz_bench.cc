// CIE XYZ: the 16 exports, each with its memcpy twin; the C3R pairs also per forced SIMD target;
// OpenCV's cvtColor RGB2XYZ / XYZ2RGB next to the 8u, 16u and 32f C3R members.
//
// OpenCV uses the same D65 matrices but its own fixed point for 8u and 16u (rounded, where ours
// truncates) and no clamp in 32f, so its results differ: the pairs compare speed only.
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

#include "bench/bench_common.h"
#include "bench/peers.h"

namespace zyl::bench {
namespace {

// Interleaved pixels of `channels` elements of T.
template <class T>
Layout Pixels(int channels) {
  return Interleaved8u(channels * static_cast<int>(sizeof(T)));
}

// The byte pattern read as floats is full of NaNs, infinities and subnormals, whose slow paths
// would be timed instead of the conversion. The first call on a fresh pattern (the untimed
// warm-up) rewrites each element as (bits & 0x7FFFFF) / 2^23, a value in 0..1; a fresh pattern
// shows in its first 16 elements, which all lie in 0..1 by chance less than once in 10^9.
void SaneFloatSource(const Frame& f, int channels) {
  auto* row = const_cast<Zyl8u*>(f.src[0]);  // the harness's own, writable buffer
  bool sane = true;
  for (int i = 0; i < 16 && sane; ++i) {
    float v;
    std::memcpy(&v, row + 4 * i, 4);
    sane = v >= 0.0f && v <= 1.0f;
  }
  if (sane) return;
  for (int y = 0; y < f.roi.height; ++y, row += f.src_step[0]) {
    for (int i = 0; i < f.roi.width * channels; ++i) {
      uint32_t bits;
      std::memcpy(&bits, row + 4 * i, 4);
      const float v = static_cast<float>(bits & 0x7FFFFF) / 8388608.0f;
      std::memcpy(row + 4 * i, &v, 4);
    }
  }
}

template <class T, int kChannels, auto kFn>
ZylStatus Call(const Frame& f) {
  if constexpr (std::is_same_v<T, Zyl32f>) SaneFloatSource(f, kChannels);
  return kFn(reinterpret_cast<const T*>(f.src[0]), f.src_step[0], reinterpret_cast<T*>(f.dst[0]),
             f.dst_step[0], f.roi);
}

#ifdef ZYL_BENCH_HAVE_OPENCV
#define ZYL_CV(x) x
// cvtColor on 3-channel images of T (float sources made sane first, as for the exports).
template <class T>
void AddOpenCv(const char* what, int cv_type, int code) {
  const PeerPrepareFn cvt = OpenCvCvtColor(cv_type, cv_type, code);
  AddPeer(std::string("peer_opencv/") + what, Pixels<T>(3), Pixels<T>(3), [cvt](const Frame& f) {
    if constexpr (std::is_same_v<T, Zyl32f>) SaneFloatSource(f, 3);
    return cvt(f);
  });
}
#else
#define ZYL_CV(x) -1
#endif

// Both directions, both layouts of one element type; OpenCV beside the C3R members where its
// image type is given (cv_type >= 0), named with how it differs (`diff`).
template <class T, auto kFwdC3, auto kFwdAC4, auto kInvC3, auto kInvAC4>
void AddType(const char* type, int cv_type, const char* diff) {
  const std::string t(type);
  auto peer = [&](const char* what, int code) {
#ifdef ZYL_BENCH_HAVE_OPENCV
    if (cv_type >= 0) AddOpenCv<T>((what + t + diff).c_str(), cv_type, code);
#else
    (void)what, (void)code, (void)cv_type, (void)diff;
#endif
  };
  AddExport("RGBToXYZ_" + t + "_C3R", Pixels<T>(3), Pixels<T>(3), Call<T, 3, kFwdC3>, kPerTarget);
  peer("RGB2XYZ_", ZYL_CV(cv::COLOR_RGB2XYZ));
  AddExport("RGBToXYZ_" + t + "_AC4R", Pixels<T>(4), Pixels<T>(4), Call<T, 4, kFwdAC4>);
  AddExport("XYZToRGB_" + t + "_C3R", Pixels<T>(3), Pixels<T>(3), Call<T, 3, kInvC3>, kPerTarget);
  peer("XYZ2RGB_", ZYL_CV(cv::COLOR_XYZ2RGB));
  AddExport("XYZToRGB_" + t + "_AC4R", Pixels<T>(4), Pixels<T>(4), Call<T, 4, kInvAC4>);
}

}  // namespace
}  // namespace zyl::bench

#define ZYL_XYZ_BENCH(T, t, cv_type, diff)                                               \
  AddType<T, &zyliRGBToXYZ_##t##_C3R, &zyliRGBToXYZ_##t##_AC4R, &zyliXYZToRGB_##t##_C3R, \
          &zyliXYZToRGB_##t##_AC4R>(#t, cv_type, diff)

ZYL_BENCH_FAMILY(xyz) {
  using namespace zyl::bench;
  ZYL_XYZ_BENCH(Zyl8u, 8u, ZYL_CV(CV_8UC3), "_rounded");
  ZYL_XYZ_BENCH(Zyl16u, 16u, ZYL_CV(CV_16UC3), "_rounded");
  ZYL_XYZ_BENCH(Zyl16s, 16s, -1, "");
  ZYL_XYZ_BENCH(Zyl32f, 32f, ZYL_CV(CV_32FC3), "_unclamped");
}
