#include "kestu/foundation/OleColor.h"

#include <gtest/gtest.h>

namespace kestu {
namespace {

// The scheme's colours and the swap from BGR show in every control's
// pixels; here only what lies past the scheme's table.
TEST(OleColor, IndexesPastTheTableAreBlack) {
  EXPECT_EQ(SystemColorRgb(31), 0u);
  EXPECT_EQ(SystemColorRgb(-1), 0u);
  EXPECT_EQ(ResolveColor(0x800000FF), 0u);
  EXPECT_NE(SystemColorRgb(30), 0u) << "the table covers 0..30";
}

}  // namespace
}  // namespace kestu
