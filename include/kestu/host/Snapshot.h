#pragma once
// What a form or a control looks like on the screen, as pixels: the
// picture a window would show and the one tests and `png` save.

#include "kestu/raster/Raster.h"

namespace kestu {

class Host;
class Form;
class HostedControl;

// Draws `form` into `out` (resized to the form's client area): the form's
// background, then the raster of each visible control at its place, in
// tab order, then the caret, inverted, when it is shown on this form. A
// window leaves the caret out in the dark half of its blink.
void RenderForm(const Host& host, const Form& form, Raster& out, bool caret_lit = true);
Raster RenderForm(const Host& host, const Form& form);

// One control's raster, with the caret when the control shows it.
Raster RenderControl(const Host& host, const HostedControl& control);

}  // namespace kestu
