#include "scene/model/scene_limits.h"

#include <stdexcept>

namespace zn::korvo_sdk {

void SceneLimits::throwTooDeep(const String& path) const {
  throw std::runtime_error(String::format("input %s is nested deeper than %llu levels", path.buf(),
                                          static_cast<unsigned long long>(depth))
                               .buf());
}

void SceneLimits::checkEmptyElements(const Input& array) const {
  if (emptyElementCount < emptyElements) return;
  throw std::runtime_error(
      String::format("array %s cannot grow past the scene's limit of %llu empty elements",
                     array.path().buf(), static_cast<unsigned long long>(emptyElements))
          .buf());
}

}  // namespace zn::korvo_sdk
