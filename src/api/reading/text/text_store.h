// TextStore: gives access to the bytes of a text that were read, for diagnostics. Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "foundation/io/descriptor_source.h"

namespace vsa {

class TextStore {
 public:
  virtual ~TextStore() = default;
  /// Returns at most `count` bytes from `offset` on. Returns none if they are not available any
  /// more. The result is valid until the next call of a function of this object. Throws
  /// std::bad_alloc.
  virtual std::string_view bytes(std::uint64_t offset, std::size_t count) = 0;
  /// Called before the memory of the block that was added last may be overwritten.
  virtual void keepBlock() {}
  /// Called with each block that was read. A block begins where the previous block ends.
  virtual void addBlock(std::string_view /*block*/) noexcept {}
};

/// The store for a text in memory.
class MemoryText final : public TextStore {
 public:
  explicit MemoryText(std::string_view text) noexcept : text_(text) {}
  std::string_view bytes(std::uint64_t offset, std::size_t count) override;

 private:
  std::string_view text_;
};

/// The store for a regular file. It reads parts of the file again.
class FileText final : public TextStore {
 public:
  explicit FileText(const zn::detail::DescriptorSource& source) noexcept : source_(source) {}
  std::string_view bytes(std::uint64_t offset, std::size_t count) override;

 private:
  static constexpr std::size_t MIN_READ_BYTES = 16384;

  const zn::detail::DescriptorSource& source_;
  std::string buffer_;  // the bytes from bufferOffset_ on
  std::uint64_t bufferOffset_ = 0;
};

/// The store for a text that can be read only once. It contains the last part of the text.
class KeptText final : public TextStore {
 public:
  std::string_view bytes(std::uint64_t offset, std::size_t count) override;
  void keepBlock() override;
  void addBlock(std::string_view block) noexcept override;

 private:
  // The minimum number of bytes before the current block that are kept. If a statement is longer,
  // the range of a problem in it may not be found.
  static constexpr std::size_t KEPT_BYTES = std::size_t{1} << 20;

  std::string kept_;  // the bytes from keptOffset_ to the start of block_
  std::uint64_t keptOffset_ = 0;
  std::string_view block_;
  std::string joined_;
};

}  // namespace vsa
