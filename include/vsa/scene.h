// vsa::Scene: a scene that a program owns, and what it reads texts into.
//
//   vsa::Scene scene;
//   zn::korvo_sdk::Scene& plain = scene.plain();  // the same scene for the plain interface
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include <vsa/foundation/api.h>
#include <vsa/model/scene.h>
#include <vsa/view.h>

namespace vsa {

/// Owns one scene of the library, with all its nodes, inputs and values. Can be moved and not
/// copied. A new scene is empty and takes no memory until something is put into it. A scene that
/// was moved from is an empty scene, too. One thread at a time may change a scene; any number may
/// look at one that nobody changes.
class VSA_API Scene {
 public:
  Scene() noexcept;
  Scene(Scene&& other) noexcept;
  Scene& operator=(Scene&& other) noexcept;
  ~Scene();

  // Looking at it: what SceneView offers, on an object that lives as long as the scene.

  SceneView view() const noexcept { return SceneView(plain_.get()); }
  operator SceneView() const noexcept { return view(); }  // implicit: a scene can be viewed
  NodeRange nodes() const noexcept { return view().nodes(); }
  NodeView operator[](std::string_view node) const noexcept { return view()[node]; }
  std::uint64_t fileVersion() const noexcept { return view().fileVersion(); }
  std::string_view fileTime() const noexcept { return view().fileTime(); }
  SceneView::CommentRange comments() const noexcept { return view().comments(); }

  // The plain interface.

  /// The same scene as an object of the plain interface. The reference is valid until this object
  /// is destroyed, moved from or assigned to. Throws std::bad_alloc, at the first call only.
  zn::korvo_sdk::Scene& plain();
  /// The same for a scene that is not changed. While nothing was put into the scene, an empty scene
  /// that all such objects share.
  const zn::korvo_sdk::Scene& plain() const;

 private:
  std::unique_ptr<zn::korvo_sdk::Scene> plain_;
};

}  // namespace vsa
