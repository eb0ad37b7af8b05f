// InputPool: where the inputs of a scene live. They come from slabs aligned to 256 bytes, in
// creation order: the reader resolves links in the order of the low 8 bits of the inputs'
// addresses, so that order, too, is the same on every run.
#pragma once

#include <cstdint>

#include "foundation/string.h"
#include "foundation/vector.h"
#include "scene/attr_type.h"

namespace zn::korvo_sdk {

class Input;
class Node;

class VSA_API InputPool {
 public:
  InputPool() = default;
  InputPool(const InputPool&) = delete;
  InputPool& operator=(const InputPool&) = delete;
  ~InputPool();

  /// A new input of a node, member of an object or element of an array, owned by the pool.
  Input* makeInput(Node* node, const String& name, AttrType type);
  Input* makeMember(Input* parent, const String& name, AttrType type);
  Input* makeElement(Input* parent, std::uint64_t index, AttrType type);

 private:
  void* place();

  ds::Vector<Input*> slabs_;
  std::uint64_t inLastSlab_ = 0;  // inputs in the last slab; the others are full
};

}  // namespace zn::korvo_sdk
