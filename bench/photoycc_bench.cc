// PhotoYCC: the 16 exports, each with its memcpy twin; the C3R pairs also per forced SIMD
// target. No peer library offers PhotoYCC, so there is nothing to run beside them.
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

#include "bench/bench_common.h"

namespace zyl::bench {
namespace {

// Both directions, both layouts of one element type.
template <class T, auto kFwdC3, auto kFwdAC4, auto kInvC3, auto kInvAC4>
void AddType(const char* type) {
  const std::string t(type);
  AddExport("RGBToYCC_" + t + "_C3R", Pixels<T>(3), Pixels<T>(3), CallPixels<T, 3, kFwdC3>,
            kPerTarget);
  AddExport("RGBToYCC_" + t + "_AC4R", Pixels<T>(4), Pixels<T>(4), CallPixels<T, 4, kFwdAC4>);
  AddExport("YCCToRGB_" + t + "_C3R", Pixels<T>(3), Pixels<T>(3), CallPixels<T, 3, kInvC3>,
            kPerTarget);
  AddExport("YCCToRGB_" + t + "_AC4R", Pixels<T>(4), Pixels<T>(4), CallPixels<T, 4, kInvAC4>);
}

}  // namespace
}  // namespace zyl::bench

#define ZYL_PYCC_BENCH(T, t)                                                             \
  AddType<T, &zyliRGBToYCC_##t##_C3R, &zyliRGBToYCC_##t##_AC4R, &zyliYCCToRGB_##t##_C3R, \
          &zyliYCCToRGB_##t##_AC4R>(#t)

ZYL_BENCH_FAMILY(photoycc) {
  using namespace zyl::bench;
  ZYL_PYCC_BENCH(Zyl8u, 8u);
  ZYL_PYCC_BENCH(Zyl16u, 16u);
  ZYL_PYCC_BENCH(Zyl16s, 16s);
  ZYL_PYCC_BENCH(Zyl32f, 32f);
}
