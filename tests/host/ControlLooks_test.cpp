// Each control in each of its looks, side by side on one form, against a
// golden picture: tests/data/golden/looks/*.png. The form's magenta shows
// where a control does not paint.

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "kestu/buttons/KestuActiveCommand.h"
#include "kestu/buttons/KestuTBButton.h"
#include "kestu/decor/KestuLine3D.h"
#include "kestu/decor/KestuPanel3D.h"
#include "kestu/host/Host.h"
#include "kestu/host/Snapshot.h"
#include "kestu/numberedit/KestuNumberEdit.h"
#include "kestu/stdcontrols/CheckBox.h"
#include "kestu/stdcontrols/ComboBox.h"
#include "kestu/stdcontrols/CommandButton.h"
#include "kestu/stdcontrols/Frame.h"
#include "kestu/stdcontrols/Label.h"
#include "kestu/stdcontrols/OptionButton.h"
#include "kestu/textedit/KestuTextEdit.h"
#include "kestu/textedit/TextBox.h"
#include "kestu/toolbar/KestuTBBar.h"
#include "kestu/toolbar/KestuTBSeparator.h"
#include "support/Golden.h"

namespace kestu {
namespace {

constexpr OLE_COLOR kMagenta = RGB(255, 0, 255);
constexpr int kGap = 120;  // twips between two looks

// A look: the properties that make it, the control's or the extender's,
// set in order after the control is created.
using Look = std::vector<std::pair<const char*, Variant>>;

class ControlLooks : public ::testing::Test {
 protected:
  // The looks in a row, each `width` x `height` twips, the first `kGap` in.
  std::vector<HostedControl*> Place(const ClassInfo& info, int width, int height,
                                    const std::vector<Look>& looks) {
    form_.Resize(kGap + static_cast<int>(looks.size()) * (width + kGap), height + 2 * kGap);
    form_.SetBackColor(kMagenta);
    std::vector<HostedControl*> placed;
    for (const Look& look : looks) {
      const int left = kGap + static_cast<int>(placed.size()) * (width + kGap);
      HostedControl& control =
          host_.NewControl(form_, info, std::string("c").append(std::to_string(placed.size())),
                           TwipsRect{left, kGap, width, height});
      for (const auto& [name, value] : look) {
        if (HostedControl::ExtenderName(name)) {
          control.SetExtender(name, value);
        } else {
          control.Control().SetProperty(name, value);
        }
      }
      placed.push_back(&control);
    }
    return placed;
  }

  void ExpectGolden(const std::string& name) {
    Raster picture(1, 1, 0);
    RenderForm(host_, form_, picture, /*caret_lit=*/false);
    test::ExpectMatchesGolden(picture, "looks/" + name);
  }

  Host host_;
  Form& form_ = host_.CreateForm("Looks", 1200, 1200);
};

// Raised out and lowered in; no outer bevel; the inner bevel on the outer
// one (width 0); a style that is neither None nor Raised, drawn lowered;
// the inner bevel past the middle, drawn inverted; coloured edges.
TEST_F(ControlLooks, Panel) {
  Place(KestuPanel3D::Info(), 900, 600,
        {{},
         {{"BorderOut", Variant(KSTPN_None)}},
         {{"BorderWidth", Variant(0)}},
         {{"BorderOut", Variant(3)}, {"BorderIn", Variant(KSTPN_Raised)}},
         {{"BorderWidth", Variant(25)}},
         {{"Light3DColor", Variant(0x00FFFF)}, {"Shadow3DColor", Variant(0x800000)}}});
  ExpectGolden("panel");
}

// Raised and lowered, across and down; style 3 draws lowered and
// orientation 2 vertical. The line sets its own thickness; turned
// vertical, it keeps the height it had until it is given another.
TEST_F(ControlLooks, Line) {
  const Variant tall(600);
  Place(KestuLine3D::Info(), 600, 600,
        {{},
         {{"LineStyle", Variant(LnLowered)}},
         {{"LineOrientation", Variant(LnVertical)}, {"Height", tall}},
         {{"LineOrientation", Variant(LnVertical)},
          {"Height", tall},
          {"LineStyle", Variant(LnLowered)}},
         {{"LineStyle", Variant(3)}},
         {{"LineOrientation", Variant(2)}, {"Height", tall}}});
  ExpectGolden("line");
}

// A grouped number; a negative one with decimals; flat; with a shadow;
// disabled; locked; the whole number selected with the focus, plain and
// as a raised plate.
TEST_F(ControlLooks, NumberEdit) {
  const std::vector<HostedControl*> boxes =
      Place(KestuNumberEdit::Info(), 1500, 315,
            {{{"IntMaxLength", Variant(9)}, {"Value", Variant(1234567.0)}},
             {{"DecMaxLength", Variant(2)}, {"Value", Variant(-98765.4)}},
             {{"Border3D", Variant::Boolean(false)}, {"Value", Variant(12.0)}},
             {{"Shadow", Variant::Boolean(true)}, {"Value", Variant(12.0)}},
             {{"Enabled", Variant::Boolean(false)}, {"Value", Variant(12.0)}},
             {{"Locked", Variant::Boolean(true)}, {"Value", Variant(12.0)}},
             {{"Value", Variant(4321.0)}},
             {{"Selection3D", Variant::Boolean(true)}, {"Value", Variant(4321.0)}}});
  // Only one box holds the focus at a time; the other keeps how it drew.
  host_.SetFocus(boxes[6]);
  host_.SetFocus(boxes[7]);
  ExpectGolden("numberedit");
}

// A date mask half typed; a phone mask; upper case; padded on the left;
// a text longer than the box, scrolled to its caret at the end; disabled;
// locked; part selected with the focus, plain and as a raised plate.
TEST_F(ControlLooks, TextEdit) {
  const std::vector<HostedControl*> boxes =
      Place(KestuTextEdit::Info(), 1500, 315,
            {{{"Mask", Variant("99/99/9999")}, {"Text", Variant("2311")}},
             {{"Mask", Variant("(99) 9999-9999")}, {"Text", Variant("1155550123")}},
             {{"TextStyle", Variant(ccUpperCase)}, {"Text", Variant("ação")}},
             {{"MaxLength", Variant(6)},
              {"TextStyle", Variant(ccPadLeft)},
              {"FillChar", Variant("0")},
              {"Text", Variant("42")}},
             {{"Text", Variant("a text far longer than the box")}},
             {{"Enabled", Variant::Boolean(false)}, {"Text", Variant("disabled")}},
             {{"Locked", Variant::Boolean(true)}, {"Text", Variant("locked")}},
             {{"Text", Variant("selected")}, {"AutoSelect", Variant::Boolean(false)}},
             {{"Text", Variant("selected")},
              {"Selection3D", Variant::Boolean(true)},
              {"AutoSelect", Variant::Boolean(false)}}});
  for (size_t i : {2u, 3u}) {
    boxes[i]->Control().GetProperty("Text");  // reading cases and pads the text
  }
  static_cast<KestuTextEdit&>(boxes[4]->Control()).SetPosition(30);  // scrolled to the end
  for (HostedControl* box : {boxes[7], boxes[8]}) {
    host_.SetFocus(box);
    static_cast<KestuTextEdit&>(box->Control()).SetSelectedText(2, 4);
  }
  ExpectGolden("textedit");
}

Variant Icon(const char* name) {
  return Variant(LoadPicture(std::string(KESTU_TEST_DATA "/pictures/buttons/").append(name)));
}

// At rest in 3D and flat; a 16-pixel picture beside the caption and a
// 32-pixel one above it; disabled with its picture dimmed, and with a
// picture of its own; the default button; focused; under the pointer,
// with its hover picture and a bold caption.
TEST_F(ControlLooks, CommandButton) {
  const Variant disk = Icon("disk16.png");
  const std::vector<HostedControl*> buttons =
      Place(KestuActiveCommand::Info(), 1215, 570,
            {{{"Caption", Variant("&Save")}},
             {{"Caption", Variant("Flat")}, {"Style", Variant(ccFlat)}},
             {{"Caption", Variant("Save")}, {"Picture", disk}},
             {{"Caption", Variant("Big")},
              {"Picture", Icon("disk32.png")},
              {"PictSize", Variant(cc32x32)},
              {"PictPosition", Variant(ccTop)}},
             {{"Caption", Variant("Off")}, {"Picture", disk}, {"Enabled", Variant::Boolean(false)}},
             {{"Caption", Variant("Off")},
              {"Picture", disk},
              {"DisabledPicture", Icon("disk16_gray.png")},
              {"Enabled", Variant::Boolean(false)}},
             {{"Caption", Variant("Default")}},
             {{"Caption", Variant("Focus")}},
             {{"Caption", Variant("Hover")},
              {"Picture", disk},
              {"FocusedPicture", Icon("arrow16.png")},
              {"FocusedBold", Variant::Boolean(true)}}});
  buttons[6]->SetAmbient("DisplayAsDefault", Variant::Boolean(true));
  host_.SetFocus(buttons[7]);
  int16_t no_button = 0, no_shift = 0;
  float x = 600, y = 240;
  buttons[8]->Control().UserControl_MouseMove(no_button, no_shift, x, y);
  ExpectGolden("buttons");
}

// Pressed, a look of its own since a form has one focus: the picture
// (here its DownPicture) and the caption a pixel right and down, the
// caption in FocusedFRColor.
TEST_F(ControlLooks, CommandButtonPressed) {
  HostedControl& button = *Place(KestuActiveCommand::Info(), 1215, 570,
                                 {{{"Caption", Variant("Down")},
                                   {"Picture", Icon("disk16.png")},
                                   {"DownPicture", Icon("disk16_down.png")}}})
                               .front();
  int16_t left = 1, no_shift = 0;
  float x = 600, y = 240;
  button.Control().UserControl_MouseDown(left, no_shift, x, y);
  ExpectGolden("buttons_pressed");
}

// Two toolbars, placed rather than docked so that the magenta shows round
// their frames. Above, a row of 16-pixel buttons: flat at rest (no frame
// on a running form), flat under the pointer, pressed, a separator, 3D at
// rest, 3D under the pointer, disabled with its picture dimmed, and a
// caption beside a picture. Below, a bar for 32-pixel pictures with one
// grip line: a 32-pixel button, a tall separator, and a flat button
// placed while the form is designed, which shows its outline.
//
// Only one button can hold the pointer at a time; each hot button drew
// itself with the cursor over it and keeps that picture.
TEST_F(ControlLooks, Toolbar) {
  constexpr int kPixel = 15;
  form_.Resize(256 * kPixel, 91 * kPixel);
  form_.SetBackColor(kMagenta);
  const auto bar = [&](const char* name, int top, int32_t auto_height) -> HostedControl& {
    HostedControl& placed = host_.NewControl(form_, KestuTBBar::Info(), name);
    placed.SetExtender("Align", Variant(int16_t{0}));
    placed.Move(8 * kPixel, top * kPixel);
    placed.SetExtender("Width", Variant(240 * kPixel));
    placed.Control().SetProperty("AutoHeight", Variant(auto_height));
    return placed;
  };
  HostedControl& small = bar("small", 8, ccBarTo16x16);
  HostedControl& large = bar("large", 42, ccBarTo32x32);
  large.Control().SetProperty("ShowTwoLeftLines", Variant::Boolean(false));

  int count = 0;
  const auto button = [&](HostedControl& in, int left, const Look& look) -> HostedControl& {
    HostedControl& placed = host_.NewControl(
        form_, KestuTBButton::Info(), std::string("b").append(std::to_string(count++)),
        TwipsRect{left * kPixel, 2 * kPixel, 23 * kPixel, 22 * kPixel}, &in);
    for (const auto& [name, value] : look) placed.Control().SetProperty(name, value);
    return placed;
  };
  const auto separator = [&](HostedControl& in, int left, int16_t auto_height) {
    HostedControl& placed = host_.NewControl(
        form_, KestuTBSeparator::Info(), std::string("s").append(std::to_string(count++)),
        TwipsRect{left * kPixel, 2 * kPixel, 2 * kPixel, 22 * kPixel}, &in);
    placed.Control().SetProperty("AutoHeight", Variant(auto_height));
  };
  const Variant disk = Icon("disk16.png");
  const Variant arrow = Icon("arrow16.png");
  const Variant three_d(cc3D);

  button(small, 12, {{"Picture", disk}});
  HostedControl& hot_flat = button(small, 35, {{"Picture", arrow}});
  HostedControl& pressed = button(small, 58, {{"Picture", disk}});
  separator(small, 83, 1);
  button(small, 87, {{"Picture", disk}, {"Style", three_d}});
  HostedControl& hot_3d = button(small, 110, {{"Picture", arrow}, {"Style", three_d}});
  button(small, 133, {{"Picture", disk}, {"Enabled", Variant::Boolean(false)}});
  HostedControl& captioned =
      button(small, 158, {{"AutoSize", Variant::Boolean(false)}, {"Picture", disk}});
  captioned.SetExtender("Width", Variant(60 * kPixel));
  captioned.Control().SetProperty("Caption", Variant("Save"));

  button(large, 12, {{"PictSize", Variant(cc32x32)}, {"Picture", Icon("disk32.png")}});
  separator(large, 51, 2);
  host_.SetUserMode(false);
  button(large, 55, {{"Picture", disk}});
  host_.SetUserMode(true);

  int16_t no_button = 0, left_button = 1, no_shift = 0;
  for (HostedControl* hot : {&hot_flat, &hot_3d}) {
    const POINTAPI origin = host_.ControlScreenOrigin(*hot);
    host_.SetCursorPos(origin.x + 11, origin.y + 11);
    float x = 11 * kPixel, y = 11 * kPixel;
    hot->Control().UserControl_MouseMove(no_button, no_shift, x, y);
  }
  float x = 11 * kPixel, y = 11 * kPixel;
  pressed.Control().UserControl_MouseDown(left_button, no_shift, x, y);
  ExpectGolden("toolbar");
}

// The dialog controls, a row each: check boxes unchecked, checked, grayed,
// disabled and checked, focused with the box on the right; option buttons
// unselected, selected, disabled and selected, focused; labels left, right,
// centred, disabled and wrapped; a frame holding two options, and a
// disabled one.
TEST_F(ControlLooks, DialogControls) {
  form_.Resize(7800, 3300);
  form_.SetBackColor(kMagenta);
  int count = 0;
  const auto place = [&](const ClassInfo& info, int column, int top, int height, const Look& look,
                         HostedControl* in = nullptr) -> HostedControl& {
    HostedControl& placed =
        host_.NewControl(form_, info, std::string("c").append(std::to_string(count++)),
                         TwipsRect{kGap + column * 1560, top, 1440, height}, in);
    for (const auto& [name, value] : look) placed.Control().SetProperty(name, value);
    return placed;
  };
  const Variant off = Variant::Boolean(false);
  const Variant on = Variant::Boolean(true);
  place(CheckBox::Info(), 0, 120, 255, {{"Caption", Variant("&Bold")}});
  place(CheckBox::Info(), 1, 120, 255, {{"Caption", Variant("Italic")}, {"Value", Variant(1)}});
  place(CheckBox::Info(), 2, 120, 255, {{"Caption", Variant("Mixed")}, {"Value", Variant(2)}});
  place(CheckBox::Info(), 3, 120, 255,
        {{"Caption", Variant("Off")}, {"Value", Variant(1)}, {"Enabled", off}});
  HostedControl& focused_box = place(CheckBox::Info(), 4, 120, 255,
                                     {{"Caption", Variant("Right")}, {"Alignment", Variant(1)}});

  place(OptionButton::Info(), 0, 480, 255, {{"Caption", Variant("&Red")}});
  place(OptionButton::Info(), 1, 480, 255, {{"Caption", Variant("Green")}, {"Value", on}});
  place(OptionButton::Info(), 2, 480, 255,
        {{"Caption", Variant("Blue")}, {"Value", on}, {"Enabled", off}});
  HostedControl& focused_option =
      place(OptionButton::Info(), 3, 480, 255, {{"Caption", Variant("Grey")}});

  place(Label::Info(), 0, 840, 255, {{"Caption", Variant("&Left")}});
  place(Label::Info(), 1, 840, 255,
        {{"Caption", Variant("Right")}, {"Alignment", Variant(lblRight)}});
  place(Label::Info(), 2, 840, 255,
        {{"Caption", Variant("Centre")}, {"Alignment", Variant(lblCenter)}});
  place(Label::Info(), 3, 840, 255, {{"Caption", Variant("Disabled")}, {"Enabled", off}});
  place(Label::Info(), 4, 840, 480,
        {{"Caption", Variant("Wrapped at the width")}, {"WordWrap", on}});

  HostedControl& frame = place(Frame::Info(), 0, 1440, 1200, {{"Caption", Variant("&Colour")}});
  frame.SetExtender("Width", Variant(2400));
  const auto option_in = [&](int top, const char* caption, bool selected) {
    HostedControl& placed = host_.NewControl(form_, OptionButton::Info(),
                                             std::string("c").append(std::to_string(count++)),
                                             TwipsRect{180, top, 1800, 255}, &frame);
    placed.Control().SetProperty("Caption", Variant(caption));
    placed.Control().SetProperty("Value", Variant::Boolean(selected));
  };
  option_in(360, "Warm", true);
  option_in(720, "Cold", false);
  HostedControl& disabled_frame =
      place(Frame::Info(), 2, 1440, 1200, {{"Caption", Variant("Off")}, {"Enabled", off}});
  disabled_frame.SetExtender("Width", Variant(2400));

  host_.SetFocus(&focused_option);
  host_.SetFocus(&focused_box);
  ExpectGolden("dialog_controls");
}

// The dialog's inputs. Push buttons: at rest, the form's default, focused,
// held down by Space (the caption a pixel right and down), disabled with
// an engraved caption. Text boxes: with text, disabled, empty. Drop-down
// lists: at rest, focused (the item on the highlight), nothing selected,
// disabled (grey item, engraved arrow).
TEST_F(ControlLooks, DialogInputs) {
  form_.Resize(7800, 1560);
  form_.SetBackColor(kMagenta);
  int count = 0;
  const auto place = [&](const ClassInfo& info, int column, int top, int height,
                         const Look& look) -> HostedControl& {
    HostedControl& placed =
        host_.NewControl(form_, info, std::string("c").append(std::to_string(count++)),
                         TwipsRect{kGap + column * 1560, top, 1440, height});
    for (const auto& [name, value] : look) placed.Control().SetProperty(name, value);
    return placed;
  };
  const Variant off = Variant::Boolean(false);
  place(CommandButton::Info(), 0, 120, 375, {{"Caption", Variant("&OK")}});
  HostedControl& by_default =
      place(CommandButton::Info(), 1, 120, 375, {{"Caption", Variant("Default")}});
  by_default.SetExtender("Default", Variant::Boolean(true));
  HostedControl& focused_button =
      place(CommandButton::Info(), 2, 120, 375, {{"Caption", Variant("Focus")}});
  HostedControl& pressed =
      place(CommandButton::Info(), 3, 120, 375, {{"Caption", Variant("Down")}});
  place(CommandButton::Info(), 4, 120, 375, {{"Caption", Variant("&Off")}, {"Enabled", off}});

  place(TextBox::Info(), 0, 600, 315, {{"Text", Variant("Any text")}});
  place(TextBox::Info(), 1, 600, 315, {{"Text", Variant("Disabled")}, {"Enabled", off}});
  place(TextBox::Info(), 2, 600, 315, {{"Text", Variant("")}});

  const auto combo = [&](int column, const Look& look) -> HostedControl& {
    HostedControl& placed = place(ComboBox::Info(), column, 1080, 315, {});
    auto& list = static_cast<ComboBox&>(placed.Control());
    for (const char* item : {"Small", "Medium", "Large"}) list.AddItem(item, Variant());
    for (const auto& [name, value] : look) list.SetProperty(name, value);
    return placed;
  };
  combo(0, {{"ListIndex", Variant(1)}});
  HostedControl& focused_combo = combo(1, {{"ListIndex", Variant(2)}});
  combo(2, {});
  combo(3, {{"ListIndex", Variant(0)}, {"Enabled", off}});

  // A form has one focus: the button draws its focused look as the host
  // would have it draw, then the list takes the form's focus.
  focused_button.Control().UserControl_GotFocus();
  int16_t space = 32, no_shift = 0;
  pressed.Control().UserControl_KeyDown(space, no_shift);
  host_.SetFocus(&focused_combo);
  ExpectGolden("dialog_inputs");
}

}  // namespace
}  // namespace kestu
