// Shared harness of the benchmark suite: aligned images, counters, memcpy twins and the
// registration table every family file fills.
//
// A family file lists its exports in a ZYL_BENCH_FAMILY block, one AddExport call each:
//
//   ZYL_BENCH_FAMILY(yuv) {
//     AddExport("RGBToYUV_8u_C3R", kC3, kC3, [](const Frame& f) {
//       return zyliRGBToYUV_8u_C3R(f.src[0], f.src_step[0], f.dst[0], f.dst_step[0], f.roi);
//     });
//   }
//
// Each export becomes, per image size, `<export>/<W>x<H>` followed by its twin
// `memcpy/<export>/<W>x<H>`; with kPerTarget also `<export>/<target>/<W>x<H>` for every SIMD
// target compiled in and supported here. Peers (AddPeer) run next to the export they follow.
#ifndef ZYL_BENCH_BENCH_COMMON_H_
#define ZYL_BENCH_BENCH_COMMON_H_

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "include/zylcc.h"

namespace zyl::bench {

// ------------------------------------------------------------------ image layouts --

// One plane of an image, relative to the full-resolution width and height: its rows hold
// width * bytes_num / bytes_den bytes (rounded up) and there are height / rows_div of them.
struct PlaneShape {
  int bytes_num = 1;
  int bytes_den = 1;
  int rows_div = 1;
};

// The planes of one side (source or destination) of a conversion, at most four.
struct Layout {
  std::vector<PlaneShape> planes;
};

// Interleaved 8-bit pixels of n channels, and n planes of 8-bit samples.
Layout Interleaved8u(int channels);
Layout Planar8u(int planes);

// Bytes one plane / a whole side occupies at a given size (rows only, without step padding):
// the traffic figure used by the counters and by the memcpy twins.
size_t PlaneBytes(const PlaneShape& plane, int width, int height);
size_t LayoutBytes(const Layout& layout, int width, int height);

// --------------------------------------------------------------------- buffers --

// Deterministic pseudo-random bytes (splitmix64 of the seed and position).
void FillPattern(uint8_t* data, size_t bytes, uint64_t seed);

// 64-byte aligned heap block.
class AlignedBuffer {
 public:
  AlignedBuffer() = default;
  explicit AlignedBuffer(size_t bytes);
  uint8_t* data() const { return data_.get(); }
  size_t size() const { return size_; }

 private:
  struct Free {
    void operator()(uint8_t* p) const;
  };
  std::unique_ptr<uint8_t, Free> data_;
  size_t size_ = 0;
};

// One side of a conversion: a 64-byte aligned buffer per plane, each row step rounded up to
// a multiple of 64 bytes, filled with the pattern.
class Image {
 public:
  Image(const Layout& layout, int width, int height, uint64_t seed);
  int plane_count() const { return static_cast<int>(planes_.size()); }
  uint8_t* plane(int i) const { return planes_[i].data(); }
  int step(int i) const { return steps_[i]; }

 private:
  std::vector<AlignedBuffer> planes_;
  std::vector<int> steps_;
};

// What a benchmarked call receives: plane pointers and steps of source and destination
// (interleaved images use index 0; one-step planar exports pass src/dst and step [0]).
struct Frame {
  const Zyl8u* src[4] = {};
  int src_step[4] = {};
  Zyl8u* dst[4] = {};
  int dst_step[4] = {};
  ZylSize roi = {0, 0};
};

// ------------------------------------------------------------------- counters --

// Sets pixels/s (width * height per iteration) and bytes/s (source + destination bytes per
// iteration) on a finished benchmark.
void SetCounters(benchmark::State& state, int width, int height, size_t bytes_per_iteration);

// ---------------------------------------------------------------- registration --

using ExportFn = ZylStatus (*)(const Frame& frame);
// Prepares a peer call on the frame's buffers (wrapping them, outside the timed loop) and
// returns the call to time; the call returns false if the peer did not do the work.
using PeerCall = std::function<bool()>;
using PeerPrepareFn = std::function<PeerCall(const Frame& frame)>;

enum ExportFlags : unsigned {
  kNoFlags = 0,
  kPerTarget = 1u << 0,  // also run with each compiled and supported SIMD target forced
};

// Standard layouts.
extern const Layout kC3;  // 3 interleaved 8-bit channels
extern const Layout kC4;  // 4 interleaved 8-bit channels (AC4 and C4)
extern const Layout kP3;  // 3 planes of 8-bit samples
extern const Layout kP4;  // 4 planes of 8-bit samples

// Adds an export (name without the "zyli" prefix) and its memcpy twin.
void AddExport(const std::string& name, const Layout& src, const Layout& dst, ExportFn fn,
               unsigned flags = kNoFlags);

// Adds a peer library's version of the export added just before, named
// "peer_<library>/<what>" (put any difference of definition or layout in the name).
void AddPeer(const std::string& name, const Layout& src, const Layout& dst, PeerPrepareFn prepare);

// ---------------------------------------------------------- pixel families --

// Interleaved pixels of `channels` elements of T.
template <class T>
Layout Pixels(int channels) {
  return Interleaved8u(channels * static_cast<int>(sizeof(T)));
}

// The random byte pattern read as floats is full of NaNs, infinities and subnormals, whose slow
// paths would be timed instead of the conversion. The first call on a fresh pattern (the
// harness's untimed warm-up) rewrites each of the `channels` floats of every source pixel as
// (bits & 0x7FFFFF) / 2^23, a value in 0..1; a fresh pattern shows in its first 16 elements,
// which all lie in 0..1 by chance less than once in 10^9.
void SaneFloatSource(const Frame& f, int channels);

// An interleaved export of T elements on plane 0 of each side (float sources made sane).
template <class T, int kChannels, auto kFn>
ZylStatus CallPixels(const Frame& f) {
  if constexpr (std::is_same_v<T, Zyl32f>) SaneFloatSource(f, kChannels);
  return kFn(reinterpret_cast<const T*>(f.src[0]), f.src_step[0], reinterpret_cast<T*>(f.dst[0]),
             f.dst_step[0], f.roi);
}

// Registers a family: its function calls AddExport / AddPeer. Families run in name order.
bool AddFamily(const char* name, void (*add)());

// Registers every family's benchmarks at every size; called by main().
void RegisterAll();

}  // namespace zyl::bench

#define ZYL_BENCH_FAMILY(family)                                  \
  static void ZylBenchFamily_##family();                          \
  [[maybe_unused]] static const bool zyl_bench_family_##family =  \
      ::zyl::bench::AddFamily(#family, &ZylBenchFamily_##family); \
  static void ZylBenchFamily_##family()

#endif  // ZYL_BENCH_BENCH_COMMON_H_
