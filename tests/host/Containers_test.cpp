// Controls inside controls: a container's controls sit relative to it, are
// clipped to it and drawn above it, and a form file keeps the tree. What a
// script sees of them is in scripts/host/containers.kss.

#include <gtest/gtest.h>

#include "kestu/foundation/RuntimeError.h"
#include "kestu/host/FormFile.h"
#include "kestu/host/Host.h"
#include "kestu/host/Snapshot.h"
#include "support/ScriptHarness.h"

namespace kestu {
namespace {

// Panels docked on two edges; "outer" holds a number box and "inner",
// which holds a line; the top bar holds a box of its own.
constexpr std::string_view kNestedForm =
    "form F 6000 4500\n"
    "new KestuPanel3D top 0 0 6000 900\n"
    "set top.Align 1\n"
    "new KestuPanel3D side 0 0 1200 4500\n"
    "set side.Align 3\n"
    "new KestuPanel3D outer 1500 1200 3600 2400\n"
    "new KestuNumberEdit amount 300 300 1800 315 in outer\n"
    "set amount.Value 1234.5\n"
    "new KestuPanel3D inner 300 900 3000 1200 in outer\n"
    "set inner.BorderWidth 3\n"
    "new KestuLine3D rule 150 300 2400 30 in inner\n"
    "new KestuNumberEdit other 7200 120 1000 315 in top\n"
    "set other.TabIndex 0\n"
    "call inner.ZOrder 1\n";

class ContainersTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const ScriptResult built = RunScriptOn(host_, kNestedForm);
    ASSERT_EQ(built.status, 0) << built.err;
    form_ = host_.FindForm("F");
  }
  HostedControl& Control(std::string_view name) { return *form_->FindControl(name); }

  Host host_;
  Form* form_ = nullptr;
};

TEST_F(ContainersTest, ATreeSavedAndLoadedBackIsTheSameFileAndPicture) {
  const std::string saved = FormFileText(host_, *form_);
  const Raster before = RenderForm(host_, *form_);
  Form& loaded = LoadFormText(host_, saved, "nested.json");
  EXPECT_EQ(FormFileText(host_, loaded), saved);
  const Raster after = RenderForm(host_, loaded);
  EXPECT_TRUE(std::ranges::equal(before.Pixels(), after.Pixels()));
  EXPECT_EQ(loaded.FindControl("rule")->Container(), loaded.FindControl("inner"));
  EXPECT_EQ(loaded.TabIndexOf(*loaded.FindControl("other")), 0);
}

TEST_F(ContainersTest, AControlIsPlacedInItsContainerAndClippedToIt) {
  // "outer" lies at (100, 80) of the form, "amount" 20 pixels into it.
  EXPECT_EQ(Control("amount").PixelBoundsOnForm(), (PixelRect{120, 100, 240, 121}));
  RunScriptOn(host_, "set outer.Left 1800\nset amount.Left 3000\n");
  // Moved with its container, and cut at the container's right edge.
  EXPECT_EQ(Control("amount").PixelBoundsOnForm(), (PixelRect{320, 100, 440, 121}));
  EXPECT_EQ(Control("amount").VisibleOnForm(), (PixelRect{320, 100, 360, 121}));
  const Raster picture = RenderForm(host_, *form_);
  EXPECT_NE(picture.GetPixel(330, 110), picture.GetPixel(370, 110));
  EXPECT_EQ(picture.GetPixel(370, 110), ResolveColor(form_->BackColor()));
}

TEST_F(ContainersTest, HidingOrDisablingAContainerHidesOrDisablesWhatItHolds) {
  RunScriptOn(host_, "set outer.Visible False\n");
  Control("top").SetWindowEnabled(false);
  EXPECT_FALSE(Control("rule").ShownOnForm());
  EXPECT_TRUE(Control("rule").Visible());
  EXPECT_FALSE(Control("other").EnabledOnForm());
  EXPECT_FALSE(host_.SetFocus(&Control("other")));
  EXPECT_EQ(form_->ControlAt(130, 105), nullptr);
}

// A form file in which a line holds controls does not load, and leaves
// the form as it was.
TEST_F(ContainersTest, OnlyAContainerHoldsControlsInAFormFile) {
  std::string file = FormFileText(host_, *form_);
  const std::string line_entry = "\"Type\": \"KestuLine3D\",";
  file.replace(file.find(line_entry), line_entry.size(), line_entry + " \"Controls\": [],");
  const std::string before = FormFileText(host_, *form_);
  try {
    LoadFormText(host_, file, "bad.json");
    ADD_FAILURE() << "a line held controls";
  } catch (const RuntimeError& error) {
    EXPECT_NE(std::string(error.what()).find("control 'rule': key \"Controls\""), std::string::npos)
        << error.what();
  }
  EXPECT_EQ(FormFileText(host_, *host_.FindForm("F")), before);
}

}  // namespace
}  // namespace kestu
