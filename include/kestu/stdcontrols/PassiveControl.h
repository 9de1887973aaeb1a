#pragma once
// What the label and the frame share: they never take the focus, pass the
// host's clicks on as Click and DblClick, and hand their access key on to
// a control that can take the focus (which one is each class's choice).

#include <cstdint>
#include <vector>

#include "kestu/foundation/Event.h"
#include "kestu/stdcontrols/StdControl.h"

namespace kestu {

class PassiveControl : public StdControl {
 public:
  Event<> Click;
  Event<> DblClick;

  void UserControl_Click() override { static_cast<void>(RaiseEvent(Click)); }
  void UserControl_DblClick() override { static_cast<void>(RaiseEvent(DblClick)); }
  void UserControl_AccessKeyPress(int16_t& /*key_ascii*/) override { PassFocusOn(); }

 protected:
  PassiveControl();
  static std::vector<const EventInfo*> PassiveEvents();
  // Gives the focus to the control the access key stands for, if any.
  virtual void PassFocusOn() = 0;
};

}  // namespace kestu
