// Scene: the library's own scene. It implements the interfaces through which the reader accesses a
// scene.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include <vsa/foundation/string.h>
#include <vsa/model/input.h>
#include <vsa/model/node.h>
#include <vsa/model/output.h>
#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk {

struct SceneStorage;

/// A scene that owns its nodes, inputs and outputs, including removed ones. Every pointer to them
/// is valid until the scene is destroyed. One thread at a time may change a scene or call
/// `findNode`. Several threads may call functions that are const while no thread does so. Functions
/// that are not noexcept throw std::bad_alloc if memory runs out.
class VSA_API Scene final : public interfaces::IScene {
 public:
  /// The value of `emptyElementLimit` in a new scene.
  static constexpr std::uint64_t DEFAULT_EMPTY_ELEMENT_LIMIT = 524288;
  /// The value of `depthLimit` in a new scene.
  static constexpr std::uint64_t DEFAULT_DEPTH_LIMIT = 256;
  /// The largest value of `depthLimit`.
  static constexpr std::uint64_t MAX_DEPTH_LIMIT = 65535;

  /// An empty scene.
  Scene();
  ~Scene();
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  // The nodes.

  /// The number of nodes that were created, including removed ones. `nodeAt(0)` to
  /// `nodeAt(nodeSlots() - 1)` return them in the order of creation, and null for removed ones.
  std::uint64_t nodeSlots() const noexcept;
  /// The node with this index in the order of creation. It is null if the node was removed, or if
  /// `slot` is not less than `nodeSlots()`.
  Node* nodeAt(std::uint64_t slot) const noexcept;
  /// The number of nodes, without removed ones.
  std::uint64_t nodeCount() const noexcept;
  /// The node with this name, or null. Unlike `findNode`, the function stores nothing in the scene,
  /// so several threads may call it at the same time.
  Node* nodeNamed(std::string_view name) const noexcept;

  // The header of the file.

  /// The version. It is 0 if nothing has set it.
  unsigned long long fileVersion() const noexcept;
  /// The time with the spelling of the text. It is empty if there is none.
  String fileTime() const;
  /// The number of comments.
  std::uint64_t fileCommentCount() const noexcept;
  /// The comment with this index, in the order of the text. It includes its "#". `index` must be
  /// less than the count.
  String fileComment(std::uint64_t index) const;

  // Limits of the memory that a text can use. They are necessary because a short text can contain
  // any index and any nesting depth. If a text would exceed a limit, a function of the scene throws
  // a std::runtime_error: the plain interface logs it as an error, and a reading function of
  // namespace vsa returns ReadStatus::OverLimit. A new limit applies to objects that are created
  // after it was set.

  /// The maximum number of empty array elements in the scene. If the scene has this many, no array
  /// can grow. An element that was appended is empty, even if it is the one that the text names. It
  /// stops being empty when it gets a value, a member, an element or a link. A pending link counts,
  /// too. The functions of vsa::Input ignore this limit.
  std::uint64_t emptyElementLimit() const noexcept;
  void setEmptyElementLimit(std::uint64_t limit) noexcept;
  /// The maximum nesting level of inputs. An input of a node has level 1. A limit greater than
  /// MAX_DEPTH_LIMIT is the same as MAX_DEPTH_LIMIT.
  std::uint64_t depthLimit() const noexcept;
  void setDepthLimit(std::uint64_t limit) noexcept;

  // The functions of IScene. They do what the interface describes. The comments here describe what
  // this scene does in addition.

  /// Returns the node with exactly this name, or null. Letter case matters.
  Node* findNode(const String& name) override;
  /// Returns null if the scene has a node with this name. `reserved` is not used. The function does
  /// not check whether a text can contain the names.
  Node* createNode(const String& type, const String& name, const String& reserved) override;
  /// Returns the node with this name. If there is none, creates a node and uses the name also as
  /// its type.
  Node* defineNode(const String& name) override;
  /// Removes the node. Inputs that are connected to its outputs are then not connected, and inputs
  /// that refer to it refer to no node. Does nothing if no node has this name.
  void removeNode(const String& name) override;
  void setFileVersion(unsigned long long version) override;
  void setFileTime(const String& time) override;
  void pushFileComment(const String& comment) override;
  void clearComments() override;

 private:
  std::unique_ptr<SceneStorage> storage_;
};

}  // namespace zn::korvo_sdk
