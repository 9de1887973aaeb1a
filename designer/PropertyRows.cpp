#include "designer/PropertyRows.h"

#include "designer/PropertyText.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/host/Form.h"
#include "kestu/host/HostedControl.h"

namespace kestu {

namespace {

template <typename Get>
std::string TextOf(const ClassInfo& info, const PropertyInfo& property, Get&& get) {
  try {
    return ValueText(info, property, get());
  } catch (const RuntimeError& error) {
    return "(error " + std::to_string(error.Number()) + ")";
  }
}

template <typename Owner>
PropertyRow HostRow(const ClassInfo& info, const OwnProperty<Owner>& property, const Owner& owner) {
  PropertyRow row;
  row.property.name = std::string(property.name);
  row.property.type_name = std::string(property.type_name);
  row.property.help = std::string(property.help);
  row.read_only = property.set == nullptr;
  row.value = TextOf(info, row.property, [&] { return property.get(owner); });
  return row;
}

}  // namespace

std::vector<PropertyRow> PropertyRowsOf(HostedControl& control) {
  const ClassInfo& info = control.Class();
  std::vector<PropertyRow> rows;
  // The host's first (the name, read-only: it is given once, when the
  // control is placed), then the class's own.
  for (const OwnProperty<HostedControl>& property : HostedControl::ExtenderProperties()) {
    rows.push_back(HostRow(info, property, control));
  }
  for (const PropertyInfo& property : info.properties) {
    if (!property.CanRead() || !property.persist) continue;
    PropertyRow row{property, {}, !property.CanWrite()};
    row.property.get = nullptr;
    row.property.set = nullptr;
    row.value = TextOf(info, property, [&] { return property.get(control.Control()); });
    rows.push_back(std::move(row));
  }
  return rows;
}

std::vector<PropertyRow> PropertyRowsOf(const Form& form) {
  static const ClassInfo kNoClass;
  std::vector<PropertyRow> rows;
  for (const OwnProperty<Form>& property : Form::Properties()) {
    rows.push_back(HostRow(kNoClass, property, form));
  }
  return rows;
}

}  // namespace kestu
