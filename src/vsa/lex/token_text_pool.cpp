#include "vsa/lex/token_text_pool.h"

#include <utility>

#include "foundation/text/letter_case.h"
#include "foundation/text/short_text.h"

namespace zn::korvo_sdk::impl {

namespace {

using Type = Token::Type;

struct Literal {
  std::string_view text;
  Type type;
};

// The keywords of literals, matched in any letter case.
constexpr Literal LITERALS[] = {{"true", Type::True}, {"false", Type::False}, {"null", Type::Null}};

Literal literalOf(std::string_view characters) {
  for (const Literal& literal : LITERALS) {
    if (isWord(characters, literal.text)) return literal;
  }
  return {characters, Type::Id};
}

std::uint32_t tagOf(std::uint64_t hash) {
  return static_cast<std::uint32_t>(hash);
}

}  // namespace

Type TokenTextPool::intern(std::string_view characters, String& out) {
  const std::uint64_t hash = String::hashOf(characters);
  const std::uint32_t tag = tagOf(hash);
  if (words_ == nullptr) growWords();
  Word* const first = &words_[tag & mask_];
  const auto isThis = [&](const Word& word) {
    return word.tag == tag && detail::sameCharacters(word.text.view(), characters);
  };
  if (!isThis(*first)) {
    if (!isThis(first[1])) return addWord(characters, hash, out);
    std::swap(first[0], first[1]);
  }
  out = first->text;
  return first->type;
}

// Adds a word that is not interned yet. The text of a literal is always in lower case.
Type TokenTextPool::addWord(std::string_view characters, std::uint64_t hash, String& out) {
  const Literal literal = literalOf(characters);
  if (literal.text != characters) return intern(literal.text, out);
  out = slabs_.copyOf(characters, hash);
  if (characters.empty() || characters.size() > MAX_WORD_BYTES) return literal.type;
  if (++wordCount_ > mask_ && mask_ + 2 < MAX_WORDS) growWords();
  store({tagOf(hash), literal.type, out});
  return literal.type;
}

// Stores the word first in its pair. The previous first word becomes the second, and the second is
// dropped.
void TokenTextPool::store(Word&& word) noexcept {
  Word* const first = &words_[word.tag & mask_];
  first[1] = std::move(first[0]);
  first[0] = std::move(word);
}

void TokenTextPool::growWords() {
  const std::size_t before = words_ == nullptr ? 0 : mask_ + 2;
  const std::size_t after = before == 0 ? MIN_WORDS : MAX_WORDS;
  std::unique_ptr<Word[]> old = std::make_unique<Word[]>(after);
  old.swap(words_);
  mask_ = after - 2;
  for (std::size_t i = before; i-- > 0;) {
    if (!old[i].text.isEmpty()) store(std::move(old[i]));
  }
}

}  // namespace zn::korvo_sdk::impl
