// The toolbox's entries: the art every toolbox control declares draws,
// only the toolbox's controls declare any, and art that is not 16 rows of
// 16 palette characters is refused whole rather than drawn in part; the
// property pages and default events the registry lists.

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/ToolboxIcon.h"

namespace kestu {
namespace {

// A 16 x 16 icon of transparent pixels with `rows` put over its top rows.
std::vector<std::string> Art(std::vector<std::string> rows) {
  rows.resize(kToolboxIconSide, std::string(kToolboxIconSide, '.'));
  return rows;
}

// A row with every pixel drawn, so that the art is not blank.
const std::string kDrawnRow(kToolboxIconSide, 'k');

std::vector<std::string_view> Views(const std::vector<std::string>& rows) {
  return {rows.begin(), rows.end()};
}

TEST(ToolboxIcon, ArtBecomesOpaquePaletteColoursOverTransparency) {
  const std::vector<std::string> art = Art({"kwlgbBcCGLrRyYmM"});
  const std::optional<StdPicture> picture = ToolboxIconPicture(Views(art));
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->WidthPixels(), 16);
  EXPECT_EQ(picture->HeightPixels(), 16);
  const std::vector<uint32_t> expected = {0xFF000000, 0xFFFFFFFF, 0xFFC0C0C0, 0xFF808080,
                                          0xFF000080, 0xFF0000FF, 0xFF008080, 0xFF00FFFF,
                                          0xFF008000, 0xFF00FF00, 0xFF800000, 0xFFFF0000,
                                          0xFF808000, 0xFFFFFF00, 0xFF800080, 0xFFFF00FF};
  for (int x = 0; x < 16; ++x) EXPECT_EQ(picture->PixelAt(x, 0), expected[x]) << "column " << x;
  EXPECT_EQ(picture->PixelAt(0, 1), 0u);
  EXPECT_EQ(picture->PixelAt(15, 15), 0u);
}

TEST(ToolboxIcon, MalformedArtIsRefusedWithItsFaultNamed) {
  std::vector<std::string> long_row = Art({kDrawnRow});
  long_row[0] = std::string(17, 'k');
  std::vector<std::string> tall = Art({kDrawnRow});
  tall.push_back(std::string(16, 'k'));
  std::vector<std::string> with_nul = Art({kDrawnRow});
  with_nul[4][7] = '\0';
  const struct {
    const char* what;
    std::vector<std::string> art;
    const char* problem;
  } cases[] = {
      {"no rows", {}, "0 rows, not 16"},
      {"15 rows", std::vector<std::string>(15, std::string(16, 'k')), "15 rows, not 16"},
      {"17 rows", tall, "17 rows, not 16"},
      {"a short row", Art({kDrawnRow, "kkkkkkkkkkkkkkk"}), "row 2 has 15 characters, not 16"},
      {"a long row", long_row, "row 1 has 17 characters, not 16"},
      {"a space", Art({"kkkk kkkkkkkkkkk"}), "row 1, column 5: ' ' is not in the palette"},
      {"a letter outside", Art({kDrawnRow, "...............x"}),
       "row 2, column 16: 'x' is not in the palette"},
      {"a NUL byte", with_nul, "row 5, column 8: byte 0 is not in the palette"},
      {"nothing drawn", Art({}), "every pixel is transparent"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ToolboxIconProblem(Views(c.art)), c.problem) << c.what;
    EXPECT_FALSE(ToolboxIconPicture(Views(c.art))) << c.what;
  }
}

// The toolbox shows the library's own nine controls; the standard dialog
// controls its pages and dialogs are built from stay out of it.
TEST(ToolboxEntry, ExactlyTheToolboxControlsHaveIconsAndEachDraws) {
  const std::set<std::string> toolbox = {"KestuActiveCommand", "KestuCopyFile",    "KestuLine3D",
                                         "KestuNumberEdit",    "KestuPanel3D",     "KestuTBBar",
                                         "KestuTBButton",      "KestuTBSeparator", "KestuTextEdit"};
  std::set<std::string> with_icons;
  for (const ClassInfo* info : ControlRegistry::Instance().Classes()) {
    if (info->toolbox_icon.empty()) continue;
    with_icons.insert(info->name);
    EXPECT_EQ(ToolboxIconProblem(info->toolbox_icon), "") << info->name;
  }
  EXPECT_EQ(with_icons, toolbox);
}

TEST(ToolboxEntry, PropertyPagesEndWithTheAboutPageOnce) {
  const ClassInfo* button = ControlRegistry::Instance().Find("KestuTBButton");
  ASSERT_TRUE(button);
  EXPECT_EQ(button->PropertyPagesShown(), (std::vector<std::string>{"ppgButtons", "ppgSobre"}));
  for (const ClassInfo* info : ControlRegistry::Instance().Classes()) {
    const std::vector<std::string> shown = info->PropertyPagesShown();
    EXPECT_EQ(std::count(shown.begin(), shown.end(), std::string(kAboutPropertyPage)), 1)
        << info->name << " names the About page itself";
  }
}

// A designer opens the default event's handler on a double click: it has
// to be one the class raises.
TEST(ToolboxEntry, DefaultEventIsOneOfTheClasssEvents) {
  for (const ClassInfo* info : ControlRegistry::Instance().Classes()) {
    if (info->default_event.empty()) {
      EXPECT_TRUE(info->events.empty()) << info->name << " has events but no default one";
    } else {
      EXPECT_TRUE(info->FindEvent(info->default_event)) << info->name;
    }
  }
}

}  // namespace
}  // namespace kestu
