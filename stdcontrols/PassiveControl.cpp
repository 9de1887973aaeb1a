#include "kestu/stdcontrols/PassiveControl.h"

namespace kestu {

namespace {

struct PassiveEventInfos {
  EventInfo click{"Click",
                  {},
                  "Occurs when the user presses and releases a mouse button over the control. "
                  "[Ocorre quando o usuário pressiona e solta um botão do mouse sobre o "
                  "controle.]"};
  EventInfo dbl_click{"DblClick",
                      {},
                      "Occurs when the user double-clicks the control. [Ocorre quando o "
                      "usuário dá um duplo clique no controle.]"};
};

const PassiveEventInfos& Events() {
  static const PassiveEventInfos events;
  return events;
}

}  // namespace

PassiveControl::PassiveControl() : Click(Events().click), DblClick(Events().dbl_click) {}

std::vector<const EventInfo*> PassiveControl::PassiveEvents() {
  return {&Events().click, &Events().dbl_click};
}

}  // namespace kestu
