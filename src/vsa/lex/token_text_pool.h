// TokenTexts: the texts of tokens, without an allocation for each. Words that come again and again
// are shared; the texts of numbers and short lists are gone a statement later, and their memory
// serves the next. Internal; the door is vsa.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include <vsa/foundation/string.h>
#include "foundation/text/string_slab.h"
#include "vsa/lex/token.h"

namespace zn::korvo_sdk::impl {

class TokenTexts {
 public:
  /// A String of one character.
  const String& character(char c) {
    String& text = characters_[static_cast<unsigned char>(c)];
    if (text.isEmpty() && c != '\0') text = String(c);
    return text;
  }

  /// Type and text of a word: of one that the format gives a meaning, or of a name. Words that were
  /// read a short while ago are the same String again, so that comparing two of them is mostly
  /// comparing two pointers.
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
  // Longer words are too rare to be remembered.
  static constexpr std::size_t LONGEST_WORD = 64;
  // Longer texts are too large to be kept for the next one.
  static constexpr std::size_t LONGEST_PASSING = 4096;
  // More than a statement has, so that they are free again when their turn comes.
  static constexpr std::size_t PASSING = 8;
  // Words remembered, in pairs: few at first, for many texts are short. Not all words of a large
  // scene: to look each up would cost more than to copy it, once they fill the caches.
  static constexpr std::size_t FEWEST_WORDS = 256;
  static constexpr std::size_t MOST_WORDS = 2048;

  // A free place has no text.
  struct Word {
    std::uint32_t part = 0;  // of the hash
    Token::Type type = Token::Type::Id;
    String text;
  };

  void newWord(std::string_view characters, std::uint64_t hash, Token& out);
  void remember(Word&& word) noexcept;
  void makeRoom();

  StringSlabs lasting_;
  std::unique_ptr<Word[]> words_;  // two for each hash, the one that was met last in front
  std::size_t mask_ = 0;           // of the hash, for the first of the two
  std::size_t wordCount_ = 0;      // that were new when they were met
  String passing_[PASSING];
  std::size_t nextPassing_ = 0;
  String characters_[256];
};

}  // namespace zn::korvo_sdk::impl
