// TokenTextPool: creates the texts of tokens with few allocations. Internal.
//
// Words are interned. The texts of numbers and short lists reuse the memory of earlier texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include <vsa/foundation/string.h>
#include "foundation/text/string_slab.h"
#include "vsa/lex/token.h"

namespace zn::korvo_sdk::impl {

/// Returns the type of a word: True, False or Null for a literal in any letter case, otherwise Id.
Token::Type typeOfWord(std::string_view word);

class TokenTextPool {
 public:
  /// Returns a String of one character.
  const String& character(char c) {
    String& text = characters_[static_cast<unsigned char>(c)];
    if (text.isEmpty() && c != '\0') text = String(c);
    return text;
  }

  /// Stores the interned text of a word in `out`. Returns the type of the word. Equal words that
  /// were read recently share one String, so most comparisons of names compare pointers.
  Token::Type intern(std::string_view characters, String& out);

  /// Creates a text that the scene probably keeps.
  String copy(std::string_view characters) { return slabs_.copyOf(characters); }

  /// Creates a text that only the current statement needs. Reuses the memory of an earlier text if
  /// nothing else refers to it.
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
  // Longer words are not interned, because they are rare.
  static constexpr std::size_t MAX_WORD_BYTES = 64;
  // Longer texts are not stored for reuse, because they take too much memory.
  static constexpr std::size_t MAX_REUSED_BYTES = 4096;
  // The number of texts that are stored for reuse. A statement refers to fewer texts, so the text
  // to reuse is not one of the current statement.
  static constexpr std::size_t REUSED_STRINGS = 8;
  // The minimum and maximum number of interned words. The table starts small, because many texts
  // are short. A table of MAX_WORDS words fits into the CPU caches. A look-up that misses the
  // caches would take longer than copying the word.
  static constexpr std::size_t MIN_WORDS = 256;
  static constexpr std::size_t MAX_WORDS = 512;

  // A word as its first 8 and its last 8 characters, which may overlap, and its length. For words
  // of up to 7 characters, `head` and `tail` contain fewer characters each. Words of up to 16
  // characters are equal if their keys are equal.
  struct Key {
    std::uint64_t head = 0;
    std::uint32_t length = 0;
    std::uint64_t tail = 0;

    explicit Key(std::string_view characters) noexcept;
    std::size_t hash() const noexcept;
  };

  // A slot of the table. An empty slot has the length 0. `head` and `tail` are not adjacent: the
  // compiler would copy both with one load, and that load waits for the two stores before it. This
  // would cost 6 % of the time of the benchmark links 100k.
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
  // The table: pairs of words. The first word of a pair was used more recently than the second.
  std::unique_ptr<Word[]> words_;
  // Maps a hash to the index of the first word of a pair.
  std::size_t mask_ = 0;
  // The number of words added, including words that were replaced.
  std::size_t wordCount_ = 0;
  String reused_[REUSED_STRINGS];
  std::size_t nextReused_ = 0;
  String characters_[256];
};

}  // namespace zn::korvo_sdk::impl
