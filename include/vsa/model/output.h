// Output: an output of a node, to which inputs can be connected.
#pragma once

#include <vsa/foundation/string.h>
#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk {

class Node;
class OutputImpl;

/// A named output of a node. The first look-up creates it. It belongs to the scene and exists as
/// long as the scene.
class VSA_API Output : public interfaces::IOutput {
 public:
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  String name() const;
  /// The node that has the output; never null.
  Node* node() const noexcept;

 private:
  friend OutputImpl;

  Output() = default;
  ~Output() = default;
};

}  // namespace zn::korvo_sdk
