// CheckedText: the text of a file that is checked. A file of at most MAX_KEPT_BYTES is kept in
// memory. The lines of a larger file are read again when they are shown.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include <vsa/read.h>
#include "tools/vsa/check/text/byte_buffer.h"

namespace vsa_tools {

/// A part of a line.
struct LinePart {
  std::string text;
  /// The column of the first byte of `text`, from 1.
  std::uint64_t column = 1;
  /// Whether the line continues before and after `text`.
  bool isCutBefore = false, isCutAfter = false;
};

class CheckedText {
 public:
  /// The maximum size in bytes of a file that is kept in memory. Of a larger regular file, only the
  /// first three bytes are kept, because it can be read again. Of a longer pipe, device or standard
  /// input, the first bytes are kept: one more than this maximum.
  static constexpr std::uint64_t MAX_KEPT_BYTES = std::uint64_t{64} << 20;

  /// Opens the file `name`, or standard input for "-". If the file is small enough, reads it.
  /// Ctrl-C ends the reading. `maxKept` replaces MAX_KEPT_BYTES.
  explicit CheckedText(const std::string& name, std::uint64_t maxKept = MAX_KEPT_BYTES);
  /// Bytes in memory, which may begin with a byte order mark.
  struct InMemory {
    std::string_view bytes;
  };
  /// Keeps a copy of bytes in memory, as if a file had them.
  explicit CheckedText(InMemory copied);
  ~CheckedText();
  CheckedText(const CheckedText&) = delete;
  CheckedText& operator=(const CheckedText&) = delete;

  /// Returns the system's message about the last failure, or an empty text without one. These
  /// failures count: the file cannot be opened; the constructor or keep() cannot read it;
  /// readInto() cannot read the rest of a pipe, a device or standard input. These do not count:
  /// failures of read() and lineAt(), and of readInto() for a regular file that is not kept. text()
  /// has the bytes that were kept before the failure.
  const std::string& problem() const { return problem_; }
  /// Whether the file could be opened and its first byte could be read. An empty file is open. If
  /// it is not open, problem() says why, unless Ctrl-C ended the opening.
  bool isOpen() const { return isOpen_; }
  /// Whether text() has all bytes that could be read. That is the whole file, unless problem() is
  /// set or Ctrl-C ended the reading.
  bool isKept() const { return isKept_; }
  /// The kept bytes without the byte order mark.
  std::string_view text() const { return bytes_.view().substr(markBytes_); }
  /// The kept bytes, with the byte order mark.
  std::string_view bytes() const { return bytes_.view(); }
  /// Reads the whole text into a scene. May be called once.
  vsa::ReadOutcome readInto(vsa::Scene& scene, const vsa::ReadOptions& options);
  /// Reads a regular file of any size into memory, unless it is kept already. Returns isKept().
  /// Views of the kept bytes become invalid.
  bool keep();

  /// Returns at most `count` bytes of the text, from `offset` on. There are fewer at the end of the
  /// text or of the kept bytes of a pipe, and if the file cannot be read.
  std::string read(std::uint64_t offset, std::uint64_t count) const;
  /// Returns a part of the line that contains `position`: the bytes at most `reach` away from it,
  /// without the line end.
  LinePart lineAt(const vsa::TextPosition& position, std::uint64_t reach = 1024) const;

 private:
  class Stream;

  bool readUpTo(std::uint64_t limit);
  std::size_t blockAfter(std::size_t size) const;
  void skipMark();

  std::string name_;
  int descriptor_ = -1;
  bool isOpen_ = false;
  bool isKept_ = true;
  bool isRegular_ = false;
  std::size_t expectedBytes_ = 0;  // the size in bytes of a file to be kept, or 0
  ByteBuffer bytes_;
  std::uint64_t markBytes_ = 0;
  std::string problem_;
};

}  // namespace vsa_tools
