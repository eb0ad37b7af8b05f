// vsa::Scene: a scene that a program owns, and what it reads texts into.
//
//   vsa::Scene scene;
//   zn::korvo_sdk::Scene& plain = scene.plain();  // the same scene for the plain interface
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include <vsa/edit.h>
#include <vsa/edit_status.h>
#include <vsa/foundation/api.h>
#include <vsa/model/scene.h>
#include <vsa/text_parameter.h>
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
  NodeView operator[](TextParameter node) const noexcept { return view()[node]; }
  std::uint64_t fileVersion() const noexcept { return view().fileVersion(); }
  std::string_view fileTime() const noexcept { return view().fileTime(); }
  SceneView::CommentRange comments() const noexcept { return view().comments(); }

  // Changing it.

  /// The node of that name, to be changed. Missing if there is none.
  Node operator[](TextParameter node) noexcept;
  /// A new node without inputs. BadName for the type or the name, NameTaken.
  Added<Node> addNode(TextParameter type, TextParameter name) noexcept;
  /// Inputs that are connected to the node, or refer to it, then have no connection and no node.
  /// Missing or OtherScene if the scene has no such node.
  Status removeNode(NodeView node) noexcept;

  // The header of the file. Texts carry it in comments, so setting it changes the comments.

  /// Also replaces the comments that contain "version:" by "# version: N", at the place of the
  /// first one, or else before all comments.
  Status setFileVersion(std::uint64_t version) noexcept;
  /// The same for "# time: ..." and the comments that set a time; with an empty time, removes them.
  Status setFileTime(TextParameter time) noexcept;
  /// Adds a comment of one line; without "#" at its beginning, "# " is put before it. A comment
  /// that contains "version:" or "time:" does what it does in a text.
  Status addComment(TextParameter comment) noexcept;
  /// What a file begins with: version 1, no time and no comments.
  Status clearHeader() noexcept;

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
