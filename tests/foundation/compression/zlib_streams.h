// Functions that compress with zlib, and that decompress with our decoder or with zlib.
#pragma once

#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "foundation/compression/inflate.h"

namespace zn::zlib_streams {

using Bytes = std::vector<unsigned char>;

inline Bytes bytesOf(const std::string& text) {
  return Bytes(text.begin(), text.end());
}

/// Returns the stream that zlib writes for the data.
inline Bytes zlibStream(const Bytes& data, int level = 6, int strategy = Z_DEFAULT_STRATEGY,
                        int windowBits = 15) {
  z_stream stream{};
  EXPECT_EQ(deflateInit2(&stream, level, Z_DEFLATED, windowBits, 8, strategy), Z_OK);
  Bytes out(deflateBound(&stream, static_cast<uLong>(data.size())) + 64);
  stream.next_in = const_cast<Bytef*>(data.data());
  stream.avail_in = static_cast<uInt>(data.size());
  stream.next_out = out.data();
  stream.avail_out = static_cast<uInt>(out.size());
  EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
  out.resize(stream.total_out);
  deflateEnd(&stream);
  return out;
}

struct Inflated {
  InflateStatus status;
  Bytes bytes;
};

inline bool operator==(const Inflated& a, const Inflated& b) {
  return a.status == b.status && a.bytes == b.bytes;
}

constexpr unsigned char GUARD = 0xA5;

/// Decodes a stream into memory of exactly `capacity` bytes, so that a sanitizer detects an access
/// past its end. Of the bytes after the result, the decoder may set only the first 32 to zero.
inline Inflated ownInflate(const Bytes& stream, std::size_t capacity) {
  const std::unique_ptr<unsigned char[]> input(new unsigned char[stream.size()]);
  std::copy(stream.begin(), stream.end(), input.get());
  const std::unique_ptr<unsigned char[]> output(new unsigned char[capacity]);
  std::fill_n(output.get(), capacity, GUARD);
  std::size_t length = ~std::size_t{0};
  const InflateStatus status =
      inflateStream(input.get(), stream.size(), output.get(), capacity, length);
  EXPECT_LE(length, capacity);
  for (std::size_t i = length; i < capacity; ++i) {
    const bool mayBeCleared = i < length + 32;
    if (output[i] != GUARD && !(mayBeCleared && output[i] == 0)) {
      ADD_FAILURE() << "byte " << i << " past length " << length << " was changed";
      break;
    }
  }
  return {status, Bytes(output.get(), output.get() + length)};
}

/// Decodes a stream with zlib. If the output needs more than `capacity` bytes, the status is
/// EndsEarly, as for a truncated stream.
inline Inflated zlibInflate(const Bytes& stream, std::size_t capacity) {
  z_stream state{};
  EXPECT_EQ(inflateInit(&state), Z_OK);
  Bytes out(capacity);
  state.next_in = const_cast<Bytef*>(stream.data());
  state.avail_in = static_cast<uInt>(stream.size());
  state.next_out = out.data();
  state.avail_out = static_cast<uInt>(out.size());
  const int result = inflate(&state, Z_FINISH);
  out.resize(state.total_out);
  const std::string message = state.msg == nullptr ? "" : state.msg;
  InflateStatus status = InflateStatus::Corrupt;
  if (result == Z_STREAM_END && state.avail_in == 0) status = InflateStatus::Done;
  if (result == Z_BUF_ERROR) status = InflateStatus::EndsEarly;
  if (message == "incorrect data check") status = InflateStatus::WrongChecksum;
  inflateEnd(&state);
  return {status, out};
}

inline Bytes noise(std::size_t size, unsigned seed) {
  std::mt19937 random(seed);
  Bytes bytes(size);
  for (unsigned char& byte : bytes) byte = static_cast<unsigned char>(random() & 0xFF);
  return bytes;
}

/// Returns data that has matches of many lengths and distances, and literals of different
/// frequencies.
inline Bytes mixture(std::size_t size, unsigned seed) {
  std::mt19937 random(seed);
  Bytes bytes;
  bytes.reserve(size + 300);
  while (bytes.size() < size) {
    if (bytes.empty() || random() % 4 == 0) {
      const unsigned skew = random() % 8;
      bytes.push_back(static_cast<unsigned char>(random() % 256 >> skew));
      continue;
    }
    const std::size_t reach = std::min<std::size_t>(bytes.size(), std::size_t{1} << random() % 16);
    const std::size_t distance = 1 + random() % reach;
    const std::size_t length = 3 + random() % (random() % 5 == 0 ? 256 : 12);
    for (std::size_t i = 0; i < length; ++i) bytes.push_back(bytes[bytes.size() - distance]);
  }
  bytes.resize(size);
  return bytes;
}

inline std::vector<Bytes> samples() {
  return {Bytes(),         bytesOf("a"),     bytesOf("hello hello hello"), Bytes(100000, 0),
          noise(70000, 1), mixture(1000, 2), mixture(300000, 3),           Bytes(259, 'x'),
          noise(65535, 4), noise(65536, 5)};
}

}  // namespace zn::zlib_streams
