// Between a file's bytes and the reader: takes a byte order mark away and notices what the reader
// cannot tell, for to it such bytes are text. What it notices does not depend on how many bytes
// each read delivers: a pipe is judged as the file is.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <vsa/foundation/file.h>
#include "tools/vsa/diagnostic.h"

namespace vsa_tools {

class InspectedSource : public zn::ByteSource {
 public:
  std::size_t read(char* to, std::size_t capacity) final;

  /// The first bytes of the file, after a UTF-8 byte order mark: HEAD_BYTES of them, or all there
  /// are. Empty before the first read.
  const std::string& head() const { return head_; }

  /// The position of the first NUL byte, if the reader came to one: lines and columns from 1,
  /// columns in bytes.
  const std::optional<Position>& firstNul() const { return firstNul_; }

  static constexpr std::size_t HEAD_BYTES = 16;

 protected:
  /// As read(), for the bytes as the file has them. Not called again after 0.
  virtual std::size_t readRaw(char* to, std::size_t capacity) = 0;

 private:
  void readStart();
  std::size_t readSome(char* to, std::size_t capacity);
  std::size_t takeKept(char* to, std::size_t capacity);
  std::size_t passUpToNul(const char* block, std::size_t count);
  void advance(std::string_view passed);

  bool started_ = false;
  bool ended_ = false;
  std::string head_;
  /// Bytes that were read and not handed on yet.
  std::string kept_;
  /// Where the next byte stands, as long as no NUL was met.
  Position next_{1, 1};
  std::optional<Position> firstNul_;
};

}  // namespace vsa_tools
