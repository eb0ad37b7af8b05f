// Byte sources in memory.
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
  /// Each read returns at most `bytesPerRead` bytes. 0 means no limit.
  explicit MemorySource(std::string bytes, std::size_t bytesPerRead = 0)
      : bytes_(std::move(bytes)), bytesPerRead_(bytesPerRead) {}

  std::size_t read(char* to, std::size_t capacity) override {
    const std::size_t limit = bytesPerRead_ == 0 ? capacity : std::min(bytesPerRead_, capacity);
    const std::size_t count = std::min(limit, bytes_.size() - at_);
    std::memcpy(to, bytes_.data() + at_, count);
    at_ += count;
    return count;
  }

 private:
  std::string bytes_;
  std::size_t bytesPerRead_;
  std::size_t at_ = 0;
};

/// A source that returns one byte per read. The first read of the byte at `at` throws
/// std::runtime_error("gone").
class InterruptedSource final : public zn::ByteSource {
 public:
  InterruptedSource(std::string bytes, std::size_t at) : bytes_(std::move(bytes)), throwsAt_(at) {}

  std::size_t read(char* to, std::size_t) override {
    if (at_ == throwsAt_ && !hasThrown_) {
      hasThrown_ = true;
      throw std::runtime_error("gone");
    }
    if (at_ == bytes_.size()) return 0;
    *to = bytes_[at_++];
    return 1;
  }

 private:
  std::string bytes_;
  std::size_t throwsAt_;
  std::size_t at_ = 0;
  bool hasThrown_ = false;
};

/// Returns a File that reads from a MemorySource.
inline zn::File memoryFile(std::string bytes, std::size_t bytesPerRead = 0) {
  return zn::File(new MemorySource(std::move(bytes), bytesPerRead));
}

}  // namespace vsa_tests
