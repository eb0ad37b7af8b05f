// Two gears over one state. The quick one runs while the input run and the output have room for
// anything that one step may do; it tests nothing else, refills 8 bytes at a time and copies
// matches in wide strokes. The careful one takes one symbol at a time, byte by byte across the
// edges of the input runs, and tests every bound. Bits wait in a 64-bit word, the next one lowest.

#include "foundation/compression/inflate.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

#include "foundation/compression/adler32.h"
#include "foundation/compression/inflate_table.h"

// Marks a function that shifts bits out of an unsigned number on purpose.
#if defined(__clang__)
#define ZN_SHIFTS_BITS_OUT __attribute__((no_sanitize("unsigned-shift-base")))
#else
#define ZN_SHIFTS_BITS_OUT
#endif

namespace zn {

namespace {

using namespace inflate;

// One quick step takes up to three literals, or two and a match, and loads 8 bytes three times,
// each load moving on by up to 7.
constexpr std::ptrdiff_t QUICK_INPUT = 2 * 7 + 8;
constexpr std::ptrdiff_t LONGEST_MATCH = 258;
constexpr std::ptrdiff_t STROKE_BYTES = 16;
constexpr std::ptrdiff_t LONGEST_OVERSHOOT = 2 * STROKE_BYTES;
constexpr std::ptrdiff_t QUICK_OUTPUT = 3 + LONGEST_MATCH + LONGEST_OVERSHOOT;

constexpr unsigned FULL_BITS = 56;  // a refill leaves this many bits or more

constexpr std::uint64_t lowBits(std::uint64_t bits, unsigned count) {
  return bits & ((std::uint64_t{1} << count) - 1);
}

inline std::uint64_t loadLittleEndian(const unsigned char* from) {
  std::uint64_t word;
  std::memcpy(&word, from, sizeof word);
  if constexpr (std::endian::native == std::endian::big) word = __builtin_bswap64(word);
  return word;
}

ZN_SHIFTS_BITS_OUT inline std::uint64_t bitsFrom(std::uint64_t word, unsigned place) {
  return word << place;
}

template <std::size_t Bytes>
inline void copyBytes(unsigned char* to, const unsigned char* from) {
  unsigned char hold[Bytes];
  std::memcpy(hold, from, Bytes);
  std::memcpy(to, hold, Bytes);
}

// Copies a match of `length` bytes (3 or more) from `distance` bytes back, and up to
// LONGEST_OVERSHOOT bytes of anything behind it.
inline void copyMatchWide(unsigned char* to, std::size_t distance, std::size_t length) {
  const unsigned char* from = to - distance;
  const unsigned char* const end = to + length;
  if (distance >= STROKE_BYTES) {
    copyBytes<STROKE_BYTES>(to, from);
    copyBytes<STROKE_BYTES>(to + STROKE_BYTES, from + STROKE_BYTES);
    for (to += 2 * STROKE_BYTES, from += 2 * STROKE_BYTES; to < end;
         to += STROKE_BYTES, from += STROKE_BYTES) {
      copyBytes<STROKE_BYTES>(to, from);
    }
  } else if (distance == 1) {
    std::memset(to, *from, STROKE_BYTES);
    for (to += STROKE_BYTES; to < end; to += STROKE_BYTES) std::memset(to, *from, STROKE_BYTES);
  } else if (distance >= 8) {
    for (; to < end; to += 8, from += 8) copyBytes<8>(to, from);
  } else {
    // Each stroke of 8 is right in its first `distance` bytes; the next one starts behind them.
    for (; to < end; to += distance, from += distance) copyBytes<8>(to, from);
  }
}

// The bits of the quick gear, with the input they are loaded from. The bits above the count are
// those of the byte at `in`, loaded already and counted later.
struct QuickBits {
  std::uint64_t bits;
  unsigned count;
  const unsigned char* in;

  void refill() {
    bits |= bitsFrom(loadLittleEndian(in), count);
    in += (63 - count) >> 3;
    count |= FULL_BITS;
  }

  void drop(unsigned dropped) {
    bits >>= dropped;
    count -= dropped;
  }

  Entry look(const Table& table) const { return table.slots[lowBits(bits, table.primaryBits)]; }

  // Goes from an entry that leads to a subtable to the one in there.
  Entry lookFurther(const Table& table, Entry entry) {
    drop(droppedBits(entry));
    return table.slots[entryValue(entry) + lowBits(bits, codeBits(entry))];
  }

  // The length or distance of an entry and the extra bits behind its code.
  unsigned takeValue(Entry entry) {
    const unsigned dropped = droppedBits(entry);
    const auto extra = static_cast<unsigned>(lowBits(bits, dropped) >> codeBits(entry));
    drop(dropped);
    return entryValue(entry) + extra;
  }

  // Writes the byte of a literal's entry.
  void takeLiteral(Entry entry, unsigned char*& out) {
    drop(droppedBits(entry));
    *out++ = static_cast<unsigned char>(entry >> 16 & 0xFF);
  }
};

class Inflater {
 public:
  Inflater(ByteFeed& feed, unsigned char* out, std::size_t capacity)
      : feed_(feed), start_(out), out_(out), end_(out + capacity), summed_(out) {}

  InflateStatus run();

  std::size_t length() const { return static_cast<std::size_t>(out_ - start_); }

 private:
  // How a step went: on to the next one, the end of the block, or a fault.
  enum class Step { Next, BlockEnd, EndsEarly, Corrupt, TooLarge };

  static InflateStatus statusOf(Step fault);

  bool nextRun();
  void sumOutput();
  bool need(unsigned count);
  unsigned take(unsigned count);
  bool takeCode(const Table& table, Entry& entry);
  bool takeValue(Entry entry, unsigned& value);

  Step header();
  Step block(bool& last);
  Step storedBlock();
  Step storedBytes(std::size_t left);
  Step dynamicBlock();
  Step readLengths(const Table& lengthCodes, std::uint8_t* lengths, unsigned count);
  Step compressedBlock(const Table& symbols, const Table& distances);
  bool quickPossible() const;
  Step quickSymbols(const Table& symbols, const Table& distances);
  Step symbol(const Table& symbols, const Table& distances);
  Step match(unsigned length, const Table& distances);
  InflateStatus trailer();

  ByteFeed& feed_;
  std::uint64_t bits_ = 0;
  unsigned bitCount_ = 0;
  const unsigned char* in_ = nullptr;
  const unsigned char* inEnd_ = nullptr;
  unsigned char* const start_;
  unsigned char* out_;
  unsigned char* const end_;
  const unsigned char* summed_;  // the output before it is in `adler_`
  std::uint32_t adler_ = ADLER32_START;

  Entry symbolSlots_[SYMBOL_SLOTS];
  Entry distanceSlots_[DISTANCE_SLOTS];
};

InflateStatus Inflater::statusOf(Step fault) {
  if (fault == Step::EndsEarly) return InflateStatus::EndsEarly;
  if (fault == Step::TooLarge) return InflateStatus::TooLarge;
  return InflateStatus::Corrupt;
}

// Output is summed once a run, while it is still in the cache.
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

// Makes sure of `count` bits, at most 32; false where the input ends before.
bool Inflater::need(unsigned count) {
  while (bitCount_ < count) {
    if (in_ == inEnd_ && !nextRun()) return false;
    bits_ |= std::uint64_t{*in_++} << bitCount_;
    bitCount_ += 8;
  }
  return true;
}

// The next `count` bits, of which need() has made sure.
unsigned Inflater::take(unsigned count) {
  const auto value = static_cast<unsigned>(lowBits(bits_, count));
  bits_ >>= count;
  bitCount_ -= count;
  return value;
}

// Drops the code that comes next and gives its entry; false where the input ends inside it. Bits
// past the end look like zeros, so what they lead to counts only when the code lies before them.
bool Inflater::takeCode(const Table& table, Entry& entry) {
  for (;;) {
    unsigned codeLength = 0;
    entry = table.slots[lowBits(bits_, table.primaryBits)];
    if ((entry & SUBTABLE) != 0) {
      codeLength = table.primaryBits;
      entry = table.slots[entryValue(entry) + lowBits(bits_ >> codeLength, codeBits(entry))];
    }
    codeLength += codeBits(entry);
    if (codeLength <= bitCount_) {
      take(codeLength);
      return true;
    }
    if (!need(bitCount_ + 1)) return false;
  }
}

// The value of an entry whose code was taken; false where the input ends inside its extra bits.
bool Inflater::takeValue(Entry entry, unsigned& value) {
  const unsigned extraBits = droppedBits(entry) - codeBits(entry);
  if (!need(extraBits)) return false;
  value = entryValue(entry) + take(extraBits);
  return true;
}

InflateStatus Inflater::run() {
  Step step = header();
  bool last = false;
  while (step == Step::Next && !last) step = block(last);
  return step == Step::Next ? trailer() : statusOf(step);
}

Inflater::Step Inflater::header() {
  constexpr unsigned METHOD_DEFLATE = 8;
  constexpr unsigned LARGEST_WINDOW = 7;
  constexpr unsigned PRESET_DICTIONARY = 0x20;
  if (!need(16)) return Step::EndsEarly;
  const unsigned method = take(8);
  const unsigned flags = take(8);
  const bool right = (method << 8 | flags) % 31 == 0 && (method & 15) == METHOD_DEFLATE &&
                     method >> 4 <= LARGEST_WINDOW && (flags & PRESET_DICTIONARY) == 0;
  return right ? Step::Next : Step::Corrupt;
}

Inflater::Step Inflater::block(bool& last) {
  if (!need(3)) return Step::EndsEarly;
  last = take(1) != 0;
  switch (take(2)) {
    case 0:
      return storedBlock();
    case 1:
      return compressedBlock(fixedTables().symbols, fixedTables().distances);
    case 2:
      return dynamicBlock();
    default:
      return Step::Corrupt;
  }
}

Inflater::Step Inflater::storedBlock() {
  take(bitCount_ & 7);
  if (!need(32)) return Step::EndsEarly;
  const unsigned size = take(16);
  const unsigned complement = take(16);
  if ((size ^ complement) != 0xFFFF) return Step::Corrupt;
  return storedBytes(size);
}

Inflater::Step Inflater::storedBytes(std::size_t left) {
  for (; left > 0 && bitCount_ > 0; --left) {
    if (out_ == end_) return Step::TooLarge;
    *out_++ = static_cast<unsigned char>(take(8));
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
  constexpr std::uint8_t ORDER[LENGTH_CODE_COUNT] = {16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                                     11, 4,  12, 3, 13, 2, 14, 1, 15};
  constexpr unsigned MOST_SYMBOLS = 286;
  constexpr unsigned MOST_DISTANCES = 30;
  if (!need(14)) return Step::EndsEarly;
  const unsigned symbolCount = take(5) + 257;
  const unsigned distanceCount = take(5) + 1;
  const unsigned lengthCodeCount = take(4) + 4;
  if (symbolCount > MOST_SYMBOLS || distanceCount > MOST_DISTANCES) return Step::Corrupt;

  std::uint8_t lengths[MOST_SYMBOLS + MOST_DISTANCES] = {};
  for (unsigned i = 0; i < lengthCodeCount; ++i) {
    if (!need(3)) return Step::EndsEarly;
    lengths[ORDER[i]] = static_cast<std::uint8_t>(take(3));
  }
  Table lengthCodes;
  if (!buildTable(Alphabet::LengthCodes, lengths, LENGTH_CODE_COUNT, symbolSlots_, lengthCodes)) {
    return Step::Corrupt;
  }
  const Step step = readLengths(lengthCodes, lengths, symbolCount + distanceCount);
  if (step != Step::Next) return step;

  constexpr unsigned BLOCK_END_SYMBOL = 256;
  Table symbols;
  Table distances;
  const bool right = lengths[BLOCK_END_SYMBOL] != 0 &&
                     buildTable(Alphabet::Symbols, lengths, symbolCount, symbolSlots_, symbols) &&
                     buildTable(Alphabet::Distances, lengths + symbolCount, distanceCount,
                                distanceSlots_, distances);
  return right ? compressedBlock(symbols, distances) : Step::Corrupt;
}

// The lengths of both codes in one row; a repetition may run from the first into the second.
Inflater::Step Inflater::readLengths(const Table& lengthCodes, std::uint8_t* lengths,
                                     unsigned count) {
  struct Repetition {
    unsigned extraBits;
    unsigned least;
  };
  constexpr unsigned REPEAT_LAST = 16;
  constexpr Repetition REPETITIONS[] = {{2, 3}, {3, 3}, {7, 11}};

  for (unsigned done = 0; done < count;) {
    Entry entry;
    if (!takeCode(lengthCodes, entry)) return Step::EndsEarly;
    const unsigned code = entryValue(entry);
    if (code < REPEAT_LAST) {
      lengths[done++] = static_cast<std::uint8_t>(code);
      continue;
    }
    const Repetition& repetition = REPETITIONS[code - REPEAT_LAST];
    if (!need(repetition.extraBits)) return Step::EndsEarly;
    const unsigned times = repetition.least + take(repetition.extraBits);
    if (times > count - done || (code == REPEAT_LAST && done == 0)) return Step::Corrupt;
    const std::uint8_t repeated = code == REPEAT_LAST ? lengths[done - 1] : std::uint8_t{0};
    std::fill_n(lengths + done, times, repeated);
    done += times;
  }
  return Step::Next;
}

Inflater::Step Inflater::compressedBlock(const Table& symbols, const Table& distances) {
  Step step = Step::Next;
  while (step == Step::Next) {
    step = quickPossible() ? quickSymbols(symbols, distances) : symbol(symbols, distances);
  }
  return step == Step::BlockEnd ? Step::Next : step;
}

bool Inflater::quickPossible() const {
  return inEnd_ - in_ >= QUICK_INPUT && end_ - out_ >= QUICK_OUTPUT;
}

// Many steps of the quick gear; they start and end with quickPossible().
Inflater::Step Inflater::quickSymbols(const Table& symbolTable, const Table& distanceTable) {
  const Table symbols = symbolTable;
  const Table distances = distanceTable;
  const unsigned char* const lastIn = inEnd_ - QUICK_INPUT;
  const unsigned char* const lastOut = end_ - QUICK_OUTPUT;
  QuickBits bits{bits_, bitCount_, in_};
  unsigned char* out = out_;
  Step step = Step::Next;
  do {
    bits.refill();
    Entry entry = bits.look(symbols);
    if ((entry & LITERAL) != 0) {
      bits.takeLiteral(entry, out);
      entry = bits.look(symbols);
      if ((entry & LITERAL) != 0) {
        bits.takeLiteral(entry, out);
        entry = bits.look(symbols);
        if ((entry & LITERAL) != 0) {
          bits.takeLiteral(entry, out);
          continue;
        }
      }
    }
    if ((entry & NO_VALUE) != 0) {
      if ((entry & SUBTABLE) != 0) entry = bits.lookFurther(symbols, entry);
      if ((entry & LITERAL) != 0) {
        bits.takeLiteral(entry, out);
        continue;
      }
      if ((entry & NO_VALUE) != 0) {
        bits.drop(droppedBits(entry));
        step = (entry & END_OF_BLOCK) != 0 ? Step::BlockEnd : Step::Corrupt;
        break;
      }
    }
    const unsigned length = bits.takeValue(entry);
    bits.refill();
    entry = bits.look(distances);
    if ((entry & SUBTABLE) != 0) entry = bits.lookFurther(distances, entry);
    if ((entry & NO_VALUE) != 0) {
      step = Step::Corrupt;
      break;
    }
    const unsigned distance = bits.takeValue(entry);
    if (distance > static_cast<std::size_t>(out - start_)) {
      step = Step::Corrupt;
      break;
    }
    copyMatchWide(out, distance, length);
    out += length;
  } while (bits.in <= lastIn && out <= lastOut);
  bits_ = lowBits(bits.bits, bits.count);
  bitCount_ = bits.count;
  in_ = bits.in;
  out_ = out;
  return step;
}

// One step of the careful gear.
Inflater::Step Inflater::symbol(const Table& symbols, const Table& distances) {
  Entry entry;
  if (!takeCode(symbols, entry)) return Step::EndsEarly;
  if ((entry & LITERAL) != 0) {
    if (out_ == end_) return Step::TooLarge;
    *out_++ = static_cast<unsigned char>(entryValue(entry));
    return Step::Next;
  }
  if ((entry & NO_VALUE) != 0) {
    return (entry & END_OF_BLOCK) != 0 ? Step::BlockEnd : Step::Corrupt;
  }
  unsigned length;
  return takeValue(entry, length) ? match(length, distances) : Step::EndsEarly;
}

Inflater::Step Inflater::match(unsigned length, const Table& distances) {
  Entry entry;
  unsigned distance;
  if (!takeCode(distances, entry)) return Step::EndsEarly;
  if ((entry & NO_VALUE) != 0) return Step::Corrupt;
  if (!takeValue(entry, distance)) return Step::EndsEarly;
  if (distance > this->length()) return Step::Corrupt;
  const std::size_t fitting = std::min<std::size_t>(length, static_cast<std::size_t>(end_ - out_));
  for (std::size_t i = 0; i < fitting; ++i, ++out_) {
    *out_ = *(out_ - static_cast<std::ptrdiff_t>(distance));
  }
  return fitting < length ? Step::TooLarge : Step::Next;
}

InflateStatus Inflater::trailer() {
  take(bitCount_ & 7);
  if (!need(32)) return InflateStatus::EndsEarly;
  std::uint32_t checksum = 0;
  for (int i = 0; i < 4; ++i) checksum = checksum << 8 | take(8);
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
  static constexpr std::size_t RUN_BYTES = 32768;  // so that output is summed while it is at hand

  const unsigned char* data_;
  std::size_t left_;
};

}  // namespace

InflateStatus inflateStream(ByteFeed& feed, unsigned char* out, std::size_t capacity,
                            std::size_t& length) {
  Inflater inflater(feed, out, capacity);
  const InflateStatus status = inflater.run();
  length = inflater.length();
  const auto overshoot = std::min(capacity - length, static_cast<std::size_t>(LONGEST_OVERSHOOT));
  if (overshoot > 0) std::memset(out + length, 0, overshoot);
  return status;
}

InflateStatus inflateStream(const unsigned char* data, std::size_t size, unsigned char* out,
                            std::size_t capacity, std::size_t& length) {
  MemoryFeed feed(data, size);
  return inflateStream(feed, out, capacity, length);
}

}  // namespace zn
