// A script comes from anyone: a line past the longest a script may hold
// stops it as a bad line, before it fills memory.

#include <gtest/gtest.h>

#include <string>

#include "kestu/host/Host.h"
#include "kestu/script/ScriptRunner.h"
#include "support/ScriptHarness.h"

namespace kestu {
namespace {

TEST(ScriptLimits, ALineLongerThanTheLimitIsABadLine) {
  Host host;
  const std::string longest(ScriptRunner::kMaxLineBytes - 5, 'x');
  const ScriptResult fits = RunScriptOn(host, "echo " + longest + "\necho after\n");
  EXPECT_EQ(fits.status, ScriptRunner::kCompleted);
  EXPECT_TRUE(fits.out.ends_with("x\nafter\n"));

  const ScriptResult past = RunScriptOn(host, "echo " + longest + "x\necho after\n");
  EXPECT_EQ(past.status, ScriptRunner::kBadLine);
  EXPECT_EQ(past.out, "");
  EXPECT_EQ(past.err, "test.kss:1: a line longer than 16 MiB\n");
}

}  // namespace
}  // namespace kestu
