// String: its buffer, construction, comparison and searching, and the functions that return parts
// or changed copies. More functions are in string_escape.cpp, string_format.cpp, string_hash.cpp
// and string_parse.cpp.
#include <vsa/foundation/string.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <string_view>

#include <vsa/foundation/string_vector.h>
#include "foundation/base/white_space.h"
#include "foundation/text/letter_case.h"
#include "foundation/text/string_slab.h"

namespace zn {

namespace detail {

namespace {

// Returns the number of bytes to request for `wanted` bytes. A block of glibc's malloc has a
// multiple of 16 bytes, of which malloc itself uses 8. Requesting all others gives the text a
// larger capacity without more memory, which saves 2 % of the time of the benchmark short.
constexpr std::size_t blockBytes(std::size_t wanted) {
  return (wanted + 7) / 16 * 16 + 8;
}

}  // namespace

// Allocates the header and the characters in one block, which saves an allocation for each text.
StringBuffer* StringBuffer::make(std::size_t length) {
  if (length > std::numeric_limits<std::size_t>::max() - sizeof(StringBuffer) - 32) {
    throw std::bad_alloc();
  }
  const std::size_t bytes = blockBytes(sizeof(StringBuffer) + length + 1);
  void* const memory = std::malloc(bytes);
  if (memory == nullptr) throw std::bad_alloc();
  constexpr std::size_t MAX_CAPACITY = IN_SLAB - 1;
  const std::size_t capacity = std::min(bytes - sizeof(StringBuffer) - 1, MAX_CAPACITY);
  auto* const made = new (memory) StringBuffer(static_cast<std::uint32_t>(capacity), length);
  made->inside()[length] = '\0';
  return made;
}

StringBuffer* StringBuffer::adopt(char* chars, std::size_t length) {
  void* const memory = std::malloc(sizeof(StringBuffer) + sizeof(char*));
  if (memory == nullptr) throw std::bad_alloc();
  auto* const made = new (memory) StringBuffer(0, length);
  // Frees the unused capacity. If realloc fails, the block keeps its size.
  void* const trimmed = std::realloc(chars, length + 1);
  made->outside() = trimmed != nullptr ? static_cast<char*>(trimmed) : chars;
  return made;
}

StringBuffer* StringBuffer::of(char c) {
  struct Block {
    alignas(StringBuffer) char bytes[sizeof(StringBuffer) + 8];
  };
  static Block blocks[256];
  static const bool areMade = [] {
    for (unsigned i = 0; i < 256; ++i) {
      auto* const made = new (blocks[i].bytes) StringBuffer(1, 1);
      made->inside()[0] = static_cast<char>(i);
      made->inside()[1] = '\0';
      made->makeImmortal();
    }
    return true;
  }();
  static_cast<void>(areMade);
  return std::launder(reinterpret_cast<StringBuffer*>(blocks[static_cast<unsigned char>(c)].bytes));
}

StringBuffer* StringBuffer::makeInSlab(void* place, std::uint32_t offset,
                                       std::size_t length) noexcept {
  auto* const made = new (place) StringBuffer(IN_SLAB | offset, length);
  made->inside()[length] = '\0';
  return made;
}

void StringBuffer::dispose() const noexcept {
  auto* const self = const_cast<StringBuffer*>(this);
  const std::uint32_t capacity = capacity_;
  if (capacity == 0) std::free(self->outside());
  self->~StringBuffer();
  if (capacity < IN_SLAB) {
    std::free(static_cast<void*>(self));
  } else {
    StringSlab::of(self, capacity & ~IN_SLAB)->release();
  }
}

}  // namespace detail

namespace {

using detail::StringBuffer;

// Whether two characters are equal in any letter case.
constexpr auto EQUAL_FOLDED = [](char x, char y) { return toLowerCase(x) == toLowerCase(y); };

bool equal(std::string_view a, std::string_view b, bool ignoreCase) {
  return ignoreCase ? std::equal(a.begin(), a.end(), b.begin(), b.end(), EQUAL_FOLDED) : a == b;
}

}  // namespace

String::String(const char* text, std::size_t length) {
  if (text == nullptr) return;
  *this = copyOf({text, length == 0 ? std::strlen(text) : length});
}

String::String(char c) : RefersTo(StringBuffer::of(c)) {
}

String::String(unsigned long long number) {
  *this = copyOf(std::to_string(number));
}

String String::copyOf(std::string_view text) {
  return copyOf(text, 0);  // The hash is not known.
}

String String::copyOf(std::string_view text, std::uint64_t hash) {
  if (text.empty()) return String();
  return filled(StringBuffer::make(text.size()), text, hash);
}

String String::filled(StringBuffer* made, std::string_view text, std::uint64_t hash) {
  std::memcpy(made->chars(), text.data(), text.size());
  made->hash.store(hash, std::memory_order_relaxed);
  return String(made);
}

void String::assign(std::string_view text, std::uint64_t hash) {
  auto* const shared = static_cast<StringBuffer*>(object());
  if (text.empty() || shared == nullptr || !shared->canHold(text.size()) || !shared->isUnshared()) {
    *this = copyOf(text, hash);
    return;
  }
  std::memcpy(shared->chars(), text.data(), text.size());
  shared->chars()[text.size()] = '\0';
  shared->length = text.size();
  shared->hash.store(hash, std::memory_order_relaxed);
}

String String::adopt(ds::Vector<char>&& chars) {
  const std::string_view text(chars.data, chars.size);
  const std::size_t length = std::min(text.find('\0'), text.size());
  return adoptFirst(std::move(chars), length);
}

String String::adoptWhole(ds::Vector<char>&& chars) {
  const auto length = static_cast<std::size_t>(chars.size);
  return adoptFirst(std::move(chars), length);
}

String String::adoptFirst(ds::Vector<char>&& chars, std::size_t length) {
  if (length == 0) {
    chars = ds::Vector<char>();
    return String();
  }
  chars.push_back('\0');
  chars.data[length] = '\0';
  StringBuffer* const buffer = StringBuffer::adopt(chars.data, length);
  chars.data = nullptr;
  chars.size = 0;
  chars.capacity = 0;
  return String(buffer);
}

String String::operator+(const String& other) const {
  if (isEmpty()) return other;
  if (other.isEmpty()) return *this;
  StringBuffer* const joined = StringBuffer::make(len() + other.len());
  std::memcpy(joined->chars(), buf(), len());
  std::memcpy(joined->chars() + len(), other.buf(), other.len());
  return String(joined);
}

String String::operator+(const char* other) const {
  return *this + String(other);
}

bool String::contains(const String& s, bool ignoreCase) const noexcept {
  if (!ignoreCase) return view().find(s.view()) != std::string_view::npos;
  const std::string_view text = view();
  const std::string_view sought = s.view();
  return sought.empty() || std::search(text.begin(), text.end(), sought.begin(), sought.end(),
                                       EQUAL_FOLDED) != text.end();
}

bool String::startsWith(const String& s, bool ignoreCase) const noexcept {
  return len() >= s.len() && equal(view().substr(0, s.len()), s.view(), ignoreCase);
}

bool String::endsWith(const String& s, bool ignoreCase) const noexcept {
  return len() >= s.len() && equal(view().substr(len() - s.len()), s.view(), ignoreCase);
}

int String::find(char c, bool ignoreCase, std::size_t from) const noexcept {
  const std::string_view text = view();
  for (std::size_t i = from; i < text.size(); ++i) {
    const bool found = ignoreCase ? toLowerCase(text[i]) == toLowerCase(c) : text[i] == c;
    if (!found) continue;
    return i <= static_cast<std::size_t>(std::numeric_limits<int>::max()) ? static_cast<int>(i)
                                                                          : NOT_FOUND;
  }
  return NOT_FOUND;
}

int String::compareNoCase(const String& s) const noexcept {
  const std::size_t common = std::min(len(), s.len());
  for (std::size_t i = 0; i < common; ++i) {
    const int difference = static_cast<unsigned char>(toLowerCase(buf()[i])) -
                           static_cast<unsigned char>(toLowerCase(s.buf()[i]));
    if (difference != 0) return difference;
  }
  if (len() == s.len()) return 0;
  return len() < s.len() ? -1 : 1;
}

String String::fromFirst(char c, bool ignoreCase) const {
  const std::string_view text = view();
  const auto isIt = [c](char x) { return toLowerCase(x) == toLowerCase(c); };
  const std::size_t at =
      ignoreCase
          ? static_cast<std::size_t>(std::find_if(text.begin(), text.end(), isIt) - text.begin())
          : text.find(c);
  return at >= text.size() ? String() : copyOf(text.substr(at + 1));
}

String String::substring(std::size_t start, std::size_t count) const {
  const std::size_t from = std::min(start, len());
  const std::size_t kept = std::min(count, len() - from);
  return kept == len() ? *this : copyOf(view().substr(from, kept));
}

String String::trim(bool leading, bool trailing) const {
  const std::string_view kept = detail::trimmed(view(), leading, trailing);
  return kept.size() == len() ? *this : copyOf(kept);
}

String String::trimChars(const String& chars, const String& /*second*/) const {
  const std::string_view kept = detail::trimmedChars(view(), chars.view());
  return kept.size() == len() ? *this : copyOf(kept);
}

String String::toLower(bool flag) const {
  const std::string_view text = view();
  const bool lower =
      std::none_of(text.begin(), text.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
  if (!flag || lower) return *this;
  StringBuffer* const folded = StringBuffer::make(text.size());
  std::transform(text.begin(), text.end(), folded->chars(), toLowerCase);
  return String(folded);
}

StringVector String::split(char separator, bool skipEmpty, bool /*third*/) const {
  StringVector pieces;
  const std::string_view text = view();
  std::size_t start = 0;
  while (start <= text.size()) {
    const std::size_t end = std::min(text.find(separator, start), text.size());
    if (end > start || !skipEmpty) pieces.append(copyOf(text.substr(start, end - start)));
    start = end + 1;
  }
  return pieces;
}

}  // namespace zn
