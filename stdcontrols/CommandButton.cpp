#include "kestu/stdcontrols/CommandButton.h"

#include "kestu/foundation/Keys.h"

namespace kestu {

namespace {

const EventInfo& ClickInfo() {
  static const EventInfo click{"Click",
                               {},
                               "Occurs when the user presses and releases the button, or "
                               "presses its key. [Ocorre quando o usuário pressiona e solta o "
                               "botão, ou tecla o seu atalho.]"};
  return click;
}

// The frames of the classic push button: a white and black outer bevel, a
// light and grey inner one.
constexpr ButtonFrameColors kFrameColors{syscolor::k3DHighlight, syscolor::k3DDarkShadow,
                                         syscolor::k3DLight, syscolor::kButtonShadow};

// The focus rectangle keeps clear of the frames by this many pixels.
constexpr int kFocusInset = 4;

}  // namespace

ClassInfo& CommandButton::Info() {
  static ClassInfo info = [] {
    ClassInfo c;
    c.name = "CommandButton";
    c.help =
        "A push button that carries out a command when clicked. [Um botão que executa um "
        "comando quando clicado.]";
    c.default_width = 1215;
    c.default_height = 375;
    c.create = [] { return std::make_unique<CommandButton>(); };
    c.properties = SharedProperties(true);
    c.redraw = [](UserControl& button) { static_cast<CommandButton&>(button).Redraw(); };
    c.events = InputEventInfos({&ClickInfo()});
    c.default_event = "Click";
    return c;
  }();
  return info;
}

KESTU_REGISTER_CONTROL(CommandButton)

CommandButton::CommandButton() : Click(ClickInfo()) {}

// ---- Drawing ----

bool CommandButton::DisplaysAsDefault() const {
  return Site() && Container().HasAmbient() && AmbientDisplayAsDefault();
}

ButtonLook CommandButton::Look() const {
  if (ShowsPressed()) return ButtonLook::Down;
  if (has_focus_ || DisplaysAsDefault()) return ButtonLook::Hot;
  return ButtonLook::IdleRaised;
}

void CommandButton::Draw() {
  Cls();
  const int width = PixelWidth();
  const int height = PixelHeight();
  // Pressed, the caption sinks with the face: one pixel right and down.
  const int shift = ShowsPressed() ? 1 : 0;
  constexpr int32_t kFlags = dt::kCenter | dt::kVCenter | dt::kSingleLine;
  DrawCaption(RECT{shift, shift, width + shift, height + shift}, kFlags);
  const ButtonExtent pixels{static_cast<float>(width), static_cast<float>(height), 1.0F, 1.0F};
  DrawButtonFrames(*this, Look(), kFrameColors, pixels, enabled_);
  if (has_focus_ && enabled_) {
    KestuControlsAPI::DrawFocusRect(
        hDC(), RECT{kFocusInset, kFocusInset, width - kFocusInset, height - kFocusInset});
  }
}

// ---- The state machine ----

void CommandButton::UserControl_GotFocus() {
  has_focus_ = true;
  Redraw();
}

void CommandButton::UserControl_LostFocus() {
  has_focus_ = false;
  space_held_ = false;
  Redraw();
}

void CommandButton::UserControl_AmbientChanged(const std::string& property_name) {
  if (property_name == "DisplayAsDefault") Redraw();
}

void CommandButton::UserControl_KeyDown(int16_t& key_code, int16_t& shift) {
  if (!RaiseEvent(KeyDown, key_code, shift)) return;
  if (key_code != key::kSpace || space_held_ || shift != 0) return;
  space_held_ = true;
  Redraw();
}

void CommandButton::UserControl_KeyPress(int16_t& key_ascii) {
  static_cast<void>(RaiseEvent(KeyPress, key_ascii));
}

void CommandButton::UserControl_KeyUp(int16_t& key_code, int16_t& shift) {
  if (!RaiseEvent(KeyUp, key_code, shift)) return;
  if (key_code != key::kSpace || !space_held_) return;
  space_held_ = false;
  Redraw();
  static_cast<void>(RaiseEvent(Click));
}

void CommandButton::UserControl_MouseDown(int16_t& button, int16_t& shift, float& x, float& y) {
  if (button == button::kLeft && enabled_) KestuControlsAPI::SetFocus(hWnd());
  if (!RaiseEvent(MouseDown, button, shift, x, y)) return;
  if (button != button::kLeft) return;
  pointer_held_ = pointer_inside_held_ = true;
  Redraw();
}

void CommandButton::UserControl_MouseMove(int16_t& button, int16_t& shift, float& x, float& y) {
  if (!RaiseEvent(MouseMove, button, shift, x, y)) return;
  if (!pointer_held_) return;
  // Dragged off the button its face comes up again; back over it, down.
  const bool inside = x >= 0 && y >= 0 && x < Width() && y < Height();
  if (inside == pointer_inside_held_) return;
  pointer_inside_held_ = inside;
  Redraw();
}

void CommandButton::UserControl_MouseUp(int16_t& button, int16_t& shift, float& x, float& y) {
  if (!RaiseEvent(MouseUp, button, shift, x, y)) return;
  if (button != button::kLeft || !pointer_held_) return;
  pointer_held_ = pointer_inside_held_ = false;
  Redraw();
}

// The host calls it for a left press and release over the button.
void CommandButton::UserControl_Click() {
  static_cast<void>(RaiseEvent(Click));
}

void CommandButton::UserControl_AccessKeyPress(int16_t& key_ascii) {
  // Enter and Escape click the default and cancel button where the focus
  // is; the button's own access key moves the focus to it first.
  if (key_ascii != key::kEnter && key_ascii != key::kEscape) KestuControlsAPI::SetFocus(hWnd());
  static_cast<void>(RaiseEvent(Click));
}

}  // namespace kestu
