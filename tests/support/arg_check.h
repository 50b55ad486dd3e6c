// The table of exports: one row per export says how to call it, and drives
// both the argument checks every export shares and the family's own tests.
//
// A row lists the export's pointer arguments in argument order (images, plane
// arrays, other required pointers such as a matrix or an output size), which
// of them carry a step, the smallest valid ROI, and a captureless lambda that
// calls the export with the pointers, steps, size and parameter of an ArgCall.
// The shared tests (arg_check.cc) check, on buffers with random contents that
// must come back unchanged from every failing call:
//   - each required pointer (and each per-plane step array) null in turn: -8,
//     also with a bad size (pointers are tested before the size);
//   - widths and heights 0, -1 and one below the family minimum: -6;
//   - steps 0 and -1: accepted, or -16 where the family checks steps;
//   - each checked plane entry null in turn: -8, but -6 with a bad size
//     (plane entries are tested after the size, or with the pointers where
//     the row says PlaneEntriesWithPointers());
//   - and that the row itself is right: a valid call returns ok_status.
// Family tests run the same rows on guarded images with CallOnImages.
//
// A family test file adds its rows and one line:
//   const ExportRow kRows[] = {
//       ExportRow("zyliFooToBar_8u_C3R", {Image(3), Image(3)},
//                 [](const ArgCall& a) {
//                   return zyliFooToBar_8u_C3R(a.Ptr<const Zyl8u>(0), a.Step(0),
//                                              a.Ptr<Zyl8u>(1), a.Step(1), a.size);
//                 }),
//   };
//   INSTANTIATE_TEST_SUITE_P(Foo, ArgCheck, ::testing::ValuesIn(kRows), ExportRowName);
#ifndef ZYL_TESTS_SUPPORT_ARG_CHECK_H_
#define ZYL_TESTS_SUPPORT_ARG_CHECK_H_

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "include/zylcc.h"
#include "tests/support/guarded_image.h"

namespace zyl::test {

inline constexpr int kMaxArgSlots = 6;

// One pointer argument.
struct ArgSlot {
  enum Kind { kImage, kPlanes, kPointer };
  Kind kind;
  int planes = 1;           // entries of a plane array
  int checked = 1;          // leading entries the export tests for null
  int bytes_per_pixel = 1;  // per plane; sizes the backing memory (an upper bound will do)
  int bytes = 0;            // kPointer: size of the data pointed to
  bool has_step = true;     // whole-image exports take no steps
  bool per_plane_steps = false;

  // Only the first n entries are tested for null; the others are used as
  // given, so the shared tests never set them to null (the export would
  // write through them).
  ArgSlot Checked(int n) const {
    ArgSlot s = *this;
    s.checked = n;
    return s;
  }
  ArgSlot PerPlaneSteps() const {
    ArgSlot s = *this;
    s.per_plane_steps = true;
    return s;
  }
  ArgSlot NoStep() const {
    ArgSlot s = *this;
    s.has_step = false;
    return s;
  }
};

// A plain image pointer (interleaved or single-plane image).
inline ArgSlot Image(int bytes_per_pixel) {
  return ArgSlot{ArgSlot::kImage, 1, 1, bytes_per_pixel, 0, true, false};
}
// An array of plane pointers, all of them tested for null unless Checked().
inline ArgSlot Planes(int count, int bytes_per_pixel = 1) {
  return ArgSlot{ArgSlot::kPlanes, count, count, bytes_per_pixel, 0, true, false};
}
// Any other required pointer (matrix, output value, work buffer): no step.
inline ArgSlot Pointer(int bytes) {
  return ArgSlot{ArgSlot::kPointer, 1, 1, 0, bytes, false, false};
}

// A plane array as the export receives it; null when the array itself is.
template <class T>
struct PlaneArray {
  std::array<T*, 4> p;
  bool null;
  operator T* const*() const { return null ? nullptr : p.data(); }
};

// The arguments of one call, by slot index (argument order of the row).
class ArgCall {
 public:
  template <class T>
  T* Ptr(int slot) const {
    return static_cast<T*>(ptr_[slot]);
  }
  template <class T>
  PlaneArray<T> Planes(int slot) const {
    PlaneArray<T> a{{}, ptr_[slot] == nullptr};
    for (int i = 0; i < 4; ++i) a.p[i] = static_cast<T*>(planes_[slot][i]);
    return a;
  }
  int Step(int slot) const { return steps_[slot][0]; }
  // The step array of a slot with per-plane steps (null when spoiled).
  const int* Steps(int slot) const { return null_steps_[slot] ? nullptr : steps_[slot].data(); }

  // Points a slot at memory: an image or other pointer, or a plane array.
  void Bind(int slot, void* p, int step) {
    planes_[slot] = {p};
    ptr_[slot] = p;
    steps_[slot].fill(step);
  }
  void BindPlanes(int slot, void* const* planes, int count, int step) {
    for (int i = 0; i < count; ++i) planes_[slot][i] = planes[i];
    ptr_[slot] = planes_[slot].data();
    steps_[slot].fill(step);
  }
  // Spoilers used by the shared tests.
  void NullPointer(int slot) { ptr_[slot] = nullptr; }
  void NullSteps(int slot) { null_steps_[slot] = true; }
  void NullPlane(int slot, int plane) { planes_[slot][plane] = nullptr; }
  void SetStep(int slot, int entry, int value) { steps_[slot][entry] = value; }

  ZylSize size{};
  int param = 0;  // a family's scalar argument (an alpha value, ...), if it has one

 private:
  std::array<void*, kMaxArgSlots> ptr_{};
  std::array<std::array<void*, 4>, kMaxArgSlots> planes_{};
  std::array<std::array<int, 4>, kMaxArgSlots> steps_{};
  std::array<bool, kMaxArgSlots> null_steps_{};
};

using ArgCallFn = ZylStatus (*)(const ArgCall&);

// Where a family departs from the usual order (pointers, size, steps, planes).
enum class CheckOrder {
  kStandard,
  kSizeFirst,        // the ROI is tested before the pointers
  kStepsBeforeSize,  // pointers, then steps, then the ROI
};

struct ExportRow {
  ExportRow(const char* export_name, std::vector<ArgSlot> arg_slots, ArgCallFn fn)
      : name(export_name), slots(std::move(arg_slots)), call(fn) {}

  ExportRow CheckSteps() const {
    ExportRow c = *this;
    c.steps_checked = true;
    return c;
  }
  ExportRow Order(CheckOrder o) const {
    ExportRow c = *this;
    c.order = o;
    return c;
  }
  // The export tests plane entries together with the other pointers, before
  // the size and the steps.
  ExportRow PlaneEntriesWithPointers() const {
    ExportRow c = *this;
    c.planes_with_pointers = true;
    return c;
  }
  // Smallest accepted ROI; `valid` is the ROI of the successful calls.
  ExportRow MinSize(ZylSize min, ZylSize ok) const {
    ExportRow c = *this;
    c.min_size = min;
    c.valid = ok;
    return c;
  }

  std::string name;
  std::vector<ArgSlot> slots;
  ArgCallFn call;
  bool steps_checked = false;
  CheckOrder order = CheckOrder::kStandard;
  bool planes_with_pointers = false;
  ZylSize min_size{1, 1};
  ZylSize valid{8, 2};
  ZylStatus ok_status = zylStsOk;
};

inline void PrintTo(const ExportRow& c, std::ostream* os) { *os << c.name; }
std::string ExportRowName(const ::testing::TestParamInfo<ExportRow>& info);

// Binds slot i to the i-th image (a plane array when the image is planar)
// and calls the row's export on the images' common size.
template <class... T>
ZylStatus CallOnImages(const ExportRow& row, int param, const GuardedImage<T>&... images) {
  ArgCall a;
  int slot = 0;
  auto bind = [&](const auto& img) {
    if (img.format().planes > 1) {
      void* planes[4];
      for (int p = 0; p < img.format().planes; ++p) planes[p] = img.Ptr(p);
      a.BindPlanes(slot, planes, img.format().planes, img.Step());
    } else {
      a.Bind(slot, img.Ptr(), img.Step());
    }
    a.size = {img.width(), img.height()};
    ++slot;
  };
  (bind(images), ...);
  a.param = param;
  return row.call(a);
}

// The same for images in a list: a plane array takes one planar image, or one
// single-plane image per plane (each with its own step where the slot has
// per-plane steps); the call is on `size`.
template <class T>
ZylStatus CallOnImageList(const ExportRow& row, int param, ZylSize size,
                          const std::vector<const GuardedImage<T>*>& images) {
  ArgCall a;
  a.size = size;
  a.param = param;
  size_t next = 0;
  for (int slot = 0; slot < static_cast<int>(row.slots.size()); ++slot) {
    const GuardedImage<T>& first = *images[next];
    const bool separate = row.slots[slot].kind == ArgSlot::kPlanes && first.format().planes == 1;
    const int n = separate ? row.slots[slot].planes : first.format().planes;
    void* planes[4];
    for (int p = 0; p < n; ++p) planes[p] = separate ? images[next + p]->Ptr() : first.Ptr(p);
    if (row.slots[slot].kind == ArgSlot::kPlanes) {
      a.BindPlanes(slot, planes, n, first.Step());
    } else {
      a.Bind(slot, planes[0], first.Step());
    }
    for (int p = 0; separate && p < n; ++p) a.SetStep(slot, p, images[next + p]->Step());
    next += separate ? n : 1;
  }
  return row.call(a);
}

class ArgCheck : public ::testing::TestWithParam<ExportRow> {};

// For a family's own table, whose entries hold their ExportRow as `row`: the
// test name of an entry, the entry of an export, and the rows to instantiate
// ArgCheck with.
struct FamilyRowName {
  template <class E>
  std::string operator()(const ::testing::TestParamInfo<E>& info) const {
    return info.param.row.name;
  }
};
template <class E, size_t N>
const E& FindRow(const E (&family)[N], const std::string& name) {
  for (const E& e : family) {
    if (e.row.name == name) return e;
  }
  ADD_FAILURE() << name << " is not in the table";
  return family[0];
}
template <class E, size_t N>
std::vector<ExportRow> RowsOf(const E (&family)[N]) {
  std::vector<ExportRow> rows;
  for (const E& e : family) rows.push_back(e.row);
  return rows;
}

}  // namespace zyl::test

#endif  // ZYL_TESTS_SUPPORT_ARG_CHECK_H_
