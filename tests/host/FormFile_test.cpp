// Form files: what a saved form reads back as, and that a bad file changes
// nothing already loaded.

#include <gtest/gtest.h>

#include <sstream>

#include "kestu/foundation/RuntimeError.h"
#include "kestu/host/FormFile.h"
#include "kestu/host/Host.h"
#include "kestu/script/TraceWriter.h"
#include "support/ExpectRuntimeError.h"
#include "support/ProbeControl.h"
#include "support/ScriptHarness.h"

namespace kestu {
namespace {

class FormFileTest : public ::testing::Test {
 protected:
  FormFileTest() : trace_(out_) {
    Form& form = host_.CreateForm("Main", 6000, 4000);
    form.SetCaption("Main form");
    HostedControl& a =
        host_.NewControl(form, ProbeControl::Info(), "a", TwipsRect{120, 240, 900, 300});
    static_cast<ProbeControl&>(a.Control()).SetCaption("Caf\xC3\xA9");
    a.SetExtender("ToolTipText", Variant("Tip"));
    HostedControl& b = host_.NewControl(form, ProbeControl::Info(), "b");
    b.SetExtender("Align", Variant(int16_t{1}));
    b.SetExtender("Visible", Variant::Boolean(false));
    host_.AddObserver(&trace_);
  }
  ~FormFileTest() override { host_.RemoveObserver(&trace_); }

  std::string Text() { return FormFileText(host_, *host_.FindForm("Main")); }

  // Loading `text` must fail with `number`, naming `where`, and leave the
  // form as it was: the same controls, saving the same file.
  void ExpectRefused(const std::string& text, int number, const std::string& where) {
    const std::string before = Text();
    const HostedControl* a = host_.FindControl("a");
    try {
      LoadFormText(host_, text, "bad.json");
      ADD_FAILURE() << "loaded: " << text;
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.Number(), number) << error.what();
      EXPECT_NE(std::string(error.what()).find(where), std::string::npos) << error.what();
    }
    EXPECT_EQ(host_.FindControl("a"), a);
    EXPECT_EQ(Text(), before);
  }

  Host host_;
  std::ostringstream out_;
  TraceWriter trace_;
};

// Loading replaces the form after building the new controls off-form: new
// controls initialise and read first; then the old ones go; then the new
// ones are resized and shown on the installed form.
TEST_F(FormFileTest, SavedFormLoadsBackToTheSameFileReplacingTheForm) {
  const std::string saved = Text();
  out_.str("");
  Form& loaded = LoadFormText(host_, saved, "main.json");
  EXPECT_EQ(Text(), saved);
  const std::string trace = out_.str();
  const auto at = [&](const std::string& line) { return trace.find(line); };
  EXPECT_LT(at("a.Called(Procedure=\"ReadProperties\")"), at("a.Called(Procedure=\"Terminate\")"));
  EXPECT_LT(at("b.Called(Procedure=\"Terminate\")"), at("a.Called(Procedure=\"Show\")"));
  EXPECT_EQ(host_.Forms().size(), 1u);
  EXPECT_EQ(host_.ActiveForm(), &loaded);
  EXPECT_EQ(loaded.Caption(), "Main form");
  EXPECT_FALSE(loaded.Modified());
  HostedControl* a = host_.FindControl("a");
  ASSERT_NE(a, nullptr);
  EXPECT_EQ(a->Bounds(), (TwipsRect{120, 240, 900, 300}));
  EXPECT_EQ(a->ToolTipText(), "Tip");
  EXPECT_FALSE(host_.FindControl("b")->Visible());
  EXPECT_EQ(host_.FindControl("b")->Bounds().width, 6000);
}

TEST_F(FormFileTest, MalformedFilesAreRefusedWhole) {
  std::string good = Text();
  auto with = [&](const std::string& from, const std::string& to) {
    std::string text = good;
    const size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return text.replace(at, from.size(), to);
  };
  ExpectRefused("{", 380, "bad.json");
  ExpectRefused("[]", 380, "bad.json: expected an object");
  ExpectRefused(with("\"Caption\": \"Main form\"", "\"Caption\": \"x\", \"Caption\": \"y\""), 380,
                "duplicated key \"Caption\"");
  ExpectRefused(with("\"Type\": \"KestuProbe\"", "\"Type\": \"Widget\""), 380,
                "bad.json: control 'a': key \"Type\": unknown control type \"Widget\"");
  ExpectRefused(with("\"Left\": 120", "\"Left\": \"120\""), 380,
                "control 'a': key \"Left\": expected an integer");
  ExpectRefused(with("\"Name\": \"b\"", "\"Name\": \"A\""), 380, "control 'A' is named twice");
  ExpectRefused(with("\"Align\": 0", "\"Align\": 0, \"Colour\": 1"), 380,
                "control 'a': unknown key \"Colour\"");
  // A value the control cannot take fails in its ReadProperties: the
  // controls built so far are terminated off-form.
  ExpectRefused(with("\"value\": 0", "\"value\": 70000"), 380, "control 'a'");
  ExpectRefused(with("\"Number\": {\n          \"$type\": \"Integer\",\n          \"value\": 0",
                     "\"Number\": {\n          \"$type\": \"Long\",\n          \"value\": 70000"),
                6, "bad.json: control 'a'");
}

TEST_F(FormFileTest, AKeyNoControlKnowsIsAWarningNamingTheFileTheControlAndTheKey) {
  std::string text = Text();
  text.replace(text.find("\"Properties\": {"), 15, "\"Properties\": {\"Captoin\": \"x\",");
  std::ostringstream warnings;
  host_.SetWarningStream(&warnings);
  LoadFormText(host_, text, "main.json");
  host_.SetWarningStream(nullptr);
  EXPECT_EQ(warnings.str(),
            "main.json: control 'a' (KestuProbe): unknown key \"Captoin\" in \"Properties\" is "
            "ignored\n");
}

TEST(ScriptErrors, ARunTimeErrorSaysWhereItCameFromOnStandardError) {
  const ScriptResult r = RunScript(
      "new KestuProbe p\n"
      "set p.Number 99999\n"
      "openform missing.json\n");
  EXPECT_EQ(r.status, 0);
  EXPECT_NE(r.out.find("error 6 Overflow\n"), std::string::npos);
  EXPECT_NE(r.err.find("test.kss:2: set p.Number: error 6 Overflow"), std::string::npos) << r.err;
  EXPECT_NE(r.err.find("test.kss:3: openform missing.json: error 53 File not found (missing.json"),
            std::string::npos)
      << r.err;
}

TEST(FormFileLimits, AValueNestedWithoutEndIsRefusedNotACrash) {
  Host host;
  const std::string deep =
      "{\"Name\": \"F\", \"Controls\": [], \"Caption\": " + std::string(100000, '[') +
      std::string(100000, ']') + "}";
  ExpectRuntimeError(
      380, [&] { LoadFormText(host, deep, "deep.json"); }, "nested deeper");
  EXPECT_EQ(host.FindForm("F"), nullptr);
}

TEST(FormFileLimits, AControlThatRaisesWhenDrawnStaysOnTheFormAndSavesBack) {
  Host host;
  ASSERT_EQ(RunScriptOn(host, "form F 3000 3000\nnew KestuPanel3D p 0 0 1500 1500\n").status, 0);
  std::string text = FormFileText(host, *host.FindForm("F"));
  const std::string width = "\"value\": 5";  // BorderWidth's, the one 5 in the file
  ASSERT_NE(text.find(width), std::string::npos);
  text.replace(text.find(width), width.size(), "\"value\": 32767");
  std::ostringstream warnings;
  host.SetWarningStream(&warnings);
  Form& loaded = LoadFormText(host, text, "wide.json");
  host.SetWarningStream(nullptr);
  ASSERT_NE(loaded.FindControl("p"), nullptr);
  EXPECT_EQ(FormFileText(host, loaded), text);
  EXPECT_NE(warnings.str().find("wide.json: control 'p' raised error 6"), std::string::npos)
      << warnings.str();
}

// Some controls' entries go onto a form again under the names they are
// given, moved; a list that fails part way adds nothing.
TEST_F(FormFileTest, ControlEntriesAddRenamedAndMovedAllOrNothing) {
  Form& form = *host_.FindForm("Main");
  HostedControl* a = host_.FindControl("a");
  const std::vector<HostedControl*> chosen{a};
  const std::string copied = ControlsFileText(host_, form, chosen);
  int number = 0;
  const ControlNamer rename = [&](const ClassInfo& info) {
    return info.name + "_" + std::to_string(++number);
  };

  const std::vector<HostedControl*> added =
      AddControlsText(host_, form, copied, "paste", nullptr, rename, 15, 30);
  ASSERT_EQ(added.size(), 1u);
  EXPECT_EQ(added[0]->Name(), "KestuProbe_1");
  EXPECT_EQ(added[0]->Bounds(), (TwipsRect{135, 270, 900, 300}));
  EXPECT_EQ(added[0]->Control().GetProperty("Caption").ToString(), "Caf\xC3\xA9");
  EXPECT_EQ(added[0]->ToolTipText(), "Tip");
  EXPECT_EQ(form.TabIndexOf(*added[0]), 2);

  const std::string before = Text();
  ExpectRuntimeError(
      380,
      [&] {
        AddControlsText(host_, form, R"({"Controls": [{"Type": "KestuProbe", "Name": "x"},
            {"Type": "KestuProbe", "Name": "y", "Width": 600000}]})",
                        "paste", nullptr, rename, 0, 0);
      },
      "paste");
  EXPECT_EQ(Text(), before);
  EXPECT_EQ(host_.FindControl("a"), a);
}

}  // namespace
}  // namespace kestu
