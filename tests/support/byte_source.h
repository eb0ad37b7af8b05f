// A file's bytes from memory, in blocks of a chosen size.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <utility>

#include "foundation/file.h"

namespace vsa_tests {

class MemorySource final : public zn::ByteSource {
 public:
  /// Delivers `most` bytes at a time, or as many as it is asked for when `most` is 0.
  explicit MemorySource(std::string bytes, std::size_t most = 0)
      : bytes_(std::move(bytes)), most_(most) {}

  std::size_t read(char* to, std::size_t capacity) override {
    const std::size_t block = most_ == 0 ? capacity : std::min(most_, capacity);
    const std::size_t count = std::min(block, bytes_.size() - at_);
    std::memcpy(to, bytes_.data() + at_, count);
    at_ += count;
    return count;
  }

 private:
  std::string bytes_;
  std::size_t most_;
  std::size_t at_ = 0;
};

inline zn::File memoryFile(std::string bytes, std::size_t most = 0) {
  return zn::File(new MemorySource(std::move(bytes), most));
}

}  // namespace vsa_tests
