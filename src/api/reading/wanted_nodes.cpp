#include "api/reading/wanted_nodes.h"

namespace vsa {

void WantedNodes::want(const std::vector<std::string>& names,
                       const std::vector<std::string>& types) {
  names_.insert(names.begin(), names.end());
  types_.insert(types.begin(), types.end());
}

bool WantedNodes::isWanted(std::string_view type, std::string_view name) const {
  return names_.contains(name) || types_.contains(type);
}

WantedNodes::INode* WantedNodes::findKept(const String& name) {
  INode* const found = kept_.findNode(name);
  return found != nullptr && isWanted(found->type().view(), name.view()) ? found : nullptr;
}

zn::korvo_sdk::Scene& WantedNodes::dropped() {
  if (dropped_ != nullptr) return *dropped_;
  dropped_ = std::make_unique<zn::korvo_sdk::Scene>();
  if (const auto* const kept = dynamic_cast<const zn::korvo_sdk::Scene*>(&kept_)) {
    dropped_->setEmptyElementLimit(kept->emptyElementLimit());
    dropped_->setDepthLimit(kept->depthLimit());
  }
  return *dropped_;
}

WantedNodes::INode* WantedNodes::findNode(const String& name) {
  INode* const found = kept_.findNode(name);
  if (found != nullptr && isWanted(found->type().view(), name.view())) return found;
  INode* const made = dropped_ == nullptr ? nullptr : dropped_->findNode(name);
  const bool isReplaced =
      made == nullptr && found != nullptr && removed_.count(std::string(name.view())) == 0;
  return isReplaced ? drop(dropped().createNode(found->type(), name, String())) : made;
}

WantedNodes::INode* WantedNodes::drop(INode* made) {
  if (made != nullptr) droppedNodes_.insert(made);
  return made;
}

WantedNodes::INode* WantedNodes::createNode(const String& type, const String& name,
                                            const String& reserved) {
  if (isWanted(type.view(), name.view())) return kept_.createNode(type, name, reserved);
  return drop(dropped().createNode(type, name, reserved));
}

WantedNodes::INode* WantedNodes::defineNode(const String& name) {
  if (isWanted(name.view(), name.view())) return kept_.defineNode(name);
  return drop(dropped().defineNode(name));
}

void WantedNodes::removeNode(const String& name) {
  if (findKept(name) != nullptr) {
    kept_.removeNode(name);
    return;
  }
  removed_.emplace(name.view());
  if (dropped_ != nullptr) dropped_->removeNode(name);
}

}  // namespace vsa
