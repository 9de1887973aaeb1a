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
#include "kestu/stdcontrols/PushControl.h"

namespace kestu {

class CommandButton : public PushControl {
 public:
  CommandButton();

  // The class's metadata: its properties and events.
  static ClassInfo& Info();
  const ClassInfo& Class() const override { return Info(); }

  Event<> Click;

  void UserControl_AmbientChanged(const std::string& property_name) override;

 protected:
  void Draw() override;
  [[nodiscard]] bool Activate() override { return RaiseEvent(Click); }
  // A left press gives it the focus before anything else.
  void BeforePress(int16_t button) override;

 private:
  ButtonLook Look() const;
  // Whether the form shows this button as its default one.
  bool DisplaysAsDefault() const;
};

}  // namespace kestu
