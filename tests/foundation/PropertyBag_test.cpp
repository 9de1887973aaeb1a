#include "kestu/foundation/PropertyBag.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <memory>

#include "copyfile/CopyFileHarness.h"
#include "support/ExpectRuntimeError.h"

namespace kestu {
namespace {

namespace fs = std::filesystem;

PictureRef SmallPicture(int width, int height) {
  std::vector<uint32_t> pixels;
  for (int i = 0; i < width * height; ++i) {
    pixels.push_back(0xFF000000u | static_cast<uint32_t>(i * 0x010203));
  }
  pixels.back() = 0x80FF0000;  // a half-transparent pixel must survive too
  return std::make_shared<StdPicture>(width, height, std::move(pixels));
}

FontRef BoldUnderlinedFont() {
  FontRef font = MakeFont("DejaVu Sans", 9.75);
  font->Bold = true;
  font->Underline = true;
  return font;
}

// Values equal as the bag's reader rebuilds them: objects by content, since
// a loaded font or picture is a new object.
void ExpectSameContent(const Variant& loaded, const Variant& saved) {
  ASSERT_EQ(loaded.Type(), saved.Type());
  switch (saved.Type()) {
    case VarType::Font:
      EXPECT_EQ(*loaded.ToFont(), *saved.ToFont());
      break;
    case VarType::Picture:
      EXPECT_EQ(*loaded.ToPicture(), *saved.ToPicture());
      break;
    case VarType::Single:
    case VarType::Double:
      if (std::isnan(saved.ToDouble())) {
        EXPECT_TRUE(std::isnan(loaded.ToDouble()));
        break;
      }
      [[fallthrough]];
    default:
      EXPECT_TRUE(loaded == saved) << saved.ToString();
  }
}

PropertyBag BagOfEveryType() {
  PropertyBag bag;
  bag.WriteProperty("Empty", Variant());
  bag.WriteProperty("Null", Variant::Null());
  bag.WriteProperty("Nothing", Variant::Nothing());
  bag.WriteProperty("Integer", int16_t{-32768});
  bag.WriteProperty("Long", int32_t{-2147483643});  // the window colour, 0x80000005
  bag.WriteProperty("Single", 1.1f);
  bag.WriteProperty("SingleTiny", 1e-45f);
  bag.WriteProperty("Double", 1234567.891);
  bag.WriteProperty("WholeDouble", 3.0);
  bag.WriteProperty("Infinite", -std::numeric_limits<double>::infinity());
  bag.WriteProperty("NotANumber", std::numeric_limits<double>::quiet_NaN());
  bag.WriteProperty("SingleInfinite", std::numeric_limits<float>::infinity());
  bag.WriteProperty("SingleNotANumber", std::numeric_limits<float>::quiet_NaN());
  bag.WriteProperty("String", "Açúcar \"quoted\"\n");
  bag.WriteProperty("EmptyString", "");
  bag.WriteProperty("True", Variant::Boolean(true));
  bag.WriteProperty("False", Variant::Boolean(false));
  bag.WriteProperty("Font", BoldUnderlinedFont());
  bag.WriteProperty("Picture", SmallPicture(3, 2));
  bag.WriteProperty("OnePixel", SmallPicture(1, 1));
  return bag;
}

void ExpectSameBag(const PropertyBag& loaded, const PropertyBag& saved) {
  ASSERT_EQ(loaded.Entries().size(), saved.Entries().size());
  for (size_t i = 0; i < saved.Entries().size(); ++i) {
    SCOPED_TRACE(saved.Entries()[i].first);
    EXPECT_EQ(loaded.Entries()[i].first, saved.Entries()[i].first) << "keys keep their order";
    ExpectSameContent(loaded.Entries()[i].second, saved.Entries()[i].second);
  }
}

TEST(PropertyBag, KeysKeepTheOrderOfTheirFirstWrite) {
  PropertyBag bag;
  bag.WriteProperty("B", int16_t{1});
  bag.WriteProperty("A", int16_t{2});
  bag.WriteProperty("B", "again");
  ASSERT_EQ(bag.Entries().size(), 2u);
  EXPECT_EQ(bag.Entries()[0].first, "B");
  EXPECT_TRUE(bag.Entries()[0].second == Variant("again"));
  EXPECT_EQ(bag.ToJson(), R"({"B":"again","A":{"$type":"Integer","value":2}})");
}

TEST(PropertyBag, AValueEqualToItsDefaultIsLeftOut) {
  PropertyBag bag;
  bag.WriteProperty("Width", int16_t{5}, int16_t{5});
  EXPECT_FALSE(bag.Contains("Width"));
  bag.WriteProperty("Width", int16_t{6}, int16_t{5});
  EXPECT_TRUE(bag.Contains("Width"));
  bag.WriteProperty("Width", int16_t{5}, int32_t{5});  // numbers compare by value
  EXPECT_FALSE(bag.Contains("Width")) << "writing the default removes the key";
  bag.WriteProperty("Flag", Variant::Boolean(true), int16_t{-1});
  EXPECT_FALSE(bag.Contains("Flag"));
  bag.WriteProperty("Text", "5", int16_t{5});
  EXPECT_TRUE(bag.Contains("Text")) << "a string is not its number";
  bag.WriteProperty("Maybe", Variant::Null(), Variant::Null());
  EXPECT_TRUE(bag.Contains("Maybe")) << "Null equals nothing, not even Null";
  const FontRef font = MakeFont("Arial", 8);
  bag.WriteProperty("Font", font, MakeFont("Arial", 8));
  EXPECT_TRUE(bag.Contains("Font")) << "objects compare by identity";
}

TEST(PropertyBag, ReadAsConvertsAndNamesTheKeyOnFailure) {
  const PropertyBag bag = PropertyBag::FromJson(
      R"({"Width":12.5,"Big":40000,"Word":"abc","Flag":"True","Colour":{"$type":"Long","value":255}})");
  EXPECT_TRUE(bag.ReadAs("Width", int16_t{0}) == Variant(int16_t{12}));
  EXPECT_TRUE(bag.ReadAs("Flag", Variant::Boolean(false)) == Variant::Boolean(true));
  EXPECT_TRUE(bag.ReadAs("Colour", int32_t{0}) == Variant(int32_t{255}));
  EXPECT_TRUE(bag.ReadAs("Word", Variant()) == Variant("abc")) << "an Empty default takes anything";
  ExpectRuntimeError(
      err::kOverflow, [&] { bag.ReadAs("Big", int16_t{0}); }, "key \"Big\"");
  ExpectRuntimeError(
      err::kTypeMismatch, [&] { bag.ReadAs("Word", int16_t{0}); },
      "key \"Word\": String read as Integer");
}

TEST(PropertyBagJson, EveryValueTypeRoundTrips) {
  const PropertyBag saved = BagOfEveryType();
  ExpectSameBag(PropertyBag::FromJson(saved.ToJson()), saved);
  ExpectSameBag(PropertyBag::FromJson(saved.ToJson(2)), saved);
}

// Integers, Longs, Booleans, strings, fonts and whole reals are spelled
// out in the scripts' saved bags.
TEST(PropertyBagJson, EncodingIsReadable) {
  PropertyBag bag;
  bag.WriteProperty("D", 2.5);
  bag.WriteProperty("S", 1.1f);
  bag.WriteProperty("N", Variant::Null());
  EXPECT_EQ(bag.ToJson(), R"({"D":2.5,"S":{"$type":"Single","value":1.1},"N":{"$type":"Null"}})");
}

TEST(PropertyBagJson, HandWrittenBagsReadPlainValues) {
  const PropertyBag bag = PropertyBag::FromJson(
      R"({"Enabled": true, "Width": 3, "Font": {"$type": "Font", "Name": "Arial"}})");
  EXPECT_TRUE(bag.ReadProperty("Enabled") == Variant::Boolean(true));
  EXPECT_TRUE(bag.ReadProperty("Width") == Variant(3.0));
  const FontRef font = bag.ReadProperty("Font").ToFont();
  ASSERT_NE(font, nullptr);
  EXPECT_EQ(font->Name, "Arial");
  EXPECT_EQ(font->Size, StdFont().Size) << "a field left out keeps the default";
}

TEST(PropertyBagJson, BadBytesInAStringDoNotStopTheSave) {
  PropertyBag bag;
  bag.WriteProperty("Raw", "a\xFF");
  const PropertyBag loaded = PropertyBag::FromJson(bag.ToJson());
  EXPECT_EQ(loaded.ReadProperty("Raw").ToString(), "a\xEF\xBF\xBD");  // U+FFFD
}

// Duplicated keys at any depth are the strict reader's own test.
TEST(PropertyBagJson, MalformedBagsAreRefusedWithTheirPlace) {
  struct Case {
    const char* json;
    int error;
    const char* detail;
  };
  for (const Case& c : {
           Case{R"({"A":1)", 380, "form1.json: malformed JSON: parse error at line 1"},
           {"{\n\"A\":1,\n\"B\" 2}", 380, "line 3"},
           {R"([1,2])", 380, "form1.json: expected an object of properties"},
           {R"({"W":{"$type":"Integer","value":"5"}})", 380,
            R"(form1.json: key "W": expected an integer)"},
           {R"({"W":{"$type":"Integer","value":1.5}})", 380, "expected an integer"},
           {R"({"W":{"$type":"Integer","value":40000}})", 380,
            "40000 is out of range for an Integer"},
           {R"({"W":{"$type":"Long","value":2147483648}})", 380, "out of range for a Long"},
           {R"({"W":{"$type":"Single","value":1e39}})", 380, "out of range for a Single"},
           {R"({"W":{"$type":"Double","value":"many"}})", 380, "expected a number"},
           {R"({"W":{"$type":"Integer"}})", 380, R"(missing field "value")"},
           {R"({"W":{"$type":"Integer","value":1,"unit":2}})", 380, R"(unexpected field "unit")"},
           {R"({"W":{"$type":"Boolean","value":1}})", 380, "expected true or false"},
           {R"({"C":{"$type":"Colour","value":1}})", 380, R"(key "C": unknown "$type" "Colour")"},
           {R"({"C":{"$type":5}})", 380, R"("$type": expected a string)"},
           {R"({"C":{"value":1}})", 380, R"(needs a "$type")"},
           {R"({"E":{"$type":"Empty","value":0}})", 380, R"(unexpected field "value")"},
           {R"({"F":{"$type":"Font","Bold":1}})", 380, R"(font "Bold": expected true or false)"},
           {R"({"F":{"$type":"Font","bold":true}})", 380, R"(unexpected field "bold")"},
           {R"({"F":{"$type":"Font","Size":-3}})", 380, R"(font "Size": must be above zero)"},
           {R"({"F":{"$type":"Font","Name":7}})", 380, R"(font "Name": expected a string)"},
           {R"({"X":null})", 380, R"(key "X": null is not a value)"},
           {R"({"X":[1]})", 380, "found array"},
           {R"({"P":{"$type":"Picture"}})", 380, R"(missing field "png")"},
           {R"({"P":{"$type":"Picture","png":"!!!!"}})", 380, "not valid base64"},
           {R"({"P":{"$type":"Picture","png":"AAA"}})", 380, "not valid base64"},
           {R"({"P":{"$type":"Picture","png":"A==="}})", 380, "not valid base64"},
           {R"({"P":{"$type":"Picture","png":"AAAA"}})", 481, R"(key "P": the embedded picture)"},
           {R"({"P":{"$type":"Picture","png":"iVBORw0KGgo="}})", 481, "does not decode"},
       }) {
    SCOPED_TRACE(c.json);
    ExpectRuntimeError(
        c.error, [&] { PropertyBag::FromJson(c.json, "form1.json"); }, c.detail);
  }
}

class PropertyBagFile : public ::testing::Test {
 protected:
  copytest::TempFolder dir_;
};

// A saved bag loads back whole, and saving again replaces the file without
// leaving anything beside it.
TEST_F(PropertyBagFile, SavedBagLoadsBackAndASecondSaveReplacesIt) {
  const PropertyBag saved = BagOfEveryType();
  saved.SaveToFile(dir_ / "bag.json");
  ExpectSameBag(PropertyBag::LoadFromFile(dir_ / "bag.json"), saved);
  PropertyBag second;
  second.WriteProperty("B", int16_t{2});
  second.SaveToFile(dir_ / "bag.json");
  EXPECT_TRUE(PropertyBag::LoadFromFile(dir_ / "bag.json") == second);
  EXPECT_EQ(std::distance(fs::directory_iterator(dir_.Path()), fs::directory_iterator()), 1);
}

TEST_F(PropertyBagFile, FileErrorsNameThePathAndABadFileTheKeyToo) {
  const std::string missing = dir_ / "missing.json";
  ExpectRuntimeError(
      err::kFileNotFound, [&] { PropertyBag::LoadFromFile(missing); }, missing);
  const std::string no_folder = dir_ / "no/bag.json";
  ExpectRuntimeError(
      err::kPathNotFound, [&] { PropertyBag().SaveToFile(no_folder); }, no_folder);
  ExpectRuntimeError(err::kPathFileAccessError, [&] { PropertyBag::LoadFromFile(dir_.Path()); });
  const fs::path path = dir_ / "form1.json";
  std::ofstream(path) << R"({"Caption":"OK","BorderWidth":{"$type":"Integer","value":"2"}})";
  ExpectRuntimeError(
      err::kInvalidPropertyValue, [&] { PropertyBag::LoadFromFile(path); },
      path.string() + R"(: key "BorderWidth": expected an integer)");
}

}  // namespace
}  // namespace kestu
