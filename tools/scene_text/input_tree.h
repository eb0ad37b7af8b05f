// The way through an input and everything in it, without recursion: a text may nest its inputs
// deeply, and a dump must not need more stack for it.
#pragma once

#include <cstdint>
#include <vector>

#include <vsa/model/input.h>

namespace vsa_tools {

/// Where an input stands among those around it.
struct InputPlace {
  /// How many arrays and objects are around it.
  size_t depth;
  /// Its index among its parent's elements or members.
  std::uint64_t index;
  bool isElement;
};

/// The elements of an array, the members of an object, else nothing.
inline std::uint64_t childCount(zn::korvo_sdk::Input& input) {
  if (input.type() == zn::korvo_sdk::AttrType::Array) return input.count();
  return input.type() == zn::korvo_sdk::AttrType::Object ? input.memberCount() : 0;
}

/// Calls `visitor.open(Input&, const InputPlace&)` on `root` and everything in it, in order, and
/// for each, once all in it was visited, `visitor.close(Input&)`.
template <class Visitor>
void walkInput(zn::korvo_sdk::Input& root, Visitor& visitor) {
  using zn::korvo_sdk::AttrType;
  using zn::korvo_sdk::Input;
  struct Frame {
    Input* input;
    std::uint64_t next, end;
  };
  std::vector<Frame> open;
  const auto enter = [&](Input& input, const InputPlace& place) {
    visitor.open(input, place);
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
