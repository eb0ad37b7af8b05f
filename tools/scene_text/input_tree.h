// Depth-first traversal of an input with its elements and members. It does not recurse, so deeply
// nested inputs need no more stack than flat ones.
#pragma once

#include <cstdint>
#include <vector>

#include <vsa/model/input.h>

namespace vsa_tools {

/// The position of an input in the tree.
struct InputPosition {
  /// The number of arrays and objects of the tree that contain it. 0 for the root.
  size_t depth;
  /// The index among the elements or members of its parent. 0 for the root.
  std::uint64_t index;
  /// Whether the parent is an array. False for the root.
  bool isElement;
};

/// The number of elements of an array or members of an object; 0 for other types.
inline std::uint64_t childCount(zn::korvo_sdk::Input& input) {
  if (input.type() == zn::korvo_sdk::AttrType::Array) return input.count();
  return input.type() == zn::korvo_sdk::AttrType::Object ? input.memberCount() : 0;
}

/// Calls `visitor.open(Input&, const InputPosition&)` for `root` and for each input inside it, in
/// order, and `visitor.close(Input&)` for each of them after the inputs inside it.
template <class Visitor>
void walkInput(zn::korvo_sdk::Input& root, Visitor& visitor) {
  using zn::korvo_sdk::AttrType;
  using zn::korvo_sdk::Input;
  struct Frame {
    Input* input;
    std::uint64_t next, end;
  };
  std::vector<Frame> open;
  const auto enter = [&](Input& input, const InputPosition& position) {
    visitor.open(input, position);
    open.push_back({&input, 0, childCount(input)});
  };
  enter(root, {0, 0, false});
  while (!open.empty()) {
    Frame& frame = open.back();
    if (frame.next == frame.end) {
      visitor.close(*frame.input);
      open.pop_back();
      continue;
    }
    const std::uint64_t index = frame.next++;
    const bool isElement = frame.input->type() == AttrType::Array;
    Input* child =
        isElement ? static_cast<Input*>(frame.input->element(index)) : frame.input->member(index);
    enter(*child, {open.size(), index, isElement});
  }
}

}  // namespace vsa_tools
