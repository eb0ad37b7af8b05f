// OutputNames: stores each name of a scene's outputs once. A scene may have millions of outputs
// that share a few names. An output therefore stores only the number of its name.
#pragma once

#include <cstdint>

#include <vsa/foundation/string.h>
#include <vsa/foundation/vector.h>
#include "foundation/containers/hash_index.h"

namespace zn::korvo_sdk {

class OutputNames {
 public:
  /// Returns the number of a name. Adds the name if it is new. Throws std::bad_alloc, or
  /// std::length_error for more than 2^32 - 1 names. If it throws std::bad_alloc, nothing changes.
  std::uint32_t numberOf(const String& name) {
    const auto isNamed = [&](std::uint64_t i) { return names_[i] == name; };
    const std::uint64_t found = index_.find(name.hash(), isNamed);
    return static_cast<std::uint32_t>(found == ds::HashIndex::NONE ? add(name) : found);
  }

  /// Returns the name with that number.
  const String& operator[](std::uint32_t number) const noexcept { return names_[number]; }

 private:
  std::uint64_t add(const String& name) {
    const std::uint64_t number = names_.size;
    index_.reserveOne();
    names_.push_back(name);
    index_.insert(name.hash(), number);
    return number;
  }

  ds::Vector<String> names_;
  ds::HashIndex index_;
};

}  // namespace zn::korvo_sdk
