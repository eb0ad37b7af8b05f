// Keys of nodes and inputs: hashes of their paths. A key has the same small size for names of any
// length.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>

namespace vsa_tools {

/// A hash of the path of a node or an input. Two different paths have the same key with a
/// probability of 2^-64. Rules and hints may then be wrong.
using PathKey = std::uint64_t;

PathKey keyOfNode(std::string_view name);
/// Returns the key of the input `name` of a node, or of the member `name` of an object.
PathKey keyOfMember(PathKey parent, std::string_view name);
PathKey keyOfElement(PathKey array, std::uint64_t index);
/// Returns keys of nodes. After a node is removed, a new node of the same name gets another key.
/// The key 0 is that of no node, and remains 0.
class NodeGenerations {
 public:
  void remove(PathKey node) {
    ++removals_[node];
    last_ = lastKey_ = 0;
  }
  PathKey keyOf(PathKey node) {
    if (removals_.empty()) return node;
    if (node != last_) {
      const auto found = removals_.find(node);
      last_ = node;
      lastKey_ = found == removals_.end() ? node : keyOfElement(node, found->second);
    }
    return lastKey_;
  }

 private:
  std::unordered_map<PathKey, std::uint64_t> removals_;
  PathKey last_ = 0, lastKey_ = 0;  // the last node that keyOf looked up, and its key
};

/// Returns the key of a path in the form that messages have, such as "rig.bones[2].at". An index
/// that is no number counts as 0. If nodes of that name were removed (`nodes` knows how many), it
/// is the key for the newest node of the name.
PathKey keyOfPath(std::string_view path, NodeGenerations& nodes);
/// Like keyOfPath() above, without regard to removed nodes.
inline PathKey keyOfPath(std::string_view path) {
  NodeGenerations nodes;
  return keyOfPath(path, nodes);
}

}  // namespace vsa_tools
