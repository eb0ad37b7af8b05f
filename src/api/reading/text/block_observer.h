// BlockObserver: is notified of each block that a source of characters returns. Internal.
#pragma once

#include <cstdint>
#include <string_view>

namespace vsa {

class BlockObserver {
 public:
  /// Called before a block is read. The previous block may be overwritten after the call.
  virtual void beforeBlock() = 0;
  /// Called after a block was read. At the end of a file or source, the block is empty. At the end
  /// of a text in memory, the function is not called.
  virtual void afterBlock(std::string_view block) = 0;

 protected:
  ~BlockObserver() = default;
};

}  // namespace vsa
