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
  if (HasFocus() || DisplaysAsDefault()) return ButtonLook::Hot;
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
  if (HasFocus() && enabled_) {
    KestuControlsAPI::DrawFocusRect(
        hDC(), RECT{kFocusInset, kFocusInset, width - kFocusInset, height - kFocusInset});
  }
}

// ---- The state machine ----

void CommandButton::UserControl_AmbientChanged(const std::string& property_name) {
  if (property_name == "DisplayAsDefault") Redraw();
}

void CommandButton::BeforePress(int16_t button) {
  if (button == button::kLeft && enabled_) KestuControlsAPI::SetFocus(hWnd());
}

}  // namespace kestu
