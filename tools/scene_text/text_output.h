// A buffered output for text: to a file, or to a string in memory. A dump of several gigabytes
// needs one block of memory.
#pragma once

#include <charconv>
#include <concepts>
#include <cstdio>
#include <string>
#include <string_view>

#include "tools/scene_text/real_text.h"

namespace vsa_tools {

class TextOutput {
 public:
  /// Keeps all text in memory; text() returns it.
  TextOutput() = default;

  /// Writes to `file`, which the caller closes, and which must stay open until the last flush().
  explicit TextOutput(std::FILE* file) : file_(file) {}

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

  /// Writes the buffer and flushes the file. Returns false if any write since the start failed.
  bool flush() {
    if (!file_) return true;
    writeBuffer();
    return std::fflush(file_) == 0 && !failed_;
  }

  /// The whole text so far; with a file, the part that is still in the buffer.
  const std::string& text() const { return text_; }

 private:
  static constexpr size_t BLOCK_BYTES = size_t{64} * 1024;

  void writeFullBlock() {
    if (file_ && text_.size() >= BLOCK_BYTES) writeBuffer();
  }

  void writeBuffer() {
    if (std::fwrite(text_.data(), 1, text_.size(), file_) != text_.size()) failed_ = true;
    text_.clear();
  }

  // A string in front of stdio's own buffer: with a stdio call for each put() dumps took 5 to 87 %
  // longer, most of all those of byte buffers.
  std::string text_;
  std::FILE* file_ = nullptr;
  bool failed_ = false;
};

}  // namespace vsa_tools
