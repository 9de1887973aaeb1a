#pragma once
// An option button: a 12-pixel round sunken button beside its caption,
// with a dot when selected. The option buttons of one container (a frame,
// a panel, or the form itself) are a group: selecting one clears the
// others, and the arrow keys move through the group in tab order.

#include <utility>
#include <vector>

#include "kestu/stdcontrols/ToggleControl.h"

namespace kestu {

class OptionButton : public ToggleControl {
 public:
  // The class's metadata: its properties and events.
  static ClassInfo& Info();
  const ClassInfo& Class() const override { return Info(); }

  bool Value() const { return value_; }
  // True selects it, as a click does (Click only when it was not already
  // selected); False only clears it.
  void SetValue(bool value);

 protected:
  [[nodiscard]] bool Activate() override;
  void Arrow(int16_t key_code) override;
  int BoxSize() const override { return 12; }
  void DrawBox(int left, int top) override;

 private:
  // The option buttons that share this one's container, in tab order,
  // with whether each can take the focus.
  std::vector<std::pair<OptionButton*, bool>> Group() const;
  // Selects this one and clears the rest of the group; false when a
  // Click handler destroyed it.
  [[nodiscard]] bool Select();
  void StoreValue(bool value);

  bool value_ = false;
};

}  // namespace kestu
