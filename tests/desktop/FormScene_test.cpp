#include "kestu/desktop/FormScene.h"

#include <gtest/gtest.h>

#include "desktop/TwoNumberBoxes.h"
#include "kestu/host/Form.h"
#include "kestu/host/FormDesigner.h"
#include "kestu/host/Host.h"
#include "kestu/host/Snapshot.h"
#include "support/ScriptHarness.h"

namespace kestu {
namespace {

class FormSceneTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(RunScriptOn(host_, test::kTwoNumberBoxes).status, 0);
    form_ = host_.FindForm("F");
  }

  FormScene Scene(bool caret_lit = true) const { return FormScene(host_, *form_, caret_lit); }
  // The rows `script` makes differ.
  RowBand RowsChangedBy(std::string_view script) {
    const FormScene before = Scene();
    EXPECT_EQ(RunScriptOn(host_, script).status, 0) << script;
    return Scene().RowsChangedSince(before);
  }

  Host host_;
  Form* form_ = nullptr;
};

TEST_F(FormSceneTest, NothingChangedNothingToSend) {
  EXPECT_TRUE(Scene().RowsChangedSince(Scene()).Empty());
  // Without a caret on the form, its blink changes nothing either.
  EXPECT_TRUE(Scene(false).RowsChangedSince(Scene(true)).Empty());
  EXPECT_EQ(Scene().RowsChangedSince(FormScene()), (RowBand{0, 200}));
}

TEST_F(FormSceneTest, AChangedControlIsItsOwnRows) {
  RunScriptOn(host_, "focus a\n");
  EXPECT_EQ(RowsChangedBy("type a \"5\"\n"), (RowBand{20, 41}));
  EXPECT_EQ(RowsChangedBy("set b.Value 7\n"), (RowBand{60, 81}));
}

TEST_F(FormSceneTest, AMovedControlIsSentWhereItWasAndWhereItIs) {
  EXPECT_EQ(RowsChangedBy("set b.Top 1500\n"), (RowBand{60, 121}));
  EXPECT_EQ(RowsChangedBy("set b.Left 600\n"), (RowBand{100, 121}));  // the same rows
  // Wider than the form, it shows the same part of the form wherever it
  // lies: its picture still moves.
  RunScriptOn(host_, "size b 60000 315\nset b.Left -150\n");
  EXPECT_EQ(RowsChangedBy("set b.Left -300\n"), (RowBand{100, 121}));
}

TEST_F(FormSceneTest, TheCaretIsItsOwnRowsWhereverItMoves) {
  RunScriptOn(host_, "focus a\n");
  const Caret caret = *host_.GetCaret();
  ASSERT_TRUE(caret.shown);
  const RowBand cell{20 + caret.y, 20 + caret.y + caret.height};
  EXPECT_EQ(Scene(false).RowsChangedSince(Scene(true)), cell);
  EXPECT_EQ(Scene(true).RowsChangedSince(Scene(false)), cell);
  // Sideways on the same rows is still a change.
  const FormScene before = Scene();
  host_.MutableCaret()->x += 3;
  EXPECT_EQ(Scene().RowsChangedSince(before), cell);
}

// A designer that only draws marks.
struct MarksOnly : FormDesigner {
  bool KeyDown(int16_t, int16_t) override { return false; }
  void PointerAt(Pointer, int, int, int16_t, int16_t, bool) override {}
  const std::vector<DesignMark>& Marks() const override { return marks; }
  std::vector<DesignMark> marks;
};

TEST_F(FormSceneTest, ADesignersMarksAreTheirOwnRowsOverTheControls) {
  MarksOnly designer;
  form_->SetDesigner(&designer);
  const FormScene plain = Scene();
  designer.marks = {{PixelRect{10, 30, 20, 36}, 0x0000FF, true}};
  EXPECT_EQ(Scene().RowsChangedSince(plain), (RowBand{30, 36}));
  const FormScene handle = Scene();
  designer.marks = {{PixelRect{4, 18, 40, 50}, 0xFF0000, false}};
  EXPECT_EQ(Scene().RowsChangedSince(handle), (RowBand{18, 50}));

  // A frame is its edges only, drawn over the box it crosses.
  const Raster picture = RenderForm(host_, *form_);
  EXPECT_EQ(picture.GetPixel(20, 18), 0xFF0000u);
  EXPECT_EQ(picture.GetPixel(4, 30), 0xFF0000u);
  EXPECT_EQ(picture.GetPixel(39, 30), 0xFF0000u);
  EXPECT_NE(picture.GetPixel(20, 30), 0xFF0000u);
  form_->SetDesigner(nullptr);
}

TEST_F(FormSceneTest, ControlsComingGoingOrHidingAndTheFormsColourAreTheWholeForm) {
  const RowBand whole{0, 200};
  EXPECT_EQ(RowsChangedBy("set a.Visible False\n"), whole);
  EXPECT_EQ(RowsChangedBy("set a.Visible True\n"), whole);
  FormScene before = Scene();
  host_.NewControl(*form_, *ControlRegistry::Instance().Find("KestuPanel3D"), "p",
                   TwipsRect{3000, 300, 1200, 600});
  EXPECT_EQ(Scene().RowsChangedSince(before), whole);
  before = Scene();
  form_->SetBackColor(0x00FF0000);
  EXPECT_EQ(Scene().RowsChangedSince(before), whole);
}

}  // namespace
}  // namespace kestu
