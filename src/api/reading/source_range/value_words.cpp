#include "api/reading/source_range/value_words.h"

#include <algorithm>
#include <iterator>

#include <vsa/foundation/string.h>

namespace vsa {

namespace {

using zn::String;
using zn::korvo_sdk::DataType;

constexpr const char* TUPLE_WORDS[] = {"vec2", "vec3", "vec4", "pos2", "pos3",
                                       "quat", "mat3", "mat4", "rgba"};

}  // namespace

DataType bufferTypeOf(std::string_view word) {
  const String text = String::copyOf(word);
  for (int i = 0; i < zn::korvo_sdk::DATA_TYPE_COUNT; ++i) {
    const auto type = static_cast<DataType>(i);
    const bool isNamed = text.compareNoCase(zn::korvo_sdk::dataTypeName(type)) == 0;
    if (isNamed && zn::korvo_sdk::isBufferElement(type)) return type;
  }
  return DataType::Null;
}

bool isTypeWord(std::string_view word) {
  const String text = String::copyOf(word);
  const auto isSame = [&](const char* keyword) { return text.compareNoCase(keyword) == 0; };
  return std::any_of(std::begin(TUPLE_WORDS), std::end(TUPLE_WORDS), isSame) ||
         bufferTypeOf(word) != DataType::Null;
}

ComponentReader::ComponentReader(DataType bufferType) noexcept
    : component_(zn::korvo_sdk::componentType(bufferType)) {
}

bool ComponentReader::accepts(std::string_view text) {
  unsigned char component[sizeof(double)];
  return parser_.parseElem(String::copyOf(text), component_, component);
}

}  // namespace vsa
