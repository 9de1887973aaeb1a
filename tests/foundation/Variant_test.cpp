#include "kestu/foundation/Variant.h"

#include <gtest/gtest.h>

#include <cmath>
#include <optional>

#include "support/ExpectRuntimeError.h"

namespace kestu {
namespace {

const Variant kTrue = Variant::Boolean(true);
const Variant kFalse = Variant::Boolean(false);

struct Conversion {
  Variant from;
  VarType to;
  Variant expected;  // when no error is expected
  int error = 0;     // the host error number, 0 for none
};

std::string Describe(const Conversion& c) {
  std::string from = VarTypeName(c.from.Type());
  if (c.from.Type() == VarType::String) from += " \"" + c.from.ToString() + "\"";
  return from + " -> " + VarTypeName(c.to);
}

void ExpectConversions(std::initializer_list<Conversion> cases) {
  for (const Conversion& c : cases) {
    SCOPED_TRACE(Describe(c));
    if (c.error != 0) {
      ExpectRuntimeError(c.error, [&] { c.from.ConvertTo(c.to); });
    } else {
      EXPECT_TRUE(c.from.ConvertTo(c.to) == c.expected);
    }
  }
}

TEST(VariantConversion, BooleansAreSixteenBitMinusOne) {
  ExpectConversions({
      {kTrue, VarType::String, "True"},
      {kFalse, VarType::String, "False"},
      {kTrue, VarType::Integer, int16_t{-1}},
      {kTrue, VarType::Long, int32_t{-1}},
      {kTrue, VarType::Double, -1.0},
      {int16_t{2}, VarType::Boolean, kTrue},
      {0.0, VarType::Boolean, kFalse},
      {"True", VarType::Boolean, kTrue},
      {"false", VarType::Boolean, kFalse},
      {" TRUE ", VarType::Boolean, kTrue},
      {"0", VarType::Boolean, kFalse},
      {"0.5", VarType::Boolean, kTrue},
      {"abc", VarType::Boolean, {}, err::kTypeMismatch},
      {"", VarType::Boolean, {}, err::kTypeMismatch},
  });
}

TEST(VariantConversion, StringsMustBeWholeNumbers) {
  ExpectConversions({
      {" 12 ", VarType::Integer, int16_t{12}},
      {"\t-7\n", VarType::Long, int32_t{-7}},
      {"&H1F", VarType::Integer, int16_t{31}},
      {"&hff", VarType::Long, int32_t{255}},
      {"&O17", VarType::Integer, int16_t{15}},
      {"&HFFFF", VarType::Integer, int16_t{-1}},  // a four-digit literal is 16-bit
      {"&HFFFF&", VarType::Long, int32_t{65535}},
      {"&H10000", VarType::Long, int32_t{65536}},
      {"1E+3", VarType::Long, int32_t{1000}},
      {"1.5d2", VarType::Double, 150.0},
      {"+.5", VarType::Double, 0.5},
      {"5.", VarType::Double, 5.0},
      {"2.5", VarType::Integer, int16_t{2}},
      {"3.5", VarType::Integer, int16_t{4}},
      {"40000", VarType::Integer, {}, err::kOverflow},
      {"1E+400", VarType::Double, {}, err::kOverflow},
      {"&H100000000", VarType::Long, {}, err::kOverflow},
      {"12abc", VarType::Integer, {}, err::kTypeMismatch},
      {"1 2", VarType::Integer, {}, err::kTypeMismatch},
      {"12,5", VarType::Double, {}, err::kTypeMismatch},
      {"1E", VarType::Double, {}, err::kTypeMismatch},
      {"", VarType::Integer, {}, err::kTypeMismatch},
      {"-", VarType::Double, {}, err::kTypeMismatch},
      {"&H", VarType::Long, {}, err::kTypeMismatch},
  });
}

// Rounding and the ranges themselves are the integer rules' own tests.
TEST(VariantConversion, NumbersRoundHalfEvenAndTrapOverflow) {
  ExpectConversions({
      {int32_t{40000}, VarType::Integer, {}, err::kOverflow},
      {int32_t{-5}, VarType::Integer, int16_t{-5}},
      {2.5f, VarType::Long, int32_t{2}},
      {1e40, VarType::Single, {}, err::kOverflow},
      {0.1, VarType::Single, 0.1f},
      {int16_t{7}, VarType::Double, 7.0},
      {int16_t{-7}, VarType::String, "-7"},
      {int32_t{123456}, VarType::String, "123456"},
      {1.1f, VarType::String, "1.1"},
      {0.29 * 100, VarType::String, "29"},
  });
}

TEST(VariantConversion, EmptyNullAndObjects) {
  const FontRef font = MakeFont("Arial", 10);
  ExpectConversions({
      {Variant(), VarType::Integer, int16_t{0}},
      {Variant(), VarType::Double, 0.0},
      {Variant(), VarType::String, ""},
      {Variant(), VarType::Boolean, kFalse},
      {Variant(), VarType::Font, Variant::Nothing()},
      {Variant::Null(), VarType::Integer, {}, err::kInvalidUseOfNull},
      {Variant::Null(), VarType::String, {}, err::kInvalidUseOfNull},
      {Variant::Null(), VarType::Boolean, {}, err::kInvalidUseOfNull},
      {Variant::Null(), VarType::Font, {}, err::kInvalidUseOfNull},
      {Variant::Null(), VarType::Null, Variant::Null()},
      {font, VarType::Integer, {}, err::kTypeMismatch},
      {font, VarType::String, {}, err::kTypeMismatch},
      {font, VarType::Font, font},
      {font, VarType::Picture, {}, err::kTypeMismatch},
      {font, VarType::Nothing, font},
      {Variant::Nothing(), VarType::Font, Variant::Nothing()},
      {Variant::Nothing(), VarType::Picture, Variant::Nothing()},
      {Variant::Nothing(), VarType::Long, {}, err::kTypeMismatch},
      {int16_t{5}, VarType::Font, {}, err::kTypeMismatch},
      {int16_t{5}, VarType::Nothing, {}, err::kTypeMismatch},
      {"x", VarType::Picture, {}, err::kTypeMismatch},
      {"x", VarType::Null, {}, err::kTypeMismatch},
  });
}

TEST(VariantConversion, AVariantTargetKeepsTheValueAsItIs) {
  for (const Variant& v : {Variant(int16_t{3}), Variant("3"), Variant::Null(), Variant()}) {
    EXPECT_TRUE(v.ConvertTo(VarType::Empty) == v) << VarTypeName(v.Type());
  }
}

TEST(Variant, ANullObjectReferenceIsNothing) {
  EXPECT_EQ(Variant(FontRef()).Type(), VarType::Nothing);
  EXPECT_EQ(Variant(PictureRef()).Type(), VarType::Nothing);
  EXPECT_EQ(Variant::Nothing().ToFont(), nullptr);
  EXPECT_TRUE(Variant::Nothing().IsObject());
  EXPECT_FALSE(Variant("1").IsNumeric());
  EXPECT_TRUE(kTrue.IsNumeric());
}

TEST(Variant, EqualityIsByTypeAndObjectIdentity) {
  EXPECT_FALSE(Variant(int16_t{5}) == Variant(int32_t{5}));
  EXPECT_TRUE(Variant::Null() == Variant::Null());
  const FontRef a = MakeFont("Arial", 10);
  const FontRef b = MakeFont("Arial", 10);
  EXPECT_TRUE(Variant(a) == Variant(a));
  EXPECT_FALSE(Variant(a) == Variant(b)) << "two font objects are two objects";
}

TEST(Val, ReadsTheLeadingNumber) {
  struct Case {
    const char* text;
    double value;
  };
  for (const Case& c : {
           Case{"12,5", 12},
           {" - 3", -3},
           {"1.2.3", 1.2},
           {"&HFF", 255},
           {"&HFFFF", -1},
           {"&O10", 8},
           {"1e3", 1000},
           {"1E", 1},
           {"2d-2", 0.02},
           {"abc", 0},
           {"-", 0},
           {".", 0},
           {"  1 2 3 x4", 123},
           {"\t\n-.5", -0.5},
           {"1234567.89", 1234567.89},
           {"+7", 7},
           {"12-3", 12},
       }) {
    EXPECT_EQ(Val(c.text), c.value) << '"' << c.text << '"';
  }
  EXPECT_FALSE(std::signbit(Val("-0")));
}

// The everyday forms (1234567.891, 1E+15, 1E-05, -0.5) are in the
// scripts' traces.
TEST(FormatDouble, WritesTheHostsShortestForm) {
  struct Case {
    double value;
    const char* text;
  };
  for (const Case& c : {
           Case{0, "0"},
           {-0.0, "0"},
           {0.29 * 100, "29"},
           {999999999999999.0, "999999999999999"},
           {999999999999999.9, "1E+15"},
           {123456789012345678.0, "1.23456789012346E+17"},
           {0.0001, "0.0001"},
           {0.000123, "0.000123"},
           {0.0000123, "1.23E-05"},
           {0.5, "0.5"},
           {1.0 / 3, "0.333333333333333"},
           {2.0 / 3, "0.666666666666667"},
           {-1e100, "-1E+100"},
           {1e-300, "1E-300"},
           {-9999, "-9999"},
           {0.1 + 0.2, "0.3"},
       }) {
    EXPECT_EQ(FormatDouble(c.value), c.text) << c.value;
  }
}

TEST(FormatDouble, SinglesKeepSevenDigits) {
  EXPECT_EQ(FormatDouble(1.0f / 3, 7), "0.3333333");
  EXPECT_EQ(FormatDouble(1e7f, 7), "1E+07");
  EXPECT_EQ(FormatDouble(9999999.0f, 7), "9999999");
  EXPECT_EQ(FormatDouble(16777216.0f, 7), "1.677722E+07");
}

TEST(Str, PutsABlankBeforeNonNegativeNumbersAndDropsTheLeadingZero) {
  EXPECT_EQ(Str(0.5), " .5");
  EXPECT_EQ(Str(-0.5), "-.5");
  EXPECT_EQ(Str(0), " 0");
  EXPECT_EQ(Str(12), " 12");
  EXPECT_EQ(Str(-12.25), "-12.25");
  EXPECT_EQ(Str(1234567.891), " 1234567.891");
  EXPECT_EQ(Str(1e15), " 1E+15");
  EXPECT_EQ(Str(0.00001), " 1E-05");
}

}  // namespace
}  // namespace kestu
