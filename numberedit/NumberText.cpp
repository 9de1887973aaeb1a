#include "numberedit/NumberText.h"

#include <algorithm>
#include <charconv>

#include "kestu/foundation/Variant.h"

namespace kestu {

namespace {

bool IsDigit(char32_t c) {
  return c >= U'0' && c <= U'9';
}

bool StartsWithMinus(std::u32string_view text) {
  return !text.empty() && text.front() == U'-';
}

// The leading number of a text: leading blanks, an optional sign, digits,
// at most one point, digits. Unlike the host's Val, blanks inside and
// exponents end the number: an exponent-form text reads as its mantissa.
double LeadingNumber(std::u32string_view text) {
  size_t i = 0;
  while (i < text.size() && text[i] == U' ') ++i;
  std::string number;
  if (i < text.size() && (text[i] == U'-' || text[i] == U'+')) {
    if (text[i] == U'-') number += '-';
    ++i;
  }
  bool seen_point = false;
  bool seen_digit = false;
  for (; i < text.size(); ++i) {
    const char32_t c = text[i];
    if (IsDigit(c)) {
      number += static_cast<char>(c);
      seen_digit = true;
    } else if (c == U'.' && !seen_point) {
      number += '.';
      seen_point = true;
    } else {
      break;
    }
  }
  if (!seen_digit) return 0;
  double value = 0;
  // from_chars ignores the process locale, which may write "," as point.
  const char* first = number.data();
  if (number[0] == '-') ++first;
  std::from_chars(first, number.data() + number.size(), value);
  if (number[0] == '-') value = -value;
  return value + 0.0;  // no negative zero
}

std::u32string_view TrimBlanks(std::u32string_view text) {
  while (!text.empty() && text.front() == U' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == U' ') text.remove_suffix(1);
  return text;
}

}  // namespace

void NumberText::ApplyFormat(int16_t number_format, char32_t& thousands, char32_t& decimal) {
  if (number_format == 0) {
    thousands = U'.';
    decimal = U',';
  } else if (number_format == 1) {
    thousands = U',';
    decimal = U'.';
  }
}

Int16 NumberText::Length(std::u32string_view text) {
  return Int16::From(static_cast<int64_t>(text.size()));
}

size_t NumberText::FindDecimal(std::u32string_view text) const {
  if (decimal_ == kNoSeparator) return std::u32string_view::npos;
  return text.find(decimal_);
}

std::u32string NumberText::DecimalSeparator() const {
  return decimal_ == kNoSeparator ? std::u32string() : std::u32string(1, decimal_);
}

std::u32string NumberText::Zeros(int count) const {
  return std::u32string(static_cast<size_t>(std::max(count, 0)), U'0');
}

std::u32string NumberText::Zero() const {
  std::u32string zero(1, U'0');
  if (dec_max_length_ < 1) return zero;
  return zero.append(DecimalSeparator()).append(Zeros(dec_max_length_));
}

// A negative decimal length shows and keeps no decimals.
size_t NumberText::DecimalsShown() const {
  return static_cast<size_t>(std::max<int16_t>(dec_max_length_, 0));
}

double NumberText::ValueOf(std::u32string_view text) const {
  Length(text);
  const size_t p = FindDecimal(text);
  if (p == std::u32string_view::npos) return LeadingNumber(text);
  std::u32string plain(text.substr(0, p));
  const std::u32string_view decimals = text.substr(p + 1);
  if (!decimals.empty()) plain.append(U".").append(decimals);
  return LeadingNumber(plain);
}

std::u32string NumberText::Canonical(double value) {
  const std::string rendered = Str(value);
  const std::u32string wide(rendered.begin(), rendered.end());
  return std::u32string(TrimBlanks(wide));
}

std::string NumberText::Invariant(double value) {
  std::string rendered = Str(value);
  rendered.erase(0, rendered.find_first_not_of(' '));
  return rendered;
}

std::u32string NumberText::FromCanonical(std::u32string_view canonical) const {
  Length(canonical);
  const size_t p = canonical.find(U'.');
  if (p == std::u32string_view::npos) return Normalise(canonical);
  // Cut, never rounded; the separator stays even with no decimal allowed,
  // so 12.7 becomes "12," when the box takes no decimals. Both on purpose.
  std::u32string text(canonical.substr(0, p));
  text += DecimalSeparator();
  text += canonical.substr(p + 1).substr(0, DecimalsShown());
  return Normalise(text);
}

std::u32string NumberText::Normalise(std::u32string_view text) const {
  Length(text);
  const std::u32string separator = DecimalSeparator();
  std::u32string result(text);
  const std::u32string_view bare = StartsWithMinus(text) ? text.substr(1) : text;
  if (text == U"-" || bare == separator) result = Zero();

  if (dec_max_length_ > 0) {
    const std::u32string before = result;
    const size_t p = FindDecimal(before);
    if (p == 0) {
      result = std::u32string(U"0").append(separator).append(before.substr(1, DecimalsShown()));
    } else if (p == 1 && before[0] == U'-') {
      result = std::u32string(U"-0").append(separator).append(before.substr(2, DecimalsShown()));
    }
    if (p == std::u32string::npos) {
      result = before + separator + Zeros(dec_max_length_);
    } else {
      const std::u32string decimals = before.substr(p + 1);
      const int missing = Int16(dec_max_length_) - Length(decimals);
      // Padding rebuilds from the text before the leading zero was added,
      // so ",5" pads to ",50" and only the next normalisation makes it
      // "0,50". Deliberate: the box's texts have always gone this way.
      if (missing > 0) result = before.substr(0, p + 1) + decimals + Zeros(missing);
    }
  }

  if (ValueOf(result) == 0) result = Zero();
  return result;
}

std::u32string NumberText::Group(std::u32string_view part, char32_t thousands) {
  const bool negative = !part.empty() && part.front() == U'-';
  if (negative) part.remove_prefix(1);
  std::u32string grouped = negative ? U"-" : U"";
  for (size_t i = 0; i < part.size(); ++i) {
    const size_t from_right = part.size() - i;
    if (i > 0 && from_right % 3 == 0 && thousands != kNoSeparator) grouped += thousands;
    grouped += part[i];
  }
  return grouped;
}

std::u32string NumberText::Display(std::u32string_view text, bool grouped) const {
  if (!grouped) return std::u32string(text);
  const size_t p = FindDecimal(text);
  if (p == std::u32string_view::npos) return Group(text, thousands_);
  return Group(text.substr(0, p), thousands_) + decimal_ +
         std::u32string(text.substr(p + 1).substr(0, DecimalsShown()));
}

}  // namespace kestu
