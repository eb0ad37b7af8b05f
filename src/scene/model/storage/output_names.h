// OutputNames: the names of a scene's outputs, each stored once. A scene has millions of outputs
// that share a few names, so an output stores the number of its name.
#pragma once

#include <cstdint>

#include <vsa/foundation/string.h>
#include <vsa/foundation/vector.h>
#include "foundation/containers/hash_index.h"

namespace zn::korvo_sdk {

class OutputNames {
 public:
  /// The number of a name. Adds the name if it is new. Throws std::bad_alloc and, past 2^32 - 1
  /// names, std::length_error; then nothing has changed.
  std::uint32_t numberOf(const String& name) {
    if (last_ < names_.size && names_[last_] == name) return last_;
    const auto isNamed = [&](std::uint64_t i) { return names_[i] == name; };
    const std::uint64_t found = index_.find(name.hash(), isNamed);
    last_ = static_cast<std::uint32_t>(found == ds::HashIndex::NONE ? add(name) : found);
    return last_;
  }

  /// The name with that number.
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
  std::uint32_t last_ = 0;  // number returned last: consecutive links often name the same output
};

}  // namespace zn::korvo_sdk
