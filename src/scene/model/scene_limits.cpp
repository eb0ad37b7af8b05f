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

}  // namespace zn::korvo_sdk
