// String: the text type of the library. Its functions search, split, format and convert texts.
// Texts that several handles share never change: functions return a new String. Only `assign`
// overwrites characters, and only if no other handle shares the buffer.
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

/// The shared buffer of a String: a header, and after it either the characters and a NUL, or a
/// pointer to them. The header is small because most texts are names of a few characters.
class VSA_API StringBuffer final : public IRefCounted {
  // Says how many characters there is room for, and where they are. It is the first member, so that
  // it shares a word of memory with the handle count. Its values:
  //   0                  a pointer to the characters follows the header
  //   1 to IN_SLAB - 1   the characters follow the header; there is room for this many
  //   IN_SLAB + n        the same, but the header is n bytes after the start of a slab, and the
  //                      characters are never overwritten
  std::uint32_t capacity_;

 public:
  /// Creates a buffer of `length` uninitialised characters and a NUL.
  static StringBuffer* make(std::size_t length);
  /// Creates a buffer that owns `chars`: `length` characters and a NUL, in memory from malloc.
  /// Frees the part of that memory after the NUL.
  static StringBuffer* adopt(char* chars, std::size_t length);
  /// Returns the buffer of one character. It is a static object, which is never deleted.
  static StringBuffer* of(char c);
  /// Creates a buffer of `bytesFor(length)` bytes at `place`. `offset` is the distance in bytes
  /// from the start of the slab to `place`. See string_slab.h.
  static StringBuffer* makeInSlab(void* place, std::uint32_t offset, std::size_t length) noexcept;
  /// The size in bytes of a buffer with `length` characters and a NUL: a multiple of 8.
  static constexpr std::size_t bytesFor(std::size_t length) noexcept;

  /// The characters.
  char* chars() noexcept { return capacity_ != 0 ? inside() : outside(); }
  const char* chars() const noexcept { return const_cast<StringBuffer*>(this)->chars(); }
  /// Whether the buffer has exactly one handle.
  bool isUnshared() const noexcept { return handles().isOne(); }
  /// Stops the counting of handles, so that the buffer is never deleted.
  void makeImmortal() noexcept { handles().makeImmortal(); }
  /// Whether the buffer has room for `count` characters and is not in a slab, where characters are
  /// never overwritten. Before the characters are overwritten, `isUnshared` must be checked, too.
  bool canHold(std::size_t count) const noexcept {
    return capacity_ < IN_SLAB && count <= capacity_;
  }

  /// The number of characters, without the NUL.
  std::size_t length;
  mutable std::atomic<std::uint64_t> hash{0};  // 0 until it is computed

 private:
  static constexpr std::uint32_t IN_SLAB = std::uint32_t{1} << 31;

  StringBuffer(std::uint32_t capacity, std::size_t count) noexcept
      : capacity_(capacity), length(count) {}
  ~StringBuffer() override = default;
  void dispose() const noexcept override;
  char* inside() noexcept { return reinterpret_cast<char*>(this + 1); }
  char*& outside() noexcept { return *reinterpret_cast<char**>(this + 1); }
};

constexpr std::size_t StringBuffer::bytesFor(std::size_t length) noexcept {
  return (sizeof(StringBuffer) + length + 8) / 8 * 8;
}

}  // namespace detail

/// A text. It is a handle with value semantics: copies share one reference-counted buffer. The
/// empty text has no buffer. Lengths and indices count 8-bit characters. Functions that allocate
/// memory throw std::bad_alloc. Several threads may share a text if each has its own handle.
class VSA_API String : public RefersTo<IRefCounted> {
 public:
  /// The radix of an integer that `parse` converts. Decimal is the only one, because all integers
  /// in texts are decimal.
  enum class Radix : int { Decimal = 0 };

  /// The result of `find` if there is no such character.
  static constexpr int NOT_FOUND = -1;

  // Construction and access.

  /// The empty text.
  String() noexcept = default;
  /// A copy of `length` characters, which may include NULs. If `length` is 0, the text ends at the
  /// first NUL. A null pointer gives the empty text.
  String(const char* text, std::size_t length = 0);  // implicit, so that literals convert
  /// A text of one character.
  explicit String(char c);
  /// The decimal digits of a number.
  explicit String(unsigned long long number);
  /// Returns a copy of all these characters, NULs included.
  static String copyOf(std::string_view text);
  /// Returns a copy of `text`. `hash` must be `hashOf(text)`: the copy stores it and need not
  /// compute it.
  static String copyOf(std::string_view text, std::uint64_t hash);
  /// Returns a text that takes ownership of the memory of `chars` without copying it. `chars` is
  /// then empty. The text ends at the first NUL.
  static String adopt(ds::Vector<char>&& chars);
  /// Does the same, but takes all characters and does not search for a NUL.
  static String adoptWhole(ds::Vector<char>&& chars);
  /// Changes this text to a copy of `text`, which must not be a part of this text. May reuse the
  /// buffer if no other handle shares it and the characters fit. Otherwise makes a new one, and
  /// then `buf()` changes.
  void assign(std::string_view text) { assign(text, 0); }
  /// Changes this text in the same way. `hash` must be `hashOf(text)`, or 0 if the hash is not
  /// known.
  void assign(std::string_view text, std::uint64_t hash);

  /// The characters with a NUL at the end. The pointer is never null. It is valid while a handle to
  /// the text exists.
  const char* buf() const noexcept { return isEmpty() ? "" : buffer()->chars(); }
  /// The number of characters, without the terminating NUL.
  std::size_t len() const noexcept { return object() == nullptr ? 0 : buffer()->length; }
  /// Whether the text has no characters.
  bool isEmpty() const noexcept { return object() == nullptr; }
  /// The characters as a view. The view is valid while a handle to the text exists.
  std::string_view view() const noexcept { return {buf(), len()}; }
  /// The i-th character, or NUL if `i` is not less than the length.
  char operator[](std::size_t i) const noexcept { return i < len() ? buffer()->chars()[i] : '\0'; }

  /// Returns this text followed by `other`. A null pointer is the empty text.
  String operator+(const String& other) const;
  String operator+(const char* other) const;
  /// Whether the texts are equal. Upper and lower case letters differ. A `const char*` ends at its
  /// NUL and must not be null.
  bool operator==(const String& other) const noexcept {
    return object() == other.object() || (!isKnownToDiffer(other) && view() == other.view());
  }
  bool operator==(const char* other) const noexcept { return view() == other; }
  /// The hash of the text; never 0. Equal texts have equal hashes in one process. Another process
  /// usually has other hashes, because the hash depends on a key that is created once per process.
  /// So it is hard to write a file with many names of the same hash. The hash of the empty text is
  /// always 1.
  std::uint64_t hash() const noexcept;
  /// Returns the hash that a String of these characters has.
  static std::uint64_t hashOf(std::string_view text) noexcept;

  // Searching and comparing. If `ignoreCase` is true, A to Z equal a to z. Every text contains the
  // empty text, starts with it and ends with it.

  bool contains(const String& s, bool ignoreCase) const noexcept;
  bool startsWith(const String& s, bool ignoreCase) const noexcept;
  bool endsWith(const String& s, bool ignoreCase) const noexcept;
  /// Returns the index of the first `c` at or after `from`, or NOT_FOUND. `from` may be greater
  /// than the length. Characters at indices above the largest int are not found: use `view()` to
  /// search longer texts.
  int find(char c, bool ignoreCase, std::size_t from) const noexcept;
  /// Compares the texts without regard to case. The result is negative if this text sorts before
  /// `s`, positive if it sorts after `s`, and 0 if both are equal.
  int compareNoCase(const String& s) const noexcept;
  /// Returns the text after the first `c`, or the empty text if there is no `c`.
  String fromFirst(char c, bool ignoreCase) const;

  // Functions that return a changed copy.

  /// Returns a copy of `count` characters that begins at index `start`. Both numbers are reduced to
  /// fit the text.
  String substring(std::size_t start, std::size_t count) const;
  /// Returns a copy without the white space (`isSpace`) at the start, at the end, or at both.
  String trim(bool leading, bool trailing) const;
  /// Returns a copy without the characters at its start and end that occur in `chars`. `second` is
  /// not used.
  String trimChars(const String& chars, const String& second) const;
  /// Returns a copy with A to Z in lower case, or the text itself if `flag` is false.
  String toLower(bool flag) const;
  /// Returns a copy with each escape sequence replaced by its character. The escape sequences are
  /// \\ \" \' \/ \a \b \f \n \r \t \v, \xHH for a byte, and \uHHHH for a UTF-16 code unit. A code
  /// unit is converted to UTF-8. Two code units that are a surrogate pair are one character. Lone
  /// surrogates, escape sequences of NUL and all other sequences do not change.
  String unescape() const;
  /// Unescapes `text` into `out` and returns the number of characters written. `out` must have room
  /// for `text.size()` characters and must not overlap `text`. Adds no NUL.
  static std::size_t unescape(std::string_view text, char* out) noexcept;
  /// Returns the parts between the separators, from left to right. If `skipEmpty` is true, empty
  /// parts are left out. `third` is not used.
  StringVector split(char separator, bool skipEmpty, bool third) const;

  // Formatting with the conventions of printf. The result can have any length. A conversion other
  // than a plain %s adds nothing if its own result has more than INT_MAX characters. A NUL that %c
  // writes ends the result. %n and unknown conversions are copied unchanged. Never use a text from
  // a file as the format, because it may contain conversions: pass it as an argument.

  /// Returns the formatted text.
  static String format(const char* fmt, ...) VSA_PRINTF(1, 2);
  /// Returns the formatted text of a list of arguments. The caller calls va_end.
  static String formatv(const char* fmt, va_list args) VSA_PRINTF(1, 0);

  // Conversions. A function succeeds if the whole text is a value of the target type, apart from
  // white space at both ends. It then stores the value and returns true. Otherwise it returns false
  // and does not change the target. Tuples and colours are exceptions in two ways: words after the
  // last number are ignored, and a function that fails may have written a part of the target.

  /// Converts a boolean: "true" or "false", in any letter case.
  static bool parse(const String& text, bool& out);
  /// Converts a real: `1.5`, `-.5`, `1e-3`, `2f`, `inf` or `nan`. The value is rounded to the
  /// nearest value of the target. A finite number that is too large for the target is not a value
  /// of it.
  static bool parse(const String& text, float& out);
  static bool parse(const String& text, double& out);
  /// Converts an integer: `12`, `-12`, `12u` or `12e3`. It must be in the range of the target. A
  /// text with "-" is not an unsigned number, not even `-0`.
  static bool parse(const String& text, signed char& out, Radix radix);
  static bool parse(const String& text, unsigned char& out, Radix radix);
  static bool parse(const String& text, short& out, Radix radix);
  static bool parse(const String& text, unsigned short& out, Radix radix);
  static bool parse(const String& text, int& out, Radix radix);
  static bool parse(const String& text, unsigned int& out, Radix radix);
  static bool parse(const String& text, long long& out, Radix radix);
  static bool parse(const String& text, unsigned long long& out, Radix radix);
  /// Converts a tuple: `count` numbers, separated by blanks, in the storage order of T. See
  /// tuple_parse.h.
  template <class T>
  static bool parse(const String& text, unsigned long long count, T& out);
  /// Converts a colour: four numbers, or three numbers with an alpha of 1. See tuple_parse.h.
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

  // Takes ownership of `chars`. Its first `length` characters are the text.
  static String adoptFirst(ds::Vector<char>&& chars, std::size_t length);
  // Copies `text` into `made`, a new buffer, and returns the first handle of that buffer.
  static String filled(detail::StringBuffer* made, std::string_view text, std::uint64_t hash);

  const detail::StringBuffer* buffer() const noexcept {
    return static_cast<const detail::StringBuffer*>(object());
  }

  using RefersTo::RefersTo;
  // Whether the lengths differ, or both hashes are known and differ.
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
