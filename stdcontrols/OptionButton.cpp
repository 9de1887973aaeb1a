#include "kestu/stdcontrols/OptionButton.h"

#include <algorithm>

#include "kestu/foundation/Keys.h"

namespace kestu {

ClassInfo& OptionButton::Info() {
  static ClassInfo info = [] {
    ClassInfo c;
    c.name = "OptionButton";
    c.help =
        "One choice of a group: selecting it clears the other option buttons of its "
        "container. [Uma escolha de um grupo: selecioná-la desmarca os outros botões de opção "
        "do seu contêiner.]";
    c.default_width = 1215;
    c.default_height = 255;
    c.create = [] { return std::make_unique<OptionButton>(); };
    c.properties = ToggleProperties();
    c.properties.push_back(
        Property<OptionButton>("Value", "Boolean", &OptionButton::Value, &OptionButton::SetValue,
                               "Returns/sets whether this choice is selected. [Retorna/define "
                               "se esta escolha está selecionada.]")
            .Saved(&OptionButton::value_)
            .Defaults(false));
    c.redraw = [](UserControl& option) { static_cast<OptionButton&>(option).Redraw(); };
    c.events = ToggleEvents();
    c.default_event = "Click";
    return c;
  }();
  return info;
}

KESTU_REGISTER_CONTROL(OptionButton)

void OptionButton::SetValue(bool value) {
  if (value) {
    static_cast<void>(Select());
  } else if (value_) {
    StoreValue(false);
  }
}

void OptionButton::StoreValue(bool value) {
  value_ = value;
  PropertyChanged("Value");
  Redraw();
}

std::vector<std::pair<OptionButton*, bool>> OptionButton::Group() const {
  const std::vector<FormMember> members = FormControls();
  const auto self = std::find_if(members.begin(), members.end(),
                                 [this](const FormMember& m) { return m.control == this; });
  if (self == members.end()) return {};
  std::vector<std::pair<OptionButton*, bool>> group;
  for (const FormMember& member : members) {
    if (member.container != self->container) continue;
    if (auto* option = dynamic_cast<OptionButton*>(member.control)) {
      group.emplace_back(option, member.can_take_focus);
    }
  }
  return group;
}

bool OptionButton::Select() {
  for (const auto& [option, focusable] : Group()) {
    if (option != this && option->value_) option->StoreValue(false);
  }
  if (value_) return true;
  StoreValue(true);
  return RaiseEvent(Click);
}

bool OptionButton::Activate() {
  return Select();
}

void OptionButton::Arrow(int16_t key_code) {
  std::vector<OptionButton*> reachable;
  for (const auto& [option, focusable] : Group()) {
    if (focusable || option == this) reachable.push_back(option);
  }
  const auto self = std::find(reachable.begin(), reachable.end(), this);
  if (self == reachable.end() || reachable.size() < 2) return;
  const bool backwards = key_code == key::kLeft || key_code == key::kUp;
  const size_t count = reachable.size();
  const auto at = static_cast<size_t>(self - reachable.begin());
  OptionButton* next = reachable[(at + (backwards ? count - 1 : 1)) % count];
  KestuControlsAPI::SetFocus(next->hWnd());
  static_cast<void>(next->Select());
}

void OptionButton::DrawBox(int left, int top) {
  // The ring: shadow over dark shadow on the upper left, highlight over
  // light on the lower right; inside, the window colour (the face colour
  // when disabled or held down).
  const OLE_COLOR inside =
      !enabled_ || ShowsPressed() ? syscolor::kButtonFace : syscolor::kWindowBackground;
  const auto palette = [inside](char c) {
    switch (c) {
      case 'S':
        return syscolor::kButtonShadow;
      case 'D':
        return syscolor::k3DDarkShadow;
      case 'L':
        return syscolor::k3DLight;
      case 'H':
        return syscolor::k3DHighlight;
      default:
        return inside;
    }
  };
  DrawPixelMap(left, top,
               {"    SSSS    ", "  SSDDDDSS  ", " SDDWWWWDDH ", " SDWWWWWWLH ", "SDWWWWWWWWLH",
                "SDWWWWWWWWLH", "SDWWWWWWWWLH", "SDWWWWWWWWLH", " SDWWWWWWLH ", " HLLWWWWLLH ",
                "  HHLLLLHH  ", "    HHHH    "},
               palette);
  if (!value_) return;
  const OLE_COLOR dot = enabled_ ? syscolor::kWindowText : syscolor::kButtonShadow;
  DrawPixelMap(left + 4, top + 4, {" ## ", "####", "####", " ## "}, [dot](char) { return dot; });
}

}  // namespace kestu
