// How the designer's grid shows a property's value and reads back what
// the user typed: colours by system name or &H..&, constants by name,
// booleans, fonts and pictures, and numbers left to the control to check.

#include "designer/PropertyText.h"

#include <gtest/gtest.h>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/StdFont.h"
#include "support/ExpectRuntimeError.h"

namespace kestu {
namespace {

const ClassInfo& Button() {
  return *ControlRegistry::Instance().Find("KestuActiveCommand");
}

const PropertyInfo& Prop(std::string_view name) {
  return *Button().FindProperty(name);
}

std::string Shown(std::string_view property, const Variant& value) {
  return ValueText(Button(), Prop(property), value);
}

Variant Read(std::string_view property, std::string_view text) {
  return ParseValue(Button(), Prop(property), text, ".");
}

TEST(PropertyTextTest, EachTypeReadsBackWhatItShows) {
  struct Case {
    const char* property;
    Variant value;
    const char* text;
  };
  const Case cases[] = {
      {"BackColor", static_cast<int32_t>(0x8000000F), "Button Face"},
      {"BackColor", static_cast<int32_t>(0x000000FF), "&H000000FF&"},
      {"BackColor", static_cast<int32_t>(0), "&H00000000&"},
      {"Style", static_cast<int32_t>(1), "ccFlat"},
      {"Enabled", Variant::Boolean(false), "False"},
      {"Caption", "&Go", "&Go"},
      {"Margin", static_cast<int32_t>(12), "12"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(Shown(c.property, c.value), c.text);
    EXPECT_EQ(Read(c.property, c.text).ToString(), c.value.ToString()) << "read back";
  }
}

TEST(PropertyTextTest, ColoursAndConstantsReadTheWaysPeopleWriteThem) {
  EXPECT_EQ(Read("BackColor", " button face ").ToLong(), static_cast<int32_t>(0x8000000F));
  EXPECT_EQ(Read("BackColor", "#FF8000").ToLong(), 0x000080FF);
  EXPECT_EQ(Read("BackColor", "&HFF&").ToLong(), 0xFF);
  EXPECT_EQ(Read("BackColor", "255").ToLong(), 255);
  EXPECT_EQ(Read("Style", "1").ToLong(), 1);  // a number is the control's to check
  EXPECT_EQ(Shown("Style", static_cast<int32_t>(99)), "99");
  for (const char* bad : {"Mauve", "&HXYZ&", "#12345", "-1", "&H1FFFFFFFF&"}) {
    SCOPED_TRACE(bad);
    ExpectRuntimeError(380, [&] { Read("BackColor", bad); });
  }
}

TEST(PropertyTextTest, FontsAreANameASizeAndStyles) {
  const FontRef font = Read("Font", "Arial, 10.5, Bold, italic").ToFont();
  ASSERT_TRUE(font);
  EXPECT_EQ(font->Name, "Arial");
  EXPECT_DOUBLE_EQ(font->Size, 10.5);
  EXPECT_TRUE(font->Bold);
  EXPECT_TRUE(font->Italic);
  EXPECT_FALSE(font->Underline);
  EXPECT_EQ(Shown("Font", Variant(font)), "Arial, 10.5, Bold, Italic");
  for (const char* bad : {"Arial", "Arial, big", "Arial, 0", ", 10", "Arial, 10, Heavy"}) {
    SCOPED_TRACE(bad);
    ExpectRuntimeError(380, [&] { Read("Font", bad); });
  }
}

TEST(PropertyTextTest, PicturesComeFromFilesOrAreNone) {
  EXPECT_EQ(Shown("Picture", Variant(PictureRef())), "(None)");
  EXPECT_FALSE(Read("Picture", "(None)").ToPicture());
  EXPECT_FALSE(Read("Picture", "").ToPicture());
  const Variant picture = Read("Picture", std::string(KESTU_TEST_DATA) + "/pictures/png_rgba8.png");
  ASSERT_TRUE(picture.ToPicture());
  EXPECT_EQ(Shown("Picture", picture), "(Picture 13x7)");
  ExpectRuntimeError(53, [] { Read("Picture", "no-such-picture.png"); });
}

TEST(PropertyTextTest, NumbersAreLeftForTheControlToRefuse) {
  EXPECT_EQ(Read("Margin", "70000").ToLong(), 70000);  // the control's error 6, not the grid's
  EXPECT_DOUBLE_EQ(Read("Margin", "1.5").ToDouble(), 1.5);
  ExpectRuntimeError(380, [] { Read("Margin", "twelve"); });
  EXPECT_EQ(EditorFor(Button(), Prop("Margin")).kind, EditorKind::Number);
  EXPECT_EQ(EditorFor(Button(), Prop("Style")).choices.front(), "cc3D");
  EXPECT_EQ(EditorFor(Button(), Prop("ForeColor")).choices.size(), SystemColorNames().size());
}

}  // namespace
}  // namespace kestu
