// The traversal of the inputs of a node, with their elements and members, depth first. It does not
// recurse, so it needs no more stack for nested inputs than for flat ones. It extends one path
// instead of creating a path for each input.
#pragma once

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <vsa/view.h>

namespace vsa_tools {

/// An input and its place in the node.
struct InputPlace {
  vsa::InputView input;
  /// The path without the node, such as "bones[2].at". Valid during the call.
  std::string_view path;
  /// The number of arrays and objects that contain the input.
  std::size_t depth;
  /// The index of the input among the inputs of its node, array or object.
  std::uint64_t index;
  bool isElement;
};

/// Returns the number of elements of an array or of members of an object, and 0 for other types.
inline std::uint64_t childCount(vsa::InputView input) {
  if (input.type() == vsa::ValueType::Array) return input.elements().size();
  return input.type() == vsa::ValueType::Object ? input.members().size() : 0;
}

/// Returns the element or member at `index`.
inline vsa::InputView childAt(vsa::InputView input, std::uint64_t index) {
  return input.type() == vsa::ValueType::Array ? input[index] : input.members()[index];
}

/// Appends ".name" or "[index]" to the path. The first name of a path has no period.
inline void appendStep(std::string& path, std::string_view name, std::uint64_t index,
                       bool isElement) {
  if (!isElement) {
    if (!path.empty()) path += '.';
    path += name;
    return;
  }
  char digits[20];
  path += '[';
  path.append(digits, std::to_chars(digits, digits + sizeof digits, index).ptr);
  path += ']';
}

/// Calls `visit(const InputPlace&)` for each input of the node. After an array or object, calls it
/// for the elements or members, but not if `visit` returned false for the array or object.
template <class Visit>
void walkInputs(vsa::NodeView node, Visit visit) {
  struct Frame {
    vsa::InputView parent;  // the array or object; missing for the inputs of the node
    std::uint64_t next, end;
    std::size_t pathLength;
  };
  const auto inputs = node.inputs();
  std::string path;
  std::vector<Frame> open = {{{}, 0, inputs.size(), 0}};
  while (!open.empty()) {
    Frame& frame = open.back();
    if (frame.next == frame.end) {
      open.pop_back();
      continue;
    }
    const std::uint64_t index = frame.next++;
    const bool isElement = frame.parent.type() == vsa::ValueType::Array;
    const vsa::InputView input = frame.parent ? childAt(frame.parent, index) : inputs[index];
    path.resize(frame.pathLength);
    appendStep(path, input.name(), index, isElement);
    const bool enters = visit(InputPlace{input, path, open.size() - 1, index, isElement});
    const std::uint64_t children = enters ? childCount(input) : 0;
    if (children > 0) open.push_back({input, 0, children, path.size()});
  }
}

}  // namespace vsa_tools
