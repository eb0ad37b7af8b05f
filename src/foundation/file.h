// File: an open file, read one byte at a time by its user and in blocks underneath.
#pragma once

#include <cstddef>

#include "foundation/api.h"
#include "foundation/ref_counted.h"
#include "foundation/string.h"

namespace zn {

/// Where the bytes of a File come from. A host derives from it to read from an archive, a socket or
/// memory. Made with `new`; the File's handles own it.
class VSA_API ByteSource : public RefCounted {
 public:
  /// Puts up to `capacity` (1 or more) bytes into `to` and returns how many; 0 at the end or on a
  /// failure. After 0 it may be asked again.
  virtual std::size_t read(char* to, std::size_t capacity) = 0;
  /// What went wrong when a read failed; empty when none did.
  virtual String error() const { return String(); }
};

/// A counted handle: copies share one file and one place in it. A File that could not be opened, or
/// was never opened, reads like an empty one; `error` tells the difference.
class VSA_API File : public RefersTo<RefCounted> {
 public:
  File() = default;
  /// Reads what `source` delivers; null is a file that is not open.
  explicit File(ByteSource* source);

  /// Opens the file at `path` for reading. A UTF-8 byte order mark at its beginning is skipped.
  static File open(const char* path);

  bool isOpen() const noexcept;
  /// True when the file could not be opened or a read failed midway: what was read is not all.
  bool failed() const;
  /// Why, for people; empty when nothing failed.
  String error() const;

  /// Reads the next byte into `c`; false at the end of the file and when a read fails.
  bool read(signed char& c);

  // What follows is for readers in a hurry: the bytes at hand, without a call for each.

  /// A run of bytes already in memory.
  struct Window {
    const char* begin;
    const char* end;
  };
  /// The bytes that the next calls of `read` would deliver, as far as they are in memory: at least
  /// one, or none at the end. They stay where they are until the file is read or filled again.
  Window fill();
  /// Moves on past the first `count` bytes of the last `fill`.
  void skip(std::size_t count) noexcept;
};

}  // namespace zn
