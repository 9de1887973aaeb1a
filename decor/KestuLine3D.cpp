#include "kestu/decor/KestuLine3D.h"

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
    constexpr OnSet kDraws = OnSet::NotifyThenRedraw;
    c.properties = {
        Field<L>("Light3DColor", "OLE_COLOR", &L::light_3d_color_,
                 "Returns/sets the light color of the line. [Retorna/define a cor clara da "
                 "linha.]",
                 kDraws)
            .Saved()
            .Defaults(syscolor::k3DHighlight),
        Field<L>("Shadow3DColor", "OLE_COLOR", &L::shadow_3d_color_,
                 "Returns/sets the shadow color of the line. [Retorna/define a cor de sombra da "
                 "linha.]",
                 kDraws)
            .Saved()
            .Defaults(syscolor::kButtonShadow),
        Field<L, int32_t>("LineStyle", "KST_LineStyle", &L::line_style_,
                          "Returns/sets whether the line is raised or lowered. [Retorna/define "
                          "se a linha é em relevo ou rebaixada.]",
                          kDraws)
            .Saved()
            .Defaults(LnRaised),
        Field<L, int32_t>("LineOrientation", "KST_LineOrientation", &L::line_orientation_,
                          "Returns/sets whether the line is horizontal or vertical. "
                          "[Retorna/define se a linha é horizontal ou vertical.]",
                          kDraws)
            .Saved()
            .Defaults(LnHorizontal),
    };
    c.redraw = [](UserControl& line) { static_cast<L&>(line).Draw(); };
    c.enums = {
        {"KST_LineStyle", {{"LnRaised", LnRaised}, {"LnLowered", LnLowered}}},
        {"KST_LineOrientation", {{"LnVertical", LnVertical}, {"LnHorizontal", LnHorizontal}}}};
    // The toolbox picture: an etched line across a strip of dialog face.
    // clang-format off
    c.toolbox_icon = {
        "................",
        "................",
        "................",
        "................",
        "llllllllllllllll",
        "llllllllllllllll",
        "llllllllllllllll",
        "lggggggggggggggl",
        "lwwwwwwwwwwwwwwl",
        "llllllllllllllll",
        "llllllllllllllll",
        "llllllllllllllll",
        "................",
        "................",
        "................",
        "................",
    };
    // clang-format on
    return c;
  }();
  return info;
}

KESTU_REGISTER_CONTROL(KestuLine3D)

void KestuLine3D::UserControl_Initialize() {
  pixel_width_ = Int16::From(ScreenTwipsPerPixelX());
  pixel_height_ = Int16::From(ScreenTwipsPerPixelY());
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
