// Iteration over the numbers of a buffer of any element type.
#pragma once

#include <cstdint>
#include <cstring>

#include <vsa/scene/attr_data.h>
#include <vsa/scene/data_type.h>

namespace vsa_tools {

/// Calls `each(Number)` with each of the `count` numbers at `memory`, which need not be aligned.
template <class Number, class Each>
void forEachNumberOf(const unsigned char* memory, std::uint64_t count, Each& each) {
  for (std::uint64_t i = 0; i < count; ++i) {
    Number number;
    std::memcpy(&number, memory + i * sizeof(Number), sizeof(Number));
    each(number);
  }
}

/// Calls `each(number)` with every number of the buffer in its own type: a fixed-width integer,
/// `float` or `double`. Makes no call for elements that are not numbers (pointers).
template <class Each>
void forEachNumber(const zn::korvo_sdk::BufferValue& buffer, Each each) {
  using zn::korvo_sdk::DataType;
  const std::uint64_t count = buffer.count * zn::korvo_sdk::componentCount(buffer.type);
  const unsigned char* memory = buffer.memory;
  switch (zn::korvo_sdk::componentType(buffer.type)) {
    case DataType::Char:
      return forEachNumberOf<std::int8_t>(memory, count, each);
    case DataType::Bool:
    case DataType::Byte:
      return forEachNumberOf<std::uint8_t>(memory, count, each);
    case DataType::Int16:
      return forEachNumberOf<std::int16_t>(memory, count, each);
    case DataType::Int32:
      return forEachNumberOf<std::int32_t>(memory, count, each);
    case DataType::Int64:
      return forEachNumberOf<std::int64_t>(memory, count, each);
    case DataType::UInt16:
      return forEachNumberOf<std::uint16_t>(memory, count, each);
    case DataType::UInt32:
      return forEachNumberOf<std::uint32_t>(memory, count, each);
    case DataType::UInt64:
      return forEachNumberOf<std::uint64_t>(memory, count, each);
    case DataType::Float:
      return forEachNumberOf<float>(memory, count, each);
    case DataType::Double:
      return forEachNumberOf<double>(memory, count, each);
    default:
      return;
  }
}

}  // namespace vsa_tools
