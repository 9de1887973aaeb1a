#include "kestu/decor/KestuPanel3D.h"

#include "kestu/foundation/Bevel.h"

namespace kestu {

ClassInfo& KestuPanel3D::Info() {
  static ClassInfo info = [] {
    ClassInfo c;
    c.name = "KestuPanel3D";
    c.help =
        "A panel framed by an outer and an inner 3D bevel. [Um painel emoldurado por um "
        "relevo 3D externo e um interno.]";
    c.default_width = 2400;
    c.default_height = 1200;
    c.is_container = true;
    c.create = [] { return std::make_unique<KestuPanel3D>(); };
    using P = KestuPanel3D;
    // Saved in the order of the ranks, as saved panels have it.
    constexpr OnSet kDraws = OnSet::NotifyThenRedraw;
    c.properties = {
        Field<P>("Light3DColor", "OLE_COLOR", &P::light_3d_color_,
                 "Returns/sets the color of the lit edges of the bevels. [Retorna/define a cor "
                 "das bordas iluminadas dos relevos.]",
                 kDraws)
            .Saved(2)
            .Defaults(syscolor::k3DHighlight),
        Field<P>("Shadow3DColor", "OLE_COLOR", &P::shadow_3d_color_,
                 "Returns/sets the color of the shaded edges of the bevels. [Retorna/define a "
                 "cor das bordas sombreadas dos relevos.]",
                 kDraws)
            .Saved(3)
            .Defaults(syscolor::kButtonShadow),
        Field<P>("BackColor", "OLE_COLOR", &P::back_color_,
                 "Returns/sets the background color of the panel. [Retorna/define a cor de "
                 "fundo do painel.]",
                 kDraws)
            .Saved(1)
            .Defaults(syscolor::kButtonFace),
        Field<P, int32_t>("BorderOut", "KST_BorderStyle", &P::border_out_,
                          "Returns/sets the style of the outer border. [Retorna/define o estilo "
                          "da borda externa.]",
                          kDraws)
            .Saved(5)
            .Defaults(KSTPN_Raised),
        Field<P, int32_t>("BorderIn", "KST_BorderStyle", &P::border_in_,
                          "Returns/sets the style of the inner border. [Retorna/define o estilo "
                          "da borda interna.]",
                          kDraws)
            .Saved(4)
            .Defaults(KSTPN_Lowered),
        Field<P>("BorderWidth", "Integer", &P::border_width_,
                 "Returns/sets the width of the border, in pixels. [Retorna/define a largura da "
                 "borda, em pixels.]",
                 kDraws)
            .Saved(6)
            .Defaults(5),
    };
    c.redraw = [](UserControl& panel) { static_cast<P&>(panel).Draw(); };
    c.enums = {{"KST_BorderStyle",
                {{"KSTPN_None", KSTPN_None},
                 {"KSTPN_Raised", KSTPN_Raised},
                 {"KSTPN_Lowered", KSTPN_Lowered}}}};
    // The toolbox picture: an outer raised and an inner lowered bevel around the face.
    // clang-format off
    c.toolbox_icon = {
        "................",
        "wwwwwwwwwwwwwwwg",
        "wllllllllllllllg",
        "wllllllllllllllg",
        "wllgggggggggwllg",
        "wllgllllllllwllg",
        "wllgllllllllwllg",
        "wllgllllllllwllg",
        "wllgllllllllwllg",
        "wllgllllllllwllg",
        "wllgllllllllwllg",
        "wllwwwwwwwwwwllg",
        "wllllllllllllllg",
        "wllllllllllllllg",
        "gggggggggggggggg",
        "................",
    };
    // clang-format on
    return c;
  }();
  return info;
}

KESTU_REGISTER_CONTROL(KestuPanel3D)

void KestuPanel3D::UserControl_Initialize() {
  pixel_width_ = Int16::From(ScreenTwipsPerPixelX());
  pixel_height_ = Int16::From(ScreenTwipsPerPixelY());
}

OLE_COLOR KestuPanel3D::TopLeftColor(int16_t style) const {
  // An absent bevel is still drawn, in the face colour. Only None and
  // Raised are tested: every other value draws lowered, on purpose.
  if (style == KSTPN_None) return back_color_;
  return style == KSTPN_Raised ? light_3d_color_ : shadow_3d_color_;
}

OLE_COLOR KestuPanel3D::BottomRightColor(int16_t style) const {
  if (style == KSTPN_None) return back_color_;
  return style == KSTPN_Raised ? shadow_3d_color_ : light_3d_color_;
}

void KestuPanel3D::Draw() {
  UserControl::SetBackColor(back_color_);
  Cls();
  const double width = Width();
  const double height = Height();

  // Corners are computed in twips from the real extent and rounded as the
  // host passes them to a 16-bit parameter.
  BevelRectangle(*this, 0, 0, Int16::FromReal(width - pixel_width_.value()),
                 Int16::FromReal(height - pixel_height_.value()), TopLeftColor(border_out_),
                 BottomRightColor(border_out_), pixel_width_);

  // No bound on BorderWidth: zero draws the inner bevel over the outer one,
  // and a width past the middle draws it inverted.
  const Int16 inset_x = Int16(border_width_) * pixel_width_;
  const Int16 inset_y = Int16(border_width_) * pixel_height_;
  BevelRectangle(*this, inset_x, inset_y,
                 Int16::FromReal(width - pixel_width_.value() - inset_x.value()),
                 Int16::FromReal(height - pixel_height_.value() - inset_y.value()),
                 TopLeftColor(border_in_), BottomRightColor(border_in_), pixel_width_);
}

}  // namespace kestu
