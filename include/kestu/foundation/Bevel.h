#pragma once
// The 3D frames every self-drawn control paints: a bevel is a rectangle
// whose top and left edges take one colour and whose bottom and right edges
// take another. The panel, the toolbar pieces and the buttons each draw
// their frames with a different sequence of lines, and the differences show
// in the pixels and in the traced drawing calls, so each sequence is kept
// here as its own routine and the controls call it rather than copying it.
//
// All coordinates are twips of the control's surface. The surface's line
// leaves out its end point, which is why each routine lengthens one edge by
// a pixel: that is what closes the bottom-right corner.

#include "kestu/foundation/Integer.h"
#include "kestu/foundation/OleColor.h"

namespace kestu {

class UserControl;

// The panel's rectangle: four plain lines, top and left in `top_left`, then
// bottom and right in `bottom_right`. The bottom runs one pixel past x2 to
// cover the bottom-right corner; the top-right and bottom-left corners take
// `bottom_right`. Sums are 16-bit: an overflow is error 6.
void BevelRectangle(UserControl& control, Int16 x1, Int16 y1, Int16 x2, Int16 y2,
                    OLE_COLOR top_left, OLE_COLOR bottom_right, Int16 pixel_width);

// The buttons' frame: the box outline in `light`, then the right edge and
// the bottom edge (one pixel longer, over the bottom-right corner) in
// `shadow`.
void Bevel(UserControl& control, float x1, float y1, float x2, float y2, OLE_COLOR light,
           OLE_COLOR shadow, float pixel_width);

// The toolbar's raised rectangle: top in `light`, bottom shifted one pixel
// to the right in `shadow`, left one pixel longer downward in `light`, right
// in `shadow`. Sums are 16-bit: an overflow is error 6.
void RaisedRectangle(UserControl& control, Int16 x1, Int16 y1, Int16 x2, Int16 y2, OLE_COLOR light,
                     OLE_COLOR shadow, Int16 pixel_width, Int16 pixel_height);

}  // namespace kestu
