// TextBuffer: collects a text in a block, and passes the block to a sink when the block is full.
// Internal.
#pragma once

#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>

#include <vsa/write.h>

namespace vsa::impl {

/// The exception for a sink that returned false, and for a file that cannot be opened or replaced.
struct WriteFailed {};

class TextBuffer {
 public:
  /// The largest argument of `reserve`.
  static constexpr std::size_t MAX_RESERVED = 4096;

  /// `sink` must exist as long as the buffer.
  explicit TextBuffer(Sink& sink)
      : sink_(sink), block_(new char[BLOCK_BYTES]), end_(block_.get()) {}

  /// Returns memory for `count` characters after the text, at most MAX_RESERVED. The memory is
  /// valid until the next call of a function that appends. If the block has not enough room, the
  /// function first flushes the block. If the sink fails, it throws WriteFailed, like all functions
  /// that append.
  char* reserve(std::size_t count) {
    if (static_cast<std::size_t>(block_.get() + BLOCK_BYTES - end_) < count) flush();
    return end_;
  }
  /// Appends the characters between the result of `reserve` and `end`.
  void extendTo(char* end) { end_ = end; }

  void put(char character) {
    *reserve(1) = character;
    ++end_;
  }
  void put(std::string_view text) {
    while (text.size() > MAX_RESERVED) {
      append(text.substr(0, MAX_RESERVED));
      text.remove_prefix(MAX_RESERVED);
    }
    append(text);
  }

  /// The number of bytes of the text.
  std::uint64_t size() const { return flushed_ + static_cast<std::uint64_t>(end_ - block_.get()); }
  /// The number of bytes that the sink has accepted.
  std::uint64_t flushed() const { return flushed_; }

  /// Passes the characters in the block to the sink, if there are any. Throws WriteFailed if the
  /// sink fails.
  void flush() {
    const std::string_view text(block_.get(), static_cast<std::size_t>(end_ - block_.get()));
    end_ = block_.get();
    if (text.empty()) return;
    if (!sink_.write(text)) throw WriteFailed();
    flushed_ += text.size();
  }

 private:
  static constexpr std::size_t BLOCK_BYTES = std::size_t{64} * 1024;

  void append(std::string_view text) {
    std::memcpy(reserve(text.size()), text.data(), text.size());
    end_ += text.size();
  }

  Sink& sink_;
  std::unique_ptr<char[]> block_;
  char* end_;
  std::uint64_t flushed_ = 0;
};

}  // namespace vsa::impl
