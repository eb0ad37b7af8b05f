// SceneLimits: the limits of the number of elements in an array, of the number of empty elements in
// a scene, and of the nesting depth. Internal.
#pragma once

#include <cstdint>

#include <vsa/foundation/string.h>
#include <vsa/model/scene.h>

namespace zn::korvo_sdk {

struct SceneLimits {
  /// The maximum size of an array. An element stores its index in 32 bits.
  static constexpr std::uint64_t MAX_ARRAY_ELEMENTS = std::uint64_t{1} << 32;

  std::uint64_t emptyElements = Scene::DEFAULT_EMPTY_ELEMENT_LIMIT;
  std::uint64_t depth = Scene::DEFAULT_DEPTH_LIMIT;
  std::uint64_t emptyElementCount = 0;  ///< The number of empty elements in the scene.

  /// Throws DiagnosticError for an input at `path` that is nested deeper than `depth`.
  [[noreturn]] void throwTooDeep(const String& path) const;
  /// Throws DiagnosticError if the scene already contains `emptyElements` empty elements or more,
  /// so that `array` cannot grow by another one.
  void checkEmptyElements(const Input& array) const;
  /// Throws DiagnosticError if `array`, which has `count` elements, cannot grow.
  static void checkElementCount(const Input& array, std::uint64_t count);
};

}  // namespace zn::korvo_sdk
