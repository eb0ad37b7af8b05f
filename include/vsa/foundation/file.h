// File: an open file, from which a program reads single bytes or buffered blocks.
#pragma once

#include <cstddef>

#include <vsa/foundation/api.h>
#include <vsa/foundation/ref_counted.h>
#include <vsa/foundation/string.h>

namespace zn {

namespace detail {
class OpenFile;
}

/// A source of bytes for a File. A host can derive a class from it to read from an archive, a
/// socket or memory. Create the object with `new`: the handles of the File own it. File does not
/// catch the exceptions of these functions. While the first three tokens are read, all exceptions
/// propagate out of the entry point. Later the reader handles them like exceptions that the scene
/// throws.
class VSA_API ByteSource : public RefCounted {
 public:
  /// Writes up to `capacity` bytes to `to` and returns their number. `capacity` is 1 or more. A
  /// greater result counts as `capacity`. Returns 0 at the end and on an error. The File may call
  /// the function again after a result of 0. The function must not expect bytes from its own File:
  /// during the call, that File behaves as if it were at its end.
  virtual std::size_t read(char* to, std::size_t capacity) = 0;
  /// The error message of a failed read; empty if no read has failed. After a failure, the message
  /// must not become empty again.
  virtual String error() const { return String(); }
};

/// A reference-counted handle to a file. Copies share one file and one read position. One thread at
/// a time may use them. The file is closed when its last handle is destroyed. A File that is not
/// open behaves like an empty file. `failed` and `error` distinguish the two.
///
/// While a text is read, the reader calls functions of the host's scene and log sink. They may read
/// from the same file through another handle. They then get the bytes after the last character that
/// the lexer has read, and the lexer continues after these bytes. The lexer reads one character
/// ahead.
class VSA_API File : public RefersTo<RefCounted> {
 public:
  /// A file that is not open.
  File() = default;
  /// The file whose bytes `source` returns. The file takes ownership of the source. A null source
  /// gives a file that is not open. Throws std::bad_alloc. It then deletes the source, except if
  /// another handle refers to it.
  explicit File(ByteSource* source);

  /// Opens the file at `path` for reading. Always returns a File. If the file cannot be opened, if
  /// its first bytes cannot be read (as for a directory), or if `path` is null, `failed` of this
  /// File returns true. A UTF-8 byte order mark at the start of the file is skipped. The bytes of a
  /// pipe are read when they arrive, without waiting for a full block. The function itself waits
  /// for the first of them. Throws std::bad_alloc.
  static File open(const char* path);

  /// Whether the file was opened. A file stays open at its end and after an error.
  bool isOpen() const noexcept;
  /// Whether the file was never opened, could not be opened, or had a failed read. If so, the bytes
  /// read are not the whole file.
  bool failed() const;
  /// The error message; empty if `failed` returns false.
  String error() const;

  /// Stores the next byte in `c` and returns true. At the end and on an error, returns false and
  /// leaves `c` unchanged.
  bool read(signed char& c);

  // Access to the buffered bytes without a function call for each byte.

  /// The bytes in memory from `begin` up to, but not including, `end`. Both may be null if there
  /// are none.
  struct Window {
    const char* begin;
    const char* end;
  };
  /// Returns the bytes that the next calls of `read` would return. If no byte is buffered, the
  /// function first reads a block. The result is empty only at the end, on an error, if the file is
  /// not open, and while its source reads. The bytes are valid until the next call of `read` or
  /// `fill` through any handle of the file, and only as long as the file has a handle.
  Window fill();
  /// Skips the first `count` bytes of the last `fill`, or all of them if `fill` returned fewer.
  void skip(std::size_t count) noexcept;

 private:
  friend class detail::OpenFile;
};

}  // namespace zn
