#pragma once
// A check box: a 13-pixel sunken box beside its caption, unchecked,
// checked or grayed. A click, Space or the access key toggles it between
// unchecked and checked (grayed goes to unchecked) and raises Click, as
// does any change of Value from the program.

#include <cstdint>

#include "kestu/stdcontrols/ToggleControl.h"

namespace kestu {

class CheckBox : public ToggleControl {
 public:
  // The class's metadata: its properties and events.
  static ClassInfo& Info();
  const ClassInfo& Class() const override { return Info(); }

  static constexpr int16_t kUnchecked = 0;
  static constexpr int16_t kChecked = 1;
  static constexpr int16_t kGrayed = 2;

  int16_t Value() const { return value_; }
  // Error 380 past 0 to 2. A different value draws and raises Click.
  void SetValue(int16_t value);

 protected:
  [[nodiscard]] bool Activate() override;
  int BoxSize() const override { return 13; }
  void DrawBox(int left, int top) override;

 private:
  // Stores, draws and raises Click when the value changes; false when a
  // handler destroyed the box.
  [[nodiscard]] bool ChangeValue(int16_t value);

  int16_t value_ = kUnchecked;
};

}  // namespace kestu
