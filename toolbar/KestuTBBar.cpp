#include "kestu/toolbar/KestuTBBar.h"

#include "kestu/foundation/Bevel.h"
#include "kestu/foundation/Keys.h"

namespace kestu {

namespace {

struct BarEvents {
  std::vector<ParamInfo> button{{"Button", "Integer", VarType::Integer, false}};
  std::vector<ParamInfo> move{{"Button", "Integer", VarType::Integer, false},
                              {"x", "Single", VarType::Single, false},
                              {"y", "Single", VarType::Single, false}};
  std::vector<ParamInfo> press{{"Button", "Integer", VarType::Integer, true},
                               {"x", "Single", VarType::Single, true},
                               {"y", "Single", VarType::Single, true}};
  EventInfo left_lines_click{"LeftLinesClick", button,
                             "Occurs when the user clicks the grip lines. [Ocorre quando o usuário "
                             "clica nas linhas de arraste.]"};
  EventInfo left_lines_mouse_move{
      "LeftLinesMouseMove", move,
      "Occurs when the pointer moves over the grip lines; Button 5 ends a drag begun on them. "
      "[Ocorre quando o ponteiro se move sobre as linhas de arraste; Button 5 encerra um "
      "arraste iniciado nelas.]"};
  EventInfo click{"Click", button,
                  "Occurs when the user clicks the bar outside the grip lines. [Ocorre quando o "
                  "usuário clica na barra fora das linhas de arraste.]"};
  EventInfo dbl_click{"DblClick",
                      {},
                      "Occurs when the user double-clicks the bar. [Ocorre quando o usuário clica "
                      "duas vezes na barra.]"};
  EventInfo mouse_move{"MouseMove", move,
                       "Occurs when the pointer moves over the bar. [Ocorre quando o ponteiro se "
                       "move sobre a barra.]"};
  EventInfo mouse_down{"MouseDown", press,
                       "Occurs when the user presses a mouse button over the bar. [Ocorre quando "
                       "o usuário pressiona um botão do mouse sobre a barra.]"};
  EventInfo mouse_up{"MouseUp", press,
                     "Occurs when the user releases a mouse button over the bar. [Ocorre quando o "
                     "usuário solta um botão do mouse sobre a barra.]"};
  EventInfo resize{"Resize",
                   {},
                   "Occurs when the bar has been drawn at its size. [Ocorre quando a barra foi "
                   "desenhada no seu tamanho.]"};
};

const BarEvents& Events() {
  static const BarEvents events;
  return events;
}

}  // namespace

ClassInfo& KestuTBBar::Info() {
  static ClassInfo info = [] {
    ClassInfo c;
    c.name = "KestuTBBar";
    c.help =
        "A toolbar strip with a raised frame and grip lines, holding toolbar buttons. [Uma "
        "barra de ferramentas com moldura em relevo e linhas de arraste, que contém botões.]";
    c.default_width = 4800;
    c.default_height = 390;
    c.is_container = true;
    c.create = [] { return std::make_unique<KestuTBBar>(); };
    using B = KestuTBBar;
    constexpr OnSet kDraws = OnSet::NotifyThenRedraw;
    c.properties = {
        Field<B>("Light3DColor", "OLE_COLOR", &B::light_3d_color_,
                 "Returns/sets the color of the lit edges. [Retorna/define a cor das bordas "
                 "iluminadas.]",
                 kDraws)
            .Saved()
            .Defaults(syscolor::k3DHighlight),
        Field<B>("Shadow3DColor", "OLE_COLOR", &B::shadow_3d_color_,
                 "Returns/sets the color of the shaded edges. [Retorna/define a cor das bordas "
                 "sombreadas.]",
                 kDraws)
            .Saved()
            .Defaults(syscolor::kButtonShadow),
        Field<B>("BackColor", "OLE_COLOR", &B::back_color_,
                 "Returns/sets the background color of the bar. [Retorna/define a cor de fundo "
                 "da barra.]",
                 kDraws)
            .Saved()
            .Defaults(syscolor::kButtonFace),
        Field<B>("ShowLeftLines", "Boolean", &B::show_left_lines_,
                 "Returns/sets whether the grip lines are drawn and answer the pointer. "
                 "[Retorna/define se as linhas de arraste são desenhadas e respondem ao "
                 "ponteiro.]",
                 kDraws)
            .Saved()
            .Defaults(true),
        Field<B, int32_t>("AutoHeight", "ccSizeBar", &B::auto_height_,
                          "Returns/sets the height the bar takes for its buttons' pictures. "
                          "[Retorna/define a altura que a barra assume para as figuras dos "
                          "botões.]",
                          kDraws)
            .Saved()
            .Defaults(ccBarTo16x16),
        Field<B>("ShowTwoLeftLines", "Boolean", &B::show_two_left_lines_,
                 "Returns/sets whether a second grip line is drawn. [Retorna/define se uma "
                 "segunda linha de arraste é desenhada.]",
                 kDraws)
            .Saved()
            .Defaults(true),
    };
    c.redraw = [](UserControl& bar) { static_cast<B&>(bar).ResizeRoutine(); };
    const BarEvents& e = Events();
    c.events = {&e.left_lines_click,
                &e.left_lines_mouse_move,
                &e.click,
                &e.dbl_click,
                &e.mouse_move,
                &e.mouse_down,
                &e.mouse_up,
                &e.resize};
    c.enums = {
        {"ccSizeBar",
         {{"ccNone", ccNone}, {"ccBarTo16x16", ccBarTo16x16}, {"ccBarTo32x32", ccBarTo32x32}}}};
    c.default_event = "LeftLinesClick";
    // The toolbox picture: a raised strip with the two grip lines at its left and two pictures.
    // clang-format off
    c.toolbox_icon = {
        "................",
        "................",
        "................",
        "wwwwwwwwwwwwwwwg",
        "wllllllllllllllg",
        "wlwglwgllllllllg",
        "wlwglwglblblRRRg",
        "wlwglwglbbblRRRg",
        "wlwglwglbbblRRRg",
        "wlwglwglbbblRlRg",
        "wlwglwgllllllllg",
        "wllllllllllllllg",
        "gggggggggggggggg",
        "................",
        "................",
        "................",
    };
    // clang-format on
    return c;
  }();
  return info;
}

KESTU_REGISTER_CONTROL(KestuTBBar)

KestuTBBar::KestuTBBar()
    : LeftLinesClick(Events().left_lines_click),
      LeftLinesMouseMove(Events().left_lines_mouse_move),
      Click(Events().click),
      DblClick(Events().dbl_click),
      MouseMove(Events().mouse_move),
      MouseDown(Events().mouse_down),
      MouseUp(Events().mouse_up),
      Resize(Events().resize) {}

void KestuTBBar::UserControl_Initialize() {
  pixel_width_ = Int16::From(ScreenTwipsPerPixelX());
  pixel_height_ = Int16::From(ScreenTwipsPerPixelY());
}

// A bar placed on a form docks to its top.
void KestuTBBar::UserControl_InitProperties() {
  UserControl::UserControl_InitProperties();
  SetExtender("Align", Variant(int16_t{1}));
}

void KestuTBBar::UserControl_ReadProperties(PropertyBag& bag) {
  UserControl::UserControl_ReadProperties(bag);
  UserControl::SetBackColor(back_color_);
}

// ---- Drawing ----

// Runs after every property assignment as well as on the surface's Resize.
// Setting the height may run it again from inside itself; it comes to the
// same picture, and each run ends with its own Resize.
void KestuTBBar::ResizeRoutine() {
  UserControl::SetBackColor(back_color_);
  Cls();
  Draw();
  static_cast<void>(RaiseEvent(Resize));
}

void KestuTBBar::Draw() {
  SizeToRow();
  DrawGrip();
  const Int16 right = Int16::FromReal(Width()) - pixel_width_;
  const Int16 bottom = Int16::FromReal(Height()) - pixel_height_;
  RaisedRectangle(*this, 0, 0, right, bottom, light_3d_color_, shadow_3d_color_, pixel_width_,
                  pixel_height_);
}

// A row of buttons 22 or 37 pixels high, with two pixels above and below.
void KestuTBBar::SizeToRow() {
  if (auto_height_ == ccNone) return;
  const Int16 row = auto_height_ == ccBarTo16x16 ? Int16(22 + 4) : Int16(37 + 4);
  SetHeight(row * pixel_height_);
}

void KestuTBBar::DrawGrip() {
  if (!show_left_lines_) return;
  const Int16 bottom = Int16::FromReal(Height() - (Int16(3) * pixel_height_).value());
  const Int16 top = Int16(2) * pixel_height_;
  RaisedRectangle(*this, Int16(4) * pixel_width_, top, Int16(6) * pixel_width_, bottom,
                  light_3d_color_, shadow_3d_color_, pixel_width_, pixel_height_);
  if (!show_two_left_lines_) return;
  RaisedRectangle(*this, Int16(7) * pixel_width_, top, Int16(9) * pixel_width_, bottom,
                  light_3d_color_, shadow_3d_color_, pixel_width_, pixel_height_);
}

// ---- The pointer ----

// Nine pixels wide, edge included, even with a single grip line drawn.
bool KestuTBBar::InGrip(float x) const {
  return show_left_lines_ && x <= static_cast<float>((Int16(9) * pixel_width_).value());
}

void KestuTBBar::UserControl_MouseDown(int16_t& button, int16_t& /*shift*/, float& x, float& y) {
  if (!RaiseEvent(MouseDown, button, x, y)) return;
  if (button == button::kLeft && InGrip(x)) grip_pressed_ = true;
}

void KestuTBBar::UserControl_MouseMove(int16_t& button, int16_t& /*shift*/, float& x, float& y) {
  if (InGrip(x) && !RaiseEvent(LeftLinesMouseMove, button, x, y)) return;
  static_cast<void>(RaiseEvent(MouseMove, button, x, y));
}

// Only the left button clicks. A release after a press on the grip, with
// any button and anywhere, ends the grip drag with the fixed code 5.
void KestuTBBar::UserControl_MouseUp(int16_t& button, int16_t& /*shift*/, float& x, float& y) {
  if (!RaiseEvent(MouseUp, button, x, y)) return;
  if (button == button::kLeft) {
    const bool clicked = InGrip(x) ? RaiseEvent(LeftLinesClick, button) : RaiseEvent(Click, button);
    if (!clicked) return;
  }
  if (!grip_pressed_) return;
  int16_t drag_ended = kGripDragEnded;
  grip_pressed_ = false;
  static_cast<void>(RaiseEvent(LeftLinesMouseMove, drag_ended, x, y));
}

void KestuTBBar::UserControl_DblClick() {
  static_cast<void>(RaiseEvent(DblClick));
}

}  // namespace kestu
