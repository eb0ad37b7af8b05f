// TokenTextPool: the texts of tokens, without an allocation for each. Words are interned; the texts
// of numbers and short lists reuse the memory of earlier ones. Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include <vsa/foundation/string.h>
#include "foundation/text/string_slab.h"
#include "vsa/lex/token.h"

namespace zn::korvo_sdk::impl {

class TokenTextPool {
 public:
  /// A String of one character.
  const String& character(char c) {
    String& text = characters_[static_cast<unsigned char>(c)];
    if (text.isEmpty() && c != '\0') text = String(c);
    return text;
  }

  /// Sets type and text of a word: a literal of the format, or a name. A word that was read a short
  /// while ago gives the same String, so that most comparisons of names compare pointers.
  void intern(std::string_view characters, Token& out);

  /// A text that the scene is likely to keep.
  String copy(std::string_view characters) { return slabs_.copyOf(characters); }

  /// A text that is needed for one statement: it takes the memory of an earlier one that nobody
  /// refers to any more.
  void copyReusing(std::string_view characters, String& out) {
    if (characters.size() > MAX_REUSED_BYTES) {
      out = String::copyOf(characters);
      return;
    }
    String& text = reused_[nextReused_++ % REUSED_STRINGS];
    text.assign(characters);
    out = text;
  }

 private:
  // Longer words are too rare to be interned.
  static constexpr std::size_t MAX_WORD_BYTES = 64;
  // The memory of longer texts is too large to be kept.
  static constexpr std::size_t MAX_REUSED_BYTES = 4096;
  // More than a statement refers to, so that each is free again when its turn comes.
  static constexpr std::size_t REUSED_STRINGS = 8;
  // Interned words: few at first, since many texts are short. No more than fit the caches: to find
  // a word beyond them costs more than to copy it.
  static constexpr std::size_t MIN_WORDS = 256;
  static constexpr std::size_t MAX_WORDS = 2048;

  // An empty slot has no text.
  struct Word {
    std::uint32_t tag = 0;  // the low bits of the hash
    Token::Type type = Token::Type::Id;
    String text;
  };

  void addWord(std::string_view characters, std::uint64_t hash, Token& out);
  void store(Word&& word) noexcept;
  void growWords();

  StringSlabs slabs_;
  std::unique_ptr<Word[]> words_;  // pairs; the word read last comes first in its pair
  std::size_t mask_ = 0;           // from a tag to the first slot of its pair
  std::size_t wordCount_ = 0;      // words added, those replaced since included
  String reused_[REUSED_STRINGS];
  std::size_t nextReused_ = 0;
  String characters_[256];
};

}  // namespace zn::korvo_sdk::impl
