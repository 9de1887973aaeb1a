#include "kestu/stdcontrols/InputEvents.h"

namespace kestu {

namespace {

struct InputEventTable {
  EventInfo key_down{"KeyDown", KeyEventParams(),
                     "Occurs when a key goes down while the control has the focus. [Ocorre "
                     "quando uma tecla é pressionada com o foco no controle.]"};
  EventInfo key_press{"KeyPress", KeyPressEventParams(),
                      "Occurs when a key types a character. [Ocorre quando uma tecla digita "
                      "um caractere.]"};
  EventInfo key_up{"KeyUp", KeyEventParams(),
                   "Occurs when a key is released. [Ocorre quando uma tecla é solta.]"};
  EventInfo mouse_down{"MouseDown", MouseEventParams(),
                       "Occurs when a mouse button goes down over the control. [Ocorre quando "
                       "um botão do mouse é pressionado sobre o controle.]"};
  EventInfo mouse_move{"MouseMove", MouseEventParams(),
                       "Occurs when the pointer moves over the control. [Ocorre quando o "
                       "ponteiro se move sobre o controle.]"};
  EventInfo mouse_up{"MouseUp", MouseEventParams(),
                     "Occurs when a mouse button is released. [Ocorre quando um botão do mouse "
                     "é solto.]"};
};

const InputEventTable& Table() {
  static const InputEventTable table;
  return table;
}

}  // namespace

InputEvents::InputEvents()
    : KeyDown(Table().key_down),
      KeyPress(Table().key_press),
      KeyUp(Table().key_up),
      MouseDown(Table().mouse_down),
      MouseMove(Table().mouse_move),
      MouseUp(Table().mouse_up) {}

std::vector<const EventInfo*> InputEvents::InputEventInfos(std::vector<const EventInfo*> first) {
  const InputEventTable& t = Table();
  first.insert(first.end(),
               {&t.key_down, &t.key_press, &t.key_up, &t.mouse_down, &t.mouse_move, &t.mouse_up});
  return first;
}

}  // namespace kestu
