#pragma once
// The container's property bag: what a control writes on save and reads on
// load, an ordered map of keys to values. On disk it is a JSON object whose
// keys keep the order in which they were written.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kestu/foundation/Variant.h"

namespace kestu {

class PropertyBag {
 public:
  // The stored value of `name`, or `default_value` when the key is absent.
  // The value comes back as stored; the caller converts it to the type of
  // its field (use ReadAs below for that).
  Variant ReadProperty(std::string_view name, const Variant& default_value = Variant()) const;

  // Reads `name` converted to the type of `default_value`, as a typed
  // property reads it: error 6 when it does not fit, 13 when it is not of
  // that kind. The error names the key.
  Variant ReadAs(std::string_view name, const Variant& default_value) const;

  // Stores `value` under `name` (replacing an earlier value in its place).
  // With a default that equals the value the key is left out (and removed).
  void WriteProperty(std::string_view name, const Variant& value);
  void WriteProperty(std::string_view name, const Variant& value, const Variant& default_value);

  bool Contains(std::string_view name) const;
  const std::vector<std::pair<std::string, Variant>>& Entries() const { return entries_; }
  bool empty() const { return entries_.empty(); }

  // JSON text: one object, keys in order. Empty, Null and Nothing are
  // {"$type":"Empty"} and so on; 16-bit and 32-bit integers, singles and
  // Booleans keep their type ({"$type":"Integer","value":5}); doubles and
  // strings are plain JSON numbers and strings; a font is
  // {"$type":"Font","Name":...,"Size":...,"Bold":...}; a picture is
  // {"$type":"Picture","png":"<base64>"}.
  std::string ToJson(int indent = -1) const;
  // Parses the text of `ToJson`. A malformed text, a duplicated key or an
  // unknown type throws RuntimeError naming `source` and the key; nothing
  // is returned half-read.
  static PropertyBag FromJson(std::string_view json, std::string_view source = "property bag");

  void SaveToFile(const std::filesystem::path& path) const;
  static PropertyBag LoadFromFile(const std::filesystem::path& path);

  friend bool operator==(const PropertyBag&, const PropertyBag&) = default;

 private:
  std::vector<std::pair<std::string, Variant>> entries_;
};

}  // namespace kestu
