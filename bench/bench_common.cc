#include "bench/bench_common.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

#include "src/core/dispatch.h"

namespace zyl::bench {

// ------------------------------------------------------------------ image layouts --

Layout Interleaved8u(int channels) { return Layout{{PlaneShape{channels, 1, 1}}}; }

Layout Planar8u(int planes) {
  return Layout{std::vector<PlaneShape>(static_cast<size_t>(planes), PlaneShape{1, 1, 1})};
}

const Layout kC3 = Interleaved8u(3);
const Layout kC4 = Interleaved8u(4);
const Layout kP3 = Planar8u(3);
const Layout kP4 = Planar8u(4);

namespace {

size_t RowBytes(const PlaneShape& plane, int width) {
  const size_t num = static_cast<size_t>(width) * static_cast<size_t>(plane.bytes_num);
  return (num + static_cast<size_t>(plane.bytes_den) - 1) / static_cast<size_t>(plane.bytes_den);
}

int Rows(const PlaneShape& plane, int height) {
  return (height + plane.rows_div - 1) / plane.rows_div;
}

}  // namespace

size_t PlaneBytes(const PlaneShape& plane, int width, int height) {
  return RowBytes(plane, width) * static_cast<size_t>(Rows(plane, height));
}

size_t LayoutBytes(const Layout& layout, int width, int height) {
  size_t total = 0;
  for (const PlaneShape& plane : layout.planes) total += PlaneBytes(plane, width, height);
  return total;
}

// --------------------------------------------------------------------- buffers --

void FillPattern(uint8_t* data, size_t bytes, uint64_t seed) {
  uint64_t state = seed * 0x9E3779B97F4A7C15ull;
  for (size_t i = 0; i < bytes; i += 8) {
    // splitmix64
    uint64_t z = (state += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    z ^= z >> 31;
    std::memcpy(data + i, &z, std::min<size_t>(8, bytes - i));
  }
}

void AlignedBuffer::Free::operator()(uint8_t* p) const {
  ::operator delete (p, std::align_val_t{64});
}

AlignedBuffer::AlignedBuffer(size_t bytes)
    : data_(static_cast<uint8_t*>(
          ::operator new (std::max<size_t>(bytes, 64), std::align_val_t{64}))),
      size_(bytes) {}

Image::Image(const Layout& layout, int width, int height, uint64_t seed) {
  for (const PlaneShape& shape : layout.planes) {
    const size_t step = (RowBytes(shape, width) + 63) / 64 * 64;
    const size_t bytes = step * static_cast<size_t>(Rows(shape, height));
    planes_.emplace_back(bytes);
    steps_.push_back(static_cast<int>(step));
    // Filling also faults every page in before timing.
    FillPattern(planes_.back().data(), bytes, seed++);
  }
}

// ------------------------------------------------------------------- counters --

void SetCounters(benchmark::State& state, int width, int height, size_t bytes_per_iteration) {
  const auto iterations = static_cast<int64_t>(state.iterations());
  state.SetItemsProcessed(iterations * width * height);
  state.SetBytesProcessed(iterations * static_cast<int64_t>(bytes_per_iteration));
}

// ---------------------------------------------------------------- registration --

namespace {

struct Entry {
  std::string name;
  Layout src;
  Layout dst;
  ExportFn fn = nullptr;  // an export, or
  PeerPrepareFn prepare;  // a peer
  unsigned flags = kNoFlags;
};

struct Family {
  const char* name;
  void (*add)();
};

std::vector<Family>& Families() {
  static std::vector<Family> families;
  return families;
}

// Entries of the family being collected by RegisterAll.
std::vector<Entry>* g_collecting = nullptr;

std::vector<Entry>& Collecting() {
  if (g_collecting == nullptr) {
    std::fprintf(stderr, "zylcc_bench: AddExport/AddPeer outside a ZYL_BENCH_FAMILY block\n");
    std::abort();
  }
  return *g_collecting;
}

Frame MakeFrame(const Image& src, const Image& dst, int width, int height) {
  Frame frame;
  for (int i = 0; i < src.plane_count() && i < 4; ++i) {
    frame.src[i] = src.plane(i);
    frame.src_step[i] = src.step(i);
  }
  for (int i = 0; i < dst.plane_count() && i < 4; ++i) {
    frame.dst[i] = dst.plane(i);
    frame.dst_step[i] = dst.step(i);
  }
  frame.roi = {width, height};
  return frame;
}

// Seeds of the source and destination patterns (destination too, so an untouched alpha
// channel holds defined bytes and its pages are resident).
constexpr uint64_t kSrcSeed = 1;
constexpr uint64_t kDstSeed = 101;

// Restores automatic target choice when a forced-target benchmark ends, on every path.
class ForcedTarget {
 public:
  explicit ForcedTarget(int target) : active_(target >= 0) {
    ok_ = !active_ || (ForceTarget(target) && DispatchProbe() == target);
  }
  ~ForcedTarget() {
    if (active_) ForceTarget(-1);
  }
  bool ok() const { return ok_; }

 private:
  bool active_;
  bool ok_ = true;
};

void RunExport(benchmark::State& state, const Entry& entry, int width, int height, int target) {
  const Image src(entry.src, width, height, kSrcSeed);
  const Image dst(entry.dst, width, height, kDstSeed);
  const Frame frame = MakeFrame(src, dst, width, height);
  const ForcedTarget forced(target);
  if (!forced.ok()) {
    state.SkipWithError("could not force the SIMD target");
    return;
  }
  const ZylStatus status = entry.fn(frame);  // warm-up, and a check of the arguments
  if (status != zylStsOk) {
    state.SkipWithError(("export returned status " + std::to_string(status)).c_str());
    return;
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(entry.fn(frame));
    benchmark::ClobberMemory();
  }
  SetCounters(state, width, height,
              LayoutBytes(entry.src, width, height) + LayoutBytes(entry.dst, width, height));
}

// The memcpy twin of an export: one contiguous memcpy of n = (S + D) / 2 bytes between two
// 64-byte aligned blocks, where S and D are the export's source and destination bytes at this
// size (rows only, no step padding). It therefore reads and writes as many bytes in total as
// the conversion; when S == D (e.g. RGBToYUV_8u_C3R at 1920x1080: S = D = 6,220,800) it reads
// exactly the source size and writes exactly the destination size. Pixel and byte counters
// are those of the export, so the two rates compare directly.
void RunMemcpy(benchmark::State& state, const Entry& entry, int width, int height) {
  const size_t src_bytes = LayoutBytes(entry.src, width, height);
  const size_t dst_bytes = LayoutBytes(entry.dst, width, height);
  const size_t n = (src_bytes + dst_bytes) / 2;
  AlignedBuffer from(n);
  AlignedBuffer to(n);
  FillPattern(from.data(), n, kSrcSeed);
  FillPattern(to.data(), n, kDstSeed);
  for (auto _ : state) {
    std::memcpy(to.data(), from.data(), n);
    benchmark::DoNotOptimize(to.data());
    benchmark::ClobberMemory();
  }
  SetCounters(state, width, height, 2 * n);
  state.SetLabel("copies " + std::to_string(n) + " B");
}

void RunPeer(benchmark::State& state, const Entry& entry, int width, int height) {
  const Image src(entry.src, width, height, kSrcSeed);
  const Image dst(entry.dst, width, height, kDstSeed);
  const Frame frame = MakeFrame(src, dst, width, height);
  PeerCall call = entry.prepare(frame);
  if (!call || !call()) {  // warm-up, and a check that the peer worked in place
    state.SkipWithError("peer call failed");
    return;
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(call());
    benchmark::ClobberMemory();
  }
  SetCounters(state, width, height,
              LayoutBytes(entry.src, width, height) + LayoutBytes(entry.dst, width, height));
}

struct Size {
  int width;
  int height;
};

std::vector<Size> Sizes() {
  std::vector<Size> sizes = {{1920, 1080}};
  const char* uhd = std::getenv("ZYL_BENCH_4K");
  if (uhd != nullptr && std::strcmp(uhd, "1") == 0) sizes.push_back({3840, 2160});
  return sizes;
}

void Register(const Entry& entry, const Size& size) {
  const std::string dims = "/" + std::to_string(size.width) + "x" + std::to_string(size.height);
  const int w = size.width;
  const int h = size.height;
  if (entry.prepare) {
    benchmark::RegisterBenchmark((entry.name + dims).c_str(),
                                 [entry, w, h](benchmark::State& s) { RunPeer(s, entry, w, h); });
    return;
  }
  benchmark::RegisterBenchmark((entry.name + dims).c_str(), [entry, w, h](benchmark::State& s) {
    RunExport(s, entry, w, h, -1);
  });
  benchmark::RegisterBenchmark(("memcpy/" + entry.name + dims).c_str(),
                               [entry, w, h](benchmark::State& s) { RunMemcpy(s, entry, w, h); });
  if ((entry.flags & kPerTarget) == 0) return;
  for (int target = kTargetFallback; target < kTargetCount; ++target) {
    if (!TargetCompiled(target) || !TargetSupported(target)) continue;
    benchmark::RegisterBenchmark(
        (entry.name + "/" + TargetName(target) + dims).c_str(),
        [entry, w, h, target](benchmark::State& s) { RunExport(s, entry, w, h, target); });
  }
}

}  // namespace

void AddExport(const std::string& name, const Layout& src, const Layout& dst, ExportFn fn,
               unsigned flags) {
  Entry entry;
  entry.name = name;
  entry.src = src;
  entry.dst = dst;
  entry.fn = fn;
  entry.flags = flags;
  Collecting().push_back(std::move(entry));
}

void AddPeer(const std::string& name, const Layout& src, const Layout& dst, PeerPrepareFn prepare) {
  Entry entry;
  entry.name = name;
  entry.src = src;
  entry.dst = dst;
  entry.prepare = std::move(prepare);
  Collecting().push_back(std::move(entry));
}

bool AddFamily(const char* name, void (*add)()) {
  Families().push_back({name, add});
  return true;
}

void RegisterAll() {
  std::vector<Family> families = Families();
  std::sort(families.begin(), families.end(),
            [](const Family& a, const Family& b) { return std::strcmp(a.name, b.name) < 0; });
  std::vector<std::vector<Entry>> entries(families.size());
  for (size_t i = 0; i < families.size(); ++i) {
    g_collecting = &entries[i];
    families[i].add();
  }
  g_collecting = nullptr;
  for (const Size& size : Sizes()) {
    for (const std::vector<Entry>& family : entries) {
      for (const Entry& entry : family) Register(entry, size);
    }
  }
  benchmark::AddCustomContext("zylcc_target", TargetName(ActiveTarget()));
}

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

}  // namespace zyl::bench

// Like benchmark's own main, with a shorter default minimum time per benchmark so a full run
// stays short; a --benchmark_min_time on the command line still wins (the last one counts).
int main(int argc, char** argv) {
  static char default_min_time[] = "--benchmark_min_time=0.2";
  std::vector<char*> args = {argv[0], default_min_time};
  args.insert(args.end(), argv + 1, argv + argc);
  int count = static_cast<int>(args.size());
  args.push_back(nullptr);
  benchmark::Initialize(&count, args.data());
  if (benchmark::ReportUnrecognizedArguments(count, args.data())) return 1;
  zyl::bench::RegisterAll();
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
