// TokenTexts: the texts of tokens, without an allocation for each. Names come again and again and
// are shared; the texts of numbers and short lists are gone a statement later, and their memory
// serves the next. Internal; the door is vsa.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "foundation/string.h"
#include "foundation/string_slab.h"
#include "vsa/token.h"

namespace zn::korvo_sdk::impl {

class TokenTexts {
 public:
  /// A String of one character.
  const String& character(char c) {
    String& text = characters_[static_cast<unsigned char>(c)];
    if (text.isEmpty() && c != '\0') text = String(c);
    return text;
  }

  /// Type and text of a word: of one that the format gives a meaning, or of a name. Names of the
  /// same characters are the same String, so that comparing two of them is comparing two pointers.
  void word(std::string_view characters, Token& out);

  /// A text that is likely to stay.
  String lasting(std::string_view characters) { return lasting_.copyOf(characters); }

  /// A text that few will hold on to.
  void passing(std::string_view characters, String& out) {
    if (characters.size() > LONGEST_PASSING) {
      out = String::copyOf(characters);
      return;
    }
    String& text = passing_[nextPassing_++ % PASSING];
    text.assign(characters);
    out = text;
  }

 private:
  // Longer names are too rare to be kept.
  static constexpr std::size_t LONGEST_NAME = 64;
  // Longer texts are too large to be kept for the next one.
  static constexpr std::size_t LONGEST_PASSING = 4096;
  // More than a statement has, so that they are free again when their turn comes.
  static constexpr std::size_t PASSING = 8;

  // A free slot has no text, which no word is.
  struct Slot {
    std::uint32_t part = 0;  // of the hash
    Token::Type type = Token::Type::Id;
    String text;
  };

  void firstSeen(std::string_view characters, std::uint64_t hash, Token& out);
  void file(Slot&& slot) noexcept;
  void grow();

  StringSlabs lasting_;
  std::unique_ptr<Slot[]> slots_;  // open addressing, at most two thirds full
  std::size_t mask_ = 0;           // slots less one; they are a power of two, or none
  std::size_t nameCount_ = 0;
  String passing_[PASSING];
  std::size_t nextPassing_ = 0;
  String characters_[256];
};

}  // namespace zn::korvo_sdk::impl
