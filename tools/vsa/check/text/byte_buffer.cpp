#include "tools/vsa/check/text/byte_buffer.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

namespace vsa_tools {

namespace {

constexpr std::size_t LARGE_PAGE_BYTES = std::size_t{1} << 21;
constexpr std::size_t MIN_LARGE_BYTES = 2 * LARGE_PAGE_BYTES;

// Allocates memory. For a large size, it begins at a large page.
char* allocate(std::size_t bytes) {
  if (bytes < MIN_LARGE_BYTES) return static_cast<char*>(std::malloc(bytes));
  const std::size_t pages = (bytes + LARGE_PAGE_BYTES - 1) / LARGE_PAGE_BYTES;
  void* const memory = std::aligned_alloc(LARGE_PAGE_BYTES, pages * LARGE_PAGE_BYTES);
#if defined(MADV_HUGEPAGE)
  // A failure is harmless: the system then takes small pages.
  if (memory != nullptr) ::madvise(memory, pages * LARGE_PAGE_BYTES, MADV_HUGEPAGE);
#endif
  return static_cast<char*>(memory);
}

}  // namespace

void ByteBuffer::grow(std::size_t count) {
  if (count > std::numeric_limits<std::size_t>::max() / 4 - size_) throw std::bad_alloc();
  const std::size_t capacity = std::max(size_ + count, 2 * capacity_);
  std::unique_ptr<char, Free> data(allocate(capacity));
  if (data == nullptr) throw std::bad_alloc();
  if (size_ > 0) std::memcpy(data.get(), data_.get(), size_);
  data_ = std::move(data);
  capacity_ = capacity;
}

}  // namespace vsa_tools
