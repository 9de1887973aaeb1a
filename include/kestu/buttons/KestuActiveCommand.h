#pragma once
// A command button with a picture and a caption: flat or 3D, a hot look
// under the pointer and when focused or default, a pressed look, an
// engraved caption when disabled, and the shared tooltip.

#include "kestu/buttons/PictureButton.h"

namespace kestu {

class KestuActiveCommand : public PictureButton {
 public:
  KestuActiveCommand();

  // The class's metadata: its properties, XFocus, its three events and
  // the ccPictSize, ccPictPosition and ccStyle constants.
  static ClassInfo& Info();
  const ClassInfo& Class() const override { return Info(); }

  // Runs the got-focus routine, then gives the button's window the focus.
  void XFocus();

  // A new button takes the container's font and its own name as caption.
  void UserControl_InitProperties() override;
  void UserControl_GotFocus() override { GotFocusRoutine(); }
  void UserControl_LostFocus() override { LostFocusRoutine(); }
  bool CanGetFocus() const override { return true; }
};

}  // namespace kestu
