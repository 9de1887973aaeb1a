#include "kestu/foundation/Integer.h"

#include <gtest/gtest.h>

#include "support/ExpectRuntimeError.h"

namespace kestu {
namespace {

TEST(RoundHalfEven, HalvesGoToTheEvenNeighbour) {
  struct Case {
    double in, out;
  };
  for (const Case& c : {Case{2.5, 2},
                        {3.5, 4},
                        {-2.5, -2},
                        {-3.5, -4},
                        {0.5, 0},
                        {1.5, 2},
                        {2.4999, 2},
                        {2.5001, 3},
                        {-0.4, -0.0},
                        {1e20 + 0.5, 1e20}}) {
    EXPECT_EQ(RoundHalfEven(c.in), c.out) << c.in;
  }
  EXPECT_EQ(Int(-2.5), -3);
  EXPECT_EQ(Fix(-2.5), -2);
}

TEST(CInt, ChecksTheRangeAfterRounding) {
  EXPECT_EQ(CInt(32767.4), 32767);
  EXPECT_EQ(CInt(-32768.5), -32768);  // rounds to the even -32768, which fits
  EXPECT_EQ(CInt(2.5), 2);
  ExpectRuntimeError(err::kOverflow, [] { CInt(32767.5); });
  ExpectRuntimeError(err::kOverflow, [] { CInt(-32769); });
  ExpectRuntimeError(err::kOverflow, [] { CInt(std::nan("")); });
}

TEST(CLng, ChecksTheRangeAfterRounding) {
  EXPECT_EQ(CLng(2147483647.49), 2147483647);
  EXPECT_EQ(CLng(-2147483648.5), -2147483648);
  EXPECT_EQ(CLng(-1.5), -2);
  ExpectRuntimeError(err::kOverflow, [] { CLng(2147483647.5); });
  ExpectRuntimeError(err::kOverflow, [] { CLng(INFINITY); });
}

TEST(Narrowing, TrapsValuesThatDoNotFit) {
  EXPECT_EQ(ToInt16(-32768), -32768);
  EXPECT_EQ(ToInt32(2147483647), 2147483647);
  ExpectRuntimeError(err::kOverflow, [] { ToInt16(32768); });
  ExpectRuntimeError(err::kOverflow, [] { ToInt32(int64_t{1} << 31); });
}

TEST(CheckedArithmetic, OverflowIsErrorSix) {
  ExpectRuntimeError(err::kOverflow, [] { Int16(32767) + Int16(1); });
  ExpectRuntimeError(err::kOverflow, [] { Int16(-32768) - Int16(1); });
  ExpectRuntimeError(err::kOverflow, [] { -Int16(-32768); });
  ExpectRuntimeError(err::kOverflow, [] { Int16(256) * Int16(128); });
  ExpectRuntimeError(err::kOverflow, [] { Int32(65536) * Int32(32768); });
  EXPECT_EQ(Int16(255) * Int16(128), 32640);
  EXPECT_EQ(Int32(32767) + Int32(1), 32768);

  Int16 total = 32000;
  ExpectRuntimeError(err::kOverflow, [&] { total += Int16(1000); });
  EXPECT_EQ(total, 32000) << "a trapped operation leaves its target unchanged";
}

TEST(CheckedArithmetic, IntegerDivisionTruncatesAndTrapsZero) {
  EXPECT_EQ(IntDiv(Int16(-7), Int16(2)), -3);
  ExpectRuntimeError(err::kDivisionByZero, [] { IntDiv(Int16(1), Int16(0)); });
  ExpectRuntimeError(err::kOverflow, [] { IntDiv(Int16(-32768), Int16(-1)); });
  EXPECT_EQ(Int16::FromReal(2.5), 2);
  ExpectRuntimeError(err::kOverflow, [] { Int16::FromReal(32767.5); });
}

}  // namespace
}  // namespace kestu
