// A text on its way to a sink: a block that is handed over whenever it is full. Internal.
#pragma once

#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>

#include <vsa/write.h>

namespace vsa::impl {

/// Ends a writing whose sink did not take the text.
struct SinkFailed {};

class TextBuffer {
 public:
  /// The most that one call of `room` may ask for.
  static constexpr std::size_t MAX_ROOM = 4096;

  /// `sink` must outlive the buffer.
  explicit TextBuffer(Sink& sink)
      : sink_(sink), block_(new char[BLOCK_BYTES]), end_(block_.get()) {}

  /// Memory for `count` characters behind the text, valid until the next call. Throws SinkFailed,
  /// as every function does that hands a block over.
  char* room(std::size_t count) {
    if (static_cast<std::size_t>(block_.get() + BLOCK_BYTES - end_) < count) flush();
    return end_;
  }
  /// Appends the characters from `room` up to `end`.
  void extendTo(char* end) { end_ = end; }

  void put(char character) {
    *room(1) = character;
    ++end_;
  }
  void put(std::string_view text) {
    while (text.size() > MAX_ROOM) {
      append(text.substr(0, MAX_ROOM));
      text.remove_prefix(MAX_ROOM);
    }
    append(text);
  }

  /// Bytes of the text so far.
  std::uint64_t size() const { return flushed_ + static_cast<std::uint64_t>(end_ - block_.get()); }
  /// Bytes that were handed over.
  std::uint64_t flushed() const { return flushed_; }

  /// Hands the text to the sink.
  void flush() {
    const std::string_view text(block_.get(), static_cast<std::size_t>(end_ - block_.get()));
    end_ = block_.get();
    if (text.empty()) return;
    if (!sink_.write(text)) throw SinkFailed();
    flushed_ += text.size();
  }

 private:
  static constexpr std::size_t BLOCK_BYTES = std::size_t{64} * 1024;

  void append(std::string_view text) {
    std::memcpy(room(text.size()), text.data(), text.size());
    end_ += text.size();
  }

  Sink& sink_;
  std::unique_ptr<char[]> block_;
  char* end_;
  std::uint64_t flushed_ = 0;
};

}  // namespace vsa::impl
