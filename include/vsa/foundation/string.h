// String: the shared text handle of the library, with its searching, cutting, formatting and
// conversion services. No operation changes a text that another handle shares: each yields a new
// String, and `assign` alone writes over the characters of one that nobody else has.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include <vsa/foundation/api.h>
#include <vsa/foundation/char_class.h>
#include <vsa/foundation/ref_counted.h>
#include <vsa/foundation/vector.h>

namespace zn {

class StringSlabs;
class StringVector;

namespace detail {

/// The shared buffer behind a String: a header, and behind it the characters with a NUL after them,
/// or the place of such characters elsewhere. Short: most texts are names of a few characters.
class VSA_API StringBuffer final : public IRefCounted {
  // First, for it fits beside the count. For characters behind the header, as far as 31 bits tell;
  // 0 when they are elsewhere. In a slab nobody writes over them, and the other bits tell how far
  // behind its beginning they are.
  std::uint32_t room_;

 public:
  /// A buffer with room for `length` characters; the caller fills them in. The NUL is in place.
  static StringBuffer* make(std::size_t length);
  /// A buffer that owns `chars`, taken from malloc, with `length` characters and a NUL after them;
  /// what memory there is behind them goes back.
  static StringBuffer* adopt(char* chars, std::size_t length);
  /// The buffer of one character. It is there for good, and nobody counts it.
  static StringBuffer* of(char c);
  /// A buffer at `place`, `offset` bytes behind the beginning of its slab; see string_slab.h. It
  /// takes `bytesFor(length)` bytes, a multiple of 8.
  static StringBuffer* makeInSlab(void* place, std::uint32_t offset, std::size_t length) noexcept;
  static constexpr std::size_t bytesFor(std::size_t length) noexcept;

  char* chars() noexcept { return room_ != 0 ? inside() : outside(); }
  const char* chars() const noexcept { return const_cast<StringBuffer*>(this)->chars(); }
  /// Whether there is one handle and no other.
  bool isUnshared() const noexcept { return handles().isOne(); }
  /// From here on nobody counts it, and it stays for good.
  void stick() noexcept { handles().stick(); }
  /// Whether other characters, up to this many, may take the place of these.
  bool hasRoomFor(std::size_t count) const noexcept { return room_ < IN_SLAB && count <= room_; }

  std::size_t length;
  mutable std::atomic<std::uint64_t> hash{0};  // 0: not asked for yet

 private:
  static constexpr std::uint32_t IN_SLAB = std::uint32_t{1} << 31;

  StringBuffer(std::uint32_t room, std::size_t count) noexcept : room_(room), length(count) {}
  ~StringBuffer() override = default;
  void dispose() const noexcept override;
  char* inside() noexcept { return reinterpret_cast<char*>(this + 1); }
  char*& outside() noexcept { return *reinterpret_cast<char**>(this + 1); }
};

constexpr std::size_t StringBuffer::bytesFor(std::size_t length) noexcept {
  return (sizeof(StringBuffer) + length + 8) / 8 * 8;
}

}  // namespace detail

/// A handle with value semantics. Copies share one counted buffer; an empty text holds none.
/// Lengths and indices count 8-bit characters. Operations that need memory throw std::bad_alloc.
/// Threads may share a text, each through a handle of its own.
class VSA_API String : public RefersTo<IRefCounted> {
 public:
  /// The radix of the integer conversions. Texts are decimal throughout.
  enum class Radix : int { Decimal = 0 };

  /// "No such position" for `find`.
  static constexpr int NOT_FOUND = -1;

  // Construction and access.

  /// The empty text.
  String() noexcept = default;
  /// A copy of `length` characters, NULs among them included; 0 means up to the terminating NUL.
  /// Null is the empty text.
  String(const char* text, std::size_t length = 0);  // implicit: literals convert
  /// One character.
  explicit String(char c);
  /// The decimal text of a number.
  explicit String(unsigned long long number);
  /// A copy of exactly these characters, embedded NULs included.
  static String copyOf(std::string_view text);
  /// The same where the text's hash, `hashOf(text)`, is known already.
  static String copyOf(std::string_view text, std::uint64_t hash);
  /// Takes over the storage of `chars` (which is left empty) as the text, without a copy. The text
  /// ends at the first NUL among them.
  static String adopt(ds::Vector<char>&& chars);
  /// The same for characters of which none is a NUL.
  static String adoptWhole(ds::Vector<char>&& chars);
  /// Becomes a copy of `text`, which is no part of this text: in the memory it has, when no other
  /// handle shares that and it has the room.
  void assign(std::string_view text);

  /// The NUL-terminated text; never null; valid while a handle to it lives.
  const char* buf() const noexcept { return isEmpty() ? "" : buffer()->chars(); }
  /// Characters in the text, without the NUL at its end.
  std::size_t len() const noexcept { return object() == nullptr ? 0 : buffer()->length; }
  /// Whether the text has no character.
  bool isEmpty() const noexcept { return object() == nullptr; }
  /// The same characters as a view; valid while a handle to them lives.
  std::string_view view() const noexcept { return {buf(), len()}; }
  /// The i-th character, or NUL past the end.
  char operator[](std::size_t i) const noexcept { return i < len() ? buffer()->chars()[i] : '\0'; }

  /// This text with `other` behind it. Null adds nothing.
  String operator+(const String& other) const;
  String operator+(const char* other) const;
  /// Equal characters, letter case counting. A `const char*` ends at its NUL and is not null.
  bool operator==(const String& other) const noexcept {
    return object() == other.object() || (!isKnownToDiffer(other) && view() == other.view());
  }
  bool operator==(const char* other) const noexcept { return view() == other; }
  /// Equal texts have equal hashes within one process; never 0. The hash is keyed by a number that
  /// differs from process to process, so that no file can be written against it.
  std::uint64_t hash() const noexcept;
  /// The hash of a text that is no String yet: the same as that of a String of these characters.
  static std::uint64_t hashOf(std::string_view text) noexcept;

  // Searching and comparing. `ignoreCase` folds the letters A to Z only. The empty text is
  // contained in every text, at its start and at its end.

  bool contains(const String& s, bool ignoreCase) const noexcept;
  bool startsWith(const String& s, bool ignoreCase) const noexcept;
  bool endsWith(const String& s, bool ignoreCase) const noexcept;
  /// Index of the first `c` at or after `from` (which may be past the end), or NOT_FOUND. An index
  /// that an int cannot hold is not found either: longer texts are searched through `view()`.
  int find(char c, bool ignoreCase, std::size_t from) const noexcept;
  /// Negative, 0 or positive, as this text sorts before, with or after `s` when case is ignored.
  int compareNoCase(const String& s) const noexcept;
  /// The text after the first `c`; empty when there is none.
  String fromFirst(char c, bool ignoreCase) const;

  // Transforming.

  /// `count` characters from `start`; both are clamped to the text.
  String substring(std::size_t start, std::size_t count) const;
  /// Without white space (`isSpace`) at the start and at the end, as asked.
  String trim(bool leading, bool trailing) const;
  /// Without every leading and trailing character that occurs in `chars`. `second` is unused.
  String trimChars(const String& chars, const String& second) const;
  /// In lower case (A to Z only); with `flag` false the text as it is.
  String toLower(bool flag) const;
  /// With escape sequences replaced by what they stand for: \\ \" \' \/ \a \b \f \n \r \t \v, \xHH
  /// (that byte) and \uHHHH (a UTF-16 code unit, pairs joined, as UTF-8). Anything else after a
  /// backslash stays as written, and so do a lone surrogate and an escape that would give a NUL.
  String unescape() const;
  /// The same from `text` into `out`, which has room for as many characters and is no part of it.
  /// Returns how many it wrote; a NUL is not put behind them.
  static std::size_t unescape(std::string_view text, char* out) noexcept;
  /// The pieces between separators, left to right; `skipEmpty` drops empty ones. `third` is unused.
  StringVector split(char separator, bool skipEmpty, bool third) const;

  // Formatting, by the conventions of printf. Any length. %n is not known; what is no conversion
  // stays in the text as it is written. A text from outside is an argument, never the format.

  static String format(const char* fmt, ...) VSA_PRINTF(1, 2);
  /// The same from a list of arguments, which stays the caller's to end.
  static String formatv(const char* fmt, va_list args) VSA_PRINTF(1, 0);

  // Conversions: true when the whole text, but for white space around it, is a value of the target
  // type, which is then stored. On false the target keeps what it held, but for tuples and colours,
  // which may be half written.

  /// "true" or "false" in any letter case.
  static bool parse(const String& text, bool& out);
  /// See number_text.h for the forms of reals and integers.
  static bool parse(const String& text, float& out);
  static bool parse(const String& text, double& out);
  static bool parse(const String& text, signed char& out, Radix radix);
  static bool parse(const String& text, unsigned char& out, Radix radix);
  static bool parse(const String& text, short& out, Radix radix);
  static bool parse(const String& text, unsigned short& out, Radix radix);
  static bool parse(const String& text, int& out, Radix radix);
  static bool parse(const String& text, unsigned int& out, Radix radix);
  static bool parse(const String& text, long long& out, Radix radix);
  static bool parse(const String& text, unsigned long long& out, Radix radix);
  /// Tuples: `count` numbers between blanks, in the storage order of T. See tuple_parse.h.
  template <class T>
  static bool parse(const String& text, unsigned long long count, T& out);
  /// A colour: four numbers, or three and alpha 1. See tuple_parse.h.
  template <class Component, class Colour>
  static bool parse(const String& text, Colour& out);

  // Character classes. See char_class.h.

  static constexpr bool isDigit(char c) { return char_class::is(c, char_class::DIGIT); }
  static constexpr bool isLetter(char c) { return char_class::is(c, char_class::LETTER); }
  static constexpr bool isSpace(char c) { return char_class::is(c, char_class::SPACE); }
  static constexpr bool isHexDigit(char c) { return char_class::is(c, char_class::HEX_DIGIT); }
  static constexpr bool isPrintable(char c) { return char_class::is(c, char_class::PRINTABLE); }

 private:
  friend class StringSlabs;

  // Takes over the storage of `chars`, whose first `length` are the text.
  static String adoptFirst(ds::Vector<char>&& chars, std::size_t length);
  // A handle to a buffer that was made for `text`.
  static String filled(detail::StringBuffer* made, std::string_view text, std::uint64_t hash);

  const detail::StringBuffer* buffer() const noexcept {
    return static_cast<const detail::StringBuffer*>(object());
  }

  using RefersTo::RefersTo;
  // Told by the lengths, or by the hashes of texts that were asked for theirs.
  bool isKnownToDiffer(const String& other) const noexcept {
    if (len() != other.len() || isEmpty()) return len() != other.len();
    const std::uint64_t mine = buffer()->hash.load(std::memory_order_relaxed);
    const std::uint64_t others = other.buffer()->hash.load(std::memory_order_relaxed);
    return mine != 0 && others != 0 && mine != others;
  }
};

template <>
inline constexpr bool ds::MOVES_AS_BYTES<String> = true;

}  // namespace zn
