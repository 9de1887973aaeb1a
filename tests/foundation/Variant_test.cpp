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

// Booleans and strings read as numbers are in the probe's conversions script.
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

// The shortest form of a double is in the probe's conversions script.
TEST(FormatDouble, SinglesKeepSevenDigits) {
  EXPECT_EQ(FormatDouble(1.0f / 3, 7), "0.3333333");
  EXPECT_EQ(FormatDouble(-0.0), "0");
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
