// Tests that docs/types.schema.json and the library have the same names of types.
#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include <vsa/values/value_types.h>

namespace vsa_tests {

namespace {

nlohmann::json definitions() {
  return nlohmann::json::parse(
      std::ifstream(VSA_TEST_DIR "/../docs/types.schema.json"))["definitions"];
}

TEST(TypesSchema, NamesTheTypesOfValues) {
  std::vector<std::string> names;
  for (int i = 0; i < zn::korvo_sdk::ATTR_TYPE_COUNT; ++i) {
    names.emplace_back(vsa::typeName(static_cast<vsa::ValueType>(i)));
  }
  EXPECT_EQ(definitions()["valueType"]["enum"], nlohmann::json(names));
}

TEST(TypesSchema, NamesTheTypesOfBufferElements) {
  std::vector<std::string> names;
  for (int i = 0; i < zn::korvo_sdk::DATA_TYPE_COUNT; ++i) {
    const auto type = static_cast<vsa::ElementType>(i);
    if (zn::korvo_sdk::isBufferElement(type)) names.emplace_back(vsa::typeName(type));
  }
  EXPECT_EQ(definitions()["elementType"]["enum"], nlohmann::json(names));
}

}  // namespace

}  // namespace vsa_tests
