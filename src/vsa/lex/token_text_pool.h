// TokenTextPool: creates the texts of tokens without an allocation for each. Words are interned.
// The texts of numbers and short lists reuse the memory of earlier texts. Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include <vsa/foundation/string.h>
#include "foundation/text/string_slab.h"
#include "vsa/lex/token.h"

namespace zn::korvo_sdk::impl {

/// The type of a word: that of a literal in any letter case, or Id.
Token::Type typeOfWord(std::string_view word);

class TokenTextPool {
 public:
  /// A String of one character.
  const String& character(char c) {
    String& text = characters_[static_cast<unsigned char>(c)];
    if (text.isEmpty() && c != '\0') text = String(c);
    return text;
  }

  /// Sets the text of a word and returns its type: a literal of the format, or a name. A recently
  /// read word gets the same String, so most comparisons of names compare pointers.
  Token::Type intern(std::string_view characters, String& out);

  /// Creates a text that the scene is likely to keep.
  String copy(std::string_view characters) { return slabs_.copyOf(characters); }

  /// Creates a text that is needed for one statement. Reuses the memory of an earlier text that has
  /// no other references.
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
  // A statement refers to fewer texts than this, so the current statement does not refer to a text
  // that is reused.
  static constexpr std::size_t REUSED_STRINGS = 8;
  // Number of interned words. The table is small at first, because many texts are short. The
  // maximum fits into the CPU caches: a look-up that misses them takes longer than copying the
  // word.
  static constexpr std::size_t MIN_WORDS = 256;
  static constexpr std::size_t MAX_WORDS = 512;

  // The first and the last characters, which may overlap, and the length. Words of up to 16
  // characters are equal if their keys are equal.
  struct Key {
    std::uint64_t head = 0;
    std::uint32_t length = 0;
    std::uint64_t tail = 0;

    explicit Key(std::string_view characters) noexcept;
    std::size_t hash() const noexcept;
  };

  // An empty slot has the length 0. Head and tail are not adjacent: the compiler would copy both by
  // one load, which waits for the two stores before it. That would cost 6 % of the time of the
  // benchmark links 100k.
  struct Word {
    std::uint64_t head = 0;
    std::uint32_t length = 0;
    Token::Type type = Token::Type::Id;
    std::uint64_t tail = 0;
    String text;

    bool is(const Key& key, std::string_view characters) const noexcept;
  };

  Token::Type addWord(std::string_view characters, const Key& key, String& out);
  Word* pairOf(std::size_t hash) const noexcept { return &words_[hash & mask_]; }
  void store(std::size_t hash, Word&& word) noexcept;
  void growWords();

  StringSlabs slabs_;
  std::unique_ptr<Word[]> words_;  // pairs; the word read last is first in its pair
  std::size_t mask_ = 0;           // maps a hash to the first slot of its pair
  std::size_t wordCount_ = 0;      // words added, including those replaced since
  String reused_[REUSED_STRINGS];
  std::size_t nextReused_ = 0;
  String characters_[256];
};

}  // namespace zn::korvo_sdk::impl
