#include "kestu/host/FormFile.h"
#include "kestu/foundation/Text.h"

#include <algorithm>
#include <cctype>
#include <initializer_list>
#include <limits>
#include <new>
#include <optional>
#include <vector>

#include "foundation/VariantJson.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/host/Host.h"

namespace kestu {

namespace {

using Json = nlohmann::ordered_json;

// The values of the host's own properties a file gives, by name.
using OwnValues = std::vector<std::pair<std::string_view, Variant>>;

std::optional<Variant> Given(const OwnValues& values, std::string_view name) {
  for (const auto& [key, value] : values) {
    if (key == name) return value;
  }
  return std::nullopt;
}

int GivenTwips(const OwnValues& values, std::string_view name, int fallback) {
  const auto value = Given(values, name);
  return value ? value->ToLong() : fallback;
}

// A control as the file describes it, checked but not yet created.
struct ControlEntry {
  const ClassInfo* info = nullptr;
  std::string name;
  OwnValues extender;
  PropertyBag bag;
  std::vector<ControlEntry> children;  // what a container holds, back to front
};

struct FormEntry {
  std::string name;
  OwnValues properties;
  std::vector<ControlEntry> controls;
};

// The keys a file may give an object: its own, and those the table keeps.
template <typename Owner>
std::vector<std::string_view> KeysOf(std::span<const OwnProperty<Owner>> table,
                                     std::initializer_list<std::string_view> own) {
  std::vector<std::string_view> keys(own);
  for (const auto& property : table) {
    if (property.file.kind != FileValue::Kind::None) keys.push_back(property.name);
  }
  return keys;
}

// Reads one JSON object, naming the file and where in it every error is.
class Reader {
 public:
  Reader(const Json& object, std::string where) : object_(object), where_(std::move(where)) {
    if (!object_.is_object()) Fail("expected an object");
  }

  [[noreturn]] void Fail(const std::string& what) const {
    throw RuntimeError(err::kInvalidPropertyValue, where_ + ": " + what);
  }

  void OnlyKeys(const std::vector<std::string_view>& known) const {
    for (const auto& [key, value] : object_.items()) {
      bool found = false;
      for (std::string_view k : known) found = found || k == key;
      if (!found) Fail("unknown key \"" + key + "\"");
    }
  }

  const Json* Find(const char* key) const {
    auto it = object_.find(key);
    return it == object_.end() ? nullptr : &*it;
  }

  const Json& Require(const char* key) const {
    const Json* value = Find(key);
    if (!value) Fail(std::string("missing key \"") + key + "\"");
    return *value;
  }

  std::string String(const char* key, std::string fallback) const {
    const Json* value = Find(key);
    if (!value) return fallback;
    if (!value->is_string()) KeyFail(key, "expected a string");
    return value->get<std::string>();
  }

  std::string Name(const char* key) const {
    std::string name = String(key, "");
    if (!Find(key)) Fail(std::string("missing key \"") + key + "\"");
    if (!IsIdentifier(name)) KeyFail(key, "\"" + name + "\" is not a name");
    return name;
  }

  int64_t Integer(const char* key, int64_t fallback, int64_t low, int64_t high) const {
    const Json* value = Find(key);
    if (!value) return fallback;
    if (!value->is_number_integer()) KeyFail(key, "expected an integer");
    const int64_t number = value->get<int64_t>();
    if (number < low || number > high) KeyFail(key, "out of range");
    return number;
  }

  bool Boolean(const char* key, bool fallback) const {
    const Json* value = Find(key);
    if (!value) return fallback;
    if (!value->is_boolean()) KeyFail(key, "expected true or false");
    return value->get<bool>();
  }

  // The value of `key` as `file` says the file holds it; nothing when
  // the key is absent.
  std::optional<Variant> Value(std::string_view name, const FileValue& file) const {
    const std::string key(name);
    if (!Find(key.c_str())) return std::nullopt;
    switch (file.kind) {
      case FileValue::Kind::Integer:
        return Variant(static_cast<int32_t>(Integer(key.c_str(), 0, file.min, file.max)));
      case FileValue::Kind::Boolean:
        return Variant::Boolean(Boolean(key.c_str(), false));
      case FileValue::Kind::String:
        return Variant(String(key.c_str(), ""));
      case FileValue::Kind::Font: {
        Variant font = VariantFromJson(*Find(key.c_str()), where_ + ": key \"" + key + "\"");
        if (font.Type() != VarType::Font) KeyFail(key.c_str(), "expected a font");
        return font;
      }
      case FileValue::Kind::None:
        break;
    }
    return std::nullopt;
  }

  // Every key of `table` the file gives.
  template <typename Owner>
  OwnValues Values(std::span<const OwnProperty<Owner>> table) const {
    OwnValues values;
    for (const auto& property : table) {
      if (auto value = Value(property.name, property.file)) {
        values.emplace_back(property.name, std::move(*value));
      }
    }
    return values;
  }

  const std::string& Where() const { return where_; }

  [[noreturn]] void KeyFail(const char* key, const std::string& what) const {
    Fail(std::string("key \"") + key + "\": " + what);
  }

 private:
  static bool IsIdentifier(const std::string& name) {
    if (name.empty() || !std::isalpha(static_cast<unsigned char>(name[0]))) return false;
    for (char c : name) {
      if (!std::isalnum(static_cast<unsigned char>(c)) && c != '_') return false;
    }
    return true;
  }

  const Json& object_;
  std::string where_;
};

std::vector<ControlEntry> ReadControls(const Json& list, const std::string& source,
                                       std::vector<std::string>& names);

ControlEntry ReadControl(const Json& json, const std::string& source, size_t index,
                         std::vector<std::string>& names) {
  Reader reader(json, source + ": control " + std::to_string(index));
  ControlEntry entry;
  entry.name = reader.Name("Name");
  const Reader named(json, source + ": control '" + entry.name + "'");
  for (const std::string& earlier : names) {
    if (SameName(earlier, entry.name)) {
      throw RuntimeError(err::kInvalidPropertyValue,
                         source + ": control '" + entry.name + "' is named twice");
    }
  }
  names.push_back(entry.name);
  named.OnlyKeys(
      KeysOf(HostedControl::ExtenderProperties(), {"Type", "Name", "Properties", "Controls"}));
  const std::string type = named.String("Type", "");
  if (!named.Find("Type")) named.Fail("missing key \"Type\"");
  entry.info = ControlRegistry::Instance().Find(type);
  if (!entry.info) named.KeyFail("Type", "unknown control type \"" + type + "\"");
  entry.extender = named.Values(HostedControl::ExtenderProperties());
  if (const Json* bag = named.Find("Properties")) {
    entry.bag = BagFromJson(*bag, named.Where());
  }
  if (const Json* children = named.Find("Controls")) {
    if (!entry.info->is_container) named.KeyFail("Controls", "a " + type + " holds no controls");
    entry.children = ReadControls(*children, named.Where(), names);
  }
  return entry;
}

std::vector<ControlEntry> ReadControls(const Json& list, const std::string& source,
                                       std::vector<std::string>& names) {
  if (!list.is_array()) {
    throw RuntimeError(err::kInvalidPropertyValue,
                       source + ": key \"Controls\": expected an array");
  }
  std::vector<ControlEntry> entries;
  for (size_t i = 0; i < list.size(); ++i)
    entries.push_back(ReadControl(list[i], source, i, names));
  return entries;
}

FormEntry ReadForm(const Json& json, const std::string& source) {
  const Reader reader(json, source);
  reader.OnlyKeys(KeysOf(Form::Properties(), {"Name", "Controls"}));
  FormEntry form;
  form.name = reader.Name("Name");
  form.properties = reader.Values(Form::Properties());
  std::vector<std::string> names;
  form.controls = ReadControls(reader.Require("Controls"), source, names);
  return form;
}

// A key in a control's properties that the control does not save is one
// it does not know: most likely a misspelling, which would otherwise fall
// back to its default without a word.
void WarnOfUnknownKeys(Host& host, HostedControl& control, const std::vector<std::string>& keys,
                       const std::string& source) {
  constexpr int kNamed = 5;  // the rest are counted: a typo reads better than a flood
  const PropertyBag known = host.SaveControl(control);
  const std::string where =
      source + ": control '" + control.Name() + "' (" + control.Class().name + "): ";
  int unknown = 0;
  for (const std::string& key : keys) {
    if (known.Contains(key)) continue;
    if (++unknown <= kNamed) {
      host.Warn(where + "unknown key \"" + key + "\" in \"Properties\" is ignored");
    }
  }
  if (unknown > kNamed) {
    host.Warn(where + std::to_string(unknown - kNamed) + " more unknown keys are ignored");
  }
}

// The controls of `entries` restored into `container` (null: the form),
// each container's own after it. The tab indices the file gives are
// gathered in `tab_order`. With `rename`, each control takes the name it
// gives just before it is created, so a name it picks sees the controls
// restored before it.
void RestoreControls(Host& host, Form& form, std::vector<ControlEntry>& entries,
                     HostedControl* container, const std::string& source,
                     std::vector<std::pair<int, HostedControl*>>& tab_order,
                     const ControlNamer* rename = nullptr) {
  for (ControlEntry& control : entries) {
    if (rename) control.name = (*rename)(*control.info);
    HostedControl* site = nullptr;
    std::vector<std::string> keys;
    for (const auto& [key, value] : control.bag.Entries()) keys.push_back(key);
    try {
      // The place comes first, as the control is created; then the rest,
      // in the extender's order. Tab indices wait for every control.
      const TwipsRect rect{GivenTwips(control.extender, "Left", 0),
                           GivenTwips(control.extender, "Top", 0),
                           GivenTwips(control.extender, "Width", control.info->default_width),
                           GivenTwips(control.extender, "Height", control.info->default_height)};
      site = &host.RestoreControl(form, *control.info, control.name, std::move(control.bag), rect,
                                  container);
      for (const auto& [name, value] : control.extender) {
        if (name == "TabIndex") {
          tab_order.emplace_back(value.ToLong(), site);
        } else if (name != "Left" && name != "Top" && name != "Width" && name != "Height") {
          site->SetExtender(name, value);
        }
      }
    } catch (const RuntimeError& error) {
      throw RuntimeError(error.Number(),
                         source + ": control '" + control.name +
                             "': " + (error.Detail().empty() ? error.Message() : error.Detail()));
    }
    WarnOfUnknownKeys(host, *site, keys, source);
    RestoreControls(host, form, control.children, site, source, tab_order, rename);
  }
}

// Each control initialised and restored from its bag on a form nobody sees
// yet. A failing control fails the whole file.
std::unique_ptr<Form> BuildOffForm(Host& host, FormEntry& entry, const std::string& source) {
  std::unique_ptr<Form> form = host.NewDetachedForm(
      entry.name, GivenTwips(entry.properties, "Width", Host::kDefaultFormWidth),
      GivenTwips(entry.properties, "Height", Host::kDefaultFormHeight));
  for (const auto& [name, value] : entry.properties) {
    if (name != "Width" && name != "Height") form->SetProperty(name, value);
  }
  try {
    std::vector<std::pair<int, HostedControl*>> tab_order;
    RestoreControls(host, *form, entry.controls, nullptr, source, tab_order);
    // Placed in rising order, each index lands where the file says.
    std::stable_sort(tab_order.begin(), tab_order.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    for (const auto& [index, control] : tab_order) form->SetTabIndex(*control, index);
  } catch (...) {
    host.DiscardForm(std::move(form));
    throw;
  }
  return form;
}

// A value as a form file holds it.
Json FileJson(const Variant& value, const FileValue& file) {
  switch (file.kind) {
    case FileValue::Kind::Integer:
      return value.ToLong();
    case FileValue::Kind::Boolean:
      return value.ToBool();
    case FileValue::Kind::String:
      return value.ToString();
    default:
      return VariantToJson(value);
  }
}

Json ControlsToJson(Host& host, Form& form, const HostedControl* container);

// One control's entry, with what it holds.
Json ControlToJson(Host& host, Form& form, HostedControl& control) {
  Json entry;
  entry["Type"] = control.Class().name;
  entry["Name"] = control.Name();
  for (const auto& property : HostedControl::ExtenderProperties()) {
    if (property.file.kind == FileValue::Kind::None) continue;
    entry[std::string(property.name)] = FileJson(property.get(control), property.file);
  }
  entry["Properties"] = BagToJson(host.SaveControl(control));
  Json children = ControlsToJson(host, form, &control);
  if (!children.empty()) entry["Controls"] = std::move(children);
  return entry;
}

// The controls `container` holds (null: the form's own), back to front.
Json ControlsToJson(Host& host, Form& form, const HostedControl* container) {
  Json controls = Json::array();
  for (HostedControl* control : form.ChildrenOf(container)) {
    controls.push_back(ControlToJson(host, form, *control));
  }
  return controls;
}

Json FormToJson(Host& host, Form& form) {
  Json json;
  json["Name"] = form.Name();
  for (const auto& property : Form::Properties()) {
    if (property.file.kind == FileValue::Kind::None) continue;
    json[std::string(property.name)] = FileJson(property.get(form), property.file);
  }
  json["Controls"] = ControlsToJson(host, form, nullptr);
  return json;
}

// Resizes and shows `shown`, as when a form is loaded.
void ShowRestored(Host& host, const std::vector<HostedControl*>& shown, const std::string& name) {
  std::vector<std::pair<std::weak_ptr<int>, HostedControl*>> controls;
  for (HostedControl* control : shown) controls.emplace_back(control->Lifetime(), control);
  for (auto& [alive, control] : controls) {
    if (alive.expired()) continue;
    // A control that raises while it is sized or drawn (a legal value it
    // cannot draw) stays on the form with the properties the file gave
    // it, so that saving the form loses nothing: the error is reported,
    // and its detail goes to the form's author.
    try {
      control->Control().UserControl_Resize();
      if (!alive.expired()) control->Control().UserControl_Show();
    } catch (const RuntimeError& error) {
      host.Notify([&](HostObserver& o) { o.OnError(error); });
      if (!alive.expired()) {
        host.Warn(name + ": control '" + control->Name() + "' raised error " +
                  std::to_string(error.Number()) + " (" + error.Message() +
                  ") while it was drawn; it stays on the form as the file gave it");
      }
    }
  }
}

Form& LoadFormJson(Host& host, const Json& json, const std::string& name) {
  FormEntry entry = ReadForm(json, name);
  std::unique_ptr<Form> built = BuildOffForm(host, entry, name);
  // From here on the file is good: the form goes in, then every control is
  // resized and shown on it, as when a form is loaded.
  Form& form = host.InstallForm(std::move(built));
  std::vector<HostedControl*> controls;
  for (const auto& control : form.Controls()) controls.push_back(control.get());
  ShowRestored(host, controls, name);
  form.SetModified(false);
  return form;
}

}  // namespace

std::string FormFileText(Host& host, Form& form) {
  // The same layout SaveJsonFile writes.
  return FormToJson(host, form).dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

void SaveFormFile(Host& host, Form& form, const std::filesystem::path& path) {
  SaveJsonFile(path, FormToJson(host, form));
  form.SetModified(false);
}

namespace {

// Memory that runs out while a form loads is the host's error 7, naming
// the file; the forms already loaded stay as they were.
template <typename Load>
decltype(auto) LoadReportingMemory(const std::string& source, Load&& load) {
  try {
    return load();
  } catch (const std::bad_alloc&) {
    throw RuntimeError(err::kOutOfMemory, source);
  }
}

}  // namespace

Form& LoadFormText(Host& host, std::string_view text, std::string_view source) {
  const std::string name(source);
  return LoadReportingMemory(
      name, [&]() -> Form& { return LoadFormJson(host, ParseJsonStrict(text, name), name); });
}

Form& LoadFormFile(Host& host, const std::filesystem::path& path) {
  return LoadReportingMemory(path.string(), [&]() -> Form& {
    return LoadFormJson(host, LoadJsonFile(path), path.string());
  });
}

std::string ControlsFileText(Host& host, Form& form, std::span<HostedControl* const> controls) {
  const auto chosen = [&](const HostedControl* control) {
    return std::find(controls.begin(), controls.end(), control) != controls.end();
  };
  Json list = Json::array();
  for (HostedControl* control : form.PaintOrder()) {
    if (!chosen(control)) continue;
    bool inside_chosen = false;
    for (const HostedControl* outer = control->Container(); outer; outer = outer->Container()) {
      inside_chosen = inside_chosen || chosen(outer);
    }
    // A container's entry already holds it.
    if (!inside_chosen) list.push_back(ControlToJson(host, form, *control));
  }
  Json json;
  json["Controls"] = std::move(list);
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

namespace {

// Moves a place the file gives by `delta` twips; a place it leaves out
// is 0, so it becomes `delta`.
void Shift(OwnValues& values, std::string_view name, int delta) {
  constexpr int64_t kLimit = std::numeric_limits<int32_t>::max();
  for (auto& [key, value] : values) {
    if (key != name) continue;
    value =
        Variant(static_cast<int32_t>(std::clamp(value.ToLong() + int64_t{delta}, -kLimit, kLimit)));
    return;
  }
  values.emplace_back(name, Variant(static_cast<int32_t>(delta)));
}

}  // namespace

std::vector<HostedControl*> AddControlsText(Host& host, Form& form, std::string_view text,
                                            std::string_view source, HostedControl* container,
                                            const ControlNamer& rename, int dx, int dy) {
  const std::string name(source);
  return LoadReportingMemory(name, [&] {
    const Json json = ParseJsonStrict(text, name);
    const Reader reader(json, name);
    reader.OnlyKeys({"Controls"});
    std::vector<std::string> names;
    std::vector<ControlEntry> entries = ReadControls(reader.Require("Controls"), name, names);
    for (ControlEntry& entry : entries) {
      Shift(entry.extender, "Left", dx);
      Shift(entry.extender, "Top", dy);
    }
    // Form::Add puts each new control last in the tab order, so what came
    // in is the tail of the list.
    const size_t before = form.Controls().size();
    std::vector<std::pair<int, HostedControl*>> tab_order;
    try {
      RestoreControls(host, form, entries, container, name, tab_order, &rename);
    } catch (...) {
      // All or nothing: a container takes what it holds with it.
      while (form.Controls().size() > before) host.RemoveControl(*form.Controls().back());
      throw;
    }
    std::vector<HostedControl*> added;
    std::vector<HostedControl*> outermost;
    for (size_t i = before; i < form.Controls().size(); ++i) {
      HostedControl* control = form.Controls()[i].get();
      added.push_back(control);
      if (control->Container() == container) outermost.push_back(control);
    }
    // Last in the tab order, among themselves in the order the text gives.
    std::stable_sort(tab_order.begin(), tab_order.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    for (const auto& [index, control] : tab_order) {
      form.SetTabIndex(*control, static_cast<int>(form.Controls().size()));
    }
    ShowRestored(host, added, name);
    return outermost;
  });
}

}  // namespace kestu
