// The lines that a tree has for one node: its links, and with --inputs its values.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <vsa/view.h>

namespace vsa_tools {

/// One line below a node.
struct TreeLine {
  enum class Kind { Value, Reference, Connection, MoreElements };

  Kind kind;
  vsa::InputView input;
  std::uint64_t more = 0;  // elements that MoreElements represents

  /// The node that a link leads to; missing for other lines.
  vsa::NodeView target() const;
  /// The line without the marks of the tree: ".material = clay (material)".
  std::string text() const;
};

/// The lines of a node in the order of its inputs. Of an array of objects, arrays or buffers, only
/// the first ten elements have lines for their values. All links have lines.
std::vector<TreeLine> treeLines(vsa::NodeView node, bool inputs);

/// Whether treeLines() returns any lines.
bool hasTreeLines(vsa::NodeView node, bool inputs);

/// The name and the type of a node: "clay (material)".
std::string nodeTitle(vsa::NodeView node);

}  // namespace vsa_tools
