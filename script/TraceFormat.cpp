#include "script/TraceFormat.h"

#include <charconv>
#include <cstdio>

#include "kestu/foundation/StdPicture.h"
#include "kestu/foundation/Text.h"

namespace kestu {

namespace {

// std::to_chars writes "1e+15"; the host writes its exponent as "1E+15".
template <typename T>
std::string Shortest(T value) {
  if (value == 0) return "0";  // also -0, which the host prints as 0
  char buffer[64];
  auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, value);
  std::string text(buffer, ec == std::errc() ? end : buffer);
  for (char& c : text) {
    if (c == 'e') c = 'E';
  }
  return text;
}

std::string HexByte(unsigned char c) {
  char buffer[8];
  std::snprintf(buffer, sizeof buffer, "\\x%02X", c);
  return buffer;
}

}  // namespace

std::string QuoteString(std::string_view s) {
  std::string out = "\"";
  for (size_t i = 0; i < s.size();) {
    const auto c = static_cast<unsigned char>(s[i]);
    if (c >= 0x80) {
      // Characters print as they are; a stray byte prints as \xHH, so the
      // line reads back to the same bytes.
      const size_t length = ValidSequenceLength(s, i);
      if (length == 0) {
        out += HexByte(c);
        ++i;
      } else {
        out.append(s.substr(i, length));
        i += length;
      }
      continue;
    }
    switch (c) {
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\t':
        out += "\\t";
        break;
      default:
        if (c < 0x20 || c == 0x7F) {
          out += HexByte(c);
        } else {
          out += static_cast<char>(c);
        }
    }
    ++i;
  }
  return out + "\"";
}

std::string FormatReal(double value) {
  return Shortest(value);
}

std::string FormatSingle(float value) {
  return Shortest(value);
}

std::string FormatColor(uint32_t color) {
  char buffer[16];
  std::snprintf(buffer, sizeof buffer, "0x%08X", color);
  return buffer;
}

std::string FormatValue(const Variant& value, std::string_view type_name) {
  switch (value.Type()) {
    case VarType::Empty:
      return "Empty";
    case VarType::Null:
      return "Null";
    case VarType::Nothing:
      return "Nothing";
    case VarType::Boolean:
      return value.ToBool() ? "True" : "False";
    case VarType::String:
      return QuoteString(value.ToString());
    case VarType::Integer:
    case VarType::Long:
      if (type_name == kColorTypeName) return FormatColor(static_cast<uint32_t>(value.ToLong()));
      return std::to_string(value.ToLong());
    case VarType::Single:
      return FormatSingle(value.ToSingle());
    case VarType::Double:
      return FormatReal(value.ToDouble());
    case VarType::Font: {
      const FontRef font = value.ToFont();
      std::string text = "font(" + QuoteString(font->Name) + ", " + FormatReal(font->Size);
      if (font->Bold) text += ", bold";
      if (font->Italic) text += ", italic";
      if (font->Underline) text += ", underline";
      if (font->Strikethrough) text += ", strikethrough";
      return text + ")";
    }
    case VarType::Picture: {
      const PictureRef picture = value.ToPicture();
      return "picture(" + std::to_string(picture->WidthPixels()) + "x" +
             std::to_string(picture->HeightPixels()) + ")";
    }
  }
  return "Empty";
}

}  // namespace kestu
