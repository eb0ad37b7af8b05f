// Scene: the smallest scene that is useful, behind the interfaces that the reader calls.
#pragma once

#include <cstdint>

#include <vsa/foundation/string.h>
#include <vsa/foundation/vector.h>
#include <vsa/model/node.h>
#include <vsa/scene/scene_interface.h>
#include "foundation/containers/hash_index.h"
#include "scene/model/storage/slabs.h"
#include "scene/model/storage/small_block_pool.h"

namespace zn::korvo_sdk {

/// Owns its nodes and inputs, removed ones included: every pointer it gave out stays valid until it
/// goes. For one thread at a time.
class VSA_API Scene final : public interfaces::IScene {
 public:
  static constexpr std::uint64_t DEFAULT_EMPTY_ELEMENT_LIMIT = 524288;  ///< Elements.
  static constexpr std::uint64_t DEFAULT_DEPTH_LIMIT = 256;             ///< Levels.
  static constexpr std::uint64_t GREATEST_DEPTH_LIMIT = 65535;          ///< Levels.

  Scene() = default;
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  // The nodes.

  /// Nodes ever made, removed ones included; with `nodeAt`, the way to walk them in creation order.
  std::uint64_t nodeSlots() const noexcept { return nodes_.size(); }
  /// The node made as the i-th, or null when it has been removed and past the end.
  Node* nodeAt(std::uint64_t slot) const noexcept;
  /// Nodes that were not removed.
  std::uint64_t nodeCount() const noexcept { return names_.size(); }

  // The header of the file.

  /// 0 while no text has set it.
  unsigned long long fileVersion() const noexcept { return fileVersion_; }
  /// As the text has it; empty while no text has set it.
  String fileTime() const { return fileTime_; }
  /// The comments, each with its "#", in the order of the text; `index` is below the count.
  std::uint64_t fileCommentCount() const noexcept { return fileComments_.size; }
  String fileComment(std::uint64_t index) const { return fileComments_[index]; }

  // Limits. A text names an index or a depth in a few characters; these keep it from asking for
  // more memory than it is worth. What they refuse is a std::runtime_error. A limit may be changed
  // at any time between two texts; what is there already stays.

  /// Elements that only fill the gap before an index and were never used, in the whole scene.
  std::uint64_t emptyElementLimit() const noexcept { return emptyElementLimit_; }
  void setEmptyElementLimit(std::uint64_t limit) noexcept { emptyElementLimit_ = limit; }
  /// Levels of inputs; an input of a node is level 1. A limit above GREATEST_DEPTH_LIMIT is set to
  /// that.
  std::uint64_t depthLimit() const noexcept { return depthLimit_; }
  void setDepthLimit(std::uint64_t limit) noexcept;

  // IScene.

  /// The node of exactly that name, or null.
  Node* findNode(const String& name) override;
  /// Null when a node has that name already. `reserved` is unused.
  Node* createNode(const String& type, const String& name, const String& reserved) override;
  /// The node of that name; a new one, with the name as its type, when there is none.
  Node* defineNode(const String& name) override;
  /// Takes the node out of look-ups; inputs that were connected to it or referred to it let go.
  /// Does nothing for a name that no node has.
  void removeNode(const String& name) override;
  void setFileVersion(unsigned long long version) override { fileVersion_ = version; }
  void setFileTime(const String& time) override { fileTime_ = time; }
  void pushFileComment(const String& comment) override { fileComments_.push_back(comment); }
  void clearComments() override { fileComments_.reserve(0); }

 private:
  friend class Node;
  friend class Input;

  Slabs<Input, Scene>& inputs() noexcept { return inputs_; }
  Slabs<Output, Scene>& outputs() noexcept { return outputs_; }
  Blocks& blocks() noexcept { return blocks_; }
  Node* add(const String& type, const String& name);
  std::uint64_t slotOf(const String& name) const;
  [[noreturn]] void refuseDepth(const String& newPath) const;
  void checkEmptyElements(const Input& array) const;
  void countEmptyElement() noexcept { ++emptyElements_; }
  void uncountEmptyElement() noexcept { --emptyElements_; }

  // The answers given last: a text asks for the same input several times in a row, and whether
  // there is one before it has it made.
  struct LastLookUp {
    Input* found = nullptr;
    const Node* missingIn = nullptr;
    String missing;
  };

  Blocks blocks_;
  Slabs<Node, Scene> nodes_{this};  // in creation order
  ds::HashIndex names_;             // of the nodes that were not removed
  Node* lastFound_ = nullptr;       // statements about one node mostly stand together
  String lastMissing_;              // the name that no node had when it was looked up last
  LastLookUp lastLookUp_;           // of inputs of nodes
  Slabs<Input, Scene> inputs_{this};
  Slabs<Output, Scene> outputs_{this};
  std::uint64_t emptyElements_ = 0;
  std::uint64_t emptyElementLimit_ = DEFAULT_EMPTY_ELEMENT_LIMIT;
  std::uint64_t depthLimit_ = DEFAULT_DEPTH_LIMIT;
  unsigned long long fileVersion_ = 0;
  String fileTime_;
  ds::Vector<String> fileComments_;
};

}  // namespace zn::korvo_sdk
