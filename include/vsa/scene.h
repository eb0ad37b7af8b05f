// vsa::Scene: a scene that a program owns, and into which texts are read.
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

/// Owns one scene of the library, with all its nodes, inputs and values. Can be moved, but not
/// copied. A new scene is empty and takes no memory until something is put into it. A scene that
/// was moved from is an empty scene, too. One thread at a time may change a scene. Any number of
/// threads may read it while none changes it.
class VSA_API Scene {
 public:
  Scene() noexcept;
  Scene(Scene&& other) noexcept;
  Scene& operator=(Scene&& other) noexcept;
  ~Scene();

  // Reading the contents. See SceneView for these functions.

  SceneView view() const noexcept { return SceneView(plain_.get()); }
  operator SceneView() const noexcept { return view(); }  // implicit: a scene can be viewed
  NodeRange nodes() const noexcept { return view().nodes(); }
  NodeView operator[](TextParameter node) const noexcept { return view()[node]; }
  std::uint64_t fileVersion() const noexcept { return view().fileVersion(); }
  std::string_view fileTime() const noexcept { return view().fileTime(); }
  SceneView::CommentRange comments() const noexcept { return view().comments(); }

  // Changing the contents.

  /// The node of that name, which can be changed; missing if there is none.
  Node operator[](TextParameter node) noexcept;
  /// Adds a node without inputs. Fails with BadName if no text can represent the type or the name,
  /// and with NameTaken if the scene has a node of that name.
  Added<Node> addNode(TextParameter type, TextParameter name) noexcept;
  /// Removes a node. Inputs that are connected to it, or refer to it, lose that link. Fails with
  /// Missing, Removed or OtherScene if the scene has no such node.
  Status removeNode(NodeView node) noexcept;

  // The header of the file. In a text, version and time are in comments. So these functions change
  // the comments of the scene, too. After OutOfMemory, comments may be missing.

  /// Sets the version. Replaces the first comment that contains "version:" by "# version: N" and
  /// removes the others. If there is none, puts the new comment before all others.
  Status setFileVersion(std::uint64_t version) noexcept;
  /// Sets the time. Replaces the first comment that sets a time by "# time: ..." and removes the
  /// others. If there is none, puts the new comment before all others. An empty time only removes
  /// the comments that set a time. Fails with BadTime or NulCharacter if no text can represent the
  /// time.
  Status setFileTime(TextParameter time) noexcept;
  /// Appends a comment of one line. Puts "# " before it if it does not begin with "#". A comment
  /// that contains "version:" or "time:" sets the version or the time, as it would in a text. Fails
  /// with BadComment, BadVersionComment or NulCharacter if no text can represent the comment.
  Status addComment(TextParameter comment) noexcept;
  /// Resets the header: version 1, no time and no comments, as before a file is read.
  Status clearHeader() noexcept;

  // The plain interface.

  /// The scene as an object of the plain interface. The reference is valid until this object is
  /// destroyed, moved from or assigned to. Throws std::bad_alloc if the object has to be
  /// allocated, because nothing has been added to the scene yet.
  zn::korvo_sdk::Scene& plain();
  /// The scene as an object of the plain interface that cannot be changed. If nothing has been
  /// added to this scene yet, returns an empty scene that all such objects share.
  const zn::korvo_sdk::Scene& plain() const;

 private:
  std::unique_ptr<zn::korvo_sdk::Scene> plain_;
};

}  // namespace vsa
