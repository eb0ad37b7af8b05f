// The decoder of zlib streams. Two loops decode the compressed blocks. They share one state.
//
// The input arrives in runs (see ByteFeed). The fast loop runs while the rest of the current run
// and the rest of the output are large enough for any iteration. It checks no other bound, except
// that a match begins inside the output. It refills its bit buffer 8 bytes at a time and copies
// matches in chunks. Of the time of the benchmark inflate/stream, the fast loop saves 58 %.
//
// The careful loop decodes one literal or match per iteration and checks every bound. It loads its
// input byte by byte, and gets the next run at the end of a run.
//
// The bit buffer is a 64-bit word. The next bit is its lowest bit.
#include "foundation/compression/inflate.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "foundation/compression/adler32.h"
#include "foundation/compression/deflate_format.h"
#include "foundation/compression/inflate_fast.h"
#include "foundation/compression/inflate_table.h"

namespace zn {

namespace {

using namespace deflate_format;
using namespace inflate;

class Inflater {
 public:
  Inflater(ByteFeed& feed, unsigned char* out, std::size_t capacity)
      : feed_(feed), start_(out), out_(out), end_(out + capacity), summed_(out) {}

  InflateStatus run();

  std::size_t length() const { return static_cast<std::size_t>(out_ - start_); }

 private:
  // The result of a step: the next step follows, the block has ended, or the decoding ends with an
  // error.
  enum class Step { Next, BlockEnd, EndsEarly, Corrupt, TooLarge };

  static InflateStatus statusOf(Step fault);

  bool nextRun();
  void sumOutput();
  bool ensure(unsigned count);
  unsigned read(unsigned count);
  bool readCode(const Table& table, Entry& entry);
  bool readValue(Entry entry, unsigned& value);

  Step header();
  Step block(bool& last);
  Step storedBlock();
  Step storedBytes(std::size_t left);
  Step dynamicBlock();
  Step readCodeLengths(const Table& codeLengths, std::uint8_t* lengths, unsigned count);
  Step compressedBlock(const Table& litlen, const Table& distance);
  bool isFastLoopPossible() const;
  Step fastLoop(const Table& litlen, const Table& distance);
  Step symbol(const Table& litlen, const Table& distance);
  Step match(unsigned length, const Table& distance);
  InflateStatus trailer();

  ByteFeed& feed_;
  std::uint64_t bits_ = 0;
  unsigned bitCount_ = 0;
  const unsigned char* in_ = nullptr;
  const unsigned char* inEnd_ = nullptr;
  unsigned char* const start_;
  unsigned char* out_;
  unsigned char* const end_;
  // `adler_` is the checksum of the output before this address.
  const unsigned char* summed_;
  std::uint32_t adler_ = ADLER32_START;

  Entry litlenSlots_[LITLEN_SLOTS];
  Entry distanceSlots_[DISTANCE_SLOTS];
};

InflateStatus Inflater::statusOf(Step fault) {
  if (fault == Step::EndsEarly) return InflateStatus::EndsEarly;
  if (fault == Step::TooLarge) return InflateStatus::TooLarge;
  return InflateStatus::Corrupt;
}

// Gets the next input run. Returns false at the end of the input. First adds the output of the
// previous run to the checksum: if the run was short, its output is still in the cache.
bool Inflater::nextRun() {
  sumOutput();
  const std::size_t size = feed_.next(in_);
  inEnd_ = in_ + size;
  return size > 0;
}

void Inflater::sumOutput() {
  adler_ = adler32(adler_, summed_, static_cast<std::size_t>(out_ - summed_));
  summed_ = out_;
}

// Loads input until the buffer contains `count` bits. `count` must be at most 32. Returns false if
// the input has too few bits.
bool Inflater::ensure(unsigned count) {
  while (bitCount_ < count) {
    if (in_ == inEnd_ && !nextRun()) return false;
    bits_ |= std::uint64_t{*in_++} << bitCount_;
    bitCount_ += 8;
  }
  return true;
}

// Returns the next `count` bits and removes them. `ensure` must have loaded them.
unsigned Inflater::read(unsigned count) {
  const auto value = static_cast<unsigned>(lowBits(bits_, count));
  bits_ >>= count;
  bitCount_ -= count;
  return value;
}

// Reads the next code and stores its entry. Returns false if the input ends within the code. Bits
// that are not loaded are zeros in the buffer, so an entry is valid only if all bits of its code
// are loaded. Otherwise one more byte is loaded.
bool Inflater::readCode(const Table& table, Entry& entry) {
  for (;;) {
    unsigned codeLength = 0;
    entry = table.slots[lowBits(bits_, table.primaryBits)];
    if ((entry & SUBTABLE) != 0) {
      codeLength = table.primaryBits;
      entry = table.slots[entryValue(entry) + lowBits(bits_ >> codeLength, codeBits(entry))];
    }
    codeLength += codeBits(entry);
    if (codeLength <= bitCount_) {
      read(codeLength);
      return true;
    }
    if (!ensure(bitCount_ + 1)) return false;
  }
}

// Computes the value of an entry whose code has been read. Returns false if the input ends within
// the extra bits.
bool Inflater::readValue(Entry entry, unsigned& value) {
  const unsigned extraBits = droppedBits(entry) - codeBits(entry);
  if (!ensure(extraBits)) return false;
  value = entryValue(entry) + read(extraBits);
  return true;
}

InflateStatus Inflater::run() {
  Step step = header();
  bool last = false;
  while (step == Step::Next && !last) step = block(last);
  return step == Step::Next ? trailer() : statusOf(step);
}

Inflater::Step Inflater::header() {
  if (!ensure(16)) return Step::EndsEarly;
  const unsigned method = read(8);
  const unsigned flags = read(8);
  const bool isValid = (method << 8 | flags) % 31 == 0 && (method & 15) == METHOD_DEFLATE &&
                       method >> 4 <= MAX_WINDOW_SIZE_CODE && (flags & PRESET_DICTIONARY) == 0;
  return isValid ? Step::Next : Step::Corrupt;
}

Inflater::Step Inflater::block(bool& last) {
  if (!ensure(3)) return Step::EndsEarly;
  last = read(1) != 0;
  switch (static_cast<BlockType>(read(2))) {
    case BlockType::Stored:
      return storedBlock();
    case BlockType::FixedCodes:
      return compressedBlock(fixedTables().litlen, fixedTables().distance);
    case BlockType::DynamicCodes:
      return dynamicBlock();
  }
  return Step::Corrupt;
}

Inflater::Step Inflater::storedBlock() {
  read(bitCount_ & 7);
  if (!ensure(32)) return Step::EndsEarly;
  const unsigned size = read(16);
  const unsigned complement = read(16);
  if ((size ^ complement) != 0xFFFF) return Step::Corrupt;
  return storedBytes(size);
}

Inflater::Step Inflater::storedBytes(std::size_t left) {
  for (; left > 0 && bitCount_ > 0; --left) {
    if (out_ == end_) return Step::TooLarge;
    *out_++ = static_cast<unsigned char>(read(8));
  }
  while (left > 0) {
    if (in_ == inEnd_ && !nextRun()) return Step::EndsEarly;
    if (out_ == end_) return Step::TooLarge;
    const std::size_t size = std::min(
        {left, static_cast<std::size_t>(inEnd_ - in_), static_cast<std::size_t>(end_ - out_)});
    std::memcpy(out_, in_, size);
    out_ += size;
    in_ += size;
    left -= size;
  }
  return Step::Next;
}

Inflater::Step Inflater::dynamicBlock() {
  if (!ensure(LITLEN_COUNT_BITS + DISTANCE_COUNT_BITS + CODE_LENGTH_COUNT_BITS)) {
    return Step::EndsEarly;
  }
  const unsigned litlenCount = MIN_LITLEN_COUNT + read(LITLEN_COUNT_BITS);
  const unsigned distanceCount = MIN_DISTANCE_COUNT + read(DISTANCE_COUNT_BITS);
  const unsigned codeLengthCount = MIN_CODE_LENGTH_COUNT + read(CODE_LENGTH_COUNT_BITS);
  if (litlenCount > LITLEN_COUNT || distanceCount > DISTANCE_COUNT) return Step::Corrupt;

  std::uint8_t lengths[LITLEN_COUNT + DISTANCE_COUNT] = {};
  for (unsigned i = 0; i < codeLengthCount; ++i) {
    if (!ensure(CODE_LENGTH_LENGTH_BITS)) return Step::EndsEarly;
    lengths[CODE_LENGTH_ORDER[i]] = static_cast<std::uint8_t>(read(CODE_LENGTH_LENGTH_BITS));
  }
  Table codeLengths;
  if (!buildTable(Alphabet::CodeLength, lengths, CODE_LENGTH_COUNT, litlenSlots_, codeLengths)) {
    return Step::Corrupt;
  }
  const Step step = readCodeLengths(codeLengths, lengths, litlenCount + distanceCount);
  if (step != Step::Next) return step;

  Table litlen;
  Table distance;
  const bool isValid = lengths[END_OF_BLOCK] != 0 &&
                       buildTable(Alphabet::Litlen, lengths, litlenCount, litlenSlots_, litlen) &&
                       buildTable(Alphabet::Distance, lengths + litlenCount, distanceCount,
                                  distanceSlots_, distance);
  return isValid ? compressedBlock(litlen, distance) : Step::Corrupt;
}

// Reads the code lengths of both alphabets as one sequence. A repetition may begin in the first
// alphabet and end in the second.
Inflater::Step Inflater::readCodeLengths(const Table& codeLengths, std::uint8_t* lengths,
                                         unsigned count) {
  for (unsigned done = 0; done < count;) {
    Entry entry;
    if (!readCode(codeLengths, entry)) return Step::EndsEarly;
    const unsigned symbol = entryValue(entry);
    if (symbol < REPEAT_PREVIOUS) {
      lengths[done++] = static_cast<std::uint8_t>(symbol);
      continue;
    }
    const ValueRange range = repetitionRange(symbol);
    if (!ensure(range.extraBits)) return Step::EndsEarly;
    const unsigned times = range.base + read(range.extraBits);
    const bool isPrevious = symbol == REPEAT_PREVIOUS;
    if (times > count - done || (isPrevious && done == 0)) return Step::Corrupt;
    std::fill_n(lengths + done, times, isPrevious ? lengths[done - 1] : std::uint8_t{0});
    done += times;
  }
  return Step::Next;
}

Inflater::Step Inflater::compressedBlock(const Table& litlen, const Table& distance) {
  Step step = Step::Next;
  while (step == Step::Next) {
    step = isFastLoopPossible() ? fastLoop(litlen, distance) : symbol(litlen, distance);
  }
  return step == Step::BlockEnd ? Step::Next : step;
}

bool Inflater::isFastLoopPossible() const {
  return inEnd_ - in_ >= FAST_INPUT_BYTES && end_ - out_ >= FAST_OUTPUT_BYTES;
}

// Decodes symbols until isFastLoopPossible() is false, which must be true at the call. Then returns
// Step::Next. Returns earlier at the end of the block and after an error. Decoding up to three
// literals per iteration saves 6 % of the time of the benchmark inflate/stream.
Inflater::Step Inflater::fastLoop(const Table& litlenTable, const Table& distanceTable) {
  const Table litlen = litlenTable;
  const Table distances = distanceTable;
  const unsigned char* const lastIn = inEnd_ - FAST_INPUT_BYTES;
  const unsigned char* const lastOut = end_ - FAST_OUTPUT_BYTES;
  FastBits bits{bits_, bitCount_, in_};
  unsigned char* out = out_;
  Step step = Step::Next;
  do {
    bits.refill();
    Entry entry = bits.peek(litlen);
    if ((entry & LITERAL) != 0) {
      bits.writeLiteral(entry, out);
      entry = bits.peek(litlen);
      if ((entry & LITERAL) != 0) {
        bits.writeLiteral(entry, out);
        entry = bits.peek(litlen);
        if ((entry & LITERAL) != 0) {
          bits.writeLiteral(entry, out);
          continue;
        }
      }
    }
    if ((entry & NO_VALUE) != 0) {
      if ((entry & SUBTABLE) != 0) entry = bits.enterSubtable(litlen, entry);
      if ((entry & LITERAL) != 0) {
        bits.writeLiteral(entry, out);
        continue;
      }
      if ((entry & NO_VALUE) != 0) {
        bits.drop(droppedBits(entry));
        step = (entry & BLOCK_END) != 0 ? Step::BlockEnd : Step::Corrupt;
        break;
      }
    }
    const unsigned length = bits.readValue(entry);
    bits.refill();
    entry = bits.peek(distances);
    if ((entry & SUBTABLE) != 0) entry = bits.enterSubtable(distances, entry);
    if ((entry & NO_VALUE) != 0) {
      step = Step::Corrupt;
      break;
    }
    const unsigned distance = bits.readValue(entry);
    if (distance > static_cast<std::size_t>(out - start_)) {
      step = Step::Corrupt;
      break;
    }
    copyMatch(out, distance, length);
    out += length;
  } while (bits.in <= lastIn && out <= lastOut);
  bits_ = lowBits(bits.bits, bits.count);
  bitCount_ = bits.count;
  in_ = bits.in;
  out_ = out;
  return step;
}

// Runs one iteration of the careful loop.
Inflater::Step Inflater::symbol(const Table& litlen, const Table& distance) {
  Entry entry;
  if (!readCode(litlen, entry)) return Step::EndsEarly;
  if ((entry & LITERAL) != 0) {
    if (out_ == end_) return Step::TooLarge;
    *out_++ = static_cast<unsigned char>(entryValue(entry));
    return Step::Next;
  }
  if ((entry & NO_VALUE) != 0) {
    return (entry & BLOCK_END) != 0 ? Step::BlockEnd : Step::Corrupt;
  }
  unsigned length;
  return readValue(entry, length) ? match(length, distance) : Step::EndsEarly;
}

Inflater::Step Inflater::match(unsigned length, const Table& distances) {
  Entry entry;
  unsigned distance;
  if (!readCode(distances, entry)) return Step::EndsEarly;
  if ((entry & NO_VALUE) != 0) return Step::Corrupt;
  if (!readValue(entry, distance)) return Step::EndsEarly;
  if (distance > this->length()) return Step::Corrupt;
  const std::size_t fitting = std::min<std::size_t>(length, static_cast<std::size_t>(end_ - out_));
  for (std::size_t i = 0; i < fitting; ++i, ++out_) {
    *out_ = *(out_ - static_cast<std::ptrdiff_t>(distance));
  }
  return fitting < length ? Step::TooLarge : Step::Next;
}

InflateStatus Inflater::trailer() {
  read(bitCount_ & 7);
  if (!ensure(32)) return InflateStatus::EndsEarly;
  std::uint32_t checksum = 0;
  for (int i = 0; i < 4; ++i) checksum = checksum << 8 | read(8);
  sumOutput();
  if (checksum != adler_) return InflateStatus::WrongChecksum;
  const bool more = bitCount_ > 0 || in_ != inEnd_ || nextRun();
  return more ? InflateStatus::Corrupt : InflateStatus::Done;
}

class MemoryFeed : public ByteFeed {
 public:
  MemoryFeed(const unsigned char* data, std::size_t size) : data_(data), left_(size) {}

  std::size_t next(const unsigned char*& bytes) override {
    const std::size_t size = std::min(left_, RUN_BYTES);
    bytes = data_;
    data_ += size;
    left_ -= size;
    return size;
  }

 private:
  // Runs are short, so that the output is still in the cache when its checksum is computed.
  static constexpr std::size_t RUN_BYTES = 32768;

  const unsigned char* data_;
  std::size_t left_;
};

}  // namespace

InflateStatus inflateStream(ByteFeed& feed, unsigned char* out, std::size_t capacity,
                            std::size_t& length) {
  Inflater inflater(feed, out, capacity);
  const InflateStatus status = inflater.run();
  length = inflater.length();
  const auto overshoot = std::min(capacity - length, static_cast<std::size_t>(MAX_OVERSHOOT));
  if (overshoot > 0) std::memset(out + length, 0, overshoot);
  return status;
}

InflateStatus inflateStream(const unsigned char* data, std::size_t size, unsigned char* out,
                            std::size_t capacity, std::size_t& length) {
  MemoryFeed feed(data, size);
  return inflateStream(feed, out, capacity, length);
}

}  // namespace zn
