// The call frame's shared pieces: version record, saturation table, constant
// fills and their cache rule, the rounding guard, the cache-size query and the
// target dispatcher.
#include <gtest/gtest.h>

#include <cfenv>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "include/zylcc.h"
#include "include/zylcore.h"
#include "src/core/dispatch.h"
#include "src/core/fill.h"
#include "src/core/rounding.h"
#include "src/core/saturate.h"
#include "tests/support/guarded_image.h"
#include "tests/support/targets.h"

#if defined(__x86_64__) || defined(__i386__)
#include <xmmintrin.h>
#define ZYL_TEST_X86 1
#else
#define ZYL_TEST_X86 0
#endif

namespace zyl::test {
namespace {

// -------------------------------------------------------------- version --

TEST(Version, RecordIsStaticAndConsistent) {
  const ZylLibraryVersion* v = zylccGetLibVersion();
  ASSERT_NE(v, nullptr);
  EXPECT_EQ(v, zylccGetLibVersion());
  EXPECT_EQ(v->major, 2021);
  EXPECT_EQ(v->minor, 8);
  EXPECT_EQ(v->update, 0);
  EXPECT_EQ(v->revision, 0xBA45569Bu);
  EXPECT_STREQ(v->version, "2021.8 (r0xba45569b)");
  char from_fields[64];
  std::snprintf(from_fields, sizeof(from_fields), "%d.%d (r0x%08x)", static_cast<int>(v->major),
                static_cast<int>(v->minor), static_cast<unsigned>(v->revision));
  EXPECT_STREQ(v->version, from_fields);
  EXPECT_STREQ(v->buildDate, "Feb 17 2023");

  // A code of at least one character, zero-padded to the four bytes.
  const size_t code_length = strnlen(v->cpuCode, sizeof(v->cpuCode));
  EXPECT_GT(code_length, 0u);
  for (size_t i = code_length; i < sizeof(v->cpuCode); ++i) EXPECT_EQ(v->cpuCode[i], '\0') << i;
  EXPECT_EQ(std::string(v->name), "zylcc AVX (" + std::string(v->cpuCode, code_length) + ")");
}

// ----------------------------------------------------------- saturation --

TEST(Saturation, TableClampsItsWholeReach) {
  for (int v = -kSat8Reach; v <= 255 + kSat8Reach; ++v) {
    const int want = v < 0 ? 0 : v > 255 ? 255 : v;
    ASSERT_EQ(Sat8()[v], want) << "index " << v;
  }
}

// ------------------------------------------------------- fill decisions --

// A stand-in for the cache query that counts how often it is asked.
int32_t g_fake_cache = 0;
int g_queries = 0;
int32_t FakeCache() {
  ++g_queries;
  return g_fake_cache;
}
int32_t TinyCache() { return 1; }  // forces streaming for any fill that asks

struct Decision {
  bool wide;  // the 32-bit fill
  int64_t n;
  bool aligned;
  int32_t cache;  // what the query reports; 0 or less means unknown
  bool asks, streams;
};

// 8-bit fills ask above 512 KiB and stream from the cache size on; 32-bit
// fills ask above 2 MiB when aligned and stream above the cache size.
TEST(FillRule, WhenToAskAndWhenToStream) {
  const Decision cases[] = {
      {false, 524287, true, 1, false, false},
      {false, 524288, true, 1, false, false},  // not above 512 KiB: never asks
      {false, 524289, true, 1, true, true},
      {false, 524289, true, 524289, true, true},  // n equal to the cache streams
      {false, 524289, true, 524290, true, false},
      {false, 524289, true, 0, true, false},  // unknown: as for a small image
      {false, 524289, true, -4096, true, false},
      {false, int64_t{1} << 40, true, 0, true, false},
      {true, 2097152, true, 1, false, false},  // exactly 2 MiB: never asks
      {true, 2097153, true, 1, true, true},
      {true, 2097153, false, 1, false, false},  // unaligned destination: never asks
      {true, 2097156, true, 2097155, true, true},
      {true, 2097156, true, 2097156, true, false},  // cache equal to n: no streaming
      {true, 2097156, true, 0, true, false},
      {true, 2097156, true, -1, true, false},
  };
  for (const Decision& d : cases) {
    SCOPED_TRACE(::testing::Message() << (d.wide ? "32" : "8") << "-bit, " << d.n
                                      << " bytes, aligned " << d.aligned << ", cache " << d.cache);
    g_fake_cache = d.cache;
    g_queries = 0;
    EXPECT_EQ(d.wide ? Fill32Streams(d.n, d.aligned, FakeCache) : Fill8Streams(d.n, FakeCache),
              d.streams);
    EXPECT_EQ(g_queries, d.asks ? 1 : 0);
  }
}

// ---------------------------------------------------------------- fills --

struct Fill8Case {
  int width, height;
  Steps steps;
  bool stream;  // n above 512 KiB with a tiny reported cache
};

TEST(Fill, EightBitFillsExactlyTheRegion) {
  const Fill8Case cases[] = {
      {1, 1, Steps::kPacked, false},     {37, 5, Steps::kPacked, false},
      {37, 5, Steps::kPadded, false},    {37, 5, Steps::kNegative, false},
      {1024, 513, Steps::kPacked, true},  // contiguous: one long streamed row
      {1029, 511, Steps::kPadded, true},  // row by row, each row's head unaligned
  };
  uint32_t seed = 0;
  for (const Fill8Case& f : cases) {
    SCOPED_TRACE(::testing::Message() << f.width << "x" << f.height << " " << StepsName(f.steps));
    ASSERT_EQ(f.stream, Fill8Streams(int64_t{f.width} * f.height, TinyCache));
    GuardedImage<uint8_t> img(f.width, f.height, kC1, {f.steps, Placement::kHeap, ++seed});
    const auto before = img.Save();
    FillConst8u(0xC3, img.Ptr(), img.Step(), {f.width, f.height}, TinyCache);
    EXPECT_TRUE(img.Matches(before, [](int, int, int) { return uint8_t{0xC3}; }));
  }
}

TEST(Fill, ThirtyTwoBitFillsExactlyTheRun) {
  // Leads of 0..15 values put the start at every 4-byte phase of a 64-byte
  // line; the lengths vary the 16-, 8- and 4-byte tails behind the blocks.
  constexpr ptrdiff_t kStreamed = 524289;  // 4 * count > 2 MiB
  for (int lead = 0; lead < 16; ++lead) {
    for (ptrdiff_t count : {ptrdiff_t{1} + lead, ptrdiff_t{37}, kStreamed + (lead * 5) % 33}) {
      SCOPED_TRACE(::testing::Message() << "lead " << lead << ", count " << count);
      GuardedImage<uint32_t> run(static_cast<int>(count), 1, kC1,
                                 {Steps::kPacked, Placement::kHeap, uint32_t(lead), lead});
      const auto before = run.Save();
      FillConst32(0xDEADBEEF, run.Ptr(), count, TinyCache);
      EXPECT_TRUE(run.Matches(before, [](int, int, int) { return uint32_t{0xDEADBEEF}; }));
    }
  }
}

TEST(Fill, ThirtyTwoBitEmptyRunWritesNothing) {
  GuardedImage<uint32_t> run(4, 1, kC1, {Steps::kPacked});
  const auto before = run.Save();
  FillConst32(1, run.Ptr(), 0, TinyCache);
  EXPECT_TRUE(run.Unchanged(before));
}

// ------------------------------------------------------------- rounding --

int ModeOfMxcsr() {
#if ZYL_TEST_X86
  return static_cast<int>((_mm_getcsr() >> 3) & 0xC00);  // same encoding as FE_* on x86
#else
  return std::fegetround();
#endif
}

// The ties 2.5, -3.5 and 1.5 go to 2, -4 and 2 only when rounding to nearest
// even: upward gives 3, down and toward zero give 1 for 1.5, toward zero -3.
bool TiesToEven() {
  volatile double a = 2.5, b = -3.5, c = 1.5;
  bool even = std::lrint(a) == 2 && std::lrint(b) == -4 && std::lrint(c) == 2;
#if ZYL_TEST_X86
  even = even && _mm_cvtss_si32(_mm_set_ss(static_cast<float>(a))) == 2 &&
         _mm_cvtss_si32(_mm_set_ss(static_cast<float>(b))) == -4 &&
         _mm_cvtss_si32(_mm_set_ss(static_cast<float>(c))) == 2;
#endif
  return even;
}

// What a conversion under the guard sees; may leave from inside its loop.
struct Seen {
  int mode = -1;
  bool ties_to_even = false;
};
Seen UnderGuard(bool leave_early) {
  NearestRounding guard;
  Seen seen;
  for (int pass = 0; pass < 2; ++pass) {
    seen = {std::fegetround(), TiesToEven()};
    if (leave_early) return seen;
  }
  return seen;
}

TEST(Rounding, GuardHoldsNearestAndGivesTheCallerItsModeBack) {
  struct Restore {
    ~Restore() { std::fesetround(FE_TONEAREST); }
  } restore;
  for (int mode : {FE_UPWARD, FE_TOWARDZERO, FE_DOWNWARD, FE_TONEAREST}) {
    for (bool early : {false, true}) {
      SCOPED_TRACE(::testing::Message() << "mode " << mode << (early ? ", early return" : ""));
      ASSERT_EQ(std::fesetround(mode), 0);
      EXPECT_EQ(TiesToEven(), mode == FE_TONEAREST);
      const Seen seen = UnderGuard(early);
      EXPECT_EQ(seen.mode, FE_TONEAREST);
      EXPECT_TRUE(seen.ties_to_even);
      EXPECT_EQ(std::fegetround(), mode);
      EXPECT_EQ(ModeOfMxcsr(), mode);
    }
  }
}

// ----------------------------------------------------------- cache size --

TEST(CacheSize, ReportsThisMachinesLargestCache) {
  int32_t size = -1;
  EXPECT_EQ(zylGetMaxCacheSizeB(&size), 0);
  EXPECT_GT(size, 0);
  EXPECT_EQ(QueryCacheSize(), size);
  EXPECT_EQ(zylGetMaxCacheSizeB(nullptr), zylStsNullPtrErr);
}

// ------------------------------------------------------------- dispatch --

TEST(Dispatch, EachRunnableTargetCanBeForcedAndIsReached) {
  const std::vector<int> runnable = RunnableTargets();
  ASSERT_FALSE(runnable.empty());
  EXPECT_EQ(runnable.front(), kTargetFallback);  // always compiled, runs anywhere
  for (int t : runnable) {
    ScopedTarget forced(t);
    ASSERT_TRUE(forced.ok()) << TargetName(t);
    EXPECT_EQ(ActiveTarget(), t);
    EXPECT_EQ(DispatchProbe(), t);
  }
  // Automatic choice: the best target that is compiled and runs here.
  EXPECT_EQ(ActiveTarget(), runnable.back());
  EXPECT_EQ(DispatchProbe(), runnable.back());
}

TEST(Dispatch, UnknownOrUnrunnableTargetIsRefusedWithoutChange) {
  ScopedTarget forced(kTargetFallback);
  ASSERT_TRUE(forced.ok());
  for (int bad : {-2, static_cast<int>(kTargetCount), 99, INT_MIN}) {
    EXPECT_FALSE(ForceTarget(bad)) << bad;
  }
  for (int t = 0; t < kTargetCount; ++t) {
    if (!TargetCompiled(t) || !TargetSupported(t)) {
      EXPECT_FALSE(ForceTarget(t)) << t;
    }
  }
  EXPECT_EQ(ActiveTarget(), kTargetFallback);
  EXPECT_EQ(DispatchProbe(), kTargetFallback);
}

}  // namespace
}  // namespace zyl::test
