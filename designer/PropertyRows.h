#pragma once
// The rows of the designer's grid: the properties a control or a form
// shows, each with its value as text and whether it can be assigned.

#include <string>
#include <vector>

#include "kestu/foundation/ClassInfo.h"

namespace kestu {

class Form;
class HostedControl;

struct PropertyRow {
  PropertyInfo property;  // its name, type and help; no getter or setter
  std::string value;      // as PropertyText shows it; "(error N)" when reading raised
  bool read_only = false;
};

// The control's name, its extender's properties, then its class's saved
// properties in the order of the interface.
std::vector<PropertyRow> PropertyRowsOf(HostedControl& control);
// The form's own: Caption, Width, Height, BackColor, Font, Modified.
std::vector<PropertyRow> PropertyRowsOf(const Form& form);

}  // namespace kestu
