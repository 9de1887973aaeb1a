#pragma once
// The host's own properties, a control's extender and a form's, declared
// once in a table: the name, how to get and set it, and how a form file
// keeps it. Late binding by name and the form file both read the table.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "kestu/foundation/RuntimeError.h"
#include "kestu/foundation/Text.h"
#include "kestu/foundation/Variant.h"

namespace kestu {

// How a form file holds a value: a whole number within [min, max], true or
// false, a string, a font; or `None`, a value the file keeps its own way
// or not at all.
struct FileValue {
  enum class Kind { None, Integer, Boolean, String, Font };
  Kind kind = Kind::None;
  int64_t min = 0;
  int64_t max = 0;
};

template <typename Owner>
struct OwnProperty {
  std::string_view name;
  Variant (*get)(const Owner&) = nullptr;
  void (*set)(Owner&, const Variant&) = nullptr;  // null: read-only
  FileValue file;
  std::string_view type_name;  // as a class's properties name theirs: "Single", "OLE_COLOR"
  std::string_view help;       // English, then the Portuguese in brackets
};

// The entry of `table` named `name`, in any case; null when there is none.
template <typename Owner>
const OwnProperty<Owner>* FindOwnProperty(std::span<const OwnProperty<Owner>> table,
                                          std::string_view name) {
  for (const OwnProperty<Owner>& property : table) {
    if (SameName(property.name, name)) return &property;
  }
  return nullptr;
}

// Error 438 for a name the table lacks, 383 for a read-only property.
template <typename Owner>
const OwnProperty<Owner>& OwnPropertyOrRaise(std::span<const OwnProperty<Owner>> table,
                                             std::string_view name) {
  const OwnProperty<Owner>* property = FindOwnProperty(table, name);
  if (!property) throw RuntimeError(err::kNotSupported, std::string(name));
  return *property;
}

template <typename Owner>
void SetOwnProperty(std::span<const OwnProperty<Owner>> table, Owner& owner, std::string_view name,
                    const Variant& value) {
  const OwnProperty<Owner>& property = OwnPropertyOrRaise(table, name);
  if (!property.set) throw RuntimeError(err::kPropertyReadOnly, std::string(property.name));
  property.set(owner, value);
}

}  // namespace kestu
