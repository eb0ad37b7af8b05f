// The table of declared node types. A look-up takes a shared lock. If the table is empty, as in
// most programs, a look-up takes no lock.
#include "scene/node_type_table.h"

#include <atomic>
#include <mutex>
#include <shared_mutex>
#include <utility>

#include <vsa/scene/name_update.h>

namespace zn::korvo_sdk {

namespace {

using TypePointer = std::shared_ptr<const DeclaredType>;

// The flag is not a member of the table, so that reading the flag does not create the table.
constinit std::atomic<bool> isTableEmpty{true};

class NodeTypeTable {
 public:
  void add(const std::string& name, TypePointer type) {
    const std::unique_lock lock(mutex_);
    types_.insert_or_assign(name, std::move(type));
    isTableEmpty.store(false, std::memory_order_release);
  }

  void remove(const std::string& name) {
    const std::unique_lock lock(mutex_);
    types_.erase(name);
    isTableEmpty.store(types_.empty(), std::memory_order_release);
  }

  TypePointer find(std::string_view name) const {
    const std::shared_lock lock(mutex_);
    const auto found = types_.find(name);
    return found == types_.end() ? nullptr : found->second;
  }

 private:
  mutable std::shared_mutex mutex_;
  std::map<std::string, TypePointer, std::less<>> types_;
};

// Returns the table. It is never destroyed, because another thread may still read it during the
// exit of the process.
NodeTypeTable& table() {
  static NodeTypeTable& instance = *new NodeTypeTable;
  return instance;
}

const std::string* find(const std::map<std::string, std::string, std::less<>>& names,
                        std::string_view former) {
  const auto found = names.find(former);
  return found == names.end() ? nullptr : &found->second;
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
  const auto found = inputs_.find(name);
  return found == inputs_.end() ? nullptr : &found->second;
}

const std::string* DeclaredType::currentInput(std::string_view former) const {
  return find(formerInputs_, former);
}

const std::string* DeclaredType::currentOutput(std::string_view former) const {
  return find(formerOutputs_, former);
}

TypePointer declaredType(std::string_view name) {
  return anyNodeTypes() ? table().find(name) : nullptr;
}

bool anyNodeTypes() noexcept {
  return !isTableEmpty.load(std::memory_order_acquire);
}

void registerNodeType(const NodeType& type) {
  table().add(type.name, std::make_shared<const DeclaredType>(type));
}

void unregisterNodeType(const std::string& name) {
  if (anyNodeTypes()) table().remove(name);
}

}  // namespace zn::korvo_sdk
