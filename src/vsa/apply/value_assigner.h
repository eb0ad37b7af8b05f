// ValueAssigner: applies plain values to inputs, after the checks and conversions of their types.
// Internal.
#pragma once

#include <vsa/foundation/string.h>
#include <vsa/scene/scene_interface.h>
#include "diagnostics/emitter.h"
#include "vsa/apply/assign_info.h"
#include "vsa/apply/path_resolver.h"
#include "vsa/apply/typed_elements.h"

namespace zn::korvo_sdk::impl {

/// Applies the value of one statement.
class ValueAssigner {
 public:
  /// `emitter` bears the position of the statement; `typedElements` is that of the text.
  ValueAssigner(const Emitter& emitter, TypedElements& typedElements)
      : emitter_(emitter), typedElements_(typedElements) {}

  /// Assigns the value to the input of `target`, which is resolved, converted to the input's type;
  /// or logs why it does not fit.
  void assign(AssignInfo& info, const PathResolver& target);

 private:
  bool accepts(AssignInfo& info, const interfaces::IInput& input) const;
  bool acceptsBuffer(const AssignInfo& info, const interfaces::IInput& input) const;
  void checkEnumeration(const AssignInfo& info, const interfaces::IInput& input) const;

  Emitter emitter_;
  TypedElements& typedElements_;
};

}  // namespace zn::korvo_sdk::impl
