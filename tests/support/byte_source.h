// A file's bytes from memory, in blocks of a chosen size.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <stdexcept>
#include <string>
#include <utility>

#include <vsa/foundation/file.h>

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

/// Throws std::runtime_error("gone") once, in place of the byte at `at`, and delivers all bytes one
/// at a time.
class InterruptedSource final : public zn::ByteSource {
 public:
  InterruptedSource(std::string bytes, std::size_t at) : bytes_(std::move(bytes)), breaksAt_(at) {}

  std::size_t read(char* to, std::size_t) override {
    if (at_ == breaksAt_ && !isBroken_) {
      isBroken_ = true;
      throw std::runtime_error("gone");
    }
    if (at_ == bytes_.size()) return 0;
    *to = bytes_[at_++];
    return 1;
  }

 private:
  std::string bytes_;
  std::size_t breaksAt_;
  std::size_t at_ = 0;
  bool isBroken_ = false;
};

inline zn::File memoryFile(std::string bytes, std::size_t most = 0) {
  return zn::File(new MemorySource(std::move(bytes), most));
}

}  // namespace vsa_tests
