// ValueAssigner: checks and converts values and assigns them to inputs. Internal.
#pragma once

#include <string_view>

#include <vsa/foundation/string.h>
#include <vsa/scene/scene_interface.h>
#include "diagnostics/emitter.h"
#include "vsa/apply/assign_info.h"
#include "vsa/apply/read_session.h"
#include "vsa/apply/values/typed_elements.h"

namespace zn::korvo_sdk::impl {

/// Assigns the value of one statement.
class ValueAssigner {
 public:
  /// `emitter` has the position of the statement. `typedElements` is shared by all statements of
  /// the text. `session` may be null.
  ValueAssigner(const Emitter& emitter, TypedElements& typedElements, ReadSession* session)
      : emitter_(emitter), typedElements_(typedElements), session_(session) {}

  /// Converts `value` to the type of `input` and assigns it, or logs why this is not possible.
  /// `literal` is the value's first token as written. It must not be in memory that the value owns.
  /// `array` is the array that contains `input` as an element, or null. `countBefore` is the size
  /// of `array` before the statement. Returns whether the value was assigned. If so, the scene owns
  /// its memory. If not, a session has freed its memory, and without a session nobody frees it.
  bool assign(AttrData& value, std::string_view literal, interfaces::IInput& input,
              interfaces::IInput* array = nullptr, std::uint64_t countBefore = 0);

 private:
  bool accepts(AttrData& value, std::string_view literal, const interfaces::IInput& input) const;
  bool acceptsBuffer(const AttrData& value, const interfaces::IInput& input) const;
  void checkEnumeration(std::string_view literal, const interfaces::IInput& input) const;

  Emitter emitter_;
  TypedElements& typedElements_;
  ReadSession* session_;
};

}  // namespace zn::korvo_sdk::impl
