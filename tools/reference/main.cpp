// Writes the reference of every control (docs/controls.md) from the
// classes' own metadata: properties with their types, access, the value a
// new control has and the help text; methods; events; enumerations. The
// page is never edited by hand; a test fails when it is out of date.

#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/host/Form.h"
#include "kestu/host/Host.h"
#include "kestu/host/HostedControl.h"
#include "script/TraceFormat.h"

namespace kestu {
namespace {

// A table cell: a "|" would end it, and a line break would end the row.
std::string Cell(std::string text) {
  std::string out;
  for (char c : text) {
    if (c == '|')
      out.append("\\|");
    else if (c == '\n')
      out.append(" ");
    else
      out.push_back(c);
  }
  return out;
}

std::string Access(const PropertyInfo& p) {
  if (p.CanRead() && p.CanWrite()) return "read/write";
  return p.CanRead() ? "read only" : "write only";
}

std::string Params(const std::vector<ParamInfo>& params) {
  std::string out;
  for (const ParamInfo& param : params) {
    if (!out.empty()) out.append(", ");
    if (param.by_ref) out.append("ByRef ");
    out.append(param.name).append(" As ").append(param.type_name);
  }
  return out;
}

// The constant of the property's enumeration that `value` is, if any.
std::string ConstantName(const ClassInfo& info, const PropertyInfo& p, const Variant& value) {
  for (const EnumInfo& e : info.enums) {
    if (e.name != p.type_name || !value.IsNumeric()) continue;
    for (const auto& [name, constant] : e.constants) {
      if (constant == value.ToLong()) return name;
    }
  }
  return "";
}

// What a saved property holds in a control just placed on a form: the
// host's own defaults (ambient font, display name) included.
std::string NewValue(UserControl& control, const PropertyInfo& p) {
  if (!p.persist || !p.CanRead()) return "";
  try {
    const Variant value = p.get(control);
    std::string shown = std::string("`").append(Cell(FormatValue(value, p.type_name))).append("`");
    const std::string constant = ConstantName(control.Class(), p, value);
    if (!constant.empty()) shown.append(" (`").append(constant).append("`)");
    return shown;
  } catch (const RuntimeError& error) {
    return Cell(error.what());
  }
}

void WriteProperties(Host& host, Form& form, const ClassInfo& info) {
  std::cout << "### Properties\n\n"
            << "| Property | Type | Access | New control | Saved as | Help |\n"
            << "|---|---|---|---|---|---|\n";
  HostedControl& placed = host.NewControl(form, info, info.name + "1");
  for (const PropertyInfo& p : info.properties) {
    const std::string key =
        p.persist ? std::string("\"").append(p.persist->key).append("\"") : std::string();
    std::cout << "| `" << p.name << "` | " << p.type_name << " | " << Access(p) << " | "
              << NewValue(placed.Control(), p) << " | " << key << " | " << Cell(p.help) << " |\n";
  }
  std::cout << "\n";
}

void WriteMethods(const ClassInfo& info) {
  if (info.methods.empty()) return;
  std::cout << "### Methods\n\n| Method | Returns | Help |\n|---|---|---|\n";
  for (const MethodInfo& m : info.methods) {
    std::cout << "| `" << m.name << "(" << Params(m.params) << ")` | " << m.return_type_name
              << " | " << Cell(m.help) << " |\n";
  }
  std::cout << "\n";
}

void WriteEvents(const ClassInfo& info) {
  if (info.events.empty()) return;
  std::cout << "### Events\n\n| Event | Help |\n|---|---|\n";
  for (const EventInfo* e : info.events) {
    std::cout << "| `" << e->name << "(" << Params(e->params) << ")` | " << Cell(e->help) << " |\n";
  }
  std::cout << "\n";
}

void WriteEnums(const ClassInfo& info) {
  if (info.enums.empty()) return;
  std::cout << "### Enumerations\n\n";
  for (const EnumInfo& e : info.enums) {
    std::cout << "- `" << e.name << "`: ";
    for (size_t i = 0; i < e.constants.size(); ++i) {
      std::cout << (i > 0 ? ", `" : "`") << e.constants[i].first << "` = " << e.constants[i].second;
    }
    std::cout << "\n";
  }
  std::cout << "\n";
}

int Run() {
  std::vector<const ClassInfo*> classes = ControlRegistry::Instance().Classes();
  std::sort(classes.begin(), classes.end(),
            [](const ClassInfo* a, const ClassInfo* b) { return a->name < b->name; });
  std::cout
      << "# The controls\n\n"
         "Every control of the library as programs, scripts and form files see it.\n"
         "Generated from the classes' metadata by `scripts/update-reference.sh`; do not\n"
         "edit by hand. \"New control\" is what a saved property holds in a control just\n"
         "placed on a form at 15 twips per pixel, and \"Saved as\" its key in a form file.\n\n";
  for (const ClassInfo* info : classes) {
    std::cout << "- [`" << info->name << "`](#" << info->name << ")\n";
  }
  std::cout << "\n";
  Host host;
  Form& form = host.CreateForm("Reference");
  for (const ClassInfo* info : classes) {
    std::cout << "<a id=\"" << info->name << "\"></a>\n\n## " << info->name << "\n\n"
              << Cell(info->help) << "\n\nNew size " << info->default_width << " x "
              << info->default_height << " twips"
              << (info->default_event.empty()
                      ? std::string()
                      : std::string("; default event `").append(info->default_event).append("`"))
              << (info->is_container ? "; holds other controls" : "") << ".\n\n";
    WriteProperties(host, form, *info);
    WriteMethods(*info);
    WriteEvents(*info);
    WriteEnums(*info);
  }
  return 0;
}

}  // namespace
}  // namespace kestu

int main() {
  return kestu::Run();
}
