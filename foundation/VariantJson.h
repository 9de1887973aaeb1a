#pragma once
// The JSON form of values and property bags, shared by the bag's own files
// and the host's form files, which embed bags. Every reader here checks the
// whole input before it returns anything, so a bad file never half-loads.

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string_view>

#include "kestu/foundation/PropertyBag.h"
#include "kestu/foundation/Variant.h"

namespace kestu {

// One value: doubles and strings as plain JSON, everything else as an object
// tagged with "$type" (`{"$type":"Integer","value":5}`).
nlohmann::ordered_json VariantToJson(const Variant& value);

// Reads what VariantToJson writes (plain true/false are also Booleans). A
// content error is RuntimeError 380 whose detail is `context` followed by
// what is wrong; a picture that does not decode is 481.
Variant VariantFromJson(const nlohmann::ordered_json& json, std::string_view context);

// A bag as one object, keys in the order they were written.
nlohmann::ordered_json BagToJson(const PropertyBag& bag);
// Reads BagToJson's object; `context` names the source ("form1.json") and
// each key is added to it in messages.
PropertyBag BagFromJson(const nlohmann::ordered_json& json, std::string_view context);

// Bounds on what a form or bag file may be, each refused with error 380
// naming the file: its size, how deep its values nest (a form's
// controls nest inside containers, at most 16 deep, each a few levels).
inline constexpr size_t kMaxJsonFileBytes = size_t{16} << 20;
inline constexpr int kMaxJsonDepth = 128;
// And how many properties one control's bag may hold.
inline constexpr size_t kMaxBagKeys = 4096;

// Parses JSON text, rejecting a key given twice in one object at any depth
// (the plain parser would silently keep the last). Errors are RuntimeError
// 380 naming `source` and the line or the key.
nlohmann::ordered_json ParseJsonStrict(std::string_view text, std::string_view source);

// Reads and strictly parses a whole JSON file; a missing file is error 53
// naming the path.
nlohmann::ordered_json LoadJsonFile(const std::filesystem::path& path);
// Writes JSON, indented by two, to a file. The file is replaced in one step,
// so a failed save leaves the previous file as it was.
void SaveJsonFile(const std::filesystem::path& path, const nlohmann::ordered_json& json);

}  // namespace kestu
