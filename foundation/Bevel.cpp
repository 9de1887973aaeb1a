#include "kestu/foundation/Bevel.h"

#include "kestu/foundation/UserControl.h"

namespace kestu {

void BevelRectangle(UserControl& control, Int16 x1, Int16 y1, Int16 x2, Int16 y2,
                    OLE_COLOR top_left, OLE_COLOR bottom_right, Int16 pixel_width) {
  control.Line(x1, y1, x2, y1, top_left);
  control.Line(x1, y1, x1, y2, top_left);
  control.Line(x1, y2, x2 + pixel_width, y2, bottom_right);
  control.Line(x2, y1, x2, y2, bottom_right);
}

void Bevel(UserControl& control, float x1, float y1, float x2, float y2, OLE_COLOR light,
           OLE_COLOR shadow, float pixel_width) {
  control.Line(x1, y1, x2, y2, light, LineKind::Box);
  control.Line(x2, y1, x2, y2, shadow);
  control.Line(x1, y2, x2 + pixel_width, y2, shadow);
}

void RaisedRectangle(UserControl& control, Int16 x1, Int16 y1, Int16 x2, Int16 y2, OLE_COLOR light,
                     OLE_COLOR shadow, Int16 pixel_width, Int16 pixel_height) {
  // The one-pixel shifts of the bottom and left edges close the corners;
  // they differ from the panel's rectangle on purpose.
  control.Line(x1, y1, x2, y1, light);
  control.Line(x1 + pixel_width, y2, x2 + pixel_width, y2, shadow);
  control.Line(x1, y1, x1, y2 + pixel_height, light);
  control.Line(x2, y1, x2, y2, shadow);
}

}  // namespace kestu
