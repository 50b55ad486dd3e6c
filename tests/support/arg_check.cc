#include "tests/support/arg_check.h"

#include <cstdint>
#include <functional>
#include <random>
#include <utility>

namespace zyl::test {
namespace {

// Fresh random-filled memory for every pointer argument of a row, laid out for
// its valid ROI with slack on both sides (so the accepted odd steps 0 and -1
// stay inside it), and a snapshot to prove that failing calls write nothing.
class ArgBuffers {
 public:
  explicit ArgBuffers(const ExportRow& c) {
    std::mt19937 rng(7);
    call_.size = c.valid;
    for (size_t i = 0; i < c.slots.size(); ++i) {
      const ArgSlot& s = c.slots[i];
      const int row = s.bytes_per_pixel * c.valid.width;
      const size_t body = s.kind == ArgSlot::kPointer ? static_cast<size_t>(s.bytes)
                                                      : static_cast<size_t>(row) * c.valid.height;
      void* planes[4];
      for (int p = 0; p < s.planes; ++p) {
        memory_.emplace_back(body + 2 * kSlack);
        for (uint8_t& b : memory_.back()) b = static_cast<uint8_t>(rng());
        planes[p] = memory_.back().data() + kSlack;
      }
      if (s.kind == ArgSlot::kPlanes) {
        call_.BindPlanes(static_cast<int>(i), planes, s.planes, row);
      } else {
        call_.Bind(static_cast<int>(i), planes[0], row);
      }
    }
    before_ = memory_;
  }
  ArgCall& call() { return call_; }
  bool Unchanged() const { return memory_ == before_; }

 private:
  static constexpr size_t kSlack = 64;
  ArgCall call_;
  std::vector<std::vector<uint8_t>> memory_, before_;
};

using Spoil = std::function<void(ArgCall&)>;

// One call on fresh buffers after `spoil`; a rejected call must write nothing.
void ExpectStatus(const ExportRow& c, ZylStatus want, const std::string& what, const Spoil& spoil) {
  SCOPED_TRACE(what);
  ArgBuffers b(c);
  spoil(b.call());
  EXPECT_EQ(c.call(b.call()), want);
  if (want < 0) {
    EXPECT_TRUE(b.Unchanged()) << "a rejected call wrote to its arguments";
  }
}

std::string Str(ZylSize s) { return std::to_string(s.width) + "x" + std::to_string(s.height); }

std::vector<ZylSize> BadSizes(const ExportRow& c) {
  const ZylSize v = c.valid, m = c.min_size;
  std::vector<ZylSize> out = {{0, v.height}, {-1, v.height}, {v.width, 0}, {v.width, -1}, {0, 0}};
  if (m.width > 1) out.push_back({m.width - 1, v.height});
  if (m.height > 1) out.push_back({v.width, m.height - 1});
  return out;
}

// Every step an export receives, as (slot, entry); a shared step is entry 0.
std::vector<std::pair<int, int>> StepPositions(const ExportRow& c) {
  std::vector<std::pair<int, int>> out;
  for (size_t i = 0; i < c.slots.size(); ++i) {
    const ArgSlot& s = c.slots[i];
    if (!s.has_step) continue;
    for (int p = 0; p < (s.per_plane_steps ? s.planes : 1); ++p) {
      out.emplace_back(static_cast<int>(i), p);
    }
  }
  return out;
}

// The checked plane entries, in the order the export tests them.
std::vector<std::pair<int, int>> PlaneEntries(const ExportRow& c) {
  std::vector<std::pair<int, int>> out;
  for (size_t i = 0; i < c.slots.size(); ++i) {
    if (c.slots[i].kind != ArgSlot::kPlanes) continue;
    for (int p = 0; p < c.slots[i].checked; ++p) out.emplace_back(static_cast<int>(i), p);
  }
  return out;
}

// Status of a call whose size is bad and which also has another fault.
ZylStatus WithBadSize(const ExportRow& c, ZylStatus other, bool other_is_pointer) {
  if (c.order == CheckOrder::kSizeFirst) return zylStsSizeErr;
  if (other_is_pointer) return other;
  if (other == zylStsStepErr && c.order == CheckOrder::kStepsBeforeSize) return other;
  return zylStsSizeErr;
}

TEST_P(ArgCheck, ValidCallSucceeds) {
  ArgBuffers b(GetParam());
  EXPECT_EQ(GetParam().call(b.call()), GetParam().ok_status) << "the table row does not fit";
}

TEST_P(ArgCheck, NullPointerRejected) {
  const ExportRow& c = GetParam();
  for (int i = 0; i < static_cast<int>(c.slots.size()); ++i) {
    const ArgSlot& s = c.slots[i];
    for (bool steps : {false, true}) {
      if (steps && !(s.has_step && s.per_plane_steps)) continue;
      const std::string arg = (steps ? "step array " : "pointer argument ") + std::to_string(i);
      auto spoil = [&](ArgCall& a) { steps ? a.NullSteps(i) : a.NullPointer(i); };
      ExpectStatus(c, zylStsNullPtrErr, arg + " null", spoil);
      for (ZylSize bad : BadSizes(c)) {
        ExpectStatus(c, WithBadSize(c, zylStsNullPtrErr, true), arg + " null, size " + Str(bad),
                     [&](ArgCall& a) {
                       spoil(a);
                       a.size = bad;
                     });
      }
    }
  }
}

TEST_P(ArgCheck, BadSizeRejected) {
  const ExportRow& c = GetParam();
  for (ZylSize bad : BadSizes(c)) {
    ExpectStatus(c, zylStsSizeErr, "size " + Str(bad), [&](ArgCall& a) { a.size = bad; });
  }
}

TEST_P(ArgCheck, Steps) {
  const ExportRow& c = GetParam();
  for (auto [slot, entry] : StepPositions(c)) {
    for (int step : {0, -1}) {
      const std::string what =
          "step " + std::to_string(step) + " at argument " + std::to_string(slot) +
          (c.slots[slot].per_plane_steps ? " plane " + std::to_string(entry) : "");
      auto spoil = [&](ArgCall& a) { a.SetStep(slot, entry, step); };
      ExpectStatus(c, c.steps_checked ? zylStsStepErr : c.ok_status, what, spoil);
      if (!c.steps_checked) continue;
      ExpectStatus(c, WithBadSize(c, zylStsStepErr, false), what + ", width 0", [&](ArgCall& a) {
        spoil(a);
        a.size.width = 0;
      });
      ExpectStatus(c, zylStsNullPtrErr, what + ", argument 0 null", [&](ArgCall& a) {
        spoil(a);
        a.NullPointer(0);
      });
    }
  }
}

TEST_P(ArgCheck, NullPlaneEntryRejected) {
  const ExportRow& c = GetParam();
  const ZylStatus with_bad_size =
      c.planes_with_pointers ? WithBadSize(c, zylStsNullPtrErr, true) : zylStsSizeErr;
  for (auto [slot, plane] : PlaneEntries(c)) {
    const std::string what =
        "argument " + std::to_string(slot) + " plane " + std::to_string(plane) + " null";
    auto spoil = [&](ArgCall& a) { a.NullPlane(slot, plane); };
    ExpectStatus(c, zylStsNullPtrErr, what, spoil);
    for (ZylSize bad : BadSizes(c)) {
      ExpectStatus(c, with_bad_size, what + ", size " + Str(bad), [&](ArgCall& a) {
        spoil(a);
        a.size = bad;
      });
    }
    if (!c.steps_checked) continue;
    for (auto [s, e] : StepPositions(c)) {
      ExpectStatus(c, c.planes_with_pointers ? zylStsNullPtrErr : zylStsStepErr,
                   what + ", a step 0", [&](ArgCall& a) {
                     spoil(a);
                     a.SetStep(s, e, 0);
                   });
    }
  }
}

}  // namespace

std::string ExportRowName(const ::testing::TestParamInfo<ExportRow>& info) {
  return info.param.name;
}

}  // namespace zyl::test
