#include "scene/model/scene_limits.h"

#include "diagnostics/emitter.h"

namespace zn::korvo_sdk {

void SceneLimits::throwTooDeep(const String& path) const {
  Emitter().fatal(DiagnosticId::NestedTooDeeply, path, depth);
}

void SceneLimits::checkEmptyElements(const Input& array) const {
  if (emptyElementCount < emptyElements) return;
  Emitter().fatal(DiagnosticId::TooManyEmptyElements, array.path(), emptyElements);
}

void SceneLimits::checkElementCount(const Input& array, std::uint64_t count) {
  if (count < MAX_ARRAY_ELEMENTS) return;
  Emitter().fatal(DiagnosticId::TooManyArrayElements, array.path(), MAX_ARRAY_ELEMENTS);
}

}  // namespace zn::korvo_sdk
