#pragma once
// A label: a caption aligned left, right or centred, on one line or
// wrapped at the label's width, over its back colour or over what was
// drawn before (transparent). It takes no focus; its access key moves the
// focus to the next control in tab order that can take it.

#include <cstdint>

#include "kestu/stdcontrols/PassiveControl.h"

namespace kestu {

enum lblAlignment : int32_t { lblLeft = 0, lblRight = 1, lblCenter = 2 };
enum lblBackStyle : int32_t { lblTransparent = 0, lblOpaque = 1 };

class Label : public PassiveControl {
 public:
  // The class's metadata: its properties, events and constants.
  static ClassInfo& Info();
  const ClassInfo& Class() const override { return Info(); }

  int16_t Alignment() const { return alignment_; }
  void SetAlignment(int16_t alignment);  // error 380 past lblCenter
  // Only lblTransparent leaves the surface uncleared: any other value
  // draws opaque, on purpose, so a saved value is never refused.
  int16_t BackStyle() const { return back_style_; }

 protected:
  void Draw() override;
  void PassFocusOn() override { static_cast<void>(FocusNextAfterSelf()); }

 private:
  int16_t alignment_ = lblLeft;
  bool word_wrap_ = false;
  int16_t back_style_ = lblOpaque;
};

}  // namespace kestu
