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

TEST(ParseJsonStrict, AHundredThousandKeysKeepTheirOrderAndADuplicateIsStillFound) {
  // Reading is linear: a reader that searched each object's keys would
  // take minutes here (the speed itself is measured in bench/).
  constexpr int kKeys = 100000;
  std::string text = "{";
  for (int i = kKeys - 1; i >= 0; --i) {
    const std::string number = std::to_string(i);
    text.append("\"k").append(number).append("\":").append(number).append(",");
  }
  text.back() = '}';
  const auto json = ParseJsonStrict(text, "wide.json");
  ASSERT_EQ(json.size(), static_cast<size_t>(kKeys));
  EXPECT_EQ(json.begin().key(), "k99999");
  EXPECT_EQ(json.back(), 0);
  text.back() = ',';
  text += "\"k5\":1}";
  ExpectRuntimeError(
      err::kInvalidPropertyValue, [&] { ParseJsonStrict(text, "wide.json"); },
      R"(duplicated key "k5")");
}

TEST(VariantJson, ABagHoldsAtMostSoManyProperties) {
  nlohmann::ordered_json bag = nlohmann::ordered_json::object();
  for (size_t i = 0; i < kMaxBagKeys; ++i) bag[std::to_string(i)] = 1;
  EXPECT_EQ(BagFromJson(bag, "f.json").Entries().size(), kMaxBagKeys);
  bag["one more"] = 1;
  ExpectRuntimeError(
      err::kInvalidPropertyValue, [&] { BagFromJson(bag, "f.json"); },
      "f.json: more than 4096 properties");
}

}  // namespace
}  // namespace kestu
