#include "tools/vsa/check/rules/scene/input_visitor.h"
#include "tools/vsa/check/rules/scene/scene_rules.h"

namespace vsa_tools {

namespace {

using vsa::ValueType;

bool hasRealNumbers(ValueType type) {
  switch (type) {
    case ValueType::Null:
    case ValueType::Bool:
    case ValueType::Int:
    case ValueType::UInt:
    case ValueType::String:
    case ValueType::Node:
    case ValueType::Array:
    case ValueType::Object:
      return false;
    default:
      return true;
  }
}

}  // namespace

// Passes to each family only the inputs that may concern it. In 200 scenes of 7 KB, two thirds of
// the inputs concern one family, and one third concerns none.
void findInputProblems(SceneFindings& found) {
  const InputRulePointer links = linkRules(found);
  const InputRulePointer numbers = numberRules(found);
  const InputRulePointer indices = indexRules(found);
  for (const vsa::NodeView node : found.input().scene.nodes()) {
    visitInputs(node, [&](const vsa::InputView& input, ValueType type) {
      if (links && (type == ValueType::Node || input.connection())) links->visit(node, input, type);
      if (numbers && hasRealNumbers(type)) numbers->visit(node, input, type);
      if (indices && type == ValueType::Buffer) indices->visit(node, input, type);
    });
  }
  for (const InputRulePointer* rules : {&links, &numbers, &indices}) {
    if (*rules) (*rules)->finish();
  }
}

}  // namespace vsa_tools
