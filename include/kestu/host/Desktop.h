#pragma once
// What a real desktop adds to the host: popup menus the user answers, the
// system clipboard and an audible beep. A host without one is headless:
// menus take the queued answers (dismissed when none), the clipboard is the
// host's own text and the beep is only reported to the observers.

#include <optional>
#include <span>
#include <string>

#include "kestu/foundation/ControlSite.h"

namespace kestu {

class HostedControl;

class Desktop {
 public:
  virtual ~Desktop() = default;

  // Shows `items` for `control` at the pointer and waits for the user: the
  // index chosen, or nothing when the menu was dismissed.
  virtual std::optional<int> ShowPopupMenu(HostedControl& control,
                                           std::span<const MenuItem> items) = 0;
  // The system clipboard's text; nothing when it cannot be read.
  virtual std::optional<std::string> ClipboardText() = 0;
  virtual void SetClipboardText(const std::string& text) = 0;
  // Sounds the system beep without waiting for it.
  virtual void Beep() = 0;
};

}  // namespace kestu
