#include "scene/library_scene.h"

#include <atomic>

namespace zn::korvo_sdk {

namespace {

std::atomic<LibrarySceneOf> librarySceneOf{nullptr};

}  // namespace

void setLibraryScene(LibrarySceneOf function) noexcept {
  librarySceneOf.store(function, std::memory_order_relaxed);
}

LibraryScene* libraryScene(interfaces::IScene& scene) noexcept {
  const LibrarySceneOf function = librarySceneOf.load(std::memory_order_relaxed);
  return function == nullptr ? nullptr : function(scene);
}

}  // namespace zn::korvo_sdk
