// TextStore: the bytes of a text that was read, for diagnostics. Internal.
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
  /// The bytes from `offset` on, `count` or fewer; none if they are no longer available. Valid
  /// until the next call. Throws std::bad_alloc.
  virtual std::string_view bytes(std::uint64_t offset, std::size_t count) = 0;
  /// Called before the last block is overwritten.
  virtual void keepBlock() {}
  /// Called with each block that was read. The bytes of the block follow those of the previous
  /// block.
  virtual void addBlock(std::string_view /*block*/) noexcept {}
};

/// A text in memory.
class MemoryText final : public TextStore {
 public:
  explicit MemoryText(std::string_view text) noexcept : text_(text) {}
  std::string_view bytes(std::uint64_t offset, std::size_t count) override;

 private:
  std::string_view text_;
};

/// A regular file, parts of which are read again.
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

/// The last part of a text that can be read only once.
class KeptText final : public TextStore {
 public:
  std::string_view bytes(std::uint64_t offset, std::size_t count) override;
  void keepBlock() override;
  void addBlock(std::string_view block) noexcept override;

 private:
  // At least this many bytes are kept. The range of a problem in a longer statement is not found.
  static constexpr std::size_t KEPT_BYTES = std::size_t{1} << 20;

  std::string kept_;  // the bytes from keptOffset_ on, up to the block
  std::uint64_t keptOffset_ = 0;
  std::string_view block_;
  std::string joined_;
};

}  // namespace vsa
