#include "tests/support/targets.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "src/core/dispatch.h"

namespace zyl::test {
namespace {

// Says once per test program which targets are exercised, and which ones
// were compiled but cannot run on this processor (they go untested here).
class TargetReport : public ::testing::Environment {
 public:
  void SetUp() override {
    std::string run, skipped;
    for (int t = 0; t < kTargetCount; ++t) {
      if (!TargetCompiled(t)) continue;
      std::string& list = TargetSupported(t) ? run : skipped;
      list += list.empty() ? "" : " ";
      list += TargetName(t);
    }
    std::printf("[ targets  ] tested here: %s; compiled but not runnable here: %s\n", run.c_str(),
                skipped.empty() ? "none" : skipped.c_str());
  }
};

[[maybe_unused]] const ::testing::Environment* const kTargetReport =
    ::testing::AddGlobalTestEnvironment(new TargetReport);

}  // namespace

std::vector<int> RunnableTargets() {
  std::vector<int> out;
  for (int t = 0; t < kTargetCount; ++t) {
    if (TargetCompiled(t) && TargetSupported(t)) out.push_back(t);
  }
  return out;
}

ScopedTarget::ScopedTarget(int target) : ok_(ForceTarget(target)) {}
ScopedTarget::~ScopedTarget() { ForceTarget(-1); }

void ForEachTarget(const std::function<void(int target)>& fn) {
  for (int t : RunnableTargets()) {
    SCOPED_TRACE(std::string("target ") + TargetName(t));
    ScopedTarget forced(t);
    ASSERT_TRUE(forced.ok());
    ASSERT_EQ(DispatchProbe(), t) << "dispatch did not reach the forced target";
    fn(t);
    if (::testing::Test::HasFatalFailure()) return;
  }
}

}  // namespace zyl::test
