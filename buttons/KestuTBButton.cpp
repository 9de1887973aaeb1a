#include "kestu/buttons/KestuTBButton.h"

#include "kestu/foundation/Keys.h"

namespace kestu {

namespace {

constexpr int16_t kSpace = 32;

}  // namespace

ClassInfo& KestuTBButton::Info() {
  static ClassInfo info = [] {
    ClassInfo c;
    c.name = "KestuTBButton";
    c.help =
        "A toolbar button with a picture and a caption. [Um botão de barra de ferramentas com "
        "figura e texto.]";
    c.default_width = 345;  // 23 x 22 pixels, the size it takes for 16 x 16 pictures
    c.default_height = 330;
    c.create = [] { return std::make_unique<KestuTBButton>(); };
    c.properties = SharedProperties();
    // Saved and read after every other key.
    c.properties.push_back(
        Field<KestuTBButton>("AutoSize", "Boolean", &KestuTBButton::auto_size_,
                             "Determines the auto size to draw the controls. (Determina o "
                             "tamanho automatico para desenhar o controle)",
                             OnSet::NotifyThenRedraw)
            .Saved(24));
    c.redraw = [](UserControl& button) { static_cast<KestuTBButton&>(button).Redraw(); };
    c.events = SharedEvents();
    c.enums = SharedEnums();
    c.default_event = "Click";
    c.property_pages = {"ppgButtons"};
    // The toolbox picture: a flat button, its thin frame raised by the pointer, with a folder
    // picture.
    // clang-format off
    c.toolbox_icon = {
        "................",
        ".wwwwwwwwwwwwwg.",
        ".wllllllllllllg.",
        ".wllllllllllllg.",
        ".wllkkkkllllllg.",
        ".wlkYYYYkkkkklg.",
        ".wlkwwwwwwwwklg.",
        ".wlkYYYYYYYYklg.",
        ".wlkYYYYYYYYklg.",
        ".wlkYYYYYYYYklg.",
        ".wlkYYYYYYYYklg.",
        ".wlkYYYYYYYYklg.",
        ".wlkkkkkkkkkklg.",
        ".wllllllllllllg.",
        ".gggggggggggggg.",
        "................",
    };
    // clang-format on
    return c;
  }();
  return info;
}

KESTU_REGISTER_CONTROL(KestuTBButton)

// A new toolbar button is flat, and takes neither the container's font
// nor its name as caption: it has no initialisation of its own.
KestuTBButton::KestuTBButton()
    : PictureButton(ButtonRules{.takes_focus = false, .creation_style = ccFlat}) {}

void KestuTBButton::BeforeDrawing() {
  if (!auto_size_) return;
  // Any other PictSize leaves the size alone.
  if (PictSize() == cc16x16) SetSize(Int16(23) * PixelX(), Int16(22) * PixelY());
  if (PictSize() == cc32x32) SetSize(Int16(37) * PixelX(), Int16(37) * PixelY());
}

// At rest a flat toolbar button shows no frame on a running form, but an
// outline while the form is designed, so that it can be seen and picked.
ButtonLook KestuTBButton::FramesLook() const {
  if (draw_state_ == 1) return ButtonLook::Down;
  const bool flat = Style() != cc3D;
  if (hover_ && PointerInside()) return flat ? ButtonLook::IdleFlat : ButtonLook::Hot;
  if (!flat) return ButtonLook::IdleRaised;
  return AmbientUserMode() ? ButtonLook::Bare : ButtonLook::IdleFlat;
}

// ---- Space and the pointer: no focus, and Click before the button is up ----

void KestuTBButton::UserControl_KeyDown(int16_t& key_code, int16_t& /*shift*/) {
  if (key_code != kSpace || pressed_) return;
  pressed_ = true;
  draw_state_ = 1;
  Redraw();
}

void KestuTBButton::UserControl_KeyUp(int16_t& key_code, int16_t& shift) {
  if (key_code != kSpace) return;
  pressed_ = false;
  tip_ticks_ = 0;
  HideTip();
  SetTipsAllowed(false);
  // The click comes while the button is still drawn down: the reverse of
  // the command button, on purpose.
  if (shift == 0 && !RaiseEvent(Click)) return;
  draw_state_ = 0;
  Redraw();
  SetTipsAllowed(true);
}

void KestuTBButton::UserControl_MouseDown(int16_t& button, int16_t& /*shift*/, float& /*x*/,
                                          float& /*y*/) {
  tip_ticks_ = 0;
  WithdrawTip();
  // The capture stays: the next move is taken as the pointer coming over
  // the button again.
  hover_ = false;
  if (button != button::kLeft) return;
  int16_t space = kSpace;
  int16_t no_shift = 0;
  UserControl_KeyDown(space, no_shift);
}

// Every left release clicks, wherever it is and whatever keys are held.
void KestuTBButton::UserControl_MouseUp(int16_t& button, int16_t& /*shift*/, float& /*x*/,
                                        float& /*y*/) {
  hover_ = false;
  if (button != button::kLeft) return;
  int16_t space = kSpace;
  int16_t no_shift = 0;
  UserControl_KeyUp(space, no_shift);
}

}  // namespace kestu
