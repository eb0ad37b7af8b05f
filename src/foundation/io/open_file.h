// OpenFile: the object that all handles of one file share. Internal.
//
// An OpenFile reads its source one block at a time. The read position is a position in the block.
//
// A lexer reads a byte every one or two nanoseconds, so a function call for each byte would take
// too long. The lexer therefore attaches a cursor: two pointers that the lexer owns. It moves the
// first pointer through the block. While a cursor is attached, the read position of the file is the
// position of the cursor.
//
// Any other reader (a handle of the scene, or a second lexer) first detaches the cursor and
// continues from its position. This sets both pointers of the cursor to null. The lexer then
// attaches the cursor again, after the bytes that the other reader has read. No pointer is ever
// invalid, and the parser need not prepare anything before it calls a scene.
#pragma once

#include <cstddef>
#include <memory>

#include <vsa/foundation/file.h>
#include <vsa/foundation/ref_counted.h>
#include <vsa/foundation/string.h>

namespace zn::detail {

class OpenFile final : public RefCounted {
 public:
  /// The position of a reader. It consists of references to two pointers of the reader.
  struct Cursor {
    /// The last byte that was read. The reader moves this pointer forward, up to `end - 1`.
    const char*& at;
    /// The end of the buffered bytes. Both pointers are null while the cursor is detached.
    const char*& end;
  };

  /// Retains `source` until the destructor. If `source` is null, the file is not open, and
  /// `failure` is the reason.
  OpenFile(ByteSource* source, String failure);
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  /// Returns the object of `file`. Returns null if `file` was never opened.
  static OpenFile* of(const File& file) noexcept { return static_cast<OpenFile*>(file.object()); }

  // The following functions implement the functions of File with the same names. The caller must
  // hold a handle during the call, because the source may release all other handles.

  bool isOpen() const noexcept { return source_ != nullptr; }
  String error() const { return source_ == nullptr ? failure_ : source_->error(); }
  bool read(signed char& c);
  File::Window fill();
  void skip(std::size_t count) noexcept;

  /// Whether the next byte is buffered. Reading a buffered byte does not call the source.
  bool isBuffered() noexcept;

  /// Reads the next byte and attaches the cursor at this byte. If there is no next byte (see
  /// `read`) or the source throws, both pointers of the cursor are null and the cursor is not
  /// attached. The cursor must be detached before it is destroyed.
  void attach(const Cursor& cursor);
  /// The memory of the buffered bytes. Null before the source was called. If another shared_ptr to
  /// this memory exists, the next block is read into new memory.
  const std::shared_ptr<char[]>& block() const noexcept { return block_; }
  /// Sets the read position of the file to that of `cursor`, and both pointers of `cursor` to null.
  /// Does nothing if `cursor` is not attached.
  void detach(const Cursor& cursor) noexcept;

 private:
  ~OpenFile() override;
  void detachCursor() noexcept;
  bool refill();

  ByteSource* source_;
  // The reason why the file is not open.
  String failure_;
  std::shared_ptr<char[]> block_;
  // The next byte. Not used while a cursor is attached.
  const char* at_ = nullptr;
  // The end of the buffered bytes.
  const char* end_ = nullptr;
  // The attached cursor, or null.
  const Cursor* cursor_ = nullptr;
  bool isRefilling_ = false;
};

}  // namespace zn::detail
