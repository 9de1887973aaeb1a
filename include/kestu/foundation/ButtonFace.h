#pragma once
// The frames of a push button in each of its looks, drawn with the buttons'
// Bevel. The command button and the toolbar button draw their frames here,
// and so can any dialog that wants buttons of the same family.

#include "kestu/foundation/OleColor.h"

namespace kestu {

class UserControl;

enum class ButtonLook {
  IdleRaised,  // two raised bevels: the 3D style at rest
  IdleFlat,    // one thin raised bevel: the flat style at rest
  Hot,         // focused, default or under the pointer: a dark outline and two raised bevels
  Down,        // pressed: two solid shadow frames
  Bare,        // no frame: a flat toolbar button at rest on a running form
};

// The four colours of a button's bevels: "out" is the outer bevel's pair,
// "in" the inner one's.
struct ButtonFrameColors {
  OLE_COLOR light_out;
  OLE_COLOR shadow_out;
  OLE_COLOR light_in;
  OLE_COLOR shadow_in;
};

// The extent of the face in the control's twips and the pixel it was drawn
// with, as the button captured it when it was created; and where the face
// starts, for a button that is only part of its control (a drop-down
// arrow).
struct ButtonExtent {
  float width;
  float height;
  float pixel_x;
  float pixel_y;
  float left = 0;
  float top = 0;
};

// Draws the frames of `look`. The hot look's dark outline is left out when
// `enabled` is false: a disabled default button keeps only its bevels.
void DrawButtonFrames(UserControl& control, ButtonLook look, const ButtonFrameColors& colors,
                      const ButtonExtent& extent, bool enabled);

}  // namespace kestu
