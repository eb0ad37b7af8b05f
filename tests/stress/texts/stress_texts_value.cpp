// Stress texts of values: unusual numbers, long tuples, buffers and compressed buffers.
#include <algorithm>
#include <string_view>

#include <vsa/foundation/decompress.h>
#include "tests/stress/texts/stress_texts.h"
#include "tools/scene_text/printable_text.h"

namespace vsa_tests {

namespace {

// Returns one buffer of type `keyword`, whose elements are `unit` repeated. A unit has `perUnit`
// elements of `bytesEach` bytes.
GeneratedText bufferOf(std::size_t bytes, const char* keyword, unsigned bytesEach,
                       std::string_view unit, unsigned perUnit) {
  const std::size_t units = bytes / unit.size() + 1;
  const std::uint64_t count = units * perUnit;
  std::string text = "t n; n.a = " + std::string(keyword) + "[" + std::to_string(count) + "] {";
  text.reserve(bytes + 256);
  for (std::size_t i = 0; i < units; ++i) text += unit;
  return {text + "};", count * bytesEach};
}

// The exact middle between the greatest subnormal double and the smallest normal double. Every
// digit is necessary to round it correctly.
constexpr char LONG_MIDDLE[] =
    "2."
    "22507385850720113605740979670913197593481954635164564802342610972482222202107694"
    "55165295239081350879141491589130396211068700864386945946455276572074078206217433"
    "79988141063267329253552286881372149012981122451451889849057222307285255133155755"
    "01591439747639798341180199932396254828901710708185069063066665599493827577257201"
    "57630626906633326475653000092458883164330377797918696120494973903778297049050510"
    "80609940730262937128958950003583799967207254304360284078895771796150945516748243"
    "47103070260914462157228988025818254518032570701886087211312807951223342628836862"
    "23215037756666225039825343359745688844239002654981983854879482922068947216898310"
    "99698365846814022854243330660339850886445804001034933970427567186443383770486037"
    "861622771738545623065874679014086723327636"
    "e-308 ";

// Returns a text with one buffer of one number. Nearly all characters of the text belong to that
// number.
GeneratedText longNumber(std::size_t bytes, const char* keyword, const char* start, char digit,
                         const char* end) {
  return {"t n; n.a = " + std::string(keyword) + "[1] {" + start + std::string(bytes, digit) + end +
              "};",
          8};
}

// Returns statements, each of which declares a buffer of `bytesEach` bytes and gives it one
// element.
GeneratedText sparseBuffers(std::size_t bytes, std::string_view unit, std::uint64_t bytesEach) {
  GeneratedText made = repeatUnit(bytes, "t n:", unit);
  const auto statements = std::count(made.text.begin(), made.text.end(), '{');
  made.declaredBytes = static_cast<std::uint64_t>(statements) * bytesEach;
  return made;
}

/// Writes the bits of a DEFLATE stream as hexadecimal digits.
class BitWriter {
 public:
  void put(unsigned value, unsigned bits) {
    for (unsigned i = 0; i < bits; ++i) {
      byte_ |= (value >> i & 1U) << filled_;
      if (++filled_ == 8) flush();
    }
  }

  /// Writes the code of a symbol, its highest bit first.
  void putCode(unsigned code, unsigned bits) {
    for (unsigned i = bits; i > 0; --i) put(code >> (i - 1) & 1U, 1);
  }

  void align() {
    if (filled_ > 0) flush();
  }

  std::string text;

 private:
  void flush() {
    const char byte = static_cast<char>(byte_);
    vsa_tools::appendHex(text, {&byte, 1});
    byte_ = filled_ = 0;
  }

  unsigned byte_ = 0;
  unsigned filled_ = 0;
};

// Returns a buffer of `declared` bytes with a zlib stream. `block` writes one or more DEFLATE
// blocks of the stream. The stream has no last block and no checksum.
GeneratedText compressedBlocks(std::size_t bytes, std::uint64_t declared,
                               void (*block)(BitWriter&)) {
  BitWriter out;
  out.text = "t n; n.a = byte[" + std::to_string(declared) + "] {.789c";
  out.text.reserve(bytes + 1024);
  while (out.text.size() < bytes) block(out);
  out.align();
  return {out.text + "};", declared};
}

// Writes a dynamic block with the shortest possible code tables. Its only symbol is the end of the
// block.
void putTinyDynamicBlock(BitWriter& out) {
  out.put(0, 1);   // not the last block
  out.put(2, 2);   // dynamic codes
  out.put(0, 5);   // 257 symbols
  out.put(0, 5);   // 1 distance
  out.put(14, 4);  // 18 code length codes, up to the code for the length 1
  for (unsigned i = 0; i < 18; ++i) out.put(i == 2 || i == 17 ? 1 : 0, 3);
  // Two code length codes have 1 bit: the code of 1 is 0, and the code of 18 is 1.
  out.put(1, 1), out.put(127, 7);  // 138 symbols without a code
  out.put(1, 1), out.put(107, 7);  // 118 more symbols without a code
  out.put(0, 1);                   // the end-of-block symbol has a 1-bit code
  out.put(0, 1);                   // the distance has a 1-bit code
  out.put(0, 1);                   // the end of the block
}

// Writes a dynamic block with codes of every length up to 15, for literals and for distances.
void putDeepDynamicBlock(BitWriter& out) {
  // The code lengths 1 to 15, and 18, have codes of 4 bits.
  out.put(0, 1), out.put(2, 2), out.put(0, 5), out.put(15, 5), out.put(15, 4);
  constexpr unsigned ORDER[] = {16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15};
  for (const unsigned symbol : ORDER)
    out.put(symbol >= 1 && symbol <= 15 ? 4 : symbol == 18 ? 4 : 0, 3);
  const auto putLength = [&](unsigned length) { out.putCode(length - 1, 4); };
  // Fifteen literals have codes of 1 to 15 bits. The end of the block has the last code of 15 bits.
  for (unsigned length = 1; length <= 15; ++length) putLength(length);
  out.putCode(15, 4), out.put(127, 7);
  out.putCode(15, 4), out.put(241 - 138 - 11, 7);
  putLength(15);
  for (unsigned length = 1; length <= 15; ++length) putLength(length);
  putLength(15);
  out.putCode(0x7FFF, 15);
}

void putEmptyFixedBlock(BitWriter& out) {
  out.put(0, 1), out.put(1, 2), out.put(0, 7);
}

void putEmptyStoredBlock(BitWriter& out) {
  out.put(0, 1), out.put(0, 2);
  out.align();
  out.put(0, 16), out.put(0xFFFF, 16);
}

std::string compressedZeros(std::uint64_t size) {
  const std::vector<unsigned char> zeros(size);
  const zn::String made = zn::compress(zeros.data(), zeros.size());
  return std::string(made.view());
}

// Returns a buffer of zeros. Each 258 of them are compressed to 3 bits.
GeneratedText decompressionBomb(std::size_t bytes, std::uint64_t declared) {
  BitWriter out;
  out.text = "t n; n.a = byte[" + std::to_string(declared) + "] {.789c";
  out.text.reserve(bytes + 1024);
  // The codes have 1 bit for the literal 0, 2 bits for the length 258 and for the end of the block,
  // and 1 bit for the distance 1.
  out.put(0, 1), out.put(2, 2), out.put(29, 5), out.put(0, 5), out.put(14, 4);
  for (unsigned i = 0; i < 18; ++i) out.put(i == 2 || i == 17 || i == 15 ? (i == 2 ? 1 : 2) : 0, 3);
  // The code length codes are 0 for 18, 10 for 1, and 11 for 2.
  const auto skip = [&](unsigned count) { out.putCode(0, 1), out.put(count - 11, 7); };
  out.putCode(2, 2);     // the literal 0: one bit
  skip(138), skip(117);  // the symbols 1 to 255: no code
  out.putCode(3, 2);     // the end of the block: two bits
  skip(28);              // the symbols 257 to 284: no code
  out.putCode(3, 2);     // the length 258: two bits
  out.putCode(2, 2);     // the distance 1: one bit
  out.putCode(0, 1);     // the first zero
  while (out.text.size() < bytes) out.putCode(3, 2), out.put(0, 1);
  out.align();
  return {out.text + "};", declared};
}

}  // namespace

std::vector<StressText> valueTexts() {
  return {
      {"one integer", repeatCharacter, "t n; n.a = ", '1', ";"},
      {"one integer of zeros", repeatCharacter, "t n; n.a = ", '0', "1;"},
      {"one real", repeatCharacter, "t n; n.a = 0.", '3', ";"},
      {"one real of zeros", repeatCharacter, "t n; n.a = 0.", '0', "1e5;"},
      {"one real of zeros before the point", repeatCharacter, "t n; n.a = 1", '0', ".5;"},
      {"one exponent", repeatCharacter, "t n; n.a = 1.0e-", '9', ";"},
      {"one exponent of zeros", repeatCharacter, "t n; n.a = 1.0e-", '0', "3;"},
      {"one exponent that overflows", repeatCharacter, "t n; n.a = 1.0e", '9', ";"},
      {"one integer with an exponent", repeatCharacter, "t n; n.a = 0e", '9', ";"},
      {"one number of letters", repeatUnit, "t n; n.a = 1", "nan", ";"},
      {"one tuple of numbers", repeatUnit, "t n; n.a = vec3(", "1 ", ");"},
      {"one matrix of numbers", repeatUnit, "t n; n.a = mat4(", "1.5e-3,", ");"},
      {"one colour of numbers", repeatUnit, "t n; n.a = rgba(", "1 ", ");"},
      {"one tuple of one number", repeatCharacter, "t n; n.a = vec3(", '1', ");"},
      {"one tuple of blanks", repeatCharacter, "t n; n.a = vec3(1 2", ' ', "3);"},
      {"one tuple of brackets", repeatUnit, "t n; n.a = vec3(", "(1)", ");"},
      {"one tuple of commas", repeatCharacter, "t n; n.a = vec3(1 2 ", ',', "3);"},
      {"tuples", repeatUnit, "t n:", ".a=vec3(1 2 3);", ""},
      {"tuples in brackets", repeatUnit, "t n:", ".a=vec2(((1),(2)));", ""},
      {"strings", repeatUnit, "t n:", ".a=\"\";", ""},
      {"strings of escapes", repeatUnit, "t n:", ".a=\"\\n\";", ""},
      {"reals of 800 digits", repeatUnit, "t n:", ".a=0." + std::string(800, '3') + "e-5;", ""},
      {"objects and arrays as values", repeatUnit, "t n:", ".a={1 2};.b=[1];", ""},
  };
}

std::vector<StressText> bufferTexts() {
  return {
      {"buffers of one number", repeatUnit, "t n:", ".a=byte[1]{1};", ""},
      {"empty buffers", repeatUnit, "t n:", ".a=mat4d[0]{};", ""},
      {"buffers with too few elements", sparseBuffers, ".a=byte[9]{1};", 9},
      {"buffers of 1 KB with one element", sparseBuffers, ".a=byte[1000]{1};", 1000},
      {"integers", bufferOf, "int32", 4, "1 ", 1},
      {"bytes", bufferOf, "byte", 1, "255,", 1},
      {"64-bit integers", bufferOf, "int64", 8, "-9223372036854775808 ", 1},
      {"integers with exponents", bufferOf, "int32", 4, "1e5 ", 1},
      {"integers with signs", bufferOf, "int32", 4, "+1u ", 1},
      {"integers of many zeros", bufferOf, "int32", 4, "00000000000000000000000000000000000001 ",
       1},
      {"integers out of range", bufferOf, "byte", 1, "256 ", 1},
      {"invalid integers", bufferOf, "int32", 4, "1 - 2 ", 3},
      {"floats", bufferOf, "float", 4, "0.123456 ", 1},
      {"floats of one digit", bufferOf, "float", 4, "1 ", 1},
      {"floats with exponents", bufferOf, "float", 4, "1e-5,", 1},
      {"floats with signs", bufferOf, "float", 4, "+1.f ", 1},
      {"floats inf and nan", bufferOf, "float", 4, "inf -inf nan ", 3},
      {"floats that overflow", bufferOf, "float", 4, "1e39 ", 1},
      {"floats half-way between two values", bufferOf, "float", 4,
       "1.00000005960464477539062500000000000000000001 ", 1},
      {"doubles half-way between two values", bufferOf, "double", 8,
       "9007199254740993.00000000000000000000000000000000000001 ", 1},
      {"doubles of 19 digits", bufferOf, "double", 8, "0.1234567890123456789 ", 1},
      {"the smallest double", bufferOf, "double", 8, "4.9406564584124654e-324 ", 1},
      {"doubles at the subnormal limit", bufferOf, "double", 8, "2.2250738585072011e-308,", 1},
      {"doubles of 800 digits", bufferOf, "double", 8, LONG_MIDDLE, 1},
      {"one float of many digits", longNumber, "float", "0.", '7', ""},
      {"one double with a long exponent", longNumber, "double", "1e-", '0', "5"},
      {"one invalid double", longNumber, "double", "", '-', ""},
      {"one integer of many digits", longNumber, "int64", "", '0', "5"},
      {"vectors in brackets", bufferOf, "float", 4, "(1,2,3),", 3},
      {"a bracket per element", bufferOf, "int32", 4, "[1] ", 1},
      {"a brace per element", bufferOf, "int32", 4, "{1},", 1},
      {"a line per element", bufferOf, "int32", 4, "1\r\n\t ", 1},
      {"numbers far apart", bufferOf, "int32", 4, "1                               ", 1},
      {"only commas", bufferOf, "int32", 4, ",", 0},
      {"too many elements", repeatUnit, "t n; n.a = int32[1] {", "1 ", "};"},
      {"one count of digits", repeatCharacter, "t n; n.a = int32[", '9', "] {1};"},
      {"one count of zeros", repeatCharacter, "t n; n.a = int32[", '0', "] {1};"},
      {"the maximum 64-bit count", repeatUnit, "t n; n.a = float[18446744073709551615] {", "1 ",
       "};"},
      {"a byte count that wraps around", repeatUnit, "t n; n.a = int32[4611686018427387905] {",
       "1 ", "};"},
      {"a count of 2^60", repeatUnit, "t n; n.a = byte[1152921504606846976] {", "1 ", "};"},
      {"one keyword", repeatCharacter, "t n; n.a = ", 'F', "[1] {1};"},
  };
}

std::vector<StressText> compressedTexts() {
  return {
      {"a decompression bomb", decompressionBomb, 4000000000U},
      {"a decompression bomb for a small buffer", decompressionBomb, 1000},
      {"zeros, then blanks", repeatCharacter,
       "t n; n.a = byte[1000000] {" + compressedZeros(1000000), ' ', "};"},
      {"a blank after each digit",
       [](std::size_t n) {
         GeneratedText made = compressedBlocks(n / 2, 16, putEmptyStoredBlock);
         const std::size_t start = made.text.find('.', 10) + 1;
         std::string spaced = made.text.substr(0, start);
         for (std::size_t i = start; i < made.text.size(); ++i) (spaced += made.text[i]) += ' ';
         return GeneratedText{spaced, 16};
       }},
      {"invalid hexadecimal digits", repeatUnit, "t n; n.a = byte[9] {.789c", "fun", "};"},
      {"small streams", repeatUnit, "t n:", ".a=byte[1]{" + compressedZeros(1) + "};", ""},
      {"small streams, corrupt", repeatUnit, "t n:", ".a=byte[1]{.78};", ""},
      {"empty stored blocks", compressedBlocks, 16, putEmptyStoredBlock},
      {"empty fixed blocks", compressedBlocks, 16, putEmptyFixedBlock},
      {"tiny dynamic blocks", compressedBlocks, 16, putTinyDynamicBlock},
      {"dynamic blocks of long codes", compressedBlocks, 16, putDeepDynamicBlock},
      {"compressed buffers with one element", sparseBuffers,
       ".a=byte[1000]{" + compressedZeros(1) + "};", 1000},
  };
}

}  // namespace vsa_tests
