// OpenFile: what the handles of one file share. Internal; see File.
//
// The bytes come from a source, a block at a time, and the read position is a place in the block.
// A lexer reads a byte every nanosecond or two, so it does not call the file for each: it attaches
// a cursor and moves that through the block by itself. The file's position is then the cursor's.
// Whoever else reads the file meanwhile (a scene that holds a handle to it, a second lexer)
// detaches the cursor first and so goes on right behind it; the lexer finds its cursor empty and
// attaches it again behind whatever was read. Nobody ever reads through a stale pointer, and no
// position has to be handed over before a scene is called.
#pragma once

#include <cstddef>
#include <memory>

#include <vsa/foundation/file.h>
#include <vsa/foundation/ref_counted.h>
#include <vsa/foundation/string.h>

namespace zn::detail {

class OpenFile final : public RefCounted {
 public:
  /// A reader's own position: two pointers that it keeps.
  struct Cursor {
    const char*& at;   ///< The byte read last; the reader moves it, up to `end - 1`.
    const char*& end;  ///< Behind the bytes in memory. Equal to `at` while detached.
  };

  /// Owns `source` from here; null is a file that is not open, for the reason `failure`.
  OpenFile(ByteSource* source, String failure);
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  /// What `file` refers to; null when it was never opened.
  static OpenFile* of(const File& file) noexcept { return static_cast<OpenFile*>(file.object()); }

  // As the operations of File of the same names. The caller holds a handle for the duration of the
  // call: the source may drop every other one.

  bool isOpen() const noexcept { return source_ != nullptr; }
  String error() const { return source_ == nullptr ? failure_ : source_->error(); }
  bool read(signed char& c);
  File::Window fill();
  void skip(std::size_t count) noexcept;

  /// Whether the next byte is in memory, so that reading it calls no source.
  bool isBuffered() noexcept;

  /// Reads the next byte and attaches the cursor to it. At the end, or when the source throws, the
  /// cursor is empty. `cursor` must be detached before it goes.
  void attach(const Cursor& cursor);
  /// Makes the position of `cursor` the file's, and empties it; nothing when it is not attached.
  void detach(const Cursor& cursor) noexcept;

 private:
  static constexpr std::size_t BLOCK_BYTES = std::size_t{1} << 18;

  ~OpenFile() override;
  void detachCursor() noexcept;
  bool refill();

  ByteSource* source_;
  String failure_;  // why there is no source
  std::unique_ptr<char[]> block_;
  const char* at_ = nullptr;        // the next byte, unless a cursor is attached
  const char* end_ = nullptr;       // behind the bytes in memory
  const Cursor* cursor_ = nullptr;  // the one that is attached
  bool isRefilling_ = false;
};

}  // namespace zn::detail
