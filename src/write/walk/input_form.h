// Determines how to write the value of an input, and whether a text can represent the value.
// Internal.
//
// The statement of an input finds or creates the input in the scene of the reader. The state of the
// input before this statement (Start) determines which statements can set its type and value
// without a message.
#pragma once

#include <cstdint>

#include <vsa/model/input.h>
#include <vsa/scene/attr_type.h>
#include <vsa/scene/data_type.h>
#include "scene/node_type_table.h"

namespace vsa::impl {

/// The right-hand side of the statement of an input.
enum class Form : std::uint8_t {
  /// No statement of its own. The statements of the elements or members create the input. The plan
  /// of an input that is not written has this form, too (see `Plan::reason` and `isReplaced`).
  Inside,
  /// A literal.
  Value,
  /// "{}" for an object without members.
  EmptyObject,
  /// "[]" for an array without elements and without an element type. The reader creates the array
  /// and reports that the array accepts no value.
  EmptyArray,
  /// A reference: "node" or "null".
  Reference,
  /// A connection, or "|= null" if the input has no connection. With LinkPlace::Last, "|= null" is
  /// written first in any case, and the connection last. The statement creates an input of type
  /// Null. It does not change the value of an existing input.
  Link,
};

/// The state of an input in the scene of the reader, before the first statement that sets the
/// input.
struct Start {
  /// Whether the input exists. If it does not exist, the statement creates it.
  bool exists = false;
  zn::korvo_sdk::AttrType type = zn::korvo_sdk::AttrType::Null;
  zn::korvo_sdk::AttrType elementType = zn::korvo_sdk::AttrType::Null;
  zn::korvo_sdk::DataType bufferType = zn::korvo_sdk::DataType::Null;
  /// Whether the input accepts links only.
  bool refusesValues = false;

  /// Returns the state of an input that its node type declares.
  static Start of(const zn::korvo_sdk::InputDeclaration& declaration);
};

/// How the value of an input is written.
struct Plan {
  /// The right-hand side of the statement.
  Form form = Form::Inside;
  /// The reason why no text can represent the value, from reasons.h. It is null if a text can
  /// represent the value.
  const char* reason = nullptr;
  /// Whether the statement contains a different value, because no text can represent the value of
  /// the input.
  bool isReplaced = false;
};

/// Returns the plan for the type and the value of `input`. It does not include the connection of
/// the input.
Plan planOf(zn::korvo_sdk::Input& input, const Start& start);

}  // namespace vsa::impl
