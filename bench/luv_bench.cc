// CIE LUV: the 20 exports, each with its memcpy twin; the 8u and 32f RGB C3R pairs also per
// forced SIMD target; OpenCV's linear-RGB LUV conversions next to the 8u and 32f C3R members.
//
// OpenCV's COLOR_LRGB2Luv / COLOR_Luv2LRGB take linear RGB with the same D65 matrices and the
// same 8-bit codes (L * 255/100, (u + 134) * 255/354, (v + 140) * 255/262); its cube root and
// rounding are its own, so results can differ by a code. Its forward uses its own table
// interpolation and, for 8u, fixed point.
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

#include "bench/bench_common.h"
#include "bench/peers.h"

namespace zyl::bench {
namespace {

// The byte pattern read as floats is full of NaNs, infinities and subnormals, whose slow paths
// would be timed instead of the conversion. The first call on a fresh pattern (the harness's
// untimed warm-up) rewrites each element as its low 23 bits over 2^23 mapped onto the channel's
// range: 0..1 for RGB, L 0..100, u -134..220, v -140..122 for LUV. A fresh pattern shows in its
// first element being outside every range, or in its first 16 not all lying in theirs.
void SaneFloatSource(const Frame& f, int channels, bool luv) {
  auto* row = const_cast<Zyl8u*>(f.src[0]);  // the harness's own, writable buffer
  const float lo[4] = {0.0f, luv ? -134.0f : 0.0f, luv ? -140.0f : 0.0f, 0.0f};
  const float span[4] = {luv ? 100.0f : 1.0f, luv ? 354.0f : 1.0f, luv ? 262.0f : 1.0f, 1.0f};
  bool sane = true;
  for (int i = 0; i < 16 && sane; ++i) {
    float v;
    std::memcpy(&v, row + 4 * i, 4);
    const int c = i % channels;
    sane = v >= lo[c] && v <= lo[c] + span[c];
  }
  if (sane) return;
  for (int y = 0; y < f.roi.height; ++y, row += f.src_step[0]) {
    for (int i = 0; i < f.roi.width * channels; ++i) {
      uint32_t bits;
      std::memcpy(&bits, row + 4 * i, 4);
      const int c = i % channels;
      const float v = lo[c] + span[c] * (static_cast<float>(bits & 0x7FFFFF) / 8388608.0f);
      std::memcpy(row + 4 * i, &v, 4);
    }
  }
}

template <class T, int kChannels, bool kLuvSource, auto kFn>
ZylStatus Call(const Frame& f) {
  if constexpr (std::is_same_v<T, Zyl32f>) SaneFloatSource(f, kChannels, kLuvSource);
  return kFn(reinterpret_cast<const T*>(f.src[0]), f.src_step[0], reinterpret_cast<T*>(f.dst[0]),
             f.dst_step[0], f.roi);
}

template <class T, int kChannels, bool kLuvSource, auto kFn>
void Add(const char* name, unsigned flags = kNoFlags) {
  AddExport(name + 4, Pixels<T>(kChannels), Pixels<T>(kChannels),
            Call<T, kChannels, kLuvSource, kFn>, flags);
}

#ifdef ZYL_BENCH_HAVE_OPENCV
// OpenCV on buffers of its own, float sources made sane the same way.
void AddOpenCv(const char* what, int type, int code, bool luv_source) {
  const PeerPrepareFn cvt = OpenCvCvtColor(type, type, code);
  AddPeer(std::string("peer_opencv/") + what, Interleaved8u(3 * CV_ELEM_SIZE1(type)),
          Interleaved8u(3 * CV_ELEM_SIZE1(type)), [=](const Frame& f) {
            if (CV_MAT_DEPTH(type) == CV_32F) SaneFloatSource(f, 3, luv_source);
            return cvt(f);
          });
}
#endif

}  // namespace
}  // namespace zyl::bench

#define ZYL_LUV_BENCH(T, ch, luv_src, fn, ...) Add<T, ch, luv_src, &fn>(#fn, ##__VA_ARGS__)

ZYL_BENCH_FAMILY(luv) {
  using namespace zyl::bench;
  ZYL_LUV_BENCH(Zyl8u, 3, false, zyliRGBToLUV_8u_C3R, kPerTarget);
#ifdef ZYL_BENCH_HAVE_OPENCV
  AddOpenCv("LRGB2Luv_8u", CV_8UC3, cv::COLOR_LRGB2Luv, false);
#endif
  ZYL_LUV_BENCH(Zyl8u, 4, false, zyliRGBToLUV_8u_AC4R);
  ZYL_LUV_BENCH(Zyl8u, 3, false, zyliBGRToLUV_8u_C3R);
  ZYL_LUV_BENCH(Zyl16u, 3, false, zyliRGBToLUV_16u_C3R);
  ZYL_LUV_BENCH(Zyl16u, 4, false, zyliRGBToLUV_16u_AC4R);
  ZYL_LUV_BENCH(Zyl16s, 3, false, zyliRGBToLUV_16s_C3R);
  ZYL_LUV_BENCH(Zyl16s, 4, false, zyliRGBToLUV_16s_AC4R);
  ZYL_LUV_BENCH(Zyl32f, 3, false, zyliRGBToLUV_32f_C3R, kPerTarget);
#ifdef ZYL_BENCH_HAVE_OPENCV
  AddOpenCv("LRGB2Luv_32f", CV_32FC3, cv::COLOR_LRGB2Luv, false);
#endif
  ZYL_LUV_BENCH(Zyl32f, 4, false, zyliRGBToLUV_32f_AC4R);
  ZYL_LUV_BENCH(Zyl32f, 3, false, zyliBGRToLUV_32f_C3R);

  ZYL_LUV_BENCH(Zyl8u, 3, true, zyliLUVToRGB_8u_C3R, kPerTarget);
#ifdef ZYL_BENCH_HAVE_OPENCV
  AddOpenCv("Luv2LRGB_8u", CV_8UC3, cv::COLOR_Luv2LRGB, true);
#endif
  ZYL_LUV_BENCH(Zyl8u, 4, true, zyliLUVToRGB_8u_AC4R);
  ZYL_LUV_BENCH(Zyl8u, 3, true, zyliLUVToBGR_8u_C3R);
  ZYL_LUV_BENCH(Zyl16u, 3, true, zyliLUVToRGB_16u_C3R);
  ZYL_LUV_BENCH(Zyl16u, 4, true, zyliLUVToRGB_16u_AC4R);
  ZYL_LUV_BENCH(Zyl16s, 3, true, zyliLUVToRGB_16s_C3R);
  ZYL_LUV_BENCH(Zyl16s, 4, true, zyliLUVToRGB_16s_AC4R);
  ZYL_LUV_BENCH(Zyl32f, 3, true, zyliLUVToRGB_32f_C3R, kPerTarget);
#ifdef ZYL_BENCH_HAVE_OPENCV
  AddOpenCv("Luv2LRGB_32f", CV_32FC3, cv::COLOR_Luv2LRGB, true);
#endif
  ZYL_LUV_BENCH(Zyl32f, 4, true, zyliLUVToRGB_32f_AC4R);
  ZYL_LUV_BENCH(Zyl32f, 3, true, zyliLUVToBGR_32f_C3R);
}
