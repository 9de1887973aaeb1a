#include "designer/PropertyRows.h"

#include "designer/PropertyText.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/foundation/Text.h"
#include "kestu/host/Form.h"
#include "kestu/host/HostedControl.h"

namespace kestu {

namespace {

// What the grid calls a host property's type, from how a form file keeps
// it.
std::string HostType(std::string_view name, FileValue::Kind kind) {
  if (name == "BackColor") return "OLE_COLOR";
  switch (kind) {
    case FileValue::Kind::Integer:
      return "Long";
    case FileValue::Kind::Boolean:
      return "Boolean";
    case FileValue::Kind::Font:
      return "StdFont";
    case FileValue::Kind::String:
    case FileValue::Kind::None:
      break;
  }
  return "String";
}

// Help for the properties the host gives every control and form, which
// no class describes.
std::string HostHelp(std::string_view name) {
  static const std::pair<const char*, const char*> kHelp[] = {
      {"Name",
       "The name the form's code knows the control by. [O nome pelo qual o código do "
       "formulário conhece o controle.]"},
      {"Left",
       "Distance from the container's left edge, in twips. [Distância da borda esquerda do "
       "contêiner, em twips.]"},
      {"Top",
       "Distance from the container's top edge, in twips. [Distância da borda superior do "
       "contêiner, em twips.]"},
      {"Width", "Width, in twips. [Largura, em twips.]"},
      {"Height", "Height, in twips. [Altura, em twips.]"},
      {"Visible",
       "Whether the control shows when the form runs. [Se o controle aparece quando o "
       "formulário roda.]"},
      {"ToolTipText",
       "The tip shown when the pointer rests on the control. [A dica mostrada quando o "
       "ponteiro para sobre o controle.]"},
      {"Align",
       "The edge of its container the control is docked to: 0 none, 1 top, 2 bottom, 3 left, "
       "4 right. [A borda do contêiner onde o controle se encaixa.]"},
      {"TabIndex",
       "The control's place in the order Tab moves the focus. [A posição do controle na "
       "ordem em que Tab move o foco.]"},
      {"Default", "Whether Enter presses this button. [Se Enter pressiona este botão.]"},
      {"Cancel", "Whether Escape presses this button. [Se Esc pressiona este botão.]"},
      {"Caption", "The text in the form's title bar. [O texto na barra de título do formulário.]"},
      {"BackColor", "The form's background colour. [A cor de fundo do formulário.]"},
      {"Font",
       "The font the form's controls start with. [A fonte com que os controles do formulário "
       "começam.]"},
      {"Modified",
       "Whether the form changed since it was loaded or saved. [Se o formulário mudou desde "
       "que foi carregado ou salvo.]"},
  };
  for (const auto& [property, help] : kHelp) {
    if (property == name) return help;
  }
  return {};
}

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
  row.property.type_name = HostType(property.name, property.file.kind);
  row.property.help = HostHelp(property.name);
  row.read_only = property.set == nullptr;
  row.value = TextOf(info, row.property, [&] { return property.get(owner); });
  return row;
}

}  // namespace

std::vector<PropertyRow> PropertyRowsOf(HostedControl& control) {
  const ClassInfo& info = control.Class();
  std::vector<PropertyRow> rows;
  PropertyRow name;
  name.property.name = "Name";
  name.property.type_name = "String";
  name.property.help = HostHelp("Name");
  name.value = control.Name();
  name.read_only = true;  // a name is given once, when the control is placed
  rows.push_back(std::move(name));
  for (const OwnProperty<HostedControl>& property : HostedControl::ExtenderProperties()) {
    if (property.set && !SameName(property.name, "Name")) {
      rows.push_back(HostRow(info, property, control));
    }
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
