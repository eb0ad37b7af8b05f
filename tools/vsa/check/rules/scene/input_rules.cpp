#include "tools/vsa/check/rules/scene/input_visitor.h"
#include "tools/vsa/check/rules/scene/scene_rules.h"

namespace vsa_tools {

void findInputProblems(SceneFindings& found) {
  const InputRulePointer links = linkRules(found);
  const InputRulePointer numbers = numberRules(found);
  for (const vsa::NodeView node : found.input().scene.nodes()) {
    visitInputs(node, [&](const vsa::InputView& input) {
      if (links) links->visit(node, input);
      if (numbers) numbers->visit(node, input);
    });
  }
  if (links) links->finish();
  if (numbers) numbers->finish();
}

}  // namespace vsa_tools
