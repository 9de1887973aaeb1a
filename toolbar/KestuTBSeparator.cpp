#include "kestu/toolbar/KestuTBSeparator.h"

namespace kestu {

ClassInfo& KestuTBSeparator::Info() {
  static ClassInfo info = [] {
    ClassInfo c;
    c.name = "KestuTBSeparator";
    c.help =
        "An etched line between toolbar buttons. [Uma linha entalhada entre botões da barra de "
        "ferramentas.]";
    c.default_width = 30;
    c.default_height = 330;
    c.create = [] { return std::make_unique<KestuTBSeparator>(); };
    using S = KestuTBSeparator;
    constexpr OnSet kDraws = OnSet::NotifyThenRedraw;
    c.properties = {
        Field<S>("Light3DColor", "OLE_COLOR", &S::light_3d_color_,
                 "Returns/sets the color of the right line. [Retorna/define a cor da linha da "
                 "direita.]",
                 kDraws)
            .Saved()
            .Defaults(syscolor::k3DHighlight),
        Field<S>("Shadow3DColor", "OLE_COLOR", &S::shadow_3d_color_,
                 "Returns/sets the color of the left line. [Retorna/define a cor da linha da "
                 "esquerda.]",
                 kDraws)
            .Saved()
            .Defaults(syscolor::kButtonShadow),
        Field<S>("BackColor", "OLE_COLOR", &S::back_color_,
                 "Returns/sets the background color. [Retorna/define a cor de fundo.]", kDraws)
            .Saved()
            .Defaults(syscolor::kButtonFace),
        Field<S>("AutoHeight", "Integer", &S::auto_height_,
                 "Returns/sets the height of the row the separator stands in: 1 for 16x16 "
                 "buttons, 2 for 32x32 buttons, any other value to keep its height. "
                 "[Retorna/define a altura da fileira: 1 para botões 16x16, 2 para 32x32, "
                 "qualquer outro valor mantém a altura.]",
                 kDraws)
            .Saved()
            .Defaults(1),
    };
    c.redraw = [](UserControl& separator) { static_cast<S&>(separator).Draw(); };
    // The toolbox picture: the etched pair of lines between two buttons of a bar.
    // clang-format off
    c.toolbox_icon = {
        "................",
        "................",
        "................",
        "lllllllgwlllllll",
        "lllllllgwlllllll",
        "lwwwwglgwlwwwwgl",
        "lwlllglgwlwlllgl",
        "lwlllglgwlwlllgl",
        "lwlllglgwlwlllgl",
        "lwlllglgwlwlllgl",
        "lggggglgwlgggggl",
        "lllllllgwlllllll",
        "lllllllgwlllllll",
        "................",
        "................",
        "................",
    };
    // clang-format on
    return c;
  }();
  return info;
}

KESTU_REGISTER_CONTROL(KestuTBSeparator)

void KestuTBSeparator::UserControl_Initialize() {
  pixel_width_ = Int16::From(ScreenTwipsPerPixelX());
  pixel_height_ = Int16::From(ScreenTwipsPerPixelY());
}

void KestuTBSeparator::UserControl_ReadProperties(PropertyBag& bag) {
  UserControl::UserControl_ReadProperties(bag);
  UserControl::SetBackColor(back_color_);
}

// The surface is not cleared: the lines are drawn over what is there.
// Height and width are set one at a time, and each may run this routine
// again from inside itself; it comes to the same lines.
void KestuTBSeparator::Draw() {
  UserControl::SetBackColor(back_color_);
  if (auto_height_ == 1) SetHeight(Int16(22) * pixel_height_);
  if (auto_height_ == 2) SetHeight(Int16(37) * pixel_height_);
  SetWidth(Int16(2) * pixel_width_);
  // Both lines stop one pixel short of the bottom; the surface's line
  // leaves out its end point as well. The height is taken as it is, not
  // held to 16 bits, so a separator of any height draws.
  const float bottom = Height() - static_cast<float>(pixel_height_.value());
  Line(0, 0, 0, bottom, shadow_3d_color_);
  Line(pixel_width_, 0, pixel_width_, bottom, light_3d_color_);
}

}  // namespace kestu
