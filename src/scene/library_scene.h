// LibraryScene: functions of the library's own scene that are not in the interface IScene.
// Internal.
//
// The reader calls a scene through its interface and does not depend on the library's own scene.
// That scene therefore registers functions here, by which the reader recognises the scene and its
// inputs. The reader then uses LibraryScene to create an input without a second search and to
// prefetch memory. It also relies on the fact that the library's own scene never renames a node.
//
// The reader sets the type of the untyped elements of arrays of buffers and arrays of arrays. An
// array may contain elements of earlier texts, and the reader does not know which of these have a
// type. The library's own scene stores for each array how many of its leading elements have a type.
#pragma once

#include <cstdint>

#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk {

class LibraryScene {
 public:
  /// Returns the input of that name, or null. If the node's type declares an input of that name
  /// that does not exist yet, creates it. `node` must be a node of this scene.
  virtual interfaces::IInput* findInput(interfaces::INode& node, const String& name) = 0;
  /// Creates an input. Returns null if the scene refuses the input. Call it only after findInput
  /// has returned null.
  virtual interfaces::IInput* addInput(interfaces::INode& node, const String& name,
                                       AttrType type) = 0;

  // Hints without observable effects.

  /// Prefetches the slot in which a name with this hash is looked up.
  virtual void prefetchSlot(std::uint64_t nameHash) const noexcept = 0;
  /// Prefetches the node of a name with this hash. Call prefetchSlot some time earlier, so that the
  /// slot is already in the cache.
  virtual void prefetchNode(std::uint64_t nameHash) const noexcept = 0;

 protected:
  ~LibraryScene() = default;
};

/// The implementations of `libraryScene` and `typedPrefixOf`.
struct LibraryFunctions {
  LibraryScene* (*libraryScene)(interfaces::IScene& scene) noexcept;
  std::uint64_t (*typedPrefixOf)(interfaces::IInput& array) noexcept;
};

/// Sets the functions that the next two functions call. Every scene of the library sets the same
/// functions. `functions` must exist until the process ends.
void setLibraryFunctions(const LibraryFunctions& functions) noexcept;
/// Returns the LibraryScene of a scene of the library. Returns null for a host's scene.
LibraryScene* libraryScene(interfaces::IScene& scene) noexcept;
/// Returns the number of typed elements at the start of `array`. The reader need not set the type
/// of a typed element: it is not Null, and if it has the element type of `array`, it is not a
/// buffer or an array without an element type of its own. Returns 0 if `array` is an input of a
/// host's class.
std::uint64_t typedPrefixOf(interfaces::IInput& array) noexcept;

}  // namespace zn::korvo_sdk
