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
  /// A String of one character.
  const String& character(char c) {
    String& slot = characters_[static_cast<unsigned char>(c)];
    if (slot.isEmpty() && c != '\0') slot = String(c);
    return slot;
  }

  /// A String of these characters, shared with an earlier one where possible.
  String text(std::string_view characters) {
    if (characters.size() > LONGEST || characters.empty()) return String::copyOf(characters);
    const Ends ends = endsOf(characters);
    String& slot = slots_[slotOf(ends, characters.size())];
    if (!isEqual(slot.view(), characters, ends)) slot = String::copyOf(characters);
    return slot;
  }

 private:
  static constexpr std::size_t SLOTS = 512;
  static constexpr std::size_t LONGEST = 64;

  // The first and the last eight characters (all of them, in a shorter text) tell names apart well
  // enough: a wrong guess costs a copy.
  struct Ends {
    std::uint64_t first;
    std::uint64_t last;
    bool operator==(const Ends&) const = default;
  };

  static bool isEqual(std::string_view known, std::string_view text, const Ends& ends) {
    if (known.size() != text.size() || !(endsOf(known) == ends)) return false;
    return text.size() <= 16 || known == text;
  }

  static Ends endsOf(std::string_view text) {
    const char* const at = text.data();
    const std::size_t length = text.size();
    if (length >= 8) return {load<std::uint64_t>(at), load<std::uint64_t>(at + length - 8)};
    if (length >= 4) return {load<std::uint32_t>(at), load<std::uint32_t>(at + length - 4)};
    const auto byte = [&](std::size_t i) {
      return std::uint64_t{static_cast<unsigned char>(at[i])};
    };
    return {byte(0), byte(length / 2) << 8 | byte(length - 1)};
  }

  template <class Word>
  static std::uint64_t load(const char* from) {
    Word word;
    std::memcpy(&word, from, sizeof(word));
    return word;
  }

  static std::size_t slotOf(const Ends& ends, std::size_t length) {
    const std::uint64_t mixed = (ends.first ^ ends.last << 1 ^ length) * 0x9E3779B97F4A7C15U;
    return static_cast<std::size_t>(mixed >> 55);
  }
  static_assert(SLOTS == std::size_t{1} << (64 - 55));

  String slots_[SLOTS];
  String characters_[256];
};

}  // namespace zn::korvo_sdk::impl
