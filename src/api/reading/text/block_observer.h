// BlockObserver: receives a call for each block that a source of characters delivers. Internal.
#pragma once

#include <cstdint>
#include <string_view>

namespace vsa {

class BlockObserver {
 public:
  /// A block is about to be read, and the previous block is about to be overwritten.
  virtual void beforeBlock() = 0;
  /// A block was read. It is empty at the end of the text.
  virtual void afterBlock(std::string_view block) = 0;

 protected:
  ~BlockObserver() = default;
};

}  // namespace vsa
