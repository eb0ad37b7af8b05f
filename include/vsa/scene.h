// vsa::Scene: a scene that a program owns. Texts can be read into it.
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

/// A scene of the library with all its nodes, inputs and values. Objects can be moved, but not
/// copied. After a move, views of the contents stay valid, and the scene that was moved from is
/// empty. A new scene is empty, too. It allocates memory only when it is changed, or when plain()
/// is called for a scene that is not const. One thread at a time may change a scene. Several
/// threads may read it while no thread changes it.
class VSA_API Scene {
 public:
  /// An empty scene.
  Scene() noexcept;
  Scene(Scene&& other) noexcept;
  Scene& operator=(Scene&& other) noexcept;
  ~Scene();

  // Functions that read the contents. SceneView describes them.

  SceneView view() const noexcept { return SceneView(plain_.get()); }
  // The conversion is implicit, so that a caller can pass a scene as a view. A temporary scene does
  // not convert, because it would be destroyed before the view.
  operator SceneView() const& noexcept { return view(); }
  operator SceneView() const&& = delete;
  NodeRange nodes() const noexcept { return view().nodes(); }
  NodeView operator[](TextParameter node) const noexcept { return view()[node]; }
  std::uint64_t fileVersion() const noexcept { return view().fileVersion(); }
  std::string_view fileTime() const noexcept { return view().fileTime(); }
  SceneView::CommentRange comments() const noexcept { return view().comments(); }

  // Changing the contents.

  /// Returns the node with this name, which can then be changed. The result is missing if there is
  /// no such node.
  Node operator[](TextParameter node) noexcept;
  /// Adds a node without inputs. Fails with BadName if no text can represent the type or the name,
  /// with NameTaken if the scene has a node with this name, and with TooMany or OutOfMemory.
  Added<Node> addNode(TextParameter type, TextParameter name) noexcept;
  /// Removes a node. Connections to its outputs are removed, too, and references to it become
  /// references to no node. Views of the node stay valid: see NodeView::isRemoved. Fails with
  /// Missing, Removed or OtherScene if the scene does not contain the node.
  Status removeNode(NodeView node) noexcept;

  // The header of the file. A text contains version and time as comments, so these functions also
  // change the comments of the scene. A function that fails with OutOfMemory may have removed
  // comments.

  /// Sets the version. The comment "# version: N" replaces the first comment that contains
  /// "version:". All further comments with "version:" are removed. If no comment contains
  /// "version:", the new comment is placed before all others.
  Status setFileVersion(std::uint64_t version) noexcept;
  /// Sets the time. A comment sets a time if it contains "time:" and not "version:". The first
  /// comment that sets a time is replaced by "# time: " and the time. All further comments that set
  /// a time are removed. If no comment sets a time, the new comment is placed before all others.
  /// For an empty time, the function only removes the comments that set a time. Fails with BadTime
  /// or NulCharacter if no text can represent the time.
  Status setFileTime(TextParameter time) noexcept;
  /// Appends a comment of one line. If it does not begin with "#", the function adds "# " before
  /// it. A comment that contains "version:" or "time:" sets the version or the time, as it does in
  /// a text. Fails with BadComment, BadVersionComment or NulCharacter if no text can represent the
  /// comment.
  Status addComment(TextParameter comment) noexcept;
  /// Resets the header to version 1, no time and no comments. The functions of read.h do the same
  /// before they read a text, except with ReadOptions::keepHeader.
  Status clearHeader() noexcept;

  // The plain interface.

  /// Returns the scene as an object of the plain interface. The reference is valid until this
  /// vsa::Scene is destroyed or assigned to. If this vsa::Scene is moved from, the reference is to
  /// the scene of the new owner. If there is no object of the plain interface yet, the function
  /// allocates it, and may throw std::bad_alloc.
  zn::korvo_sdk::Scene& plain();
  /// Returns the scene as a constant object of the plain interface. If there is none yet, the
  /// result is an empty scene that all vsa::Scene objects share, and the function may throw
  /// std::bad_alloc.
  const zn::korvo_sdk::Scene& plain() const;

 private:
  std::unique_ptr<zn::korvo_sdk::Scene> plain_;
};

}  // namespace vsa
