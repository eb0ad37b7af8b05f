// ByteBuffer: bytes that are read from a file.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace vsa_tools {

/// A growing block of memory. Unlike a std::string, it does not fill new memory with zeros, and it
/// asks the system for large pages if the block is large. Both save time for a large file: the
/// system maps each page when it is first written (`./dev bench --check`, one file of 60 MB).
class ByteBuffer {
 public:
  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  std::string_view view() const { return {data_.get(), size_}; }

  /// Returns memory for `count` bytes after the last byte. They count as bytes of the buffer after
  /// add(). Views of the buffer may become invalid. Throws std::bad_alloc.
  char* room(std::size_t count) {
    if (capacity_ - size_ < count) grow(count);
    return data_.get() + size_;
  }
  /// Adds `count` bytes that were written to room().
  void add(std::size_t count) { size_ += count; }

 private:
  struct Free {
    void operator()(char* memory) const { std::free(memory); }
  };

  void grow(std::size_t count);

  std::unique_ptr<char, Free> data_;
  std::size_t size_ = 0, capacity_ = 0;
};

}  // namespace vsa_tools
