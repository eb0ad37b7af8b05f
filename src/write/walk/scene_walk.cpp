#include "write/walk/scene_walk.h"

#include <charconv>

#include <vsa/scene/name_update.h>
#include <vsa/text_rules.h>
#include "write/walk/reasons.h"

namespace vsa::impl {

using zn::korvo_sdk::AttrType;
using zn::korvo_sdk::DeclaredType;
using zn::korvo_sdk::Input;
using zn::korvo_sdk::Node;
using zn::korvo_sdk::Output;

namespace {

std::shared_ptr<const DeclaredType> declaredTypeOf(const Node& node) {
  if (!zn::korvo_sdk::anyNodeTypes()) return nullptr;
  return zn::korvo_sdk::declaredType(node.typeView());
}

void appendIndex(std::string& path, std::uint64_t index) {
  char digits[20];
  const char* const end = std::to_chars(digits, digits + sizeof digits, index).ptr;
  path += '[';
  path.append(digits, static_cast<std::size_t>(end - digits));
  path += ']';
}

}  // namespace

const char* nodeProblem(const Node& node) {
  if (!isName(node.nameView())) return reasons::NODE_NAME;
  return isName(node.typeView()) ? nullptr : reasons::NODE_TYPE;
}

void SceneWalk::walk(const Node& node) {
  node_ = &node;
  path_.clear();
  if (const char* const reason = nodeProblem(node)) return problem(reason);
  type_ = declaredTypeOf(node);
  visitor_.beginNode(node);
  for (std::uint64_t i = 0; i < node.inputCount(); ++i) {
    enterNamed(*node.inputAt(i));
    walkOpen();
    path_.clear();
  }
  visitor_.endNode(node);
}

// Visits all elements and members of the arrays and objects in `open_`.
void SceneWalk::walkOpen() {
  while (!open_.empty()) {
    Frame& frame = open_.back();
    path_.resize(frame.pathLength);
    if (frame.next < frame.end) {
      enterNext(frame);
    } else {
      leave(frame);
      open_.pop_back();
    }
  }
}

void SceneWalk::enterNext(Frame& frame) {
  const std::uint64_t index = frame.next++;
  if (frame.input->type() == AttrType::Array) return enterElement(frame, index);
  enterNamed(*frame.input->member(index));
}

void SceneWalk::leave(const Frame& frame) {
  Input& input = *frame.input;
  if (input.type() == AttrType::Array && !frame.array.hasElementType(input.elementType())) {
    problem(reasons::TYPED_EMPTY_ARRAY, true);
  }
  connect(input);
}

// Visits an input of the node or a member of an object.
void SceneWalk::enterNamed(Input& input) {
  const zn::String& held = input.name();
  const std::string_view name = held.view();
  (path_ += '.') += name;
  if (const char* const reason = nameProblem(name)) return problem(reason);
  if (!open_.empty() || type_ == nullptr)
    return enter(input, Start(), planOf(input, Start()), true);
  const zn::korvo_sdk::DeclaredInput* const declaration = type_->input(name);
  if (declaration == nullptr) return problem(reasons::UNDECLARED_INPUT);
  const Start start = Start::of(declaration->declaration);
  enter(input, start, planOf(input, start), true);
}

void SceneWalk::enterElement(Frame& frame, std::uint64_t index) {
  Input& element = static_cast<Input&>(*frame.input->element(index));
  appendIndex(path_, index);
  if (frame.array.isMadeByLater(index)) return;
  const Start start = frame.array.startOfElement();
  if (start.exists && start.type != element.type()) return problem(reasons::MIXED_ELEMENT);
  const Plan plan = planOf(element, start);
  const bool isWritten = plan.reason == nullptr || plan.isReplaced;
  const char* const reason = isWritten ? frame.array.add(element, plan.form) : nullptr;
  if (reason != nullptr) return problem(reason);
  enter(element, start, plan, false);
}

void SceneWalk::enter(Input& input, const Start& start, const Plan& plan, bool isNamed) {
  if (plan.reason != nullptr) problem(plan.reason, plan.isReplaced);
  if (plan.reason != nullptr && !plan.isReplaced) return;
  if (plan.form == Form::Inside) {
    const std::uint64_t count =
        input.type() == AttrType::Array ? input.count() : input.memberCount();
    open_.push_back({&input, 0, count, path_.size(), ArrayState(input, start, isNamed)});
    return;
  }
  if (plan.form == Form::Reference && input.node() != nullptr) {
    if (const char* const reason = linkProblem(*input.node())) return problem(reason);
  }
  visitor_.value(*node_, path_, input, plan.form);
  connect(input);
}

void SceneWalk::connect(Input& input) {
  const Output* const output = input.connection();
  if (output == nullptr) return;
  if (const char* const reason = connectionProblem(*output)) return problem(reason);
  visitor_.connection(*node_, path_, *output);
}

// --- problems of names and links ---

const char* SceneWalk::nameProblem(std::string_view name) const {
  if (!isName(name)) return reasons::INPUT_NAME;
  const std::string* const current = type_ == nullptr ? nullptr : type_->currentInput(name);
  return current == nullptr || *current == name ? nullptr : reasons::FORMER_INPUT;
}

const char* SceneWalk::linkProblem(const Node& linked) const {
  if (linked.scene() != &scene_) return reasons::FOREIGN_NODE;
  return nodeProblem(linked) == nullptr ? nullptr : reasons::LINKED_NODE_NAME;
}

const char* SceneWalk::connectionProblem(const Output& output) const {
  if (const char* const reason = linkProblem(*output.node())) return reason;
  const zn::String name = output.name();
  if (!isOutputName(name.view())) return reasons::OUTPUT_NAME;
  const std::shared_ptr<const DeclaredType> type = declaredTypeOf(*output.node());
  if (type == nullptr) return nullptr;
  const std::string* const current = type->currentOutput(name.view());
  if (current != nullptr && *current != name.view()) return reasons::FORMER_OUTPUT;
  return type->hasOutput(name.view()) ? nullptr : reasons::NO_OUTPUT;
}

}  // namespace vsa::impl
