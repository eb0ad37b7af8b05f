#include "scene/library_scene.h"

#include <atomic>

namespace zn::korvo_sdk {

namespace {

// Null until the first scene of the library is created.
std::atomic<const LibraryFunctions*> libraryFunctions{nullptr};

}  // namespace

void setLibraryFunctions(const LibraryFunctions& functions) noexcept {
  libraryFunctions.store(&functions, std::memory_order_relaxed);
}

LibraryScene* libraryScene(interfaces::IScene& scene) noexcept {
  const LibraryFunctions* const functions = libraryFunctions.load(std::memory_order_relaxed);
  return functions == nullptr ? nullptr : functions->libraryScene(scene);
}

std::uint64_t typedPrefixOf(interfaces::IInput& array) noexcept {
  const LibraryFunctions* const functions = libraryFunctions.load(std::memory_order_relaxed);
  return functions == nullptr ? 0 : functions->typedPrefixOf(array);
}

}  // namespace zn::korvo_sdk
