// BackLinks: the inputs that refer to a node or are connected to one of its outputs.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include <vsa/foundation/api.h>
#include <vsa/view.h>

namespace vsa {

/// An index of the links of a scene, grouped by the node to which they refer. The constructor
/// visits all inputs, elements and members once; later changes of the scene have no effect on the
/// index. It takes 8 bytes for each link and for each node that was ever created.
class VSA_API BackLinks {
 public:
  BackLinks() = default;
  /// Takes time and memory proportional to the size of the scene. Throws std::bad_alloc.
  explicit BackLinks(SceneView scene);

  /// The inputs that refer to the node or are connected to one of its outputs, in the order of
  /// their nodes and of their creation. An input that does both is listed twice. Empty for a node
  /// that is missing, was removed or belongs to another scene. Valid as long as this object.
  std::span<const InputView> of(NodeView node) const noexcept;

 private:
  const zn::korvo_sdk::Scene* scene_ = nullptr;
  // The i-th entry is the index in `links_` of the first link to the node in slot i. The last entry
  // is the number of links.
  std::vector<std::uint64_t> firsts_;
  std::vector<InputView> links_;
};

}  // namespace vsa
