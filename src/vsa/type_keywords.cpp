#include "vsa/type_keywords.h"

#include <memory>

#include "foundation/containers/hash_map.h"

namespace zn::korvo_sdk::impl {

namespace {

using TypeTable = ds::HashMap<String, DataType>;

// Returns a table that maps keywords in lower case to element types.
const TypeTable* makeTable() {
  auto table = std::make_unique<TypeTable>();
  for (int i = 0; i < DATA_TYPE_COUNT; ++i) {
    const auto type = static_cast<DataType>(i);
    if (isBufferElement(type)) table->set(String(dataTypeName(type)).toLower(true), type);
  }
  return table.release();
}

}  // namespace

DataType bufferTypeOf(const String& keyword) {
  // The table is never destroyed, because another thread may still read it during the exit of the
  // process.
  static const TypeTable& types = *makeTable();
  return types.get(keyword.toLower(true));
}

}  // namespace zn::korvo_sdk::impl
