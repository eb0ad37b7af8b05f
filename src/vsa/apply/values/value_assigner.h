// ValueAssigner: checks and converts plain values and assigns them to inputs. Internal.
#pragma once

#include <string_view>

#include <vsa/foundation/string.h>
#include <vsa/scene/scene_interface.h>
#include "diagnostics/emitter.h"
#include "vsa/apply/assign_info.h"
#include "vsa/apply/path_resolver.h"
#include "vsa/apply/read_session.h"
#include "vsa/apply/values/typed_elements.h"

namespace zn::korvo_sdk::impl {

/// Assigns the value of one statement.
class ValueAssigner {
 public:
  /// `emitter` has the position of the statement. `typedElements` is shared by the whole text.
  /// `session` may be null.
  ValueAssigner(const Emitter& emitter, TypedElements& typedElements, ReadSession* session)
      : emitter_(emitter), typedElements_(typedElements), session_(session) {}

  /// Converts `value` to the type of the target's input and assigns it, or logs why this is not
  /// possible. `target` must have been resolved to an input. `literal` is the value's first token
  /// as written; it must not be in memory owned by the value. Returns whether the scene took
  /// ownership of the value's memory.
  bool assign(AttrData& value, std::string_view literal, const PathResolver& target);

 private:
  bool accepts(AttrData& value, std::string_view literal, const interfaces::IInput& input) const;
  bool acceptsBuffer(const AttrData& value, const interfaces::IInput& input) const;
  void checkEnumeration(std::string_view literal, const interfaces::IInput& input) const;

  Emitter emitter_;
  TypedElements& typedElements_;
  ReadSession* session_;
};

}  // namespace zn::korvo_sdk::impl
