// OpenFile: the object that all handles of one File share. Internal.
//
// The bytes come from a source, one block at a time. The read position is a place in the block. A
// lexer reads a byte every nanosecond or two, which is too often for a call per byte. It therefore
// attaches a cursor: two pointers that the lexer owns and moves through the block. While a cursor
// is attached, the file's position is the cursor's. Any other reader of the file (a scene that has
// a handle, a second lexer) first detaches the cursor and continues from its position. The lexer
// then finds its cursor empty, and attaches it again after the bytes that the other reader has
// read. So no pointer is ever invalid, and nothing has to be done before a scene is called.
#pragma once

#include <cstddef>
#include <memory>

#include <vsa/foundation/file.h>
#include <vsa/foundation/ref_counted.h>
#include <vsa/foundation/string.h>

namespace zn::detail {

class OpenFile final : public RefCounted {
 public:
  /// The position of a reader: references to two pointers of the reader.
  struct Cursor {
    const char*& at;   ///< The byte read last. The reader moves it forward, up to `end - 1`.
    const char*& end;  ///< The end of the buffered bytes. Both are null while detached.
  };

  /// Takes ownership of `source`. Null means a file that is not open, and `failure` is the reason.
  OpenFile(ByteSource* source, String failure);
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  /// The object of `file`; null when it was never opened.
  static OpenFile* of(const File& file) noexcept { return static_cast<OpenFile*>(file.object()); }

  // The functions of File with the same names. The caller holds a handle during the call, since the
  // source may drop all other handles.

  bool isOpen() const noexcept { return source_ != nullptr; }
  String error() const { return source_ == nullptr ? failure_ : source_->error(); }
  bool read(signed char& c);
  File::Window fill();
  void skip(std::size_t count) noexcept;

  /// Whether the next byte is buffered, so that reading it does not call the source.
  bool isBuffered() noexcept;

  /// Reads the next byte and attaches the cursor to it. At the end, or when the source throws, both
  /// pointers are null. Detach the cursor before it is destroyed.
  void attach(const Cursor& cursor);
  /// The memory of the buffered bytes. While another handle to this memory exists, the next block
  /// is read into new memory.
  const std::shared_ptr<char[]>& block() const noexcept { return block_; }
  /// Sets the file's position to that of `cursor`, and both its pointers to null. Does nothing if
  /// it is not attached.
  void detach(const Cursor& cursor) noexcept;

 private:
  ~OpenFile() override;
  void detachCursor() noexcept;
  bool refill();

  ByteSource* source_;
  String failure_;  // the reason if there is no source
  std::shared_ptr<char[]> block_;
  const char* at_ = nullptr;        // the next byte; not used while a cursor is attached
  const char* end_ = nullptr;       // the end of the buffered bytes
  const Cursor* cursor_ = nullptr;  // the attached cursor, or null
  bool isRefilling_ = false;
};

}  // namespace zn::detail
