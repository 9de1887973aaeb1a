// The host with a desktop attached: what the window backend relies on.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kestu/host/Desktop.h"
#include "kestu/host/Host.h"
#include "support/ScriptHarness.h"

namespace kestu {
namespace {

class FakeDesktop : public Desktop {
 public:
  std::optional<int> ShowPopupMenu(HostedControl& /*control*/,
                                   std::span<const MenuItem> items) override {
    menus_shown++;
    last_items.assign(items.begin(), items.end());
    return answer;
  }
  std::optional<std::string> ClipboardText() override { return clipboard; }
  void SetClipboardText(const std::string& text) override { clipboard = text; }
  void Beep() override { beeps++; }

  std::optional<int> answer;
  std::optional<std::string> clipboard;
  std::vector<MenuItem> last_items;
  int menus_shown = 0;
  int beeps = 0;
};

class DesktopSeamTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(RunScriptOn(host_, "new KestuNumberEdit n 0 0 1800 315\nset n.Value 12\n").status, 0);
    host_.SetDesktop(&desktop_);
  }
  void TearDown() override { host_.SetDesktop(nullptr); }

  Host host_;
  FakeDesktop desktop_;
};

TEST_F(DesktopSeamTest, TheUserAnswersTheMenuUnlessAScriptAnsweredFirst) {
  desktop_.answer = 5;  // "&Selecionar Tudo"
  RunScriptOn(host_, "click n 2\n");
  EXPECT_EQ(desktop_.menus_shown, 1);
  ASSERT_EQ(desktop_.last_items.size(), 6u);
  EXPECT_EQ(desktop_.last_items[1].caption, "&Copiar");
  // The whole number is selected now: copy is enabled, and a queued
  // answer takes the menu without asking the user.
  const ScriptResult copied = RunScriptOn(host_, "popup choose 1\nclick n 2\nget Clipboard\n");
  EXPECT_EQ(desktop_.menus_shown, 1);
  EXPECT_EQ(desktop_.clipboard, "12");
  EXPECT_THAT(copied.out, ::testing::HasSubstr("Clipboard = \"12\""));
}

TEST_F(DesktopSeamTest, AUserChoiceOfADisabledItemIsADismissal) {
  desktop_.answer = 1;  // "&Copiar", disabled without a selection
  desktop_.clipboard.emplace("before");
  RunScriptOn(host_, "click n 2\n");
  EXPECT_EQ(desktop_.clipboard, "before");
}

TEST_F(DesktopSeamTest, PasteReadsTheSystemClipboard) {
  desktop_.clipboard.emplace("7");
  desktop_.answer = 2;  // "Co&lar"
  const ScriptResult pasted = RunScriptOn(host_, "click n 2\nget n.Text\n");
  EXPECT_THAT(pasted.out, ::testing::HasSubstr("n.Text = \"7\""));
}

TEST_F(DesktopSeamTest, TheBeepIsTracedAndSounded) {
  const ScriptResult result = RunScriptOn(host_, "focus n\ntype n \"x\"\n");
  EXPECT_THAT(result.out, ::testing::HasSubstr("beep"));
  EXPECT_EQ(desktop_.beeps, 1);
}

}  // namespace
}  // namespace kestu
