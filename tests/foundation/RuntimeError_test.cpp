#include "kestu/foundation/RuntimeError.h"

#include <gtest/gtest.h>

namespace kestu {
namespace {

TEST(RuntimeError, CarriesTheHostNumberMessageAndDetail) {
  EXPECT_STREQ(RuntimeError(err::kOverflow).what(), "6 Overflow");
  const RuntimeError missing(err::kFileNotFound, "/tmp/a.json");
  EXPECT_STREQ(missing.what(), "53 File not found: /tmp/a.json");
  EXPECT_EQ(missing.Detail(), "/tmp/a.json");
  EXPECT_STREQ(RuntimeError(9999).what(), "9999 Application-defined or object-defined error");
}

}  // namespace
}  // namespace kestu
