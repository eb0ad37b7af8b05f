// A digest of all that a reading does to a scene.
#pragma once

#include <cstdint>
#include <string_view>

#include <vsa/host_scene.h>

namespace vsa_tools {

/// A scene that keeps names and types and no values. Two readings have the same digest if they make
/// the same nodes, values, links and header, in the same order, and most probably not otherwise.
class SceneDigest final : public vsa::HostScene {
 public:
  std::uint64_t value() const { return ordered_ + links_; }

  std::unique_ptr<vsa::HostNode> makeNode(std::string_view type, std::string_view name) override;
  void onRemove(vsa::HostNode& node) override;
  void onValue(const vsa::HostInput& input, const zn::korvo_sdk::AttrData& value) override;
  void onReference(const vsa::HostInput& input, vsa::HostNode* node) override;
  void onConnection(const vsa::HostInput& input, const vsa::HostOutput* output) override;
  void setFileVersion(unsigned long long version) override;
  void setFileTime(const zn::String& time) override;
  void pushFileComment(const zn::String& comment) override;

 private:
  std::uint64_t ordered_ = 0;
  std::uint64_t links_ = 0;  // a sum: links are resolved in no particular order
};

}  // namespace vsa_tools
