// hello: a form with a number box and a command button in a real window.
// Type a number, then click "Show" (or press Alt+S): the button's Click
// handler reads the box's Value and prints it.

#include <iostream>

#include "kestu/buttons/KestuActiveCommand.h"
#include "kestu/desktop/SdlDesktop.h"
#include "kestu/host/Host.h"
#include "kestu/numberedit/KestuNumberEdit.h"

int main() {
  kestu::Host host;
  // Sizes are twips: 15 to a pixel on a 96-dpi screen.
  kestu::Form& form = host.CreateForm("Hello", 300 * 15, 90 * 15);
  form.SetCaption("Hello");

  auto& amount =
      host.New<kestu::KestuNumberEdit>(form, "amount", kestu::TwipsRect{240, 300, 2400, 315});
  auto& show =
      host.New<kestu::KestuActiveCommand>(form, "show", kestu::TwipsRect{2880, 240, 1215, 435});
  show.SetCaption("&Show");
  amount.SetDecMaxLength(2);
  amount.SetValue(1234.5);

  show.Click.Connect(
      [&] { std::cout << "Value = " << kestu::FormatDouble(amount.Value()) << std::endl; });

  if (const auto problem = kestu::SdlDesktop::DisplayProblem()) {
    std::cerr << "hello: no display to open a window on (" << *problem << ")\n";
    return 1;
  }
  kestu::SdlDesktop desktop(host);
  desktop.Run();  // until the window is closed
  return 0;
}
