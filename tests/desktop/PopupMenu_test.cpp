#include "kestu/desktop/PopupMenu.h"

#include <gtest/gtest.h>

namespace kestu {
namespace {

// The numeric edit box's menu with cut and copy disabled.
PopupMenu EditMenu() {
  return PopupMenu({{"&Recortar", false},
                    {"&Copiar", false},
                    {"Co&lar", true},
                    {"&Excluir", true},
                    {"-", true},
                    {"&Selecionar Tudo", true}});
}

// The vertical middle of item `index`, found by walking down the menu.
int MiddleOf(const PopupMenu& menu, int index) {
  int first = -1, last = -1;
  for (int y = 0; y < menu.Height(); ++y) {
    if (menu.ItemAt(20, y) == index) {
      if (first < 0) first = y;
      last = y;
    }
  }
  return (first + last) / 2;
}

TEST(PopupMenu, LayoutItemsInsideTheFrame) {
  const PopupMenu menu = EditMenu();
  EXPECT_EQ(menu.ItemAt(1, MiddleOf(menu, 0)), -1);  // the frame
  EXPECT_EQ(menu.ItemAt(20, 1), -1);
  EXPECT_EQ(menu.ItemAt(20, menu.Height() - 1), -1);
  int previous = -1;
  for (int index = 0; index < 6; ++index) {
    const int middle = MiddleOf(menu, index);
    EXPECT_GT(middle, previous) << index;
    EXPECT_EQ(menu.ItemAt(menu.Width() / 2, middle), index);
    previous = middle;
  }
}

// Only an enabled item can be chosen by the pointer; any item but a
// separator lights up under it.
TEST(PopupMenu, PointerChoosesEnabledItemsAndHighlightsAllButSeparators) {
  PopupMenu menu = EditMenu();
  EXPECT_EQ(menu.ChoiceAt(20, MiddleOf(menu, 1)), std::nullopt);  // disabled
  EXPECT_EQ(menu.ChoiceAt(20, MiddleOf(menu, 4)), std::nullopt);  // separator
  EXPECT_EQ(menu.ChoiceAt(20, MiddleOf(menu, 2)), 2);
  EXPECT_EQ(menu.ChoiceAt(20, 0), std::nullopt);
  menu.PointAt(20, MiddleOf(menu, 1));
  EXPECT_EQ(menu.Highlighted(), 1);  // a disabled item still lights up
  menu.PointAt(20, MiddleOf(menu, 4));
  EXPECT_EQ(menu.Highlighted(), -1);
  menu.PointAt(-5, -5);
  EXPECT_EQ(menu.Highlighted(), -1);
}

TEST(PopupMenu, ArrowsSkipSeparatorsAndWrap) {
  PopupMenu menu = EditMenu();
  EXPECT_FALSE(menu.PressKey(40).closed);
  EXPECT_EQ(menu.Highlighted(), 0);
  for (int i = 0; i < 3; ++i) menu.PressKey(40);
  EXPECT_EQ(menu.Highlighted(), 3);
  menu.PressKey(40);
  EXPECT_EQ(menu.Highlighted(), 5);
  menu.PressKey(40);
  EXPECT_EQ(menu.Highlighted(), 0);
  menu.PressKey(38);
  EXPECT_EQ(menu.Highlighted(), 5);
}

TEST(PopupMenu, EnterEscapeAndAccessKeys) {
  PopupMenu menu = EditMenu();
  menu.PressKey(40);  // "&Recortar", disabled
  EXPECT_FALSE(menu.PressKey(13).closed);
  menu.PressKey(40);
  menu.PressKey(40);  // "Co&lar"
  const MenuKeyResult entered = menu.PressKey(13);
  EXPECT_TRUE(entered.closed);
  EXPECT_EQ(entered.chosen, 2);

  const MenuKeyResult escaped = EditMenu().PressKey(27);
  EXPECT_TRUE(escaped.closed);
  EXPECT_EQ(escaped.chosen, std::nullopt);

  EXPECT_EQ(EditMenu().PressKey('S').chosen, 5);
  EXPECT_EQ(EditMenu().PressKey('L').chosen, 2);  // the marked letter, not the first
  EXPECT_FALSE(EditMenu().PressKey('C').closed);  // "&Copiar" is disabled
  EXPECT_FALSE(EditMenu().PressKey('Q').closed);
  // A doubled ampersand is no access key.
  EXPECT_EQ(PopupMenu({{"A && B", true}, {"&Bold", true}}).PressKey('B').chosen, 1);
}

TEST(PopupMenu, PictureShowsHighlightFrameAndGreyedText) {
  PopupMenu menu = EditMenu();
  const Raster& picture = menu.Picture();
  EXPECT_EQ(picture.GetPixel(0, 0), ResolveColor(syscolor::k3DLight));
  EXPECT_EQ(picture.GetPixel(1, 1), ResolveColor(syscolor::k3DHighlight));
  EXPECT_EQ(picture.GetPixel(menu.Width() - 1, menu.Height() - 1),
            ResolveColor(syscolor::k3DDarkShadow));
  const auto count = [&](int index, Rgb color) {
    int n = 0;
    const int middle = MiddleOf(menu, index);
    for (int y = middle - 6; y <= middle + 6; ++y) {
      for (int x = 3; x < menu.Width() - 3; ++x) n += picture.GetPixel(x, y) == color;
    }
    return n;
  };
  EXPECT_GT(count(0, ResolveColor(syscolor::kButtonShadow)), 10);  // greyed
  EXPECT_EQ(count(2, ResolveColor(syscolor::kButtonShadow)), 0);
  EXPECT_GT(count(2, ResolveColor(syscolor::kButtonText)), 10);
  menu.PointAt(20, MiddleOf(menu, 2));
  EXPECT_GT(count(2, ResolveColor(syscolor::kHighlight)), 100);
  menu.PointAt(20, MiddleOf(menu, 3));
  EXPECT_EQ(count(2, ResolveColor(syscolor::kHighlight)), 0);  // the old one is put back
}

}  // namespace
}  // namespace kestu
