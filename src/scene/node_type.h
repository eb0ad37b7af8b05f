// The node types that a host declares. A type that nobody declared is open: it takes any input a
// text asks for. A declared type is closed: only what it declares exists.
#pragma once

#include <string>
#include <vector>

#include "foundation/api.h"
#include "scene/attr_type.h"
#include "scene/data_type.h"

namespace zn::korvo_sdk {

/// One input of a declared node type.
struct InputDeclaration {
  std::string name;
  AttrType type = AttrType::Null;
  AttrType elementType = AttrType::Null;  ///< Of an array's elements.
  DataType bufferType = DataType::Null;   ///< Of a buffer's elements; Null takes any.
  std::vector<std::string> enumValues;  ///< Of a string: what it should be one of; empty: anything.
  bool refusesValues = false;           ///< Takes links only, no plain values.
};

/// A name that older texts use, and the name used now.
struct FormerName {
  std::string former;
  std::string current;
};

/// A declared node type.
struct NodeType {
  std::string name;
  std::vector<InputDeclaration> inputs;
  std::vector<std::string> outputs;
  std::vector<FormerName> formerInputs;
  std::vector<FormerName> formerOutputs;
};

/// Declares a type for the whole process, over an earlier declaration of that name. Nodes that
/// exist keep the declaration they were made with. Safe to call while other threads read; throws
/// std::bad_alloc.
VSA_API void registerNodeType(NodeType type);

/// Makes a type open again. Does nothing for a name that is not declared.
VSA_API void unregisterNodeType(const std::string& name);

}  // namespace zn::korvo_sdk
