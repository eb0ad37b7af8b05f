#include "tools/vsa/check/rules/types/type_rules.h"

#include <algorithm>
#include <set>
#include <string>
#include <unordered_map>

#include "tools/vsa/check/hints/similar_names.h"
#include "tools/vsa/check/rules/types/value_fit.h"

namespace vsa_tools {

namespace {

using vsa::InputDescription;
using vsa::InputView;
using vsa::NodeView;
using vsa::TypeDescription;
using zn::korvo_sdk::FormerName;
using Place = SceneFinding::Place;

// Adds the nearest name as a hint. If it is sure, the edit writes it between `before` and `behind`.
void suggest(SceneFinding& finding, const NearestName& nearest, const std::string& before = "",
             const std::string& behind = "") {
  const std::optional<Suggestion> suggestion = nearest.found();
  if (!suggestion) return;
  finding.hint = "did you mean `" + suggestion->name + "`?";
  const bool isPlain = suggestion->name.find_first_of("\"\\") == std::string::npos;
  if (suggestion->isSure && isPlain) finding.replacement = before + suggestion->name + behind;
}

std::string listOf(const std::vector<std::string>& values) {
  constexpr std::size_t MAX_SHOWN = 8;
  std::string list = "the values are ";
  for (std::size_t i = 0; i < std::min(values.size(), MAX_SHOWN); ++i) {
    list += (i == 0 ? "`" : ", `") + values[i] + '`';
  }
  return list + (values.size() > MAX_SHOWN ? " and others" : "");
}

std::string_view currentName(const std::vector<FormerName>& formerNames, std::string_view name) {
  for (const FormerName& former : formerNames) {
    if (former.former == name) return former.current;
  }
  return name;
}

const InputDescription* inputNamed(const TypeDescription& type, std::string_view name) {
  const std::string_view current = currentName(type.formerInputs, name);
  const auto found = std::find_if(
      type.inputs.begin(), type.inputs.end(),
      [&](const InputDescription& input) { return input.declaration.name == current; });
  return found == type.inputs.end() ? nullptr : &*found;
}

class TypeRules {
 public:
  explicit TypeRules(SceneFindings& found) : found_(found) {
    for (const TypeDescription& type : found.input().types) types_[type.name] = &type;
  }

  void checkNode(const NodeView& node) {
    const TypeDescription* const type = typeNamed(node.type());
    if (type == nullptr) {
      addUnknownType(node);
      return;
    }
    suggested_.clear();
    for (const InputView input : node.inputs()) checkInput(*type, input);
    for (const InputDescription& input : type->inputs) {
      // If the node has the input under a misspelt name, only the misspelt name is reported, and
      // not also that the input is missing.
      if (input.isRequired && !suggested_.contains(input.declaration.name))
        checkRequired(node, *type, input);
    }
  }

 private:
  const TypeDescription* typeNamed(std::string_view name) const {
    const auto found = types_.find(name);
    return found == types_.end() ? nullptr : found->second;
  }

  // Adds a finding if the type of the node is unknown. A node that "define" or "with" created has
  // no type: it is stored with its name or "with" as the type.
  void addUnknownType(const NodeView& node) {
    if (node.type() == node.name() || node.type() == "with") return;
    NearestName nearest(node.type());
    for (const auto& [name, type] : types_) nearest.consider(name);
    SceneFinding finding{.rule = RuleId::UnknownType,
                         .path = std::string(node.name()),
                         .message = "no type " + std::string(node.type()) + " is described",
                         .place = Place::Type};
    suggest(finding, nearest);
    found_.add(finding);
  }

  void checkInput(const TypeDescription& type, const InputView& input) {
    const InputDescription* const described = inputNamed(type, input.name());
    if (described == nullptr) {
      NearestName nearest(input.name());
      for (const InputDescription& one : type.inputs) nearest.consider(one.declaration.name);
      SceneFinding finding{
          .rule = RuleId::UnknownInput,
          .path = input.path(),
          .message = "a " + type.name + " has no input " + std::string(input.name()),
          .place = Place::Path};
      suggest(finding, nearest);
      found_.add(finding);
      if (const auto suggestion = nearest.found()) suggested_.insert(suggestion->name);
      return;
    }
    checkValue(input, *described);
    checkOutput(input);
    for (const InputView element : input.elements()) checkOutput(element);
  }

  void checkValue(const InputView& input, const InputDescription& described) {
    const std::string path = input.path();
    const std::string problem = misfit(input, described);
    if (!problem.empty()) {
      found_.add({RuleId::WrongInputType, path, path + " is " + problem});
      return;
    }
    const std::string range = outOfRange(input, described);
    if (!range.empty()) found_.add({RuleId::OutOfRange, path, range});
    checkEnumeration(input, described.declaration.enumValues);
  }

  void checkEnumeration(const InputView& input, const std::vector<std::string>& values) {
    const std::optional<std::string_view> value = input.string();
    if (!value || values.empty()) return;
    if (std::find(values.begin(), values.end(), *value) != values.end()) return;
    NearestName nearest(*value);
    for (const std::string& one : values) nearest.consider(one);
    SceneFinding finding{
        .rule = RuleId::UnknownEnumValue,
        .path = input.path(),
        .message = "'" + std::string(*value) + "' is none of the values of this input",
        .hint = listOf(values)};
    suggest(finding, nearest, "\"", "\"");
    found_.add(finding);
  }

  void checkOutput(const InputView& input) {
    const vsa::ConnectionView connection = input.connection();
    if (!connection) return;
    const TypeDescription* const type = typeNamed(connection.node().type());
    if (type == nullptr) return;
    const std::string_view name = currentName(type->formerOutputs, connection.output());
    const std::vector<std::string>& outputs = type->outputs;
    if (std::find(outputs.begin(), outputs.end(), name) != outputs.end()) return;
    NearestName nearest(name);
    for (const std::string& one : outputs) nearest.consider(one);
    SceneFinding finding{
        .rule = RuleId::UnknownOutput,
        .path = input.path(),
        .message = "a " + type->name + " has no output " + std::string(connection.output())};
    suggest(finding, nearest, std::string(connection.node().name()) + '.');
    found_.add(finding);
  }

  void checkRequired(const NodeView& node, const TypeDescription& type,
                     const InputDescription& required) {
    const std::string& name = required.declaration.name;
    const auto* const lost = found_.input().lostInputs;
    if (lost != nullptr && lost->contains(name)) return;
    const auto inputs = node.inputs();
    const bool isThere = std::any_of(inputs.begin(), inputs.end(), [&](const InputView& input) {
      return currentName(type.formerInputs, input.name()) == name;
    });
    if (isThere) return;
    found_.add({RuleId::MissingInput, std::string(node.name()),
                "a " + type.name + " needs the input " + name, "assign or connect it",
                Place::Node});
  }

  SceneFindings& found_;
  std::unordered_map<std::string_view, const TypeDescription*> types_;
  std::set<std::string> suggested_;  // the names that were probably meant by unknown inputs
};

}  // namespace

void findTypeProblems(SceneFindings& found) {
  if (found.input().types.empty()) return;
  TypeRules rules(found);
  for (const NodeView node : found.input().scene.nodes()) rules.checkNode(node);
}

}  // namespace vsa_tools
