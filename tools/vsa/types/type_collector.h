// TypeCollector: collects the node types that scenes use.
#pragma once

#include <map>
#include <set>
#include <string>

#include <vsa/types.h>
#include <vsa/view.h>
#include "tools/vsa/types/typed_scene.h"

namespace vsa_tools {

class TypeCollector {
 public:
  /// Adds the types of the nodes of a scene, with their inputs and outputs. Leaves out nodes
  /// without a type (see TypedScene). The outputs are those that connections name. An input with
  /// values of several types gets the type Real if all of them are numbers, and no type otherwise.
  void add(const TypedScene& scene);
  /// Returns the types as JSON in the form of docs/types.schema.json, sorted by name. Each byte
  /// that is not valid UTF-8 becomes U+FFFD.
  std::string json() const;

 private:
  struct Input {
    vsa::ValueType type = vsa::ValueType::Null;
    vsa::ValueType elementType = vsa::ValueType::Null;
    vsa::ElementType bufferType = vsa::ElementType::Null;
    bool hasSeveralTypes = false;
    bool hasSeveralElements = false;
  };
  struct Type {
    std::map<std::string, Input> inputs;
    std::set<std::string> outputs;
  };

  void addInput(Input& known, const vsa::InputView& input);
  void addOutput(const TypedScene& scene, const vsa::InputView& input);

  std::map<std::string, Type> types_;
};

}  // namespace vsa_tools
