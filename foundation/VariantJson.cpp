#include "foundation/VariantJson.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "kestu/foundation/RuntimeError.h"
#include "kestu/foundation/StdFont.h"
#include "kestu/foundation/StdPicture.h"

namespace kestu {
namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kTypeKey = "$type";

[[noreturn]] void Invalid(std::string_view context, std::string_view what) {
  std::string detail(context);
  detail.append(": ").append(what);
  throw RuntimeError(err::kInvalidPropertyValue, std::move(detail));
}

// Text quoted as JSON writes it, so that odd keys stay readable in messages.
std::string Quoted(std::string_view text) {
  return Json(std::string(text)).dump(-1, ' ', false, Json::error_handler_t::replace);
}

// JSON text is UTF-8; bytes that are not are written as U+FFFD rather than
// making the whole save fail.
std::string AsUtf8(const std::string& text) {
  try {
    (void)Json(text).dump();
    return text;
  } catch (const Json::type_error&) {
    return Json::parse(Quoted(text)).get<std::string>();
  }
}

// ---------------------------------------------------------------- base64

constexpr std::string_view kBase64Alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::string Base64Encode(std::span<const uint8_t> bytes) {
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (size_t i = 0; i < bytes.size(); i += 3) {
    const size_t count = std::min<size_t>(3, bytes.size() - i);
    uint32_t group = uint32_t{bytes[i]} << 16;
    if (count > 1) group |= uint32_t{bytes[i + 1]} << 8;
    if (count > 2) group |= bytes[i + 2];
    for (size_t k = 0; k < 4; ++k) {
      text += k <= count ? kBase64Alphabet[(group >> (18 - 6 * k)) & 0x3F] : '=';
    }
  }
  return text;
}

int Base64Digit(char c) {
  const size_t pos = kBase64Alphabet.find(c);
  return pos == std::string_view::npos ? -1 : static_cast<int>(pos);
}

// Strict: whole groups of four, padding only at the very end.
std::optional<std::vector<uint8_t>> Base64Decode(std::string_view text) {
  if (text.size() % 4 != 0) return std::nullopt;
  size_t padding = 0;
  while (padding < 2 && padding < text.size() && text[text.size() - 1 - padding] == '=') {
    ++padding;
  }
  std::vector<uint8_t> bytes;
  bytes.reserve(text.size() / 4 * 3);
  uint32_t group = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    const bool is_padding = i >= text.size() - padding;
    const int digit = is_padding ? 0 : Base64Digit(text[i]);
    if (digit < 0) return std::nullopt;
    group = (group << 6) | static_cast<uint32_t>(digit);
    if (i % 4 == 3) {
      const size_t count = i + 1 == text.size() ? 3 - padding : 3;
      for (size_t k = 0; k < count; ++k)
        bytes.push_back(static_cast<uint8_t>(group >> (16 - 8 * k)));
      group = 0;
    }
  }
  return bytes;
}

// ---------------------------------------------------------------- fields

const Json* FindField(const Json& object, std::string_view name) {
  const auto it = object.find(std::string(name));
  return it == object.end() ? nullptr : &*it;
}

// Typed objects take no field they do not know: a misspelt "bold" is an
// error, not a silently regular font.
void ExpectOnlyFields(const Json& object, std::initializer_list<std::string_view> allowed,
                      std::string_view context) {
  for (const auto& [key, unused] : object.items()) {
    if (key == kTypeKey) continue;
    bool known = false;
    for (std::string_view name : allowed) known = known || key == name;
    if (!known) Invalid(context, "unexpected field " + Quoted(key));
  }
}

const Json& TheValueField(const Json& object, std::string_view context) {
  ExpectOnlyFields(object, {"value"}, context);
  const Json* value = FindField(object, "value");
  if (value == nullptr) Invalid(context, "missing field \"value\"");
  return *value;
}

template <typename T>
T IntegerFromJson(const Json& value, std::string_view context, const char* type_name) {
  if (!value.is_number_integer()) Invalid(context, "expected an integer");
  const bool fits = value.is_number_unsigned()
                        ? value.get<uint64_t>() <= uint64_t{std::numeric_limits<T>::max()}
                        : value.get<int64_t>() >= std::numeric_limits<T>::min() &&
                              value.get<int64_t>() <= std::numeric_limits<T>::max();
  if (!fits) Invalid(context, value.dump() + " is out of range for " + type_name);
  return static_cast<T>(value.get<int64_t>());
}

// Reals that JSON cannot write as numbers travel as text.
Json RealToJson(double value) {
  if (std::isfinite(value)) return value;
  if (std::isnan(value)) return "NaN";
  return value < 0 ? "-Infinity" : "Infinity";
}

double RealFromJson(const Json& value, std::string_view context) {
  if (value.is_number()) return value.get<double>();
  if (value.is_string()) {
    const std::string& text = value.get_ref<const std::string&>();
    if (text == "NaN") return std::numeric_limits<double>::quiet_NaN();
    if (text == "Infinity") return std::numeric_limits<double>::infinity();
    if (text == "-Infinity") return -std::numeric_limits<double>::infinity();
  }
  Invalid(context, "expected a number");
}

// A single is written with its own shortest digits (1.1, not
// 1.100000023841858) whenever those digits read back to the same single.
double SingleToJsonNumber(float value) {
  char text[32];
  const auto written = std::to_chars(text, text + sizeof text, value);
  double shortest = 0;
  std::from_chars(text, written.ptr, shortest);
  return static_cast<float>(shortest) == value ? shortest : double{value};
}

float SingleFromJson(const Json& value, std::string_view context) {
  const double real = RealFromJson(value, context);
  if (std::isfinite(real) && std::fabs(real) > FLT_MAX) {
    Invalid(context, value.dump() + " is out of range for a Single");
  }
  return static_cast<float>(real);
}

// ---------------------------------------------------------------- objects

struct FontFlag {
  const char* name;
  bool StdFont::*member;
};
constexpr FontFlag kFontFlags[] = {{"Bold", &StdFont::Bold},
                                   {"Italic", &StdFont::Italic},
                                   {"Underline", &StdFont::Underline},
                                   {"Strikethrough", &StdFont::Strikethrough}};

Json FontToJson(const StdFont& font) {
  Json json;
  json[kTypeKey] = VarTypeName(VarType::Font);
  json["Name"] = AsUtf8(font.Name);
  json["Size"] = RealToJson(font.Size);
  for (const FontFlag& flag : kFontFlags) json[flag.name] = font.*flag.member;
  return json;
}

// Fields left out keep the new font's defaults.
FontRef FontFromJson(const Json& json, std::string_view context) {
  ExpectOnlyFields(json, {"Name", "Size", "Bold", "Italic", "Underline", "Strikethrough"}, context);
  auto font = std::make_shared<StdFont>();
  if (const Json* name = FindField(json, "Name")) {
    if (!name->is_string()) Invalid(context, "font \"Name\": expected a string");
    font->Name = name->get<std::string>();
  }
  if (const Json* size = FindField(json, "Size")) {
    if (!size->is_number()) Invalid(context, "font \"Size\": expected a number");
    font->Size = size->get<double>();
    if (!(font->Size > 0)) Invalid(context, "font \"Size\": must be above zero");
  }
  for (const FontFlag& flag : kFontFlags) {
    if (const Json* value = FindField(json, flag.name)) {
      if (!value->is_boolean()) {
        Invalid(context, std::string("font \"") + flag.name + "\": expected true or false");
      }
      (*font).*flag.member = value->get<bool>();
    }
  }
  return font;
}

Json PictureToJson(const StdPicture& picture) {
  Json json;
  json[kTypeKey] = VarTypeName(VarType::Picture);
  json["png"] =
      Base64Encode(EncodePng(picture.WidthPixels(), picture.HeightPixels(), picture.Pixels()));
  return json;
}

PictureRef PictureFromJson(const Json& json, std::string_view context) {
  ExpectOnlyFields(json, {"png"}, context);
  const Json* png = FindField(json, "png");
  if (png == nullptr) Invalid(context, "missing field \"png\"");
  if (!png->is_string()) Invalid(context, "\"png\": expected a base64 string");
  const auto bytes = Base64Decode(png->get_ref<const std::string&>());
  if (!bytes) Invalid(context, "\"png\": not valid base64");
  try {
    return LoadPictureFromBytes(*bytes);
  } catch (const RuntimeError& e) {
    throw RuntimeError(e.Number(), std::string(context) + ": the embedded picture does not decode");
  }
}

Json TaggedToJson(VarType type) {
  Json json;
  json[kTypeKey] = VarTypeName(type);
  return json;
}

Json TaggedToJson(VarType type, Json value) {
  Json json = TaggedToJson(type);
  json["value"] = std::move(value);
  return json;
}

std::optional<VarType> VarTypeNamed(std::string_view name) {
  for (int i = 0; i <= static_cast<int>(VarType::Nothing); ++i) {
    const auto type = static_cast<VarType>(i);
    if (name == VarTypeName(type)) return type;
  }
  return std::nullopt;
}

Variant TaggedFromJson(const Json& json, std::string_view context) {
  const Json* tag = FindField(json, kTypeKey);
  if (tag == nullptr) Invalid(context, "an object value needs a \"$type\"");
  if (!tag->is_string()) Invalid(context, "\"$type\": expected a string");
  const std::string& type_name = tag->get_ref<const std::string&>();
  const std::optional<VarType> type = VarTypeNamed(type_name);
  if (!type) Invalid(context, "unknown \"$type\" " + Quoted(type_name));

  switch (*type) {
    case VarType::Empty:
      ExpectOnlyFields(json, {}, context);
      return Variant();
    case VarType::Null:
      ExpectOnlyFields(json, {}, context);
      return Variant::Null();
    case VarType::Nothing:
      ExpectOnlyFields(json, {}, context);
      return Variant::Nothing();
    case VarType::Integer:
      return Variant(IntegerFromJson<int16_t>(TheValueField(json, context), context, "an Integer"));
    case VarType::Long:
      return Variant(IntegerFromJson<int32_t>(TheValueField(json, context), context, "a Long"));
    case VarType::Single:
      return Variant(SingleFromJson(TheValueField(json, context), context));
    case VarType::Double:
      return Variant(RealFromJson(TheValueField(json, context), context));
    case VarType::String: {
      const Json& value = TheValueField(json, context);
      if (!value.is_string()) Invalid(context, "expected a string");
      return Variant(value.get<std::string>());
    }
    case VarType::Boolean: {
      const Json& value = TheValueField(json, context);
      if (!value.is_boolean()) Invalid(context, "expected true or false");
      return Variant::Boolean(value.get<bool>());
    }
    case VarType::Font:
      return Variant(FontFromJson(json, context));
    case VarType::Picture:
      return Variant(PictureFromJson(json, context));
  }
  Invalid(context, "unknown \"$type\" " + Quoted(type_name));
}

// ---------------------------------------------------------------- files

class FileDescriptor {
 public:
  explicit FileDescriptor(int fd) : fd_(fd) {}
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  int Get() const { return fd_; }
  // Closes now, reporting the error a deferred write may only show here.
  int Close() {
    const int result = ::close(fd_);
    fd_ = -1;
    return result;
  }

 private:
  int fd_;
};

std::string ReadWholeFile(const std::filesystem::path& path) {
  FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (file.Get() < 0) throw ErrorFromErrno(errno, path.string());
  // A device or a pipe may never end (/dev/zero): only a regular file is a
  // form or a bag.
  struct stat status {};
  if (::fstat(file.Get(), &status) != 0) throw ErrorFromErrno(errno, path.string());
  if (!S_ISREG(status.st_mode)) {
    throw RuntimeError(err::kPathFileAccessError, path.string() + ": not a regular file");
  }
  std::string text;
  char buffer[65536];
  for (;;) {
    const ssize_t count = ::read(file.Get(), buffer, sizeof buffer);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throw ErrorFromErrno(errno, path.string());
    if (count == 0) return text;
    if (text.size() + static_cast<size_t>(count) > kMaxJsonFileBytes) {
      Invalid(path.string(), "larger than the " + std::to_string(kMaxJsonFileBytes >> 20) +
                                 " MiB a form or bag file may be");
    }
    text.append(buffer, static_cast<size_t>(count));
  }
}

// Returns 0, or the errno of the first failure.
int WriteAll(int fd, std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = ::write(fd, text.data(), text.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return errno;
    text.remove_prefix(static_cast<size_t>(count));
  }
  return 0;
}

}  // namespace

Json VariantToJson(const Variant& value) {
  const VarType type = value.Type();
  switch (type) {
    case VarType::Empty:
    case VarType::Null:
    case VarType::Nothing:
      return TaggedToJson(type);
    case VarType::Integer:
      return TaggedToJson(type, value.ToInteger());
    case VarType::Long:
      return TaggedToJson(type, value.ToLong());
    case VarType::Single: {
      const float single = value.ToSingle();
      return TaggedToJson(
          type, std::isfinite(single) ? Json(SingleToJsonNumber(single)) : RealToJson(single));
    }
    case VarType::Double: {
      const double real = value.ToDouble();
      return std::isfinite(real) ? Json(real) : TaggedToJson(type, RealToJson(real));
    }
    case VarType::String:
      return AsUtf8(value.ToString());
    case VarType::Boolean:
      return TaggedToJson(type, value.ToBool());
    case VarType::Font:
      return FontToJson(*value.ToFont());
    case VarType::Picture:
      return PictureToJson(*value.ToPicture());
  }
  return TaggedToJson(VarType::Empty);
}

Variant VariantFromJson(const Json& json, std::string_view context) {
  switch (json.type()) {
    case Json::value_t::string:
      return Variant(json.get<std::string>());
    case Json::value_t::number_integer:
    case Json::value_t::number_unsigned:
    case Json::value_t::number_float:
      return Variant(json.get<double>());
    case Json::value_t::boolean:
      return Variant::Boolean(json.get<bool>());
    case Json::value_t::object:
      return TaggedFromJson(json, context);
    case Json::value_t::null:
      Invalid(context, "null is not a value (Null is {\"$type\":\"Null\"})");
    default:
      Invalid(context, "expected a value, found " + std::string(json.type_name()));
  }
}

Json BagToJson(const PropertyBag& bag) {
  Json json = Json::object();
  for (const auto& [name, value] : bag.Entries()) json[AsUtf8(name)] = VariantToJson(value);
  return json;
}

PropertyBag BagFromJson(const Json& json, std::string_view context) {
  if (!json.is_object()) Invalid(context, "expected an object of properties");
  // A bag is looked up key by key: more keys than any control saves is no
  // control's bag, and would make every look-up slow.
  if (json.size() > kMaxBagKeys) {
    Invalid(context, "more than " + std::to_string(kMaxBagKeys) + " properties");
  }
  PropertyBag bag;
  for (const auto& [name, value] : json.items()) {
    bag.WriteProperty(name, VariantFromJson(value, std::string(context) + ": key " + Quoted(name)));
  }
  return bag;
}

namespace {

// Builds the document as it is read. An object's keys go on the end of its
// list without a search (ordered objects would look each key up in turn,
// which is quadratic), and a hash set per open object catches a key given
// twice; nesting stops at kMaxJsonDepth. Reading is linear in the text.
class StrictJsonBuilder {
 public:
  explicit StrictJsonBuilder(std::string_view source) : source_(source) {}

  Json Take() { return std::move(root_); }
  const std::string& Error() const { return error_; }

  // ---- nlohmann's SAX interface ----
  bool null() { return Add(Json(nullptr)) != nullptr; }
  bool boolean(bool value) { return Add(Json(value)) != nullptr; }
  bool number_integer(Json::number_integer_t value) { return Add(Json(value)) != nullptr; }
  bool number_unsigned(Json::number_unsigned_t value) { return Add(Json(value)) != nullptr; }
  bool number_float(Json::number_float_t value, const std::string&) {
    return Add(Json(value)) != nullptr;
  }
  bool string(std::string& value) { return Add(Json(std::move(value))) != nullptr; }
  bool binary(Json::binary_t& value) { return Add(Json(std::move(value))) != nullptr; }
  bool start_object(std::size_t) {
    Open(Json::object());
    objects_.emplace_back();
    return true;
  }
  bool key(std::string& key) {
    OpenObject& object = objects_.back();
    if (!object.keys.insert(key).second) {
      std::string where;
      for (size_t i = 0; i + 1 < objects_.size(); ++i) {
        where += (i == 0 ? " in " : " > ") + Quoted(objects_[i].current);
      }
      Invalid(source_, "duplicated key " + Quoted(key) + where);
    }
    object.current = std::move(key);
    return true;
  }
  bool end_object() {
    objects_.pop_back();
    open_.pop_back();
    return true;
  }
  bool start_array(std::size_t) {
    Open(Json::array());
    return true;
  }
  bool end_array() {
    open_.pop_back();
    return true;
  }
  bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception& error) {
    // nlohmann prefixes its messages with its own code, "[json.exception...] ".
    std::string_view message = error.what();
    if (const size_t end = message.find("] "); end != std::string_view::npos) {
      message.remove_prefix(end + 2);
    }
    error_ = message;
    return false;
  }

 private:
  struct OpenObject {
    std::unordered_set<std::string> keys;
    std::string current;  // the key being read, for naming where a duplicate sits
  };

  // Puts `value` where the reading is: the document itself, the end of the
  // open array, or the open object under its current key.
  Json* Add(Json value) {
    if (open_.empty()) {
      root_ = std::move(value);
      return &root_;
    }
    Json& parent = *open_.back();
    if (parent.is_array()) {
      auto& items = parent.get_ref<Json::array_t&>();
      items.push_back(std::move(value));
      return &items.back();
    }
    auto& members = static_cast<Json::object_t::Container&>(parent.get_ref<Json::object_t&>());
    // The key of an object or array still names where a duplicate inside
    // it sits; any other key is done with.
    std::string& key = objects_.back().current;
    if (value.is_structured()) {
      members.emplace_back(key, std::move(value));
    } else {
      members.emplace_back(std::move(key), std::move(value));
    }
    return &members.back().second;
  }

  // Only the innermost open container grows, so the pointers to the ones
  // around it stay good.
  void Open(Json container) {
    if (open_.size() >= static_cast<size_t>(kMaxJsonDepth)) {
      Invalid(source_, "nested deeper than " + std::to_string(kMaxJsonDepth) + " levels");
    }
    open_.push_back(Add(std::move(container)));
  }

  std::string_view source_;
  Json root_;
  std::vector<Json*> open_;
  std::vector<OpenObject> objects_;
  std::string error_;
};

}  // namespace

Json ParseJsonStrict(std::string_view text, std::string_view source) {
  StrictJsonBuilder builder(source);
  if (!Json::sax_parse(text.begin(), text.end(), &builder)) {
    Invalid(source, "malformed JSON: " + builder.Error());
  }
  return builder.Take();
}

Json LoadJsonFile(const std::filesystem::path& path) {
  return ParseJsonStrict(ReadWholeFile(path), path.string());
}

void SaveJsonFile(const std::filesystem::path& path, const Json& json) {
  const std::string text = json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
  std::filesystem::path temporary = path;
  temporary += ".saving";
  FileDescriptor file(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
  if (file.Get() < 0) throw ErrorFromErrno(errno, path.string(), /*creating=*/true);
  int failure = WriteAll(file.Get(), text);
  if (failure == 0 && file.Close() != 0) failure = errno;
  if (failure == 0 && ::rename(temporary.c_str(), path.c_str()) != 0) failure = errno;
  if (failure != 0) {
    ::unlink(temporary.c_str());
    throw ErrorFromErrno(failure, path.string(), /*creating=*/true);
  }
}

}  // namespace kestu
