// A hash of the content of a node, to find nodes with different names and the same content.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <vsa/view.h>

namespace vsa_tools {

/// The content of a node, without its name. The order of inputs has no influence.
struct NodeContent {
  /// The hash of the type, of all values, and of the links to nodes that have a counterpart.
  std::uint64_t hash = 0;
  /// The other links: the hash of the input's path, and the target.
  std::vector<std::pair<std::uint64_t, vsa::NodeView>> links;
};

/// `hasCounterpart`: whether a node of the other scene has the same name. Inputs whose paths match
/// one of the `ignored` patterns are left out.
NodeContent contentOf(vsa::NodeView node, const std::vector<std::string>& ignored,
                      const std::function<bool(vsa::NodeView)>& hasCounterpart);

/// A hash that depends on each bit of `a` and of `b`.
std::uint64_t mixHashes(std::uint64_t a, std::uint64_t b);

}  // namespace vsa_tools
