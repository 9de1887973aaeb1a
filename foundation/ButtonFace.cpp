#include "kestu/foundation/ButtonFace.h"

#include "kestu/foundation/Bevel.h"

namespace kestu {

namespace {

// The bevel `inset` pixels in from every edge. The hot look's second bevel
// measures its top with the horizontal pixel, as its callers expect; the
// flag keeps that one quirk in one place.
void BevelInset(UserControl& control, const ButtonExtent& e, int inset, OLE_COLOR light,
                OLE_COLOR shadow, bool top_in_horizontal_pixels = false) {
  const float left = e.left + static_cast<float>(inset) * e.pixel_x;
  const float top =
      e.top + static_cast<float>(inset) * (top_in_horizontal_pixels ? e.pixel_x : e.pixel_y);
  const float right = e.left + e.width - static_cast<float>(inset + 1) * e.pixel_x;
  const float bottom = e.top + e.height - static_cast<float>(inset + 1) * e.pixel_y;
  Bevel(control, left, top, right, bottom, light, shadow, e.pixel_x);
}

}  // namespace

void DrawButtonFrames(UserControl& control, ButtonLook look, const ButtonFrameColors& c,
                      const ButtonExtent& extent, bool enabled) {
  switch (look) {
    case ButtonLook::Bare:
      return;
    case ButtonLook::IdleFlat:
      BevelInset(control, extent, 0, c.light_out, c.shadow_in);
      return;
    case ButtonLook::IdleRaised:
      BevelInset(control, extent, 0, c.light_out, c.shadow_out);
      BevelInset(control, extent, 1, c.light_in, c.shadow_in);
      return;
    case ButtonLook::Hot:
      if (enabled) {
        BevelInset(control, extent, 0, syscolor::k3DDarkShadow, syscolor::k3DDarkShadow);
      }
      BevelInset(control, extent, 1, c.light_out, c.shadow_out, true);
      BevelInset(control, extent, 2, c.light_in, c.shadow_in);
      return;
    case ButtonLook::Down:
      BevelInset(control, extent, 0, c.shadow_out, c.shadow_out);
      BevelInset(control, extent, 1, c.shadow_in, c.shadow_in);
      return;
  }
}

}  // namespace kestu
