// String: the library's text handle, with functions that search, cut, format and convert texts. No
// function changes a text that another handle shares: each returns a new String. Only `assign`
// overwrites characters, and only those of a text that no other handle shares.
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

/// The shared buffer of a String: a header, followed by the characters and a NUL, or by a pointer
/// to them. The header is small because most texts are names of a few characters.
class VSA_API StringBuffer final : public IRefCounted {
  // The first field is the capacity, because it fits into the same word as the handle count:
  //   0                  a pointer to the characters follows the header
  //   1 to IN_SLAB - 1   the characters follow the header; there is room for this many
  //   IN_SLAB + n        as above, but n bytes after the start of a slab; never overwritten
  std::uint32_t capacity_;

 public:
  /// A buffer with uninitialised characters and a NUL at `length`.
  static StringBuffer* make(std::size_t length);
  /// A buffer that owns `chars`, memory from malloc with `length` characters and a NUL. Frees the
  /// part of this memory after the NUL.
  static StringBuffer* adopt(char* chars, std::size_t length);
  /// The buffer of one character: a static object, which is never deleted.
  static StringBuffer* of(char c);
  /// A buffer at `place`, `offset` bytes after the start of its slab (string_slab.h), of
  /// `bytesFor(length)` bytes.
  static StringBuffer* makeInSlab(void* place, std::uint32_t offset, std::size_t length) noexcept;
  /// The bytes of a buffer for `length` characters and a NUL: a multiple of 8.
  static constexpr std::size_t bytesFor(std::size_t length) noexcept;

  char* chars() noexcept { return capacity_ != 0 ? inside() : outside(); }
  const char* chars() const noexcept { return const_cast<StringBuffer*>(this)->chars(); }
  /// Whether there is exactly one handle.
  bool isUnshared() const noexcept { return handles().isOne(); }
  /// Stops counting handles: the buffer is never deleted.
  void makeImmortal() noexcept { handles().makeImmortal(); }
  /// Whether `count` characters may overwrite the current ones.
  bool canHold(std::size_t count) const noexcept {
    return capacity_ < IN_SLAB && count <= capacity_;
  }

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

/// A text: a handle with value semantics. Copies share one reference-counted buffer; the empty text
/// has none. Lengths and indices count 8-bit characters. Functions that allocate throw
/// std::bad_alloc. Threads may share a text, each through its own handle.
class VSA_API String : public RefersTo<IRefCounted> {
 public:
  /// The radix of the integer conversions; all texts are decimal.
  enum class Radix : int { Decimal = 0 };

  /// The result of `find` if there is no such character.
  static constexpr int NOT_FOUND = -1;

  // Construction and access.

  /// The empty text.
  String() noexcept = default;
  /// A copy of `length` characters, which may include NULs; 0 means up to the terminating NUL. Null
  /// is the empty text.
  String(const char* text, std::size_t length = 0);  // implicit: literals convert
  /// A text of one character.
  explicit String(char c);
  /// The decimal text of a number.
  explicit String(unsigned long long number);
  /// A copy of exactly these characters, NULs included.
  static String copyOf(std::string_view text);
  /// The same. `hash` must be `hashOf(text)`.
  static String copyOf(std::string_view text, std::uint64_t hash);
  /// Takes ownership of the storage of `chars`, which is left empty, without copying. The text ends
  /// at the first NUL.
  static String adopt(ds::Vector<char>&& chars);
  /// The same for characters that contain no NUL.
  static String adoptWhole(ds::Vector<char>&& chars);
  /// Becomes a copy of `text`, which must not be part of this text. Reuses the buffer when no other
  /// handle shares it and the text fits.
  void assign(std::string_view text) { assign(text, 0); }
  /// The same. `hash` must be `hashOf(text)`, or 0 if it is not known.
  void assign(std::string_view text, std::uint64_t hash);

  /// The NUL-terminated text, never null; valid while a handle to it exists.
  const char* buf() const noexcept { return isEmpty() ? "" : buffer()->chars(); }
  /// The number of characters, without the terminating NUL.
  std::size_t len() const noexcept { return object() == nullptr ? 0 : buffer()->length; }
  /// Whether the text has no character.
  bool isEmpty() const noexcept { return object() == nullptr; }
  /// The characters as a view; valid while a handle to them exists.
  std::string_view view() const noexcept { return {buf(), len()}; }
  /// The i-th character, or NUL past the end.
  char operator[](std::size_t i) const noexcept { return i < len() ? buffer()->chars()[i] : '\0'; }

  /// This text followed by `other`. Null is the empty text.
  String operator+(const String& other) const;
  String operator+(const char* other) const;
  /// Exact equality, with letter case. A `const char*` ends at its NUL and must not be null.
  bool operator==(const String& other) const noexcept {
    return object() == other.object() || (!isKnownToDiffer(other) && hasCharactersOf(other));
  }
  bool operator==(const char* other) const noexcept { return view() == other; }
  /// The hash of the text, which is never 0. Equal texts have equal hashes within one process. The
  /// hash is keyed by a number that differs from process to process, so that nobody can write a
  /// file whose names all collide.
  std::uint64_t hash() const noexcept;
  /// The hash of a String of these characters.
  static std::uint64_t hashOf(std::string_view text) noexcept;

  // Searching and comparing. `ignoreCase` ignores the case of A to Z only. Every text contains the
  // empty text, and starts and ends with it.

  bool contains(const String& s, bool ignoreCase) const noexcept;
  bool startsWith(const String& s, bool ignoreCase) const noexcept;
  bool endsWith(const String& s, bool ignoreCase) const noexcept;
  /// The index of the first `c` at or after `from` (which may be past the end), or NOT_FOUND.
  /// Indices above the largest int count as not found: search longer texts through `view()`.
  int find(char c, bool ignoreCase, std::size_t from) const noexcept;
  /// Three-way comparison that ignores case: negative, 0 or positive when this text sorts before,
  /// with or after `s`.
  int compareNoCase(const String& s) const noexcept;
  /// The text after the first `c`; empty when there is none.
  String fromFirst(char c, bool ignoreCase) const;

  // Functions that return a changed copy.

  /// A copy of `count` characters from `start` on; both are clamped to the text.
  String substring(std::size_t start, std::size_t count) const;
  /// A copy without the white space (`isSpace`) at the start, at the end, or both.
  String trim(bool leading, bool trailing) const;
  /// A copy without the leading and trailing characters that occur in `chars`. `second` is not
  /// used.
  String trimChars(const String& chars, const String& second) const;
  /// A copy in lower case (A to Z only); the text itself if `flag` is false.
  String toLower(bool flag) const;
  /// A copy with escape sequences replaced by their characters: \\ \" \' \/ \a \b \f \n \r \t \v,
  /// \xHH (a byte) and \uHHHH (a UTF-16 code unit; a surrogate pair is one character) as UTF-8. Any
  /// other sequence is kept as it is, including a lone surrogate and an escape of NUL.
  String unescape() const;
  /// Unescapes `text` into `out`, which has a capacity of `text.size()` characters and does not
  /// overlap `text`. Returns the number of characters written. Adds no NUL.
  static std::size_t unescape(std::string_view text, char* out) noexcept;
  /// The parts between separators, left to right, without empty parts if `skipEmpty` is true.
  /// `third` is not used.
  StringVector split(char separator, bool skipEmpty, bool third) const;

  // Formatting by the conventions of printf. The result can have any length. %n and other unknown
  // conversions are copied unchanged. Text from outside must be an argument, never the format.

  static String format(const char* fmt, ...) VSA_PRINTF(1, 2);
  /// The same from a list of arguments; the caller calls va_end.
  static String formatv(const char* fmt, va_list args) VSA_PRINTF(1, 0);

  // Conversions. They return true and store the value if the whole text, except white space around
  // it, is a value of the target type. Otherwise they return false and do not change the target,
  // except that tuples and colours may be partly written.

  /// A boolean is "true" or "false", in any letter case.
  static bool parse(const String& text, bool& out);
  /// Integers are `12`, `-12`, `12u` and `12e3`; reals `1.5`, `-.5`, `1e-3`, `2f`, `inf` and `nan`.
  /// Reals are rounded to the nearest value of the target.
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
  /// A tuple is `count` numbers, separated by blanks, in the storage order of T. See tuple_parse.h.
  template <class T>
  static bool parse(const String& text, unsigned long long count, T& out);
  /// A colour is four numbers, or three numbers, whose alpha is 1. See tuple_parse.h.
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

  // Takes ownership of `chars`, whose first `length` characters are the text.
  static String adoptFirst(ds::Vector<char>&& chars, std::size_t length);
  // Copies `text` into the new buffer `made` and returns its first handle.
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
  // Whether the characters of two texts of the same length are equal.
  bool hasCharactersOf(const String& other) const noexcept;
};

template <>
inline constexpr bool ds::MOVES_AS_BYTES<String> = true;

}  // namespace zn
