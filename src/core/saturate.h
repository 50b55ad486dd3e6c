// The 8-bit saturation table: read through its entry for 0, it clamps any
// index in [-kSat8Reach, 255 + kSat8Reach] to 0..255.
#ifndef ZYL_CORE_SATURATE_H_
#define ZYL_CORE_SATURATE_H_

#include <array>
#include <cstdint>

namespace zyl {

constexpr int kSat8Reach = 1024;
using Sat8Array = std::array<uint8_t, 256 + 2 * kSat8Reach>;
extern const Sat8Array kSat8Table;

// Pointer to the table's entry for 0; valid indices run from -kSat8Reach.
inline const uint8_t* Sat8() { return kSat8Table.data() + kSat8Reach; }

inline uint8_t Clamp8(int v) { return Sat8()[v]; }

}  // namespace zyl

#endif  // ZYL_CORE_SATURATE_H_
