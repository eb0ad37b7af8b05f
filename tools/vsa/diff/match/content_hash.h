// Hashes of the contents of nodes. They find nodes with the same content and different names.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <vsa/view.h>

namespace vsa_tools {

/// The links of a node: a hash of the input's path and of the connected output, and the target.
using NodeLinks = std::vector<std::pair<std::uint64_t, vsa::NodeView>>;

/// The content of a node without its name.
struct NodeContent {
  /// The hash of the type, of all values, and of the links whose targets have a counterpart. It
  /// does not depend on the order of the inputs.
  std::uint64_t hash = 0;
  /// The links whose targets have no counterpart.
  NodeLinks links;
};

/// Returns the content of a node. `hasCounterpart` returns whether a node of the same scene has a
/// counterpart of the same name in the other scene. Inputs whose paths, such as "lamp.power", match
/// one of the `ignored` patterns are omitted, with everything inside them.
NodeContent contentOf(vsa::NodeView node, const std::vector<std::string>& ignored,
                      const std::function<bool(vsa::NodeView)>& hasCounterpart);

/// Returns the links of a node whose targets have no counterpart, as contentOf() does.
NodeLinks linksOf(vsa::NodeView node, const std::vector<std::string>& ignored,
                  const std::function<bool(vsa::NodeView)>& hasCounterpart);

/// Returns a hash that depends on each bit of `a` and of `b`.
std::uint64_t mixHashes(std::uint64_t a, std::uint64_t b);

}  // namespace vsa_tools
