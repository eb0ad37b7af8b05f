// File: an open file, read one byte at a time by its user and in blocks underneath.
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
/// memory. Made with `new`; the File's handles own it. What its operations throw leaves `File`, and
/// goes through the reader as what a scene throws does.
class VSA_API ByteSource : public RefCounted {
 public:
  /// Puts up to `capacity` (1 or more) bytes into `to` and returns how many; 0 at the end or on a
  /// failure, never more than `capacity`. After 0 it may be asked again. While it runs, the file
  /// reads as at its end.
  virtual std::size_t read(char* to, std::size_t capacity) = 0;
  /// What went wrong when a read failed, for people; empty when none did. Once it is not empty it
  /// stays so.
  virtual String error() const { return String(); }
};

/// A counted handle: copies share one file and one read position, for one thread at a time. The
/// file is closed with the last of them. A File that could not be opened, or was never opened,
/// reads like an empty one; `error` tells the difference.
class VSA_API File : public RefersTo<RefCounted> {
 public:
  /// A file that is not open.
  File() = default;
  /// Reads what `source` delivers, from its first byte on, and owns it from here; null is a file
  /// that is not open. Throws std::bad_alloc, and the source is then still its maker's.
  explicit File(ByteSource* source);

  /// Opens the file at `path` for reading; never refuses, but see `failed`. A UTF-8 byte order mark
  /// at its beginning is skipped. Null is no path. Throws std::bad_alloc.
  static File open(const char* path);

  /// Whether there is a file to read from; it stays open at its end and after a failure.
  bool isOpen() const noexcept;
  /// True when the file could not be opened, was never opened, or a read failed midway: what was
  /// read is not all.
  bool failed() const;
  /// Why, for people; empty when nothing failed.
  String error() const;

  /// Reads the next byte into `c`; false, with `c` as it was, at the end and when a read fails.
  bool read(signed char& c);

  // What follows is for readers in a hurry: the bytes at hand, without a call for each.

  /// A run of bytes already in memory: from `begin` up to, and without, `end`. Both may be null
  /// when there are none.
  struct Window {
    const char* begin;
    const char* end;
  };
  /// The bytes that the next calls of `read` would deliver, as far as they are in memory: at least
  /// one, or none at the end. They stay where they are until the file is read or filled again.
  Window fill();
  /// Moves on past the first `count` bytes of the last `fill`, or past all of them when there are
  /// fewer.
  void skip(std::size_t count) noexcept;

 private:
  friend class detail::OpenFile;
};

}  // namespace zn
