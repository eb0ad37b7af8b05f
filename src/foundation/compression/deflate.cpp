// Matches (LZ77) are found through chains of earlier places with the same first bytes, a bounded
// number of steps along each, and a match is put off by one byte when the next place has a longer
// one. A block's worth of literals and matches is gathered first; then it is written in the
// cheapest of the three forms: stored, with the fixed codes, or with codes of its own.

#include "foundation/compression/deflate.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "foundation/compression/adler32.h"
#include "foundation/compression/deflate_code.h"

namespace zn {

namespace {

using namespace deflate;

constexpr std::size_t WINDOW_BYTES = 32768;
constexpr std::size_t SHORTEST_MATCH = 4;  // the format has 3, which seldom pays
constexpr std::size_t LONGEST_MATCH = 258;
constexpr std::size_t GOOD_MATCH = 64;  // long enough to look no further
constexpr int CHAIN_STEPS = 48;
constexpr unsigned HASH_BITS = 15;

constexpr std::size_t BLOCK_TOKENS = 32768;
constexpr std::size_t BLOCK_BYTES = 1 << 20;
constexpr std::size_t LARGEST_STORED = 65535;

constexpr unsigned BLOCK_END = 256;
constexpr unsigned SYMBOL_COUNT = 286;
constexpr unsigned DISTANCE_COUNT = 30;
constexpr unsigned LENGTH_CODE_COUNT = 19;

constexpr std::array<std::uint8_t, LENGTH_CODE_COUNT> LENGTH_CODE_ORDER = {
    16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15};

// A literal byte (distance 0), or a match.
struct Token {
  std::uint16_t value;  // the byte, or the length
  std::uint16_t distance;
};

// A symbol with the extra bits behind its code.
struct Place {
  unsigned symbol;
  unsigned extraBits;
  unsigned extra;
};

// From 8 on, lengths (less 3) stand four symbols to each power of two, distances (less 1) two.
Place lengthPlace(unsigned length) {
  if (length == LONGEST_MATCH) return {285, 0, 0};
  const unsigned from = length - 3;
  if (from < 8) return {257 + from, 0, 0};
  const auto extraBits = static_cast<unsigned>(std::bit_width(from)) - 3;
  const unsigned quarter = from >> extraBits & 3;
  return {257 + 4 * (extraBits + 1) + quarter, extraBits, from & ((1U << extraBits) - 1)};
}

Place distancePlace(unsigned distance) {
  const unsigned from = distance - 1;
  if (from < 4) return {from, 0, 0};
  const auto extraBits = static_cast<unsigned>(std::bit_width(from)) - 2;
  const unsigned half = from >> extraBits & 1;
  return {2 * (extraBits + 1) + half, extraBits, from & ((1U << extraBits) - 1)};
}

class BitWriter {
 public:
  explicit BitWriter(std::vector<unsigned char>& out) : out_(out) {}

  // The low `count` bits of `value`, at most 32; the others are 0.
  void put(std::uint64_t value, unsigned count) {
    bits_ |= value << count_;
    count_ += count;
    for (; count_ >= 8; count_ -= 8, bits_ >>= 8) {
      out_.push_back(static_cast<unsigned char>(bits_ & 0xFF));
    }
  }

  void put(const Code& code, unsigned symbol) { put(code.bits[symbol], code.lengths[symbol]); }

  void put(const Code& code, const Place& place) {
    put(code, place.symbol);
    put(place.extra, place.extraBits);
  }

  void toByteBound() {
    if (count_ > 0) put(0, 8 - count_);
  }

  // On a byte's bound only.
  void putBytes(const unsigned char* data, std::size_t size) {
    out_.insert(out_.end(), data, data + size);
  }

  // Bits short of a byte that wait for the next ones.
  unsigned pending() const { return count_; }

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

  // The longest match for the bytes at `at` among those entered, all of which are before it; length
  // 0 when there is none.
  Match find(std::size_t at) const {
    Match best;
    if (size_ - at < SHORTEST_MATCH) return best;
    const std::size_t longest = std::min(LONGEST_MATCH, size_ - at);
    std::size_t placed = heads_[hashAt(at)];
    for (int step = 0; step < CHAIN_STEPS && placed > 0; ++step) {
      const std::size_t candidate = placed - 1;
      if (at - candidate > WINDOW_BYTES) break;
      const std::size_t length = commonLength(candidate, at, longest);
      if (length > best.length) best = {length, at - candidate};
      if (length >= std::min(GOOD_MATCH, longest)) break;
      placed = earlier_[candidate % WINDOW_BYTES];
    }
    if (best.length < SHORTEST_MATCH) best = {};
    return best;
  }

  // Enters the bytes at `at`; places are entered in order.
  void enter(std::size_t at) {
    if (size_ - at < SHORTEST_MATCH) return;
    std::size_t& head = heads_[hashAt(at)];
    earlier_[at % WINDOW_BYTES] = head;
    head = at + 1;
  }

 private:
  std::size_t hashAt(std::size_t at) const {
    std::uint32_t word;
    std::memcpy(&word, data_ + at, sizeof word);
    constexpr std::uint64_t SPREAD = 0x9E3779B1;
    return (word * SPREAD >> (32 - HASH_BITS)) & ((1U << HASH_BITS) - 1);
  }

  std::size_t commonLength(std::size_t left, std::size_t right, std::size_t longest) const {
    std::size_t length = 0;
    while (length < longest && data_[left + length] == data_[right + length]) ++length;
    return length;
  }

  const unsigned char* data_;
  std::size_t size_;
  std::vector<std::size_t> heads_;    // by hash: the last place entered, plus 1; 0 for none
  std::vector<std::size_t> earlier_;  // by place in the window: the one before it, likewise
};

// The lengths of both codes as the stream holds them: runs of zeros and of the last length.
std::vector<Place> packLengths(const std::vector<std::uint8_t>& lengths) {
  std::vector<Place> packed;
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
    while (run >= 3) {
      const unsigned most = length != 0 ? 6 : 138;
      const unsigned times = std::min(run, most);
      if (length != 0) {
        packed.push_back({16, 2, times - 3});
      } else if (times <= 10) {
        packed.push_back({17, 3, times - 3});
      } else {
        packed.push_back({18, 7, times - 11});
      }
      run -= times;
    }
    for (; run > 0; --run) packed.push_back({length, 0, 0});
  }
  return packed;
}

struct Codes {
  Code symbols;
  Code distances;
};

Codes makeFixedCodes() {
  std::vector<std::uint8_t> lengths(288, 8);
  std::fill(lengths.begin() + 144, lengths.begin() + 256, std::uint8_t{9});
  std::fill(lengths.begin() + 256, lengths.begin() + 280, std::uint8_t{7});
  return {codeOfLengths(std::move(lengths)), codeOfLengths(std::vector<std::uint8_t>(32, 5))};
}

const Codes& fixedCodes() {
  static const Codes codes = makeFixedCodes();
  return codes;
}

// The codes of one block and the head that describes them.
struct OwnCodes {
  OwnCodes(const std::vector<std::uint32_t>& symbolUses,
           const std::vector<std::uint32_t>& distanceUses)
      : codes{codeOfFrequencies(symbolUses, 15), codeOfFrequencies(distanceUses, 15)} {
    symbolCount = usedCount(codes.symbols.lengths, BLOCK_END + 1);
    distanceCount = usedCount(codes.distances.lengths, 1);
    std::vector<std::uint8_t> lengths(codes.symbols.lengths.begin(),
                                      codes.symbols.lengths.begin() + symbolCount);
    lengths.insert(lengths.end(), codes.distances.lengths.begin(),
                   codes.distances.lengths.begin() + distanceCount);
    packed = packLengths(lengths);
    std::vector<std::uint32_t> uses(LENGTH_CODE_COUNT);
    for (const Place& place : packed) ++uses[place.symbol];
    lengthCode = codeOfFrequencies(std::move(uses), 7);
    // Stops before the first four: one of the lengths behind them is that of the block's end.
    while (lengthCode.lengths[LENGTH_CODE_ORDER[lengthCodeCount - 1]] == 0) {
      --lengthCodeCount;
    }
  }

  static unsigned usedCount(const std::vector<std::uint8_t>& lengths, unsigned least) {
    auto count = static_cast<unsigned>(lengths.size());
    while (count > least && lengths[count - 1] == 0) --count;
    return count;
  }

  std::uint64_t headBits() const {
    std::uint64_t bits = 14 + 3 * lengthCodeCount;
    for (const Place& place : packed) bits += lengthCode.lengths[place.symbol] + place.extraBits;
    return bits;
  }

  void writeHead(BitWriter& writer) const {
    writer.put(symbolCount - 257, 5);
    writer.put(distanceCount - 1, 5);
    writer.put(lengthCodeCount - 4, 4);
    for (unsigned i = 0; i < lengthCodeCount; ++i) {
      writer.put(lengthCode.lengths[LENGTH_CODE_ORDER[i]], 3);
    }
    for (const Place& place : packed) writer.put(lengthCode, place);
  }

  Codes codes;
  Code lengthCode;
  std::vector<Place> packed;
  unsigned symbolCount = 0;
  unsigned distanceCount = 0;
  unsigned lengthCodeCount = LENGTH_CODE_COUNT;
};

// Gathers the tokens of one block after the other and writes each when it is full.
class BlockWriter {
 public:
  BlockWriter(std::vector<unsigned char>& out, const unsigned char* data)
      : writer_(out), blockStart_(data) {
    startBlock();
  }

  void literal(unsigned char byte) {
    tokens_.push_back({byte, 0});
    ++symbolUses_[byte];
    ++bytes_;
  }

  void match(const Match& found) {
    const Token token{static_cast<std::uint16_t>(found.length),
                      static_cast<std::uint16_t>(found.distance)};
    tokens_.push_back(token);
    ++symbolUses_[lengthPlace(token.value).symbol];
    ++distanceUses_[distancePlace(token.distance).symbol];
    bytes_ += found.length;
  }

  bool isFull() const { return tokens_.size() >= BLOCK_TOKENS || bytes_ >= BLOCK_BYTES; }

  void writeBlock(bool last) {
    const OwnCodes own(symbolUses_, distanceUses_);
    const std::uint64_t ownBits = own.headBits() + tokenBits(own.codes);
    const std::uint64_t fixedBits = tokenBits(fixedCodes());
    if (storedBits() <= std::min(ownBits, fixedBits)) {
      writeStored(last);
    } else if (fixedBits <= ownBits) {
      writeStart(last, 1);
      writeTokens(fixedCodes());
    } else {
      writeStart(last, 2);
      own.writeHead(writer_);
      writeTokens(own.codes);
    }
    if (last) writer_.toByteBound();
    blockStart_ += bytes_;
    startBlock();
  }

 private:
  void startBlock() {
    tokens_.clear();
    bytes_ = 0;
    symbolUses_.assign(SYMBOL_COUNT, 0);
    symbolUses_[BLOCK_END] = 1;
    distanceUses_.assign(DISTANCE_COUNT, 0);
  }

  void writeStart(bool last, unsigned form) {
    writer_.put(last ? 1 : 0, 1);
    writer_.put(form, 2);
  }

  // The bits of the tokens behind a block's start and head.
  std::uint64_t tokenBits(const Codes& codes) const {
    std::uint64_t bits = 0;
    for (unsigned symbol = 0; symbol < SYMBOL_COUNT; ++symbol) {
      const unsigned extraBits = symbol < 265 || symbol == 285 ? 0 : (symbol - 261) / 4;
      bits += std::uint64_t{symbolUses_[symbol]} * (codes.symbols.lengths[symbol] + extraBits);
    }
    for (unsigned symbol = 0; symbol < DISTANCE_COUNT; ++symbol) {
      const unsigned extraBits = symbol < 4 ? 0 : symbol / 2 - 1;
      bits += std::uint64_t{distanceUses_[symbol]} * (codes.distances.lengths[symbol] + extraBits);
    }
    return bits;
  }

  // The same for the block stored, in as many pieces as it takes; a piece but the first has a start
  // of its own. Stored bytes start on a byte's bound.
  std::uint64_t storedBits() const {
    const std::uint64_t pieces =
        std::max<std::uint64_t>(1, (bytes_ + LARGEST_STORED - 1) / LARGEST_STORED);
    const unsigned filling = (8 - (writer_.pending() + 3) % 8) % 8;
    return filling + 32 + (pieces - 1) * 40 + std::uint64_t{bytes_} * 8;
  }

  void writeStored(bool last) {
    std::size_t done = 0;
    do {
      const std::size_t size = std::min(bytes_ - done, LARGEST_STORED);
      writeStart(last && done + size == bytes_, 0);
      writer_.toByteBound();
      writer_.put(size, 16);
      writer_.put(size ^ 0xFFFF, 16);
      writer_.putBytes(blockStart_ + done, size);
      done += size;
    } while (done < bytes_);
  }

  void writeTokens(const Codes& codes) {
    for (const Token& token : tokens_) {
      if (token.distance == 0) {
        writer_.put(codes.symbols, token.value);
      } else {
        writer_.put(codes.symbols, lengthPlace(token.value));
        writer_.put(codes.distances, distancePlace(token.distance));
      }
    }
    writer_.put(codes.symbols, BLOCK_END);
  }

  BitWriter writer_;
  const unsigned char* blockStart_;
  std::size_t bytes_ = 0;  // of the data, in this block
  std::vector<Token> tokens_;
  std::vector<std::uint32_t> symbolUses_;
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

}  // namespace

std::vector<unsigned char> deflateStream(const unsigned char* data, std::size_t size) {
  constexpr unsigned char HEADER[] = {0x78, 0x9C};  // method 8, a window of 32 KiB
  std::vector<unsigned char> stream(HEADER, HEADER + sizeof HEADER);
  BlockWriter blocks(stream, data);
  writeBlocks(data, size, blocks);
  const std::uint32_t checksum = adler32(ADLER32_START, data, size);
  for (const int shift : {24, 16, 8, 0}) {
    stream.push_back(static_cast<unsigned char>(checksum >> shift & 0xFF));
  }
  return stream;
}

}  // namespace zn
