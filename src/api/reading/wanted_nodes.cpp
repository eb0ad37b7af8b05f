#include "api/reading/wanted_nodes.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace vsa {

namespace {

bool contains(const std::vector<std::string>& list, std::string_view text) {
  return std::find(list.begin(), list.end(), text) != list.end();
}

}  // namespace

bool WantedNodes::isWanted(std::string_view type, std::string_view name) const {
  return contains(options_.wantedNames, name) || contains(options_.wantedTypes, type);
}

WantedNodes::INode* WantedNodes::findKept(const String& name) {
  INode* const found = kept_.findNode(name);
  return found != nullptr && isWanted(found->type().view(), name.view()) ? found : nullptr;
}

zn::korvo_sdk::Scene& WantedNodes::dropped() {
  if (dropped_ == nullptr) dropped_ = std::make_unique<zn::korvo_sdk::Scene>();
  return *dropped_;
}

WantedNodes::INode* WantedNodes::findNode(const String& name) {
  INode* const found = findKept(name);
  if (found != nullptr || dropped_ == nullptr) return found;
  return dropped_->findNode(name);
}

WantedNodes::INode* WantedNodes::createNode(const String& type, const String& name,
                                            const String& reserved) {
  if (isWanted(type.view(), name.view())) return kept_.createNode(type, name, reserved);
  INode* const made = dropped().createNode(type, name, reserved);
  if (made != nullptr) droppedNodes_.insert(made);
  return made;
}

WantedNodes::INode* WantedNodes::defineNode(const String& name) {
  if (isWanted(name.view(), name.view())) return kept_.defineNode(name);
  INode* const made = dropped().defineNode(name);
  if (made != nullptr) droppedNodes_.insert(made);
  return made;
}

void WantedNodes::removeNode(const String& name) {
  if (findKept(name) != nullptr) {
    kept_.removeNode(name);
  } else if (dropped_ != nullptr) {
    dropped_->removeNode(name);
  }
}

}  // namespace vsa
