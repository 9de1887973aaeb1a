#include "kestu/foundation/EditBox.h"

#include <cmath>
#include <optional>

#include "kestu/foundation/Bevel.h"
#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/KestuControlsAPI.h"
#include "kestu/foundation/Keys.h"

namespace kestu {

namespace {

// An OLE_COLOR (0x00BBGGRR) with the bits of a resolved pixel (0x00RRGGBB).
OLE_COLOR AsOleColor(Rgb rgb) {
  return RGB(static_cast<uint8_t>(rgb >> 16), static_cast<uint8_t>(rgb >> 8),
             static_cast<uint8_t>(rgb));
}

}  // namespace

EditBoxEvents EditBoxEvents::With(std::string changed_help) {
  const std::vector<ParamInfo> key = KeyEventParams();
  const std::vector<ParamInfo> mouse = MouseEventParams();
  return EditBoxEvents{
      {"Click",
       {},
       "Occurs when the user clicks the box. [Ocorre quando o usuário clica na caixa.]"},
      {"DblClick",
       {},
       "Occurs when the user double-clicks the box. [Ocorre quando o usuário clica duas vezes na "
       "caixa.]"},
      {"Changed", {}, std::move(changed_help)},
      {"KeyDown", key,
       "Occurs when the user presses a key while the box has the focus. [Ocorre quando o usuário "
       "pressiona uma tecla com o foco na caixa.]"},
      {"KeyPress", KeyPressEventParams(),
       "Occurs when the user presses and releases a character key. [Ocorre quando o usuário "
       "pressiona e solta uma tecla de caractere.]"},
      {"KeyUp", key,
       "Occurs when the user releases a key while the box has the focus. [Ocorre quando o "
       "usuário solta uma tecla com o foco na caixa.]"},
      {"MouseDown", mouse,
       "Occurs when the user presses a mouse button over the box. [Ocorre quando o usuário "
       "pressiona um botão do mouse sobre a caixa.]"},
      {"MouseMove", mouse,
       "Occurs when the user moves the mouse over the box. [Ocorre quando o usuário move o mouse "
       "sobre a caixa.]"},
      {"MouseUp", mouse,
       "Occurs when the user releases a mouse button over the box. [Ocorre quando o usuário "
       "solta um botão do mouse sobre a caixa.]"},
  };
}

std::vector<const EventInfo*> EditBoxEvents::InOrder() const {
  return {&click,  &dbl_click,  &changed,    &key_down, &key_press,
          &key_up, &mouse_down, &mouse_move, &mouse_up};
}

EditBox::EditBox(const EditBoxEvents& events)
    : Click(events.click),
      DblClick(events.dbl_click),
      Changed(events.changed),
      KeyDown(events.key_down),
      KeyPress(events.key_press),
      KeyUp(events.key_up),
      MouseDown(events.mouse_down),
      MouseMove(events.mouse_move),
      MouseUp(events.mouse_up),
      menu_{{{"&Recortar"}, {"&Copiar"}, {"Co&lar"}, {"&Excluir"}, {"-"}, {"&Selecionar Tudo"}}} {}

void EditBox::CapturePixelSize() {
  pixel_x_ = Int16::From(ScreenTwipsPerPixelX());
  pixel_y_ = Int16::From(ScreenTwipsPerPixelY());
}

// ---- Focus ----

void EditBox::XFocus() {
  GotFocusRoutine();
  KestuControlsAPI::SetFocus(hWnd());
}

void EditBox::UserControl_Terminate() {
  KestuControlsAPI::HideCaret(hWnd());
  KestuControlsAPI::DestroyCaret();
}

void EditBox::GotFocusRoutine() {
  KestuControlsAPI::EnableWindow(hWnd(), enabled_ ? 1 : 0);
  has_focus_ = true;
  if (AmbientUserMode()) {
    const int16_t caret_height = CInt(TextHeight("M") / pixel_y_.value());
    KestuControlsAPI::CreateCaret(hWnd(), 0, 1, caret_height);
  }
  Redraw();
  FocusArrived();
}

void EditBox::LostFocusRoutine() {
  if (AmbientUserMode()) KestuControlsAPI::HideCaret(hWnd());
  has_focus_ = false;
  Redraw();
}

void EditBox::PeriodicCheck() {
  // When the form is active again, its focused control gets its caret and
  // selection back through XFocus.
  if (enabled_ && FormStoppedBeingActive(form_active_, form_window_)) LostFocusRoutine();
}

void EditBox::RaiseChanged() {
  DoEvents();
  if (!RaiseEvent(Changed)) return;
  DoEvents();
}

// ---- Keys and mouse: the events, and the context menu ----

void EditBox::UserControl_KeyUp(int16_t& key_code, int16_t& shift) {
  // Nothing follows the event, so whether the box survived it does not matter.
  static_cast<void>(RaiseEvent(KeyUp, key_code, shift));
}

void EditBox::UserControl_MouseDown(int16_t& button, int16_t& shift, float& x, float& y) {
  static_cast<void>(RaiseEvent(MouseDown, button, shift, x, y));
}

void EditBox::UserControl_MouseMove(int16_t& button, int16_t& shift, float& x, float& y) {
  static_cast<void>(RaiseEvent(MouseMove, button, shift, x, y));
}

void EditBox::UserControl_MouseUp(int16_t& button, int16_t& shift, float& x, float& y) {
  if (!RaiseEvent(MouseUp, button, shift, x, y)) return;
  if (button != button::kRight || !AmbientUserMode()) return;
  UpdateMenu();
  if (const std::optional<int> chosen = PopupMenu(menu_)) Menu_Click(*chosen);
}

void EditBox::UserControl_Click() {
  static_cast<void>(RaiseEvent(Click));
}

void EditBox::UserControl_DblClick() {
  if (!RaiseEvent(DblClick)) return;
  DoubleClicked();
}

// ---- Drawing ----

int EditBox::ToPixelsX(float twips) const {
  return static_cast<int>(std::lround(twips / pixel_x_.value()));
}

int EditBox::ToPixelsY(float twips) const {
  return static_cast<int>(std::lround(twips / pixel_y_.value()));
}

EditBox::Face EditBox::DrawBackground() {
  const int shadow_px = shadow_ ? 5 : 0;
  const Face face{ToPixelsX(ScaleWidth()) - 1 - shadow_px,
                  ToPixelsY(ScaleHeight()) - 1 - shadow_px};
  if (shadow_) {
    // The corners the shadow leaves free take the usual form colour.
    UserControl::SetBackColor(syscolor::kButtonFace);
    Cls();
    Line(PixelsX(5), PixelsY(5), ScaleWidth(), ScaleHeight(), shadow_color_, LineKind::FilledBox);
  }
  Line(0, 0, PixelsX(face.right_px), PixelsY(face.bottom_px), back_color_, LineKind::FilledBox);
  return face;
}

void EditBox::DrawBorder(const Face& face) {
  const float right = PixelsX(face.right_px);
  const float bottom = PixelsY(face.bottom_px);
  if (!border_3d_) {
    Line(0, 0, right, bottom, syscolor::kButtonShadow, LineKind::Box);
    return;
  }
  // Sunken: two bevels, dark above and to the left, light below and right.
  const float px = PixelsX(1);
  const float py = PixelsY(1);
  Bevel(*this, 0, 0, right, bottom, syscolor::kButtonShadow, syscolor::k3DHighlight, px);
  Bevel(*this, px, py, right - px, bottom - py, syscolor::k3DDarkShadow, syscolor::k3DLight, px);
}

void EditBox::DrawSelectionPlate(float left, float top, float right, float bottom) {
  // A raised plate in the button face colour under the text.
  Line(left, top, right, bottom, syscolor::kButtonFace, LineKind::FilledBox);
  Bevel(*this, left, top, right, bottom, syscolor::k3DHighlight, syscolor::kButtonShadow,
        PixelsX(1));
}

void EditBox::InvertSelection(float left, float top, float right, float bottom) {
  // XOR with (face ^ highlight): the face turns exactly the highlight
  // colour and the text takes the matching contrast colour.
  const Rgb pen = ResolveColor(back_color_) ^ ResolveColor(syscolor::kHighlight);
  SetDrawMode(static_cast<int16_t>(RasterOp::XorPen));
  Line(left, top, right, bottom, AsOleColor(pen), LineKind::FilledBox);
  SetDrawMode(static_cast<int16_t>(RasterOp::CopyPen));
}

void EditBox::PlaceCaret(int x_px, int y_px) {
  KestuControlsAPI::SetCaretPos(x_px, y_px);
  KestuControlsAPI::ShowCaret(hWnd());
}

}  // namespace kestu
