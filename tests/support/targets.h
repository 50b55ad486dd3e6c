// Runs a check once per SIMD target that this build compiled and this
// processor can execute, through the dispatcher's internal switch.
#ifndef ZYL_TESTS_SUPPORT_TARGETS_H_
#define ZYL_TESTS_SUPPORT_TARGETS_H_

#include <functional>
#include <vector>

namespace zyl::test {

// Targets both compiled in and supported here, fallback first.
std::vector<int> RunnableTargets();

// Forces a target for its lifetime and returns to the automatic choice after,
// also when an assertion leaves the scope early.
class ScopedTarget {
 public:
  explicit ScopedTarget(int target);
  ~ScopedTarget();
  ScopedTarget(const ScopedTarget&) = delete;
  ScopedTarget& operator=(const ScopedTarget&) = delete;
  bool ok() const { return ok_; }

 private:
  bool ok_;
};

// For every runnable target: forces it, asserts that the kernels reached are
// really that target's (so a silent fallback cannot pass for it), and calls
// fn(target) under a SCOPED_TRACE naming it. Stops at the first fatal failure.
void ForEachTarget(const std::function<void(int target)>& fn);

}  // namespace zyl::test

#endif  // ZYL_TESTS_SUPPORT_TARGETS_H_
