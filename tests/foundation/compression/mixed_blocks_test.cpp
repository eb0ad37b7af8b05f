// Tests of streams that zlib writes with blocks of different types. When a stored block follows a
// compressed block, the first stored bytes may already be in the decoder's bit buffer.
#if defined(VSA_HAVE_ZLIB)

#include <gtest/gtest.h>
#include <zlib.h>

#include <string>
#include <vector>

#include "foundation/compression/inflate.h"

namespace zn {
namespace {

using Bytes = std::vector<unsigned char>;

/// A part of the data, and how zlib must compress it.
struct Piece {
  std::string data;
  int level;
  int strategy;
};

Bytes streamOf(const std::vector<Piece>& pieces) {
  z_stream stream{};
  EXPECT_EQ(deflateInit2(&stream, 6, Z_DEFLATED, 15, 8, Z_DEFAULT_STRATEGY), Z_OK);
  Bytes out(1 << 20);
  stream.next_out = out.data();
  stream.avail_out = static_cast<uInt>(out.size());
  for (const Piece& piece : pieces) {
    EXPECT_EQ(deflateParams(&stream, piece.level, piece.strategy), Z_OK);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(piece.data.data()));
    stream.avail_in = static_cast<uInt>(piece.data.size());
    EXPECT_EQ(deflate(&stream, Z_BLOCK), Z_OK);
  }
  EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
  out.resize(stream.total_out);
  deflateEnd(&stream);
  return out;
}

std::string textOf(std::size_t size, unsigned seed) {
  std::string text;
  for (std::size_t i = 0; i < size; ++i) {
    seed = seed * 1103515245 + 12345;
    text += static_cast<char>('a' + (seed >> 16) % 20);
  }
  return text;
}

std::string inflated(const Bytes& stream, std::size_t capacity, InflateStatus expected) {
  std::string out(capacity, '\0');
  std::size_t length = 0;
  EXPECT_EQ(inflateStream(stream.data(), stream.size(),
                          reinterpret_cast<unsigned char*>(out.data()), capacity, length),
            expected);
  out.resize(length);
  return out;
}

TEST(MixedBlocks, StoredBytesInTheBitBuffer) {
  // The sizes vary the number of bits before the stored block.
  for (std::size_t size = 600; size < 640; ++size) {
    for (const int strategy : {Z_DEFAULT_STRATEGY, Z_FIXED, Z_HUFFMAN_ONLY}) {
      const std::vector<Piece> pieces = {{textOf(size, 1), 6, strategy},
                                         {textOf(300, 2), 0, Z_DEFAULT_STRATEGY},
                                         {textOf(500, 3), 6, strategy}};
      const std::string all = pieces[0].data + pieces[1].data + pieces[2].data;
      const Bytes stream = streamOf(pieces);
      EXPECT_EQ(inflated(stream, all.size(), InflateStatus::Done), all);
    }
  }
}

TEST(MixedBlocks, CapacitiesAroundTheBoundsOfBlocks) {
  const std::vector<Piece> pieces = {{textOf(600, 1), 6, Z_FIXED},
                                     {textOf(20, 2), 0, Z_DEFAULT_STRATEGY},
                                     {textOf(700, 3), 6, Z_FIXED}};
  const std::string all = pieces[0].data + pieces[1].data + pieces[2].data;
  const Bytes stream = streamOf(pieces);
  for (std::size_t capacity = 590; capacity < 630; ++capacity) {
    EXPECT_EQ(inflated(stream, capacity, InflateStatus::TooLarge), all.substr(0, capacity));
  }
}

TEST(MixedBlocks, ManyBlocksOfBothTypes) {
  std::vector<Piece> pieces;
  std::string all;
  for (unsigned i = 0; i < 200; ++i) {
    pieces.push_back({textOf(1 + i % 7, i), i % 2 == 0 ? 0 : 6, Z_DEFAULT_STRATEGY});
    all += pieces.back().data;
  }
  EXPECT_EQ(inflated(streamOf(pieces), all.size(), InflateStatus::Done), all);
}

}  // namespace
}  // namespace zn

#endif
