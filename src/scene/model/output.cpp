#include <vsa/model/output.h>

#include "scene/model/node_impl.h"
#include "scene/model/output_impl.h"
#include "scene/model/scene_storage.h"

namespace zn::korvo_sdk {

String Output::name() const {
  return static_cast<const OutputImpl*>(this)->name();
}

Node* Output::node() const noexcept {
  return &static_cast<const OutputImpl*>(this)->node();
}

SceneStorage& OutputImpl::storage() const noexcept {
  return *Slabs<OutputImpl, SceneStorage>::ownerOf(this);
}

const String& OutputImpl::name() const noexcept {
  return storage().outputNames[nameNumber_];
}

NodeImpl& OutputImpl::node() const noexcept {
  return storage().nodes.at(nodePosition_);
}

}  // namespace zn::korvo_sdk
