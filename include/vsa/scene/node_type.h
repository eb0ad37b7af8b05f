// The node types that a host declares. A type that nobody declared is open: it takes any input a
// text asks for. A declared type is closed: only what it declares exists.
#pragma once

#include <string>
#include <vector>

#include <vsa/foundation/api.h>
#include <vsa/scene/attr_type.h>
#include <vsa/scene/data_type.h>

namespace zn::korvo_sdk {

/// One input of a declared node type.
struct InputDeclaration {
  std::string name;                       ///< As texts write it; a later one of that name counts.
  AttrType type = AttrType::Null;         ///< What it holds. Null takes links, or members.
  AttrType elementType = AttrType::Null;  ///< Of an array's elements.
  DataType bufferType = DataType::Null;   ///< Of a buffer's elements; Null takes any.
  std::vector<std::string> enumValues =
      {};                      ///< Of a string: what it should be one of; empty: anything.
  bool refusesValues = false;  ///< Takes links only, no plain values.
};

/// A name that older texts use, and the name used now.
struct FormerName {
  std::string former;   ///< What a text may say.
  std::string current;  ///< What is looked up for it; it is not translated again.
};

/// A declared node type.
struct NodeType {
  std::string name;                            ///< The type, as texts write it.
  std::vector<InputDeclaration> inputs = {};   ///< All that its nodes have.
  std::vector<std::string> outputs = {};       ///< The names of all that its nodes have.
  std::vector<FormerName> formerInputs = {};   ///< Of inputs, and of members below them.
  std::vector<FormerName> formerOutputs = {};  ///< Of outputs.
};

/// Declares a type for the whole process, over an earlier declaration of that name. Nodes that
/// exist keep the declaration they were made with. Safe to call while other threads read; throws
/// std::bad_alloc.
VSA_API void registerNodeType(const NodeType& type);

/// Makes a type open again, for nodes made from now on. Does nothing for a name that is not
/// declared. Safe to call while other threads read.
VSA_API void unregisterNodeType(const std::string& name);

}  // namespace zn::korvo_sdk
