#include "kestu/buttons/KestuActiveCommand.h"

#include "kestu/foundation/KestuControlsAPI.h"

namespace kestu {

namespace {

struct CommandEvents {
  EventInfo click{"Click",
                  {},
                  "Occurs when the user presses and releases the button. [Ocorre quando o "
                  "usuário pressiona e solta o botão.]"};
  EventInfo mouse_enter{"MouseEnter",
                        {},
                        "Occurs when the pointer comes over the button. [Ocorre quando o "
                        "ponteiro passa sobre o botão.]"};
  EventInfo mouse_exit{"MouseExit",
                       {},
                       "Occurs when the pointer leaves the button. [Ocorre quando o ponteiro "
                       "sai do botão.]"};
};

const CommandEvents& Events() {
  static const CommandEvents events;
  return events;
}

}  // namespace

ClassInfo& KestuActiveCommand::Info() {
  static ClassInfo info = [] {
    ClassInfo c;
    c.name = "KestuActiveCommand";
    c.help =
        "A command button with a picture and a caption. [Um botão de comando com figura e "
        "texto.]";
    c.default_width = 1215;
    c.default_height = 495;
    c.create = [] { return std::make_unique<KestuActiveCommand>(); };
    c.properties = SharedProperties();
    c.redraw = [](UserControl& button) { static_cast<KestuActiveCommand&>(button).Redraw(); };
    c.methods = {Method<KestuActiveCommand>("XFocus", &KestuActiveCommand::XFocus,
                                            "Gives the button the focus. [Dá o foco ao botão.]")};
    c.events = {&Events().click, &Events().mouse_enter, &Events().mouse_exit};
    c.enums = SharedEnums();
    c.default_event = "Click";
    return c;
  }();
  return info;
}

KESTU_REGISTER_CONTROL(KestuActiveCommand)

KestuActiveCommand::KestuActiveCommand()
    : PictureButton(ButtonRules{}, Events().click, Events().mouse_enter, Events().mouse_exit) {}

void KestuActiveCommand::UserControl_InitProperties() {
  SetFont(AmbientFont());
  SetCaption(AmbientDisplayName());
}

void KestuActiveCommand::XFocus() {
  GotFocusRoutine();
  KestuControlsAPI::SetFocus(hWnd());
}

}  // namespace kestu
