// Scene: the library's own scene, a minimal one behind the interfaces that the reader calls.
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

/// Owns its nodes, inputs and outputs, those of removed nodes included: every pointer that it
/// returned stays valid until the scene is destroyed. One thread at a time may use a scene. What
/// makes something throws std::bad_alloc when memory runs out.
class VSA_API Scene final : public interfaces::IScene {
 public:
  static constexpr std::uint64_t DEFAULT_EMPTY_ELEMENT_LIMIT = 524288;  ///< Elements.
  static constexpr std::uint64_t DEFAULT_DEPTH_LIMIT = 256;             ///< Levels.
  static constexpr std::uint64_t MAX_DEPTH_LIMIT = 65535;               ///< Levels.

  Scene();
  ~Scene();
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  // The nodes.

  /// Nodes ever made, removed ones included. `nodeAt` of 0 up to this walks them in creation order.
  std::uint64_t nodeSlots() const noexcept;
  /// The node made as the i-th; null if it was removed and past the end.
  Node* nodeAt(std::uint64_t slot) const noexcept;
  /// Nodes that were not removed.
  std::uint64_t nodeCount() const noexcept;
  /// The node of that name, or null: `findNode` for a scene that is only read. It remembers no
  /// answer, so several threads may call it.
  Node* nodeNamed(std::string_view name) const noexcept;

  // The header of the file.

  /// 0 while no text has set it.
  unsigned long long fileVersion() const noexcept;
  /// As the text has it; empty while no text has set it.
  String fileTime() const;
  /// The comments, each with its "#", in the order of the text.
  std::uint64_t fileCommentCount() const noexcept;
  /// `index` is below the count.
  String fileComment(std::uint64_t index) const;

  // Limits. A text names an index or a depth in a few characters; the limits keep it from asking
  // for memory out of all proportion. Going past a limit throws std::runtime_error. A limit may be
  // changed between two texts; what exists already stays.

  /// Array elements in the whole scene that were only appended to reach a higher index and have not
  /// been given a value, a member, an element or a link since.
  std::uint64_t emptyElementLimit() const noexcept;
  void setEmptyElementLimit(std::uint64_t limit) noexcept;
  /// Levels of inputs; an input of a node is level 1. A limit above MAX_DEPTH_LIMIT becomes
  /// MAX_DEPTH_LIMIT.
  std::uint64_t depthLimit() const noexcept;
  void setDepthLimit(std::uint64_t limit) noexcept;

  // IScene. What the interface says of an operation holds here too; the comments add what this
  // scene does.

  /// Names are compared exactly.
  Node* findNode(const String& name) override;
  /// Null if the name exists. `reserved` is ignored.
  Node* createNode(const String& type, const String& name, const String& reserved) override;
  /// The node of that name; a new one, with the name as its type, if there is none.
  Node* defineNode(const String& name) override;
  /// Inputs that are connected to the node, or refer to it, then have no connection and no node.
  /// Does nothing for a name that no node has.
  void removeNode(const String& name) override;
  void setFileVersion(unsigned long long version) override;
  void setFileTime(const String& time) override;
  void pushFileComment(const String& comment) override;
  void clearComments() override;

 private:
  std::unique_ptr<SceneStorage> storage_;
};

}  // namespace zn::korvo_sdk
