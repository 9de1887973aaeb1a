// Lines the scripted host cannot run stop the script with the file and the
// line, and nothing after them runs. Values as written and as printed are
// shown by the scripts in scripts/probe/ and scripts/host/.

#include <gtest/gtest.h>

#include "support/ScriptHarness.h"

namespace kestu {
namespace {

struct BadLine {
  const char* line;
  const char* message;
};

class ScriptBadLines : public ::testing::TestWithParam<BadLine> {};

TEST_P(ScriptBadLines, StopTheScriptWithTheLineAndRunNothingAfter) {
  const ScriptResult r = RunScript(std::string("new KestuProbe p\necho before\n") +
                                   GetParam().line + "\necho after\n");
  EXPECT_EQ(r.status, 2);
  EXPECT_EQ(r.err, std::string("test.kss:3: ") + GetParam().message + "\n");
  EXPECT_NE(r.out.find("before"), std::string::npos);
  EXPECT_EQ(r.out.find("after"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, ScriptBadLines,
    ::testing::Values(BadLine{"frob p", "unknown command 'frob'"},
                      BadLine{"set p.Caption \"open", "unterminated string"},
                      BadLine{"set p.Caption \"\\q\"", "unknown escape \\q"},
                      BadLine{"set p.Data banana", "unknown name 'banana'"},
                      BadLine{"set p.Nope 1", "unknown property 'Nope' of KestuProbe"},
                      BadLine{"get x.Caption", "unknown control 'x'"},
                      BadLine{"new Widget w", "unknown control type 'Widget'"},
                      BadLine{"new KestuProbe p", "control 'p' already exists"},
                      BadLine{"new KestuProbe w 1 2", "expected L T W H"},
                      BadLine{"new KestuProbe a.b", "'a.b' is not a name"},
                      BadLine{"call p.Fly", "unknown method 'Fly' of KestuProbe"},
                      BadLine{"on p.Boom set x=1", "unknown event 'Boom' of KestuProbe"},
                      BadLine{"on p.Called set Procedure=\"x\"",
                              "argument 'Procedure' is passed by value"},
                      BadLine{"set p.Data font(\"A\")", "expected ',' and a size"},
                      BadLine{"focus p extra", "unexpected 'extra'"},
                      BadLine{"mouse p sideways 1 0 0 0", "expected down, up or move"},
                      BadLine{"load KestuProbe w {\"a\": 1", "unterminated JSON object"},
                      BadLine{"activate Form9", "unknown form 'Form9'"},
                      BadLine{"get Form1.Colour", "unknown property 'Colour' of form Form1"}));

TEST(ScriptRunnerTest, AMissingScriptIsAHostFailure) {
  Host host;
  std::ostringstream out, err;
  ScriptRunner runner(host, out, err);
  EXPECT_EQ(runner.RunFile("/nonexistent/script.kss"), ScriptRunner::kHostFailure);
  EXPECT_NE(err.str().find("cannot open"), std::string::npos);
}

}  // namespace
}  // namespace kestu
