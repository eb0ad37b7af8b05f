// Tests of compressed texts: the bytes that they decompress to, and the messages for invalid texts.

#include <vsa/foundation/decompress.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace zn {
namespace {

using Bytes = std::vector<unsigned char>;

constexpr char EMPTY[] = "compressed data is empty";
constexpr char BAD[] = "compressed data holds a character that is not a hexadecimal digit";
constexpr char EARLY[] = "compressed data ends early";
constexpr char CORRUPT[] = "compressed data is corrupt";
constexpr char CHECKSUM[] = "compressed data fails its checksum";
constexpr char LARGER[] = "compressed data is larger than the buffer";

// "hello hello hello hello", compressed with the fixed codes.
const std::string HELLO = "hello hello hello hello";
const std::string HELLO_TEXT = ".789ccb48cdc9c957c8402701680308b1";
// "abc" in a stored block.
const std::string STORED_TEXT = ".7801010300fcff616263024d0127";
// No bytes, compressed.
const std::string NOTHING_TEXT = ".789c030000000001";

struct Outcome {
  std::string bytes;
  std::string message;
};

/// Decompresses the text into memory of exactly `expected` bytes. If that succeeds, the result must
/// have at least one byte, and the bytes after it must still be zero.
Outcome into(const std::string& text, std::size_t expected) {
  const std::unique_ptr<unsigned char[]> out(new unsigned char[expected]());
  String error;
  std::size_t length = 99;
  const std::unique_ptr<unsigned char[]> input(new unsigned char[text.size()]);
  std::copy(text.begin(), text.end(), input.get());
  const bool done = decompressInto(input.get(), text.size(), error, out.get(), expected, length);
  EXPECT_EQ(done, error.isEmpty());
  EXPECT_EQ(done, length > 0);
  if (done) {
    EXPECT_TRUE(std::all_of(out.get() + length, out.get() + expected,
                            [](unsigned char byte) { return byte == 0; }));
  }
  return {std::string(out.get(), out.get() + length), error.buf()};
}

/// Decompresses the text with both functions and expects the same result.
Outcome expand(const std::string& text, std::size_t expected) {
  const Outcome outcome = into(text, expected);
  String error;
  const auto [bytes, length] =
      decompress(reinterpret_cast<const unsigned char*>(text.data()), text.size(), error, expected);
  const std::unique_ptr<unsigned char[]> owner(bytes);
  EXPECT_EQ(std::string(bytes, bytes + length), outcome.bytes);
  EXPECT_STREQ(error.buf(), outcome.message.c_str());
  return outcome;
}

std::string messageOf(const std::string& text, std::size_t expected = 1000) {
  const Outcome outcome = expand(text, expected);
  EXPECT_EQ(outcome.bytes, "");
  EXPECT_EQ(outcome.message.find('%'), std::string::npos);
  return outcome.message;
}

std::string compressed(const Bytes& data) {
  return compress(data.data(), data.size()).buf();
}

std::string upperCase(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

/// Returns the text with `blanks` after the first digit, after each further `step` digits, and at
/// the end.
std::string spaced(const std::string& text, std::size_t step, const std::string& blanks) {
  std::string result = text.substr(0, 1);
  for (std::size_t i = 1; i < text.size(); i += step) result += blanks + text.substr(i, step);
  return result + blanks;
}

TEST(Decompress, Expands) {
  EXPECT_EQ(expand(HELLO_TEXT, HELLO.size()).bytes, HELLO);
  EXPECT_EQ(expand(STORED_TEXT, 3).bytes, "abc");
  EXPECT_EQ(expand(upperCase(HELLO_TEXT), HELLO.size()).bytes, HELLO);
}

TEST(Decompress, AcceptsAShorterResult) {
  EXPECT_EQ(expand(HELLO_TEXT, HELLO.size() + 1).bytes, HELLO);
  EXPECT_EQ(expand(HELLO_TEXT, 100000).bytes, HELLO);
}

TEST(Decompress, SkipsWhiteSpaceBetweenDigits) {
  for (const std::size_t step : {1U, 2U, 3U, 7U, 8U, 9U, 16U}) {
    EXPECT_EQ(expand(spaced(HELLO_TEXT, step, " "), 100).bytes, HELLO) << step;
    EXPECT_EQ(expand(spaced(HELLO_TEXT, step, " \t\n\v\f\r "), 100).bytes, HELLO) << step;
  }
}

struct Fault {
  const char* what;
  std::string text;
  std::size_t expected;
  const char* message;
};

void expectMessages(const std::vector<Fault>& faults) {
  for (const Fault& fault : faults) {
    EXPECT_EQ(messageOf(fault.text, fault.expected), fault.message) << fault.what;
  }
}

TEST(Decompress, HasAMessageForEachFault) {
  expectMessages({
      {"no character", "", 10, EMPTY},
      {"no digit", ".", 10, EMPTY},
      {"only blanks", ".  \t ", 10, EMPTY},
      {"a stream of no bytes", NOTHING_TEXT, 10, EMPTY},
      {"a bad digit", ".78g", 10, BAD},
      {"a sign", ".-78", 10, BAD},
      {"a second point", "..", 10, BAD},
      {"a point inside", ".789c.", 10, BAD},
      {"a prefix", ".0x789c", 10, BAD},
      {"a NUL", std::string(".789c\0", 6), 10, BAD},
      {"a byte above 0x7F", ".789c\xFF", 10, BAD},
      {"no-break space", ".789c\xA0", 10, BAD},
      {"an odd digit alone", ".7", 10, EARLY},
      {"one byte", ".78", 10, EARLY},
      {"a header alone", ".789c", 10, EARLY},
      {"an odd digit at the end", HELLO_TEXT.substr(0, HELLO_TEXT.size() - 1), 100, EARLY},
      {"no checksum", HELLO_TEXT.substr(0, HELLO_TEXT.size() - 8), 100, EARLY},
      {"half a checksum", HELLO_TEXT.substr(0, HELLO_TEXT.size() - 4), 100, EARLY},
      {"a wrong header", ".789d" + HELLO_TEXT.substr(5), 100, CORRUPT},
      {"another method", ".7709" + HELLO_TEXT.substr(5), 100, CORRUPT},
      {"a window too large", ".881c" + HELLO_TEXT.substr(5), 100, CORRUPT},
      {"a preset dictionary", ".78bb" + HELLO_TEXT.substr(5), 100, CORRUPT},
      {"a reserved block", ".789c07", 100, CORRUPT},
      {"a stored length that is not repeated", ".7801010300fcfe616263024d0127", 3, CORRUPT},
      {"a byte behind the stream", HELLO_TEXT + "00", 100, CORRUPT},
      {"a stream behind the stream", HELLO_TEXT + HELLO_TEXT.substr(1), 100, CORRUPT},
      {"no point", HELLO_TEXT.substr(1), 100, CORRUPT},
      {"a wrong checksum", HELLO_TEXT.substr(0, HELLO_TEXT.size() - 1) + "8", 100, CHECKSUM},
      {"one byte too few", HELLO_TEXT, HELLO.size() - 1, LARGER},
      {"no capacity", HELLO_TEXT, 0, LARGER},
  });
}

TEST(Decompress, ReportsTheFirstOfSeveralFaults) {
  const std::string wrongSum = HELLO_TEXT.substr(0, HELLO_TEXT.size() - 1) + "8";
  const std::string noRepeat = ".7801010300fcfe616263024d0127";
  expectMessages({
      {"bad character before empty", ".z", 10, BAD},
      {"bad character before no point", "z", 10, BAD},
      {"bad character before an odd digit", ".7z", 10, BAD},
      {"bad character before corrupt", noRepeat + "z", 3, BAD},
      {"bad character before too large", HELLO_TEXT + "z", 1, BAD},
      {"bad character before checksum", wrongSum + "z", 100, BAD},
      {"bad character far behind the fault", noRepeat + std::string(100000, '0') + "z", 3, BAD},
      {"empty before no point", "  ", 10, EMPTY},
      {"no point before an odd digit", "7", 10, CORRUPT},
      {"odd digit before corrupt", noRepeat + "0", 3, EARLY},
      {"odd digit before too large", HELLO_TEXT + "0", 1, EARLY},
      {"odd digit before checksum", wrongSum + "0", 100, EARLY},
      {"odd digit before a byte behind", HELLO_TEXT + "000", 100, EARLY},
      {"odd digit before a stream of no bytes", NOTHING_TEXT + "0", 100, EARLY},
      {"too large before the cut", HELLO_TEXT.substr(0, HELLO_TEXT.size() - 8), 10, LARGER},
      {"too large before checksum", wrongSum, 10, LARGER},
      {"too large before a byte behind", HELLO_TEXT + "00", 10, LARGER},
      {"a cut before too large", ".7801010300fcff61", 2, EARLY},
      {"a cut where too large would begin", ".7801010300fcff6162", 2, EARLY},
      {"checksum before a byte behind", wrongSum + "00", 100, CHECKSUM},
      {"checksum before no bytes", ".789c030000000002", 10, CHECKSUM},
      {"a byte behind before no bytes", NOTHING_TEXT + "00", 10, CORRUPT},
  });
}

TEST(Decompress, EveryCutOfTheTextEndsEarly) {
  for (const std::string& text : {HELLO_TEXT, STORED_TEXT}) {
    EXPECT_EQ(messageOf(text.substr(0, 1)), EMPTY);
    for (std::size_t size = 2; size < text.size(); ++size) {
      EXPECT_EQ(messageOf(text.substr(0, size)), EARLY) << size;
    }
  }
}

TEST(Decompress, DoesNotChangeTheErrorOnSuccess) {
  String error("before");
  const auto [bytes, length] = decompress(reinterpret_cast<const unsigned char*>(HELLO_TEXT.data()),
                                          HELLO_TEXT.size(), error, 100);
  EXPECT_EQ(length, HELLO.size());
  EXPECT_STREQ(error.buf(), "before");
  delete[] bytes;
}

TEST(Decompress, AcceptsNullForNoBytes) {
  String error;
  std::size_t length = 1;
  EXPECT_FALSE(decompressInto(nullptr, 0, error, nullptr, 0, length));
  EXPECT_STREQ(error.buf(), EMPTY);
  EXPECT_EQ(length, 0U);
}

TEST(Decompress, AHugeExpectedSizeIsNotAllocated) {
  String error;
  const auto [bytes, length] = decompress(reinterpret_cast<const unsigned char*>(HELLO_TEXT.data()),
                                          HELLO_TEXT.size(), error, ~std::size_t{0});
  EXPECT_EQ(std::string(bytes, bytes + length), HELLO);
  delete[] bytes;
}

TEST(Decompress, GrowsToAResultFarLargerThanTheText) {
  const Bytes data(5000000, 3);
  const std::string text = compressed(data);
  EXPECT_LT(text.size(), 12000U);
  EXPECT_EQ(expand(text, 1ULL << 32 >> 4).bytes, std::string(data.size(), 3));
  EXPECT_EQ(messageOf(text, data.size() - 1), LARGER);
}

TEST(Compress, ReadsBackAtManySizes) {
  Bytes data;
  for (std::size_t size = 1; size < 200000; size += 1 + size / 5) {
    while (data.size() < size) {
      data.push_back(static_cast<unsigned char>(data.size() * data.size() / 7 % 251));
    }
    EXPECT_EQ(expand(compressed(data), size).bytes, std::string(data.begin(), data.end())) << size;
    EXPECT_EQ(expand(spaced(compressed(data), 71, " "), size).bytes.size(), size);
    EXPECT_EQ(messageOf(compressed(data), size - 1), LARGER);
  }
}

TEST(Compress, WritesAPointAndLowerCaseDigits) {
  EXPECT_EQ(compressed(Bytes{'a'}).substr(0, 5), ".789c");
  const std::string text = compressed(Bytes(1000, 0xAB));
  EXPECT_EQ(text.find_first_not_of("0123456789abcdef", 1), std::string::npos);
  EXPECT_EQ(text.size() % 2, 1U);
}

/// Returns pseudo-random bytes from 0 to `limit` - 1. All of these values are about equally
/// frequent.
Bytes uniformBytes(std::size_t size, unsigned limit) {
  Bytes data;
  std::uint32_t state = 1;
  while (data.size() < size) {
    state = state * 1664525 + 1013904223;
    data.push_back(static_cast<unsigned char>((state >> 16) % limit));
  }
  return data;
}

// A stream has a header of 2 bytes, a checksum of 4 bytes, and 5 bytes before each stored block.
TEST(Compress, ChoosesTheSmallestBlockType) {
  const auto bytesFor = [](const Bytes& data) { return (compressed(data).size() - 1) / 2; };
  EXPECT_EQ(bytesFor(uniformBytes(5000, 256)), 5000U + 5 + 6);
  // The encoder begins a new block after 32768 literals or matches. Therefore this stream has three
  // stored blocks.
  EXPECT_EQ(bytesFor(uniformBytes(70000, 256)), 70000U + 3 * 5 + 6);
  EXPECT_LT(bytesFor(uniformBytes(5000, 128)), 4480U);  // 7 bits for each byte, and the codes
  EXPECT_LT(bytesFor(uniformBytes(5000, 16)), 2625U);   // 4 bits for each byte
  EXPECT_LE(compressed(Bytes(HELLO.begin(), HELLO.end())).size(), HELLO_TEXT.size());
}

/// Returns words of a small vocabulary, long runs, numbers and noise. They are compressed into
/// blocks of all three types.
Bytes mixedBytes() {
  Bytes data;
  const auto add = [&data](const Bytes& more) {
    data.insert(data.end(), more.begin(), more.end());
  };
  const Bytes letters = uniformBytes(4000, 26);
  for (const unsigned char at : uniformBytes(20000, 200)) {
    data.insert(data.end(), letters.begin() + 7 * at, letters.begin() + 7 * at + 3 + at % 9);
  }
  add(Bytes(70000, 0));
  for (unsigned i = 0; i < 30000; ++i) {
    for (const char c : std::to_string(i * i)) data.push_back(static_cast<unsigned char>(c));
  }
  add(uniformBytes(100000, 256));
  return data;
}

/// Computes the FNV-1a hash of 32 bits.
std::uint32_t checksumOf(const std::string& text) {
  std::uint32_t sum = 2166136261;
  for (const char c : text) sum = (sum ^ static_cast<unsigned char>(c)) * 16777619;
  return sum;
}

// The compressed text is the same on every machine. The figures below change if the match search or
// the choice of block types changes. Such a change is acceptable if texts become smaller or need
// less work.
TEST(Compress, TheSameBytesGiveTheSameText) {
  const Bytes data = mixedBytes();
  const std::string text = compressed(data);
  EXPECT_EQ(text.size(), 522189U);
  EXPECT_EQ(checksumOf(text), 534888934U);
  EXPECT_EQ(expand(text, data.size()).bytes, std::string(data.begin(), data.end()));
  // The encoder writes two distance codes even for a block without a match. Otherwise this checksum
  // would be another one.
  EXPECT_EQ(checksumOf(compressed(uniformBytes(300, 32))), 2993094616U);
}

TEST(Compress, TextOfNoBytesCannotBeDecompressed) {
  EXPECT_EQ(std::string(compress(nullptr, 0).buf()), NOTHING_TEXT);
  EXPECT_EQ(messageOf(NOTHING_TEXT), EMPTY);
}

}  // namespace
}  // namespace zn
