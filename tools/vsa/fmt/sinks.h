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

/// Writes a text to a new file if it differs from the old file, and says how much another thread
/// can read of the new file. Writes nothing up to the first difference, because most files that are
/// formatted do not change. Then the beginning is copied from the old file.
class GrowingSink final : public vsa::Sink {
 public:
  /// `comparison` compares with the old file, and `old` reads the old file from its first byte. All
  /// arguments must outlive the object.
  GrowingSink(vsa::Sink& file, ComparingSink& comparison, vsa::Source& old, GrowingFile& written)
      : file_(file), comparison_(comparison), old_(old), written_(written) {}

  /// Returns false if the file cannot be written, if the beginning of the old file cannot be read,
  /// or if `written` is cancelled.
  bool write(std::string_view text) override;
  /// Ends the new file, which differs from the old one. Returns false if the file cannot be
  /// written, or if the beginning of the old file cannot be read.
  bool end();

 private:
  bool copyBeginning();

  vsa::Sink& file_;
  ComparingSink& comparison_;
  vsa::Source& old_;
  GrowingFile& written_;
  std::uint64_t same_ = 0;  // the number of bytes at the beginning that are not written yet
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
