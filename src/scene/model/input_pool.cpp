#include "scene/model/input_pool.h"

#include <limits>
#include <new>
#include <stdexcept>

#include "scene/model/input.h"

namespace zn::korvo_sdk {

namespace {

constexpr std::align_val_t SLAB_ALIGNMENT{256};
constexpr std::size_t SLAB_BYTES = std::size_t{1} << 16;
constexpr std::uint64_t PER_SLAB = SLAB_BYTES / sizeof(Input);

}  // namespace

// No input's end looks at another input: slab by slab is as good as any order.
InputPool::~InputPool() {
  for (std::uint64_t i = 0; i < slabs_.size; ++i) {
    const std::uint64_t count = i + 1 == slabs_.size ? inLastSlab_ : PER_SLAB;
    for (std::uint64_t k = 0; k < count; ++k) slabs_[i][k].~Input();
    ::operator delete(static_cast<void*>(slabs_[i]), SLAB_ALIGNMENT);
  }
}

// The place for the next input. It counts as taken once an input stands in it.
void* InputPool::place() {
  if (slabs_.size == 0 || inLastSlab_ == PER_SLAB) {
    slabs_.push_back(nullptr);  // room first: a slab in hand must not be lost
    try {
      slabs_[slabs_.size - 1] = static_cast<Input*>(::operator new(SLAB_BYTES, SLAB_ALIGNMENT));
    } catch (...) {
      --slabs_.size;
      throw;
    }
    inLastSlab_ = 0;
  }
  return slabs_[slabs_.size - 1] + inLastSlab_;
}

Input* InputPool::makeInput(Node* node, const String& name, AttrType type) {
  Input* const made = new (place()) Input(node, name, type);
  ++inLastSlab_;
  return made;
}

Input* InputPool::makeMember(Input* parent, const String& name, AttrType type) {
  Input* const made = new (place()) Input(parent, name, 0, type);
  ++inLastSlab_;
  return made;
}

Input* InputPool::makeElement(Input* parent, std::uint64_t index, AttrType type) {
  if (index > std::numeric_limits<std::uint32_t>::max()) {
    throw std::length_error("an array holds at most 2^32 elements");
  }
  Input* const made =
      new (place()) Input(parent, String(), static_cast<std::uint32_t>(index), type);
  ++inLastSlab_;
  return made;
}

}  // namespace zn::korvo_sdk
