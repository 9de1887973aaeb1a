#include "kestu/decor/KestuLine3D.h"

#include "kestu/foundation/PropertyBag.h"

namespace kestu {

ClassInfo& KestuLine3D::Info() {
  static ClassInfo info = [] {
    ClassInfo c;
    c.name = "KestuLine3D";
    c.help =
        "A two-pixel etched line, raised or lowered. [Uma linha entalhada de dois pixels, "
        "em relevo ou rebaixada.]";
    c.default_width = 1200;
    c.default_height = 30;
    c.create = [] { return std::make_unique<KestuLine3D>(); };
    using L = KestuLine3D;
    c.properties = {
        Property<L>("Light3DColor", "OLE_COLOR", &L::Light3DColor, &L::SetLight3DColor,
                    "Returns/sets the light color of the line. [Retorna/define a cor clara da "
                    "linha.]"),
        Property<L>("Shadow3DColor", "OLE_COLOR", &L::Shadow3DColor, &L::SetShadow3DColor,
                    "Returns/sets the shadow color of the line. [Retorna/define a cor de sombra "
                    "da linha.]"),
        Property<L>("LineStyle", "KST_LineStyle", &L::LineStyle, &L::SetLineStyle,
                    "Returns/sets whether the line is raised or lowered. [Retorna/define se a "
                    "linha é em relevo ou rebaixada.]"),
        Property<L>("LineOrientation", "KST_LineOrientation", &L::LineOrientation,
                    &L::SetLineOrientation,
                    "Returns/sets whether the line is horizontal or vertical. [Retorna/define "
                    "se a linha é horizontal ou vertical.]"),
    };
    c.enums = {
        {"KST_LineStyle", {{"LnRaised", LnRaised}, {"LnLowered", LnLowered}}},
        {"KST_LineOrientation", {{"LnVertical", LnVertical}, {"LnHorizontal", LnHorizontal}}}};
    return c;
  }();
  return info;
}

KESTU_REGISTER_CONTROL(KestuLine3D)

void KestuLine3D::SetLight3DColor(OLE_COLOR color) {
  light_3d_color_ = color;
  PropertyChanged("Light3DColor");
  Draw();
}

void KestuLine3D::SetShadow3DColor(OLE_COLOR color) {
  shadow_3d_color_ = color;
  PropertyChanged("Shadow3DColor");
  Draw();
}

void KestuLine3D::SetLineStyle(int32_t style) {
  line_style_ = ToInt16(style);
  PropertyChanged("LineStyle");
  Draw();
}

void KestuLine3D::SetLineOrientation(int32_t orientation) {
  line_orientation_ = ToInt16(orientation);
  PropertyChanged("LineOrientation");
  Draw();
}

void KestuLine3D::UserControl_Initialize() {
  pixel_width_ = Int16::From(ScreenTwipsPerPixelX());
  pixel_height_ = Int16::From(ScreenTwipsPerPixelY());
  light_3d_color_ = syscolor::k3DHighlight;
  shadow_3d_color_ = syscolor::kButtonShadow;
  line_style_ = LnRaised;
  line_orientation_ = LnHorizontal;
}

void KestuLine3D::UserControl_ReadProperties(PropertyBag& bag) {
  // Read everything before storing anything: a bad value leaves the line
  // as it was.
  auto read_color = [&bag](const char* key, OLE_COLOR current) {
    return static_cast<OLE_COLOR>(bag.ReadAs(key, Variant(static_cast<int32_t>(current))).ToLong());
  };
  auto read_integer = [&bag](const char* key, int16_t current) {
    return bag.ReadAs(key, Variant(current)).ToInteger();
  };
  const OLE_COLOR light = read_color("Light3DColor", light_3d_color_);
  const OLE_COLOR shadow = read_color("Shadow3DColor", shadow_3d_color_);
  const int16_t style = read_integer("LineStyle", line_style_);
  const int16_t orientation = read_integer("LineOrientation", line_orientation_);
  light_3d_color_ = light;
  shadow_3d_color_ = shadow;
  line_style_ = style;
  line_orientation_ = orientation;
}

void KestuLine3D::UserControl_WriteProperties(PropertyBag& bag) {
  bag.WriteProperty("Light3DColor", Variant(static_cast<int32_t>(light_3d_color_)));
  bag.WriteProperty("Shadow3DColor", Variant(static_cast<int32_t>(shadow_3d_color_)));
  bag.WriteProperty("LineStyle", Variant(line_style_));
  bag.WriteProperty("LineOrientation", Variant(line_orientation_));
}

void KestuLine3D::Draw() {
  const bool raised = line_style_ == LnRaised;
  const OLE_COLOR first = raised ? light_3d_color_ : shadow_3d_color_;
  const OLE_COLOR second = raised ? shadow_3d_color_ : light_3d_color_;
  if (line_orientation_ == LnHorizontal) {
    DrawHorizontal(first, second);
  } else {
    DrawVertical(first, second);
  }
}

// The surface is not cleared, and both lines run the full length (not one
// pixel short as on the toolbar separator). Setting the thickness may
// resize the control, which draws it once more from inside this routine.
void KestuLine3D::DrawVertical(OLE_COLOR first, OLE_COLOR second) {
  SetWidth(Int16(2) * pixel_width_);
  Line(0, 0, 0, Height(), first);
  Line(pixel_width_, 0, pixel_width_, Height(), second);
}

void KestuLine3D::DrawHorizontal(OLE_COLOR first, OLE_COLOR second) {
  SetHeight(Int16(2) * pixel_height_);
  Line(0, 0, Width(), 0, first);
  Line(0, pixel_height_, Width(), pixel_height_, second);
}

}  // namespace kestu
