// HostScene and HostNode: store the nodes by name, and call the functions of the host. HostInput is
// in host_input.cpp.
#include <vsa/host_scene.h>

#include <utility>

#include "api/dropped_node.h"

namespace vsa {

namespace {

using zn::korvo_sdk::AttrData;
namespace interfaces = zn::korvo_sdk::interfaces;

}  // namespace

// --- nodes ---

HostNode::HostNode(HostScene& scene, std::string_view type, std::string_view name)
    : scene_(scene), type_(zn::String::copyOf(type)), name_(zn::String::copyOf(name)) {
}

HostNode::~HostNode() = default;

void HostNode::onValue(const HostInput& input, const AttrData& value) {
  scene_.onValue(input, value);
}

void HostNode::onReference(const HostInput& input, HostNode* node) {
  scene_.onReference(input, node);
}

void HostNode::onConnection(const HostInput& input, const HostOutput* output) {
  scene_.onConnection(input, output);
}

std::unique_ptr<HostInput> HostNode::makeInput(HostInput* parent, std::string_view name,
                                               std::uint64_t index, ValueType type) {
  return std::make_unique<HostInput>(*this, parent, name, index, type);
}

HostInput* HostNode::input(const zn::String& name) {
  const auto found = inputs_.find(name.view());
  return found == inputs_.end() ? nullptr : found->second.get();
}

bool HostNode::hasInput(const zn::String& name, ValueType type) {
  const HostInput* const found = input(name);
  return found != nullptr && (type == ValueType::Null || found->type() == type);
}

HostInput* HostNode::createInput(const zn::String& name, ValueType type) {
  std::unique_ptr<HostInput> made = makeInput(nullptr, name.view(), 0, type);
  if (made == nullptr) return nullptr;
  return inputs_.emplace(std::string(name.view()), std::move(made)).first->second.get();
}

HostInput* HostNode::createArray(const zn::String& name, ValueType elementType) {
  HostInput* const made = createInput(name, ValueType::Array);
  if (made == nullptr) return nullptr;
  AttrData structure;
  structure.type = ValueType::Array;
  structure.elementType = static_cast<std::int32_t>(elementType);
  made->set(structure);
  return made;
}

interfaces::IOutput* HostNode::output(const zn::String& name) {
  std::unique_ptr<HostOutput>& output = outputs_[std::string(name.view())];
  if (output == nullptr) output = std::make_unique<HostOutput>(this, name.view());
  return output.get();
}

// --- the scene ---

HostScene::HostScene() = default;
HostScene::~HostScene() = default;

HostNode* HostScene::node(TextParameter name) const {
  const auto found = nodes_.find(name.view());
  return found == nodes_.end() ? nullptr : found->second.get();
}

std::unique_ptr<HostNode> HostScene::makeNode(std::string_view type, std::string_view name) {
  return std::make_unique<HostNode>(*this, type, name);
}

void HostScene::onRemove(HostNode& /*node*/) {
}
void HostScene::onValue(const HostInput& /*input*/, const AttrData& /*value*/) {
}
void HostScene::onReference(const HostInput& /*input*/, HostNode* /*node*/) {
}
void HostScene::onConnection(const HostInput& /*input*/, const HostOutput* /*output*/) {
}
void HostScene::setFileVersion(unsigned long long /*version*/) {
}
void HostScene::setFileTime(const zn::String& /*time*/) {
}
void HostScene::pushFileComment(const zn::String& /*comment*/) {
}
void HostScene::clearComments() {
}

interfaces::INode* HostScene::findNode(const zn::String& name) {
  const auto found = nodes_.find(name.view());
  if (found == nodes_.end()) return nullptr;
  if (found->second != nullptr) return found->second.get();
  return dropped_.get();
}

interfaces::INode* HostScene::createNode(const zn::String& type, const zn::String& name,
                                         const zn::String& /*reserved*/) {
  if (interfaces::INode* const existing = findNode(name); existing != nullptr) return existing;
  std::unique_ptr<HostNode> made = makeNode(type.view(), name.view());
  if (made == nullptr && dropped_ == nullptr) dropped_ = std::make_unique<DroppedNode>();
  nodes_.emplace(std::string(name.view()), std::move(made));
  return findNode(name);
}

interfaces::INode* HostScene::defineNode(const zn::String& name) {
  return createNode(name, name, zn::String());
}

void HostScene::removeNode(const zn::String& name) {
  const auto found = nodes_.find(name.view());
  if (found == nodes_.end()) return;
  HostNode* const node = found->second.get();
  if (node != nullptr) {
    removed_.push_back(nullptr);
    removed_.back() = std::move(found->second);
  }
  nodes_.erase(found);
  if (node != nullptr) onRemove(*node);
}

}  // namespace vsa
