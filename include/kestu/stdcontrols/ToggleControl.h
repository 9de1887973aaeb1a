#pragma once
// What the check box and the option button share: a small box beside the
// caption (left or right of it), the focus rectangle around the caption,
// their seven events, and the state machine that turns a left click, Space
// and the access key into the control's own action (a check box toggles,
// an option button is selected). While the left button or Space is held
// the box shows pressed: its inside takes the face colour.

#include <cstdint>
#include <string>
#include <vector>

#include "kestu/foundation/Event.h"
#include "kestu/stdcontrols/PushControl.h"

namespace kestu {

class ToggleControl : public PushControl {
 public:
  // ---- Events, in the order of the interface: Click, then the key and
  // mouse events of InputEvents ----
  Event<> Click;

  // 0: the box left of the caption; 1: right of it.
  int16_t Alignment() const { return alignment_; }
  void SetAlignment(int16_t alignment);

 protected:
  ToggleControl();

  // The shared properties, Alignment, and the events of both controls.
  static std::vector<PropertyInfo> ToggleProperties();
  static std::vector<const EventInfo*> ToggleEvents();

  // Arrow keys: the option button moves through its group.
  virtual void Arrow(int16_t /*key_code*/) {}
  void OtherKey(int16_t key_code) override;
  // The box's side in pixels, and its drawing at (left, top).
  virtual int BoxSize() const = 0;
  virtual void DrawBox(int left, int top) = 0;

  void Draw() override;

  int16_t alignment_ = 0;
};

}  // namespace kestu
