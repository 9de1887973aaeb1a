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
  if (HasFocus() && enabled_) {
    DrawFocusAround(RECT{area.Left, top, measured.Right, top + text_height});
  }
}

// Only the arrow keys are the toggles' own; Space is the push's.
void ToggleControl::OtherKey(int16_t key_code) {
  switch (key_code) {
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

}  // namespace kestu
