// Output: what a node offers for inputs to be connected to.
#pragma once

#include <vsa/foundation/string.h>
#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk {

class Node;

/// A named output of a node. It comes into being when it is first asked for and lives as long as
/// the scene.
class VSA_API Output final : public interfaces::IOutput {
 public:
  /// For the node: use Node::output.
  Output(Node* node, String name) : node_(node), name_(std::move(name)) {}

  const String& name() const noexcept { return name_; }
  /// The node that the output is of; never null.
  Node* node() const noexcept { return node_; }

 private:
  Node* node_;
  String name_;
};

}  // namespace zn::korvo_sdk
