#include "scene/model/node_table.h"

#include "foundation/base/prefetch.h"

namespace zn::korvo_sdk {

inline NodeImpl* NodeTable::look(std::uint64_t hash, const InlineName::Key& name) const {
  NodeImpl* found = nullptr;
  index_.find(hash, [&](std::uint64_t i) {
    NodeImpl& node = nodes_[i];
    if (!node.isNamed(name)) return false;
    found = &node;
    return true;
  });
  return found;
}

InputImpl* NodeTable::findInput(interfaces::INode& node, const String& name) {
  return static_cast<NodeImpl&>(node).find(name);
}

InputImpl* NodeTable::addInput(interfaces::INode& node, const String& name, AttrType type) {
  return static_cast<NodeImpl&>(node).addInput(name, type);
}

// Prefetches a node whose name has the same tag in the index (the low 32 bits of the hash). This is
// usually the node whose name has the hash `nameHash`.
void NodeTable::prefetchNode(std::uint64_t nameHash) const noexcept {
  const std::uint64_t position = index_.find(nameHash, [](std::uint64_t) { return true; });
  if (position != ds::HashIndex::NONE) zn::detail::prefetchForWriting(&nodes_[position]);
}

// Finds a node. Caches the name only if no node has it. A node that was found is not cached for two
// reasons. The resolution of links looks up many different nodes, so the cached node would rarely
// be the next one. The resolution also reuses the memory of its name for the next name. It cannot
// do so while the cache shares this memory.
NodeImpl* NodeTable::find(const String& name) {
  if (name == lastName_) return last_;
  NodeImpl* const found = look(name.hash(), InlineName::Key(name));
  if (found == nullptr) cache(name, nullptr);
  return found;
}

void NodeTable::cache(const String& name, NodeImpl* node) noexcept {
  lastName_ = name;
  last_ = node;
}

NodeImpl* NodeTable::lookUp(std::string_view name) const noexcept {
  const auto isNamed = [&](std::uint64_t i) { return nodes_[i].nameView() == name; };
  const std::uint64_t i = index_.find(String::hashOf(name), isNamed);
  return i == ds::HashIndex::NONE ? nullptr : &nodes_[i];
}

NodeImpl* NodeTable::create(const String& type, const String& name) {
  if (find(name) != nullptr) return nullptr;
  const std::uint64_t position = nodes_.size();
  index_.reserveOne();
  NodeImpl& made = nodes_.make(type, name, position);
  index_.insert(name.hash(), position);
  cache(name, &made);
  return &made;
}

void NodeTable::remove(const String& name) {
  NodeImpl* const node = find(name);
  if (node == nullptr) return;
  node->markRemoved();
  index_.erase(name.hash(), node->position());
  cache(name, nullptr);
}

}  // namespace zn::korvo_sdk
