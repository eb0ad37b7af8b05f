// The handles of vsa_c.h. A vsa_reading is an object of the class below. A vsa_node or vsa_input is
// not an object: its address is that of the node or input in the scene. Internal.
#pragma once

#include <string_view>

#include <vsa/read.h>
#include <vsa/scene.h>
#include <vsa/values/buffer_view.h>
#include <vsa/view.h>
#include <vsa/vsa_c.h>

struct vsa_reading {
  vsa::ReadOutcome outcome;
  vsa::Scene scene;
  bool isWrongUse = false;      // whether the status is VSA_WRONG_USE
  vsa::BufferView loaded = {};  // the buffer that vsa_loaded_buffer returns
};

namespace vsa::c {

inline NodeView viewOf(const vsa_node* node) noexcept {
  return NodeView(reinterpret_cast<zn::korvo_sdk::Node*>(const_cast<vsa_node*>(node)));
}

inline InputView viewOf(const vsa_input* input) noexcept {
  return InputView(reinterpret_cast<zn::korvo_sdk::Input*>(const_cast<vsa_input*>(input)));
}

inline const vsa_node* handleOf(NodeView node) noexcept {
  return reinterpret_cast<const vsa_node*>(node.plain());
}

inline const vsa_input* handleOf(InputView input) noexcept {
  return reinterpret_cast<const vsa_input*>(input.plain());
}

inline vsa_text textOf(std::string_view text) noexcept {
  return {text.data() != nullptr ? text.data() : "", text.size()};
}

/// Returns whether there is a buffer, as 1 or 0. If there is one and `out` is not null, stores the
/// buffer in `out`.
int storeBuffer(const BufferView& buffer, vsa_buffer* out) noexcept;

}  // namespace vsa::c
