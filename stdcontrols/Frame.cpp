#include "kestu/stdcontrols/Frame.h"

#include <algorithm>

namespace kestu {

namespace {

// Where the caption starts, and the face cleared either side of it.
constexpr int kCaptionLeft = 8;
constexpr int kCaptionMargin = 2;

}  // namespace

ClassInfo& Frame::Info() {
  static ClassInfo info = [] {
    ClassInfo c;
    c.name = "Frame";
    c.help =
        "A captioned, etched frame that holds and groups other controls. [Uma moldura "
        "entalhada, com título, que contém e agrupa outros controles.]";
    c.default_width = 2415;
    c.default_height = 1455;
    c.is_container = true;
    c.create = [] { return std::make_unique<Frame>(); };
    c.properties = SharedProperties(true);
    c.redraw = [](UserControl& frame) { static_cast<Frame&>(frame).Redraw(); };
    c.events = PassiveEvents();
    c.default_event = "Click";
    return c;
  }();
  return info;
}

KESTU_REGISTER_CONTROL(Frame)

void Frame::Draw() {
  Cls();
  const int width = PixelWidth();
  const int height = PixelHeight();
  const RECT text = MeasureCaption(RECT{kCaptionLeft, 0, width, height}, dt::kSingleLine);
  // The etched line runs through the middle of the caption's line.
  const int top = caption_.empty() ? 0 : (text.Bottom - text.Top) / 2;
  const auto f = [](int v) { return static_cast<float>(v); };
  Line(0, f(top), f(width - 2), f(height - 2), syscolor::kButtonShadow, LineKind::Box);
  Line(1, f(top + 1), f(width - 1), f(height - 1), syscolor::k3DHighlight, LineKind::Box);
  if (caption_.empty()) return;
  Line(f(kCaptionLeft - kCaptionMargin), 0, f(text.Right + kCaptionMargin - 1), f(text.Bottom - 1),
       back_color_, LineKind::FilledBox);
  DrawCaption(text, dt::kSingleLine);
}

void Frame::PassFocusOn() {
  const std::vector<FormMember> members = FormControls();
  for (const FormMember& member : members) {
    if (IsInside(member, this, members) && FocusMember(member)) return;
  }
}

}  // namespace kestu
