// Scene: the library's own scene, a minimal implementation of the interfaces that the reader calls.
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

/// Owns its nodes, inputs and outputs, including those of removed nodes. Every pointer that it
/// returned stays valid until the scene is destroyed. May be used by one thread at a time.
/// Functions that create an object throw std::bad_alloc when memory runs out.
class VSA_API Scene final : public interfaces::IScene {
 public:
  /// The value of `emptyElementLimit` in a new scene.
  static constexpr std::uint64_t DEFAULT_EMPTY_ELEMENT_LIMIT = 524288;
  /// The value of `depthLimit` in a new scene.
  static constexpr std::uint64_t DEFAULT_DEPTH_LIMIT = 256;
  /// The largest value of `depthLimit`.
  static constexpr std::uint64_t MAX_DEPTH_LIMIT = 65535;

  Scene();
  ~Scene();
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  // The nodes.

  /// The number of nodes created so far, including removed ones. `nodeAt` of 0 to `nodeSlots() - 1`
  /// returns them in creation order.
  std::uint64_t nodeSlots() const noexcept;
  /// The i-th node in creation order. Null if it was removed, or if `slot` is not less than
  /// `nodeSlots()`.
  Node* nodeAt(std::uint64_t slot) const noexcept;
  /// The number of nodes that were not removed.
  std::uint64_t nodeCount() const noexcept;
  /// The node of that name, or null. Unlike `findNode` it stores nothing in the scene, so several
  /// threads may call it at the same time.
  Node* nodeNamed(std::string_view name) const noexcept;

  // The header of the file.

  /// The version; 0 if no text has set it.
  unsigned long long fileVersion() const noexcept;
  /// The time as the text spells it; empty if no text has set it.
  String fileTime() const;
  /// The number of comments.
  std::uint64_t fileCommentCount() const noexcept;
  /// The i-th comment in the order of the text, including its "#". `index` must be less than the
  /// count.
  String fileComment(std::uint64_t index) const;

  // Limits. A short text can contain any index and any nesting depth. The limits restrict the
  // memory for them. The reader reports an exceeded limit as an error (std::runtime_error). A new
  // limit applies to the objects that are created afterwards.

  /// The maximum number of empty array elements in the scene. An element is empty if it was
  /// appended only because a higher index was used, and has had no value, member, element or link
  /// since then.
  std::uint64_t emptyElementLimit() const noexcept;
  void setEmptyElementLimit(std::uint64_t limit) noexcept;
  /// The maximum nesting level of inputs; an input of a node has level 1. A value above
  /// MAX_DEPTH_LIMIT counts as MAX_DEPTH_LIMIT.
  std::uint64_t depthLimit() const noexcept;
  void setDepthLimit(std::uint64_t limit) noexcept;

  // The functions of IScene. The comments of the interface apply; those below add the behaviour of
  // this scene.

  /// Compares names exactly, including letter case.
  Node* findNode(const String& name) override;
  /// Returns null if the name exists. Ignores `reserved`.
  Node* createNode(const String& type, const String& name, const String& reserved) override;
  /// Returns the node of that name. If there is none, creates one with the name as its type.
  Node* defineNode(const String& name) override;
  /// Inputs that are connected to the node or refer to it lose the connection or the reference.
  /// Does nothing for an unknown name.
  void removeNode(const String& name) override;
  void setFileVersion(unsigned long long version) override;
  void setFileTime(const String& time) override;
  void pushFileComment(const String& comment) override;
  void clearComments() override;

 private:
  std::unique_ptr<SceneStorage> storage_;
};

}  // namespace zn::korvo_sdk
