// What a writing is asked for: the layout of the text, and what to do about what it cannot carry.
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
  /// As in the scene.
  Created,
  /// By name, byte for byte.
  Name,
};

/// Where references and connections stand.
enum class LinkPlace : std::uint8_t {
  /// With the other statements of their node.
  WithNode,
  /// After all nodes. An input that has only a link is also written with its node, as `null`, so
  /// that the order of inputs stays.
  Last,
};

/// How buffers of single bytes (char, byte, rgb8, rgba8, argb8, colorref) are written. All others
/// are always lists of numbers.
enum class BufferForm : std::uint8_t {
  /// As lists of numbers.
  Plain,
  /// As compressed blocks.
  Compressed,
};

/// The comments at the beginning of the text.
enum class HeaderForm : std::uint8_t {
  /// The comments of the scene, and comments for the version and the time where the scene's do not
  /// say them. A version of 0 or 1 needs no comment.
  Complete,
  /// The comments of the scene only. A version or time that they do not say is a problem.
  Comments,
  /// None. The version, the time and the comments of the scene are not written.
  None,
};

/// Options of one writing.
struct WriteOptions {
  /// Columns of the longest line that a list of numbers may make; 0: lists are never broken. A list
  /// is broken between elements, a matrix between rows. Nothing else is broken.
  std::size_t lineWidth = 120;
  /// Numbers in each line of a list; 0: as many as `lineWidth` allows. If set, `lineWidth` does not
  /// count.
  std::size_t numbersPerLine = 0;
  PathForm paths = PathForm::Block;
  NodeOrder order = NodeOrder::Created;
  LinkPlace links = LinkPlace::WithNode;
  BufferForm buffers = BufferForm::Plain;
  HeaderForm header = HeaderForm::Complete;
  /// Writes a text without what it cannot carry, which WriteResult::problems then lists.
  bool lossy = false;
  /// How many problems the result keeps.
  std::size_t keptProblems = 1000;
};

}  // namespace vsa
