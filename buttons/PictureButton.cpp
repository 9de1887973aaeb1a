#include "kestu/buttons/PictureButton.h"

#include <cmath>

#include "kestu/foundation/KestuControlsAPI.h"
#include "kestu/foundation/Keys.h"
#include "kestu/foundation/Text.h"

namespace kestu {

namespace {

constexpr int16_t kSpace = 32;

// Int of a real quotient, kept as the host keeps it: 16 bits, error 6
// past them.
Int16 Floor16(double value) {
  if (!(std::abs(value) < 1e9)) throw RuntimeError(err::kOverflow);
  return Int16::From(static_cast<int64_t>(std::floor(value)));
}

// A real assigned to a 16-bit field: rounded half to even.
Int16 Round16(double value) {
  return Int16::FromReal(value);
}

}  // namespace

// The caption as the layout measures it: only its first "&" is taken out,
// and a doubled one is no escape here, unlike in the drawn text. Deliberate.
struct PictureButton::CaptionText {
  std::string text;
  bool has_ampersand = false;
  std::string access_key;
};

namespace {

struct ButtonEvents {
  EventInfo click{"Click",
                  {},
                  "Occurs when the user presses and releases the button. [Ocorre quando o "
                  "usuário pressiona e solta o botão.]"};
  EventInfo mouse_enter{"MouseEnter",
                        {},
                        "Occurs when the pointer comes over the button. [Ocorre quando o "
                        "ponteiro passa sobre o botão.]"};
  EventInfo mouse_exit{"MouseExit",
                       {},
                       "Occurs when the pointer leaves the button. [Ocorre quando o ponteiro "
                       "sai do botão.]"};
};

const ButtonEvents& Events() {
  static const ButtonEvents events;
  return events;
}

}  // namespace

std::vector<const EventInfo*> PictureButton::SharedEvents() {
  return {&Events().click, &Events().mouse_enter, &Events().mouse_exit};
}

PictureButton::PictureButton(const ButtonRules& rules)
    : Click(Events().click),
      MouseEnter(Events().mouse_enter),
      MouseExit(Events().mouse_exit),
      // A button that never takes the focus never has it refuse a click.
      has_focus_(!rules.takes_focus),
      rules_(rules) {}

void PictureButton::UserControl_Initialize() {
  pixel_x_ = Int16::From(ScreenTwipsPerPixelX());
  pixel_y_ = Int16::From(ScreenTwipsPerPixelY());
  fore_color_ = syscolor::kButtonText;
  back_color_ = syscolor::kButtonFace;
  focused_fr_color_ = RGB(0, 0, 255);
  focused_bk_color_ = syscolor::kButtonFace;
  light_color_in_ = syscolor::k3DLight;
  shadow_color_in_ = syscolor::kButtonShadow;
  light_color_out_ = syscolor::k3DHighlight;
  shadow_color_out_ = syscolor::k3DDarkShadow;
  style_ = rules_.creation_style;
  picture_px_ = 16;
  Layout();
  SetTipsAllowed(true);
}

void PictureButton::UserControl_ReadProperties(PropertyBag& bag) {
  UserControl::UserControl_ReadProperties(bag);
  KestuControlsAPI::EnableWindow(hWnd(), enabled_ ? 1 : 0);
  Redraw();
}

void PictureButton::UserControl_Show() {
  Redraw();
  form_window_ = KestuControlsAPI::GetActiveWindow();
}

// ---- Properties with setters of their own ----

void PictureButton::SetCaption(const std::string& caption) {
  caption_ = caption;
  PropertyChanged("Caption");
  Redraw();
}

void PictureButton::SetEnabled(bool enabled) {
  enabled_ = enabled;
  PropertyChanged("Enabled");
  KestuControlsAPI::EnableWindow(hWnd(), enabled ? 1 : 0);
  Redraw();
  KestuControlsAPI::ReleaseCapture();
  hover_ = false;
}

void PictureButton::SetFont(FontRef font) {
  font_ = font;
  if (font) UserControl::SetFont(std::move(font));
  PropertyChanged("Font");
  Redraw();
}

// ---- The layout pass ----

PictureButton::CaptionText PictureButton::MeasuredCaption() {
  const size_t ampersand = caption_.find('&');
  if (ampersand == std::string::npos) return {caption_, false, {}};
  CaptionText measured{caption_.substr(0, ampersand), true, {}};
  const std::string_view after = std::string_view(caption_).substr(ampersand + 1);
  measured.text.append(after);
  if (!after.empty()) {
    size_t end = 0;
    NextCodePoint(after, end);
    measured.access_key = std::string(after.substr(0, end));
  }
  return measured;
}

void PictureButton::Layout() {
  const bool has_picture = picture_ || disabled_picture_ || down_picture_ || focused_picture_;
  const CaptionText caption = MeasuredCaption();
  // An "&" at the very end leaves no access key; a caption without one
  // leaves the key it had.
  if (caption.has_ampersand) access_key_ = caption.access_key;
  picture_px_ = pict_size_ == cc16x16 ? 16 : 32;
  const Int16 pw = Int16(picture_px_) * pixel_x_;
  const Int16 ph = Int16(picture_px_) * pixel_y_;
  const double tw = TextWidth(caption.text);
  const double th = TextHeight(caption.text);
  const double sw = ScaleWidth();
  const double sh = ScaleHeight();
  if (!has_picture) {
    caption_y_ = Floor16((sh - th) / 2);
    caption_x_ = margin_ == 0 ? Floor16((sw - tw) / 2) : Int16(margin_) * pixel_x_;
  } else if (caption.text.empty()) {
    picture_y_ = Floor16((sh - ph.value()) / 2);
    picture_x_ = margin_ == 0 ? Floor16((sw - pw.value()) / 2) : Int16(margin_) * pixel_x_;
  } else {
    LayoutBoth(pw, ph, static_cast<float>(tw), static_cast<float>(th), static_cast<float>(sw),
               static_cast<float>(sh));
  }
}

// The picture beside or above the caption. The asymmetries are kept as
// saved forms were laid out with them: beside the caption the gap is one
// pixel wider than Distance and is measured with the vertical pixel, and
// under the picture the caption is centred as if two pixels wider.
void PictureButton::LayoutBoth(Int16 pw, Int16 ph, float tw, float th, float sw, float sh) {
  const Int16 gap_y = Int16(distance_) * pixel_y_;
  const Int16 gap_x = Int16(distance_) * pixel_x_;
  switch (pict_position_) {
    case ccTop:
    case ccBottom: {
      const double block = static_cast<double>(ph + gap_y) + th;
      const Int16 lead = margin_ == 0 ? Floor16((sh - block) / 2) : Int16(margin_) * pixel_y_;
      picture_x_ = Floor16((sw - pw.value()) / 2);
      if (pict_position_ == ccTop) {
        picture_y_ = lead;
        caption_y_ = Int16(picture_y_) + ph + gap_y;
        caption_x_ = Floor16((sw - tw) / 2);
      } else {
        caption_y_ = lead;
        caption_x_ = Floor16((sw - (tw + 2 * pixel_y_.value())) / 2);
        picture_y_ = Round16(caption_y_ + th + gap_y.value());
      }
      return;
    }
    case ccLeft:
    case ccRight: {
      const double block = tw + static_cast<double>(gap_x + pw);
      const Int16 lead = margin_ == 0 ? Floor16((sw - block) / 2) : Int16(margin_) * pixel_x_;
      const Int16 gap_beside = (Int16(distance_) + Int16(1)) * pixel_y_;
      picture_y_ = Floor16((sh - ph.value()) / 2);
      caption_y_ = Floor16((sh - th) / 2);
      if (pict_position_ == ccLeft) {
        picture_x_ = lead;
        caption_x_ = Int16(picture_x_) + Int16(picture_px_) * pixel_y_ + gap_beside;
      } else {
        caption_x_ = lead;
        picture_x_ = Round16(caption_x_ + tw + gap_beside.value());
      }
      return;
    }
    default:
      return;  // any other position places nothing new, and draws where it was
  }
}

// ---- The drawing routine ----

void PictureButton::Redraw() {
  BeforeDrawing();
  // The pointer's look sets the font before the caption is measured, so
  // the layout follows FocusedBold and FocusedUnderline.
  const bool was_bold = FontBold();
  const bool was_underlined = FontUnderline();
  const bool hot = active_border_ && (draw_state_ == 1 || hover_);
  if (hot && focused_bold_) SetFontBold(true);
  if (hot && focused_underline_) SetFontUnderline(true);
  Layout();
  Draw();
  SetFontBold(was_bold);
  SetFontUnderline(was_underlined);
}

void PictureButton::Draw() {
  // Pressed but not focused (a right press elsewhere): the old image stays.
  if (!has_focus_ && draw_state_ == 1) return;
  if (DrawsFocus()) is_default_ = Container().HasAmbient() && AmbientDisplayAsDefault();
  // FocusedBKColor is kept and saved but never painted: deliberate.
  UserControl::SetBackColor(back_color_);
  Cls();
  DrawCaption(active_border_ && (draw_state_ == 1 || hover_));
  DrawPicture();
  const ButtonExtent extent{ScaleWidth(), ScaleHeight(), static_cast<float>(pixel_x_.value()),
                            static_cast<float>(pixel_y_.value())};
  DrawButtonFrames(*this, FramesLook(), FrameColors(), extent, enabled_);
  if (!enabled_) DimPicture();
  if (DrawsFocus() && has_focus_ && enabled_) DrawFocusRectangle();
}

ButtonLook PictureButton::FramesLook() const {
  if (draw_state_ == 1) return ButtonLook::Down;
  if (has_focus_ || is_default_ || hover_) return ButtonLook::Hot;
  return style_ != cc3D ? ButtonLook::IdleFlat : ButtonLook::IdleRaised;
}

ButtonFrameColors PictureButton::FrameColors() const {
  return {light_color_out_, shadow_color_out_, light_color_in_, shadow_color_in_};
}

void PictureButton::DrawCaption(bool hot) {
  const double left = static_cast<double>(caption_x_) / pixel_x_.value();
  const double top = static_cast<double>(caption_y_) / pixel_y_.value();
  const auto draw_at = [&](int offset) {
    const int32_t x = CLng(left + offset);
    const int32_t y = CLng(top + offset);
    RECT at{x, y, x, y};
    KestuControlsAPI::DrawTextA(hDC(), caption_, -1, at, dt::kNoClip);
  };
  if (!enabled_) {
    // Engraved: a light copy one pixel down and right, under the shadow.
    UserControl::SetForeColor(light_color_out_);
    draw_at(1);
    UserControl::SetForeColor(shadow_color_in_);
  } else {
    UserControl::SetForeColor(hot ? focused_fr_color_ : fore_color_);
  }
  draw_at(draw_state_ == 1 ? 1 : 0);
}

// The picture for the state, and whether it is one of the two pressed
// pictures whose downward shift is a horizontal pixel (kept as it is).
const PictureRef* PictureButton::PictureForLook(bool& shifted_by_horizontal_pixel) const {
  shifted_by_horizontal_pixel = false;
  if (draw_state_ == 1) {
    for (const PictureRef* pressed : {&down_picture_, &focused_picture_}) {
      if (*pressed) {
        shifted_by_horizontal_pixel = true;
        return pressed;
      }
    }
    return picture_ ? &picture_ : nullptr;
  }
  if (!enabled_) {
    if (disabled_picture_) return &disabled_picture_;
  } else if (hover_ && focused_picture_) {
    return &focused_picture_;
  }
  return picture_ ? &picture_ : nullptr;
}

void PictureButton::DrawPicture() {
  bool shifted_by_horizontal_pixel = false;
  const PictureRef* shown = PictureForLook(shifted_by_horizontal_pixel);
  if (!shown) return;
  Int16 x = picture_x_;
  Int16 y = picture_y_;
  if (draw_state_ == 1) {
    x += pixel_x_;
    y += shifted_by_horizontal_pixel ? pixel_x_ : pixel_y_;
  }
  const float width = static_cast<float>((Int16(picture_px_) * pixel_x_).value());
  const float height = static_cast<float>((Int16(picture_px_) * pixel_y_).value());
  PaintPicture(**shown, x, y, width, height);
}

// Every second pixel of the picture, both ways, in the face colour. The
// bounds are inclusive, so the grid reaches one pixel past the picture's
// right and bottom edges: deliberate.
void PictureButton::DimPicture() {
  if (!picture_ || disabled_picture_) return;
  for (int i = 0; i <= picture_px_; i += 2) {
    for (int j = 0; j <= picture_px_; j += 2) {
      PSet(Int16(picture_x_) + Int16::From(i) * pixel_x_,
           Int16(picture_y_) + Int16::From(j) * pixel_y_, back_color_);
    }
  }
}

void PictureButton::DrawFocusRectangle() {
  const double width_px = ScaleWidth() / pixel_x_.value();
  const double height_px = ScaleHeight() / pixel_y_.value();
  SetScaleMode(scale::kPixels);
  const RECT inset{4, 4, CLng(width_px - 4), CLng(height_px - 4)};
  KestuControlsAPI::DrawFocusRect(hDC(), inset);
  SetScaleMode(scale::kTwips);
}

// ---- The state machine: focus, Space, pointer, access key ----

void PictureButton::GotFocusRoutine() {
  has_focus_ = true;
  Redraw();
}

void PictureButton::LostFocusRoutine() {
  has_focus_ = false;
  pressed_ = false;
  draw_state_ = 0;
  Redraw();
}

void PictureButton::UserControl_KeyDown(int16_t& key_code, int16_t& /*shift*/) {
  if (key_code != kSpace) return;  // Enter and the others are the form's
  mouse_held_ = false;
  if (pressed_) return;
  pressed_ = true;
  draw_state_ = 1;
  Redraw();
  DoEvents();
}

void PictureButton::UserControl_KeyUp(int16_t& key_code, int16_t& shift) {
  if (key_code != kSpace) return;
  pressed_ = false;
  mouse_held_ = false;
  WithdrawTip();
  SetTipsAllowed(false);
  draw_state_ = 0;
  Redraw();
  DoEvents();
  // A Space released with Shift, Ctrl or Alt held does not click, on purpose.
  if (shift == 0 && has_focus_ && !RaiseEvent(Click)) return;
  SetTipsAllowed(true);
}

void PictureButton::UserControl_MouseDown(int16_t& button, int16_t& /*shift*/, float& /*x*/,
                                          float& /*y*/) {
  if (enabled_ && rules_.takes_focus) KestuControlsAPI::SetFocus(hWnd());
  mouse_held_ = true;
  WithdrawTip();
  tip_ticks_ = 0;
  ReleaseHover();
  if (pressed_) return;
  pressed_ = true;
  // A right or middle press marks the button pressed without drawing it down.
  if (button != button::kLeft) return;
  draw_state_ = 1;
  Redraw();
  DoEvents();
}

void PictureButton::UserControl_MouseUp(int16_t& button, int16_t& shift, float& /*x*/,
                                        float& /*y*/) {
  mouse_held_ = false;
  ReleaseHover();
  pressed_ = false;
  draw_state_ = 0;
  Redraw();
  DoEvents();
  if (button != button::kLeft) return;
  WithdrawTip();
  // Where the pointer was released is not asked: a left release outside
  // still clicks a focused button, and a modifier held never clicks.
  static_cast<void>(ClickWithoutTips(shift == 0 && has_focus_));
}

void PictureButton::UserControl_MouseMove(int16_t& button, int16_t& /*shift*/, float& x, float& y) {
  const bool inside = x >= 0 && x <= ScaleWidth() && y >= 0 && y <= ScaleHeight();
  if (button == button::kLeft) {
    if (inside) {
      // Back over the button with the left button held: pressed again.
      int16_t space = kSpace;
      int16_t no_shift = 0;
      UserControl_KeyDown(space, no_shift);
    } else {
      pressed_ = false;
      draw_state_ = 0;
      Redraw();
    }
  }
  if (active_border_) {
    if (!hover_) {
      KestuControlsAPI::SetCapture(hWnd());
      hover_ = true;
      Redraw();
      if (!RaiseEvent(MouseEnter)) return;
    } else if (!inside) {
      WithdrawTip();
      ReleaseHover();
      Redraw();
      if (!RaiseEvent(MouseExit)) return;
    }
  }
  tip_ticks_ = 0;
}

void PictureButton::UserControl_AccessKeyPress(int16_t& /*key_ascii*/) {
  WithdrawTip();
  static_cast<void>(ClickWithoutTips(enabled_));
}

bool PictureButton::ClickWithoutTips(bool clicks) {
  // No tip may appear while the click's handlers run.
  SetTipsAllowed(false);
  if (clicks && !RaiseEvent(Click)) return false;
  SetTipsAllowed(true);
  return true;
}

void PictureButton::WithdrawTip() {
  tip_shown_ = false;
  HideTip();
}

void PictureButton::ReleaseHover() {
  hover_ = false;
  KestuControlsAPI::ReleaseCapture();
}

bool PictureButton::PointerInside() const {
  POINTAPI cursor;
  RECT window;
  KestuControlsAPI::GetCursorPos(cursor);
  KestuControlsAPI::GetWindowRect(hWnd(), window);
  return cursor.x >= window.Left && cursor.x < window.Right && cursor.y >= window.Top &&
         cursor.y < window.Bottom;
}

void PictureButton::PeriodicCheck() {
  // A button that never takes the focus neither gives the form's focused
  // control its focus back nor has a focus look to drop.
  if (enabled_ && FormStoppedBeingActive(form_active_, form_window_, rules_.takes_focus)) {
    if (rules_.takes_focus) LostFocusRoutine();
    pressed_ = false;
    ReleaseHover();
  }
  const bool inside = PointerInside();
  if (!inside && hover_) {
    ReleaseHover();
    Redraw();
  }
  if (!inside && mouse_held_ && pressed_) {
    int16_t left = button::kLeft;
    int16_t no_shift = 0;
    float origin_x = 0;
    float origin_y = 0;
    UserControl_MouseUp(left, no_shift, origin_x, origin_y);
  }
  if (!active_border_) return;
  // The tip shows on the third check in a row with the pointer resting
  // inside; a move starts the count again.
  if (KestuControlsAPI::GetActiveWindow() != HoldingFormWindow(form_window_)) tip_ticks_ = 0;
  tip_ticks_ = static_cast<int16_t>(std::min(tip_ticks_ + 1, 3));
  if (tip_ticks_ < 3 || !inside || tip_shown_) return;
  const std::string tip = Extender("ToolTipText").ToString();
  if (tip.empty()) return;
  tip_shown_ = true;
  ShowTip(tip);
}

// ---- The interface both buttons share ----

std::vector<PropertyInfo> PictureButton::SharedProperties() {
  using P = PictureButton;
  // Every setter notifies under the property's own name; most then lay the
  // button out again and draw it.
  constexpr OnSet kLaysOut = OnSet::NotifyThenRedraw;
  return {
      Property<P>("Caption", "String", &P::Caption, &P::SetCaption,
                  "Text displayed in the control. (Texto exibido no controle)")
          .Saved(&P::caption_, 1),
      Property<P>("Enabled", "Boolean", &P::Enabled, &P::SetEnabled,
                  "Enabled ou disabled the control focus. (Habilita ou desabilita o controle)")
          .Saved(&P::enabled_, 2),
      // Read before every other key. A loaded font is kept as Font but not
      // given to the surface until Font is assigned.
      Property<P>("Font", "StdFont", &P::Font, &P::SetFont, "Font object. (Fonte de caracteres)")
          .Saved(&P::font_, 3)
          .ReadAt(0),
      Field<P>("ForeColor", "OLE_COLOR", &P::fore_color_,
               "Foreground color. (Cor do primeiro plano - Texto)", kLaysOut)
          .Saved(4),
      Field<P>("BackColor", "OLE_COLOR", &P::back_color_,
               "Background color. (Cor do segundo plano - Fundo)", kLaysOut)
          .Saved(5),
      Field<P>("FocusedFRColor", "OLE_COLOR", &P::focused_fr_color_,
               "Focused foreground color. (Cor do primeiro plano ao ser focado)", OnSet::Notify)
          .Saved(6),
      Field<P>("FocusedBKColor", "OLE_COLOR", &P::focused_bk_color_,
               "Focused background color. (Cor do segundo plano ao ser focado)", OnSet::Notify)
          .Saved(7),
      Field<P>("LightColorIn", "OLE_COLOR", &P::light_color_in_,
               "Light color in 3D effect. (Cor da luz no efeito 3D)", kLaysOut)
          .Saved(8),
      Field<P>("ShadowColorIn", "OLE_COLOR", &P::shadow_color_in_,
               "Shadow color in 3D effect. (Cor da sombra no efeito 3D)", kLaysOut)
          .Saved(10),
      Field<P>("LightColorOut", "OLE_COLOR", &P::light_color_out_,
               "Light color in 3D effect. (Cor da luz no efeito 3D)", kLaysOut)
          .Saved(9),
      Field<P>("ShadowColorOut", "OLE_COLOR", &P::shadow_color_out_,
               "Shadow color in 3D effect. (Cor da sombra no efeito 3D)", kLaysOut)
          .Saved(11),
      Field<P>("Picture", "StdPicture", &P::picture_, "Default picture. (Figura padrão)", kLaysOut)
          .Saved(12),
      Field<P>("DisabledPicture", "StdPicture", &P::disabled_picture_,
               "Disabled picture. (Figura que será exibida quando o controle estiver "
               "desabilitado)",
               kLaysOut)
          .Saved(13),
      Field<P>("DownPicture", "StdPicture", &P::down_picture_,
               "Down picture (Figura que será exibida quando o controle estiver pressionado)",
               kLaysOut)
          .Saved(14),
      Field<P>("FocusedPicture", "StdPicture", &P::focused_picture_,
               "Focused picture. (Figura que será exibida ao ser focado)", kLaysOut)
          .Saved(15),
      Field<P>("PictSize", "ccPictSize", &P::pict_size_, "Picture size. (Tamanho da figura)",
               kLaysOut)
          .Saved(17),
      Field<P>("PictPosition", "ccPictPosition", &P::pict_position_,
               "Picture position. (Posição da figura)", kLaysOut)
          .Saved(16),
      Field<P>("Margin", "Integer", &P::margin_,
               "Initial margin to draw picture or caption. (Margem inicial para desenhar a "
               "figura ou texto)",
               kLaysOut)
          .Saved(18),
      Field<P>("Distance", "Integer", &P::distance_,
               "Distance between picture and caption. (Distância entre a figura e o texto)",
               kLaysOut)
          .Saved(19),
      Property<P>("hwnd", "Long", &P::hwnd, nullptr, ""),
      Field<P>("FocusedBold", "Boolean", &P::focused_bold_,
               "Focused font bold effect. (Deixa a fonte negritada ao ser focado)", kLaysOut)
          .Saved(20),
      Field<P>("FocusedUnderline", "Boolean", &P::focused_underline_,
               "Focused font underline effect. (Deixa a fonte sublinhada ao ser focado)", kLaysOut)
          .Saved(21),
      Field<P>("ActiveBorder", "Boolean", &P::active_border_,
               "Determines wich control is mouse sensible. (Determina se o controle é sensível "
               "ao mouse)",
               OnSet::Notify)
          .Saved(22),
      Field<P>("Style", "ccStyle", &P::style_, "Button style. (Estilo do botão)", kLaysOut)
          .Saved(23),
  };
}

std::vector<EnumInfo> PictureButton::SharedEnums() {
  return {{"ccPictSize", {{"cc16x16", cc16x16}, {"cc32x32", cc32x32}}},
          {"ccPictPosition",
           {{"ccTop", ccTop}, {"ccBottom", ccBottom}, {"ccLeft", ccLeft}, {"ccRight", ccRight}}},
          {"ccStyle", {{"cc3D", cc3D}, {"ccFlat", ccFlat}}}};
}

}  // namespace kestu
