#include "include/zylcc.h"

namespace {

// The revision prints as "r0x" plus eight lower-case hex digits; the version
// string is built from these same numbers, so the two can never disagree.
#define ZYL_MAJOR 2021
#define ZYL_MINOR 8
#define ZYL_REVISION 0xba45569b
#define ZYL_STR2(x) #x
#define ZYL_STR(x) ZYL_STR2(x)

// The variant code names the tuning level of the kernels (AVX and earlier).
#define ZYL_CPU_CODE "avx"

const ZylLibraryVersion kVersion = {
    ZYL_MAJOR,
    ZYL_MINOR,
    0,
    ZYL_REVISION,
    {'a', 'v', 'x', '\0'},
    "zylcc AVX (" ZYL_CPU_CODE ")",
    ZYL_STR(ZYL_MAJOR) "." ZYL_STR(ZYL_MINOR) " (r" ZYL_STR(ZYL_REVISION) ")",
    "Feb 17 2023",
};

}  // namespace

extern "C" ZYL_API const ZylLibraryVersion* zylccGetLibVersion(void) { return &kVersion; }
