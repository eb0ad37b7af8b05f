// Compares two scenes by node and input.
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
  NodeRenamed,  ///< The nodes are a pair with different names (see NodeMatch).
  NodeType,
  InputRemoved,
  InputAdded,
  Value,       ///< The values, their types, or the targets of references differ.
  Connection,  ///< The connected outputs differ, or only one input is connected.
};

/// One difference between the scenes A and B. A view is missing if its scene has no such node or
/// input. For a difference between nodes, the views of inputs are missing.
struct Difference {
  DifferenceKind kind;
  vsa::NodeView nodeA, nodeB;
  /// The path of the input without the node. Empty if the difference is about the node. Valid
  /// during the call.
  std::string_view path = {};
  vsa::InputView a = {}, b = {};
  /// The comparison of two buffers, arrays of values or tuples of the same type. Not set for other
  /// values.
  std::optional<ListDifference> list = std::nullopt;
};

/// Receives the differences: first those of the nodes of A in the order of A, then the added nodes.
class DifferenceSink {
 public:
  virtual void add(const Difference& difference) = 0;

 protected:
  ~DifferenceSink() = default;
};

struct DiffOptions {
  Tolerance tolerance;
  /// Patterns for what is not compared: names of nodes, or whole paths such as "lamp.power".
  std::vector<std::string> ignored;
};

/// Compares the scenes and returns the number of differences. Ignores the comments, the version and
/// the time of the scenes, and the order of nodes and inputs. Does not recurse.
std::uint64_t compareScenes(vsa::SceneView a, vsa::SceneView b, const DiffOptions& options,
                            DifferenceSink& sink);

}  // namespace vsa_tools
