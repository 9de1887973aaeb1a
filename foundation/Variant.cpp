#include "kestu/foundation/Variant.h"

#include <locale.h>

#include <algorithm>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "kestu/foundation/Integer.h"
#include "kestu/foundation/RuntimeError.h"

namespace kestu {
namespace {

constexpr std::string_view kBlanks = " \t\n\r";

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}
char Upper(char c) {
  return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c;
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (Upper(a[i]) != Upper(b[i])) return false;
  }
  return true;
}

std::string_view TrimBlanks(std::string_view text) {
  const size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  const size_t last = text.find_last_not_of(kBlanks);
  return text.substr(first, last - first + 1);
}

// A number found at the start of a text and how many characters it took.
struct ScannedNumber {
  double value = 0;
  size_t length = 0;  // 0: no number there
};

// "&H" and "&O" literals take the narrowest of the host's integer types that
// holds their digits, so "&HFFFF" is the 16-bit -1 and "&HFFFF&" (an explicit
// 32-bit literal) is 65535. Past 32 bits is an overflow.
ScannedNumber ScanRadixLiteral(std::string_view text) {
  if (text.size() < 3 || text[0] != '&') return {};
  const char prefix = Upper(text[1]);
  const int radix = prefix == 'H' ? 16 : prefix == 'O' ? 8 : 0;
  if (radix == 0) return {};
  uint64_t magnitude = 0;
  size_t pos = 2;
  for (; pos < text.size(); ++pos) {
    const char c = Upper(text[pos]);
    int digit = -1;
    if (IsDigit(c)) digit = c - '0';
    if (radix == 16 && c >= 'A' && c <= 'F') digit = c - 'A' + 10;
    if (digit < 0 || digit >= radix) break;
    magnitude = magnitude * static_cast<uint64_t>(radix) + static_cast<uint64_t>(digit);
    if (magnitude > 0xFFFFFFFFu) throw RuntimeError(err::kOverflow);
  }
  if (pos == 2) return {};
  const bool long_suffix = pos < text.size() && text[pos] == '&';
  if (long_suffix) ++pos;
  double value = 0;
  if (magnitude <= 0xFFFF && !long_suffix) {
    value = static_cast<int16_t>(static_cast<uint16_t>(magnitude));
  } else {
    value = static_cast<int32_t>(static_cast<uint32_t>(magnitude));
  }
  return {value, pos};
}

double ParseDecimalText(const std::string& literal) {
  // The host reads "." as the decimal point whatever the process locale.
  static const locale_t c_locale = newlocale(LC_ALL_MASK, "C", locale_t{});
  const double value = strtod_l(literal.c_str(), nullptr, c_locale);
  if (std::isinf(value)) throw RuntimeError(err::kOverflow);
  return value;
}

size_t SkipDigits(std::string_view text, size_t pos) {
  while (pos < text.size() && IsDigit(text[pos])) ++pos;
  return pos;
}

// Sign, digits, at most one ".", then an exponent ("E" or "D") only when
// digits follow it; stops before anything else.
ScannedNumber ScanDecimal(std::string_view text) {
  size_t pos = 0;
  if (pos < text.size() && (text[pos] == '+' || text[pos] == '-')) ++pos;
  const size_t integer_end = SkipDigits(text, pos);
  size_t digit_count = integer_end - pos;
  pos = integer_end;
  if (pos < text.size() && text[pos] == '.') {
    const size_t fraction_end = SkipDigits(text, pos + 1);
    digit_count += fraction_end - (pos + 1);
    pos = fraction_end;
  }
  if (digit_count == 0) return {};
  std::string literal(text.substr(0, pos));
  if (pos < text.size() && (Upper(text[pos]) == 'E' || Upper(text[pos]) == 'D')) {
    size_t exponent_pos = pos + 1;
    if (exponent_pos < text.size() && (text[exponent_pos] == '+' || text[exponent_pos] == '-')) {
      ++exponent_pos;
    }
    const size_t exponent_end = SkipDigits(text, exponent_pos);
    if (exponent_end > exponent_pos) {
      literal += 'E';
      literal += text.substr(pos + 1, exponent_end - (pos + 1));
      pos = exponent_end;
    }
  }
  return {ParseDecimalText(literal), pos};
}

ScannedNumber ScanNumber(std::string_view text) {
  if (!text.empty() && text[0] == '&') return ScanRadixLiteral(text);
  return ScanDecimal(text);
}

// A string as a number for CInt, CDbl and the like: the whole string,
// blanks around it allowed; anything else is a type mismatch.
double StringToNumber(std::string_view text) {
  const std::string_view trimmed = TrimBlanks(text);
  const ScannedNumber number = ScanNumber(trimmed);
  if (number.length == 0 || number.length != trimmed.size()) {
    throw RuntimeError(err::kTypeMismatch);
  }
  return number.value;
}

float DoubleToSingle(double value) {
  if (std::isfinite(value) && std::fabs(value) > FLT_MAX) throw RuntimeError(err::kOverflow);
  return static_cast<float>(value);
}

// The host's spelling of the values a real cannot write as digits.
std::string NonFiniteText(double value) {
  if (std::isnan(value)) return std::signbit(value) ? "-1.#IND" : "1.#QNAN";
  return value < 0 ? "-1.#INF" : "1.#INF";
}

}  // namespace

const char* VarTypeName(VarType type) {
  switch (type) {
    case VarType::Empty:
      return "Empty";
    case VarType::Null:
      return "Null";
    case VarType::Integer:
      return "Integer";
    case VarType::Long:
      return "Long";
    case VarType::Single:
      return "Single";
    case VarType::Double:
      return "Double";
    case VarType::String:
      return "String";
    case VarType::Boolean:
      return "Boolean";
    case VarType::Font:
      return "Font";
    case VarType::Picture:
      return "Picture";
    case VarType::Nothing:
      return "Nothing";
  }
  return "Unknown";
}

Variant::Variant(FontRef v) {
  if (v) {
    value_ = std::move(v);
  } else {
    value_ = NothingTag{};
  }
}

Variant::Variant(PictureRef v) {
  if (v) {
    value_ = std::move(v);
  } else {
    value_ = NothingTag{};
  }
}

VarType Variant::Type() const {
  // The storage's alternatives are declared in the order of VarType.
  static_assert(std::variant_size_v<Storage> == static_cast<size_t>(VarType::Nothing) + 1);
  static_assert(
      std::is_same_v<std::variant_alternative_t<static_cast<size_t>(VarType::Boolean), Storage>,
                     BooleanTag>);
  return static_cast<VarType>(value_.index());
}

bool Variant::IsObject() const {
  const VarType type = Type();
  return type == VarType::Font || type == VarType::Picture || type == VarType::Nothing;
}

bool Variant::IsNumeric() const {
  switch (Type()) {
    case VarType::Integer:
    case VarType::Long:
    case VarType::Single:
    case VarType::Double:
    case VarType::Boolean:
      return true;
    default:
      return false;
  }
}

double Variant::ToDouble() const {
  switch (Type()) {
    case VarType::Empty:
      return 0;
    case VarType::Null:
      throw RuntimeError(err::kInvalidUseOfNull);
    case VarType::Integer:
      return std::get<int16_t>(value_);
    case VarType::Long:
      return std::get<int32_t>(value_);
    case VarType::Single:
      return std::get<float>(value_);
    case VarType::Double:
      return std::get<double>(value_);
    case VarType::String:
      return StringToNumber(std::get<std::string>(value_));
    case VarType::Boolean:
      return std::get<BooleanTag>(value_).value;
    default:
      throw RuntimeError(err::kTypeMismatch);
  }
}

int16_t Variant::ToInteger() const {
  switch (Type()) {
    case VarType::Integer:
      return std::get<int16_t>(value_);
    case VarType::Long:
      return ToInt16(std::get<int32_t>(value_));
    default:
      return CInt(ToDouble());
  }
}

int32_t Variant::ToLong() const {
  if (Type() == VarType::Long) return std::get<int32_t>(value_);
  return CLng(ToDouble());
}

float Variant::ToSingle() const {
  if (Type() == VarType::Single) return std::get<float>(value_);
  return DoubleToSingle(ToDouble());
}

std::string Variant::ToString() const {
  switch (Type()) {
    case VarType::Empty:
      return {};
    case VarType::Null:
      throw RuntimeError(err::kInvalidUseOfNull);
    case VarType::Integer:
      return std::to_string(std::get<int16_t>(value_));
    case VarType::Long:
      return std::to_string(std::get<int32_t>(value_));
    case VarType::Single:
      return FormatDouble(std::get<float>(value_), 7);
    case VarType::Double:
      return FormatDouble(std::get<double>(value_));
    case VarType::String:
      return std::get<std::string>(value_);
    case VarType::Boolean:
      return std::get<BooleanTag>(value_).value != 0 ? "True" : "False";
    default:
      throw RuntimeError(err::kTypeMismatch);
  }
}

bool Variant::ToBool() const {
  if (Type() == VarType::String) {
    const std::string_view text = TrimBlanks(std::get<std::string>(value_));
    if (EqualsIgnoringCase(text, "True")) return true;
    if (EqualsIgnoringCase(text, "False")) return false;
  }
  return ToDouble() != 0;
}

namespace {

// A value asked for as an object: Empty and Nothing read as no object at
// all (an absent optional value), Null is error 94, anything else 13.
void CheckIsNoObject(VarType type) {
  if (type == VarType::Null) throw RuntimeError(err::kInvalidUseOfNull);
  if (type != VarType::Empty && type != VarType::Nothing) throw RuntimeError(err::kTypeMismatch);
}

}  // namespace

FontRef Variant::ToFont() const {
  if (Type() == VarType::Font) return std::get<FontRef>(value_);
  CheckIsNoObject(Type());
  return nullptr;
}

PictureRef Variant::ToPicture() const {
  if (Type() == VarType::Picture) return std::get<PictureRef>(value_);
  CheckIsNoObject(Type());
  return nullptr;
}

Variant Variant::ConvertTo(VarType type) const {
  switch (type) {
    case VarType::Empty:
      return *this;  // a Variant-typed target takes anything as it is
    case VarType::Null:
      if (!IsNull()) throw RuntimeError(err::kTypeMismatch);
      return *this;
    case VarType::Integer:
      return Variant(ToInteger());
    case VarType::Long:
      return Variant(ToLong());
    case VarType::Single:
      return Variant(ToSingle());
    case VarType::Double:
      return Variant(ToDouble());
    case VarType::String:
      return Variant(ToString());
    case VarType::Boolean:
      return Boolean(ToBool());
    case VarType::Font:
      return Variant(ToFont());
    case VarType::Picture:
      return Variant(ToPicture());
    case VarType::Nothing:
      if (!IsObject()) throw RuntimeError(err::kTypeMismatch);
      return *this;
  }
  throw RuntimeError(err::kTypeMismatch);
}

double Val(std::string_view text) {
  std::string compact;
  compact.reserve(text.size());
  for (char c : text) {
    if (c != ' ' && c != '\t' && c != '\n') compact += c;
  }
  // The sign of "-0" is dropped: the host has no negative zero to show.
  return ScanNumber(compact).value + 0.0;
}

namespace {

constexpr double kPowersOfTen[] = {1e0, 1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,
                                   1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17};

}  // namespace

std::string FormatDouble(double value, int significant_digits) {
  if (!std::isfinite(value)) return NonFiniteText(value);
  if (value == 0) return "0";

  const int digits_kept = std::clamp(significant_digits, 1, 17);
  // Whole numbers short enough to keep every digit are most of what is
  // shown (counts, percentages) and print as they are.
  if (std::trunc(value) == value && std::fabs(value) < kPowersOfTen[digits_kept]) {
    char whole[24];
    const auto end = std::to_chars(whole, whole + sizeof whole, static_cast<int64_t>(value)).ptr;
    return std::string(whole, end);
  }

  // Round to the significant digits first; the layout depends on the
  // rounded exponent (999999999999999.9 becomes 1E+15).
  char scientific[64];
  std::snprintf(scientific, sizeof scientific, "%.*e", digits_kept - 1, value);
  const std::string_view text(scientific);
  const bool negative = text[0] == '-';
  const size_t mantissa_start = negative ? 1 : 0;
  const size_t e_pos = text.find('e');
  std::string digits;
  for (size_t i = mantissa_start; i < e_pos; ++i) {
    if (IsDigit(text[i])) digits += text[i];
  }
  const int exponent = std::atoi(scientific + e_pos + 1);
  while (digits.size() > 1 && digits.back() == '0') digits.pop_back();

  std::string result = negative ? "-" : "";
  if (exponent >= digits_kept || exponent < -4) {
    result += digits[0];
    if (digits.size() > 1) result.append(".").append(digits, 1);
    char exponent_text[16];
    std::snprintf(exponent_text, sizeof exponent_text, "E%c%02d", exponent < 0 ? '-' : '+',
                  std::abs(exponent));
    return result + exponent_text;
  }
  if (exponent < 0) {
    result.append("0.").append(static_cast<size_t>(-exponent - 1), '0');
    return result.append(digits);
  }
  const size_t integer_digits = static_cast<size_t>(exponent) + 1;
  if (digits.size() <= integer_digits) {
    return result.append(digits).append(integer_digits - digits.size(), '0');
  }
  return result.append(digits, 0, integer_digits).append(".").append(digits, integer_digits);
}

std::string Str(double value) {
  const std::string text = FormatDouble(value);
  const bool negative = text[0] == '-';
  std::string result = negative ? "-" : " ";
  const size_t digits_start = negative ? 1 : 0;
  const bool leading_zero = text.compare(digits_start, 2, "0.") == 0;
  return result.append(text, digits_start + (leading_zero ? 1 : 0));
}

}  // namespace kestu
