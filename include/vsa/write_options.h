// The options for writing one text: its layout, and what happens if a text cannot represent
// something.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vsa {

/// How statements refer to an input.
enum class PathForm : std::uint8_t {
  /// Without the node, in a block: ".radius = 1.0;" after "sphere ball:".
  Block,
  /// With the node: "ball.radius = 1.0;" after "sphere ball;".
  Full,
};

/// The order of the nodes in the text. A scene that is read from the text has the same order.
enum class NodeOrder : std::uint8_t {
  /// The order in which the nodes were created.
  Created,
  /// The order of the names, compared byte by byte.
  Name,
};

/// Where references and connections are in the text.
enum class LinkPlace : std::uint8_t {
  /// With the other statements of the same node.
  WithNode,
  /// After all nodes, each with the name of its node. An input with only a link is written with its
  /// node, too, as `null`. This keeps the order of the inputs.
  Last,
};

/// How buffers of single bytes (char, byte, rgb8, rgba8, argb8, colorref) are written. Other
/// buffers are always lists of numbers.
enum class BufferForm : std::uint8_t {
  /// As a list of numbers.
  Plain,
  /// As a compressed text: see vsa/foundation/decompress.h. A buffer without elements is a list.
  Compressed,
};

/// The comments at the beginning of the text.
enum class HeaderForm : std::uint8_t {
  /// The comments of the scene; one that no text can represent is a WriteProblem. If they do not
  /// contain the version or the time of the scene, a comment for it is added. A version of 0 or 1
  /// needs no comment, unless a comment contains another version. It is a WriteProblem if no
  /// comment can contain the time, or if a comment contains a time and the scene has none.
  Complete,
  /// Only the comments of the scene; one that no text can represent is a WriteProblem. A version or
  /// a time for which Complete would add a comment is a WriteProblem, too, and so is everything
  /// that is one for Complete.
  Comments,
  /// No comments. The text contains neither the comments of the scene nor its version and time.
  None,
};

/// The options for writing one text.
struct WriteOptions {
  /// The maximum width, in bytes, of a line of a buffer's numbers. 0 means no maximum. A longer
  /// list is split between elements, and between the rows of matrices. An element or row that is
  /// longer has a line of its own, except that the first one stays in the line of the input. Other
  /// lines are not split.
  std::size_t lineWidth = 120;
  /// The number of numbers in each line of a buffer's list except the last. 0 means as many as
  /// `lineWidth` allows. For any other number, `lineWidth` has no effect, and a line may end inside
  /// an element.
  std::size_t numbersPerLine = 0;
  /// How statements refer to an input.
  PathForm paths = PathForm::Block;
  /// The order of the nodes.
  NodeOrder order = NodeOrder::Created;
  /// Where links are written.
  LinkPlace links = LinkPlace::WithNode;
  /// How buffers of single bytes are written.
  BufferForm buffers = BufferForm::Plain;
  /// The comments at the beginning of the text.
  HeaderForm header = HeaderForm::Complete;
  /// Whether to write a scene that no text can represent completely, and to leave out or replace
  /// what no text can represent. WriteResult::problems then lists what was left out or replaced. If
  /// false, a scene with a problem is not written.
  bool lossy = false;
  /// The maximum number of elements of WriteResult::problems.
  std::size_t keptProblems = 1000;
};

}  // namespace vsa
