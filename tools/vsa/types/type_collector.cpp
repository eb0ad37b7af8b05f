#include "tools/vsa/types/type_collector.h"

#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "tools/scene_text/printable_text.h"

namespace vsa_tools {

namespace {

using vsa::InputView;
using vsa::ValueType;

bool isNumber(ValueType type) {
  return type == ValueType::Int || type == ValueType::UInt || type == ValueType::Real;
}

// Returns the type for an input with values of both types, or Null if it gets no type.
ValueType commonType(ValueType a, ValueType b) {
  if (a == b) return a;
  if (isNumber(a) && isNumber(b)) return ValueType::Real;
  return ValueType::Null;
}

/// Appends a member whose name the object does not have yet. The operator [] would search all
/// members for the name.
void append(nlohmann::ordered_json& object, const std::string& name, nlohmann::ordered_json value) {
  object.get_ref<nlohmann::ordered_json::object_t&>().emplace_back(name, std::move(value));
}

}  // namespace

void TypeCollector::add(const TypedScene& scene) {
  for (const vsa::NodeView node : scene.view().nodes()) {
    if (!scene.hasType(node)) continue;
    Type& type = types_[std::string(node.type())];
    for (const InputView input : node.inputs()) {
      addInput(type.inputs[std::string(input.name())], input);
    }
  }
  for (const vsa::NodeView node : scene.view().nodes()) {
    std::vector<InputView> waiting;
    for (const InputView input : node.inputs()) waiting.push_back(input);
    while (!waiting.empty()) {
      const InputView input = waiting.back();
      waiting.pop_back();
      addOutput(scene, input);
      for (const InputView element : input.elements()) waiting.push_back(element);
      for (const InputView member : input.members()) waiting.push_back(member);
    }
  }
}

void TypeCollector::addInput(Input& known, const InputView& input) {
  const ValueType type = input.type();
  if (type == ValueType::Null) return;  // for example an input that is only connected
  const bool isFirst = known.type == ValueType::Null && !known.hasSeveralTypes;
  known.type = isFirst ? type : commonType(known.type, type);
  known.hasSeveralTypes = known.type == ValueType::Null;
  const ValueType element = input.elementType();
  if (element != ValueType::Null) {
    const bool differs = known.elementType != ValueType::Null && known.elementType != element;
    known.hasSeveralElements = known.hasSeveralElements || differs;
    known.elementType = element;
  }
  const vsa::ElementType numbers = input.buffer().elementType();
  if (numbers != vsa::ElementType::Null) {
    const bool differs = known.bufferType != vsa::ElementType::Null && known.bufferType != numbers;
    known.hasSeveralElements = known.hasSeveralElements || differs;
    known.bufferType = numbers;
  }
}

void TypeCollector::addOutput(const TypedScene& scene, const InputView& input) {
  const vsa::ConnectionView connection = input.connection();
  if (!connection || !scene.hasType(connection.node())) return;
  types_[std::string(connection.node().type())].outputs.emplace(connection.output());
}

std::string TypeCollector::json() const {
  nlohmann::ordered_json types = nlohmann::ordered_json::object();
  for (const auto& [name, type] : types_) {
    nlohmann::ordered_json inputs = nlohmann::ordered_json::object();
    for (const auto& [inputName, input] : type.inputs) {
      nlohmann::ordered_json one = nlohmann::ordered_json::object();
      if (input.type != ValueType::Null) one["type"] = vsa::typeName(input.type);
      const bool hasElements = !input.hasSeveralElements;
      if (hasElements && input.type == ValueType::Array && input.elementType != ValueType::Null) {
        one["elements"] = vsa::typeName(input.elementType);
      }
      if (hasElements && input.type == ValueType::Buffer &&
          input.bufferType != vsa::ElementType::Null) {
        one["elements"] = vsa::typeName(input.bufferType);
      }
      append(inputs, inputName, std::move(one));
    }
    append(types, name, {{"inputs", std::move(inputs)}, {"outputs", type.outputs}});
  }
  const nlohmann::ordered_json all = {{"types", std::move(types)}};
  const auto replace = nlohmann::ordered_json::error_handler_t::replace;
  return printableJson(all.dump(2, ' ', false, replace)) + '\n';
}

}  // namespace vsa_tools
