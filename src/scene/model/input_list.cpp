#include "scene/model/input_list.h"

#include "scene/model/input.h"

namespace zn::korvo_sdk {

Input* InputList::find(const String& name) const noexcept {
  if (index_ != nullptr) {
    const auto isNamed = [&](std::uint64_t i) { return inputs_[i]->name() == name; };
    const std::uint64_t at = index_->find(name.hash(), isNamed);
    return at == ds::HashIndex::NONE ? nullptr : inputs_[at];
  }
  for (Input* const input : inputs_) {
    if (input->name() == name) return input;
  }
  return nullptr;
}

void InputList::append(Input* input) {
  const std::uint64_t at = inputs_.size;
  if (at == SCANNED && index_ == nullptr) {
    auto index = std::make_unique<ds::HashIndex>();
    for (std::uint64_t i = 0; i < at; ++i) index->insert(inputs_[i]->name().hash(), i);
    index_ = std::move(index);
  }
  if (index_ != nullptr) index_->makeRoom();
  inputs_.push_back(input);
  if (index_ != nullptr) index_->insert(input->name().hash(), at);
}

}  // namespace zn::korvo_sdk
