// TextCache: one String for a short text that comes again and again. The names in a VSA text repeat
// from statement to statement; sharing them spares an allocation each, and makes comparing two
// equal names a comparison of two pointers. Internal; the door is vsa.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "foundation/string.h"

namespace zn::korvo_sdk::impl {

class TextCache {
 public:
  /// A String of these characters, shared with an earlier one where possible.
  String text(std::string_view characters) {
    if (characters.size() > LONGEST || characters.empty()) return String::copyOf(characters);
    String& slot = slots_[slotOf(characters)];
    if (slot.view() != characters) slot = String::copyOf(characters);
    return slot;
  }

 private:
  static constexpr std::size_t SLOTS = 512;
  static constexpr std::size_t LONGEST = 64;

  // Length, first and last characters tell names apart well enough; a wrong guess costs a copy.
  static std::size_t slotOf(std::string_view characters) {
    const std::size_t length = characters.size();
    std::uint64_t first = 0;
    std::uint64_t last = 0;
    const std::size_t count = length < sizeof(first) ? length : sizeof(first);
    std::memcpy(&first, characters.data(), count);
    std::memcpy(&last, characters.data() + length - count, count);
    const std::uint64_t mixed = (first ^ (last << 1) ^ length) * 0x9E3779B97F4A7C15U;
    return static_cast<std::size_t>(mixed >> 55);
  }
  static_assert(SLOTS == std::size_t{1} << (64 - 55));

  String slots_[SLOTS];
};

}  // namespace zn::korvo_sdk::impl
