#include <vsa/scene/name_update.h>

#include <memory>

#include "scene/node_type_table.h"

namespace zn::korvo_sdk {

String updateInputName(const String& nodeType, const String& name) {
  const std::shared_ptr<const DeclaredType> type = declaredType(nodeType.view());
  const std::string* const current = type == nullptr ? nullptr : type->currentInput(name.view());
  return current == nullptr ? name : String::copyOf(*current);
}

String updateOutputName(const String& nodeType, const String& name) {
  const std::shared_ptr<const DeclaredType> type = declaredType(nodeType.view());
  const std::string* const current = type == nullptr ? nullptr : type->currentOutput(name.view());
  return current == nullptr ? name : String::copyOf(*current);
}

}  // namespace zn::korvo_sdk
