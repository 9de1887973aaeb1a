#pragma once
// The designer's own windows are laid out in pixels of the host's screen:
// a control placed there by its class, at a rectangle in pixels.

#include <string>
#include <string_view>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/host/Host.h"

namespace kestu {

inline HostedControl& PlaceInPixels(Host& host, Form& form, const ClassInfo& info,
                                    const std::string& name, int left, int top, int width,
                                    int height, HostedControl* container = nullptr) {
  const int tx = host.TwipsPerPixelX();
  const int ty = host.TwipsPerPixelY();
  return host.NewControl(form, info, name, TwipsRect{left * tx, top * ty, width * tx, height * ty},
                         container);
}

inline HostedControl& PlaceInPixels(Host& host, Form& form, std::string_view class_name,
                                    const std::string& name, int left, int top, int width,
                                    int height, HostedControl* container = nullptr) {
  return PlaceInPixels(host, form, ControlRegistry::Instance().Require(class_name, "the designer"),
                       name, left, top, width, height, container);
}

}  // namespace kestu
