// visitInputs(): visits all inputs of a node, with their elements and members. It does not recurse,
// because recursion into deeply nested inputs would need too much stack.
#pragma once

#include <vector>

#include <vsa/view.h>

namespace vsa_tools {

/// Calls `visit(input, type)` for each input of the node, and then for all elements and members in
/// no particular order.
template <class Visit>
void visitInputs(const vsa::NodeView& node, const Visit& visit) {
  std::vector<vsa::InputView> waiting;
  const auto visitOne = [&](const vsa::InputView& input) {
    const vsa::ValueType type = input.type();
    visit(input, type);
    if (type == vsa::ValueType::Array) {
      for (const vsa::InputView element : input.elements()) waiting.push_back(element);
    } else if (type == vsa::ValueType::Object) {
      for (const vsa::InputView member : input.members()) waiting.push_back(member);
    }
  };
  for (const vsa::InputView input : node.inputs()) visitOne(input);
  while (!waiting.empty()) {
    const vsa::InputView input = waiting.back();
    waiting.pop_back();
    visitOne(input);
  }
}

}  // namespace vsa_tools
