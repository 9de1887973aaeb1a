#include "kestu/numberedit/KestuNumberEdit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "kestu/host/Host.h"

namespace kestu {
namespace {

class NumberEditTest : public ::testing::Test {
 protected:
  KestuNumberEdit& NewBox(TwipsRect rect = {120, 120, 1800, 315}) {
    hosted_ = &host_.NewControl(form_, KestuNumberEdit::Info(), "n1", rect);
    return Box();
  }
  KestuNumberEdit& Box() { return static_cast<KestuNumberEdit&>(hosted_->Control()); }
  void Press(char c) {
    int16_t key_ascii = c;
    Box().UserControl_KeyPress(key_ascii);
  }

  Host host_;
  Form& form_ = host_.CreateForm("Form1", 6000, 4000);
  HostedControl* hosted_ = nullptr;
};

TEST_F(NumberEditTest, TypedHandlersChangeTheKeysTheBoxUses) {
  KestuNumberEdit& box = NewBox();
  box.SetProperty("AutoSelect", Variant::Boolean(false));
  host_.SetFocus(hosted_);
  box.KeyPress.Connect([](int16_t& key_ascii) {
    if (key_ascii == 'A') key_ascii = '7';
  });
  int changes = 0;
  box.Changed.Connect([&changes] { ++changes; });
  Press('A');
  Press('1');
  EXPECT_EQ(box.Text().ToString(), "71");
  EXPECT_EQ(changes, 2);

  box.KeyDown.Connect([](int16_t& key_code, int16_t&) { key_code = 0; });
  int16_t backspace = 8;
  int16_t shift = 0;
  box.UserControl_KeyDown(backspace, shift);
  EXPECT_EQ(box.Text().ToString(), "71");
}

// A container may remove the box from inside any of its events; the box
// must not touch itself afterwards (the sanitizers watch this).
TEST_F(NumberEditTest, AHandlerThatRemovesTheBoxEndsTheKeystroke) {
  NewBox().Changed.Connect([this] { host_.RemoveControl(*hosted_); });
  host_.SetFocus(hosted_);
  Press('5');
  EXPECT_TRUE(form_.Controls().empty());

  NewBox().KeyDown.Connect([this](int16_t&, int16_t&) { host_.RemoveControl(*hosted_); });
  int16_t delete_key = 46;
  int16_t shift = 0;
  Box().UserControl_KeyDown(delete_key, shift);
  EXPECT_TRUE(form_.Controls().empty());
}

TEST_F(NumberEditTest, CaretKeepsTheScreenTheBoxWasCreatedOn) {
  host_.SetTwipsPerPixel(30, 30);
  KestuNumberEdit& box = NewBox({0, 0, 1800, 330});
  host_.SetTwipsPerPixel(15, 15);
  host_.SetFocus(hosted_);
  const std::optional<Caret>& caret = host_.GetCaret();
  ASSERT_TRUE(caret.has_value());
  EXPECT_EQ(caret->hwnd, box.hwnd());
  EXPECT_EQ(caret->width, 1);
  EXPECT_EQ(caret->height, std::lround(box.TextHeight("M") / 30));
  // 60 pixels wide: the last pixel is 59 and the text ends 3 before it.
  EXPECT_EQ(caret->x, 56);
  EXPECT_TRUE(caret->shown);
}

TEST_F(NumberEditTest, EnabledReachesTheWindowAtOnce) {
  KestuNumberEdit& box = NewBox();
  host_.SetFocus(hosted_);
  box.SetEnabled(false);
  EXPECT_FALSE(hosted_->WindowEnabled());
  EXPECT_FALSE(host_.GetCaret()->shown);
  box.SetEnabled(true);
  EXPECT_TRUE(hosted_->WindowEnabled());
}

}  // namespace
}  // namespace kestu
