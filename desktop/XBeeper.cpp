#include "kestu/desktop/XBeeper.h"

#include <X11/Xlib.h>

namespace kestu {

XBeeper::~XBeeper() {
  if (display_) XCloseDisplay(display_);
}

void XBeeper::Beep() {
  // The connection is opened on the first beep only: most runs never beep.
  if (!tried_) {
    tried_ = true;
    display_ = XOpenDisplay(nullptr);
  }
  if (!display_) return;
  XBell(display_, 0);
  XFlush(display_);
}

}  // namespace kestu
