// Rules about the scene that a text creates.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tools/vsa/check/rules/rule_findings.h"
#include "tools/vsa/check/text/path_key.h"

namespace vsa_tools {

/// A finding about an input or a node, before its place in the text is known.
struct SceneFinding {
  /// The part of the text to show: the last value of the input, the first occurrence of its path,
  /// the name of the node in its declaration, or the type in that declaration. For an object or
  /// array, value and path are in the first statement about a member or element. The path is then
  /// its first name, and the value is that of the element, or the whole path for a member.
  enum class Place : std::uint8_t { Value, Path, Node, Type };

  RuleId rule;
  std::string path;  ///< The path of the input, or the name of the node.
  std::string message;
  std::string hint = {};
  Place place = Place::Value;
  std::string replacement = {};  ///< What the place becomes by the edit. Empty without an edit.
};

/// Collects the findings about a scene. Then finds their places in one pass over the text.
class SceneFindings {
 public:
  SceneFindings(const RuleInput& input, RuleFindings& found) : input_(input), found_(found) {}

  const RuleInput& input() const { return input_; }
  bool isEnabled(RuleId rule) const { return found_.isEnabled(rule); }
  void add(const SceneFinding& finding);
  /// Finds the places of all findings and delivers the findings.
  void finish();

 private:
  // A SceneFinding that waits for finish(), which finds its place. To save memory, it has the key
  // of the path instead of the path, and long quotations in its texts are shortened.
  struct Waiting {
    RuleId rule;
    PathKey input;
    SceneFinding::Place place;
    std::string message;
    std::string hint;
    std::string replacement;
  };

  const RuleInput& input_;
  RuleFindings& found_;
  std::vector<Waiting> waiting_;
};

/// A family of rules. It visits those inputs, elements and members of a scene that concern the
/// family.
class InputRule {
 public:
  virtual ~InputRule() = default;
  /// `type` is the type of the input.
  virtual void visit(const vsa::NodeView& node, const vsa::InputView& input,
                     vsa::ValueType type) = 0;
  /// Called after the last input.
  virtual void finish() {}
};

using InputRulePointer = std::unique_ptr<InputRule>;

// Return a family, or null if none of its rules runs.
InputRulePointer linkRules(SceneFindings& found);
InputRulePointer numberRules(SceneFindings& found);
InputRulePointer indexRules(SceneFindings& found);
/// Runs the families of linkRules(), numberRules() and indexRules().
void findInputProblems(SceneFindings& found);

void findNameProblems(SceneFindings& found);

}  // namespace vsa_tools
