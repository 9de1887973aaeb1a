// The designer's document: names of placed controls, containers, moving
// and sizing on a grid, copy and paste, undo to the exact earlier file,
// and the modified flag.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <stdexcept>

#include "kestu/host/DesignDocument.h"
#include "kestu/host/FormFile.h"
#include "kestu/host/Host.h"
#include "support/ExpectRuntimeError.h"

namespace kestu {
namespace {

constexpr const char* kProbe = "KestuProbe";
constexpr const char* kPanel = "KestuPanel3D";
using Names = std::vector<std::string>;

class DesignDocumentTest : public ::testing::Test {
 protected:
  std::string Text() { return FormFileText(host_, doc_.DesignedForm()); }
  Names Selected() const {
    Names names;
    for (const HostedControl* control : doc_.Selected()) names.push_back(control->Name());
    return names;
  }
  HostedControl& Find(std::string_view name) const {
    HostedControl* control = doc_.DesignedForm().FindControl(name);
    if (!control) throw std::logic_error("no control " + std::string(name));
    return *control;
  }

  Host host_;
  DesignDocument doc_{host_};
};

TEST_F(DesignDocumentTest, PlacedControlsTakeTheFirstFreeNumberAndGoIntoContainersOnly) {
  HostedControl& panel = doc_.Place(kPanel, {120, 120, 2400, 1200});
  doc_.Place(kProbe, {0, 2000, 600, 300});
  HostedControl& inside = doc_.Place(kProbe, {60, 60, 600, 300}, &panel);
  EXPECT_EQ(Selected(), Names{"KestuProbe2"});  // the new one, alone
  EXPECT_EQ(inside.Container(), &panel);
  EXPECT_EQ(inside.LeftOnForm(), 180);

  doc_.Select(Find("KestuProbe1"));
  doc_.DeleteSelection();
  EXPECT_EQ(doc_.Place(kProbe, {0, 0, 600, 300}).Name(), "KestuProbe1");
  EXPECT_EQ(doc_.Place(kProbe, {0, 0, 600, 300}).Name(), "KestuProbe3");
  EXPECT_THROW(doc_.Place("NoSuchControl", {0, 0, 10, 10}), std::invalid_argument);

  const std::string before = Text();
  ExpectRuntimeError(5, [&] { doc_.Place(kProbe, {0, 0, 600, 300}, &inside); });
  EXPECT_EQ(Text(), before);
  doc_.Undo();
  EXPECT_EQ(doc_.DesignedForm().FindControl("KestuProbe3"), nullptr)
      << "the refusal was no edit to undo";
}

TEST_F(DesignDocumentTest, ControlsAreDesignedInDesignModeWhateverTheHostRuns) {
  HostedControl& placed = doc_.Place(kProbe, {0, 0, 600, 300});
  EXPECT_FALSE(placed.AmbientUserMode());
  EXPECT_TRUE(host_.UserMode()) << "the host's own mode comes back";
  doc_.MoveSelection(15, 0);
  doc_.Undo();  // re-created from the file
  EXPECT_FALSE(Find("KestuProbe1").AmbientUserMode());
  for (HostedControl* pasted : doc_.Paste(doc_.CopySelection())) {
    EXPECT_FALSE(pasted->AmbientUserMode());
  }
}

TEST_F(DesignDocumentTest, MovesAndSizesSnapToTheGrid) {
  struct Case {
    int grid;
    TwipsRect start;
    bool resize;
    int dx, dy;
    TwipsRect expected;
  };
  const Case cases[] = {
      {0, {100, 100, 1000, 500}, false, 7, -3, {107, 97, 1000, 500}},
      {120, {100, 100, 1000, 500}, false, 30, 0, {120, 120, 1000, 500}},   // 130 -> 120
      {120, {100, 100, 1000, 500}, false, -41, -40, {0, 120, 1000, 500}},  // 59 -> 0, 60 -> 120
      {120, {0, 0, 1000, 500}, false, -200, 0, {-240, 0, 1000, 500}},
      {0, {0, 0, 1000, 500}, true, 13, -14, {0, 0, 1013, 486}},
      {120, {0, 0, 1000, 500}, true, 50, 0, {0, 0, 1080, 480}},
      {120, {0, 0, 1000, 500}, true, -2000, -499, {0, 0, 120, 120}},  // one step at least
      {0, {0, 0, 1000, 500}, true, -2000, -499, {0, 0, 15, 15}},      // one pixel at least
      {5, {0, 0, 1000, 500}, true, -2000, -499, {0, 0, 15, 15}},      // a step below a pixel
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << "grid " << c.grid << " by " << c.dx << ", " << c.dy);
    doc_.New("Form1");
    doc_.SetGrid(c.grid);
    HostedControl& control = doc_.Place(kProbe, c.start);
    if (c.resize) {
      doc_.ResizeSelection(c.dx, c.dy);
    } else {
      doc_.MoveSelection(c.dx, c.dy);
    }
    EXPECT_EQ(control.Bounds(), c.expected);
  }
  ExpectRuntimeError(380, [&] { doc_.SetGrid(-1); });
}

TEST_F(DesignDocumentTest, AContainerMovesWhatItHoldsOnce) {
  HostedControl& panel = doc_.Place(kPanel, {0, 0, 2400, 1200});
  HostedControl& inside = doc_.Place(kProbe, {60, 60, 600, 300}, &panel);
  doc_.Select(panel, true);
  doc_.MoveSelection(150, 30);
  EXPECT_EQ(panel.Bounds(), (TwipsRect{150, 30, 2400, 1200}));
  EXPECT_EQ(inside.Bounds(), (TwipsRect{60, 60, 600, 300})) << "relative to the panel";
}

TEST_F(DesignDocumentTest, PasteGivesNewNamesTheSamePropertiesAndTheSelection) {
  doc_.SetGrid(120);
  HostedControl& panel = doc_.Place(kPanel, {240, 240, 2400, 1200});
  HostedControl& inside = doc_.Place(kProbe, {120, 120, 600, 300}, &panel);
  doc_.SetProperty(inside, "Caption", Variant("Caf\xC3\xA9"));
  doc_.SetProperty(inside, "ToolTipText", Variant("Tip"));
  doc_.Select(panel, true);  // the probe comes with its panel, not again
  const std::string copied = doc_.CopySelection();

  const std::vector<HostedControl*> pasted = doc_.Paste(copied);
  ASSERT_EQ(pasted.size(), 1u);
  EXPECT_EQ(pasted[0]->Name(), "KestuPanel3D2");
  EXPECT_EQ(pasted[0]->Bounds(), (TwipsRect{360, 360, 2400, 1200}));
  EXPECT_EQ(Selected(), Names{"KestuPanel3D2"});
  HostedControl& copy = Find("KestuProbe2");
  EXPECT_EQ(copy.Container(), pasted[0]);
  EXPECT_EQ(copy.Bounds(), inside.Bounds());
  EXPECT_EQ(copy.Control().GetProperty("Caption").ToString(), "Caf\xC3\xA9");
  EXPECT_EQ(copy.ToolTipText(), "Tip");

  doc_.SetGrid(0);
  const std::vector<HostedControl*> again = doc_.Paste(copied, pasted[0]);
  EXPECT_EQ(again[0]->Name(), "KestuPanel3D3");
  EXPECT_EQ(again[0]->Container(), pasted[0]);
  EXPECT_EQ(again[0]->Bounds().left, 240 + DesignDocument::kPasteOffsetWithoutGrid);
  EXPECT_THROW(doc_.Paste("not json"), RuntimeError);
}

// Every kind of edit, from the same form: undo gives back the file as it
// was, byte for byte, and redo the file after the edit.
TEST_F(DesignDocumentTest, UndoRestoresTheExactFileAndRedoReappliesIt) {
  using Edit = std::function<void(DesignDocument&)>;
  const std::pair<const char*, Edit> edits[] = {
      {"place",
       [](DesignDocument& d) {
         d.Place(kProbe, {90, 90, 600, 300});
       }},
      {"move", [](DesignDocument& d) { d.MoveSelection(45, -15); }},
      {"resize", [](DesignDocument& d) { d.ResizeSelection(-30, 60); }},
      {"delete", [](DesignDocument& d) { d.DeleteSelection(); }},
      {"paste", [](DesignDocument& d) { d.Paste(d.CopySelection()); }},
      {"property",
       [](DesignDocument& d) { d.SetProperty(*d.Selected()[0], "Caption", Variant("Changed")); }},
      {"extender",
       [](DesignDocument& d) {
         d.SetProperty(*d.Selected()[0], "Visible", Variant::Boolean(false));
       }},
  };
  for (const auto& [what, edit] : edits) {
    SCOPED_TRACE(what);
    doc_.New("Form1");
    HostedControl& panel = doc_.Place(kPanel, {0, 0, 2400, 1200});
    doc_.Place(kProbe, {120, 120, 600, 300}, &panel);
    doc_.SetProperty(*doc_.Selected()[0], "Caption", Variant("Before"));
    const std::string before = Text();

    edit(doc_);
    const std::string after = Text();
    ASSERT_NE(after, before);
    ASSERT_TRUE(doc_.Undo());
    EXPECT_EQ(Text(), before);
    EXPECT_EQ(Selected(), Names{"KestuProbe1"}) << "as the edit found it";
    ASSERT_TRUE(doc_.Redo());
    EXPECT_EQ(Text(), after);
    EXPECT_FALSE(doc_.CanRedo());
    ASSERT_TRUE(doc_.Undo());
  }

  // A new edit forgets what could be redone.
  EXPECT_TRUE(doc_.CanRedo());
  doc_.MoveSelection(15, 15);
  EXPECT_FALSE(doc_.Redo());

  // An edit that changes nothing is nothing to undo.
  doc_.New("Form1");
  doc_.Place(kProbe, {0, 0, 600, 300});
  doc_.MoveSelection(0, 0);
  doc_.SetProperty(*doc_.Selected()[0], "Left", Variant(int32_t{0}));
  ASSERT_TRUE(doc_.Undo());
  EXPECT_FALSE(doc_.CanUndo());
}

TEST_F(DesignDocumentTest, ModifiedUntilSavedOrOpenedAndABadFileChangesNothing) {
  const std::filesystem::path saved = testing::TempDir() + "kestu_design_form.json";
  const std::filesystem::path bad = testing::TempDir() + "kestu_design_bad.json";
  std::ofstream(bad) << R"({"Name": "Form1", "Controls": [{"Type": "KestuProbe",
                           "Name": "a", "Left": "x"}]})";
  EXPECT_FALSE(doc_.Modified());
  doc_.Place(kProbe, {0, 0, 600, 300});
  EXPECT_TRUE(doc_.Modified());
  doc_.Save(saved);
  EXPECT_FALSE(doc_.Modified());
  EXPECT_EQ((std::stringstream() << std::ifstream(saved).rdbuf()).str(), Text());
  doc_.Undo();
  EXPECT_TRUE(doc_.Modified());

  const std::string before = Text();
  ExpectRuntimeError(380, [&] { doc_.Open(bad); });
  ExpectRuntimeError(53, [&] { doc_.Open(testing::TempDir() + "kestu_design_missing.json"); });
  EXPECT_EQ(Text(), before);
  EXPECT_TRUE(doc_.Modified() && doc_.CanRedo());

  doc_.New("Other");
  EXPECT_EQ(host_.FindForm("Form1"), nullptr) << "the form designed before went";
  doc_.Open(saved);
  EXPECT_FALSE(doc_.Modified() || doc_.CanUndo());
  EXPECT_EQ(host_.FindForm("Other"), nullptr);
  EXPECT_FALSE(Find("KestuProbe1").AmbientUserMode());
  // A change a control reports itself (a property page applied) counts.
  Find("KestuProbe1").PropertyChanged("Caption");
  EXPECT_TRUE(doc_.Modified());
  std::filesystem::remove(saved);
  std::filesystem::remove(bad);
}

}  // namespace
}  // namespace kestu
