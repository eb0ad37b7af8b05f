// Output: an output of a node, to which inputs can be connected.
#pragma once

#include <vsa/foundation/string.h>
#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk {

class Node;
class OutputImpl;

/// An output of a node. The first call of Node::output with its name creates it. The scene owns it,
/// and it exists as long as the scene.
class VSA_API Output : public interfaces::IOutput {
 public:
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  /// The name of the output. It is the current name if a text has used a former name.
  String name() const;
  /// The node that the output belongs to. It is never null.
  Node* node() const noexcept;

 private:
  friend OutputImpl;

  Output() = default;
  ~Output() = default;
};

}  // namespace zn::korvo_sdk
