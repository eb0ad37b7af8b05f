#include "vsa/token_texts.h"

#include <utility>

namespace zn::korvo_sdk::impl {

// The hash is keyed, so no text can be written whose names all meet in one place.
String TokenTexts::name(std::string_view characters) {
  if (characters.size() > LONGEST_NAME || characters.empty()) return String::copyOf(characters);
  if (3 * nameCount_ >= 2 * nameSlots_) grow();
  const std::uint64_t hash = String::hashOf(characters);
  Slot& slot = slotOf(hash, characters);
  if (slot.hash == 0) {
    slot.text = String::copyOf(characters, hash);
    slot.hash = hash;
    ++nameCount_;
  }
  return slot.text;
}

// The slot that holds the name, or the free one where it goes.
TokenTexts::Slot& TokenTexts::slotOf(std::uint64_t hash, std::string_view characters) const {
  std::size_t at = static_cast<std::size_t>(hash) & (nameSlots_ - 1);
  while (names_[at].hash != 0) {
    if (names_[at].hash == hash && names_[at].text.view() == characters) break;
    at = (at + 1) & (nameSlots_ - 1);
  }
  return names_[at];
}

void TokenTexts::grow() {
  constexpr std::size_t FEWEST = 256;
  const std::size_t slots = nameSlots_ == 0 ? FEWEST : 2 * nameSlots_;
  std::unique_ptr<Slot[]> old = std::make_unique<Slot[]>(slots);
  old.swap(names_);
  const std::size_t before = std::exchange(nameSlots_, slots);
  for (std::size_t i = 0; i < before; ++i) {
    if (old[i].hash == 0) continue;
    std::size_t at = static_cast<std::size_t>(old[i].hash) & (slots - 1);
    while (names_[at].hash != 0) at = (at + 1) & (slots - 1);
    names_[at] = std::move(old[i]);
  }
}

}  // namespace zn::korvo_sdk::impl
