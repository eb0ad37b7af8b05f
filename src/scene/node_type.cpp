// The table of declared node types. Readers take a shared look at it, and none at all while it is
// empty, as it is in most programs.
#include <vsa/scene/node_type.h>

#include <atomic>
#include <mutex>
#include <shared_mutex>
#include <utility>

#include <vsa/scene/name_update.h>
#include "scene/node_type_table.h"

namespace zn::korvo_sdk {

namespace {

using TypePointer = std::shared_ptr<const DeclaredType>;

class NodeTypeTable {
 public:
  void add(const std::string& name, TypePointer type) {
    const std::unique_lock lock(mutex_);
    types_.insert_or_assign(name, std::move(type));
    isEmpty_.store(false, std::memory_order_release);
  }

  void remove(const std::string& name) {
    const std::unique_lock lock(mutex_);
    types_.erase(name);
    isEmpty_.store(types_.empty(), std::memory_order_release);
  }

  bool isEmpty() const noexcept { return isEmpty_.load(std::memory_order_acquire); }

  TypePointer find(std::string_view name) const {
    if (isEmpty()) return nullptr;
    const std::shared_lock lock(mutex_);
    const auto at = types_.find(name);
    return at == types_.end() ? nullptr : at->second;
  }

 private:
  mutable std::shared_mutex mutex_;
  std::map<std::string, TypePointer, std::less<>> types_;
  std::atomic<bool> isEmpty_{true};
};

// Never destroyed: a thread may still read while the process ends.
NodeTypeTable& table() {
  static NodeTypeTable* const made = new NodeTypeTable;
  return *made;
}

const std::string* find(const std::map<std::string, std::string, std::less<>>& names,
                        std::string_view former) {
  const auto at = names.find(former);
  return at == names.end() ? nullptr : &at->second;
}

}  // namespace

DeclaredType::DeclaredType(const NodeType& type)
    : outputs_(type.outputs.begin(), type.outputs.end()) {
  for (const InputDeclaration& input : type.inputs) {
    inputs_.insert_or_assign(input.name, DeclaredInput(input));
  }
  for (const FormerName& name : type.formerInputs) formerInputs_[name.former] = name.current;
  for (const FormerName& name : type.formerOutputs) formerOutputs_[name.former] = name.current;
}

const DeclaredInput* DeclaredType::input(std::string_view name) const {
  const auto at = inputs_.find(name);
  return at == inputs_.end() ? nullptr : &at->second;
}

const std::string* DeclaredType::currentInput(std::string_view former) const {
  return find(formerInputs_, former);
}

const std::string* DeclaredType::currentOutput(std::string_view former) const {
  return find(formerOutputs_, former);
}

TypePointer declaredType(std::string_view name) {
  return table().find(name);
}

void registerNodeType(const NodeType& type) {
  table().add(type.name, std::make_shared<const DeclaredType>(type));
}

void unregisterNodeType(const std::string& name) {
  table().remove(name);
}

bool anyNodeTypes() noexcept {
  return !table().isEmpty();
}

String updateInputName(const String& nodeType, const String& name) {
  const TypePointer type = declaredType(nodeType.view());
  const std::string* const current = type == nullptr ? nullptr : type->currentInput(name.view());
  return current == nullptr ? name : String::copyOf(*current);
}

String updateOutputName(const String& nodeType, const String& name) {
  const TypePointer type = declaredType(nodeType.view());
  const std::string* const current = type == nullptr ? nullptr : type->currentOutput(name.view());
  return current == nullptr ? name : String::copyOf(*current);
}

}  // namespace zn::korvo_sdk
