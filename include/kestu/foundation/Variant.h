#pragma once
// The host's Variant: the value type of late-bound properties, method
// arguments, event arguments and property bags, with the host's
// conversions.

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "kestu/foundation/StdFont.h"
#include "kestu/foundation/StdPicture.h"

namespace kestu {

enum class VarType : uint8_t {
  Empty,
  Null,
  Integer,  // 16-bit
  Long,     // 32-bit
  Single,
  Double,
  String,   // UTF-8
  Boolean,  // 16-bit, -1 / 0
  Font,     // an object: StdFont
  Picture,  // an object: StdPicture
  Nothing,  // an object reference set to nothing
};

const char* VarTypeName(VarType type);

class Variant {
 public:
  struct EmptyTag {};
  struct NullTag {};
  struct NothingTag {};
  struct BooleanTag {
    int16_t value;
    friend bool operator==(BooleanTag, BooleanTag) = default;
  };

  Variant() = default;  // Empty
  static Variant Null() { return Variant(NullTag{}); }
  static Variant Nothing() { return Variant(NothingTag{}); }
  static Variant Boolean(bool b) { return Variant(BooleanTag{static_cast<int16_t>(b ? -1 : 0)}); }

  Variant(int16_t v) : value_(v) {}   // NOLINT: implicit like the host's
  Variant(int32_t v) : value_(v) {}   // NOLINT
  Variant(float v) : value_(v) {}     // NOLINT
  Variant(double v) : value_(v) {}    // NOLINT
  Variant(std::string v) : value_(std::move(v)) {}  // NOLINT
  Variant(std::string_view v) : value_(std::string(v)) {}  // NOLINT
  Variant(const char* v) : value_(std::string(v)) {}  // NOLINT
  Variant(FontRef v);     // NOLINT: a null reference is Nothing
  Variant(PictureRef v);  // NOLINT: a null reference is Nothing

  VarType Type() const;
  bool IsEmpty() const { return Type() == VarType::Empty; }
  bool IsNull() const { return Type() == VarType::Null; }
  // Font, Picture or Nothing.
  bool IsObject() const;
  // A number kind: Integer, Long, Single, Double or Boolean (not a string
  // that reads as a number).
  bool IsNumeric() const;

  // Conversions as the host's CInt, CLng, CSng, CDbl, CStr and CBool:
  // reals round half to even, out of range is error 6, Null is error 94, a
  // string that is not a number (or an object) is error 13.
  int16_t ToInteger() const;
  int32_t ToLong() const;
  float ToSingle() const;
  double ToDouble() const;
  std::string ToString() const;
  bool ToBool() const;
  // The object inside, or null for Nothing and Empty; Null is error 94,
  // another type error 13.
  FontRef ToFont() const;
  PictureRef ToPicture() const;

  // Converts to the given type as an assignment to a typed property would.
  // `Empty` stands for a Variant-typed target and keeps the value as it is.
  Variant ConvertTo(VarType type) const;

  // Same type and same value (objects: the same object).
  friend bool operator==(const Variant& a, const Variant& b) { return a.value_ == b.value_; }

 private:
  template <typename T>
  explicit Variant(T tag, int) = delete;
  explicit Variant(NullTag t) : value_(t) {}
  explicit Variant(NothingTag t) : value_(t) {}
  explicit Variant(BooleanTag t) : value_(t) {}

  using Storage = std::variant<std::monostate, NullTag, int16_t, int32_t, float, double, std::string,
                               BooleanTag, FontRef, PictureRef, NothingTag>;
  friend bool operator==(NullTag, NullTag) { return true; }
  friend bool operator==(NothingTag, NothingTag) { return true; }
  Storage value_;
};

// The host's `Val`: the leading number of a string. Blanks (space, tab,
// line feed) are skipped anywhere; an optional sign, digits, at most one
// ".", an optional exponent ("E" or "D"), and "&H"/"&O" prefixes; parsing
// stops at the first other character. No number gives 0.
double Val(std::string_view text);

// The host's conversion of a real to a string (CStr): at most
// `significant_digits` significant digits (15 for a Double, 7 for a
// Single), no trailing zeros, "0.5" and "-0.5" with their leading zero, the
// exponent form "1E+15" from 1E+15 up and "1E-05" below 1E-04.
std::string FormatDouble(double value, int significant_digits = 15);

// The host's `Str`: as FormatDouble, but a blank stands before a
// non-negative number, and the zero before the point of a magnitude below
// one is left out (" .5", "-.5").
std::string Str(double value);

}  // namespace kestu
