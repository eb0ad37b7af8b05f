// Tests of the record of one assignment: copying, moving, and the text of the value for messages.
#include "vsa/apply/assign_info.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>

#include "tests/support/text.h"
#include "tests/support/token_text.h"

namespace zn::korvo_sdk::impl {
namespace {

using vsa_tests::text;
using vsa_tests::tokenText;
using Type = Token::Type;

Token token(Type type, const char* characters, int line) {
  return {type, characters, line, 7};
}

AssignInfo filled(const char* prefix) {
  AssignInfo info;
  const String start(prefix);
  info.targetPath.push_back({Type::Id, start + "target", 1, 1});
  info.sourcePath.push_back({Type::Id, start + "source", 2, 1});
  info.valueToken = {Type::Id, start + "value", 3, 1};
  info.countToken = {Type::Brackets, start + "count", 4, 1};
  info.elementsToken = {Type::Braces, start + "elements", 5, 1};
  info.listToken = {Type::Parens, start + "list", 6, 1};
  info.referenceToken = {Type::Null, start + "reference", 7, 1};
  info.isScalar = info.isConnection = true;
  info.data.type = AttrType::Mat4;
  for (int i = 0; i < 16; ++i) info.data.payload.components[i] = i;
  return info;
}

std::string shown(const AssignInfo& info) {
  std::string all;
  for (const Token& part : info.targetPath) all += tokenText(part) + ' ';
  for (const Token& part : info.sourcePath) all += tokenText(part) + ' ';
  for (const Token* part : {&info.valueToken, &info.countToken, &info.elementsToken,
                            &info.listToken, &info.referenceToken}) {
    all += tokenText(*part) + ' ';
  }
  all += info.isScalar ? "scalar " : "";
  all += info.isBuffer ? "buffer " : "";
  all += info.isConnection ? "connection " : "";
  all += info.isReference ? "reference " : "";
  all += attrTypeName(info.data.type);
  for (const double component : info.data.payload.components)
    all += ' ' + std::to_string(component);
  return all;
}

TEST(AssignInfo, IsEmptyInitially) {
  const AssignInfo info;
  EXPECT_EQ(info.targetPath.size, 0U);
  EXPECT_EQ(info.sourcePath.size, 0U);
  EXPECT_EQ(tokenText(info.valueToken), "Eof<>0,0");
  EXPECT_EQ(tokenText(info.countToken), "Eof<>0,0");
  EXPECT_EQ(tokenText(info.elementsToken), "Eof<>0,0");
  EXPECT_EQ(tokenText(info.listToken), "Eof<>0,0");
  EXPECT_EQ(tokenText(info.referenceToken), "Eof<>0,0");
  EXPECT_FALSE(info.isScalar || info.isBuffer || info.isConnection || info.isReference);
  EXPECT_EQ(info.data.type, AttrType::Null);
  EXPECT_EQ(info.data.elementType, 0);
  for (const double component : info.data.payload.components) EXPECT_EQ(component, 0.0);
}

TEST(AssignInfo, ClearResetsEveryMember) {
  AssignInfo info = filled("a");
  info.isBuffer = info.isReference = true;
  info.data.elementType = 3;
  info.data.payload.components[0] = 1;
  info.clear();
  EXPECT_EQ(shown(info), shown(AssignInfo()));
  EXPECT_EQ(info.data.elementType, 0);
}

TEST(AssignInfo, FieldsAreInOrder) {
  const AssignInfo info;
  const auto& [target, source, value, count, elements, list, reference, isScalar, isBuffer,
               isConnection, isReference, data] = info;
  static_assert(std::is_same_v<decltype(data), const AttrData>);
  static_assert(std::is_same_v<decltype(target), const ds::Vector<Token>>);
  EXPECT_EQ(&target, &info.targetPath);
  EXPECT_EQ(&source, &info.sourcePath);
  EXPECT_EQ(&value, &info.valueToken);
  EXPECT_EQ(&count, &info.countToken);
  EXPECT_EQ(&elements, &info.elementsToken);
  EXPECT_EQ(&list, &info.listToken);
  EXPECT_EQ(&reference, &info.referenceToken);
  EXPECT_EQ(&isScalar, &info.isScalar);
  EXPECT_EQ(&isBuffer, &info.isBuffer);
  EXPECT_EQ(&isConnection, &info.isConnection);
  EXPECT_EQ(&isReference, &info.isReference);
  // The flags are consecutive bytes.
  EXPECT_EQ(&isScalar + 3, &isReference);
  EXPECT_EQ(&data, &info.data);
}

TEST(AssignInfo, BufferValueFieldsAreInOrder) {
  unsigned char byte = 7;
  const BufferValue buffer{&byte, 1, 2, DataType::Byte, 3};
  const auto& [memory, count, bytes, type, reserved] = buffer;
  static_assert(std::is_same_v<decltype(count), const std::uint64_t>);
  static_assert(std::is_same_v<decltype(bytes), const std::uint64_t>);
  static_assert(sizeof(type) == 4 && sizeof(reserved) == 8);
  EXPECT_EQ(memory, &byte);
  EXPECT_EQ(count, 1U);
  EXPECT_EQ(bytes, 2U);
  EXPECT_EQ(type, DataType::Byte);
  EXPECT_EQ(reserved, 3);
}

TEST(AssignInfo, Copies) {
  const AssignInfo source = filled("a");
  const AssignInfo copy(source);
  EXPECT_EQ(shown(copy), shown(source));
  EXPECT_NE(copy.targetPath.data, source.targetPath.data);
  EXPECT_EQ(copy.valueToken.text.buf(), source.valueToken.text.buf());
  AssignInfo assigned = filled("b");
  assigned = source;
  EXPECT_EQ(shown(assigned), shown(source));
  const AssignInfo& same = assigned;
  assigned = same;
  EXPECT_EQ(shown(assigned), shown(source));
}

TEST(AssignInfo, CopiesShareTheDataMemory) {
  char characters[] = "red";
  AssignInfo info;
  info.data.type = AttrType::String;
  info.data.payload.string = characters;
  {
    const AssignInfo copy(info);  // NOLINT: the test needs a copy
    EXPECT_EQ(copy.data.payload.string, characters);
  }
  EXPECT_STREQ(info.data.payload.string, "red");
}

TEST(AssignInfo, MoveAssignmentMovesThePaths) {
  AssignInfo source = filled("a");
  const std::string before = shown(source);
  AssignInfo target = filled("b");
  target = std::move(source);
  EXPECT_EQ(shown(target), before);
  EXPECT_EQ(source.targetPath.size, 0U);  // NOLINT: a moved-from record has no paths
  EXPECT_EQ(source.sourcePath.size, 0U);
  EXPECT_EQ(source.targetPath.data, nullptr);
}

// A move copies all members except the paths, which it moves.
TEST(AssignInfo, MoveAssignmentCopiesTheTokens) {
  AssignInfo source = filled("a");
  AssignInfo target = filled("b");
  target = std::move(source);
  EXPECT_EQ(tokenText(source.valueToken), "Id<avalue>3,1");  // NOLINT: copied, not moved
  EXPECT_EQ(tokenText(source.referenceToken), "Null<areference>7,1");
  EXPECT_TRUE(source.isScalar);
}

struct StatementRow {
  Type count;
  const char* value;
  const char* quoted;
};

TEST(AssignInfo, ValueString) {
  constexpr StatementRow ROWS[] = {
      {Type::Eof, "", ""},
      {Type::Eof, "2.5", "2.5"},
      {Type::Eof, "12345678901234567890", "12345678901234567890"},
      {Type::Eof, "123456789012345678901", "12345678901234567890..."},
      {Type::Invalid, "int32", "int32"},
      {Type::Id, "int32", "int32[]"},
      {Type::Brackets, "int32", "int32[]"},
      {Type::Brackets, "123456789012345678", "123456789012345678[]"},
      {Type::Brackets, "1234567890123456789", "1234567890123456789[..."},
      {Type::Brackets, "12345678901234567890", "12345678901234567890..."},
  };
  for (const StatementRow& row : ROWS) {
    AssignInfo info;
    info.valueToken = token(Type::Id, row.value, 1);
    info.countToken = token(row.count, "[2]", 1);
    EXPECT_EQ(text(info.valueString()), row.quoted) << row.value;
  }
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
