// The encoder of zlib streams.
//
// The encoder finds matches (LZ77) with hash chains: each chain links earlier positions whose first
// bytes have the same hash. The number of steps along a chain is bounded. If a match is shorter
// than GOOD_MATCH and the next position has a longer match, the encoder writes a literal and
// continues with the longer match (lazy matching). The encoder first collects the literals and
// matches of a block. It then writes the block as the smallest of three types: stored, with the
// fixed codes, or with dynamic codes.
#include "foundation/compression/deflate.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <utility>

#include "foundation/base/load_word.h"
#include "foundation/compression/adler32.h"
#include "foundation/compression/deflate_code.h"
#include "foundation/compression/deflate_format.h"

namespace zn {

namespace {

using namespace deflate;
using namespace deflate_format;

// The minimum length of a match that the encoder writes. The format also allows matches of 3 bytes,
// but the codes of such a match rarely take fewer bits than three literals.
constexpr std::size_t MIN_USED_MATCH = 4;
// The search for a longer match, at this position and at the next one, ends when a match has at
// least this length.
constexpr std::size_t GOOD_MATCH = 64;
constexpr int MAX_CHAIN_STEPS = 48;
constexpr unsigned HASH_BITS = 15;

constexpr std::size_t MAX_BLOCK_TOKENS = 32768;
constexpr std::size_t MAX_BLOCK_BYTES = 1 << 20;

// A literal byte or a match. The distance of a literal is 0.
struct Token {
  // The byte of a literal, or the length of a match.
  std::uint16_t value;
  std::uint16_t distance;
};

// A symbol of an alphabet, and the extra bits that follow its code.
struct Symbol {
  unsigned number;
  unsigned extraBits;
  unsigned extra;
};

// Returns the index in LENGTH_RANGES for each length of a match.
constexpr auto makeLengthIndexes() {
  std::array<std::uint8_t, MAX_MATCH + 1> indexes{};
  for (unsigned i = 0; i < LENGTH_RANGES.size(); ++i) {
    const unsigned last = std::min(maxOf(LENGTH_RANGES[i]), MAX_MATCH);
    for (unsigned length = LENGTH_RANGES[i].base; length <= last; ++length) {
      indexes[length] = static_cast<std::uint8_t>(i);
    }
  }
  return indexes;
}

constexpr auto LENGTH_INDEXES = makeLengthIndexes();

Symbol lengthSymbol(unsigned length) {
  const unsigned index = LENGTH_INDEXES[length];
  const ValueRange range = LENGTH_RANGES[index];
  return {FIRST_LENGTH_SYMBOL + index, range.extraBits, length - range.base};
}

// Returns the symbol of a distance. The distances 1 to 4 have the symbols 0 to 3. For larger
// distances, there are two symbols for each power of two: the position of the highest bit of
// distance - 1 selects the two symbols, and the bit below it one of them.
Symbol distanceSymbol(unsigned distance) {
  const unsigned from = distance - 1;
  const unsigned shift = from < 4 ? 0 : static_cast<unsigned>(std::bit_width(from)) - 2;
  const unsigned number = 2 * shift + (from >> shift);
  const ValueRange range = DISTANCE_RANGES[number];
  return {number, range.extraBits, distance - range.base};
}

unsigned extraBitsOfLitlen(unsigned symbol) {
  return symbol < FIRST_LENGTH_SYMBOL ? 0 : LENGTH_RANGES[symbol - FIRST_LENGTH_SYMBOL].extraBits;
}

class BitWriter {
 public:
  explicit BitWriter(std::vector<unsigned char>& out) : out_(out) {}

  // Writes the low `count` bits of `value`. `count` must be at most 32. All other bits of `value`
  // must be 0.
  void put(std::uint64_t value, unsigned count) {
    bits_ |= value << count_;
    count_ += count;
    for (; count_ >= 8; count_ -= 8, bits_ >>= 8) {
      out_.push_back(static_cast<unsigned char>(bits_ & 0xFF));
    }
  }

  void put(const Code& code, unsigned symbol) { put(code.bits[symbol], code.lengths[symbol]); }

  void put(const Code& code, const Symbol& symbol) {
    put(code, symbol.number);
    put(symbol.extra, symbol.extraBits);
  }

  void padToByte() {
    if (count_ > 0) put(0, 8 - count_);
  }

  // Writes whole bytes. Call padToByte before, so that the last byte is complete.
  void putBytes(const unsigned char* data, std::size_t size) {
    out_.insert(out_.end(), data, data + size);
  }

  // Returns the number of bits in the incomplete last byte.
  unsigned pendingBits() const { return count_; }

 private:
  std::vector<unsigned char>& out_;
  std::uint64_t bits_ = 0;
  unsigned count_ = 0;
};

struct Match {
  std::size_t length = 0;
  std::size_t distance = 0;
};

class MatchFinder {
 public:
  MatchFinder(const unsigned char* data, std::size_t size)
      : data_(data), size_(size), heads_(std::size_t{1} << HASH_BITS), earlier_(WINDOW_BYTES) {}

  // Returns the longest match that it finds for the bytes at `at`. Searches the positions that were
  // passed to `enter` and have the same hash, the latest first, up to WINDOW_BYTES back. All
  // entered positions must be before `at`. Stops after MAX_CHAIN_STEPS positions, and at a match
  // that has GOOD_MATCH bytes or reaches the end of the data. The length of the result is 0 if no
  // match has at least MIN_USED_MATCH bytes.
  Match find(std::size_t at) const {
    Match best;
    if (size_ - at < MIN_USED_MATCH) return best;
    const std::size_t longest = std::min<std::size_t>(MAX_MATCH, size_ - at);
    std::size_t link = heads_[hashAt(at)];
    for (int step = 0; step < MAX_CHAIN_STEPS && link > 0; ++step) {
      const std::size_t candidate = link - 1;
      if (at - candidate > WINDOW_BYTES) break;
      const std::size_t length = commonLength(candidate, at, longest);
      if (length > best.length) best = {length, at - candidate};
      if (length >= std::min(GOOD_MATCH, longest)) break;
      link = earlier_[candidate % WINDOW_BYTES];
    }
    if (best.length < MIN_USED_MATCH) best = {};
    return best;
  }

  // Adds the position `at` to its hash chain. Positions must be added in ascending order. Does
  // nothing if fewer than MIN_USED_MATCH bytes are left.
  void enter(std::size_t at) {
    if (size_ - at < MIN_USED_MATCH) return;
    std::size_t& head = heads_[hashAt(at)];
    earlier_[at % WINDOW_BYTES] = head;
    head = at + 1;
  }

 private:
  std::size_t hashAt(std::size_t at) const {
    constexpr std::uint64_t FACTOR = 0x9E3779B1;
    const auto word = detail::loadWord<std::uint32_t>(data_ + at);
    return (word * FACTOR >> (32 - HASH_BITS)) & ((1U << HASH_BITS) - 1);
  }

  std::size_t commonLength(std::size_t left, std::size_t right, std::size_t longest) const {
    std::size_t length = 0;
    while (length < longest && data_[left + length] == data_[right + length]) ++length;
    return length;
  }

  const unsigned char* data_;
  std::size_t size_;
  // Both vectors contain positions plus 1, or 0 for no position.
  std::vector<std::size_t> heads_;
  // The previous position with the same hash, for each position in the window.
  std::vector<std::size_t> earlier_;
};

unsigned repetitionSymbol(std::uint8_t length, unsigned times) {
  if (length != 0) return REPEAT_PREVIOUS;
  return times <= maxOf(repetitionRange(REPEAT_ZERO)) ? REPEAT_ZERO : REPEAT_ZERO_OFTEN;
}

// Returns the symbols that represent the code lengths in the stream. Runs of equal lengths become
// repetition symbols if they are long enough.
std::vector<Symbol> packCodeLengths(const std::vector<std::uint8_t>& lengths) {
  constexpr unsigned MIN_REPETITION = 3;
  std::vector<Symbol> packed;
  for (std::size_t i = 0; i < lengths.size();) {
    const std::uint8_t length = lengths[i];
    std::size_t end = i + 1;
    while (end < lengths.size() && lengths[end] == length) ++end;
    auto run = static_cast<unsigned>(end - i);
    i = end;
    if (length != 0) {
      packed.push_back({length, 0, 0});
      --run;
    }
    while (run >= MIN_REPETITION) {
      const unsigned symbol = repetitionSymbol(length, run);
      const ValueRange range = repetitionRange(symbol);
      const unsigned times = std::min(run, maxOf(range));
      packed.push_back({symbol, range.extraBits, times - range.base});
      run -= times;
    }
    for (; run > 0; --run) packed.push_back({length, 0, 0});
  }
  return packed;
}

struct Codes {
  Code litlen;
  Code distance;
};

Codes makeFixedCodes() {
  std::vector<std::uint8_t> litlen(FIXED_LITLEN_COUNT);
  for (unsigned symbol = 0; symbol < FIXED_LITLEN_COUNT; ++symbol) {
    litlen[symbol] = fixedLitlenBits(symbol);
  }
  std::vector<std::uint8_t> distance(FIXED_DISTANCE_COUNT, FIXED_DISTANCE_BITS);
  return {codeOfLengths(std::move(litlen)), codeOfLengths(std::move(distance))};
}

const Codes& fixedCodes() {
  static const Codes codes = makeFixedCodes();
  return codes;
}

// The codes of one dynamic block, and the header that describes the codes.
struct DynamicCodes {
  DynamicCodes(const std::vector<std::uint32_t>& litlenUses,
               const std::vector<std::uint32_t>& distanceUses)
      : codes{codeOfFrequencies(litlenUses, MAX_CODE_BITS),
              codeOfFrequencies(distanceUses, MAX_CODE_BITS)} {
    litlenCount = usedCount(codes.litlen.lengths, MIN_LITLEN_COUNT);
    distanceCount = usedCount(codes.distance.lengths, MIN_DISTANCE_COUNT);
    std::vector<std::uint8_t> lengths(codes.litlen.lengths.begin(),
                                      codes.litlen.lengths.begin() + litlenCount);
    lengths.insert(lengths.end(), codes.distance.lengths.begin(),
                   codes.distance.lengths.begin() + distanceCount);
    packed = packCodeLengths(lengths);
    std::vector<std::uint32_t> uses(CODE_LENGTH_COUNT);
    for (const Symbol& symbol : packed) ++uses[symbol.number];
    codeLengthCode = codeOfFrequencies(std::move(uses), MAX_CODE_LENGTH_BITS);
    // The loop ends before `codeLengthCount` is MIN_CODE_LENGTH_COUNT: the end-of-block symbol has
    // a code, so at least one code length other than 0 is in use.
    while (codeLengthCode.lengths[CODE_LENGTH_ORDER[codeLengthCount - 1]] == 0) --codeLengthCount;
  }

  static unsigned usedCount(const std::vector<std::uint8_t>& lengths, unsigned minimum) {
    auto count = static_cast<unsigned>(lengths.size());
    while (count > minimum && lengths[count - 1] == 0) --count;
    return count;
  }

  std::uint64_t headerBits() const {
    std::uint64_t bits = LITLEN_COUNT_BITS + DISTANCE_COUNT_BITS + CODE_LENGTH_COUNT_BITS +
                         CODE_LENGTH_LENGTH_BITS * codeLengthCount;
    for (const Symbol& symbol : packed) {
      bits += codeLengthCode.lengths[symbol.number] + symbol.extraBits;
    }
    return bits;
  }

  void writeHeader(BitWriter& writer) const {
    writer.put(litlenCount - MIN_LITLEN_COUNT, LITLEN_COUNT_BITS);
    writer.put(distanceCount - MIN_DISTANCE_COUNT, DISTANCE_COUNT_BITS);
    writer.put(codeLengthCount - MIN_CODE_LENGTH_COUNT, CODE_LENGTH_COUNT_BITS);
    for (unsigned i = 0; i < codeLengthCount; ++i) {
      writer.put(codeLengthCode.lengths[CODE_LENGTH_ORDER[i]], CODE_LENGTH_LENGTH_BITS);
    }
    for (const Symbol& symbol : packed) writer.put(codeLengthCode, symbol);
  }

  Codes codes;
  Code codeLengthCode;
  std::vector<Symbol> packed;
  unsigned litlenCount = 0;
  unsigned distanceCount = 0;
  unsigned codeLengthCount = CODE_LENGTH_COUNT;
};

// Collects the tokens of a block. writeBlock writes the block and starts the next one.
class BlockWriter {
 public:
  BlockWriter(StreamSink& sink, const unsigned char* data)
      : sink_(sink), writer_(written_), blockStart_(data) {
    startBlock();
  }

  void literal(unsigned char byte) {
    tokens_.push_back({byte, 0});
    ++litlenUses_[byte];
    ++bytes_;
  }

  void match(const Match& found) {
    const Token token{static_cast<std::uint16_t>(found.length),
                      static_cast<std::uint16_t>(found.distance)};
    tokens_.push_back(token);
    ++litlenUses_[lengthSymbol(token.value).number];
    ++distanceUses_[distanceSymbol(token.distance).number];
    bytes_ += found.length;
  }

  bool isFull() const { return tokens_.size() >= MAX_BLOCK_TOKENS || bytes_ >= MAX_BLOCK_BYTES; }

  void writeBlock(bool last) {
    const DynamicCodes dynamic(litlenUses_, distanceUses_);
    const std::uint64_t dynamicBits = dynamic.headerBits() + tokenBits(dynamic.codes);
    const std::uint64_t fixedBits = tokenBits(fixedCodes());
    if (storedBits() <= std::min(dynamicBits, fixedBits)) {
      writeStored(last);
    } else if (fixedBits <= dynamicBits) {
      writeType(last, BlockType::FixedCodes);
      writeTokens(fixedCodes());
    } else {
      writeType(last, BlockType::DynamicCodes);
      dynamic.writeHeader(writer_);
      writeTokens(dynamic.codes);
    }
    if (last) writer_.padToByte();
    sink_.put(written_.data(), written_.size());
    written_.clear();
    blockStart_ += bytes_;
    startBlock();
  }

 private:
  void startBlock() {
    tokens_.clear();
    bytes_ = 0;
    litlenUses_.assign(LITLEN_COUNT, 0);
    litlenUses_[END_OF_BLOCK] = 1;
    distanceUses_.assign(DISTANCE_COUNT, 0);
  }

  // The number of bits before a block: one bit that marks the last block, and two bits for the
  // type.
  static constexpr unsigned TYPE_BITS = 3;

  void writeType(bool last, BlockType type) {
    writer_.put(last ? 1 : 0, 1);
    writer_.put(static_cast<unsigned>(type), TYPE_BITS - 1);
  }

  // Returns the size in bits of the block's tokens and of the end-of-block symbol. The type and the
  // header of the block are not included.
  std::uint64_t tokenBits(const Codes& codes) const {
    std::uint64_t bits = 0;
    for (unsigned symbol = 0; symbol < LITLEN_COUNT; ++symbol) {
      bits += std::uint64_t{litlenUses_[symbol]} *
              (codes.litlen.lengths[symbol] + extraBitsOfLitlen(symbol));
    }
    for (unsigned symbol = 0; symbol < DISTANCE_COUNT; ++symbol) {
      bits += std::uint64_t{distanceUses_[symbol]} *
              (codes.distance.lengths[symbol] + DISTANCE_RANGES[symbol].extraBits);
    }
    return bits;
  }

  // Returns the size of the block in bits if its data is stored. Does not include the type bits of
  // the first stored block. The data of a stored block begins at a byte boundary, after the size of
  // the data and its complement, in 16 bits each (together SIZE_BITS). Data of more than
  // MAX_STORED_BYTES requires several stored blocks. Each block after the first begins at a byte
  // boundary, so its type bits take a whole byte.
  std::uint64_t storedBits() const {
    constexpr unsigned SIZE_BITS = 32;
    const std::uint64_t pieces =
        std::max<std::uint64_t>(1, (bytes_ + MAX_STORED_BYTES - 1) / MAX_STORED_BYTES);
    const unsigned padding = (8 - (writer_.pendingBits() + TYPE_BITS) % 8) % 8;
    return padding + SIZE_BITS + (pieces - 1) * (8 + SIZE_BITS) + std::uint64_t{bytes_} * 8;
  }

  void writeStored(bool last) {
    std::size_t done = 0;
    do {
      const std::size_t size = std::min(bytes_ - done, MAX_STORED_BYTES);
      writeType(last && done + size == bytes_, BlockType::Stored);
      writer_.padToByte();
      writer_.put(size, 16);
      writer_.put(size ^ 0xFFFF, 16);
      writer_.putBytes(blockStart_ + done, size);
      done += size;
    } while (done < bytes_);
  }

  void writeTokens(const Codes& codes) {
    for (const Token& token : tokens_) {
      if (token.distance == 0) {
        writer_.put(codes.litlen, token.value);
      } else {
        writer_.put(codes.litlen, lengthSymbol(token.value));
        writer_.put(codes.distance, distanceSymbol(token.distance));
      }
    }
    writer_.put(codes.litlen, END_OF_BLOCK);
  }

  StreamSink& sink_;
  // The complete bytes of the stream that have not been passed to `sink_`.
  std::vector<unsigned char> written_;
  BitWriter writer_;
  const unsigned char* blockStart_;
  // The size of the data in this block.
  std::size_t bytes_ = 0;
  std::vector<Token> tokens_;
  std::vector<std::uint32_t> litlenUses_;
  std::vector<std::uint32_t> distanceUses_;
};

void writeBlocks(const unsigned char* data, std::size_t size, BlockWriter& blocks) {
  MatchFinder finder(data, size);
  Match found;
  for (std::size_t at = 0; at < size;) {
    if (found.length == 0) found = finder.find(at);
    finder.enter(at);
    Match following;
    if (found.length > 0 && found.length < GOOD_MATCH) following = finder.find(at + 1);
    if (found.length == 0 || following.length > found.length) {
      blocks.literal(data[at++]);
    } else {
      blocks.match(found);
      for (const std::size_t end = at + found.length; ++at < end;) finder.enter(at);
      following = {};
    }
    found = following;
    if (blocks.isFull() && at < size) blocks.writeBlock(false);
  }
  blocks.writeBlock(true);
}

class VectorSink final : public StreamSink {
 public:
  void put(const unsigned char* bytes, std::size_t count) override {
    const std::size_t before = stream.size();
    stream.resize(before + count);
    if (count > 0) std::memcpy(stream.data() + before, bytes, count);
  }

  std::vector<unsigned char> stream;
};

}  // namespace

void deflateTo(const unsigned char* data, std::size_t size, StreamSink& out) {
  // The first byte states the method and a window of 32 KiB. The second byte contains the check
  // bits, and states that the encoder used its default level.
  constexpr unsigned char HEADER[] = {0x78, 0x9C};
  static_assert(HEADER[0] == (MAX_WINDOW_SIZE_CODE << 4 | METHOD_DEFLATE));
  out.put(HEADER, sizeof HEADER);
  BlockWriter blocks(out, data);
  writeBlocks(data, size, blocks);
  const std::uint32_t checksum = adler32(ADLER32_START, data, size);
  unsigned char trailer[4];
  for (unsigned i = 0; i < 4; ++i) {
    trailer[i] = static_cast<unsigned char>(checksum >> (24 - 8 * i) & 0xFF);
  }
  out.put(trailer, sizeof trailer);
}

std::vector<unsigned char> deflateStream(const unsigned char* data, std::size_t size) {
  VectorSink sink;
  deflateTo(data, size, sink);
  return std::move(sink.stream);
}

}  // namespace zn
