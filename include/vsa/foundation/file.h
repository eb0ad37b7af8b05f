// File: an open file. Its users read one byte at a time, or whole buffered blocks.
#pragma once

#include <cstddef>

#include <vsa/foundation/api.h>
#include <vsa/foundation/ref_counted.h>
#include <vsa/foundation/string.h>

namespace zn {

namespace detail {
class OpenFile;
}

/// A source of bytes for a File. A host can derive from it to read from an archive, a socket or
/// memory. Create it with `new`: the handles of the File own it. Exceptions of its functions
/// propagate through File. The reader handles them like exceptions of a scene.
class VSA_API ByteSource : public RefCounted {
 public:
  /// Writes up to `capacity` (1 or more) bytes to `to` and returns the number written; 0 at the end
  /// or on an error. May be called again after it returned 0. If the function reads the File of
  /// this source during the call, the File behaves as at its end.
  virtual std::size_t read(char* to, std::size_t capacity) = 0;
  /// The error message of a failed read; empty if none has failed. Once set, it must stay set.
  virtual String error() const { return String(); }
};

/// A reference-counted handle of a file. Copies share one file and one read position and may be
/// used by one thread at a time. Destroying the last handle closes the file. A File that could not
/// be opened, or was never opened, reads like an empty one; `failed` and `error` tell the
/// difference.
///
/// During a parse the host may read the file through another handle, in calls of the scene, the log
/// sink or the source. The position is then right after the lookahead character of the reader. The
/// reader continues after the bytes that the host has read.
class VSA_API File : public RefersTo<RefCounted> {
 public:
  /// A file that is not open.
  File() = default;
  /// Reads the bytes of `source` and takes ownership of it. Null gives a file that is not open.
  /// Throws std::bad_alloc, and then deletes the source unless another handle refers to it.
  explicit File(ByteSource* source);

  /// Opens the file at `path` for reading. Always returns a File: `failed` tells whether it was
  /// opened. Skips a UTF-8 byte order mark at the start of the file. Reads a pipe as data arrives,
  /// without waiting for a full block. A null path fails. Throws std::bad_alloc.
  static File open(const char* path);

  /// Whether a file was opened. It stays open at its end and after an error.
  bool isOpen() const noexcept;
  /// True if the file could not be opened, was never opened, or a read failed. The bytes read are
  /// then not the whole file.
  bool failed() const;
  /// The error message; empty if nothing failed.
  String error() const;

  /// Reads the next byte into `c`. Returns false, with `c` unchanged, at the end and on an error.
  bool read(signed char& c);

  // Direct access to the buffered bytes, without a call for each byte.

  /// A range of bytes in memory, [begin, end). Both may be null when it is empty.
  struct Window {
    const char* begin;
    const char* end;
  };
  /// The buffered bytes that the next calls of `read` would return: at least one, or none at the
  /// end. They are valid until the file is read or filled again.
  Window fill();
  /// Skips the first `count` bytes of the last `fill`, or all of them if there are fewer.
  void skip(std::size_t count) noexcept;

 private:
  friend class detail::OpenFile;
};

}  // namespace zn
