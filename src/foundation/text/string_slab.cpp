#include "foundation/text/string_slab.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace zn {

namespace detail {

StringSlab* StringSlab::make(std::size_t bytes) {
  void* const memory = std::malloc(bytes);
  if (memory == nullptr) throw std::bad_alloc();
  auto* const made = new (memory) StringSlab;
  made->retain();
  return made;
}

void StringSlab::release() noexcept {
  if (!users_.decrement()) return;
  this->~StringSlab();
  std::free(static_cast<void*>(this));
}

}  // namespace detail

String StringSlabs::copyOf(std::string_view text, std::uint64_t hash) {
  const std::size_t bytes = detail::StringBuffer::bytesFor(text.size());
  if (text.empty()) return String();
  if (bytes > MAX_BUFFER_BYTES) return String::copyOf(text, hash);
  if (size_ - used_ < bytes) addSlab(static_cast<std::uint32_t>(4 * bytes));
  std::byte* const place = reinterpret_cast<std::byte*>(slab_) + used_;
  detail::StringBuffer* const made = detail::StringBuffer::makeInSlab(place, used_, text.size());
  slab_->retain();
  used_ += static_cast<std::uint32_t>(bytes);
  return String::filled(made, text, hash);
}

// Allocates a new slab. The unused bytes of the current slab stay unused.
void StringSlabs::addSlab(std::uint32_t wanted) {
  constexpr std::uint32_t HEADER_BYTES = 8;
  static_assert(sizeof(detail::StringSlab) <= HEADER_BYTES);
  const std::uint32_t bytes =
      std::clamp(std::max(2 * size_, wanted), MIN_SLAB_BYTES, MAX_SLAB_BYTES);
  detail::StringSlab* const made = detail::StringSlab::make(bytes);
  if (slab_ != nullptr) slab_->release();
  slab_ = made;
  size_ = bytes;
  used_ = HEADER_BYTES;
}

}  // namespace zn
