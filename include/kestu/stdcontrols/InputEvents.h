#pragma once
// The key and mouse events of the standard controls that take the focus,
// with the standard parameter lists. A control derives from InputEvents
// beside its surface and lists InputEventInfos() after its own events.

#include <cstdint>
#include <vector>

#include "kestu/foundation/Event.h"

namespace kestu {

class InputEvents {
 public:
  InputEvents();

  Event<int16_t&, int16_t&> KeyDown;
  Event<int16_t&> KeyPress;
  Event<int16_t&, int16_t&> KeyUp;
  Event<int16_t&, int16_t&, float&, float&> MouseDown;
  Event<int16_t&, int16_t&, float&, float&> MouseMove;
  Event<int16_t&, int16_t&, float&, float&> MouseUp;

  // `first` (the control's own events) followed by the six above, in the
  // order of the interface.
  static std::vector<const EventInfo*> InputEventInfos(std::vector<const EventInfo*> first);
};

}  // namespace kestu
