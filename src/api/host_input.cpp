// HostInput: stores types, elements and members, and passes values and links to its node.
#include <cstdlib>
#include <utility>

#include <vsa/host_scene.h>
#include "diagnostics/emitter.h"

namespace vsa {

namespace {

using zn::korvo_sdk::AttrData;
using zn::korvo_sdk::DiagnosticId;
using zn::korvo_sdk::Emitter;

// Frees the memory of a value in its destructor. So the memory is freed even if the function of the
// host throws.
class ValueMemory {
 public:
  explicit ValueMemory(const AttrData& value) : value_(value) {}
  ValueMemory(const ValueMemory&) = delete;
  ValueMemory& operator=(const ValueMemory&) = delete;
  ~ValueMemory() {
    if (value_.type == ValueType::String) std::free(value_.payload.string);
    if (value_.type == ValueType::Buffer) std::free(value_.payload.buffer.memory);
  }

 private:
  const AttrData& value_;
};

}  // namespace

HostInput::HostInput(HostNode& node, HostInput* parent, std::string_view name, std::uint64_t index,
                     ValueType type)
    : node_(node),
      parent_(parent),
      name_(name),
      index_(index),
      level_(parent != nullptr ? parent->level_ + 1 : 1),
      type_(type),
      isUnused_(parent != nullptr && parent->type_ == ValueType::Array) {
  const std::uint64_t limit = node.scene().depthLimit;
  if (level_ > limit) Emitter().fatal(DiagnosticId::NestedTooDeeply, path(), limit);
}

HostInput::~HostInput() = default;

// --- the path and the type ---

std::string HostInput::pathInNode() const {
  std::vector<const HostInput*> chain;
  for (const HostInput* input = this; input != nullptr; input = input->parent_) {
    chain.push_back(input);
  }
  std::string text;
  for (std::size_t i = chain.size(); i > 0; --i) {
    const HostInput& input = *chain[i - 1];
    if (input.parent_ != nullptr && input.parent_->type_ == ValueType::Array) {
      text += '[' + std::to_string(input.index_) + ']';
    } else {
      text += (text.empty() ? "" : ".") + input.name_;
    }
  }
  return text;
}

zn::String HostInput::path() const {
  return zn::String::copyOf(std::string(node_.nodeName()) + '.' + pathInNode());
}

zn::String HostInput::typeName() const {
  return zn::korvo_sdk::attrTypeName(type_);
}

bool HostInput::holdsBuffer(bool /*flag*/) const {
  return type_ == ValueType::Buffer;
}

bool HostInput::isArray(bool /*flag*/) const {
  return type_ == ValueType::Array;
}

// Sets the type of an input that has type Null. Does nothing for any other input. An input that a
// link has created has type Null at first, except an element of an array with an element type. A
// connection alone does not set the type.
void HostInput::become(ValueType type) {
  if (type_ == ValueType::Null) type_ = type;
}

void HostInput::markUsed() noexcept {
  if (!isUnused_) return;
  isUnused_ = false;
  --node_.scene().emptyElementCount_;
}

// --- elements and members ---

void HostInput::appendElement() {
  HostScene& scene = node_.scene();
  if (scene.emptyElementCount_ >= scene.emptyElementLimit) {
    Emitter().fatal(DiagnosticId::TooManyEmptyElements, path(), scene.emptyElementLimit);
  }
  std::unique_ptr<HostInput> made =
      node_.makeInput(this, std::string_view(), elements_.size(), elementType_);
  if (made == nullptr) return;
  elements_.push_back(std::move(made));
  ++scene.emptyElementCount_;
  markUsed();
}

HostInput* HostInput::element(std::uint64_t index) {
  return index < elements_.size() ? elements_[index].get() : nullptr;
}

HostInput* HostInput::input(const zn::String& name) {
  const auto found = members_.find(name.view());
  return found == members_.end() ? nullptr : found->second.get();
}

bool HostInput::hasInput(const zn::String& name, ValueType type) {
  const HostInput* const found = input(name);
  return found != nullptr && (type == ValueType::Null || found->type() == type);
}

HostInput* HostInput::createInput(const zn::String& name, ValueType type) {
  return createMember(name, type, ValueType::Null);
}

HostInput* HostInput::createArray(const zn::String& name, ValueType elementType) {
  return createMember(name, ValueType::Array, elementType);
}

HostInput* HostInput::createMember(const zn::String& name, ValueType type, ValueType elementType) {
  if (type_ != ValueType::Object && type_ != ValueType::Null) return nullptr;
  if (name.startsWith("[", false)) return nullptr;  // an index is not the name of a member
  std::unique_ptr<HostInput> made = node_.makeInput(this, name.view(), 0, type);
  if (made == nullptr) return nullptr;
  made->elementType_ = elementType;
  HostInput* const member =
      members_.emplace(std::string(name.view()), std::move(made)).first->second.get();
  become(ValueType::Object);
  markUsed();
  return member;
}

// --- values and links ---

void HostInput::set(const AttrData& structure) {
  become(structure.type);
  if (structure.type == ValueType::Array) elementType_ = ValueType(structure.elementType);
  if (structure.type == ValueType::Buffer) bufferType_ = ElementType(structure.elementType);
}

void HostInput::assign(const AttrData& value) {
  const ValueMemory memory(value);
  markUsed();
  become(value.type);
  if (value.type != type_) return;
  if (value.type == ValueType::Buffer) bufferType_ = value.payload.buffer.type;
  node_.onValue(*this, value);
}

void HostInput::connect(zn::korvo_sdk::interfaces::IOutput* output) {
  markUsed();
  node_.onConnection(*this, static_cast<const HostOutput*>(output));
}

void HostInput::disconnect() {
  markUsed();
  node_.onConnection(*this, nullptr);
}

void HostInput::setNode(zn::korvo_sdk::interfaces::INode* node) {
  markUsed();
  become(ValueType::Node);
  if (type_ == ValueType::Node) return node_.onReference(*this, dynamic_cast<HostNode*>(node));
  const zn::String name = node == nullptr ? zn::String("null") : node->name();
  Emitter().log(DiagnosticId::CannotAssignNode, name, path(), typeName());
}

// An element with a pending link does not count as empty, as in the library's scene.
void HostInput::retain() {
  markUsed();
}

}  // namespace vsa
