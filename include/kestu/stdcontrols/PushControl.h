#pragma once
// What the dialog controls that are pushed share: the command button, the
// check box and the option button. They take the focus; Space down pushes
// them and Space up acts; a left press pushes them, dragging off lets them
// up and back over pushes them again, and the host's click acts; the
// access key (and Enter or Escape for the form's default and cancel
// control) acts; the second press of a double click acts once more. What
// acting is, and how a pushed control looks, is each class's own.

#include <cstdint>

#include "kestu/stdcontrols/InputEvents.h"
#include "kestu/stdcontrols/StdControl.h"

namespace kestu {

class PushControl : public StdControl, public InputEvents {
 public:
  bool CanGetFocus() const override { return true; }
  void UserControl_GotFocus() override;
  void UserControl_LostFocus() override;
  void UserControl_KeyDown(int16_t& key_code, int16_t& shift) override;
  void UserControl_KeyPress(int16_t& key_ascii) override;
  void UserControl_KeyUp(int16_t& key_code, int16_t& shift) override;
  void UserControl_MouseDown(int16_t& button, int16_t& shift, float& x, float& y) override;
  void UserControl_MouseMove(int16_t& button, int16_t& shift, float& x, float& y) override;
  void UserControl_MouseUp(int16_t& button, int16_t& shift, float& x, float& y) override;
  // The host calls it for a left press and release over the control.
  void UserControl_Click() override { static_cast<void>(Activate()); }
  // The second press of a double click acts again, as a second click.
  void UserControl_DblClick() override { static_cast<void>(Activate()); }
  void UserControl_AccessKeyPress(int16_t& key_ascii) override;

 protected:
  // What a click, Space or the access key does. Returns false when a
  // handler destroyed the control.
  [[nodiscard]] virtual bool Activate() = 0;
  // A key other than Space (the option button's arrows).
  virtual void OtherKey(int16_t /*key_code*/) {}
  // Before a press is raised (the command button takes the focus here).
  virtual void BeforePress(int16_t /*button*/) {}

  bool HasFocus() const { return has_focus_; }
  // The left button or Space is held on it.
  bool ShowsPressed() const { return space_held_ || pointer_inside_held_; }

 private:
  bool has_focus_ = false;
  bool space_held_ = false;
  bool pointer_held_ = false;         // the left button went down on the control
  bool pointer_inside_held_ = false;  // and is over it now
};

}  // namespace kestu
