#include "kestu/stdcontrols/TabStrip.h"

#include <algorithm>

#include "kestu/foundation/HelpText.h"
#include "kestu/foundation/KestuControlsAPI.h"
#include "kestu/foundation/Keys.h"

namespace kestu {

namespace {

// A tab is its caption with this much room on each side.
constexpr int kTabPadding = 6;
// The selected tab stands this much taller and wider than the others.
constexpr int kSelectedGrowth = 2;

}  // namespace

ClassInfo& TabStrip::Info() {
  static ClassInfo info = [] {
    ClassInfo c = ComboBox::Info();
    c.name = "TabStrip";
    c.help = Help("A row of tabs over a raised body; the selected tab is the list's ListIndex.",
                  "Uma fileira de abas sobre um corpo em relevo; a aba selecionada é o "
                  "ListIndex da lista.");
    c.default_width = 4800;
    c.default_height = 3600;
    c.create = [] { return std::make_unique<TabStrip>(); };
    // Tabs are part of the dialog's face, not a field to type in.
    DefaultColor(c.properties, "BackColor", syscolor::kButtonFace);
    DefaultColor(c.properties, "ForeColor", syscolor::kButtonText);
    c.redraw = [](UserControl& strip) { static_cast<TabStrip&>(strip).Redraw(); };
    return c;
  }();
  return info;
}

KESTU_REGISTER_CONTROL(TabStrip)

TabStrip::TabStrip() {
  back_color_ = syscolor::kButtonFace;
  fore_color_ = syscolor::kButtonText;
}

std::vector<TabStrip::TabPlace> TabStrip::TabPlaces() {
  std::vector<TabPlace> places;
  int left = kSelectedGrowth;
  for (const std::string& caption : Items()) {
    const int text = static_cast<int>(TextWidth(caption));  // drawing is in pixels
    places.push_back({left, text + 2 * kTabPadding});
    left += text + 2 * kTabPadding;
  }
  return places;
}

void TabStrip::Draw() {
  Cls();
  const int right = PixelWidth() - 1;
  const int bottom = PixelHeight() - 1;
  const int top = kTabHeight - 1;
  // The body: raised, highlight above and left, shadows below and right.
  Line(0, static_cast<float>(top), static_cast<float>(right), static_cast<float>(top),
       syscolor::k3DHighlight);
  Line(0, static_cast<float>(top), 0, static_cast<float>(bottom), syscolor::k3DHighlight);
  Line(0, static_cast<float>(bottom), static_cast<float>(right + 1), static_cast<float>(bottom),
       syscolor::k3DDarkShadow);
  Line(static_cast<float>(right), static_cast<float>(top), static_cast<float>(right),
       static_cast<float>(bottom), syscolor::k3DDarkShadow);
  Line(1, static_cast<float>(bottom - 1), static_cast<float>(right), static_cast<float>(bottom - 1),
       syscolor::kButtonShadow);
  Line(static_cast<float>(right - 1), static_cast<float>(top + 1), static_cast<float>(right - 1),
       static_cast<float>(bottom - 1), syscolor::kButtonShadow);
  places_ = TabPlaces();
  const std::vector<TabPlace>& places = places_;
  // The selected tab last, so that it stands over its neighbours' edges.
  for (size_t i = 0; i < places.size(); ++i) {
    if (static_cast<int16_t>(i) != ListIndex()) DrawTab(places[i], Items()[i], false);
  }
  if (ListIndex() >= 0) DrawTab(places[ListIndex()], Items()[ListIndex()], true);
}

void TabStrip::DrawTab(const TabPlace& place, const std::string& caption, bool selected) {
  const int grow = selected ? kSelectedGrowth : 0;
  const int left = place.left - grow;
  const int right = place.left + place.width - 1 + grow;
  const int top = kSelectedGrowth - grow;
  const int base = kTabHeight - 1;
  // The selected tab's face covers the body's top line beneath it.
  Line(static_cast<float>(left + 1), static_cast<float>(top + 1), static_cast<float>(right - 1),
       static_cast<float>(base + (selected ? 1 : 0)), syscolor::kButtonFace, LineKind::FilledBox);
  Line(static_cast<float>(left), static_cast<float>(base), static_cast<float>(left),
       static_cast<float>(top + 2), syscolor::k3DHighlight);
  Line(static_cast<float>(left + 1), static_cast<float>(top + 1), static_cast<float>(left + 2),
       static_cast<float>(top + 1), syscolor::k3DHighlight);
  Line(static_cast<float>(left + 2), static_cast<float>(top), static_cast<float>(right - 1),
       static_cast<float>(top), syscolor::k3DHighlight);
  Line(static_cast<float>(right - 1), static_cast<float>(top + 1), static_cast<float>(right - 1),
       static_cast<float>(base), syscolor::kButtonShadow);
  Line(static_cast<float>(right), static_cast<float>(top + 2), static_cast<float>(right),
       static_cast<float>(base), syscolor::k3DDarkShadow);
  UserControl::SetForeColor(Enabled() ? fore_color_ : syscolor::kGrayText);
  RECT text{left, top, right + 1, base};
  KestuControlsAPI::DrawTextA(hDC(), caption, -1, text,
                              dt::kCenter | dt::kVCenter | dt::kSingleLine | dt::kNoPrefix);
  if (selected && HasFocus()) {
    KestuControlsAPI::DrawFocusRect(hDC(), RECT{left + 3, top + 3, right - 2, base - 1});
  }
}

void TabStrip::UserControl_KeyDown(int16_t& key_code, int16_t& shift) {
  if (!RaiseEvent(KeyDown, key_code, shift)) return;
  if (shift == 0) MoveSelection(key_code, key::kLeft, key::kRight);
}

void TabStrip::UserControl_MouseDown(int16_t& button, int16_t& shift, float& x, float& y) {
  if (button == button::kLeft && Enabled()) KestuControlsAPI::SetFocus(hWnd());
  if (!RaiseEvent(MouseDown, button, shift, x, y)) return;
  if (button != button::kLeft || !Enabled()) return;
  const int px = static_cast<int>(x) / std::max(1, ScreenTwipsPerPixelX());
  const int py = static_cast<int>(y) / std::max(1, ScreenTwipsPerPixelY());
  if (py >= kTabHeight) return;
  for (size_t i = 0; i < places_.size(); ++i) {
    if (px >= places_[i].left && px < places_[i].left + places_[i].width) {
      static_cast<void>(ChangeListIndex(static_cast<int16_t>(i)));
      return;
    }
  }
}

}  // namespace kestu
