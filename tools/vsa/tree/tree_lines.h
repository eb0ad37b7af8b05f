// TreeLine: the lines of a tree for one node. They show its links, and with --inputs its values.
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
  vsa::InputView input;    // for MoreElements the array
  std::uint64_t more = 0;  // the number of elements that are not shown

  /// The node that a link leads to. Missing for other lines.
  vsa::NodeView target() const;
  /// The text of the line without indentation: ".material = clay (material)".
  std::string text() const;
};

/// Returns the lines of a node in the order of its inputs. Values have lines only if `inputs` is
/// true. Inputs that other lines show have no line for their value: references to a node, inputs
/// with only a connection, and objects with members. In an array of objects, arrays or buffers,
/// only values in the first ten elements have lines, and a line with the number of the other
/// elements follows. The elements of other arrays are in the line of their array. All links have
/// lines.
std::vector<TreeLine> treeLines(vsa::NodeView node, bool inputs);

/// Returns whether treeLines() returns at least one line.
bool hasTreeLines(vsa::NodeView node, bool inputs);

/// Returns the name and the type of a node: "clay (material)".
std::string nodeTitle(vsa::NodeView node);

}  // namespace vsa_tools
