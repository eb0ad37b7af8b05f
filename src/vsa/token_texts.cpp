#include "vsa/token_texts.h"

#include <utility>

#include "foundation/short_text.h"

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

// The hash is keyed, so no text can be written whose names all meet in one place.
void TokenTexts::word(std::string_view characters, Token& out) {
  const std::uint64_t hash = String::hashOf(characters);
  const std::uint32_t part = partOf(hash);
  if (slots_ != nullptr) {
    for (std::size_t at = part & mask_; !slots_[at].text.isEmpty(); at = (at + 1) & mask_) {
      const Slot& slot = slots_[at];
      if (slot.part != part || !detail::sameCharacters(slot.text.view(), characters)) continue;
      out.type = slot.type;
      out.text = slot.text;
      return;
    }
  }
  firstSeen(characters, hash, out);
}

// A word that is not in the table: it goes there, but for names that are too long to be kept. A
// literal stands there as its text in lower case, however it is written.
void TokenTexts::firstSeen(std::string_view characters, std::uint64_t hash, Token& out) {
  const Literal literal = literalOf(characters);
  if (literal.text != characters) return word(literal.text, out);
  out.type = literal.type;
  if (characters.empty() || characters.size() > LONGEST_NAME) {
    out.text = String::copyOf(characters, hash);
    return;
  }
  out.text = lasting_.copyOf(characters, hash);
  if (slots_ == nullptr || 2 * (nameCount_ + 1) > mask_ + 1) grow();
  file({partOf(hash), out.type, out.text});
  ++nameCount_;
}

void TokenTexts::file(Slot&& slot) noexcept {
  std::size_t at = slot.part & mask_;
  while (!slots_[at].text.isEmpty()) at = (at + 1) & mask_;
  slots_[at] = std::move(slot);
}

void TokenTexts::grow() {
  constexpr std::size_t FEWEST = 256;
  const std::size_t before = slots_ == nullptr ? 0 : mask_ + 1;
  const std::size_t after = before == 0 ? FEWEST : 2 * before;
  std::unique_ptr<Slot[]> old = std::make_unique<Slot[]>(after);
  old.swap(slots_);
  mask_ = after - 1;
  for (std::size_t i = 0; i < before; ++i) {
    if (!old[i].text.isEmpty()) file(std::move(old[i]));
  }
}

}  // namespace zn::korvo_sdk::impl
