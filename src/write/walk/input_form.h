// How the value of one input is written, and whether a text can carry it. Internal.
//
// A statement finds its input or creates it. What an input is before its first statement, its
// Start, decides which statements give it its type and value without a message of the reader.
#pragma once

#include <cstdint>

#include <vsa/model/input.h>
#include <vsa/scene/attr_type.h>
#include <vsa/scene/data_type.h>
#include "scene/node_type_table.h"

namespace vsa::impl {

/// The right-hand side of the statement of an input.
enum class Form : std::uint8_t {
  /// No statement: those of its elements or members create the input.
  Inside,
  /// The value as a literal.
  Value,
  /// "{}".
  EmptyObject,
  /// "[]". The reader creates the array and reports that it takes no value.
  EmptyArray,
  /// "node" or "null".
  Reference,
  /// A connection, "|= null" if there is none. It creates an input of no type, and leaves one that
  /// exists as it is.
  Link,
};

/// What the reader has of an input before the first statement about it.
struct Start {
  /// Whether it exists; otherwise the statement creates it.
  bool exists = false;
  zn::korvo_sdk::AttrType type = zn::korvo_sdk::AttrType::Null;
  zn::korvo_sdk::AttrType elementType = zn::korvo_sdk::AttrType::Null;
  zn::korvo_sdk::DataType bufferType = zn::korvo_sdk::DataType::Null;
  /// Whether it takes links only.
  bool refusesValues = false;

  /// Of an input that a node type declares.
  static Start of(const zn::korvo_sdk::InputDeclaration& declaration);
};

/// The form of an input's statement, and, if a text cannot carry the value, why.
struct Plan {
  Form form = Form::Inside;
  /// One of reasons.h; null if the text carries the value.
  const char* reason = nullptr;
  /// Whether the form writes another value instead.
  bool isReplaced = false;
};

/// The form for the type and value of `input`, without its connection.
Plan planOf(zn::korvo_sdk::Input& input, const Start& start);

}  // namespace vsa::impl
