// NodeTable: the nodes of a scene. Finds a node by its index in creation order or by its name.
// Internal.
#pragma once

#include <cstdint>
#include <string_view>

#include <vsa/foundation/string.h>
#include "foundation/containers/hash_index.h"
#include "scene/library_scene.h"
#include "scene/model/node_impl.h"
#include "scene/model/storage/slabs.h"

namespace zn::korvo_sdk {

struct SceneStorage;

class NodeTable final : public LibraryScene {
 public:
  explicit NodeTable(SceneStorage* owner) noexcept : nodes_(owner) {}

  /// The number of created nodes, including removed nodes.
  std::uint64_t slots() const noexcept { return nodes_.size(); }
  /// The number of nodes, without removed nodes.
  std::uint64_t count() const noexcept { return index_.size(); }
  /// Returns the node at an index in creation order. The node may be removed. `position` must be
  /// less than `slots()`.
  NodeImpl& at(std::uint64_t position) const noexcept { return nodes_[position]; }

  /// Returns the node of that name, or null.
  NodeImpl* find(const String& name);
  /// Like the function above, for a name that is not a String. Does not cache the result, so that
  /// several threads may call it at the same time.
  NodeImpl* lookUp(std::string_view name) const noexcept;
  /// Creates a node. Returns null if a node has this name. If it throws std::bad_alloc, no node is
  /// created.
  NodeImpl* create(const String& type, const String& name);
  /// Removes the node of that name, so that look-ups no longer find it. Does nothing for an unknown
  /// name. If it throws std::bad_alloc, nothing changes.
  void remove(const String& name);

  InputImpl* findInput(interfaces::INode& node, const String& name) override;
  InputImpl* addInput(interfaces::INode& node, const String& name, AttrType type) override;
  void prefetchSlot(std::uint64_t nameHash) const noexcept override { index_.prefetch(nameHash); }
  void prefetchNode(std::uint64_t nameHash) const noexcept override;

 private:
  void cache(const String& name, NodeImpl* node) noexcept;
  NodeImpl* look(std::uint64_t hash, const InlineName::Key& name) const;

  Slabs<NodeImpl, SceneStorage> nodes_;
  // The index of the nodes that are not removed.
  ds::HashIndex index_;
  // A cache of one look-up: a name, and its node or null. It is updated when a look-up finds no
  // node, and when a node is created or removed. The statements after a declaration usually refer
  // to the declared node. A declaration looks up the name before it creates the node. This cache
  // saves 4 % of the instructions of the benchmark nodes.
  String lastName_;
  NodeImpl* last_ = nullptr;
};

}  // namespace zn::korvo_sdk
