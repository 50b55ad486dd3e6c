#include "tests/support/guarded_image.h"

#include <random>
#include <sstream>
#include <utility>

#if defined(__linux__)
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace zyl::test {

const char* StepsName(Steps steps) {
  switch (steps) {
    case Steps::kPacked:
      return "packed";
    case Steps::kPadded:
      return "padded";
    case Steps::kNegative:
      return "negative";
    case Steps::kZero:
      return "zero";
  }
  return "?";
}

GuardedMemory::GuardedMemory(size_t bytes, Placement placement) : size_(bytes) {
#if defined(__linux__)
  if (placement == Placement::kPageEnd) {
    const size_t page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
    const size_t body = (bytes + page - 1) / page * page;
    map_size_ = body + page;
    map_ = mmap(nullptr, map_size_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (map_ == MAP_FAILED) {
      map_ = nullptr;
      ADD_FAILURE() << "mmap of " << map_size_ << " bytes failed";
    } else {
      uint8_t* base = static_cast<uint8_t*>(map_);
      if (mprotect(base + body, page, PROT_NONE) != 0) ADD_FAILURE() << "mprotect failed";
      data_ = base + body - bytes;
      return;
    }
  }
#else
  (void)placement;
#endif
  heap_.resize(bytes);
  data_ = heap_.data();
}

GuardedMemory::GuardedMemory(GuardedMemory&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)),
      size_(std::exchange(other.size_, 0)),
      map_(std::exchange(other.map_, nullptr)),
      map_size_(std::exchange(other.map_size_, 0)),
      heap_(std::move(other.heap_)) {
  if (map_ == nullptr) data_ = heap_.data();
}

GuardedMemory::~GuardedMemory() {
#if defined(__linux__)
  if (map_ != nullptr) munmap(map_, map_size_);
#endif
}

GuardedImageBase::GuardedImageBase(int width, int height, Format format, size_t elem,
                                   const ImageOptions& opt)
    : width_(width), height_(height), format_(format), elem_(elem), steps_(opt.steps) {
  std::mt19937 rng(opt.seed);
  auto pick = [&](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng); };
  lead_ = elem * static_cast<size_t>(opt.lead >= 0 ? opt.lead : pick(1, 32));
  row_bytes_ = elem * static_cast<size_t>(width) * static_cast<size_t>(format.channels);
  const bool padded = steps_ == Steps::kPadded || steps_ == Steps::kNegative;
  pitch_ =
      row_bytes_ + (padded ? elem * static_cast<size_t>(opt.pad >= 0 ? opt.pad : pick(1, 24)) : 0);
  memory_rows_ = steps_ == Steps::kZero ? 1 : height;
  row0_ = lead_ + (steps_ == Steps::kNegative ? (height - 1) * pitch_ : 0);
  switch (steps_) {
    case Steps::kPacked:
    case Steps::kPadded:
      step_ = static_cast<int>(pitch_);
      break;
    case Steps::kNegative:
      step_ = -static_cast<int>(pitch_);
      break;
    case Steps::kZero:
      step_ = 0;
      break;
  }
  const size_t tail =
      opt.placement == Placement::kPageEnd ? 0 : elem * static_cast<size_t>(pick(1, 32));
  const size_t bytes = lead_ + (memory_rows_ - 1) * pitch_ + row_bytes_ + tail;
  memory_.reserve(static_cast<size_t>(format.planes));
  for (int p = 0; p < format.planes; ++p) {
    memory_.emplace_back(bytes, opt.placement);
    uint8_t* m = memory_.back().data();
    for (size_t i = 0; i < bytes; ++i) m[i] = static_cast<uint8_t>(rng());
  }
}

size_t GuardedImageBase::Offset(int x, int y, int c) const {
  const size_t row = steps_ == Steps::kZero       ? 0
                     : steps_ == Steps::kNegative ? static_cast<size_t>(height_ - 1 - y)
                                                  : static_cast<size_t>(y);
  const int channel = format_.planes > 1 ? 0 : c;
  return lead_ + row * pitch_ +
         (static_cast<size_t>(x) * format_.channels + static_cast<size_t>(channel)) * elem_;
}

GuardedImageBase::Snapshot GuardedImageBase::Save() const {
  Snapshot s;
  for (const GuardedMemory& m : memory_) s.emplace_back(m.data(), m.data() + m.size());
  return s;
}

::testing::AssertionResult GuardedImageBase::Unchanged(const Snapshot& before) const {
  return Compare(before);
}

std::string GuardedImageBase::Where(int plane, size_t offset) const {
  std::ostringstream os;
  if (format_.planes > 1) os << "plane " << plane << ", ";
  if (offset < lead_) {
    os << "lead guard, " << (lead_ - offset) << " bytes before the region";
    return os.str();
  }
  const size_t rel = offset - lead_;
  const size_t row = rel / pitch_, in_row = rel % pitch_;
  if (row >= static_cast<size_t>(memory_rows_) ||
      (row == static_cast<size_t>(memory_rows_) - 1 && in_row >= row_bytes_)) {
    os << "tail guard, " << (rel - (memory_rows_ - 1) * pitch_ - row_bytes_) << " bytes after";
    return os.str();
  }
  const size_t y = steps_ == Steps::kNegative ? height_ - 1 - row : row;
  if (in_row >= row_bytes_) {
    os << "row padding after logical row " << y;
    return os.str();
  }
  const size_t e = in_row / elem_;
  os << "pixel (" << e / format_.channels << ", "
     << (steps_ == Steps::kZero ? std::string("every row") : std::to_string(y)) << ") channel "
     << (format_.planes > 1 ? plane : static_cast<int>(e % format_.channels));
  return os.str();
}

::testing::AssertionResult GuardedImageBase::Compare(const Snapshot& expected) const {
  std::ostringstream os;
  size_t bad = 0;
  constexpr size_t kShown = 6;
  for (size_t p = 0; p < memory_.size(); ++p) {
    const uint8_t* got = memory_[p].data();
    const uint8_t* want = expected[p].data();
    for (size_t i = 0; i < memory_[p].size(); ++i) {
      if (got[i] == want[i]) continue;
      if (bad++ >= kShown) continue;
      const std::string where = Where(static_cast<int>(p), i);
      os << "\n  " << where << ": ";
      const bool in_pixel = where.find("pixel") != std::string::npos;
      if (in_pixel) {
        const size_t start = lead_ + (i - lead_) / elem_ * elem_;
        os << "expected " << Element(want + start) << ", got " << Element(got + start);
        i = start + elem_ - 1;  // one report per element
      } else {
        os << "byte was " << int{want[i]} << ", now " << int{got[i]};
      }
    }
  }
  if (bad == 0) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure()
         << bad << " difference(s) in a " << width_ << "x" << height_ << " image with "
         << StepsName(steps_) << " step " << step_ << ":" << os.str();
}

}  // namespace zyl::test
