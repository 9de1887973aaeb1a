#include "foundation/VariantJson.h"

#include <gtest/gtest.h>

#include "support/ExpectRuntimeError.h"

namespace kestu {
namespace {

TEST(ParseJsonStrict, DuplicatesAreFoundAtAnyDepth) {
  ExpectRuntimeError(
      err::kInvalidPropertyValue,
      [] { ParseJsonStrict(R"({"Controls":[{"Bag":{"Text":"a","Text":"b"}}]})", "f.json"); },
      R"(f.json: duplicated key "Text" in "Controls" > "Bag")");
  ExpectRuntimeError(
      err::kInvalidPropertyValue, [] { ParseJsonStrict(R"([{"a":1,"b":{},"a":2}])", "f.json"); },
      R"(duplicated key "a")");
}

TEST(ParseJsonStrict, KeepsKeyOrderAndAcceptsRepeatsAcrossObjects) {
  const auto json = ParseJsonStrict(R"({"z":[{"k":1},{"k":2}],"a":{"k":{"k":3}}})", "f.json");
  EXPECT_EQ(json.dump(), R"({"z":[{"k":1},{"k":2}],"a":{"k":{"k":3}}})");
}

TEST(VariantJson, ContextLeadsEveryMessage) {
  ExpectRuntimeError(
      err::kInvalidPropertyValue,
      [] {
        VariantFromJson(nlohmann::ordered_json::array(), R"(form1.json: control "n1": key "X")");
      },
      R"(form1.json: control "n1": key "X": expected a value, found array)");
  ExpectRuntimeError(
      err::kInvalidPropertyValue,
      [] { BagFromJson(nlohmann::ordered_json("text"), R"(form1.json: control "n1")"); },
      R"(form1.json: control "n1": expected an object of properties)");
}

TEST(VariantJson, BagsNestInsideLargerDocuments) {
  PropertyBag bag;
  bag.WriteProperty("Value", 12.5);
  bag.WriteProperty("Caption", "Total");
  nlohmann::ordered_json form;
  form["Name"] = "Form1";
  form["Bag"] = BagToJson(bag);
  const auto reread = ParseJsonStrict(form.dump(), "form1.json");
  EXPECT_TRUE(BagFromJson(reread["Bag"], "form1.json") == bag);
}

}  // namespace
}  // namespace kestu
