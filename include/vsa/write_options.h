// Options for writing one text: the layout of the text, and what happens if the text cannot
// represent something.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vsa {

/// How statements name their inputs.
enum class PathForm : std::uint8_t {
  /// ".radius = 1.0;" in a block that "sphere ball:" begins.
  Block,
  /// "ball.radius = 1.0;" after "sphere ball;".
  Full,
};

/// The order of the nodes in the text, and therefore in the scene that is read from it.
enum class NodeOrder : std::uint8_t {
  /// The order of the scene.
  Created,
  /// Sorted by name, compared byte by byte.
  Name,
};

/// Where references and connections are written.
enum class LinkPlace : std::uint8_t {
  /// With the other statements of their node.
  WithNode,
  /// After all nodes. To keep the order of inputs, an input that has only a link is also written
  /// with its node, as `null`.
  Last,
};

/// How buffers of single bytes (char, byte, rgb8, rgba8, argb8, colorref) are written. All other
/// buffers are always lists of numbers.
enum class BufferForm : std::uint8_t {
  /// As lists of numbers.
  Plain,
  /// As compressed blocks.
  Compressed,
};

/// The comments at the beginning of the text.
enum class HeaderForm : std::uint8_t {
  /// The comments of the scene. If they do not contain the version and the time, comments for these
  /// are added. A version of 0 or 1 needs no comment.
  Complete,
  /// Only the comments of the scene. It is a problem if they do not contain the version or the
  /// time.
  Comments,
  /// No comments. The version, the time and the comments of the scene are not written.
  None,
};

/// Options for writing one text.
struct WriteOptions {
  /// The maximum width, in columns, of a line with a list of numbers; 0: no maximum. A longer list
  /// is broken between elements, a matrix between rows. Nothing else is broken.
  std::size_t lineWidth = 120;
  /// How many numbers each line of a list has; 0: as many as `lineWidth` allows. If this is not 0,
  /// `lineWidth` is ignored.
  std::size_t numbersPerLine = 0;
  PathForm paths = PathForm::Block;
  NodeOrder order = NodeOrder::Created;
  LinkPlace links = LinkPlace::WithNode;
  BufferForm buffers = BufferForm::Plain;
  HeaderForm header = HeaderForm::Complete;
  /// Leaves out what the text cannot represent. WriteResult::problems then lists it.
  bool lossy = false;
  /// The maximum number of problems in the result.
  std::size_t keptProblems = 1000;
};

}  // namespace vsa
