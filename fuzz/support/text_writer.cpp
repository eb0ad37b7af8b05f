#include "fuzz/support/text_writer.h"

#include <vector>

#include <vsa/foundation/decompress.h>
#include <vsa/scene/data_type.h>
#include "foundation/text/letter_case.h"

namespace vsa_fuzz {

namespace {

constexpr const char* NODES[] = {"a", "b", "c", "lamp1", "a", "b"};
constexpr const char* TYPES[] = {"mesh", "declaredLamp", "lamp", "declaredLamp"};
// The names include the inputs of declaredLamp.
constexpr const char* INPUTS[] = {"x",      "y",       "z",    "power",    "shape",
                                  "filter", "samples", "keys", "intensity"};
constexpr const char* MEMBERS[] = {".m", ".n", ".power"};
constexpr const char* OUTPUTS[] = {".out", ".outColor", ".color", ".outColor", ".none"};
constexpr const char* COMMENTS[] = {"# version: 3",
                                    "#version:18446744073709551615",
                                    "# version: beta",
                                    "# time: 2024-01-01",
                                    "# time:",
                                    "# exported by %n%s",
                                    "#"};
constexpr const char* NUMBERS[] = {"0",
                                   "1",
                                   "-1",
                                   "2.5",
                                   "-2.5",
                                   "7u",
                                   "1e3",
                                   "-0.0",
                                   "127",
                                   "255",
                                   "256",
                                   "65535",
                                   "2147483648",
                                   "9223372036854775807",
                                   "9223372036854775808",
                                   "18446744073709551615",
                                   "-inf",
                                   "-nan",
                                   "1.7976931348623157e308",
                                   "4.9e-324",
                                   "1.e",
                                   "1-2",
                                   "16777217.0",
                                   "0.1f"};
constexpr const char* STRINGS[] = {"point",
                                   "spot",
                                   "%n%s",
                                   "\\u00e9",
                                   "\\x41",
                                   "\\\"",
                                   "\\\\",
                                   "\n",
                                   "\x1b[1m",
                                   "\xC3\xA9",
                                   " and a longer piece of text ",
                                   "\\ud83d\\ude00"};
constexpr const char* SEPARATORS[] = {" ", " ", ", ", "\n", ",", " ) ( ", "  "};
constexpr const char* INDICES[] = {"[0]", "[1]", "[*]", "[0]",   "[2]",
                                   "[*]", "[7]", "[]",  "[ 1 ]", "[300]"};

struct Literal {
  std::string keyword;
  std::size_t numbers;  // How many numbers a tuple or a buffer element has.
};

const Literal TUPLES[] = {{"vec2", 2}, {"vec3", 3}, {"vec4", 4},  {"pos2", 2}, {"pos3", 3},
                          {"quat", 4}, {"mat3", 9}, {"mat4", 16}, {"rgba", 4}, {"RGBA", 3}};
const Literal BYTE_BUFFERS[] = {{"byte", 1}, {"char", 1}, {"rgb8", 3}, {"rgba8", 4}};

// Returns a literal for each element type. Its keyword is the name of the type in messages, which
// contains upper-case letters. The reader ignores the case of a keyword.
std::vector<Literal> bufferLiterals() {
  using namespace zn::korvo_sdk;
  std::vector<Literal> literals;
  for (int type = 0; type < DATA_TYPE_COUNT; ++type) {
    const auto element = static_cast<DataType>(type);
    if (isBufferElement(element)) {
      literals.push_back({dataTypeName(element), componentCount(element)});
    }
  }
  return literals;
}

constexpr const char* COUNTS[] = {"[18446744073709551615]", "[4611686018427387905]", "[4000000000]",
                                  "[*]", "[99999999999999999999]"};
constexpr const char* BAD_STREAMS[] = {".",
                                       ".789",
                                       ".789c0300000000000001",
                                       ".789cff",
                                       ".78",
                                       ".789c03000000000001",
                                       ".00000000",
                                       ".789c4b04000062006299"};
constexpr const char* MISTAKES[] = {
    "42;",         "a.x = }",    "(1 x)",           "a.x = vec2(1 &);", "nosuch.x=1;", ".x = 1;",
    "a.x = \"cut", "a.x = {1 2", "a.x = (1",        "a.x = [1",         "a.x |= ;",    "a.x | 1;",
    "a.x = ;",     "a.x = 1",    "a.x[1*] = 1;",    "a.nosuch. = 1;",   "\xFF",        "\"cut",
    "a.x = +1;",   "a.x = [x];", "a.x = vec3(1 2);"};

}  // namespace

void TextWriter::text() {
  for (std::size_t i = choices_.below(4); i > 0; --i) declaration();
  for (std::size_t i = 1 + choices_.below(12); i > 0; --i) statement();
}

void TextWriter::statement() {
  switch (choices_.below(16)) {
    case 0:
      comment();
      break;
    case 1:
    case 2:
      declaration();
      break;
    case 3:
      directive();
      break;
    case 4:
      if (choices_.oneIn(4)) mistake();
      break;
    case 5:
    case 6:
    case 7:
      link();
      break;
    default:
      assignment();
  }
  if (choices_.oneIn(2)) out_ += '\n';
}

void TextWriter::comment() {
  oneOf(COMMENTS);
  out_ += '\n';
}

void TextWriter::declaration() {
  oneOf(TYPES);
  out_ += ' ';
  oneOf(NODES);
  out_ += choices_.oneIn(3) ? ':' : ';';
}

void TextWriter::directive() {
  static constexpr const char* HEADS[] = {"define ", "remove ", "with ", "Remove "};
  const char* const head = choices_.pick(HEADS);
  out_ += head;
  oneOf(NODES);
  out_ += head[0] == 'w' ? ':' : ';';
}

void TextWriter::mistake() {
  oneOf(MISTAKES);
}

void TextWriter::assignment() {
  path();
  out_ += " = ";
  value();
  out_ += ';';
}

// Writes a connection or a reference: target "|=" source, or target "=" node. The source or node
// may be null.
void TextWriter::link() {
  path();
  const bool connects = !choices_.oneIn(3);
  out_ += connects ? " |= " : " = ";
  if (choices_.oneIn(6)) {
    out_ += "null";
  } else {
    if (choices_.oneIn(8)) out_ += "nosuch";
    oneOf(NODES);
    if (connects) oneOf(OUTPUTS);
    if (connects && choices_.oneIn(8)) suffix();
  }
  out_ += ';';
}

void TextWriter::path() {
  if (!choices_.oneIn(12)) oneOf(NODES);
  out_ += '.';
  oneOf(INPUTS);
  static constexpr std::size_t LENGTHS[] = {0, 0, 0, 0, 0, 1, 1, 2, 3, 14};
  for (std::size_t i = choices_.pick(LENGTHS); i > 0; --i) suffix();
}

void TextWriter::suffix() {
  if (choices_.oneIn(2)) {
    oneOf(INDICES);
  } else {
    oneOf(MEMBERS);
  }
}

void TextWriter::value() {
  static constexpr const char* WORDS[] = {"true", "FALSE", "null", "{1 2}", "[3]", "vec3"};
  switch (choices_.below(8)) {
    case 0:
      return oneOf(WORDS);
    case 1:
    case 2:
      return number();
    case 3:
      return string();
    case 4:
    case 5:
      return tuple();
    default:
      return buffer();
  }
}

void TextWriter::number() {
  if (choices_.oneIn(2)) return oneOf(NUMBERS);
  if (choices_.oneIn(4)) out_ += '-';
  out_ += std::to_string(choices_.below(100000));
  if (choices_.oneIn(2)) out_ += '.' + std::to_string(choices_.below(1000));
}

void TextWriter::string() {
  out_ += '"';
  for (std::size_t i = choices_.below(4); i > 0; --i) oneOf(STRINGS);
  out_ += '"';
}

void TextWriter::separator() {
  oneOf(SEPARATORS);
}

// Writes numbers from 0 to 127, which every element type can represent. Exception: about one of 200
// numbers is any number.
void TextWriter::elements(std::size_t count) {
  for (; count > 0; --count) {
    if (choices_.oneIn(200)) {
      number();
    } else {
      out_ += std::to_string(choices_.below(128));
    }
    if (count > 1) separator();
  }
}

void TextWriter::tuple() {
  const Literal& literal = choices_.pick(TUPLES);
  out_ += literal.keyword;
  out_ += '(';
  elements(choices_.oneIn(40) ? literal.numbers - 1 : literal.numbers);
  out_ += ')';
}

void TextWriter::count(std::size_t count) {
  if (choices_.oneIn(60)) return oneOf(COUNTS);
  out_ += '[' + std::to_string(count) + ']';
}

// Writes: keyword "[" count "]" "{" elements "}". The elements may be compressed, and the count may
// be wrong.
void TextWriter::buffer() {
  const std::size_t elementCount = choices_.below(6);
  if (choices_.oneIn(4)) {
    const Literal& literal = choices_.pick(BYTE_BUFFERS);
    out_ += literal.keyword;
    count(elementCount);
    return compressed(elementCount * literal.numbers);
  }
  static const std::vector<Literal> LITERALS = bufferLiterals();
  const Literal& literal = choices_.pick(LITERALS);
  const bool inLowerCase = !choices_.oneIn(20);
  for (const char c : literal.keyword) out_ += inLowerCase ? zn::toLowerCase(c) : c;
  count(elementCount);
  out_ += '{';
  std::size_t numbers = elementCount * literal.numbers;
  if (choices_.oneIn(6) && numbers > 0) --numbers;
  if (choices_.oneIn(60)) ++numbers;
  elements(numbers);
  out_ += '}';
}

// Writes "{" "." digits "}". Some of the texts are corrupt or too long.
void TextWriter::compressed(std::size_t bytes) {
  if (choices_.oneIn(12)) ++bytes;
  std::string data;
  for (; data.size() < bytes; data += static_cast<char>('a' + choices_.below(2))) {
  }
  const auto* const first = reinterpret_cast<const unsigned char*>(data.data());
  std::string text(zn::compress(first, data.size()).view());
  if (choices_.oneIn(12)) text = choices_.pick(BAD_STREAMS);
  if (choices_.oneIn(16)) text += 'i';
  if (choices_.oneIn(16)) text.back() = text.back() == '0' ? '1' : '0';
  out_ += '{' + text + '}';
}

}  // namespace vsa_fuzz
