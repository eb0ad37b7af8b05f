// SourceProgress: what a lexer knows of its source beyond the buffered bytes. Internal.
#pragma once

#include <cstdint>

#include <vsa/diagnostics/diagnostic.h>

namespace zn::korvo_sdk::impl {

/// Counts the tokens that are read one by one in the current block, and how often the 32-bit index
/// of the lexer has wrapped around, so that offsets have 64 bits. A source that does not read in
/// blocks is one block.
class SourceProgress {
 public:
  /// Begins a block at an index. Called before the block is read. A block must contain fewer than
  /// 2^32 bytes.
  void beginBlock(std::int32_t index) noexcept {
    const auto begin = static_cast<std::uint32_t>(index);
    if (begin < blockBegin_) ++wraps_;
    blockBegin_ = begin;
    tokensInBlock_ = 0;
  }
  void countToken() noexcept { ++tokensInBlock_; }
  /// Makes all offsets unknown. A source that is one block calls this function if it contains 2^32
  /// bytes or more.
  void forgetOffset() noexcept { isOffsetUnknown_ = true; }
  /// Marks the end of the source: it has no more characters.
  void end() noexcept { hasEnded_ = true; }

  /// Whether the last `count` tokens end in the current block, and offsets are known.
  bool hasInBlock(std::uint32_t count) const noexcept {
    return tokensInBlock_ >= count && !isOffsetUnknown_;
  }
  bool hasEnded() const noexcept { return hasEnded_; }
  /// Returns the offset of an index in the current block, in bytes from the start of the source, or
  /// UNKNOWN_OFFSET.
  std::int64_t offsetOf(std::int32_t index) const noexcept {
    const auto now = static_cast<std::uint32_t>(index);
    if (isOffsetUnknown_) return Diagnostic::UNKNOWN_OFFSET;
    return static_cast<std::int64_t>(wraps_ + (now < blockBegin_ ? 1 : 0)) << 32 | now;
  }

 private:
  // The index when the current block was read. The block begins there or one byte later.
  std::uint32_t blockBegin_ = 0;
  std::uint32_t tokensInBlock_ = 0;
  std::uint32_t wraps_ = 0;  // of the index, before the current block
  bool isOffsetUnknown_ = false;
  bool hasEnded_ = false;
};

}  // namespace zn::korvo_sdk::impl
