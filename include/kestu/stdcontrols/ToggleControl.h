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
#include "kestu/stdcontrols/InputEvents.h"
#include "kestu/stdcontrols/StdControl.h"

namespace kestu {

class ToggleControl : public StdControl, public InputEvents {
 public:
  // ---- Events, in the order of the interface: Click, then the key and
  // mouse events of InputEvents ----
  Event<> Click;

  // 0: the box left of the caption; 1: right of it.
  int16_t Alignment() const { return alignment_; }
  void SetAlignment(int16_t alignment);

  bool CanGetFocus() const override { return true; }
  void UserControl_GotFocus() override;
  void UserControl_LostFocus() override;
  void UserControl_KeyDown(int16_t& key_code, int16_t& shift) override;
  void UserControl_KeyPress(int16_t& key_ascii) override;
  void UserControl_KeyUp(int16_t& key_code, int16_t& shift) override;
  void UserControl_MouseDown(int16_t& button, int16_t& shift, float& x, float& y) override;
  void UserControl_MouseMove(int16_t& button, int16_t& shift, float& x, float& y) override;
  void UserControl_MouseUp(int16_t& button, int16_t& shift, float& x, float& y) override;
  void UserControl_Click() override;
  // The second press of a double click is a click of its own: a quick
  // double click on a check box toggles it twice, as the user clicked twice.
  void UserControl_DblClick() override { static_cast<void>(Activate()); }
  void UserControl_AccessKeyPress(int16_t& key_ascii) override;

 protected:
  ToggleControl();

  // The shared properties, Alignment, and the events of both controls.
  static std::vector<PropertyInfo> ToggleProperties();
  static std::vector<const EventInfo*> ToggleEvents();

  // What a click, Space or the access key does. Returns false when a
  // handler destroyed the control.
  [[nodiscard]] virtual bool Activate() = 0;
  // Arrow keys: the option button moves through its group.
  virtual void Arrow(int16_t /*key_code*/) {}
  // The box's side in pixels, and its drawing at (left, top).
  virtual int BoxSize() const = 0;
  virtual void DrawBox(int left, int top) = 0;

  void Draw() override;
  // The box shows pressed: the left button or Space is held on it.
  bool ShowsPressed() const { return space_held_ || pointer_inside_held_; }

  int16_t alignment_ = 0;

 private:
  bool has_focus_ = false;
  bool space_held_ = false;
  bool pointer_held_ = false;         // the left button went down on the control
  bool pointer_inside_held_ = false;  // and is over it now
};

}  // namespace kestu
