// SceneLimits: how many array elements may be empty, and how deep inputs nest. Internal.
#pragma once

#include <cstdint>

#include <vsa/foundation/string.h>
#include <vsa/model/scene.h>

namespace zn::korvo_sdk {

struct SceneLimits {
  std::uint64_t emptyElements = Scene::DEFAULT_EMPTY_ELEMENT_LIMIT;
  std::uint64_t depth = Scene::DEFAULT_DEPTH_LIMIT;
  std::uint64_t emptyElementCount = 0;  ///< Elements that exist and are empty.

  /// Throws DiagnosticError for an input that would lie deeper than `depth`.
  [[noreturn]] void throwTooDeep(const String& path) const;
  /// Throws DiagnosticError if `array` cannot grow by an empty element.
  void checkEmptyElements(const Input& array) const;
};

}  // namespace zn::korvo_sdk
