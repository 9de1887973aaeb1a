#pragma once
// Records what a host reports of its controls' drawing and notifications,
// one line per occurrence, in the words of the scripted host's trace
// ("Line (0,0)-(2385,0) 0x80000014", "notify BorderWidth"), so a test can
// compare a whole sequence at once.

#include <cstdio>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kestu/host/HostObserver.h"

namespace kestu {

class DrawRecorder : public HostObserver {
 public:
  void OnDraw(HostedControl& /*control*/, const DrawCall& call) override {
    lines_.push_back(Describe(call));
  }
  void OnPropertyChanged(HostedControl& /*control*/, std::string_view property) override {
    lines_.push_back("notify " + std::string(property));
  }

  // Everything recorded so far, and forget it.
  std::vector<std::string> Take() { return std::exchange(lines_, {}); }

 private:
  static std::string Describe(const DrawCall& call) {
    const char* suffix = "";
    switch (call.kind) {
      case DrawCall::Kind::Cls:
        return "Cls";
      case DrawCall::Kind::Line:
        break;
      case DrawCall::Kind::Box:
        suffix = " B";
        break;
      case DrawCall::Kind::FilledBox:
        suffix = " BF";
        break;
      default:
        return "other drawing call";
    }
    char color[16];
    std::snprintf(color, sizeof color, "0x%08X", call.color);
    std::ostringstream out;
    out.precision(9);
    out << "Line (" << call.x1 << ',' << call.y1 << ")-(" << call.x2 << ',' << call.y2 << ") "
        << color << suffix;
    return out.str();
  }

  std::vector<std::string> lines_;
};

}  // namespace kestu
