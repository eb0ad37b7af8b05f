// Tests of our decoder of zlib streams: streams that zlib writes, and streams that no encoder
// writes. Built only if zlib is installed.
#if defined(VSA_HAVE_ZLIB)

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "foundation/compression/adler32.h"
#include "tests/foundation/compression/zlib_streams.h"

namespace zn {
namespace {

using namespace zlib_streams;

/// Writes the bits of a stream. Thus a test can have streams that no encoder writes.
class BitStream {
 public:
  BitStream() : bytes_{0x78, 0x9C} {}

  /// Writes the low `count` bits of `value`, the lowest bit first.
  BitStream& put(unsigned value, unsigned count) {
    for (unsigned i = 0; i < count; ++i) {
      if (used_ == 0) bytes_.push_back(0);
      bytes_.back() = static_cast<unsigned char>(bytes_.back() | (value >> i & 1) << used_);
      used_ = (used_ + 1) % 8;
    }
    return *this;
  }

  /// Writes a code, its highest bit first.
  BitStream& code(unsigned value, unsigned count) {
    for (unsigned i = count; i-- > 0;) put(value >> i & 1, 1);
    return *this;
  }

  BitStream& padToByte() {
    used_ = 0;
    return *this;
  }

  Bytes end(const Bytes& output) {
    padToByte();
    const std::uint32_t sum = adler32Portable(ADLER32_START, output.data(), output.size());
    for (unsigned shift = 32; shift > 0;) put(sum >> (shift -= 8) & 0xFF, 8);
    return bytes_;
  }

 private:
  Bytes bytes_;
  unsigned used_ = 0;
};

/// Writes the header of a dynamic block, including the table of code length codes. Only three
/// entries have a code: 0 stands for a code length of 1, 10 for a code length of 0, and 11 for a
/// run of 11 to 138 code lengths of 0.
BitStream& putDynamicHeader(BitStream& bits, bool last, unsigned symbolCount,
                            unsigned distanceCount) {
  bits.put(last ? 1 : 0, 1).put(2, 2);
  bits.put(symbolCount - 257, 5).put(distanceCount - 1, 5).put(18 - 4, 4);
  // The table is in the order 16 17 18 0 8 7 9 6 10 5 11 4 12 3 13 2 14 1. Only 18, 0 and 1 have a
  // code.
  for (const unsigned length :
       {0U, 0U, 2U, 2U, 0U, 0U, 0U, 0U, 0U, 0U, 0U, 0U, 0U, 0U, 0U, 0U, 0U, 1U}) {
    bits.put(length, 3);
  }
  return bits;
}

/// Returns a stream that contains only the header of a dynamic block, which is its last block.
BitStream dynamicBlock(unsigned symbolCount, unsigned distanceCount) {
  BitStream bits;
  return putDynamicHeader(bits, true, symbolCount, distanceCount);
}

/// Writes a run of `count` code lengths of 0. `count` is from 11 to 138.
BitStream& zeros(BitStream& bits, unsigned count) {
  return bits.code(3, 2).put(count - 11, 7);
}

TEST(Adler32, BothKernelsAgreeWithZlib) {
  const Bytes data = noise(20000, 9);
  const Bytes highest(20000, 0xFF);
  for (const std::size_t size :
       {0U, 1U, 15U, 16U, 17U, 31U, 33U, 5551U, 5552U, 5553U, 11104U, 20000U}) {
    for (const Bytes* bytes : {&data, &highest}) {
      const auto expected =
          static_cast<std::uint32_t>(::adler32(1, bytes->data(), static_cast<uInt>(size)));
      EXPECT_EQ(zn::adler32(ADLER32_START, bytes->data(), size), expected) << size;
      EXPECT_EQ(adler32Portable(ADLER32_START, bytes->data(), size), expected) << size;
    }
  }
  EXPECT_EQ(zn::adler32(zn::adler32(1, data.data(), 777), data.data() + 777, 3000),
            zn::adler32(1, data.data(), 3777));
  EXPECT_EQ(zn::adler32(ADLER32_START, nullptr, 0), ADLER32_START);
}

TEST(Inflate, ReadsWhatZlibWrites) {
  for (const Bytes& data : samples()) {
    for (const int level : {0, 1, 6, 9}) {
      for (const int strategy : {Z_DEFAULT_STRATEGY, Z_HUFFMAN_ONLY, Z_RLE, Z_FIXED}) {
        const Bytes stream = zlibStream(data, level, strategy);
        EXPECT_EQ(ownInflate(stream, data.size()), (Inflated{InflateStatus::Done, data}));
        EXPECT_EQ(ownInflate(stream, data.size() + 1000), (Inflated{InflateStatus::Done, data}));
      }
    }
  }
}

TEST(Inflate, ReadsEveryWindowSize) {
  const Bytes data = mixture(50000, 6);
  for (int windowBits = 9; windowBits <= 15; ++windowBits) {
    const Bytes stream = zlibStream(data, 6, Z_DEFAULT_STRATEGY, windowBits);
    EXPECT_EQ(ownInflate(stream, data.size()), (Inflated{InflateStatus::Done, data}));
  }
}

TEST(Inflate, EveryTruncationEndsEarly) {
  const std::string text = "a text, a text, and the text again: a text with its texts";
  // mixture(2000, 14) is compressed as a dynamic block.
  for (const Bytes& data : {bytesOf(text), mixture(3000, 7), noise(500, 8), mixture(2000, 14)}) {
    for (const int level : {0, 6}) {
      const Bytes stream = zlibStream(data, level);
      for (std::size_t size = 0; size < stream.size(); ++size) {
        const Bytes cut(stream.begin(), stream.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_EQ(ownInflate(cut, data.size()).status, InflateStatus::EndsEarly) << size;
      }
    }
  }
}

TEST(Inflate, EverySmallerCapacityIsTooSmall) {
  for (const Bytes& data : {mixture(3000, 7), noise(500, 8), Bytes(1000, 'x')}) {
    for (const int level : {0, 6}) {
      const Bytes stream = zlibStream(data, level);
      for (std::size_t capacity = 0; capacity < data.size(); ++capacity) {
        const Bytes first(data.begin(), data.begin() + static_cast<std::ptrdiff_t>(capacity));
        EXPECT_EQ(ownInflate(stream, capacity), (Inflated{InflateStatus::TooLarge, first}));
      }
    }
  }
}

/// Delivers a stream in pieces of a fixed size.
class SlicedFeed : public ByteFeed {
 public:
  SlicedFeed(const Bytes& stream, std::size_t runSize) : stream_(stream), runSize_(runSize) {}

  std::size_t next(const unsigned char*& bytes) override {
    const std::size_t size = std::min(runSize_, stream_.size() - at_);
    run_.assign(stream_.begin() + static_cast<std::ptrdiff_t>(at_),
                stream_.begin() + static_cast<std::ptrdiff_t>(at_ + size));
    bytes = run_.data();
    at_ += size;
    return size;
  }

 private:
  const Bytes& stream_;
  Bytes run_;
  std::size_t runSize_;
  std::size_t at_ = 0;
};

TEST(Inflate, InputRunsOfSeveralSizesGiveTheSameResult) {
  const Bytes data = mixture(20000, 11);
  for (const int level : {0, 6}) {
    const Bytes stream = zlibStream(data, level);
    for (const std::size_t runSize : {1U, 2U, 3U, 7U, 8U, 21U, 22U, 23U, 64U, 1000U}) {
      SlicedFeed feed(stream, runSize);
      Bytes out(data.size());
      std::size_t length = 0;
      EXPECT_EQ(inflateStream(feed, out.data(), out.size(), length), InflateStatus::Done);
      EXPECT_EQ(out, data) << runSize;
    }
  }
}

TEST(Inflate, RefusesBadHeaders) {
  const Bytes good = zlibStream(bytesOf("data"));
  const struct {
    unsigned char method;
    unsigned char flags;
  } headers[] = {{0x78, 0x9D}, {0x79, 0x9B}, {0x88, 0x1C}, {0x78, 0xBB}, {0x00, 0x00}};
  for (const auto& header : headers) {
    Bytes stream = good;
    stream[0] = header.method;
    stream[1] = header.flags;
    EXPECT_EQ(ownInflate(stream, 100).status, InflateStatus::Corrupt) << int{header.method};
  }
}

TEST(Inflate, RefusesBadBlocks) {
  BitStream reserved;
  EXPECT_EQ(ownInflate(reserved.put(1, 1).put(3, 2).end({}), 10).status, InflateStatus::Corrupt);
  BitStream stored;
  stored.put(1, 1).put(0, 2).put(0, 5).put(1, 16).put(1, 16);
  EXPECT_EQ(ownInflate(stored.end({}), 10).status, InflateStatus::Corrupt);
}

TEST(Inflate, RefusesFixedCodesWithoutMeaning) {
  for (const unsigned symbol : {286U, 287U}) {
    BitStream bits;
    bits.put(1, 1).put(1, 2).code(0xC0 + symbol - 280, 8);
    EXPECT_EQ(ownInflate(bits.end({}), 10).status, InflateStatus::Corrupt) << symbol;
  }
  for (const unsigned distance : {30U, 31U}) {
    BitStream bits;
    bits.put(1, 1).put(1, 2).code(0x30, 8).code(1, 7).code(distance, 5);
    EXPECT_EQ(ownInflate(bits.end({}), 10).status, InflateStatus::Corrupt) << distance;
  }
}

TEST(Inflate, RefusesDistancesBeforeTheStart) {
  BitStream bits;  // a literal 0, then 3 bytes from distance 2
  bits.put(1, 1).put(1, 2).code(0x30, 8).code(1, 7).code(1, 5).code(0, 7);
  EXPECT_EQ(ownInflate(bits.end({}), 10), (Inflated{InflateStatus::Corrupt, Bytes(1, 0)}));
  BitStream right;  // a literal 0, then 3 bytes from distance 1
  right.put(1, 1).put(1, 2).code(0x30, 8).code(1, 7).code(0, 5).code(0, 7);
  EXPECT_EQ(ownInflate(right.end(Bytes(4, 0)), 10), (Inflated{InflateStatus::Done, Bytes(4, 0)}));
}

TEST(Inflate, AcceptsASingleCodeOfOneBit) {
  // An empty block: only the symbol 256 has a code, and no distance has one.
  BitStream empty = dynamicBlock(257, 1);
  zeros(zeros(empty, 138), 118).code(0, 1).code(2, 2).code(0, 1);
  EXPECT_EQ(ownInflate(empty.end({}), 10), (Inflated{InflateStatus::Done, {}}));
  // The stream contains a 1 bit, but no code begins with 1.
  BitStream wrong = dynamicBlock(257, 1);
  zeros(zeros(wrong, 138), 118).code(0, 1).code(2, 2).code(1, 1);
  EXPECT_EQ(ownInflate(wrong.end({}), 10).status, InflateStatus::Corrupt);
}

// All tables of the decoder use the same memory. If an entry of the code length table remained in a
// slot without a code, it would be read as a match of length 0.
TEST(Inflate, ASlotWithoutACodeHasNoEntryOfAnEarlierTable) {
  BitStream bits;
  bits.put(0, 1).put(1, 2).code(0x30, 8).code(0, 7);  // a literal 0
  putDynamicHeader(bits, true, 257, 1);               // codes for symbol 256 and for one distance
  zeros(zeros(bits, 138), 118).code(0, 1).code(0, 1);
  bits.code(1, 1).code(0, 1).code(0, 1).code(0, 1);
  EXPECT_EQ(ownInflate(bits.end(Bytes{0}), 10), (Inflated{InflateStatus::Corrupt, Bytes{0}}));
}

// The stream ends directly after the length of a match. The block has no distance codes, so every
// distance would be invalid. But the decoder must report that the stream ends early, because it has
// not read a distance. The empty block of 10 bits makes the stream end with a whole byte.
TEST(Inflate, AStreamCutBeforeAnInvalidDistanceEndsEarly) {
  BitStream bits;
  bits.put(0, 1).put(1, 2).code(0, 7);   // an empty block of 10 bits
  putDynamicHeader(bits, true, 258, 1);  // codes for symbols 256 and 257, but for no distance
  zeros(zeros(bits, 138), 118).code(0, 1).code(0, 1).code(2, 2).code(1, 1);
  const Bytes whole = bits.end({});
  const Bytes cut(whole.begin(), whole.end() - 4);  // without the checksum
  EXPECT_EQ(ownInflate(cut, 10), (Inflated{InflateStatus::EndsEarly, {}}));
}

// The block has codes for the symbols 256 and 257 (a match of 3 bytes), but no distance code.
TEST(Inflate, RefusesADistanceWhereThereIsNone) {
  BitStream bits = dynamicBlock(258, 1);
  zeros(zeros(bits, 138), 118).code(0, 1).code(0, 1).code(2, 2).code(1, 1).put(0, 8);
  EXPECT_EQ(ownInflate(bits.end({}), 10).status, InflateStatus::Corrupt);
}

TEST(Inflate, RefusesInvalidSetsOfCodes) {
  BitStream noBlockEnd = dynamicBlock(257, 1);  // symbols 0 and 1 have codes, 256 has none
  noBlockEnd.code(0, 1).code(0, 1);
  zeros(zeros(noBlockEnd, 138), 117).code(2, 2);
  EXPECT_EQ(ownInflate(noBlockEnd.end({}), 10).status, InflateStatus::Corrupt);

  BitStream tooMany = dynamicBlock(257, 1);  // three codes of one bit
  tooMany.code(0, 1).code(0, 1);
  zeros(zeros(tooMany, 138), 116).code(0, 1).code(2, 2);
  EXPECT_EQ(ownInflate(tooMany.end({}), 10).status, InflateStatus::Corrupt);

  BitStream tooManyDistances = dynamicBlock(257, 3);
  zeros(zeros(tooManyDistances, 138), 118).code(0, 1).code(0, 1).code(0, 1).code(0, 1);
  EXPECT_EQ(ownInflate(tooManyDistances.end({}), 10).status, InflateStatus::Corrupt);

  BitStream runPastTheEnd = dynamicBlock(257, 1);
  zeros(zeros(runPastTheEnd, 138), 138);
  EXPECT_EQ(ownInflate(runPastTheEnd.end({}), 10).status, InflateStatus::Corrupt);

  for (const unsigned counts : {287U - 257, 288U - 257}) {
    BitStream tooManySymbols;
    tooManySymbols.put(1, 1).put(2, 2).put(counts, 5).put(0, 5).put(0, 4);
    EXPECT_EQ(ownInflate(tooManySymbols.end({}), 10).status, InflateStatus::Corrupt);
  }
  BitStream distances31;
  distances31.put(1, 1).put(2, 2).put(0, 5).put(30, 5).put(0, 4);
  EXPECT_EQ(ownInflate(distances31.end({}), 10).status, InflateStatus::Corrupt);
}

TEST(Inflate, RefusesIncompleteCodeLengthCodes) {
  for (const unsigned length : {0U, 1U, 2U}) {
    BitStream bits;
    bits.put(1, 1).put(2, 2).put(0, 5).put(0, 5).put(0, 4);
    bits.put(0, 9).put(length, 3).put(0, 32);
    EXPECT_EQ(ownInflate(bits.end({}), 10).status, InflateStatus::Corrupt) << length;
  }
  BitStream repeatFirst;  // begins with 16, "repeat the previous length"
  repeatFirst.put(1, 1).put(2, 2).put(0, 5).put(0, 5).put(0, 4);
  repeatFirst.put(1, 3).put(1, 3).put(0, 6).put(0, 32);
  EXPECT_EQ(ownInflate(repeatFirst.end({}), 10).status, InflateStatus::Corrupt);
}

TEST(Inflate, AWrongChecksumIsReportedBeforeTrailingBytes) {
  const Bytes data = bytesOf("some data");
  Bytes stream = zlibStream(data);
  stream.push_back(0);
  EXPECT_EQ(ownInflate(stream, data.size()).status, InflateStatus::Corrupt);
  stream[stream.size() - 2] ^= 1;
  EXPECT_EQ(ownInflate(stream, data.size()).status, InflateStatus::WrongChecksum);
  stream.pop_back();
  EXPECT_EQ(ownInflate(stream, data.size()).status, InflateStatus::WrongChecksum);
  EXPECT_EQ(ownInflate(stream, data.size() - 1).status, InflateStatus::TooLarge);
}

// The bytes after the checksum may already be in the bit buffer, or in a piece that is not read
// yet.
TEST(Inflate, FindsTrailingBytesInRunsOfSeveralSizes) {
  const Bytes data = mixture(2000, 14);
  const Bytes whole = zlibStream(data);
  for (const std::size_t more : {1U, 2U, 8U, 40U}) {
    Bytes stream = whole;
    stream.resize(whole.size() + more);
    for (const std::size_t runSize : {std::size_t{1}, whole.size(), stream.size()}) {
      for (const std::size_t capacity : {data.size(), data.size() + 1000}) {
        SlicedFeed feed(stream, runSize);
        Bytes out(capacity);
        std::size_t length = 0;
        EXPECT_EQ(inflateStream(feed, out.data(), out.size(), length), InflateStatus::Corrupt);
        EXPECT_EQ(length, data.size()) << more << " in runs of " << runSize;
      }
    }
  }
}

// A dynamic block has ten matches of 258 bytes, whose codes have one bit. A stored block follows.
// After the matches, the bit buffer already contains the first stored bytes. The decoder must not
// write them past the end of the output.
TEST(Inflate, StoredBytesFromTheBitBufferRespectTheCapacity) {
  BitStream bits;
  bits.put(0, 1).put(1, 2).code(0x30, 8).code(0, 7);
  putDynamicHeader(bits, false, 286, 1);  // codes for symbols 256 and 285, and for one distance
  zeros(zeros(zeros(bits, 138), 118).code(0, 1), 28).code(0, 1).code(0, 1);
  for (int i = 0; i < 10; ++i) bits.code(1, 1).code(0, 1);
  bits.code(0, 1);
  Bytes data(1 + 10 * 258, 0);
  const std::size_t matched = data.size();
  const Bytes stored = noise(100, 19);
  data.insert(data.end(), stored.begin(), stored.end());
  bits.put(1, 1).put(0, 2).padToByte().put(100, 16).put(100 ^ 0xFFFF, 16);
  for (const unsigned char byte : stored) bits.put(byte, 8);
  const Bytes stream = bits.end(data);
  for (std::size_t capacity = matched; capacity < data.size(); ++capacity) {
    const Bytes first(data.begin(), data.begin() + static_cast<std::ptrdiff_t>(capacity));
    EXPECT_EQ(ownInflate(stream, capacity), (Inflated{InflateStatus::TooLarge, first}));
  }
  EXPECT_EQ(ownInflate(stream, data.size()), (Inflated{InflateStatus::Done, data}));
}

}  // namespace
}  // namespace zn

#endif
