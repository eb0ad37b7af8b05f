// TypeCollector: collects the node types that scenes use.
#pragma once

#include <map>
#include <set>
#include <string>

#include <vsa/types.h>
#include <vsa/view.h>

namespace vsa_tools {

class TypeCollector {
 public:
  /// Adds the types of the nodes of a scene, with their inputs and the outputs that connections
  /// name. An input that has values of several types gets the type that all of these convert to, or
  /// no type.
  void add(const vsa::SceneView& scene);
  /// The types as JSON, sorted by name, in the form of docs/types.schema.json. Each byte that is
  /// not valid UTF-8 becomes U+FFFD.
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
  void addOutput(const vsa::InputView& input);

  std::map<std::string, Type> types_;
};

}  // namespace vsa_tools
