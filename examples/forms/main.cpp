// forms: an order entry form loaded from a form file, its controls found
// by name and given typed handlers. Type a quantity, then click "Total"
// (or press Alt+T, or Enter: it is the form's default button): the amount
// is worked out, shown on the form and printed. "New" on the toolbar
// clears the order.
//
//   forms [FORM.json]    (without one: order.json beside this source)

#include <cmath>
#include <cstdint>
#include <exception>
#include <iostream>
#include <string>

#include "kestu/buttons/KestuActiveCommand.h"
#include "kestu/buttons/KestuTBButton.h"
#include "kestu/desktop/SdlDesktop.h"
#include "kestu/host/FormFile.h"
#include "kestu/host/Host.h"
#include "kestu/numberedit/KestuNumberEdit.h"
#include "kestu/textedit/KestuTextEdit.h"

// CMakeLists.txt sets the file's absolute path; a program built by hand
// looks for it in the working folder.
#ifndef ORDER_FORM_FILE
#define ORDER_FORM_FILE "order.json"
#endif

namespace {

int Run(int argc, char** argv) {
  const std::string path = argc > 1 ? argv[1] : ORDER_FORM_FILE;
  kestu::Host host;
  kestu::Form& form = kestu::LoadFormFile(host, path);

  // Each control by the name the file gives it. A name the file lacks, or
  // a control of another class, throws std::invalid_argument saying which.
  auto& code = host.Get<kestu::KestuTextEdit>(form, "code");
  auto& quantity = host.Get<kestu::KestuNumberEdit>(form, "quantity");
  auto& price = host.Get<kestu::KestuNumberEdit>(form, "price");
  auto& delivery = host.Get<kestu::KestuTextEdit>(form, "delivery");
  auto& amount = host.Get<kestu::KestuNumberEdit>(form, "amount");
  auto& total = host.Get<kestu::KestuActiveCommand>(form, "total");
  auto& new_order = host.Get<kestu::KestuTBButton>(form, "neworder");

  // Product codes are upper case and have no blanks. KeyAscii comes by
  // reference: the box types what the handler leaves in it, and 0 types
  // nothing.
  code.KeyPress.Connect([](int16_t& key_ascii) {
    if (key_ascii == ' ') key_ascii = 0;
    if (key_ascii >= 'a' && key_ascii <= 'z') key_ascii = static_cast<int16_t>(key_ascii - 32);
  });

  total.Click.Connect([&] {
    // To the cent, as the amount box shows it.
    const double sum = std::round(quantity.Value() * price.Value() * 100) / 100;
    amount.SetValue(sum);
    const std::string product = code.Text().ToString();
    std::cout << "Total = " << kestu::FormatDouble(sum) << " ("
              << kestu::FormatDouble(quantity.Value()) << " x "
              << kestu::FormatDouble(price.Value()) << " of "
              << (product.empty() ? "no product code" : product) << ", "
              << (delivery.IsEmpty() ? "no delivery date"
                                     : "delivery " + delivery.Text().ToString())
              << ")" << std::endl;
  });

  new_order.Click.Connect([&] {
    code.SetText("");
    quantity.SetValue(0);
    delivery.SetText("");
    amount.SetValue(0);
    code.XFocus();
    std::cout << "New order" << std::endl;
  });

  if (const auto problem = kestu::SdlDesktop::DisplayProblem()) {
    std::cerr << "forms: no display to open a window on (" << *problem << ")\n";
    return 1;
  }
  kestu::SdlDesktop desktop(host);
  code.XFocus();
  desktop.Run();  // until the window is closed
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  // A missing or malformed file, or a control the program needs and the
  // file lacks, ends the program with one line that says what.
  try {
    return Run(argc, argv);
  } catch (const std::exception& e) {
    std::cerr << "forms: " << e.what() << "\n";
    return 1;
  }
}
