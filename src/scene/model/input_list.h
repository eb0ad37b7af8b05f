// InputList: inputs by name, in creation order: the inputs of a node, the members of an object.
#pragma once

#include <cstdint>
#include <memory>

#include "foundation/hash_index.h"
#include "foundation/string.h"
#include "foundation/vector.h"

namespace zn::korvo_sdk {

class Input;

/// Holds pointers; the inputs belong to the scene. A short list is scanned, a long one has an
/// index.
class VSA_API InputList {
 public:
  std::uint64_t count() const noexcept { return inputs_.size; }
  /// The i-th input, in creation order; `i` is below `count`.
  Input* at(std::uint64_t i) const noexcept { return inputs_[i]; }
  /// The input of that name, or null.
  Input* find(const String& name) const noexcept;
  /// Appends an input whose name is not in the list yet.
  void append(Input* input);

 private:
  static constexpr std::uint64_t SCANNED = 8;

  ds::Vector<Input*> inputs_;
  std::unique_ptr<ds::HashIndex> index_;  // of all inputs, once there are more than SCANNED
};

}  // namespace zn::korvo_sdk
