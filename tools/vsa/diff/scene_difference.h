// The differences between two scenes, by node and input.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <vsa/view.h>
#include "tools/vsa/diff/list_difference.h"
#include "tools/vsa/diff/tolerance.h"

namespace vsa_tools {

enum class DifferenceKind {
  NodeRemoved,
  NodeAdded,
  NodeRenamed,  ///< The nodes have the same type and content and different names.
  NodeType,
  InputRemoved,
  InputAdded,
  Value,       ///< The values, their types, or the targets of references differ.
  Connection,  ///< The connected outputs differ, or only one input is connected.
};

/// One difference. The views of a scene are missing if the difference concerns only the other
/// scene.
struct Difference {
  DifferenceKind kind;
  vsa::NodeView nodeA, nodeB;
  /// The path of the input without the node; empty if the difference concerns the node. Valid
  /// during the call.
  std::string_view path = {};
  vsa::InputView a = {}, b = {};
  /// Set for lists of the same type.
  std::optional<ListDifference> list = std::nullopt;
};

/// Receives the differences: those of the nodes of A in their order, then the added nodes.
class DifferenceSink {
 public:
  virtual void add(const Difference& difference) = 0;

 protected:
  ~DifferenceSink() = default;
};

struct DiffOptions {
  Tolerance tolerance;
  /// Patterns of node names and of whole paths ("lamp.power") that are not compared.
  std::vector<std::string> ignored;
};

/// Compares the scenes and returns the number of differences. The order of nodes and of inputs,
/// comments, version and time are not compared. Does not recurse.
std::uint64_t compareScenes(vsa::SceneView a, vsa::SceneView b, const DiffOptions& options,
                            DifferenceSink& sink);

}  // namespace vsa_tools
