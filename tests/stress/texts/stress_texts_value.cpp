// Values: numbers nobody writes, endless tuples, buffers of every odd form, compressed ones too.
#include <algorithm>
#include <string_view>

#include <vsa/foundation/decompress.h>
#include "tests/stress/texts/stress_texts.h"

namespace vsa_tests {

namespace {

// A buffer of one component an element that holds `unit` again and again, `perUnit` numbers each.
NastyText listed(std::size_t bytes, const char* keyword, unsigned bytesEach, const char* unit,
                 unsigned perUnit) {
  const std::size_t units = bytes / std::string_view(unit).size() + 1;
  const std::uint64_t count = units * perUnit;
  std::string text = "t n; n.a = " + std::string(keyword) + "[" + std::to_string(count) + "] {";
  text.reserve(bytes + 256);
  for (std::size_t i = 0; i < units; ++i) text += unit;
  return {text + "};", count * bytesEach};
}

// One number as long as the text.
NastyText longNumber(std::size_t bytes, const char* keyword, const char* start, char digit,
                     const char* end) {
  return {"t n; n.a = " + std::string(keyword) + "[1] {" + start + std::string(bytes, digit) + end +
              "};",
          8};
}

// Statements that each name a large buffer and give it one element.
NastyText hollow(std::size_t bytes, const char* unit, std::uint64_t bytesEach) {
  NastyText made = flood(bytes, "t n:", unit);
  const auto statements = std::count(made.text.begin(), made.text.end(), '{');
  made.declaredBytes = static_cast<std::uint64_t>(statements) * bytesEach;
  return made;
}

/// A deflate stream in the making, in hexadecimal.
class BitWriter {
 public:
  void put(unsigned value, unsigned bits) {
    for (unsigned i = 0; i < bits; ++i) {
      byte_ |= (value >> i & 1U) << filled_;
      if (++filled_ == 8) flush();
    }
  }

  /// The code of a symbol: its highest bit first.
  void putCode(unsigned code, unsigned bits) {
    for (unsigned i = bits; i > 0; --i) put(code >> (i - 1) & 1U, 1);
  }

  void align() {
    if (filled_ > 0) flush();
  }

  std::string text;

 private:
  void flush() {
    constexpr char HEX[] = "0123456789abcdef";
    text += HEX[byte_ >> 4];
    text += HEX[byte_ & 15];
    byte_ = filled_ = 0;
  }

  unsigned byte_ = 0;
  unsigned filled_ = 0;
};

// A text whose one buffer is a deflate stream of the blocks that `block` writes, `bytesEach` out of
// each of them.
template <class Block>
NastyText blocks(std::size_t bytes, std::uint64_t declared, Block block) {
  BitWriter out;
  out.text = "t n; n.a = byte[" + std::to_string(declared) + "] {.789c";
  out.text.reserve(bytes + 1024);
  while (out.text.size() < bytes) block(out);
  out.align();
  return {out.text + "};", declared};
}

// A block whose codes are the shortest that there are to say: only its own end.
void putTinyDynamicBlock(BitWriter& out) {
  out.put(0, 1);   // not the last
  out.put(2, 2);   // codes of its own
  out.put(0, 5);   // 257 symbols
  out.put(0, 5);   // 1 distance
  out.put(14, 4);  // 18 lengths of length codes: all up to that of "1"
  for (unsigned i = 0; i < 18; ++i) out.put(i == 2 || i == 17 ? 1 : 0, 3);
  // Of the two codes of one bit, "1" is the lower symbol and has the code 0, "18" has 1.
  out.put(1, 1), out.put(127, 7);  // 138 symbols without a code
  out.put(1, 1), out.put(107, 7);  // 118 more
  out.put(0, 1);                   // the end of the block has one bit
  out.put(0, 1);                   // so has the distance
  out.put(0, 1);                   // the end
}

// A block with codes of every length up to 15, for symbols and for distances.
void putDeepDynamicBlock(BitWriter& out) {
  // Lengths 1 to 15 are given by codes of four bits, "18" and "0" share what is left.
  out.put(0, 1), out.put(2, 2), out.put(0, 5), out.put(15, 5), out.put(15, 4);
  constexpr unsigned ORDER[] = {16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15};
  for (const unsigned symbol : ORDER)
    out.put(symbol >= 1 && symbol <= 15 ? 4 : symbol == 18 ? 4 : 0, 3);
  const auto putLength = [&](unsigned length) { out.putCode(length - 1, 4); };
  // Symbols: fifteen literals of 1 to 15 bits, then none, then the end with the last 15 bits.
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

// A buffer of blocks of zeros, as dense as deflate can say it.
NastyText bomb(std::size_t bytes, std::uint64_t declared) {
  BitWriter out;
  out.text = "t n; n.a = byte[" + std::to_string(declared) + "] {.789c";
  out.text.reserve(bytes + 1024);
  // Literal 0 and length 258 have one bit and two, the end two; the distance 1 has one.
  out.put(0, 1), out.put(2, 2), out.put(29, 5), out.put(0, 5), out.put(14, 4);
  for (unsigned i = 0; i < 18; ++i) out.put(i == 2 || i == 17 || i == 15 ? (i == 2 ? 1 : 2) : 0, 3);
  // Length codes: "18" has 0, "1" has 10, "2" has 11.
  const auto none = [&](unsigned count) { out.putCode(0, 1), out.put(count - 11, 7); };
  out.putCode(2, 2);     // literal 0: one bit
  none(138), none(117);  // 1 to 255
  out.putCode(3, 2);     // 256: two bits
  none(28);              // 257 to 284
  out.putCode(3, 2);     // 285: two bits
  out.putCode(2, 2);     // distance 1: one bit
  out.putCode(0, 1);     // a zero to repeat
  while (out.text.size() < bytes) out.putCode(3, 2), out.put(0, 1);
  out.align();
  return {out.text + "};", declared};
}

}  // namespace

std::vector<Family> valueFamilies() {
  return {
      {"one integer", [](std::size_t n) { return run(n, "t n; n.a = ", '1', ";"); }},
      {"one integer of zeros", [](std::size_t n) { return run(n, "t n; n.a = ", '0', "1;"); }},
      {"one real", [](std::size_t n) { return run(n, "t n; n.a = 0.", '3', ";"); }},
      {"one real of zeros", [](std::size_t n) { return run(n, "t n; n.a = 0.", '0', "1e5;"); }},
      {"one real of zeros before the point",
       [](std::size_t n) { return run(n, "t n; n.a = 1", '0', ".5;"); }},
      {"one exponent", [](std::size_t n) { return run(n, "t n; n.a = 1.0e-", '9', ";"); }},
      {"one exponent of zeros",
       [](std::size_t n) { return run(n, "t n; n.a = 1.0e-", '0', "3;"); }},
      {"one exponent that overflows",
       [](std::size_t n) { return run(n, "t n; n.a = 1.0e", '9', ";"); }},
      {"one integer with an exponent",
       [](std::size_t n) { return run(n, "t n; n.a = 0e", '9', ";"); }},
      {"one number of letters", [](std::size_t n) { return flood(n, "t n; n.a = 1", "nan", ";"); }},
      {"one tuple of words",
       [](std::size_t n) { return flood(n, "t n; n.a = vec3(", "1 ", ");"); }},
      {"one matrix of words",
       [](std::size_t n) { return flood(n, "t n; n.a = mat4(", "1.5e-3,", ");"); }},
      {"one colour of words",
       [](std::size_t n) { return flood(n, "t n; n.a = rgba(", "1 ", ");"); }},
      {"one tuple of one word",
       [](std::size_t n) { return run(n, "t n; n.a = vec3(", '1', ");"); }},
      {"one tuple of blanks",
       [](std::size_t n) { return run(n, "t n; n.a = vec3(1 2", ' ', "3);"); }},
      {"one tuple of brackets",
       [](std::size_t n) { return flood(n, "t n; n.a = vec3(", "(1)", ");"); }},
      {"one tuple of commas",
       [](std::size_t n) { return run(n, "t n; n.a = vec3(1 2 ", ',', "3);"); }},
      {"tuples", [](std::size_t n) { return flood(n, "t n:", ".a=vec3(1 2 3);"); }},
      {"tuples in brackets", [](std::size_t n) { return flood(n, "t n:", ".a=vec2(((1),(2)));"); }},
      {"strings", [](std::size_t n) { return flood(n, "t n:", ".a=\"\";"); }},
      {"strings of escapes", [](std::size_t n) { return flood(n, "t n:", ".a=\"\\n\";"); }},
      {"reals of 800 digits",
       [](std::size_t n) {
         return flood(n, "t n:", (".a=0." + std::string(800, '3') + "e-5;").c_str());
       }},
      {"objects and arrays as values",
       [](std::size_t n) { return flood(n, "t n:", ".a={1 2};.b=[1];"); }},
  };
}

std::vector<Family> bufferFamilies() {
  return {
      {"buffers of one number", [](std::size_t n) { return flood(n, "t n:", ".a=byte[1]{1};"); }},
      {"empty buffers", [](std::size_t n) { return flood(n, "t n:", ".a=mat4d[0]{};"); }},
      {"buffers with too few", [](std::size_t n) { return hollow(n, ".a=byte[9]{1};", 9); }},
      {"hollow buffers of 1 KB",
       [](std::size_t n) { return hollow(n, ".a=byte[1000]{1};", 1000); }},
      {"integers", [](std::size_t n) { return listed(n, "int32", 4, "1 ", 1); }},
      {"bytes", [](std::size_t n) { return listed(n, "byte", 1, "255,", 1); }},
      {"64-bit integers",
       [](std::size_t n) { return listed(n, "int64", 8, "-9223372036854775808 ", 1); }},
      {"integers with exponents", [](std::size_t n) { return listed(n, "int32", 4, "1e5 ", 1); }},
      {"integers with signs", [](std::size_t n) { return listed(n, "int32", 4, "+1u ", 1); }},
      {"integers of many zeros",
       [](std::size_t n) {
         return listed(n, "int32", 4, "00000000000000000000000000000000000001 ", 1);
       }},
      {"integers out of range", [](std::size_t n) { return listed(n, "byte", 1, "256 ", 1); }},
      {"junk among integers", [](std::size_t n) { return listed(n, "int32", 4, "1 - 2 ", 3); }},
      {"floats", [](std::size_t n) { return listed(n, "float", 4, "0.123456 ", 1); }},
      {"floats of one digit", [](std::size_t n) { return listed(n, "float", 4, "1 ", 1); }},
      {"floats with exponents", [](std::size_t n) { return listed(n, "float", 4, "1e-5,", 1); }},
      {"floats with signs", [](std::size_t n) { return listed(n, "float", 4, "+1.f ", 1); }},
      {"floats that are none",
       [](std::size_t n) { return listed(n, "float", 4, "inf -inf nan ", 3); }},
      {"floats that overflow", [](std::size_t n) { return listed(n, "float", 4, "1e39 ", 1); }},
      {"floats half-way",
       [](std::size_t n) {
         return listed(n, "float", 4, "1.00000005960464477539062500000000000000000001 ", 1);
       }},
      {"doubles half-way",
       [](std::size_t n) {
         return listed(n, "double", 8, "9007199254740993.00000000000000000000000000000000000001 ",
                       1);
       }},
      {"doubles of 19 digits",
       [](std::size_t n) { return listed(n, "double", 8, "0.1234567890123456789 ", 1); }},
      {"doubles, the smallest",
       [](std::size_t n) { return listed(n, "double", 8, "4.9406564584124654e-324 ", 1); }},
      {"doubles near the smallest",
       [](std::size_t n) { return listed(n, "double", 8, "2.2250738585072011e-308,", 1); }},
      {"doubles of 800 digits",
       [](std::size_t n) {
         return listed(
             n, "double", 8,
             ("2."
              "225073858507201136057409796709131975934819546351645648023426109724822222021076945516"
              "529523908135087914149158913039621106870086438694594645527657207407820621743379988141"
              "063267329253552286881372149012981122451451889849057222307285255133155755015914397476"
              "397983411801999323962548289017107081850690630666655994938275772572015763062690663332"
              "647565300009245888316433037779791869612049497390377829704905051080609940730262937128"
              "958950003583799967207254304360284078895771796150945516748243471030702609144621572289"
              "880258182545180325707018860872113128079512233426288368622321503775666622503982534335"
              "974568884423900265498198385487948292206894721689831099698365846814022854243330660339"
              "850886445804001034933970427567186443383770486037861622771738545623065874679014086723"
              "327636" +
              std::string("e-308 "))
                 .c_str(),
             1);
       }},
      {"one float of many digits",
       [](std::size_t n) { return longNumber(n, "float", "0.", '7', ""); }},
      {"one double with a long exponent",
       [](std::size_t n) { return longNumber(n, "double", "1e-", '0', "5"); }},
      {"one double that is none",
       [](std::size_t n) { return longNumber(n, "double", "", '-', ""); }},
      {"one integer of many digits",
       [](std::size_t n) { return longNumber(n, "int64", "", '0', "5"); }},
      {"vectors in brackets", [](std::size_t n) { return listed(n, "float", 4, "(1,2,3),", 3); }},
      {"a bracket each", [](std::size_t n) { return listed(n, "int32", 4, "[1] ", 1); }},
      {"a brace each", [](std::size_t n) { return listed(n, "int32", 4, "{1},", 1); }},
      {"a line each", [](std::size_t n) { return listed(n, "int32", 4, "1\r\n\t ", 1); }},
      {"numbers apart",
       [](std::size_t n) { return listed(n, "int32", 4, "1                               ", 1); }},
      {"nothing but commas", [](std::size_t n) { return listed(n, "int32", 4, ",", 0); }},
      {"too many", [](std::size_t n) { return flood(n, "t n; n.a = int32[1] {", "1 ", "};"); }},
      {"one count of digits",
       [](std::size_t n) { return run(n, "t n; n.a = int32[", '9', "] {1};"); }},
      {"one count of zeros",
       [](std::size_t n) { return run(n, "t n; n.a = int32[", '0', "] {1};"); }},
      {"a count that overflows",
       [](std::size_t n) {
         return flood(n, "t n; n.a = float[18446744073709551615] {", "1 ", "};");
       }},
      {"a count that wraps round",
       [](std::size_t n) {
         return flood(n, "t n; n.a = int32[4611686018427387905] {", "1 ", "};");
       }},
      {"a count of 2^60",
       [](std::size_t n) {
         return flood(n, "t n; n.a = byte[1152921504606846976] {", "1 ", "};");
       }},
      {"one keyword", [](std::size_t n) { return run(n, "t n; n.a = ", 'F', "[1] {1};"); }},
  };
}

std::vector<Family> compressedFamilies() {
  return {
      {"a bomb", [](std::size_t n) { return bomb(n, 4000000000U); }},
      {"a bomb for a small buffer", [](std::size_t n) { return bomb(n, 1000); }},
      {"zeros, then blanks",
       [](std::size_t n) {
         return run(n, ("t n; n.a = byte[1000000] {" + compressedZeros(1000000)).c_str(), ' ',
                    "};");
       }},
      {"a blank after each digit",
       [](std::size_t n) {
         NastyText made = blocks(n / 2, 16, putEmptyStoredBlock);
         const std::size_t start = made.text.find('.', 10) + 1;
         std::string spaced = made.text.substr(0, start);
         for (std::size_t i = start; i < made.text.size(); ++i) (spaced += made.text[i]) += ' ';
         return NastyText{spaced, 16};
       }},
      {"digits that are none",
       [](std::size_t n) { return flood(n, "t n; n.a = byte[9] {.789c", "fun", "};"); }},
      {"small streams",
       [](std::size_t n) {
         const std::string zeros = compressedZeros(1);
         return flood(n, "t n:", (".a=byte[1]{" + zeros + "};").c_str());
       }},
      {"small streams, corrupt",
       [](std::size_t n) { return flood(n, "t n:", ".a=byte[1]{.78};"); }},
      {"empty stored blocks", [](std::size_t n) { return blocks(n, 16, putEmptyStoredBlock); }},
      {"empty fixed blocks", [](std::size_t n) { return blocks(n, 16, putEmptyFixedBlock); }},
      {"tiny dynamic blocks", [](std::size_t n) { return blocks(n, 16, putTinyDynamicBlock); }},
      {"dynamic blocks of long codes",
       [](std::size_t n) { return blocks(n, 16, putDeepDynamicBlock); }},
      {"hollow compressed buffers",
       [](std::size_t n) {
         const std::string zeros = compressedZeros(1);
         return hollow(n, (".a=byte[1000]{" + zeros + "};").c_str(), 1000);
       }},
  };
}

}  // namespace vsa_tests
