// DescriptorSource: the bytes of a file descriptor. Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include <vsa/foundation/file.h>
#include <vsa/foundation/string.h>

namespace zn::detail {

/// What the system says about a value of errno.
String messageOfError(int error);

/// Reads a file descriptor, without a byte order mark at its beginning, and closes it in the end.
/// It calls read(2) because fread waits for a full block, even of a pipe that has some bytes.
class DescriptorSource final : public ByteSource {
 public:
  /// Opens the file at `path`, which is not null, for reading. Null if that fails; `error` is then
  /// the value of errno. Throws std::bad_alloc.
  static DescriptorSource* open(const char* path, int& error);

  std::size_t read(char* to, std::size_t capacity) override;
  String error() const override { return error_; }

  /// Bytes of a regular file, without its byte order mark; not set for a pipe or a device.
  std::optional<std::uint64_t> textBytes() const noexcept;
  /// Reads `count` bytes that begin `offset` bytes behind the byte order mark, without moving the
  /// position of `read`. Returns how many there are; 0 for what cannot be read twice. Call it after
  /// the first `read`.
  std::size_t readAt(std::uint64_t offset, char* to, std::size_t count) const noexcept;

 private:
  explicit DescriptorSource(int descriptor) noexcept : descriptor_(descriptor) {}
  DescriptorSource(const DescriptorSource&) = delete;
  DescriptorSource& operator=(const DescriptorSource&) = delete;
  ~DescriptorSource() override;

  std::size_t readSome(char* to, std::size_t capacity);
  std::size_t readStart(char* to, std::size_t capacity);

  int descriptor_;
  bool isStarted_ = false;
  std::uint8_t markBytes_ = 0;  // of the byte order mark, if there is one
  String error_;
};

}  // namespace zn::detail
