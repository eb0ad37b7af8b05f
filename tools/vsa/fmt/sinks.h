// Sinks for a formatted text.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

#include <vsa/write.h>
#include "tools/vsa/fmt/text_file.h"

namespace vsa_tools {

/// Compares the text that it receives with a source.
class ComparingSink final : public vsa::Sink {
 public:
  explicit ComparingSink(vsa::Source& source) : source_(source) {}
  /// Compares the text. Returns true even if it differs, so that the writer of the text does not
  /// stop.
  bool write(std::string_view text) override;
  /// Returns whether the received text is the whole text of the source. Must be called once, at the
  /// end.
  bool isSame();

 private:
  vsa::Source& source_;
  std::string block_;
  bool isSame_ = true;
};

/// Writes the same text to two sinks.
class TeeSink final : public vsa::Sink {
 public:
  TeeSink(vsa::Sink& first, vsa::Sink& second) : first_(first), second_(second) {}
  bool write(std::string_view text) override { return first_.write(text) && second_.write(text); }

 private:
  vsa::Sink& first_;
  vsa::Sink& second_;
};

/// Writes to an open file.
class FileSink final : public vsa::Sink {
 public:
  explicit FileSink(std::FILE* file) : file_(file) {}
  bool write(std::string_view text) override {
    return std::fwrite(text.data(), 1, text.size(), file_) == text.size();
  }

 private:
  std::FILE* file_;
};

}  // namespace vsa_tools
