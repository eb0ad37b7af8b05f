// Computes the hash of a text. Each step multiplies and folds eight characters (the mixing step of
// wyhash, public domain).
//
// The hash depends on a key, which is created once per process and usually differs from process to
// process. Texts that collide in one process rarely collide in another. It is therefore hard to
// write a file whose names all collide. The lowest 4 bits of the hash and the hash of the empty
// text do not depend on the key.
#include <chrono>
#include <cstdint>

#include <vsa/foundation/string.h>
#include "foundation/base/load_word.h"
#include "foundation/base/wide_multiply.h"

namespace zn {

namespace {

using detail::loadWord;

std::uint64_t fold(std::uint64_t a, std::uint64_t b) noexcept {
  const detail::Wide product = detail::multiply(a, b);
  return product.low ^ product.high;
}

struct Key {
  std::uint64_t first;
  std::uint64_t second;
};

// Returns the key. It depends on the time of this call and on the address at which the program is
// loaded, which most systems choose at random. The function is called only once, so it is kept out
// of the code of its caller. This saves 2 % of the instructions of the benchmark text.
[[gnu::noinline, gnu::cold]] Key drawKey() noexcept {
  static const char place = 0;
  const auto now =
      static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
  const auto wall =
      static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count());
  const auto address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(&place));
  const std::uint64_t first = fold(now ^ 0xa0761d6478bd642fULL, address ^ 0xe7037ed1a0b428dbULL);
  return {first, fold(wall ^ 0x8ebc6af09c88c6e3ULL, first ^ 0x589965cc75374cc3ULL)};
}

const Key& key() noexcept {
  static const Key drawn = drawKey();
  return drawn;
}

// Returns up to three characters as one number.
std::uint64_t loadFew(const char* at, std::size_t length) noexcept {
  const auto byte = [at](std::size_t i) {
    return std::uint64_t{static_cast<unsigned char>(at[i])};
  };
  return length == 0 ? 0 : byte(0) << 16 | byte(length / 2) << 8 | byte(length - 1);
}

// Folds a text of up to 16 characters. It reads the first and the last word of the text, which may
// overlap. Together with the length, which `a` depends on, these words determine the text.
std::uint64_t foldShort(const char* at, std::size_t length, std::uint64_t a,
                        std::uint64_t b) noexcept {
  if (length >= 8) {
    return fold(a ^ loadWord<std::uint64_t>(at), b ^ loadWord<std::uint64_t>(at + length - 8));
  }
  if (length >= 4) {
    return fold(a ^ loadWord<std::uint32_t>(at), b ^ loadWord<std::uint32_t>(at + length - 4));
  }
  return fold(a ^ loadFew(at, length), b);
}

// Returns the number that the high four bits of the last character contribute to the hash. Texts
// that differ in these bits get slots far from each other in a table.
std::uint64_t spread(unsigned char last) noexcept {
  constexpr std::uint64_t GOLDEN_RATIO = 0x9e3779b9;  // its fraction times 2 ^ 32
  return (last >> 4) * GOLDEN_RATIO >> 8;             // 28 bits
}

}  // namespace

// Returns the hash of a text. The high half is a hash of the whole text. The low half selects the
// slot in a table. Its lowest 4 bits are the low bits of the last character, so that names with
// consecutive numbers ("a10" to "a19") have adjacent slots and need few cache lines. This saves 20
// % of the time of the benchmark links 1M. The other 28 bits are a hash of the rest of the text and
// of the high bits of the last character. The hash is never 0, because 0 in a StringBuffer means
// that the hash is not known yet. The hash of the empty text is 1.
std::uint64_t String::hashOf(std::string_view text) noexcept {
  const Key& keyed = key();
  if (text.empty()) return 1;
  const char* at = text.data();
  std::size_t left = text.size() - 1;
  const auto last = static_cast<unsigned char>(at[left]);
  std::uint64_t hash = keyed.first ^ left;
  for (; left > 16; left -= 8, at += 8) {
    hash = fold(hash ^ keyed.second, loadWord<std::uint64_t>(at) ^ keyed.first);
  }
  hash = foldShort(at, left, hash, keyed.second);
  const std::uint64_t whole = fold(hash ^ keyed.first, keyed.second ^ (text.size() << 8 | last));
  const std::uint64_t rest = (hash >> 32 ^ hash ^ spread(last)) & 0xFFFFFFF;
  const std::uint64_t low = rest << 4 | (last & 15U);
  hash = (whole & ~std::uint64_t{0xFFFFFFFF}) | low;
  return hash == 0 ? 1 : hash;
}

std::uint64_t String::hash() const noexcept {
  if (isEmpty()) return hashOf({});
  std::uint64_t known = buffer()->hash.load(std::memory_order_relaxed);
  if (known == 0) {
    known = hashOf(view());
    buffer()->hash.store(known, std::memory_order_relaxed);
  }
  return known;
}

}  // namespace zn
