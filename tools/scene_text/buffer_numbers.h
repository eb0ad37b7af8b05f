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

/// Calls `each(number)` with every number of the buffer in its own type: an integer, `float`
/// or `double`. Makes no call for elements that are not numbers (pointers).
template <class Each>
void forEachNumber(const zn::korvo_sdk::BufferValue& buffer, Each each) {
  const std::uint64_t count = buffer.count * zn::korvo_sdk::componentCount(buffer.type);
  zn::korvo_sdk::visitComponent(zn::korvo_sdk::componentType(buffer.type), [&](auto number) {
    forEachNumberOf<decltype(number)>(buffer.memory, count, each);
  });
}

}  // namespace vsa_tools
