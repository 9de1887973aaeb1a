#include "kestu/stdcontrols/ToggleControl.h"

#include <algorithm>

#include "kestu/foundation/Keys.h"

namespace kestu {

namespace {

// Pixels between the box and the caption.
constexpr int kGap = 4;

const EventInfo& ClickInfo() {
  static const EventInfo click{"Click",
                               {},
                               "Occurs when the user or the program changes the value. [Ocorre "
                               "quando o usuário ou o programa muda o valor.]"};
  return click;
}

}  // namespace

ToggleControl::ToggleControl() : Click(ClickInfo()) {}

std::vector<const EventInfo*> ToggleControl::ToggleEvents() {
  return InputEventInfos({&ClickInfo()});
}

std::vector<PropertyInfo> ToggleControl::ToggleProperties() {
  using T = ToggleControl;
  std::vector<PropertyInfo> properties = SharedProperties(true);
  properties.push_back(
      Property<T>("Alignment", "Integer", &T::Alignment, &T::SetAlignment,
                  "Returns/sets where the box is: 0 left of the caption, 1 right of it. "
                  "[Retorna/define onde fica a caixa: 0 à esquerda do texto, 1 à direita.]")
          .Saved(&T::alignment_)
          .Defaults(0)
          .Checked(RangeCheck(0, 1)));
  return properties;
}

void ToggleControl::SetAlignment(int16_t alignment) {
  CheckRange(alignment, 0, 1);
  alignment_ = alignment;
  PropertyChanged("Alignment");
  Redraw();
}

// ---- Drawing ----

void ToggleControl::Draw() {
  Cls();
  const int width = PixelWidth();
  const int height = PixelHeight();
  const int box = BoxSize();
  const bool box_left = alignment_ == 0;
  DrawBox(box_left ? 0 : width - box, (height - box) / 2);

  // The caption is centred on the box's line; a long one wraps.
  const RECT area = box_left ? RECT{box + kGap, 0, width, height}
                             : RECT{1, 0, std::max(1, width - box - kGap), height};
  const RECT measured = MeasureCaption(area, dt::kWordBreak);
  const int text_height = measured.Bottom - measured.Top;
  const int top = (height - text_height) / 2;
  DrawCaption(RECT{area.Left, top, area.Right, top + text_height}, dt::kWordBreak);
  if (has_focus_ && enabled_) {
    DrawFocusAround(RECT{area.Left, top, measured.Right, top + text_height});
  }
}

// ---- The state machine ----

void ToggleControl::UserControl_GotFocus() {
  has_focus_ = true;
  Redraw();
}

void ToggleControl::UserControl_LostFocus() {
  has_focus_ = false;
  space_held_ = false;
  Redraw();
}

void ToggleControl::UserControl_KeyDown(int16_t& key_code, int16_t& shift) {
  if (!RaiseEvent(KeyDown, key_code, shift)) return;
  switch (key_code) {
    case key::kSpace:
      if (space_held_ || shift != 0) return;
      space_held_ = true;
      Redraw();
      return;
    case key::kLeft:
    case key::kUp:
    case key::kRight:
    case key::kDown:
      Arrow(key_code);
      return;
    default:
      return;
  }
}

void ToggleControl::UserControl_KeyPress(int16_t& key_ascii) {
  static_cast<void>(RaiseEvent(KeyPress, key_ascii));
}

void ToggleControl::UserControl_KeyUp(int16_t& key_code, int16_t& shift) {
  if (!RaiseEvent(KeyUp, key_code, shift)) return;
  if (key_code != key::kSpace || !space_held_) return;
  space_held_ = false;
  Redraw();
  static_cast<void>(Activate());
}

void ToggleControl::UserControl_MouseDown(int16_t& button, int16_t& shift, float& x, float& y) {
  if (!RaiseEvent(MouseDown, button, shift, x, y)) return;
  if (button != button::kLeft) return;
  pointer_held_ = pointer_inside_held_ = true;
  Redraw();
}

void ToggleControl::UserControl_MouseMove(int16_t& button, int16_t& shift, float& x, float& y) {
  if (!RaiseEvent(MouseMove, button, shift, x, y)) return;
  if (!pointer_held_) return;
  // Dragged off the control the box comes up again; back over it, down.
  const bool inside = x >= 0 && y >= 0 && x < Width() && y < Height();
  if (inside == pointer_inside_held_) return;
  pointer_inside_held_ = inside;
  Redraw();
}

void ToggleControl::UserControl_MouseUp(int16_t& button, int16_t& shift, float& x, float& y) {
  if (!RaiseEvent(MouseUp, button, shift, x, y)) return;
  if (button != button::kLeft || !pointer_held_) return;
  pointer_held_ = pointer_inside_held_ = false;
  Redraw();
}

// The host calls it for a left press and release over the control.
void ToggleControl::UserControl_Click() {
  static_cast<void>(Activate());
}

void ToggleControl::UserControl_AccessKeyPress(int16_t& /*key_ascii*/) {
  KestuControlsAPI::SetFocus(hWnd());
  static_cast<void>(Activate());
}

}  // namespace kestu
