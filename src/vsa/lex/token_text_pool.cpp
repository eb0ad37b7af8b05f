#include "vsa/lex/token_text_pool.h"

#include <algorithm>
#include <bit>

#include "foundation/base/load_word.h"
#include "foundation/text/letter_case.h"

namespace zn::korvo_sdk::impl {

namespace {

using Type = Token::Type;

struct Literal {
  std::string_view text;
  Type type;
};

// The literals that are words. They match in any letter case.
constexpr Literal LITERALS[] = {{"true", Type::True}, {"false", Type::False}, {"null", Type::Null}};

// Returns the row of the literal that the word matches. If the word matches no literal, returns a
// row that contains the word itself.
Literal literalOf(std::string_view word) {
  if (word.size() < 4 || word.size() > 5) return {word, Type::Id};
  for (const Literal& literal : LITERALS) {
    if (isWord(word, literal.text)) return literal;
  }
  return {word, Type::Id};
}

}  // namespace

Type typeOfWord(std::string_view word) {
  return literalOf(word).type;
}

TokenTextPool::Key::Key(std::string_view characters) noexcept
    : length(static_cast<std::uint32_t>(std::min(characters.size(), MAX_WORD_BYTES + 1))) {
  const char* const at = characters.data();
  if (characters.size() >= 8) {
    head = detail::loadWord<std::uint64_t>(at);
    tail = detail::loadWord<std::uint64_t>(at + characters.size() - 8);
  } else if (characters.size() >= 4) {
    head = detail::loadWord<std::uint32_t>(at);
    tail = detail::loadWord<std::uint32_t>(at + characters.size() - 4);
  } else {
    for (const char c : characters) head = head << 8 | static_cast<unsigned char>(c);
  }
}

// A fixed hash function is safe here, because words whose hashes collide only replace each other.
inline TokenTextPool::Word& TokenTextPool::slotOf(const Key& key) const noexcept {
  const std::uint64_t product = (key.head ^ std::rotl(key.tail, 29)) * 0x9E3779B97F4A7C15;
  return words_[static_cast<std::size_t>(product >> 40) & (WORDS - 1)];
}

inline bool TokenTextPool::Word::is(const Key& key, std::string_view characters) const noexcept {
  return head == key.head && tail == key.tail && length == key.length &&
         (length <= 16 || text.view() == characters);
}

Type TokenTextPool::intern(std::string_view characters, String& out) {
  const Key key(characters);
  const Word& word = slotOf(key);
  if (!word.is(key, characters)) return addWord(characters, key, out);
  out = word.text;
  return word.type;
}

// Adds a word to the table, in place of the word in its slot. If the word is a literal, adds its
// text in lower case instead. Does not add an empty or a long word. The hash is computed here,
// which saves 4 % of the instructions of the benchmark links.
Type TokenTextPool::addWord(std::string_view characters, const Key& key, String& out) {
  const Literal literal = literalOf(characters);
  if (literal.text != characters) return intern(literal.text, out);
  out = slabs_.copyOf(characters, String::hashOf(characters));
  if (characters.empty() || characters.size() > MAX_WORD_BYTES) return literal.type;
  slotOf(key) = {key.head, key.tail, key.length, literal.type, out};
  return literal.type;
}

}  // namespace zn::korvo_sdk::impl
