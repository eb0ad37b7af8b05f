// WantedNodes: the scene that the parser uses if only some nodes are to be kept. It forwards calls
// for these nodes to the scene of the caller, the kept scene. Internal.
//
// Other nodes are created in a separate scene, so that their statements are checked, too. The
// separate scene gets strings and buffers without their contents, so that they take no memory. It
// is destroyed with the reading. If the kept scene already contains a node that is not wanted, the
// parser gets a node of the separate scene with the same name and type instead. If the text has
// removed the node, the parser gets none.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include <vsa/foundation/string.h>
#include <vsa/model/scene.h>
#include <vsa/scene/scene_interface.h>

namespace vsa {

class WantedNodes final : public zn::korvo_sdk::interfaces::IScene {
 public:
  using IInput = zn::korvo_sdk::interfaces::IInput;
  using INode = zn::korvo_sdk::interfaces::INode;
  using IScene = zn::korvo_sdk::interfaces::IScene;
  using String = zn::String;

  /// `kept` must exist as long as this object. No node is wanted until `want` is called.
  explicit WantedNodes(IScene& kept) : kept_(kept) {}

  /// Sets the names and the types of the wanted nodes. The strings must exist as long as this
  /// object.
  void want(const std::vector<std::string>& names, const std::vector<std::string>& types);

  /// Whether the node was created in the separate scene.
  bool isDropped(INode& node) const { return droppedNodes_.count(&node) != 0; }
  /// Whether `dropLinksOf` was called for the input.
  bool isDropped(IInput& input) const { return droppedInputs_.count(&input) != 0; }
  /// Stores that this input of a dropped node has a pending link.
  void dropLinksOf(IInput& input) { droppedInputs_.insert(&input); }

  // The functions of IScene.

  INode* findNode(const String& name) override;
  INode* createNode(const String& type, const String& name, const String& reserved) override;
  INode* defineNode(const String& name) override;
  void removeNode(const String& name) override;
  void setFileVersion(unsigned long long version) override { kept_.setFileVersion(version); }
  void setFileTime(const String& time) override { kept_.setFileTime(time); }
  void pushFileComment(const String& comment) override { kept_.pushFileComment(comment); }
  void clearComments() override { kept_.clearComments(); }

 private:
  bool isWanted(std::string_view type, std::string_view name) const;
  INode* findKept(const String& name);
  zn::korvo_sdk::Scene& dropped();
  INode* drop(INode* made);

  IScene& kept_;
  std::unordered_set<std::string_view> names_;
  std::unordered_set<std::string_view> types_;
  std::unique_ptr<zn::korvo_sdk::Scene> dropped_;
  std::unordered_set<const INode*>
      droppedNodes_;  // nodes of the separate scene, including removed ones
  std::unordered_set<const IInput*> droppedInputs_;
  std::unordered_set<std::string> removed_;  // the names of removed nodes that are not wanted
};

}  // namespace vsa
