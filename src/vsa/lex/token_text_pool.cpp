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

// The words with a meaning of their own, in any letter case.
constexpr Literal LITERALS[] = {{"true", Type::True}, {"false", Type::False}, {"null", Type::Null}};

Literal literalOf(std::string_view characters) {
  for (const Literal& literal : LITERALS) {
    if (isWord(characters, literal.text)) return literal;
  }
  return {characters, Type::Id};
}

std::uint32_t partOf(std::uint64_t hash) {
  return static_cast<std::uint32_t>(hash);
}

}  // namespace

void TokenTexts::word(std::string_view characters, Token& out) {
  const std::uint64_t hash = String::hashOf(characters);
  const std::uint32_t part = partOf(hash);
  if (words_ == nullptr) makeRoom();
  Word* const first = &words_[part & mask_];
  const auto isThis = [&](const Word& word) {
    return word.part == part && detail::sameCharacters(word.text.view(), characters);
  };
  if (!isThis(*first)) {
    if (!isThis(first[1])) return newWord(characters, hash, out);
    std::swap(first[0], first[1]);
  }
  out.type = first->type;
  out.text = first->text;
}

// A word that is not remembered. A literal's text is in lower case, however it is written.
void TokenTexts::newWord(std::string_view characters, std::uint64_t hash, Token& out) {
  const Literal literal = literalOf(characters);
  if (literal.text != characters) return word(literal.text, out);
  out.type = literal.type;
  out.text = lasting_.copyOf(characters, hash);
  if (characters.empty() || characters.size() > LONGEST_WORD) return;
  if (++wordCount_ > mask_ && mask_ + 2 < MOST_WORDS) makeRoom();
  remember({partOf(hash), out.type, out.text});
}

// In front of its pair; the one behind gives way.
void TokenTexts::remember(Word&& word) noexcept {
  Word* const first = &words_[word.part & mask_];
  first[1] = std::move(first[0]);
  first[0] = std::move(word);
}

void TokenTexts::makeRoom() {
  const std::size_t before = words_ == nullptr ? 0 : mask_ + 2;
  const std::size_t after = before == 0 ? FEWEST_WORDS : MOST_WORDS;
  std::unique_ptr<Word[]> old = std::make_unique<Word[]>(after);
  old.swap(words_);
  mask_ = after - 2;
  for (std::size_t i = before; i-- > 0;) {
    if (!old[i].text.isEmpty()) remember(std::move(old[i]));
  }
}

}  // namespace zn::korvo_sdk::impl
