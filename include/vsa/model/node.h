// Node: a named thing of a named type, with inputs and outputs. Nodes are made by their scene.
#pragma once

#include <cstdint>
#include <memory>

#include <vsa/foundation/string.h>
#include <vsa/model/input.h>
#include <vsa/model/output.h>
#include <vsa/scene/scene_interface.h>
#include "scene/model/storage/named_list.h"

namespace zn::korvo_sdk {

class DeclaredType;
class Scene;

/// A node of a Scene, which owns it. Lives as long as the scene, and makes do with a cache line.
class VSA_API Node final : public interfaces::INode {
 public:
  /// For the scene: use Scene::createNode.
  Node(const String& type, const String& name);
  ~Node();
  Node(const Node&) = delete;
  Node& operator=(const Node&) = delete;

  /// The scene that made it; never null.
  Scene* scene() const noexcept;
  /// True once the scene has removed the node. Its memory stays until the scene goes.
  bool isRemoved() const noexcept { return rare_ != nullptr && rare_->isRemoved; }
  /// The declaration of the node's type; null for an open type.
  const DeclaredType* declaration() const noexcept {
    return rare_ != nullptr ? rare_->declaration.get() : nullptr;
  }
  /// The inputs that exist, in creation order: how many, and the i-th, or null past the end.
  std::uint64_t inputCount() const noexcept { return inputs_.count(); }
  Input* inputAt(std::uint64_t index) const noexcept;

  // INode.

  String name() const override { return name_; }
  String type() const override { return type_; }
  /// A declared input counts as existing, and comes into being when asked for.
  bool hasInput(const String& name, AttrType type) override;
  /// The input of that name, or null; a declared one comes into being.
  Input* input(const String& name) override;
  /// An existing input of that name and type is returned; one of another type refuses (null), and
  /// so does a declared node type for a name that it does not declare.
  Input* createInput(const String& name, AttrType type) override;
  Input* createArray(const String& name, AttrType elementType) override;
  /// An open type has every output asked of it, a declared one those it declares; null for another.
  Output* output(const String& name) override;

 private:
  friend class Scene;

  // What few nodes have.
  struct Rare {
    std::shared_ptr<const DeclaredType> declaration;
    NamedList<Output> outputs;  // but for the first
    bool isRemoved = false;
  };

  Rare& rare();
  Input* make(const String& name, AttrType type, AttrType elementType);
  // `elementType`: of an array's elements, or the DataType of a buffer's; 0 while not set.
  Input* add(const String& name, AttrType type, std::int32_t elementType);
  Input* bringIntoBeing(const String& name);

  String type_;
  String name_;
  NamedList<Input> inputs_;
  Output* output_ = nullptr;  // the one that was asked for first
  std::unique_ptr<Rare> rare_;
};

}  // namespace zn::korvo_sdk
