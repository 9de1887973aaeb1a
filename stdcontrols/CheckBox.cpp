#include "kestu/stdcontrols/CheckBox.h"

#include "kestu/foundation/Bevel.h"

namespace kestu {

ClassInfo& CheckBox::Info() {
  static ClassInfo info = [] {
    ClassInfo c;
    c.name = "CheckBox";
    c.help =
        "A box the user checks or clears, with a caption. [Uma caixa que o usuário marca ou "
        "desmarca, com um texto.]";
    c.default_width = 1215;
    c.default_height = 255;
    c.create = [] { return std::make_unique<CheckBox>(); };
    c.properties = ToggleProperties();
    c.properties.push_back(
        Property<CheckBox>("Value", "Integer", &CheckBox::Value, &CheckBox::SetValue,
                           "Returns/sets the state: 0 unchecked, 1 checked, 2 grayed. "
                           "[Retorna/define o estado: 0 desmarcado, 1 marcado, 2 acinzentado.]")
            .Saved(&CheckBox::value_)
            .Defaults(kUnchecked)
            .Checked(RangeCheck(kUnchecked, kGrayed)));
    c.redraw = [](UserControl& box) { static_cast<CheckBox&>(box).Redraw(); };
    c.events = ToggleEvents();
    c.default_event = "Click";
    return c;
  }();
  return info;
}

KESTU_REGISTER_CONTROL(CheckBox)

void CheckBox::SetValue(int16_t value) {
  CheckRange(value, kUnchecked, kGrayed);
  // Programs and property pages rely on Click for a change made in code.
  static_cast<void>(ChangeValue(value));
}

bool CheckBox::Activate() {
  return ChangeValue(value_ == kUnchecked ? kChecked : kUnchecked);
}

bool CheckBox::ChangeValue(int16_t value) {
  if (value == value_) return true;
  value_ = value;
  PropertyChanged("Value");
  Redraw();
  return RaiseEvent(Click);
}

void CheckBox::DrawBox(int left, int top) {
  const int right = left + BoxSize() - 1;
  const int bottom = top + BoxSize() - 1;
  BevelRectangle(*this, Int16::From(left), Int16::From(top), Int16::From(right),
                 Int16::From(bottom), syscolor::kButtonShadow, syscolor::k3DHighlight, Int16(1));
  BevelRectangle(*this, Int16::From(left + 1), Int16::From(top + 1), Int16::From(right - 1),
                 Int16::From(bottom - 1), syscolor::k3DDarkShadow, syscolor::k3DLight, Int16(1));
  // Inside, the window colour; the face colour when it cannot be changed
  // (disabled), is grayed, or is held down.
  const bool face = !enabled_ || value_ == kGrayed || ShowsPressed();
  Line(static_cast<float>(left + 2), static_cast<float>(top + 2), static_cast<float>(right - 2),
       static_cast<float>(bottom - 2), face ? syscolor::kButtonFace : syscolor::kWindowBackground,
       LineKind::FilledBox);
  if (value_ == kUnchecked) return;
  const bool grey_mark = !enabled_ || value_ == kGrayed;
  const OLE_COLOR mark = grey_mark ? syscolor::kButtonShadow : syscolor::kWindowText;
  // The tick: seven columns of three pixels, down to the right then up.
  DrawPixelMap(left + 3, top + 3,
               {"      #", "     ##", "#   ###", "## ### ", "#####  ", " ###   ", "  #    "},
               [mark](char) { return mark; });
}

}  // namespace kestu
