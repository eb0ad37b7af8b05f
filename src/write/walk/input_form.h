// Determines how the value of one input is written, and whether a text can represent it. Internal.
//
// A statement finds its input or creates it. The state of an input before its first statement
// (Start) determines which statements set its type and value without a message.
#pragma once

#include <cstdint>

#include <vsa/model/input.h>
#include <vsa/scene/attr_type.h>
#include <vsa/scene/data_type.h>
#include "scene/node_type_table.h"

namespace vsa::impl {

/// The right-hand side of the statement of an input.
enum class Form : std::uint8_t {
  /// No statement. The statements of the input's elements or members create the input.
  Inside,
  /// The value as a literal.
  Value,
  /// "{}".
  EmptyObject,
  /// "[]". The reader creates the array and reports that it takes no value.
  EmptyArray,
  /// "node" or "null".
  Reference,
  /// A connection, or "|= null" if the input has none. The statement creates an input of type Null,
  /// and keeps the value of an existing input.
  Link,
};

/// The state that an input has when the written text is read again, before the first statement that
/// sets it.
struct Start {
  /// Whether the input exists. If not, the statement creates it.
  bool exists = false;
  zn::korvo_sdk::AttrType type = zn::korvo_sdk::AttrType::Null;
  zn::korvo_sdk::AttrType elementType = zn::korvo_sdk::AttrType::Null;
  zn::korvo_sdk::DataType bufferType = zn::korvo_sdk::DataType::Null;
  /// Whether the input accepts links only.
  bool refusesValues = false;

  /// The state of an input that is declared by its node type.
  static Start of(const zn::korvo_sdk::InputDeclaration& declaration);
};

/// The form of an input's statement, and the reason if a text cannot represent the value.
struct Plan {
  Form form = Form::Inside;
  /// One of the texts in reasons.h; null if a text can represent the value.
  const char* reason = nullptr;
  /// Whether the statement contains another value than the input.
  bool isReplaced = false;
};

/// The plan for the type and value of `input`, without its connection.
Plan planOf(zn::korvo_sdk::Input& input, const Start& start);

}  // namespace vsa::impl
