#include "src/core/saturate.h"

namespace zyl {
namespace {

constexpr Sat8Array MakeSat8() {
  Sat8Array t{};
  for (int i = 0; i < static_cast<int>(t.size()); ++i) {
    const int v = i - kSat8Reach;
    t[i] = static_cast<uint8_t>(v < 0 ? 0 : v > 255 ? 255 : v);
  }
  return t;
}

}  // namespace

// Built at compile time: read-only data present from load, no initialisation.
alignas(64) constexpr Sat8Array kSat8Table = MakeSat8();

}  // namespace zyl
