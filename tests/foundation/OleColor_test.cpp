#include "kestu/foundation/OleColor.h"

#include <gtest/gtest.h>

namespace kestu {
namespace {

TEST(OleColor, SystemColoursResolveThroughTheDesktopScheme) {
  EXPECT_EQ(ResolveColor(syscolor::kWindowBackground), 0xFFFFFFu);
  EXPECT_EQ(ResolveColor(syscolor::kWindowText), 0x000000u);
  EXPECT_EQ(ResolveColor(syscolor::kHighlight), 0x000080u);
  EXPECT_EQ(ResolveColor(syscolor::kButtonFace), 0xC0C0C0u);
  EXPECT_EQ(ResolveColor(syscolor::kButtonShadow), 0x808080u);
  EXPECT_EQ(ResolveColor(syscolor::kGrayText), 0x808080u);
  EXPECT_EQ(ResolveColor(syscolor::kButtonText), 0x000000u);
  EXPECT_EQ(ResolveColor(syscolor::k3DHighlight), 0xFFFFFFu);
  EXPECT_EQ(ResolveColor(syscolor::k3DDarkShadow), 0x000000u);
  EXPECT_EQ(ResolveColor(0x80000018), 0xFFFFE1u);  // tooltip background
  EXPECT_EQ(ResolveColor(0x8000000E), 0xFFFFFFu);  // highlight text
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
