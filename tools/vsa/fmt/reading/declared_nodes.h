// DeclaredNodes: the nodes that a text has declared so far. The text is read in parts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace vsa_tools {

/// A table of at most 64 MB with the declared nodes. It stores 8 bytes for each name: a hash, and
/// the number of the last part that declared the node. When the table is full, after some six
/// million names, further names are not stored.
class DeclaredNodes {
 public:
  /// Begins the next part. No node is declared in it yet.
  void beginPart() { ++part_; }
  /// Declares the node in the current part. Returns the result of isOfEarlierPart() before.
  bool declare(std::string_view name);
  void remove(std::string_view name);
  /// Loads the memory that a call for this name needs into the cache, without waiting for it.
  void prefetch(std::string_view name) const;
  /// Whether the node was declared in any part and not removed after that.
  bool isDeclared(std::string_view name) const { return partOf(name) != 0; }
  /// The same, but the last declaration is in an earlier part than the current one.
  bool isOfEarlierPart(std::string_view name) const { return isEarlier(partOf(name)); }

 private:
  // A slot of the table is 0 if it is empty. Otherwise its low bits are the number of the part, and
  // its high bits are the high bits of the hash. The number is 0 if the node was removed.
  static constexpr int PART_BITS = 20;
  static constexpr std::uint64_t PART_MASK = (std::uint64_t{1} << PART_BITS) - 1;

  bool isEarlier(std::uint64_t part) const { return part != 0 && part != part_; }
  std::uint64_t partOf(std::string_view name) const;
  std::size_t firstSlot(std::uint64_t hash) const {
    return (hash >> PART_BITS) & (slots_.size() - 1);
  }
  std::size_t find(std::uint64_t hash) const;
  void grow();

  std::vector<std::uint64_t> slots_ = std::vector<std::uint64_t>(1024);
  std::size_t used_ = 0;
  std::uint64_t part_ = 1;
};

}  // namespace vsa_tools
