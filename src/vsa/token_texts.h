// TokenTexts: the texts of tokens, without an allocation for each. Names come again and again and
// are shared; the texts of numbers and short lists are gone a statement later, and their memory
// serves the next. Internal; the door is vsa.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "foundation/string.h"

namespace zn::korvo_sdk::impl {

class TokenTexts {
 public:
  /// A String of one character.
  const String& character(char c) {
    String& text = characters_[static_cast<unsigned char>(c)];
    if (text.isEmpty() && c != '\0') text = String(c);
    return text;
  }

  /// A name. Names of the same characters are the same String, so that comparing two of them is
  /// comparing two pointers.
  String name(std::string_view characters);

  /// A text that few will hold on to.
  String passing(std::string_view characters) {
    if (characters.size() > LONGEST_PASSING) return String::copyOf(characters);
    String& text = passing_[nextPassing_++ % PASSING];
    text.assign(characters);
    return text;
  }

 private:
  // Longer names are too rare to be kept.
  static constexpr std::size_t LONGEST_NAME = 64;
  static constexpr std::size_t LONGEST_PASSING = 4096;
  // More than a statement has, so that they are free again when their turn comes.
  static constexpr std::size_t PASSING = 8;

  // A free slot has the hash 0, which no text has.
  struct Slot {
    std::uint64_t hash = 0;
    String text;
  };

  void grow();
  Slot& slotOf(std::uint64_t hash, std::string_view characters) const;

  std::unique_ptr<Slot[]> names_;  // open addressing, at most two thirds full
  std::size_t nameSlots_ = 0;      // a power of two, or 0
  std::size_t nameCount_ = 0;
  String passing_[PASSING];
  std::size_t nextPassing_ = 0;
  String characters_[256];
};

}  // namespace zn::korvo_sdk::impl
