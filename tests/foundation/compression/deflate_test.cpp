// Tests of the encoder of zlib streams: zlib decodes the streams, and they are small. Built only if
// zlib is installed.
#if defined(VSA_HAVE_ZLIB)

#include <cstdint>
#include <vector>

#include "foundation/compression/deflate.h"
#include "tests/foundation/compression/zlib_streams.h"

namespace zn {
namespace {

using namespace zlib_streams;

TEST(Deflate, ZlibReadsWhatItWrites) {
  for (const Bytes& data : samples()) {
    const Bytes stream = deflateStream(data.data(), data.size());
    EXPECT_EQ(zlibInflate(stream, data.size() + 1), (Inflated{InflateStatus::Done, data}));
    EXPECT_EQ(ownInflate(stream, data.size()), (Inflated{InflateStatus::Done, data}));
  }
}

TEST(Deflate, EverySmallSize) {
  const Bytes data = mixture(700, 15);
  for (std::size_t size = 0; size <= data.size(); ++size) {
    const Bytes stream = deflateStream(data.data(), size);
    const Bytes part(data.begin(), data.begin() + static_cast<std::ptrdiff_t>(size));
    EXPECT_EQ(zlibInflate(stream, size + 1), (Inflated{InflateStatus::Done, part}));
  }
}

TEST(Deflate, LengthensCodesThatWouldBeTooLong) {
  // These frequencies grow like the Fibonacci numbers. Optimal codes for the rarest bytes would be
  // longer than 15 bits, which is the maximum.
  Bytes data;
  std::size_t last = 1;
  std::size_t uses = 1;
  for (unsigned symbol = 0; symbol < 22; ++symbol) {
    data.insert(data.end(), uses, static_cast<unsigned char>(symbol));
    last = std::exchange(uses, last + uses);
  }
  std::shuffle(data.begin(), data.end(), std::mt19937(16));
  const Bytes stream = deflateStream(data.data(), data.size());
  EXPECT_EQ(zlibInflate(stream, data.size() + 1), (Inflated{InflateStatus::Done, data}));
}

TEST(Deflate, MakesDataSmallerAndNoiseHardlyLarger) {
  const Bytes data = mixture(300000, 17);
  EXPECT_LT(deflateStream(data.data(), data.size()).size(),
            zlibStream(data, 1).size() + data.size() / 50);
  const Bytes random = noise(1000000, 18);
  EXPECT_LT(deflateStream(random.data(), random.size()).size(), random.size() + 500);
  const Bytes same(1 << 22, 7);
  EXPECT_LT(deflateStream(same.data(), same.size()).size(), same.size() / 900);
}

}  // namespace
}  // namespace zn

#endif
