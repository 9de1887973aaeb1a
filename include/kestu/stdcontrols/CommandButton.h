#pragma once
// The plain push button of dialogs (OK, Cancel, Apply): a raised face with
// a centred caption. It takes the focus on a left press; Space down
// presses it and Space up clicks; a left release over it clicks, one off
// it does not. Enter and Escape reach it as the form's default and cancel
// button, and its access key clicks it.

#include <cstdint>
#include <string>

#include "kestu/foundation/ButtonFace.h"
#include "kestu/foundation/Event.h"
#include "kestu/stdcontrols/InputEvents.h"
#include "kestu/stdcontrols/StdControl.h"

namespace kestu {

class CommandButton : public StdControl, public InputEvents {
 public:
  CommandButton();

  // The class's metadata: its properties and events.
  static ClassInfo& Info();
  const ClassInfo& Class() const override { return Info(); }

  Event<> Click;

  bool CanGetFocus() const override { return true; }
  void UserControl_GotFocus() override;
  void UserControl_LostFocus() override;
  void UserControl_AmbientChanged(const std::string& property_name) override;
  void UserControl_KeyDown(int16_t& key_code, int16_t& shift) override;
  void UserControl_KeyPress(int16_t& key_ascii) override;
  void UserControl_KeyUp(int16_t& key_code, int16_t& shift) override;
  void UserControl_MouseDown(int16_t& button, int16_t& shift, float& x, float& y) override;
  void UserControl_MouseMove(int16_t& button, int16_t& shift, float& x, float& y) override;
  void UserControl_MouseUp(int16_t& button, int16_t& shift, float& x, float& y) override;
  void UserControl_Click() override;
  // The second press of a double click is a click of its own.
  void UserControl_DblClick() override { static_cast<void>(RaiseEvent(Click)); }
  void UserControl_AccessKeyPress(int16_t& key_ascii) override;

 protected:
  void Draw() override;

 private:
  ButtonLook Look() const;
  bool ShowsPressed() const { return space_held_ || pointer_inside_held_; }
  // Whether the form shows this button as its default one.
  bool DisplaysAsDefault() const;

  bool has_focus_ = false;
  bool space_held_ = false;
  bool pointer_held_ = false;         // the left button went down on the button
  bool pointer_inside_held_ = false;  // and is over it now
};

}  // namespace kestu
