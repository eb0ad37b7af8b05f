#include "api/reading/source_range/value_words.h"

#include <vsa/foundation/string.h>
#include "vsa/type_keywords.h"

namespace vsa {

namespace {

using zn::String;
using zn::korvo_sdk::AttrType;
using zn::korvo_sdk::DataType;
using zn::korvo_sdk::impl::bufferTypeOf;
using zn::korvo_sdk::impl::tupleTypeOf;

}  // namespace

bool isTypeWord(std::string_view word) {
  return tupleTypeOf(word) != AttrType::Null ||
         bufferTypeOf(String::copyOf(word)) != DataType::Null;
}

ComponentReader::ComponentReader(DataType bufferType) noexcept
    : component_(zn::korvo_sdk::componentType(bufferType)) {
}

bool ComponentReader::accepts(std::string_view text) {
  unsigned char component[sizeof(double)];
  return parser_.parseElem(String::copyOf(text), component_, component);
}

}  // namespace vsa
