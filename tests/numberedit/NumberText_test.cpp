#include "numberedit/NumberText.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <random>
#include <string>

#include "kestu/foundation/Text.h"
#include "support/ExpectRuntimeError.h"

namespace kestu {
namespace {

NumberText Brazil(int16_t decimals) {
  return NumberText(U'.', U',', decimals);
}

// What the Value setter stores: the canonical form, cut and normalised,
// then normalised once more by the redraw every setter ends with.
std::string StoredForValue(const NumberText& rules, double value) {
  return EncodeUtf8(rules.Normalise(rules.FromCanonical(NumberText::Canonical(value))));
}

std::string Shown(const NumberText& rules, std::string_view stored) {
  return EncodeUtf8(rules.Display(DecodeUtf8(stored), true));
}

// The common cases (a value cut to the decimals, a sign alone, the
// separator kept without decimals, the clipboard's form) are shown through
// the box by the numberedit scripts; these are the rest.
TEST(NumberTextValue, NormalisationPadsToTheDecimalsAndNeverCuts) {
  struct Case {
    int16_t decimals;
    std::u32string text;
    std::string stored;
  };
  const Case cases[] = {
      {2, U"12", "12,00"},      {2, U"12,", "12,00"}, {2, U"12,5", "12,50"},
      {2, U"12,345", "12,345"}, {0, U"12,5", "12,5"}, {3, U"-,5", "-,500"},  // the lost "-0"
      {2, U"-,", "0,00"},       {3, U"", "0,000"},    {2, U"-0", "0,00"},    // zero alone
  };
  for (const Case& c : cases) {
    EXPECT_EQ(EncodeUtf8(Brazil(c.decimals).Normalise(c.text)), c.stored)
        << EncodeUtf8(c.text) << " with " << c.decimals << " decimals";
  }
  // An exponent form is kept as text and padded as any other.
  EXPECT_EQ(StoredForValue(Brazil(2), 1e15), "1E+15,00");
}

TEST(NumberTextValue, ValueReadsTheLeadingNumberOnly) {
  EXPECT_EQ(Brazil(2).ValueOf(U"-,5"), -0.5);
  EXPECT_EQ(Brazil(2).ValueOf(U"  12,5"), 12.5);
  EXPECT_EQ(Brazil(2).ValueOf(U"1 2"), 1);
}

TEST(NumberTextValue, ATextPast32767CharactersOverflows) {
  const std::u32string huge(32768, U'1');
  ExpectRuntimeError(err::kOverflow, [&] { Brazil(2).Normalise(huge); });
  ExpectRuntimeError(err::kOverflow, [&] { Brazil(2).ValueOf(huge); });
  EXPECT_NO_THROW(Brazil(2).ValueOf(std::u32string(32767, U'1')));
}

TEST(NumberTextDisplay, CutsTheShownDecimalsAndGroupsCharactersNotBytes) {
  EXPECT_EQ(Shown(Brazil(2), "-123456,789"), "-123.456,78");
  EXPECT_EQ(Shown(Brazil(0), ""), "");
  EXPECT_EQ(Shown(Brazil(0), "ççççç"), "çç.ççç");
}

// ---- Property: the display of a value is the truncated number grouped
// as the C library groups it in the format's locale. ----

struct Grouper {
  std::string thousands;
  std::string decimal;
  bool from_locale = false;

  // The integer's digits grouped: by the C library in the locale when it
  // is installed, else by dividing by 1000.
  std::string Group(long long magnitude) const {
    if (from_locale) {
      char text[64];
// The "'" flag is POSIX, not ISO C++: -Wpedantic would refuse it.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat"
      std::snprintf(text, sizeof text, "%'lld", magnitude);
#pragma GCC diagnostic pop
      return text;
    }
    std::string grouped;
    for (; magnitude >= 1000; magnitude /= 1000) {
      char block[8];
      std::snprintf(block, sizeof block, "%03lld", magnitude % 1000);
      grouped = thousands + block + grouped;
    }
    return std::to_string(magnitude) + grouped;
  }
};

Grouper GrouperFor(const char* locale, const char* thousands, const char* decimal) {
  Grouper grouper{thousands, decimal};
  if (std::setlocale(LC_NUMERIC, locale)) {
    const std::lconv* conventions = std::localeconv();
    grouper.from_locale = true;
    grouper.thousands = conventions->thousands_sep;
    grouper.decimal = conventions->decimal_point;
  }
  return grouper;
}

// A random decimal number of at most 15 significant digits, as text.
struct Sample {
  bool negative;
  long long integer;     // magnitude of the integer part
  std::string decimals;  // without trailing zeros
  std::string Text() const {
    std::string text = negative ? "-" : "";
    text.append(std::to_string(integer));
    if (!decimals.empty()) text.append(".").append(decimals);
    return text;
  }
};

Sample RandomSample(std::mt19937_64& random) {
  std::uniform_int_distribution<int> digits(0, 15);
  const int integer_digits = digits(random);
  const int decimal_digits =
      std::uniform_int_distribution<int>(0, std::min(7, 15 - integer_digits))(random);
  Sample sample{random() % 2 == 0, 0, ""};
  for (int i = 0; i < integer_digits; ++i) {
    sample.integer = sample.integer * 10 + static_cast<long long>(random() % 10);
  }
  for (int i = 0; i < decimal_digits; ++i)
    sample.decimals += static_cast<char>('0' + random() % 10);
  while (!sample.decimals.empty() && sample.decimals.back() == '0') sample.decimals.pop_back();
  return sample;
}

std::string Expected(const Sample& sample, int decimals, const Grouper& grouper) {
  std::string cut = sample.decimals.substr(0, static_cast<size_t>(decimals));
  cut.resize(static_cast<size_t>(decimals), '0');
  const bool cut_is_zero = sample.integer == 0 && cut.find_first_not_of('0') == std::string::npos;
  if (cut_is_zero) return decimals > 0 ? "0" + grouper.decimal + cut : "0";
  std::string shown = (sample.negative ? "-" : "") + grouper.Group(sample.integer);
  // Without decimals a fraction still leaves its separator behind.
  if (decimals > 0 || !sample.decimals.empty()) shown += grouper.decimal + cut;
  return shown;
}

void CheckFormat(const char* locale, char32_t thousands, char32_t decimal, uint64_t seed) {
  const Grouper grouper = GrouperFor(locale, EncodeUtf8(std::u32string(1, thousands)).c_str(),
                                     EncodeUtf8(std::u32string(1, decimal)).c_str());
  std::setlocale(LC_NUMERIC, "C");
  std::mt19937_64 random(seed);
  for (int i = 0; i < 20000; ++i) {
    const Sample sample = RandomSample(random);
    const double value = std::stod(sample.Text());
    // The invariant form writes magnitudes below 1E-04 with an exponent,
    // which the box keeps as text: not a number to group.
    if (value != 0 && std::abs(value) < 1e-4) continue;
    const int16_t decimals = static_cast<int16_t>(i % 6);
    const NumberText rules(thousands, decimal, decimals);
    const std::string stored = StoredForValue(rules, value);
    if (grouper.from_locale) std::setlocale(LC_NUMERIC, locale);
    const std::string expected = Expected(sample, decimals, grouper);
    std::setlocale(LC_NUMERIC, "C");
    ASSERT_EQ(Shown(rules, stored), expected)
        << "value " << sample.Text() << " with " << decimals << " decimals, stored " << stored;
  }
}

TEST(NumberTextDisplayProperty, EachFormatGroupsAsItsLocale) {
  CheckFormat("pt_BR.UTF-8", U'.', U',', 20261122);
  CheckFormat("en_US.UTF-8", U',', U'.', 19950401);
}

}  // namespace
}  // namespace kestu
