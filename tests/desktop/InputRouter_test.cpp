#include "kestu/desktop/InputRouter.h"

#include <SDL.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "kestu/host/Host.h"
#include "kestu/script/TraceWriter.h"
#include "support/ScriptHarness.h"

namespace kestu {
namespace {

using ::testing::ElementsAre;

// Two number boxes and a panel on a form, the window system's input
// translated for the host; what the controls do is read from the host's
// trace. The host's own rules are shown by the user_input script.
class InputRouterTest : public ::testing::Test {
 protected:
  void SetUp() override {
    // "a" at pixels (20, 20) and "b" at (20, 60), 100 x 21; the panel,
    // which takes no focus, between them in tab order.
    ASSERT_EQ(RunScriptOn(host_,
                          "form F 4800 3000\n"
                          "new KestuNumberEdit a 300 300 1500 315\n"
                          "new KestuPanel3D p 3000 300 1200 600\n"
                          "new KestuNumberEdit b 300 900 1500 315\n")
                  .status,
              0);
    form_ = host_.FindForm("F");
    host_.AddObserver(&trace_);
  }

  std::vector<std::string> Lines() {
    std::vector<std::string> lines;
    std::istringstream in(out_.str());
    for (std::string line; std::getline(in, line);) {
      if (line.starts_with("event ")) lines.push_back(line.substr(6));
    }
    out_.str("");
    return lines;
  }

  Host host_;
  Form* form_ = nullptr;
  std::ostringstream out_;
  TraceWriter trace_{out_};
  InputRouter router_{host_};
};

TEST_F(InputRouterTest, KeysReachTheFocusedControlInTheHostsOrder) {
  host_.SetFocus(host_.FindControl("a"));
  Lines();
  router_.KeyDown(*form_, SDLK_7, KMOD_NONE);
  router_.Text(*form_, "7");
  router_.KeyUp(*form_, SDLK_7, KMOD_NONE);
  router_.KeyDown(*form_, SDLK_BACKSPACE, KMOD_NONE);
  router_.KeyUp(*form_, SDLK_BACKSPACE, KMOD_NONE);
  router_.KeyDown(*form_, SDLK_DELETE, KMOD_NONE);
  EXPECT_THAT(Lines(),
              ElementsAre("a.KeyDown(KeyCode=55, Shift=0)", "a.KeyPress(KeyAscii=55)", "a.Changed",
                          "a.KeyUp(KeyCode=55, Shift=0)", "a.KeyDown(KeyCode=8, Shift=0)",
                          "a.Changed", "a.KeyPress(KeyAscii=8)", "a.KeyUp(KeyCode=8, Shift=0)",
                          "a.KeyDown(KeyCode=46, Shift=0)", "a.Changed"));
}

TEST_F(InputRouterTest, TheWindowSystemSaysWhichPressIsADoubleClick) {
  router_.MouseButton(*form_, true, SDL_BUTTON_LEFT, 1, 30, 25, KMOD_NONE);
  router_.MouseButton(*form_, false, SDL_BUTTON_LEFT, 1, 30, 25, KMOD_NONE);
  router_.MouseButton(*form_, true, SDL_BUTTON_LEFT, 2, 30, 25, KMOD_NONE);
  router_.MouseButton(*form_, false, SDL_BUTTON_LEFT, 2, 30, 25, KMOD_NONE);
  EXPECT_THAT(Lines(), ElementsAre("a.MouseDown(Button=1, Shift=0, x=150, y=75)",
                                   "a.MouseUp(Button=1, Shift=0, x=150, y=75)", "a.Click",
                                   "a.DblClick", "a.MouseUp(Button=1, Shift=0, x=150, y=75)"));
}

TEST_F(InputRouterTest, RightButtonOpensTheMenuWithoutTakingTheFocus) {
  host_.QueuePopupAnswer(std::nullopt);
  router_.MouseButton(*form_, true, SDL_BUTTON_RIGHT, 1, 30, 65, KMOD_NONE);
  router_.MouseButton(*form_, false, SDL_BUTTON_RIGHT, 1, 30, 65, KMOD_NONE);
  EXPECT_EQ(host_.Focused(), nullptr);
  EXPECT_THAT(out_.str(), ::testing::HasSubstr("popup b "));
  EXPECT_THAT(Lines(), ElementsAre("b.MouseDown(Button=2, Shift=0, x=150, y=75)",
                                   "b.MouseUp(Button=2, Shift=0, x=150, y=75)"));
}

}  // namespace
}  // namespace kestu
