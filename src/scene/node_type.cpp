#include <vsa/scene/node_type.h>

#include <memory>

#include "scene/node_type_table.h"

namespace zn::korvo_sdk {

void registerNodeType(const NodeType& type) {
  addDeclaredType(type.name, std::make_shared<const DeclaredType>(type));
}

void unregisterNodeType(const std::string& name) {
  removeDeclaredType(name);
}

}  // namespace zn::korvo_sdk
