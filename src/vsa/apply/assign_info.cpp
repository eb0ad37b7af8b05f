#include "vsa/apply/assign_info.h"

#include <cstddef>
#include <utility>

namespace zn::korvo_sdk::impl {

namespace {

constexpr std::size_t MAX_SHOWN = 20;

}  // namespace

// Copies first, then moves. If the copy throws, this record is unchanged.
AssignInfo& AssignInfo::operator=(const AssignInfo& other) {
  AssignInfo copy(other);
  return *this = std::move(copy);
}

AssignInfo& AssignInfo::operator=(AssignInfo&& other) noexcept {
  targetPath = std::move(other.targetPath);
  sourcePath = std::move(other.sourcePath);
  valueToken = other.valueToken;
  countToken = other.countToken;
  elementsToken = other.elementsToken;
  listToken = other.listToken;
  referenceToken = other.referenceToken;
  isScalar = other.isScalar;
  isBuffer = other.isBuffer;
  isConnection = other.isConnection;
  isReference = other.isReference;
  data = other.data;
  return *this;
}

void AssignInfo::clear() noexcept {
  targetPath.clear();
  sourcePath.clear();
  const auto reset = [](Token& token) {
    if (token.type != Token::Type::Eof) token = Token();
  };
  reset(valueToken);
  reset(countToken);
  reset(elementsToken);
  reset(listToken);
  reset(referenceToken);
  isScalar = isBuffer = isConnection = isReference = false;
  data = AttrData();
}

bool AssignInfo::isCompressed() const noexcept {
  const String& list = elementsToken.text;
  return componentBytes(data.payload.buffer.type) == 1 && list.len() > 2 && list[1] == '.';
}

String AssignInfo::valueString() const {
  const bool isList = static_cast<int>(countToken.type) >= static_cast<int>(Token::Type::Id);
  return quotedValue(valueToken.text.view(), isList);
}

String quotedValue(std::string_view firstToken, bool isBuffer) {
  String text = String::copyOf(firstToken);
  if (isBuffer) text = text + "[]";
  if (text.len() > MAX_SHOWN) text = text.substring(0, MAX_SHOWN) + "...";
  return text;
}

}  // namespace zn::korvo_sdk::impl
