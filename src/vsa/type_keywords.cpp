#include "vsa/type_keywords.h"

#include <memory>

#include "foundation/containers/hash_map.h"

namespace zn::korvo_sdk::impl {

namespace {

using TypeTable = ds::HashMap<String, DataType>;

// Returns a table that maps keywords in lower case to element types. If `isScalar` is true, it
// contains the types with one component, otherwise the types with several.
const TypeTable* makeTable(bool isScalar) {
  auto table = std::make_unique<TypeTable>();
  for (int i = 0; i < DATA_TYPE_COUNT; ++i) {
    const auto type = static_cast<DataType>(i);
    if (!isBufferElement(type) || (componentCount(type) == 1) != isScalar) continue;
    table->set(String(dataTypeName(type)).toLower(true), type);
  }
  return table.release();
}

}  // namespace

DataType bufferTypeOf(const String& keyword) {
  // The tables are never destroyed, because another thread may still read them during the exit of
  // the process.
  static const TypeTable& scalarBufferTypes = *makeTable(true);
  static const TypeTable& vectorBufferTypes = *makeTable(false);
  const String lower = keyword.toLower(true);
  const TypeTable::Node* const scalar = scalarBufferTypes.findNode(lower);
  return scalar != nullptr ? scalar->value : vectorBufferTypes.get(lower);
}

}  // namespace zn::korvo_sdk::impl
