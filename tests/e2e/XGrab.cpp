// kestu_xgrab WINDOW OUT.png [X Y W H]: the window's pixels as the screen
// shows them (or the part at X, Y of size W x H), read back from the root
// window with XGetImage and written as PNG. The end-to-end test
// checks what reached the screen with it, not what the program thinks it
// drew.

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <cstdlib>
#include <exception>
#include <iostream>

#include "kestu/raster/Raster.h"

int main(int argc, char** argv) {
  if (argc != 3 && argc != 7) {
    std::cerr << "usage: kestu_xgrab WINDOW OUT.png [X Y W H]\n";
    return 2;
  }
  Display* display = XOpenDisplay(nullptr);
  if (!display) {
    std::cerr << "kestu_xgrab: no display\n";
    return 1;
  }
  const auto window = static_cast<Window>(std::strtoul(argv[1], nullptr, 0));
  XWindowAttributes attributes;
  if (!XGetWindowAttributes(display, window, &attributes)) {
    std::cerr << "kestu_xgrab: no window " << argv[1] << "\n";
    return 1;
  }
  // Read through the root window: what is on the screen, whatever the
  // window's own visual.
  const Window root = DefaultRootWindow(display);
  int left = 0, top = 0;
  Window child = 0;
  XTranslateCoordinates(display, window, root, 0, 0, &left, &top, &child);
  int width = attributes.width;
  int height = attributes.height;
  if (argc == 7) {
    left += std::atoi(argv[3]);
    top += std::atoi(argv[4]);
    width = std::atoi(argv[5]);
    height = std::atoi(argv[6]);
  }
  XImage* image = XGetImage(display, root, left, top, width, height, AllPlanes, ZPixmap);
  if (!image) {
    std::cerr << "kestu_xgrab: the window cannot be read\n";
    return 1;
  }
  kestu::Raster picture(width, height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      picture.SetPixel(x, y, XGetPixel(image, x, y) & 0xFFFFFF, kestu::RasterOp::CopyPen);
    }
  }
  XDestroyImage(image);
  XCloseDisplay(display);
  try {
    picture.SavePng(argv[2]);
  } catch (const std::exception& error) {
    std::cerr << "kestu_xgrab: " << error.what() << "\n";
    return 1;
  }
  return 0;
}
