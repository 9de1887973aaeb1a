#include "kestu/foundation/RuntimeError.h"

#include <gtest/gtest.h>

namespace kestu {
namespace {

TEST(RuntimeError, CarriesTheHostNumberAndMessage) {
  const RuntimeError overflow(err::kOverflow);
  EXPECT_EQ(overflow.Number(), 6);
  EXPECT_STREQ(overflow.Message(), "Overflow");
  EXPECT_STREQ(overflow.what(), "6 Overflow");

  const RuntimeError missing(err::kFileNotFound, "/tmp/a.json");
  EXPECT_STREQ(missing.what(), "53 File not found: /tmp/a.json");
  EXPECT_EQ(missing.Detail(), "/tmp/a.json");
}

TEST(RuntimeError, UnknownNumbersGetTheGenericMessage) {
  EXPECT_STREQ(ErrorMessage(9999), "Application-defined or object-defined error");
  EXPECT_STREQ(RuntimeError(9999).what(), "9999 Application-defined or object-defined error");
}

}  // namespace
}  // namespace kestu
