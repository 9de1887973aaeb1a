#pragma once
// The number rules of the numeric edit box, as pure functions of its
// texts: which separators a format uses, the value of a stored text, the
// canonical form of a value, the stored text made from it, the
// normalisation that pads a text to its full decimal form, and the display
// string with thousands separators. Texts are sequences of characters
// (UTF-32), so one position is one character whatever its encoding.

#include <cstdint>
#include <string>
#include <string_view>

#include "kestu/foundation/Integer.h"

namespace kestu {

class NumberText {
 public:
  // A separator that was never set (a blank box loaded with an unknown
  // format) is this character, which no text holds.
  static constexpr char32_t kNoSeparator = 0;

  // Rules for a box whose separators and decimal length are these.
  NumberText(char32_t thousands, char32_t decimal, int16_t dec_max_length)
      : thousands_(thousands), decimal_(decimal), dec_max_length_(dec_max_length) {}

  // The separator rule: format 0 writes "1.234,5", format 1 "1,234.5"; any
  // other format leaves both separators as they were.
  static void ApplyFormat(int16_t number_format, char32_t& thousands, char32_t& decimal);

  // The value of a stored text: the decimal separator read as a point, then
  // the leading number (blanks, sign, digits, one point, digits). Anything
  // else stops the reading, an exponent letter too; no number gives 0.
  double ValueOf(std::u32string_view text) const;

  // A value in the invariant form ("." as point, no grouping, no leading
  // zero before the point, at most 15 significant digits), blanks trimmed.
  static std::u32string Canonical(double value);
  // The invariant form as the clipboard carries it: leading blanks removed.
  static std::string Invariant(double value);

  // The stored text made from a "."-form string: the point becomes the
  // decimal separator, the decimals are cut (never rounded) to the decimal
  // length, and the result is normalised.
  std::u32string FromCanonical(std::u32string_view canonical) const;

  // Pads a text to its full decimal form; a text worth exactly 0 becomes
  // the plain zero.
  std::u32string Normalise(std::u32string_view text) const;

  // The string drawn for a stored text: with `grouped`, the integer part
  // gets thousands separators and the decimals are shown up to the decimal
  // length; without, the text as it is.
  std::u32string Display(std::u32string_view text, bool grouped) const;

  // Inserts the thousands separator after every run of three characters
  // from the right, keeping a leading "-" in front.
  static std::u32string Group(std::u32string_view part, char32_t thousands);

  // The text's length as the host's 16-bit integer: error 6 past 32767.
  static Int16 Length(std::u32string_view text);

  // Position of the first decimal separator, or npos.
  size_t FindDecimal(std::u32string_view text) const;
  // The decimal separator as a text (empty when never set).
  std::u32string DecimalSeparator() const;

 private:
  std::u32string Zero() const;
  std::u32string Zeros(int count) const;
  size_t DecimalsShown() const;

  char32_t thousands_;
  char32_t decimal_;
  int16_t dec_max_length_;
};

}  // namespace kestu
