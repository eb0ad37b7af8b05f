#include "vsa/apply/assign_info.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace zn::korvo_sdk::impl {

namespace {

constexpr std::size_t LONGEST_SHOWN = 20;

}  // namespace

// Both paths are copied before anything is let go, so a copy that fails changes nothing.
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
  const auto forget = [](Token& token) {
    if (token.type != Token::Type::Eof) token = Token();
  };
  forget(valueToken);
  forget(countToken);
  forget(elementsToken);
  forget(listToken);
  forget(referenceToken);
  isScalar = isBuffer = isConnection = isReference = false;
  // In halves: of each of them the compiler makes plain stores, of the whole a string instruction
  // that takes long to begin.
  std::fill_n(data.payload.components, 8, 0.0);
  std::fill_n(data.payload.components + 8, 8, 0.0);
  data.type = AttrType::Null;
  data.elementType = 0;
}

String AssignInfo::valueString() const {
  const bool isList = static_cast<int>(countToken.type) >= static_cast<int>(Token::Type::Id);
  String text = isList ? valueToken.text + "[]" : valueToken.text;
  if (text.len() <= LONGEST_SHOWN) return text;
  return text.substring(0, LONGEST_SHOWN) + "...";
}

}  // namespace zn::korvo_sdk::impl
