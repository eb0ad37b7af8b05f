// Compares our decoder with zlib on damaged streams. Built only if zlib is installed.
#if defined(VSA_HAVE_ZLIB)

#include <cstdint>
#include <random>

#include "tests/foundation/compression/zlib_streams.h"

namespace zn {
namespace {

using namespace zlib_streams;

/// Expects that our decoder accepts or refuses a stream as zlib does, with the same output and the
/// same reason. The reason may differ only if zlib requests more input before it finds the damage.
/// Streams that give 256 KiB or more are not compared. With memory for one byte less than the
/// output, the reason must be TooLarge.
void compareWithZlib(const Bytes& stream) {
  constexpr std::size_t CAPACITY = 1 << 18;
  const Inflated theirs = zlibInflate(stream, CAPACITY);
  if (theirs.bytes.size() == CAPACITY) return;
  const Inflated ours = ownInflate(stream, theirs.bytes.size() + 300);
  const bool isFoundEarlier =
      ours.status == InflateStatus::Corrupt && theirs.status == InflateStatus::EndsEarly;
  if (!isFoundEarlier) {
    EXPECT_EQ(static_cast<int>(ours.status), static_cast<int>(theirs.status));
  }
  EXPECT_EQ(ours.bytes, theirs.bytes);
  EXPECT_EQ(ownInflate(stream, theirs.bytes.size()), ours);
  if (!theirs.bytes.empty()) {
    const Bytes allButOne(theirs.bytes.begin(), theirs.bytes.end() - 1);
    EXPECT_EQ(ownInflate(stream, allButOne.size()), (Inflated{InflateStatus::TooLarge, allButOne}));
  }
}

void mutate(Bytes& stream, std::mt19937& random) {
  for (auto times = 1 + random() % 3; times > 0; --times) {
    const std::size_t at = 2 + random() % (stream.size() - 2);
    switch (random() % 4) {
      case 0:
        stream[at] = static_cast<unsigned char>(random() & 0xFF);
        break;
      case 1:
        stream[at] = static_cast<unsigned char>(stream[at] ^ 1U << random() % 8);
        break;
      case 2:
        stream.erase(stream.begin() + static_cast<std::ptrdiff_t>(at));
        break;
      default:
        stream.insert(stream.begin() + static_cast<std::ptrdiff_t>(at),
                      static_cast<unsigned char>(random() & 0xFF));
    }
    if (stream.size() < 4) return;
  }
}

TEST(Inflate, AgreesWithZlibOnDamagedStreams) {
  std::mt19937 random(12);
  for (int round = 0; round < 2500; ++round) {
    const Bytes data = mixture(random() % 1500, static_cast<unsigned>(random()));
    Bytes stream = zlibStream(data, static_cast<int>(random() % 10),
                              random() % 4 == 0 ? Z_FIXED : Z_DEFAULT_STRATEGY);
    mutate(stream, random);
    compareWithZlib(stream);
    if (HasFailure()) FAIL() << "round " << round;
  }
}

/// The damage is in the 90 bytes after the header of the stream. The descriptions of the codes of a
/// block are among them.
TEST(Inflate, AgreesWithZlibOnDamagedCodes) {
  std::mt19937 random(13);
  const Bytes data = mixture(2000, 14);
  const Bytes stream = zlibStream(data);
  for (int round = 0; round < 6000; ++round) {
    Bytes damaged = stream;
    for (auto times = 1 + random() % 2; times > 0; --times) {
      unsigned char& byte = damaged[2 + random() % 90];
      byte = static_cast<unsigned char>(byte ^ 1U << random() % 8);
    }
    compareWithZlib(damaged);
    if (HasFailure()) FAIL() << "round " << round;
  }
}

}  // namespace
}  // namespace zn

#endif
