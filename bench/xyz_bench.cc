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
  AddExport("RGBToXYZ_" + t + "_C3R", Pixels<T>(3), Pixels<T>(3), CallPixels<T, 3, kFwdC3>,
            kPerTarget);
  peer("RGB2XYZ_", ZYL_CV(cv::COLOR_RGB2XYZ));
  AddExport("RGBToXYZ_" + t + "_AC4R", Pixels<T>(4), Pixels<T>(4), CallPixels<T, 4, kFwdAC4>);
  AddExport("XYZToRGB_" + t + "_C3R", Pixels<T>(3), Pixels<T>(3), CallPixels<T, 3, kInvC3>,
            kPerTarget);
  peer("XYZ2RGB_", ZYL_CV(cv::COLOR_XYZ2RGB));
  AddExport("XYZToRGB_" + t + "_AC4R", Pixels<T>(4), Pixels<T>(4), CallPixels<T, 4, kInvAC4>);
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
