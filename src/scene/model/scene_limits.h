// SceneLimits: the limits on array elements and on the nesting depth of inputs. Internal.
#pragma once

#include <cstdint>

#include <vsa/foundation/string.h>
#include <vsa/model/scene.h>

namespace zn::korvo_sdk {

struct SceneLimits {
  /// An element stores its index in 32 bits.
  static constexpr std::uint64_t MAX_ARRAY_ELEMENTS = std::uint64_t{1} << 32;

  std::uint64_t emptyElements = Scene::DEFAULT_EMPTY_ELEMENT_LIMIT;
  std::uint64_t depth = Scene::DEFAULT_DEPTH_LIMIT;
  std::uint64_t emptyElementCount = 0;  ///< Number of empty elements.

  /// Throws DiagnosticError for an input deeper than `depth`.
  [[noreturn]] void throwTooDeep(const String& path) const;
  /// Throws DiagnosticError if `array` cannot grow by an empty element.
  void checkEmptyElements(const Input& array) const;
  /// Throws DiagnosticError if an array of `count` elements cannot grow.
  static void checkElementCount(const Input& array, std::uint64_t count);
};

}  // namespace zn::korvo_sdk
