// DescriptorSource: the bytes of a file descriptor. Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include <vsa/foundation/file.h>
#include <vsa/foundation/string.h>

namespace zn::detail {

/// Returns the system's message for a value of errno. Throws std::bad_alloc.
String messageOfError(int error);

/// Reads a file descriptor. Skips a byte order mark at the beginning. The destructor closes the
/// descriptor. Calls read(2) instead of fread, because fread waits for a full block even if a pipe
/// already contains some bytes.
class DescriptorSource final : public ByteSource {
 public:
  /// Opens the file at `path` for reading. `path` must not be null. The caller owns the result. If
  /// the file cannot be opened, returns null and sets `error` to the value of errno. Throws
  /// std::bad_alloc.
  static DescriptorSource* open(const char* path, int& error);

  std::size_t read(char* to, std::size_t capacity) override;
  String error() const override { return error_; }

  /// Returns the number of bytes of a regular file, without its byte order mark. Returns nullopt
  /// for anything else, such as a pipe or a device, and if the system does not tell the size.
  std::optional<std::uint64_t> textBytes() const noexcept;
  /// Reads `count` bytes from `offset` on. The offset is counted from the end of the byte order
  /// mark. Does not change the position of `read`. Returns the number of bytes read: fewer than
  /// `count` at the end of the file and after an error, and 0 for a pipe. Must be called after the
  /// first `read`, which finds out whether the file has a byte order mark.
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
  // The size of the byte order mark. It is 0 if the file has none, and before the first `read`.
  std::uint8_t markBytes_ = 0;
  String error_;
};

}  // namespace zn::detail
