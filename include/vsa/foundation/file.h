// File: an open file, read one byte at a time by its users and buffered in blocks.
#pragma once

#include <cstddef>

#include <vsa/foundation/api.h>
#include <vsa/foundation/ref_counted.h>
#include <vsa/foundation/string.h>

namespace zn {

namespace detail {
class OpenFile;
}

/// Where the bytes of a File come from. A host derives from it to read from an archive, a socket or
/// memory. Create it with `new`: the handles of the File own it. Exceptions of its functions pass
/// through File, and the reader treats them as it treats exceptions of a scene.
class VSA_API ByteSource : public RefCounted {
 public:
  /// Writes up to `capacity` (1 or more) bytes to `to` and returns how many; 0 at the end or on a
  /// failure. It may be called again after it has returned 0. While it runs, reading the file
  /// itself gives no bytes, as at the end.
  virtual std::size_t read(char* to, std::size_t capacity) = 0;
  /// Why a read failed, as a message; empty when none has failed. Never becomes empty again.
  virtual String error() const { return String(); }
};

/// A reference-counted handle: copies share one file and one read position, for use by one thread
/// at a time. The file is closed with its last handle. A File that could not be opened, or was
/// never opened, reads like an empty one; `error` tells the difference.
///
/// While a file is read as a text scene, the host may read it through another handle, in a call of
/// the scene, the log sink or a source: the position is then right behind the character that the
/// reader looks ahead at, and the reader continues behind what the host has read.
class VSA_API File : public RefersTo<RefCounted> {
 public:
  /// A file that is not open.
  File() = default;
  /// Reads the bytes of `source` and owns it from here on; null is a file that is not open. Throws
  /// std::bad_alloc, and has deleted the source then unless another handle holds it.
  explicit File(ByteSource* source);

  /// Opens the file at `path` for reading. Always returns a File: `failed` says whether it could be
  /// opened. A UTF-8 byte order mark at its beginning is skipped. A pipe is read as it is written,
  /// without waiting for whole blocks. A null path fails. Throws std::bad_alloc.
  static File open(const char* path);

  /// Whether there is a file to read from. It stays open at its end and after a failure.
  bool isOpen() const noexcept;
  /// True when the file could not be opened, was never opened, or a read failed: then what was read
  /// is not the whole file.
  bool failed() const;
  /// Why, as a message; empty when nothing failed.
  String error() const;

  /// Reads the next byte into `c`. False, with `c` unchanged, at the end and when a read fails.
  bool read(signed char& c);

  // Fast reading: the buffered bytes, without a call for each.

  /// A range of bytes in memory, [begin, end). Both may be null when it is empty.
  struct Window {
    const char* begin;
    const char* end;
  };
  /// The buffered bytes that `read` would deliver next: at least one, or none at the end. They are
  /// valid until the file is read or filled again.
  Window fill();
  /// Skips the first `count` bytes of the last `fill`, or all of them when there are fewer.
  void skip(std::size_t count) noexcept;

 private:
  friend class detail::OpenFile;
};

}  // namespace zn
