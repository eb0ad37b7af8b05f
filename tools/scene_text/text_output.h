// Text on its way out: collected in blocks, handed on when a block is full. A dump of gigabytes so
// needs a block of memory, and a scene in memory can still be dumped into a string.
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
  /// Collects everything; text() gives it.
  TextOutput() = default;

  /// Writes to `file`, which stays the caller's and must live until the last flush().
  explicit TextOutput(std::FILE* file) : file_(file) {}

  TextOutput(const TextOutput&) = delete;
  TextOutput& operator=(const TextOutput&) = delete;

  void put(char character) {
    text_ += character;
    spill();
  }

  void put(std::string_view text) {
    text_ += text;
    spill();
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

  /// Hands on what is held and flushes the file. False when anything since the beginning could not
  /// be written.
  bool flush() {
    if (!file_) return true;
    handOn();
    return std::fflush(file_) == 0 && !failed_;
  }

  /// What was collected; with a file, what has not been handed on yet.
  const std::string& text() const { return text_; }

 private:
  static constexpr size_t BLOCK = size_t{64} * 1024;

  void spill() {
    if (file_ && text_.size() >= BLOCK) handOn();
  }

  void handOn() {
    if (std::fwrite(text_.data(), 1, text_.size(), file_) != text_.size()) failed_ = true;
    text_.clear();
  }

  std::string text_;
  std::FILE* file_ = nullptr;
  bool failed_ = false;
};

}  // namespace vsa_tools
