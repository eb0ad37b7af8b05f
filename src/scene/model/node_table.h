// NodeTable: the nodes of a scene, in creation order and by name. Internal.
#pragma once

#include <cstdint>

#include <vsa/foundation/string.h>
#include "foundation/containers/hash_index.h"
#include "scene/model/node_impl.h"
#include "scene/model/storage/slabs.h"

namespace zn::korvo_sdk {

struct SceneStorage;

class NodeTable {
 public:
  explicit NodeTable(SceneStorage* owner) noexcept : nodes_(owner) {}

  /// Nodes ever made, removed ones included.
  std::uint64_t slots() const noexcept { return nodes_.size(); }
  /// Nodes that were not removed.
  std::uint64_t count() const noexcept { return index_.size(); }
  /// The node made as the i-th, removed or not; `position` is below `slots()`.
  NodeImpl& at(std::uint64_t position) const noexcept { return nodes_[position]; }

  /// The node of that name, or null. Remembers the answer for the next call and for `create`.
  NodeImpl* find(const String& name);
  /// A new node; null if the name exists. Throws std::bad_alloc; then nothing has changed.
  NodeImpl* create(const String& type, const String& name);
  /// Takes the node out of look-ups; does nothing for a name that no node has. Throws
  /// std::bad_alloc; then nothing has changed.
  void remove(const String& name);

 private:
  NodeImpl* look(std::uint64_t hash, const InlineName::Key& name) const;

  Slabs<NodeImpl, SceneStorage> nodes_;
  ds::HashIndex index_;              // of the nodes that were not removed
  std::uint64_t lastFoundHash_ = 0;  // of the name found last; 0, the hash of no name, for none
  NodeImpl* lastFound_ = nullptr;    // consecutive statements are mostly about one node
  String lastMissing_;  // last failed look-up, so that `create` need not repeat it; empty for none
};

}  // namespace zn::korvo_sdk
