// kestu_xerror_probe: asks the X server to destroy two windows that do not
// exist, with the program's X error log installed, and prints how many
// errors the log saw. Xlib's default handler would end the program at the
// first; the log writes one line for the two, since they are of one kind.

#include <X11/Xlib.h>

#include <iostream>

#include "desktop/XErrorLog.h"

int main() {
  kestu::InstallXErrorLog();
  Display* display = XOpenDisplay(nullptr);
  if (!display) {
    std::cerr << "kestu_xerror_probe: no display\n";
    return 1;
  }
  for (const Window nowhere : {Window{0x7ffffff0}, Window{0x7ffffff1}}) {
    XDestroyWindow(display, nowhere);
    XSync(display, False);
  }
  XCloseDisplay(display);
  std::cout << kestu::XErrorsSeen() << "\n";
  return 0;
}
