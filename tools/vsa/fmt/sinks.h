// Sinks for a formatted text.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include <vsa/write.h>
#include "tools/vsa/fmt/growing_file.h"
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
  /// Whether the text received so far differs.
  bool hasDifference() const { return !isSame_; }

 private:
  vsa::Source& source_;
  std::string block_;
  bool isSame_ = true;
};

/// Writes a text to a new file, compares the text with the old file, and says how much another
/// thread can read of the new file. The other thread sees no bytes before the first difference,
/// because it does not have to read a new file that is the same as the old one.
class GrowingSink final : public vsa::Sink {
 public:
  /// All arguments must outlive the object.
  GrowingSink(vsa::Sink& file, ComparingSink& comparison, GrowingFile& written)
      : file_(file), comparison_(comparison), written_(written) {}

  /// Returns false if the file cannot be written, or if `written` is cancelled.
  bool write(std::string_view text) override;
  /// Shows the other thread all bytes of the new file, and ends that file.
  void end();

 private:
  vsa::Sink& file_;
  ComparingSink& comparison_;
  GrowingFile& written_;
  std::uint64_t held_ = 0;  // the number of bytes that the other thread does not see yet
};

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
