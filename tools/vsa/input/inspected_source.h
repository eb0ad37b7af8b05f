// InspectedSource: a byte source that skips a UTF-8 byte order mark. It records two things that the
// reader does not report: the first NUL byte, and the first bytes of the file. The records do not
// depend on how many bytes each read returns, so they are the same for a pipe and for a file.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include <vsa/read.h>
#include "tools/vsa/common/diagnostic.h"

namespace vsa_tools {

class InspectedSource : public vsa::Source {
 public:
  std::size_t read(std::span<char> to) final;

  /// The error that ended the source. Empty if nothing failed, and until all bytes before the error
  /// are read.
  std::string error() const final { return isAtEnd_ ? rawError() : std::string(); }

  /// Reads the first bytes if they were not read before.
  void readHead();
  /// The error if the source failed before its first byte, otherwise empty. Call it after
  /// readHead() and before the first read().
  std::string openError() const { return pending_.empty() ? rawError() : std::string(); }

  /// The first HEAD_BYTES bytes of the file without a UTF-8 byte order mark. A shorter file has
  /// fewer bytes. Empty before readHead() and the first read().
  const std::string& head() const { return head_; }

  /// The position of the first NUL byte that the reader reached, if there is one. Lines and columns
  /// count from 1, columns count bytes, and a byte order mark does not count.
  const std::optional<Position>& firstNul() const { return firstNul_; }

  static constexpr std::size_t HEAD_BYTES = 16;

 protected:
  /// Reads bytes like read(), but does not skip a byte order mark. It is not called again after it
  /// returned 0.
  virtual std::size_t readRaw(char* to, std::size_t capacity) = 0;
  /// The error for which readRaw() returned 0. Empty at the end of the file.
  virtual std::string rawError() const = 0;

 private:
  std::size_t readSome(char* to, std::size_t capacity);
  std::size_t readPending(char* to, std::size_t capacity);
  std::size_t splitAtNul(const char* block, std::size_t count);
  void advance(std::string_view bytes);

  bool started_ = false;
  bool ended_ = false;    // true if readRaw() has returned 0
  bool isAtEnd_ = false;  // true if read() has returned 0
  std::string head_;
  /// The bytes from readRaw() that read() has not returned yet.
  std::string pending_;
  /// The position of the next byte, until the first NUL.
  Position next_{1, 1};
  std::optional<Position> firstNul_;
};

}  // namespace vsa_tools
