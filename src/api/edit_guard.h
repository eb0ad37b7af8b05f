// Checks and an exception handler for functions that change a scene. Internal.
#pragma once

#include <new>
#include <stdexcept>
#include <string_view>

#include <vsa/edit_status.h>
#include <vsa/foundation/string.h>
#include <vsa/model/scene.h>
#include <vsa/scene/name_update.h>
#include <vsa/text_rules.h>

namespace vsa::detail {

/// Calls `change()` and returns its result, a Status or an Added. If it throws, returns the error
/// for the exception: OutOfMemory, TooDeep for the depth limit of the scene, or TooMany. TooMany
/// means that a text or list is too long, or that the scene has too many nodes or names of outputs.
template <class Change>
auto guarded(const Change& change) noexcept -> decltype(change()) {
  try {
    return change();
  } catch (const std::bad_alloc&) {
    return EditError::OutOfMemory;
  } catch (const std::length_error&) {
    return EditError::TooMany;
  } catch (const std::runtime_error&) {
    return EditError::TooDeep;
  }
}

/// Checks whether the object exists and was not removed. Returns None, Missing or Removed.
inline Status checkNode(const zn::korvo_sdk::Node* node) noexcept {
  if (node == nullptr) return EditError::Missing;
  return node->isRemoved() ? EditError::Removed : EditError::None;
}
inline Status checkInput(const zn::korvo_sdk::Input* input) noexcept {
  if (input == nullptr) return EditError::Missing;
  return input->isRemoved() ? EditError::Removed : checkNode(input->owner());
}

/// Checks whether `name` can name an input that is added to the node, or a member that is added to
/// an object inside the node. Returns None, BadName or FormerName.
inline Status checkInputName(const zn::korvo_sdk::Node& node, std::string_view name) {
  if (!isName(name)) return EditError::BadName;
  if (!zn::korvo_sdk::anyNodeTypes()) return {};
  const zn::String current =
      zn::korvo_sdk::updateInputName(zn::String::copyOf(node.typeView()), zn::String::copyOf(name));
  return current.view() == name ? EditError::None : EditError::FormerName;
}

}  // namespace vsa::detail
