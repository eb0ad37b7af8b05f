// OpenFile: reads blocks from the source and moves the read position.
#include "foundation/io/open_file.h"

#include <algorithm>
#include <utility>

#include "foundation/base/block_size.h"

namespace zn::detail {

namespace {

constexpr std::size_t BLOCK_BYTES = blockBytes(std::size_t{1} << 18);

}  // namespace

OpenFile::OpenFile(ByteSource* source, String failure)
    : source_(source), failure_(std::move(failure)) {
  if (source_ != nullptr) source_->retain();
}

OpenFile::~OpenFile() {
  if (source_ != nullptr) source_->release();
}

bool OpenFile::read(signed char& c) {
  detachCursor();
  if (at_ == end_ && !refill()) return false;
  c = static_cast<signed char>(*at_++);
  return true;
}

File::Window OpenFile::fill() {
  detachCursor();
  if (at_ == end_) refill();
  return {at_, end_};
}

void OpenFile::skip(std::size_t count) noexcept {
  detachCursor();
  at_ += std::min(count, static_cast<std::size_t>(end_ - at_));
}

bool OpenFile::isBuffered() noexcept {
  detachCursor();
  return at_ != end_;
}

void OpenFile::attach(const Cursor& cursor) {
  detachCursor();
  cursor.at = cursor.end = nullptr;
  if (at_ == end_ && !refill()) return;
  cursor.at = at_;
  cursor.end = end_;
  cursor_ = &cursor;
}

void OpenFile::detach(const Cursor& cursor) noexcept {
  if (cursor_ == &cursor) detachCursor();
}

void OpenFile::detachCursor() noexcept {
  if (cursor_ == nullptr) return;
  at_ = cursor_->at + 1;
  cursor_->at = cursor_->end = nullptr;
  cursor_ = nullptr;
}

// Reads the next block from the source. Returns false at the end, after an error, and if the file
// is not open. If the source reads from its own file during the call, it gets no bytes.
bool OpenFile::refill() {
  if (source_ == nullptr || isRefilling_) return false;
  if (block_.use_count() != 1) block_ = std::make_shared_for_overwrite<char[]>(BLOCK_BYTES);
  // The file has no buffered bytes while the source writes to the block.
  at_ = end_ = block_.get();
  struct Refilling {
    bool& flag;
    explicit Refilling(bool& set) : flag(set) { flag = true; }
    ~Refilling() { flag = false; }
  } const refilling(isRefilling_);
  const std::size_t count = source_->read(block_.get(), BLOCK_BYTES);
  end_ = at_ + std::min(count, BLOCK_BYTES);
  return at_ != end_;
}

}  // namespace zn::detail
