#include "kestu/decor/KestuPanel3D.h"

#include "kestu/foundation/Bevel.h"
#include "kestu/foundation/PropertyBag.h"

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
    c.properties = {
        Property<P>("Light3DColor", "OLE_COLOR", &P::Light3DColor, &P::SetLight3DColor,
                    "Returns/sets the color of the lit edges of the bevels. [Retorna/define a "
                    "cor das bordas iluminadas dos relevos.]"),
        Property<P>("Shadow3DColor", "OLE_COLOR", &P::Shadow3DColor, &P::SetShadow3DColor,
                    "Returns/sets the color of the shaded edges of the bevels. [Retorna/define "
                    "a cor das bordas sombreadas dos relevos.]"),
        Property<P>("BackColor", "OLE_COLOR", &P::BackColor, &P::SetBackColor,
                    "Returns/sets the background color of the panel. [Retorna/define a cor de "
                    "fundo do painel.]"),
        Property<P>("BorderOut", "KST_BorderStyle", &P::BorderOut, &P::SetBorderOut,
                    "Returns/sets the style of the outer border. [Retorna/define o estilo da "
                    "borda externa.]"),
        Property<P>("BorderIn", "KST_BorderStyle", &P::BorderIn, &P::SetBorderIn,
                    "Returns/sets the style of the inner border. [Retorna/define o estilo da "
                    "borda interna.]"),
        Property<P>("BorderWidth", "Integer", &P::BorderWidth, &P::SetBorderWidth,
                    "Returns/sets the width of the border, in pixels. [Retorna/define a "
                    "largura da borda, em pixels.]"),
    };
    c.enums = {{"KST_BorderStyle",
                {{"KSTPN_None", KSTPN_None},
                 {"KSTPN_Raised", KSTPN_Raised},
                 {"KSTPN_Lowered", KSTPN_Lowered}}}};
    return c;
  }();
  return info;
}

KESTU_REGISTER_CONTROL(KestuPanel3D)

void KestuPanel3D::SetLight3DColor(OLE_COLOR color) {
  light_3d_color_ = color;
  PropertyChanged("Light3DColor");
  Draw();
}

void KestuPanel3D::SetShadow3DColor(OLE_COLOR color) {
  shadow_3d_color_ = color;
  PropertyChanged("Shadow3DColor");
  Draw();
}

void KestuPanel3D::SetBackColor(OLE_COLOR color) {
  back_color_ = color;
  PropertyChanged("BackColor");
  Draw();
}

void KestuPanel3D::SetBorderOut(int32_t style) {
  border_out_ = ToInt16(style);
  PropertyChanged("BorderOut");
  Draw();
}

void KestuPanel3D::SetBorderIn(int32_t style) {
  border_in_ = ToInt16(style);
  PropertyChanged("BorderIn");
  Draw();
}

void KestuPanel3D::SetBorderWidth(int16_t pixels) {
  border_width_ = pixels;
  PropertyChanged("BorderWidth");
  Draw();
}

void KestuPanel3D::UserControl_Initialize() {
  back_color_ = UserControl::BackColor();
  light_3d_color_ = syscolor::k3DHighlight;
  shadow_3d_color_ = syscolor::kButtonShadow;
  border_out_ = KSTPN_Raised;
  border_in_ = KSTPN_Lowered;
  border_width_ = 5;
  pixel_width_ = Int16::From(ScreenTwipsPerPixelX());
  pixel_height_ = Int16::From(ScreenTwipsPerPixelY());
}

void KestuPanel3D::UserControl_ReadProperties(PropertyBag& bag) {
  // Read everything before storing anything: a bad value leaves the panel
  // as it was. BorderIn comes before BorderOut, as saved panels have it.
  auto read_color = [&bag](const char* key, OLE_COLOR current) {
    return static_cast<OLE_COLOR>(bag.ReadAs(key, Variant(static_cast<int32_t>(current))).ToLong());
  };
  auto read_integer = [&bag](const char* key, int16_t current) {
    return bag.ReadAs(key, Variant(current)).ToInteger();
  };
  const OLE_COLOR back = read_color("BackColor", back_color_);
  const OLE_COLOR light = read_color("Light3DColor", light_3d_color_);
  const OLE_COLOR shadow = read_color("Shadow3DColor", shadow_3d_color_);
  const int16_t border_in = read_integer("BorderIn", border_in_);
  const int16_t border_out = read_integer("BorderOut", border_out_);
  const int16_t border_width = read_integer("BorderWidth", border_width_);
  back_color_ = back;
  light_3d_color_ = light;
  shadow_3d_color_ = shadow;
  border_in_ = border_in;
  border_out_ = border_out;
  border_width_ = border_width;
}

void KestuPanel3D::UserControl_WriteProperties(PropertyBag& bag) {
  bag.WriteProperty("BackColor", Variant(static_cast<int32_t>(back_color_)));
  bag.WriteProperty("Light3DColor", Variant(static_cast<int32_t>(light_3d_color_)));
  bag.WriteProperty("Shadow3DColor", Variant(static_cast<int32_t>(shadow_3d_color_)));
  bag.WriteProperty("BorderIn", Variant(border_in_));
  bag.WriteProperty("BorderOut", Variant(border_out_));
  bag.WriteProperty("BorderWidth", Variant(border_width_));
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
