#include "designer/PropertyText.h"

#include <charconv>
#include <cstdio>

#include "kestu/foundation/OleColor.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/foundation/StdFont.h"
#include "kestu/foundation/StdPicture.h"
#include "kestu/foundation/Text.h"

namespace kestu {

namespace {

constexpr std::string_view kNoPicture = "(None)";

const EnumInfo* EnumOf(const ClassInfo& info, const PropertyInfo& property) {
  for (const EnumInfo& e : info.enums) {
    if (SameName(e.name, property.type_name)) return &e;
  }
  return nullptr;
}

std::string_view Trim(std::string_view text) {
  const size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  const size_t last = text.find_last_not_of(" \t");
  return text.substr(first, last - first + 1);
}

[[noreturn]] void Refuse(const PropertyInfo& property, std::string_view text) {
  throw RuntimeError(err::kInvalidPropertyValue, property.name + ": \"" + std::string(text) + "\"");
}

std::optional<int64_t> ParseInteger(std::string_view text, int base) {
  int64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
  if (error != std::errc() || end != text.data() + text.size() || text.empty()) return {};
  return value;
}

std::optional<double> ParseReal(std::string_view text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || text.empty()) return {};
  return value;
}

std::string ColorText(OLE_COLOR color) {
  if (IsSystemColor(color)) {
    const size_t index = color & 0xFFu;
    if ((color & 0x7FFFFF00u) == 0 && index < SystemColorNames().size()) {
      return SystemColorNames()[index];
    }
  }
  char text[16];
  std::snprintf(text, sizeof text, "&H%08X&", color);
  return text;
}

Variant ParseColor(const PropertyInfo& property, std::string_view text) {
  const std::vector<std::string>& names = SystemColorNames();
  for (size_t i = 0; i < names.size(); ++i) {
    if (SameName(names[i], text)) return static_cast<int32_t>(0x80000000u | i);
  }
  std::string_view digits = text;
  int base = 10;
  if (digits.size() > 2 && (digits.substr(0, 2) == "&H" || digits.substr(0, 2) == "&h")) {
    digits.remove_prefix(2);
    if (!digits.empty() && digits.back() == '&') digits.remove_suffix(1);
    base = 16;
  } else if (!digits.empty() && digits.front() == '#' && digits.size() == 7) {
    // #RRGGBB, as people write colours elsewhere: stored as &H00BBGGRR&.
    if (const auto rgb = ParseInteger(digits.substr(1), 16)) {
      const auto c = static_cast<uint32_t>(*rgb);
      return static_cast<int32_t>(RGB(c >> 16 & 0xFF, c >> 8 & 0xFF, c & 0xFF));
    }
    Refuse(property, text);
  }
  const auto value = ParseInteger(digits, base);
  if (!value || *value < 0 || *value > 0xFFFFFFFFll) Refuse(property, text);
  return static_cast<int32_t>(static_cast<uint32_t>(*value));
}

std::string FontText(const FontRef& font) {
  if (!font) return "(None)";
  std::string text = font->Name + ", " + FormatDouble(font->Size, 7);
  if (font->Bold) text += ", Bold";
  if (font->Italic) text += ", Italic";
  if (font->Underline) text += ", Underline";
  if (font->Strikethrough) text += ", Strikethrough";
  return text;
}

Variant ParseFont(const PropertyInfo& property, std::string_view text) {
  std::vector<std::string_view> parts;
  for (size_t start = 0;;) {
    const size_t comma = text.find(',', start);
    parts.push_back(Trim(text.substr(start, comma - start)));
    if (comma == std::string_view::npos) break;
    start = comma + 1;
  }
  if (parts.size() < 2 || parts[0].empty()) Refuse(property, text);
  const auto size = ParseReal(parts[1]);
  if (!size || *size <= 0 || *size > 2048) Refuse(property, text);
  FontRef font = MakeFont(std::string(parts[0]), *size);
  for (size_t i = 2; i < parts.size(); ++i) {
    if (SameName(parts[i], "Bold")) {
      font->Bold = true;
    } else if (SameName(parts[i], "Italic")) {
      font->Italic = true;
    } else if (SameName(parts[i], "Underline")) {
      font->Underline = true;
    } else if (SameName(parts[i], "Strikethrough")) {
      font->Strikethrough = true;
    } else {
      Refuse(property, text);
    }
  }
  return Variant(font);
}

std::string PictureText(const PictureRef& picture) {
  if (!picture) return std::string(kNoPicture);
  return "(Picture " + std::to_string(picture->WidthPixels()) + "x" +
         std::to_string(picture->HeightPixels()) + ")";
}

bool IsNumberType(std::string_view type) {
  for (std::string_view number : {"Integer", "Long", "Single", "Double", "Byte", "Currency"}) {
    if (type == number) return true;
  }
  return false;
}

}  // namespace

const std::vector<std::string>& SystemColorNames() {
  static const std::vector<std::string> names = {"Scroll Bars",
                                                 "Desktop",
                                                 "Active Title Bar",
                                                 "Inactive Title Bar",
                                                 "Menu Bar",
                                                 "Window Background",
                                                 "Window Frame",
                                                 "Menu Text",
                                                 "Window Text",
                                                 "Active Title Bar Text",
                                                 "Active Border",
                                                 "Inactive Border",
                                                 "Application Workspace",
                                                 "Highlight",
                                                 "Highlight Text",
                                                 "Button Face",
                                                 "Button Shadow",
                                                 "Disabled Text",
                                                 "Button Text",
                                                 "Inactive Title Bar Text",
                                                 "Button Highlight",
                                                 "Button Dark Shadow",
                                                 "Button Light Shadow",
                                                 "ToolTip Text",
                                                 "ToolTip"};
  return names;
}

PropertyEditor EditorFor(const ClassInfo& info, const PropertyInfo& property) {
  const std::string& type = property.type_name;
  if (type == "OLE_COLOR") return {EditorKind::Color, SystemColorNames()};
  if (type == "Boolean") return {EditorKind::Boolean, {"False", "True"}};
  if (type == "StdFont" || type == "Font") return {EditorKind::Font, {}};
  if (type == "Picture" || type == "StdPicture") return {EditorKind::Picture, {}};
  if (const EnumInfo* e = EnumOf(info, property)) {
    PropertyEditor editor{EditorKind::Enumeration, {}};
    for (const auto& [name, value] : e->constants) editor.choices.push_back(name);
    return editor;
  }
  if (IsNumberType(type)) return {EditorKind::Number, {}};
  return {EditorKind::Text, {}};
}

std::string ValueText(const ClassInfo& info, const PropertyInfo& property, const Variant& value) {
  switch (EditorFor(info, property).kind) {
    case EditorKind::Color:
      return ColorText(static_cast<OLE_COLOR>(value.ToLong()));
    case EditorKind::Boolean:
      return value.ToBool() ? "True" : "False";
    case EditorKind::Font:
      return FontText(value.ToFont());
    case EditorKind::Picture:
      return PictureText(value.ToPicture());
    case EditorKind::Enumeration:
      for (const auto& [name, constant] : EnumOf(info, property)->constants) {
        if (constant == value.ToLong()) return name;
      }
      return value.ToString();
    case EditorKind::Number:
    case EditorKind::Text:
      break;
  }
  return value.IsObject() ? std::string("(Object)") : value.ToString();
}

Variant ParseValue(const ClassInfo& info, const PropertyInfo& property, std::string_view text,
                   const std::filesystem::path& base_dir) {
  const std::string_view trimmed = Trim(text);
  switch (EditorFor(info, property).kind) {
    case EditorKind::Color:
      return ParseColor(property, trimmed);
    case EditorKind::Boolean:
      if (SameName(trimmed, "True")) return Variant::Boolean(true);
      if (SameName(trimmed, "False")) return Variant::Boolean(false);
      Refuse(property, text);
    case EditorKind::Font:
      return ParseFont(property, trimmed);
    case EditorKind::Picture: {
      if (trimmed.empty() || trimmed == kNoPicture) return Variant(PictureRef());
      const std::filesystem::path path(trimmed);
      return Variant(LoadPicture(path.is_absolute() ? path : base_dir / path));
    }
    case EditorKind::Enumeration:
      for (const auto& [name, constant] : EnumOf(info, property)->constants) {
        if (SameName(name, trimmed)) return constant;
      }
      break;
    case EditorKind::Number:
      break;
    case EditorKind::Text:
      return Variant(std::string(text));
  }
  // A number: too big for the property is the control's own error (6)
  // when assigned, not the grid's.
  if (const auto whole = ParseInteger(trimmed, 10)) {
    if (*whole >= INT32_MIN && *whole <= INT32_MAX) return static_cast<int32_t>(*whole);
    return static_cast<double>(*whole);
  }
  if (const auto real = ParseReal(trimmed)) return *real;
  Refuse(property, text);
}

}  // namespace kestu
