// NodeImpl: the data and the operations of a Node. Internal.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include <vsa/foundation/string.h>
#include <vsa/model/node.h>
#include "scene/model/input_impl.h"
#include "scene/model/output_impl.h"
#include "scene/model/storage/inline_name.h"
#include "scene/model/storage/named_list.h"
#include "scene/node_type_table.h"

namespace zn::korvo_sdk {

struct SceneStorage;

class NodeImpl final : public Node {
 public:
  /// `position` is the index of the node among the scene's nodes.
  NodeImpl(const String& type, const String& name, std::uint64_t position);
  ~NodeImpl() = default;

  bool isNamed(const InlineName::Key& name) const noexcept { return name_ == name; }
  std::string_view nameView() const noexcept { return name_.view(); }
  std::string_view typeView() const noexcept { return type_.view(); }
  std::uint32_t position() const noexcept { return firstOutput_.nodePosition(); }
  bool isRemoved() const noexcept { return cold_ != nullptr && cold_->isRemoved; }
  /// Marks the node as removed. If it throws std::bad_alloc, nothing changes.
  void markRemoved() { coldMembers().isRemoved = true; }
  /// Returns the declaration that the node's type had when the node was created. Returns null if
  /// the type was open then.
  const DeclaredType* declaration() const noexcept {
    return cold_ != nullptr ? cold_->declaration.get() : nullptr;
  }
  const NamedList<InputImpl>& inputs() const noexcept { return inputs_; }
  /// Returns the input of that name, or null. Creates the input if the node's type declares it and
  /// it does not exist yet.
  InputImpl* find(const String& name) {
    InputImpl* const found = inputs_.find(name);
    return found == nullptr && declaration() != nullptr ? instantiate(name) : found;
  }
  /// Creates an input after `find` returned null. Returns null for a name that the node's type does
  /// not declare.
  InputImpl* addInput(const String& name, AttrType type) {
    return declaration() == nullptr ? add(name, type, 0) : nullptr;
  }
  void remove(InputImpl& input) noexcept;
  SceneStorage& storage() const noexcept;

  // Implementations of the functions of INode.

  String name() const override { return name_.text(); }
  String type() const override { return type_; }
  bool hasInput(const String& name, AttrType type) override;
  InputImpl* input(const String& name) override { return find(name); }
  InputImpl* createInput(const String& name, AttrType type) override;
  InputImpl* createArray(const String& name, AttrType elementType) override;
  OutputImpl* output(const String& name) override;

 private:
  // Members that only few nodes need.
  struct ColdMembers {
    std::shared_ptr<const DeclaredType> declaration;
    // All outputs except the first output.
    NamedList<OutputImpl> outputs;
    bool isRemoved = false;
  };

  ColdMembers& coldMembers();
  InputImpl* create(const String& name, AttrType type, AttrType elementType);
  // Adds an input. `elementType` is the AttrType of an array's elements or the DataType of a
  // buffer. It is 0 if the element type is not known yet, and for an input of any other type.
  InputImpl* add(const String& name, AttrType type, std::int32_t elementType);
  InputImpl* instantiate(const String& name);
  OutputImpl* laterOutput(const String& name, std::uint32_t nameNumber);

  String type_;
  InlineName name_;
  NamedList<InputImpl> inputs_;
  // The first output. It has no name until the function `output` returns it.
  OutputImpl firstOutput_;
  std::unique_ptr<ColdMembers> cold_;
};

// A node fits into one cache line, so that a look-up of a short name reads only one cache line of
// the node. This matters because links look up nodes in random order.
#if defined(__LP64__)
static_assert(sizeof(NodeImpl) == 64);
#endif

inline const NodeImpl& Node::impl() const noexcept {
  return static_cast<const NodeImpl&>(*this);
}

}  // namespace zn::korvo_sdk
