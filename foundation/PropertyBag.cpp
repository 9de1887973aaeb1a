#include "kestu/foundation/PropertyBag.h"

#include <algorithm>

#include "foundation/VariantJson.h"
#include "kestu/foundation/RuntimeError.h"

namespace kestu {
namespace {

using Entries = std::vector<std::pair<std::string, Variant>>;

template <typename EntryList>
auto FindEntry(EntryList& entries, std::string_view name) {
  return std::find_if(entries.begin(), entries.end(),
                      [name](const auto& entry) { return entry.first == name; });
}

// Whether a value equals the default given for it, as the host compares
// them: numbers by value whatever their width (5 and 5.0 are equal), other
// values by type and content, objects by identity. Null equals nothing.
bool EqualsDefault(const Variant& value, const Variant& default_value) {
  if (value.IsNull() || default_value.IsNull()) return false;
  if (value.IsNumeric() && default_value.IsNumeric()) {
    return value.ToDouble() == default_value.ToDouble();
  }
  return value == default_value;
}

}  // namespace

Variant PropertyBag::ReadProperty(std::string_view name, const Variant& default_value) const {
  const auto entry = FindEntry(entries_, name);
  return entry == entries_.end() ? default_value : entry->second;
}

Variant PropertyBag::ReadAs(std::string_view name, const Variant& default_value) const {
  const auto entry = FindEntry(entries_, name);
  if (entry == entries_.end()) return default_value;
  try {
    return entry->second.ConvertTo(default_value.Type());
  } catch (const RuntimeError& e) {
    std::string detail = "key \"";
    detail.append(name)
        .append("\": ")
        .append(VarTypeName(entry->second.Type()))
        .append(" read as ")
        .append(VarTypeName(default_value.Type()));
    throw RuntimeError(e.Number(), std::move(detail));
  }
}

void PropertyBag::WriteProperty(std::string_view name, const Variant& value) {
  const auto entry = FindEntry(entries_, name);
  if (entry == entries_.end()) {
    entries_.emplace_back(std::string(name), value);
  } else {
    entry->second = value;
  }
}

void PropertyBag::WriteProperty(std::string_view name, const Variant& value,
                                const Variant& default_value) {
  if (EqualsDefault(value, default_value)) {
    const auto entry = FindEntry(entries_, name);
    if (entry != entries_.end()) entries_.erase(entry);
    return;
  }
  WriteProperty(name, value);
}

bool PropertyBag::Contains(std::string_view name) const {
  return FindEntry(entries_, name) != entries_.end();
}

std::string PropertyBag::ToJson(int indent) const {
  return BagToJson(*this).dump(indent, ' ', false,
                               nlohmann::ordered_json::error_handler_t::replace);
}

PropertyBag PropertyBag::FromJson(std::string_view json, std::string_view source) {
  return BagFromJson(ParseJsonStrict(json, source), source);
}

void PropertyBag::SaveToFile(const std::filesystem::path& path) const {
  SaveJsonFile(path, BagToJson(*this));
}

PropertyBag PropertyBag::LoadFromFile(const std::filesystem::path& path) {
  return BagFromJson(LoadJsonFile(path), path.string());
}

}  // namespace kestu
