#include "write/text/value_text.h"

#include <algorithm>
#include <cmath>

#include "foundation/base/hex_digits.h"
#include "foundation/compression/deflate.h"
#include "foundation/compression/hex_text.h"
#include "foundation/numbers/number_print.h"
#include "foundation/text/letter_case.h"
#include "write/text/list_text.h"

namespace vsa::impl {

using zn::korvo_sdk::AttrType;
using zn::korvo_sdk::BufferValue;
using zn::korvo_sdk::DataType;
using zn::korvo_sdk::Input;

namespace {

template <class Number>
void putNumber(TextBuffer& out, Number number) {
  out.extendTo(zn::numbers::printNumber(out.reserve(zn::numbers::PRINT_CAPACITY), number));
}

// Returns the character after the backslash in the escape sequence of a byte. It is 'x' for "\xHH".
// Returns NUL if the byte needs no escape sequence.
constexpr char escapeOf(unsigned char byte) {
  constexpr char CONTROLS[] = "xxxxxxxabtnvfrxxxxxxxxxxxxxxxxxx";
  if (byte < 0x20) return CONTROLS[byte];
  if (byte == '"' || byte == '\\') return static_cast<char>(byte);
  return byte == 0x7F || byte == 0xFF ? 'x' : '\0';
}

void putEscaped(TextBuffer& out, unsigned char byte, char escape) {
  char* end = out.reserve(4);
  *end++ = '\\';
  *end++ = escape;
  if (escape == 'x') {
    *end++ = zn::detail::HEX_DIGITS[byte >> 4];
    *end++ = zn::detail::HEX_DIGITS[byte & 15];
  }
  out.extendTo(end);
}

// Writes a UInt. A number greater than 2^63 - 1 is written as the negative number with the same 64
// bits. For example, 2^64 - 1 is "-1u".
void putUnsigned(TextBuffer& out, std::int64_t bits) {
  putNumber(out, bits);
  out.put('u');
}

void putReal(TextBuffer& out, double value) {
  if (std::isnan(value)) return out.put("-nan");
  out.extendTo(zn::numbers::printRealWithPoint(out.reserve(zn::numbers::PRINT_CAPACITY), value));
}

// Writes the keyword of a type: its display name in lower case.
void putKeyword(TextBuffer& out, std::string_view name) {
  for (const char c : name) out.put(zn::toLowerCase(c));
}

void putTupleLiteral(TextBuffer& out, const Input& input) {
  putKeyword(out, zn::korvo_sdk::attrTypeName(input.type()));
  out.put('(');
  putTuple(out, input.components(), zn::korvo_sdk::componentCount(input.type()));
  out.put(')');
}

// Writes the bytes of a compressed stream as hexadecimal digits. It writes as many at a time as
// TextBuffer::reserve allows.
class HexSink final : public zn::StreamSink {
 public:
  explicit HexSink(TextBuffer& out) : out_(out) {}

  void put(const unsigned char* bytes, std::size_t count) override {
    constexpr std::size_t MAX_BYTES = TextBuffer::MAX_RESERVED / 2;
    while (count > 0) {
      const std::size_t part = std::min(count, MAX_BYTES);
      char* const at = out_.reserve(2 * part);
      zn::writeHex(bytes, part, at);
      out_.extendTo(at + 2 * part);
      bytes += part;
      count -= part;
    }
  }

 private:
  TextBuffer& out_;
};

void putCompressed(TextBuffer& out, const BufferValue& buffer) {
  out.put("{.");
  HexSink digits(out);
  zn::deflateTo(buffer.memory, buffer.bytes, digits);
}

// Writes a buffer. If its count is 0, the function does not access the memory, because a host may
// have set any pointer.
void putBuffer(TextBuffer& out, const BufferValue& buffer, const WriteOptions& options,
               std::uint64_t column) {
  const std::uint64_t start = out.size();
  putKeyword(out, zn::korvo_sdk::dataTypeName(buffer.type));
  out.put('[');
  putNumber(out, buffer.count);
  out.put("] ");
  const bool isCompressed = options.buffers == BufferForm::Compressed && buffer.count > 0 &&
                            zn::korvo_sdk::componentBytes(buffer.type) == 1;
  if (isCompressed) {
    putCompressed(out, buffer);
  } else {
    putNumbers(out, buffer, options, column + (out.size() - start));
  }
  out.put('}');
}

}  // namespace

void putString(TextBuffer& out, std::string_view text) {
  out.put('"');
  std::size_t start = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const char escape = escapeOf(byte);
    if (escape == '\0') continue;
    out.put(text.substr(start, i - start));
    putEscaped(out, byte, escape);
    start = i + 1;
  }
  out.put(text.substr(start));
  out.put('"');
}

void putLiteral(TextBuffer& out, const Input& input, const WriteOptions& options,
                std::uint64_t column) {
  switch (input.type()) {
    case AttrType::Bool:
      return out.put(input.boolean() ? "true" : "false");
    case AttrType::Int:
      return putNumber(out, input.integer());
    case AttrType::UInt:
      return putUnsigned(out, input.integer());
    case AttrType::Real:
      return putReal(out, input.real());
    case AttrType::String:
      return putString(out, input.string());
    case AttrType::Buffer:
      return putBuffer(out, input.buffer(), options, column);
    default:
      return putTupleLiteral(out, input);
  }
}

}  // namespace vsa::impl
