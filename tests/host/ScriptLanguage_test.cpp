// The script language: values as written and as printed, conversions to
// the receiving type, run-time errors as trace lines, and lines the host
// cannot run.

#include <gtest/gtest.h>

#include <fstream>

#include "support/ScriptHarness.h"

namespace kestu {
namespace {

std::string Trace(const std::string& script) {
  const ScriptResult r = RunScript("new KestuProbe p\n" + script, KESTU_TEST_DATA);
  EXPECT_EQ(r.status, 0) << r.err;
  const std::string created = RunScript("new KestuProbe p\n").out;
  return r.out.substr(created.size());
}

TEST(ScriptValues, StringsPrintQuotedWithTheScriptsEscapes) {
  EXPECT_EQ(Trace("set p.Data \"tab\\there \\\"q\\\" \\\\ \\x01 \\u{E7}\\n\" # comment\n"
                  "get p.Data\n"),
            "p.Data = \"tab\\there \\\"q\\\" \\\\ \\x01 \xC3\xA7\\n\"\n");
}

TEST(ScriptValues, RealsPrintInTheShortestFormThatReadsBack) {
  EXPECT_EQ(Trace("set p.Ratio 1234567.891\nget p.Ratio\n"
                  "set p.Ratio 1E+15\nget p.Ratio\n"
                  "set p.Ratio -0.5\nget p.Ratio\n"
                  "set p.Ratio 1e-5\nget p.Ratio\n"
                  "set p.Ratio -12\nget p.Ratio\n"
                  "set p.Ratio \"2.25\"\nget p.Ratio\n"),
            "p.Ratio = 1234567.891\n"
            "p.Ratio = 1E+15\n"
            "p.Ratio = -0.5\n"
            "p.Ratio = 1E-05\n"
            "p.Ratio = -12\n"
            "p.Ratio = 2.25\n");
}

TEST(ScriptValues, IntegersConvertToTheReceivingTypeHalfToEven) {
  EXPECT_EQ(Trace("set p.Number 2.5\nget p.Number\n"
                  "set p.Number 3.5\nget p.Number\n"
                  "set p.Number -0.5\nget p.Number\n"
                  "set p.Number 32768\nget p.Number\n"
                  "set p.Number 0x7FFF\nget p.Number\n"
                  "set p.Number \"abc\"\n"
                  "set p.Number Null\n"),
            "notify p.Number\np.Number = 2\n"
            "notify p.Number\np.Number = 4\n"
            "notify p.Number\np.Number = 0\n"
            "error 6 Overflow\np.Number = 0\n"
            "notify p.Number\np.Number = 32767\n"
            "error 13 Type mismatch\n"
            "error 94 Invalid use of Null\n");
}

TEST(ScriptValues, HexIsA32BitPatternAndColoursPrintInHex) {
  EXPECT_EQ(Trace("set p.Color 0x80000005\nget p.Color\n"
                  "set p.Color -1\nget p.Color\n"
                  "set p.Color 255\nget p.Color\n"
                  "set p.Data 0x80000005\nget p.Data\n"
                  "set p.Color 4294967295\n"),
            "notify p.Color\np.Color = 0x80000005\n"
            "notify p.Color\np.Color = 0xFFFFFFFF\n"
            "notify p.Color\np.Color = 0x000000FF\n"
            "p.Data = -2147483643\n"
            "error 6 Overflow\n");
}

TEST(ScriptValues, NamedValuesFontsPicturesAndConstants) {
  EXPECT_EQ(Trace("set p.Data Empty\nget p.Data\n"
                  "set p.Data null\nget p.Data\n"
                  "set p.Data Nothing\nget p.Data\n"
                  "set p.Data True\nget p.Data\n"
                  "set p.Data prbLoud\nget p.Data\n"
                  "set p.Data font(\"DejaVu Sans\", 9.75, bold, underline)\nget p.Data\n"
                  "set p.Data picture(\"pictures/bmp_24bit.bmp\")\nget p.Data\n"
                  "set p.Data picture(\"pictures/missing.png\")\n"),
            "p.Data = Empty\n"
            "p.Data = Null\n"
            "p.Data = Nothing\n"
            "p.Data = True\n"
            "p.Data = 7\n"
            "p.Data = font(\"DejaVu Sans\", 9.75, bold, underline)\n"
            "p.Data = picture(13x7)\n"
            "error 53 File not found\n");
}

TEST(ScriptMethods, ResultsAndByReferenceArgumentsArePrinted) {
  EXPECT_EQ(Trace("call p.Twice 21 2\n"
                  "call p.Twice 20000 2\n"
                  "call p.Twice 1\n"
                  "call p.Ring\n"),
            "p.Twice -> 42 (Value=42)\n"
            "error 6 Overflow\n"
            "error 450 Wrong number of arguments or invalid property assignment\n"
            "beep\n");
}

TEST(ScriptProperties, ExtenderReadOnlyAndWriteOnly) {
  EXPECT_EQ(Trace("set p.Left 1234.5\nget p.Left\n"
                  "set p.Visible False\nget p.visible\n"
                  "set p.ToolTipText \"Tip\"\nget p.ToolTipText\n"
                  "get p.Name\n"
                  "set p.Name \"q\"\n"
                  "set p.LastKey 3\n"
                  "set p.Align 9\n"),
            "p.Left = 1234\n"
            "p.Visible = False\n"
            "p.ToolTipText = \"Tip\"\n"
            "p.Name = \"p\"\n"
            "error 383 Property is read-only\n"
            "error 383 Property is read-only\n"
            "error 380 Invalid property value\n");
}

TEST(ScriptProperties, TabIndexMovesAControlAndTheOthersCloseUp) {
  EXPECT_EQ(Trace("new KestuProbe q\nnew KestuProbe r\n"
                  "set r.TabIndex 0\n"
                  "get r.TabIndex\nget p.TabIndex\nget q.TabIndex\n"
                  "set p.TabIndex 99\nget p.TabIndex\n")
                .substr(Trace("new KestuProbe q\nnew KestuProbe r\n").size()),
            "r.TabIndex = 0\np.TabIndex = 1\nq.TabIndex = 2\np.TabIndex = 2\n");
}

TEST(ScriptProperties, DockedControlsSpanTheFormAndFollowItsSize) {
  EXPECT_EQ(Trace("set p.Align 1\n"
                  "get p.Left\nget p.Top\nget p.Width\n"
                  "set Form1.Width 12000\nget p.Width\n"
                  "set p.Width 10\nget p.Width\n")
                .find("event p.Called(Procedure=\"Resize 9600x480\")\n"
                      "p.Left = 0\np.Top = 0\np.Width = 9600\n"
                      "event p.Called(Procedure=\"Resize 12000x480\")\n"
                      "p.Width = 12000\np.Width = 12000\n"),
            0u);
}

TEST(ScriptProperties, FormsHaveTheirOwnProperties) {
  EXPECT_EQ(Trace("set Form1.Caption \"Main\"\nget form1.caption\n"
                  "set Form1.BackColor 0x80000005\nget Form1.BackColor\n"
                  "set Form1.Height 1000.5\nget Form1.Height\n"
                  "get Form1.Font\n"
                  "set Form1.Modified False\n"),
            "Form1.Caption = \"Main\"\n"
            "Form1.BackColor = 0x80000005\n"
            "Form1.Height = 1000\n"
            "Form1.Font = font(\"MS Sans Serif\", 8.25)\n"
            "error 383 Property is read-only\n");
}

TEST(ScriptFiles, BagsFromFilesAndFilesThatAreMissing) {
  const std::string bag = ::testing::TempDir() + "probe_bag.json";
  std::ofstream(bag) << "{\"Caption\": \"from file\"}\n";
  const std::string trace = Trace("load KestuProbe q @" + bag + " 0 0 600 300\n" +
                                  "get q.Caption\n"
                                  "load KestuProbe r @/nonexistent/bag.json\n"
                                  "openform /nonexistent/form.json\n"
                                  "type p \"\\u{1F600}\"\n");
  EXPECT_TRUE(
      trace.ends_with("q.Caption = \"from file\"\n"
                      "error 53 File not found\n"
                      "error 53 File not found\n"
                      "error 6 Overflow\n"))
      << trace;
}

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
                      BadLine{"set p.Data font(\"A\")", "expected ',' and a size"},
                      BadLine{"focus p extra", "unexpected 'extra'"},
                      BadLine{"mouse p sideways 1 0 0 0", "expected down, up or move"},
                      BadLine{"load KestuProbe w {\"a\": 1", "unterminated JSON object"},
                      BadLine{"activate Form9", "unknown form 'Form9'"},
                      BadLine{"get Form1.Colour", "unknown property 'Colour' of form Form1"}));

TEST(ScriptRunnerTest, EchoCommentsAndBlankLines) {
  const ScriptResult r = RunScript(
      "# a comment\n"
      "\n"
      "echo plain words  # not this\n"
      "echo \"quoted \\\"text\\\"\"\n"
      "echo \"a\" b\n");
  EXPECT_EQ(r.out, "plain words\nquoted \"text\"\n\"a\" b\n");
  EXPECT_EQ(r.status, 0);
}

TEST(ScriptRunnerTest, AMissingScriptIsAHostFailure) {
  Host host;
  std::ostringstream out, err;
  ScriptRunner runner(host, out, err);
  EXPECT_EQ(runner.RunFile("/nonexistent/script.kss"), ScriptRunner::kHostFailure);
  EXPECT_NE(err.str().find("cannot open"), std::string::npos);
}

}  // namespace
}  // namespace kestu
