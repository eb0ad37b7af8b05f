// A buffer in front of a vsa::Sink, which knows its column.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <vsa/write.h>

namespace vsa_tools {

/// Collects a text and hands it on in blocks. After a write that failed it drops everything.
class OutputBuffer {
 public:
  explicit OutputBuffer(vsa::Sink& sink) : sink_(sink) { text_.reserve(BLOCK_BYTES + 4096); }

  void put(char c) {
    text_ += c;
    ++column_;
  }
  /// `text` has no line feed.
  void put(std::string_view text) {
    text_ += text;
    column_ += text.size();
    if (text_.size() >= BLOCK_BYTES) flush();
  }
  /// `text` may have line feeds.
  void putLines(std::string_view text) {
    put(text);
    const std::size_t feed = text.rfind('\n');
    if (feed != std::string_view::npos) column_ = text.size() - feed - 1;
  }
  /// Begins a line with `indent` blanks.
  void newLine(std::size_t indent) {
    text_ += '\n';
    text_.append(indent, ' ');
    column_ = indent;
    if (text_.size() >= BLOCK_BYTES) flush();
  }

  /// Bytes since the beginning of the line.
  std::size_t column() const { return column_; }

  /// Hands on the rest. False if a write has failed.
  bool flush() {
    if (ok_ && !text_.empty()) ok_ = sink_.write(text_);
    text_.clear();
    return ok_;
  }

 private:
  static constexpr std::size_t BLOCK_BYTES = 64 << 10;

  vsa::Sink& sink_;
  std::string text_;
  std::size_t column_ = 0;
  bool ok_ = true;
};

}  // namespace vsa_tools
