#include "kestu/buttons/KestuActiveCommand.h"

#include "kestu/foundation/KestuControlsAPI.h"

namespace kestu {

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
    c.events = SharedEvents();
    c.enums = SharedEnums();
    c.default_event = "Click";
    c.property_pages = {"ppgButtons"};
    // The toolbox picture: a raised button with its caption.
    // clang-format off
    c.toolbox_icon = {
        "................",
        "................",
        "wwwwwwwwwwwwwwwk",
        "wlllllllllllllgk",
        "wlllllllllllllgk",
        "wlllkkklklklllgk",
        "wlllklklkkllllgk",
        "wlllklklklllllgk",
        "wlllklklkkllllgk",
        "wlllkkklklklllgk",
        "wlllllllllllllgk",
        "wlllllllllllllgk",
        "wggggggggggggggk",
        "kkkkkkkkkkkkkkkk",
        "................",
        "................",
    };
    // clang-format on
    return c;
  }();
  return info;
}

KESTU_REGISTER_CONTROL(KestuActiveCommand)

KestuActiveCommand::KestuActiveCommand() : PictureButton(ButtonRules{}) {}

void KestuActiveCommand::UserControl_InitProperties() {
  SetFont(AmbientFont());
  SetCaption(AmbientDisplayName());
}

void KestuActiveCommand::XFocus() {
  GotFocusRoutine();
  KestuControlsAPI::SetFocus(hWnd());
}

}  // namespace kestu
