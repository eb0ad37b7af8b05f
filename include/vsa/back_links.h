// BackLinks: finds the inputs that refer to a node or are connected to one of its outputs.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include <vsa/foundation/api.h>
#include <vsa/view.h>

namespace vsa {

/// An index of all references and connections of a scene, by the node to which they lead. Links of
/// removed nodes are not in the index. The constructor visits every input, element and member of
/// the other nodes twice. Later changes of the scene do not change the index. On 64-bit systems,
/// the index takes 8 bytes for each link, and 8 bytes for each node that was ever created. While
/// the constructor runs, it takes another 8 bytes for each node, and memory proportional to the
/// largest number of elements and members inside one input of a node.
class VSA_API BackLinks {
 public:
  /// An index without links.
  BackLinks() = default;
  /// Creates the index of `scene`. Takes time and memory proportional to the size of the scene.
  /// Throws std::bad_alloc.
  explicit BackLinks(SceneView scene);

  /// Returns the inputs that refer to `node` or are connected to one of its outputs. Inputs of
  /// nodes that were created earlier come first. Within a node, inputs and members have the order
  /// of their creation, and elements have the order of their indices. An input comes before its own
  /// elements and members. An input with both a reference to `node` and a connection to one of its
  /// outputs is listed twice. The result is empty if `node` is missing, was removed, belongs to
  /// another scene or was created after the index. The result is valid until this object is
  /// destroyed or assigned to.
  std::span<const InputView> of(NodeView node) const noexcept;

 private:
  const zn::korvo_sdk::Scene* scene_ = nullptr;
  // The i-th number is the index in `links_` of the first link to the node in slot i. The last
  // number is the number of all links.
  std::vector<std::uint64_t> firsts_;
  std::vector<InputView> links_;
};

}  // namespace vsa
