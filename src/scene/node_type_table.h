// The process-wide table of declared node types. Hosts use node_type.h and name_update.h. Internal.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include <vsa/scene/node_type.h>
#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk {

/// The enumeration of a declared input.
class Enumeration final : public interfaces::IEnumeration {
 public:
  explicit Enumeration(const std::vector<std::string>& values)
      : values_(values.begin(), values.end()) {}

  bool isEmpty() const override { return values_.empty(); }
  const void* find(const String& name) const override {
    const auto found = values_.find(name.view());
    return found == values_.end() ? nullptr : &*found;
  }

 private:
  std::set<std::string, std::less<>> values_;
};

/// A declared input with its enumeration.
struct DeclaredInput {
  explicit DeclaredInput(const InputDeclaration& input)
      : declaration(input), enumeration(input.enumValues) {}

  InputDeclaration declaration;
  Enumeration enumeration;
};

/// A declared node type. Finds its inputs and outputs by name. Immutable.
class DeclaredType {
 public:
  explicit DeclaredType(const NodeType& type);

  /// Returns the input of that name, or null.
  const DeclaredInput* input(std::string_view name) const;
  bool hasOutput(std::string_view name) const { return outputs_.count(name) != 0; }
  /// Returns the current name of the input with this former name. Returns null if no input has this
  /// former name.
  const std::string* currentInput(std::string_view former) const;
  const std::string* currentOutput(std::string_view former) const;

 private:
  using Names = std::map<std::string, std::string, std::less<>>;

  std::map<std::string, DeclaredInput, std::less<>> inputs_;
  std::set<std::string, std::less<>> outputs_;
  Names formerInputs_;
  Names formerOutputs_;
};

/// Returns the declared type of that name. Returns null for an open type. May be called from any
/// thread.
std::shared_ptr<const DeclaredType> declaredType(std::string_view name);

}  // namespace zn::korvo_sdk
