// Guarded images: every image a test hands to an export lives inside memory
// whose bytes around the region (a lead before it, row padding between rows,
// a tail after it) are random, and the whole memory is compared after the
// call, so a write outside the region, into row padding or into a channel
// the export must not touch fails the test.
//
// Pixels are addressed by logical coordinates (x, y, channel): y is the row
// index as the export walks it and channel c is the c-th channel of the pixel,
// i.e. plane c for planar images. Steps are BYTES, like the exports':
//   kPacked    step = row bytes (one contiguous run of width * height pixels)
//   kPadded    step = row bytes + random padding
//   kNegative  padded, pointer at the LAST memory row, step < 0 (walks upward)
//   kZero      step 0: every logical row is the same memory row
#ifndef ZYL_TESTS_SUPPORT_GUARDED_IMAGE_H_
#define ZYL_TESTS_SUPPORT_GUARDED_IMAGE_H_

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace zyl::test {

enum class Steps { kPacked, kPadded, kNegative, kZero };
const char* StepsName(Steps steps);

enum class Placement {
  kHeap,     // random guard bytes on both sides
  kPageEnd,  // no tail: the last byte of the memory sits right before an inaccessible page
};

// Where the channels of a pixel live: interleaved images have one plane of
// `channels` interleaved values, planar images `planes` planes of one value.
struct Format {
  int planes;
  int channels;
  int Total() const { return planes * channels; }
};
inline constexpr Format kC1{1, 1}, kC2{1, 2}, kC3{1, 3}, kC4{1, 4}, kP3{3, 1}, kP4{4, 1};

// A block of bytes; with kPageEnd the byte after the last one faults on
// access (Linux: mmap + PROT_NONE page; elsewhere a plain buffer).
class GuardedMemory {
 public:
  GuardedMemory(size_t bytes, Placement placement);
  ~GuardedMemory();
  GuardedMemory(GuardedMemory&& other) noexcept;
  GuardedMemory& operator=(GuardedMemory&&) = delete;
  GuardedMemory(const GuardedMemory&) = delete;

  uint8_t* data() const { return data_; }
  size_t size() const { return size_; }

 private:
  uint8_t* data_ = nullptr;
  size_t size_ = 0;
  void* map_ = nullptr;  // mapping to release (page-end placement)
  size_t map_size_ = 0;
  std::vector<uint8_t> heap_;
};

struct ImageOptions {
  Steps steps = Steps::kPadded;
  Placement placement = Placement::kHeap;
  uint32_t seed = 1;  // picks the guard bytes, lead and padding
  int lead = -1;      // elements before the region; -1 = random 1..32
  int pad = -1;       // elements of row padding (kPadded/kNegative); -1 = random 1..24
};

// Untyped core: geometry, snapshots and the comparison report.
class GuardedImageBase {
 public:
  using Snapshot = std::vector<std::vector<uint8_t>>;
  virtual ~GuardedImageBase() = default;

  int width() const { return width_; }
  int height() const { return height_; }
  Format format() const { return format_; }
  int Step() const { return step_; }

  // A copy of the whole memory of every plane.
  Snapshot Save() const;
  // The whole memory equals `before`.
  ::testing::AssertionResult Unchanged(const Snapshot& before) const;

 protected:
  GuardedImageBase(int width, int height, Format format, size_t elem, const ImageOptions& opt);

  // Byte offset of logical (x, y, channel) inside its plane's memory.
  size_t Offset(int x, int y, int c) const;
  int PlaneOf(int c) const { return format_.planes > 1 ? c : 0; }
  uint8_t* PlaneRow0(int plane) const { return memory_[plane].data() + row0_; }
  // Compares `expected` (full memory images) with the actual memory.
  ::testing::AssertionResult Compare(const Snapshot& expected) const;
  std::string Where(int plane, size_t offset) const;
  virtual std::string Element(const uint8_t* p) const = 0;

  int width_, height_;
  Format format_;
  size_t elem_;
  Steps steps_;
  size_t lead_, row_bytes_, pitch_;  // pitch = row bytes + padding
  int memory_rows_;
  size_t row0_;  // offset of logical row 0 from the memory start
  int step_;
  std::vector<GuardedMemory> memory_;
};

template <class T>
class GuardedImage : public GuardedImageBase {
 public:
  GuardedImage(int width, int height, Format format, const ImageOptions& opt = {})
      : GuardedImageBase(width, height, format, sizeof(T), opt) {
    for (int p = 0; p < format.planes; ++p) planes_[p] = reinterpret_cast<T*>(PlaneRow0(p));
  }

  // First pixel of the region (logical row 0) of a plane.
  T* Ptr(int plane = 0) const { return planes_[plane]; }
  // The plane-pointer array an export takes (unused entries are null).
  T* const* Planes() const { return planes_.data(); }

  T& At(int x, int y, int c) const {
    return *reinterpret_cast<T*>(memory_[PlaneOf(c)].data() + Offset(x, y, c));
  }

  // Sets every region element to fn(x, y, c), rows in walking order.
  template <class Fn>
  void Fill(Fn fn) {
    for (int y = 0; y < height_; ++y)
      for (int x = 0; x < width_; ++x)
        for (int c = 0; c < format_.Total(); ++c) At(x, y, c) = fn(x, y, c);
  }

  // The memory equals `before` with every region element for which
  // expected(x, y, c) returns a value replaced by it, applied in walking
  // order (so with a zero step the last row wins, as it does for a walker).
  // Elements for which it returns nullopt must keep their `before` bytes.
  template <class Fn>
  ::testing::AssertionResult Matches(const Snapshot& before, Fn expected) const {
    Snapshot want = before;
    for (int y = 0; y < height_; ++y) {
      for (int x = 0; x < width_; ++x) {
        for (int c = 0; c < format_.Total(); ++c) {
          const std::optional<T> v = expected(x, y, c);
          if (v) std::memcpy(want[PlaneOf(c)].data() + Offset(x, y, c), &*v, sizeof(T));
        }
      }
    }
    return Compare(want);
  }

 private:
  std::string Element(const uint8_t* p) const override {
    T v;
    std::memcpy(&v, p, sizeof(T));
    if constexpr (std::is_floating_point_v<T>) {
      return std::to_string(v);
    } else {
      return std::to_string(static_cast<long long>(v));
    }
  }

  std::array<T*, 4> planes_{};
};

}  // namespace zyl::test

#endif  // ZYL_TESTS_SUPPORT_GUARDED_IMAGE_H_
