// OutputBuffer: a buffer for a vsa::Sink, which counts columns.
#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

#include <vsa/write.h>

namespace vsa_tools {

/// Collects a text and writes it to the sink in blocks. After a failed write, all further text is
/// discarded. The destructor writes nothing.
class OutputBuffer {
 public:
  explicit OutputBuffer(vsa::Sink& sink)
      : sink_(sink), block_(std::make_unique<char[]>(BLOCK_BYTES)), at_(block_.get()) {}

  void put(char c) {
    if (remaining() == 0) flush();
    *at_++ = c;
    ++column_;
  }
  /// Appends a text without line feeds.
  void put(std::string_view text) {
    column_ += text.size();
    if (text.size() <= remaining()) {
      copyShort(text);
    } else {
      putLong(text);
    }
  }
  /// Appends the first `size` of 64 readable bytes, as `put` does. `size` is at most 64. This is
  /// faster than `put`, because it copies all 64 bytes.
  void putFirst(const char* text, std::size_t size) {
    constexpr std::size_t COPIED_BYTES = 64;
    if (remaining() < COPIED_BYTES) flush();
    std::memcpy(at_, text, COPIED_BYTES);
    at_ += size;
    column_ += size;
  }
  /// Appends a text that may have line feeds.
  void putLines(std::string_view text) {
    put(text);
    const std::size_t feed = text.rfind('\n');
    if (feed != std::string_view::npos) column_ = text.size() - feed - 1;
  }
  void putBlanks(std::size_t count) {
    for (; count > 0; --count) put(' ');
  }
  /// Begins a line with `indent` blanks, at most 16.
  void newLine(std::size_t indent) {
    constexpr std::string_view BLANKS = "                ";
    if (remaining() <= BLANKS.size()) flush();
    *at_ = '\n';
    std::memcpy(at_ + 1, BLANKS.data(), BLANKS.size());
    at_ += 1 + indent;
    column_ = indent;
  }

  /// The number of bytes since the beginning of the line.
  std::size_t column() const { return column_; }

  /// Writes the remaining text to the sink. Returns false if this or an earlier write has failed.
  bool flush() {
    write({block_.get(), static_cast<std::size_t>(at_ - block_.get())});
    at_ = block_.get();
    return ok_;
  }

 private:
  static constexpr std::size_t BLOCK_BYTES = 256 << 10;

  std::size_t remaining() const {
    return BLOCK_BYTES - static_cast<std::size_t>(at_ - block_.get());
  }
  void write(std::string_view text) {
    if (ok_ && !text.empty()) ok_ = sink_.write(text);
  }

  void putLong(std::string_view text) {
    flush();
    if (text.size() > BLOCK_BYTES) return write(text);
    copyShort(text);
  }

  // Copies a text, usually a number or a name. A text of 8 to 16 bytes is copied in two steps of
  // eight bytes: its first eight bytes and its last eight bytes, which may overlap.
  void copyShort(std::string_view text) {
    const std::size_t size = text.size();
    if (size >= 8 && size <= 16) {
      std::memcpy(at_, text.data(), 8);
      std::memcpy(at_ + size - 8, text.data() + size - 8, 8);
    } else if (size < 8) {
      for (std::size_t i = 0; i < size; ++i) at_[i] = text[i];
    } else {
      std::memcpy(at_, text.data(), size);
    }
    at_ += size;
  }

  vsa::Sink& sink_;
  std::unique_ptr<char[]> block_;
  char* at_;  // the end of the text in the block
  std::size_t column_ = 0;
  bool ok_ = true;
};

}  // namespace vsa_tools
