// LibraryScene: functions of the library's own scene that are not in the interface IScene.
// Internal.
//
// The reader calls a scene through its interface and does not depend on the library's own scene.
// That scene therefore registers a function here, by which the reader recognises it. The reader
// then uses the functions below to create an input without a second search and to prefetch memory.
// It also relies on the fact that the library's own scene never renames a node.
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

/// The type of a function that returns the LibraryScene of a scene of the library, and null for a
/// host's scene.
using LibrarySceneOf = LibraryScene* (*)(interfaces::IScene& scene) noexcept;

/// Sets the function that `libraryScene` calls. Every scene of the library sets the same function.
void setLibraryScene(LibrarySceneOf function) noexcept;
/// Returns the result of that function. Returns null if no scene of the library has been created.
LibraryScene* libraryScene(interfaces::IScene& scene) noexcept;

}  // namespace zn::korvo_sdk
