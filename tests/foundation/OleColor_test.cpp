#include "kestu/foundation/OleColor.h"

#include <gtest/gtest.h>

namespace kestu {
namespace {

// The scheme's colours show in every control's pixels; here only that a
// system colour is looked up by its index.
TEST(OleColor, SystemColoursResolveThroughTheDesktopScheme) {
  EXPECT_EQ(ResolveColor(syscolor::kWindowBackground), 0xFFFFFFu);
  EXPECT_EQ(ResolveColor(syscolor::kHighlight), 0x000080u);
  EXPECT_EQ(ResolveColor(0x80000018), 0xFFFFE1u);  // tooltip background
}

TEST(OleColor, IndexesPastTheTableAreBlack) {
  EXPECT_EQ(SystemColorRgb(31), 0u);
  EXPECT_EQ(SystemColorRgb(-1), 0u);
  EXPECT_EQ(ResolveColor(0x800000FF), 0u);
  EXPECT_NE(SystemColorRgb(30), 0u) << "the table covers 0..30";
}

TEST(OleColor, PlainColoursSwapFromBgrToRgb) {
  EXPECT_EQ(ResolveColor(255), 0xFF0000u);  // 255 is pure red
  EXPECT_EQ(ResolveColor(RGB(0x12, 0x34, 0x56)), 0x123456u);
  EXPECT_EQ(RGB(0x12, 0x34, 0x56), 0x563412u);
  EXPECT_FALSE(IsSystemColor(0x00FFFFFF));
  EXPECT_TRUE(IsSystemColor(0x80000005));
}

}  // namespace
}  // namespace kestu
