// A buffered output for text: to a file, to a function, or to a string in memory. For a file or a
// function, only one block of the text is in memory, even if a dump has several gigabytes. A block
// is written when it has 64 KiB or more, so one long text makes it larger. The destructor writes
// nothing: the last block is written by flush().
#pragma once

#include <charconv>
#include <concepts>
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "tools/scene_text/real_text.h"

namespace vsa_tools {

class TextOutput {
 public:
  /// Keeps all text in memory; text() returns it.
  TextOutput() = default;

  /// Writes to `file`, which the caller closes, and which must stay open until the last flush().
  explicit TextOutput(std::FILE* file) : file_(file) {}

  /// Passes the text in blocks to `write`, which returns whether the block could be written.
  explicit TextOutput(std::function<bool(std::string_view)> write) : write_(std::move(write)) {}

  TextOutput(const TextOutput&) = delete;
  TextOutput& operator=(const TextOutput&) = delete;

  void put(char character) {
    text_ += character;
    writeFullBlock();
  }

  void put(std::string_view text) {
    text_ += text;
    writeFullBlock();
  }

  void put(std::integral auto value) {
    char digits[NUMBER_TEXT_CAPACITY];
    put(std::string_view(
        digits,
        static_cast<size_t>(std::to_chars(digits, digits + sizeof digits, value).ptr - digits)));
  }

  void putReal(std::floating_point auto value) {
    char digits[NUMBER_TEXT_CAPACITY];
    put(std::string_view(digits, realText(value, digits)));
  }

  /// Writes the buffer and flushes the file. Returns false if this or an earlier write failed. Does
  /// nothing for a text in memory.
  bool flush() {
    if (!file_ && !write_) return true;
    writeBuffer();
    return (!file_ || std::fflush(file_) == 0) && !failed_;
  }

  /// The whole text so far. If the output is a file or a function: the text that is still in the
  /// buffer.
  const std::string& text() const { return text_; }

 private:
  static constexpr size_t BLOCK_BYTES = size_t{64} * 1024;

  void writeFullBlock() {
    if (text_.size() >= BLOCK_BYTES && (file_ || write_)) writeBuffer();
  }

  void writeBuffer() {
    const bool isWritten =
        file_ ? std::fwrite(text_.data(), 1, text_.size(), file_) == text_.size() : write_(text_);
    failed_ = failed_ || !isWritten;
    text_.clear();
  }

  // Collects text before it is passed to stdio. With a stdio call for each put(), dumps took 5 to
  // 87 % longer. The 87 % are for dumps of byte buffers.
  std::string text_;
  std::FILE* file_ = nullptr;
  std::function<bool(std::string_view)> write_;
  bool failed_ = false;
};

}  // namespace vsa_tools
