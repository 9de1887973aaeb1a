// The designer driven as its user drives it, headless: tools armed in the
// toolbox and drawn on the form, controls dragged, sized and nudged, the
// grid's values entered, the questions before changes are lost, the
// property dialog and Run.

#include "designer/Designer.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "designer/PropertyGrid.h"
#include "kestu/foundation/Keys.h"
#include "kestu/host/FormFile.h"
#include "kestu/host/Host.h"
#include "kestu/host/PropertyDialog.h"
#include "kestu/host/Snapshot.h"

namespace kestu {
namespace {

class DesignerTest : public ::testing::Test {
 protected:
  Form& Designed() { return designer_.Document().DesignedForm(); }
  void Drag(int x1, int y1, int x2, int y2, int16_t shift = 0) {
    host_.User().PointerDown(Designed(), x1, y1, button::kLeft, shift);
    host_.User().PointerMove(Designed(), (x1 + x2) / 2, (y1 + y2) / 2, shift);
    host_.User().PointerMove(Designed(), x2, y2, shift);
    host_.User().PointerUp(Designed(), x2, y2, button::kLeft, shift);
    designer_.AfterTurn();
  }
  HostedControl& Draw(const std::string& class_name, int x1, int y1, int x2, int y2) {
    designer_.Arm(class_name);
    Drag(x1, y1, x2, y2);
    return *designer_.Document().Selected().at(0);
  }
  void Key(int16_t key_code, int16_t shift = 0) {
    host_.User().KeyDown(Designed(), key_code, shift);
    designer_.AfterTurn();
  }
  std::string Text() { return FormFileText(host_, Designed()); }

  Host host_;
  Designer designer_{host_};
};

TEST_F(DesignerTest, ToolsDrawControlsOnTheGridAndIntoContainers) {
  HostedControl& panel = Draw("KestuPanel3D", 21, 19, 181, 141);
  EXPECT_EQ(panel.Name(), "KestuPanel3D1");
  EXPECT_FALSE(panel.AmbientUserMode());
  // 8-pixel grid: 21 px is 315 twips, which snaps to 360.
  EXPECT_EQ(panel.Bounds(), (TwipsRect{360, 240, 2400, 1800}));
  EXPECT_EQ(designer_.Armed(), "") << "one placement per arming";

  // A click without a rectangle: the class's own size, inside the panel.
  HostedControl& button = Draw("KestuActiveCommand", 40, 40, 40, 40);
  EXPECT_EQ(button.Container(), &panel);
  EXPECT_EQ(button.Bounds().width, button.Class().default_width);
  EXPECT_EQ(button.Name(), "KestuActiveCommand1");

  // A tool dragged from the toolbox and let go over the form drops a
  // control there; let go over itself, it is only armed.
  Designed().MoveOnScreen(700, 0);
  HostedControl& tool = *designer_.Window().FindControl("tbxKestuLine3D");
  const PixelRect at = tool.PixelBoundsOnForm();
  host_.User().PointerDown(designer_.Window(), at.left + 4, at.top + 4, button::kLeft, 0);
  host_.User().PointerUp(designer_.Window(), 700 + 240, 150, button::kLeft, 0);
  HostedControl& line = *designer_.Document().Selected().at(0);
  EXPECT_EQ(line.Name(), "KestuLine3D1");
  EXPECT_EQ(line.Bounds().left, 240 * 15);
  EXPECT_EQ(designer_.Armed(), "");
  host_.User().PointerDown(designer_.Window(), at.left + 4, at.top + 4, button::kLeft, 0);
  host_.User().PointerUp(designer_.Window(), at.left + 5, at.top + 5, button::kLeft, 0);
  EXPECT_EQ(designer_.Armed(), "KestuLine3D");
  designer_.Arm("");

  // A band selects what it touches; with Shift it adds to the selection.
  host_.User().PointerDown(Designed(), 5, 5, button::kLeft, 0);
  host_.User().PointerUp(Designed(), 5, 5, button::kLeft, 0);
  EXPECT_TRUE(designer_.Document().Selected().empty());
  Drag(200, 140, 260, 160);
  EXPECT_EQ(designer_.Document().Selected().at(0), &line);
  Drag(10, 10, 30, 30, shift::kShift);
  ASSERT_EQ(designer_.Document().Selected().size(), 2u);
  EXPECT_EQ(designer_.Document().Selected().at(1), &panel);

  // The selection shows a frame and black handles over the form.
  const PixelRect r = panel.PixelBoundsOnForm();
  const Raster picture = RenderForm(host_, Designed());
  EXPECT_EQ(picture.GetPixel(r.right, r.bottom), 0x000000u);
  EXPECT_EQ(picture.GetPixel(r.left - 1, r.top + 20), 0x000080u);
}

TEST_F(DesignerTest, TheContextMenuOpensOnTheRelease) {
  Draw("KestuPanel3D", 16, 16, 96, 64);
  Key(key::kEscape);
  host_.QueuePopupAnswer(4);  // Delete
  host_.User().PointerDown(Designed(), 40, 40, button::kRight, 0);
  EXPECT_FALSE(Designed().Controls().empty()) << "nothing on the press";
  host_.User().PointerUp(Designed(), 40, 40, button::kRight, 0);
  EXPECT_TRUE(Designed().Controls().empty());
  // The host saw the button go up: the next left press is an ordinary one.
  EXPECT_FALSE(host_.User().ButtonsHeld());
}

TEST_F(DesignerTest, MouseAndKeysMoveAndSizeAsOneEditEach) {
  HostedControl* panel = &Draw("KestuPanel3D", 16, 16, 96, 64);
  const std::string placed = Text();
  Drag(40, 40, 56, 48);  // by 16 x 8 pixels: 240 x 120 twips
  panel = designer_.Document().Selected().at(0);
  EXPECT_EQ(panel->Bounds().left, 240 + 240);
  EXPECT_EQ(panel->Bounds().top, 240 + 120);
  // The bottom-right handle sizes it.
  const PixelRect r = panel->PixelBoundsOnForm();
  Drag(r.right, r.bottom, r.right + 8, r.bottom + 16);
  panel = designer_.Document().Selected().at(0);
  EXPECT_EQ(panel->Bounds().width, 1200 + 120);
  EXPECT_EQ(panel->Bounds().height, 720 + 240);
  Key(key::kRight);
  Key(key::kDown, shift::kShift);
  panel = designer_.Document().Selected().at(0);
  EXPECT_EQ(panel->Bounds().left, 480 + 120);
  EXPECT_EQ(panel->Bounds().height, 960 + 120);
  for (int i = 0; i < 4; ++i) Key('Z', shift::kCtrl);
  EXPECT_EQ(Text(), placed);
  Key('Y', shift::kCtrl);
  EXPECT_EQ(designer_.Document().Selected().at(0)->Bounds().left, 480);

  // A handle pressed and let go in place sizes nothing, even off the grid.
  designer_.Document().SetGrid(0);
  Key(key::kRight, shift::kShift);  // one pixel wider: off the grid
  designer_.Document().SetGrid(120);
  const std::string nudged = Text();
  const PixelRect now = designer_.Document().Selected().at(0)->PixelBoundsOnForm();
  Drag(now.right, now.bottom, now.right, now.bottom);
  EXPECT_EQ(Text(), nudged);
}

TEST_F(DesignerTest, TheGridShowsAndAssignsTheFirstSelectedControlsProperties) {
  Draw("KestuActiveCommand", 16, 16, 112, 40);
  designer_.ChooseProperty("BackColor");
  EXPECT_EQ(designer_.HelpText(), "Background color. (Cor do segundo plano - Fundo)");
  designer_.EnterValue("Highlight");
  HostedControl& button = *designer_.Document().Selected().at(0);
  EXPECT_EQ(button.Control().GetProperty("BackColor").ToLong(), static_cast<int32_t>(0x8000000D));
  designer_.AfterTurn();
  EXPECT_EQ(designer_.Grid().Rows()[static_cast<size_t>(designer_.Grid().Chosen())].value,
            "Highlight");

  // The name is given once, when the control is placed.
  const std::vector<PropertyGrid::Row>& rows = designer_.Grid().Rows();
  EXPECT_EQ(rows.at(0).name, "Name");
  EXPECT_EQ(rows.at(1).name, "Left");
  designer_.ChooseProperty("Name");
  designer_.EnterValue("Renamed");
  EXPECT_EQ(button.Name(), "KestuActiveCommand1");

  // A value the control refuses is the control's own error; nothing changes.
  const std::string before = Text();
  designer_.ChooseProperty("Margin");
  designer_.EnterValue("70000");
  EXPECT_EQ(designer_.StatusText().rfind("Error 6 ", 0), 0u) << designer_.StatusText();
  designer_.EnterValue("lots");
  EXPECT_EQ(designer_.StatusText().rfind("Error 380 ", 0), 0u) << designer_.StatusText();
  EXPECT_EQ(Text(), before);

  // Every selected control takes the value, as one edit.
  HostedControl& other = Draw("KestuActiveCommand", 16, 60, 112, 84);
  designer_.Document().Select(*Designed().FindControl("KestuActiveCommand1"), true);
  designer_.ChooseProperty("Caption");
  designer_.EnterValue("Both");
  EXPECT_EQ(other.Control().GetProperty("Caption").ToString(), "Both");
  EXPECT_EQ(
      Designed().FindControl("KestuActiveCommand1")->Control().GetProperty("Caption").ToString(),
      "Both");
  Key('Z', shift::kCtrl);
  EXPECT_EQ(
      Designed().FindControl("KestuActiveCommand2")->Control().GetProperty("Caption").ToString(),
      "KestuActiveCommand2");

  // With nothing selected the grid is the form's.
  Key(key::kEscape);
  designer_.ChooseProperty("Caption");
  designer_.EnterValue("Orders");
  EXPECT_EQ(Designed().Caption(), "Orders");
  EXPECT_EQ(designer_.Grid().Rows().front().name, "Caption");
}

TEST_F(DesignerTest, ChangesAreNotLostWithoutAsking) {
  const std::filesystem::path file =
      std::filesystem::temp_directory_path() / "kestu-designer-test.json";
  std::filesystem::remove(file);
  Draw("KestuLine3D", 16, 16, 112, 20);
  EXPECT_EQ(designer_.Title(), "Kestu Designer - Form1 *");
  designer_.NewForm();
  ASSERT_TRUE(designer_.Asking());
  designer_.Answer("Cancel");
  EXPECT_EQ(Designed().Controls().size(), 1u);

  // Yes asks for a name (none yet), saves there, then starts anew.
  designer_.NewForm();
  designer_.Answer("Yes");
  ASSERT_TRUE(designer_.Asking()) << "a file name is wanted";
  designer_.Answer("OK", file.string());
  EXPECT_TRUE(std::filesystem::exists(file));
  EXPECT_TRUE(Designed().Controls().empty());
  EXPECT_EQ(designer_.Title(), "Kestu Designer - Form1");

  designer_.OpenForm();
  designer_.Answer("OK", file.string());
  EXPECT_EQ(Designed().Controls().size(), 1u);
  EXPECT_EQ(designer_.Title(), "Kestu Designer - kestu-designer-test.json");

  // A form named as one of the designer's own windows would replace it.
  {
    std::ofstream out(file);
    out << R"({"Name": "designer", "Controls": []})";
  }
  designer_.OpenForm();
  designer_.Answer("OK", file.string());
  EXPECT_NE(designer_.StatusText().find("the designer's own windows"), std::string::npos);
  EXPECT_EQ(Designed().Controls().size(), 1u);
  std::filesystem::remove(file);

  // Quitting a modified form asks too; No closes every window.
  Key(key::kDelete);
  Key('A', shift::kCtrl);
  Key(key::kDelete);
  EXPECT_FALSE(designer_.Quit());
  designer_.Answer("No");
  EXPECT_TRUE(host_.Forms().empty());
}

TEST_F(DesignerTest, PagesAndRunWorkOnWhatIsSelected) {
  Draw("KestuActiveCommand", 16, 16, 112, 40);
  // A double-click opens the property dialog; the form waits for it.
  host_.User().PointerDown(Designed(), 30, 30, button::kLeft, 0, true);
  host_.User().PointerUp(Designed(), 30, 30, button::kLeft, 0);
  Form* dialog = host_.FindForm(PropertyDialog::kFormName);
  ASSERT_NE(dialog, nullptr);
  const std::string before = Text();
  Key(key::kDelete);
  EXPECT_EQ(Text(), before);
  // The page's applies are one edit to undo.
  HostedControl* caption = dialog->FindControl("txtCaption");
  ASSERT_NE(caption, nullptr);
  caption->Control().SetProperty("Text", "Go");
  dialog->FindControl("cmdOK")->Control().UserControl_Click();
  designer_.AfterTurn();
  EXPECT_EQ(host_.FindForm(PropertyDialog::kFormName), nullptr);
  EXPECT_EQ(designer_.Document().Selected().at(0)->Control().GetProperty("Caption").ToString(),
            "Go");
  Key('Z', shift::kCtrl);
  EXPECT_EQ(Text(), before);

  designer_.Run();
  Form* running = host_.FindForm("Form1_Run");
  ASSERT_NE(running, nullptr);
  EXPECT_EQ(running->Caption(), "Form1 (Run)");
  EXPECT_TRUE(running->FindControl("KestuActiveCommand1")->AmbientUserMode());
  EXPECT_EQ(running->Designer(), nullptr);
}

}  // namespace
}  // namespace kestu
