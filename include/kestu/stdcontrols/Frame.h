#pragma once
// A frame: a container that groups controls (its option buttons are one
// group) under an etched rectangle with the caption at its top left. It
// takes no focus; its access key moves the focus to the first control
// inside it that can take it.

#include "kestu/stdcontrols/PassiveControl.h"

namespace kestu {

class Frame : public PassiveControl {
 public:
  // The class's metadata: its properties and events.
  static ClassInfo& Info();
  const ClassInfo& Class() const override { return Info(); }

 protected:
  void Draw() override;
  void PassFocusOn() override;
};

}  // namespace kestu
