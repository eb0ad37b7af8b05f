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

// The first node whose name has the same tag: most often the one.
void NodeTable::prefetchNode(std::uint64_t nameHash) const noexcept {
  const std::uint64_t position = index_.find(nameHash, [](std::uint64_t) { return true; });
  if (position != ds::HashIndex::NONE) zn::detail::prefetchForWriting(&nodes_[position]);
}

// Compares the hash of the node found last before its name: the node may not be in the cache.
NodeImpl* NodeTable::find(const String& name) {
  const std::uint64_t hash = name.hash();
  const InlineName::Key key(name);
  if (hash == lastFoundHash_ && lastFound_->isNamed(key)) return lastFound_;
  NodeImpl* const found = look(hash, key);
  if (found == nullptr) {
    lastMissing_ = name;
    return nullptr;
  }
  lastFound_ = found;
  lastFoundHash_ = hash;
  return found;
}

NodeImpl* NodeTable::lookUp(std::string_view name) const noexcept {
  const auto isNamed = [&](std::uint64_t i) { return nodes_[i].nameView() == name; };
  const std::uint64_t i = index_.find(String::hashOf(name), isNamed);
  return i == ds::HashIndex::NONE ? nullptr : &nodes_[i];
}

NodeImpl* NodeTable::create(const String& type, const String& name) {
  const bool isMissing = !name.isEmpty() && lastMissing_ == name;
  if (!isMissing && find(name) != nullptr) return nullptr;
  const std::uint64_t hash = name.hash();
  const std::uint64_t position = nodes_.size();
  index_.reserveOne();
  NodeImpl& made = nodes_.make(type, name, position);
  index_.insert(hash, position);
  lastFound_ = &made;
  lastFoundHash_ = hash;
  lastMissing_ = String();
  return &made;
}

void NodeTable::remove(const String& name) {
  NodeImpl* const node = look(name.hash(), InlineName::Key(name));
  if (node == nullptr) return;
  node->markRemoved();
  index_.erase(name.hash(), node->position());
  lastFoundHash_ = 0;
}

}  // namespace zn::korvo_sdk
