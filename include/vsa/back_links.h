// BackLinks: who refers to a node, and what is connected to it.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include <vsa/foundation/api.h>
#include <vsa/view.h>

namespace vsa {

/// The links of a scene from their other end. Made once by a walk over all inputs, elements and
/// members; changes of the scene after that do not show. Takes 8 bytes for each link and for each
/// node ever made.
class VSA_API BackLinks {
 public:
  BackLinks() = default;
  /// Time and memory proportional to the scene. Throws std::bad_alloc.
  explicit BackLinks(SceneView scene);

  /// The inputs that refer to the node or are connected to one of its outputs, in the order of
  /// their nodes and of their creation. An input that does both comes twice. Empty for a node that
  /// is missing, was removed or belongs to another scene. Valid as long as this object.
  std::span<const InputView> of(NodeView node) const noexcept;

 private:
  const zn::korvo_sdk::Scene* scene_ = nullptr;
  std::vector<std::uint64_t> firsts_;  // by slot of the node, and one more: where its links begin
  std::vector<InputView> links_;
};

}  // namespace vsa
