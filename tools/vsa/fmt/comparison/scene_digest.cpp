#include "tools/vsa/fmt/comparison/scene_digest.h"

#include <cstring>

namespace vsa_tools {

namespace {

using zn::korvo_sdk::AttrData;
using zn::korvo_sdk::AttrType;

// The multiplier and the shifts are those of the 64-bit finalizer of MurmurHash3.
std::uint64_t mix(std::uint64_t digest, std::uint64_t word) {
  digest = (digest ^ word) * 0xFF51AFD7ED558CCDU;
  return digest ^ digest >> 33;
}

std::uint64_t mixBytes(std::uint64_t digest, const void* bytes, std::size_t count) {
  const char* at = static_cast<const char*>(bytes);
  digest = mix(digest, count);
  for (; count >= 8; at += 8, count -= 8) {
    std::uint64_t word;
    std::memcpy(&word, at, 8);
    digest = mix(digest, word);
  }
  std::uint64_t rest = 0;
  if (count > 0) std::memcpy(&rest, at, count);
  return mix(digest, rest);
}

std::uint64_t mixText(std::uint64_t digest, std::string_view text) {
  return mixBytes(digest, text.data(), text.size());
}

std::uint64_t mixValue(std::uint64_t digest, const AttrData& value) {
  digest = mix(digest, static_cast<std::uint64_t>(value.type));
  digest = mix(digest, static_cast<std::uint32_t>(value.elementType));
  const auto& payload = value.payload;
  switch (value.type) {
    case AttrType::Bool:
      return mix(digest, payload.boolean ? 1 : 0);
    case AttrType::Int:
    case AttrType::UInt:
      return mix(digest, static_cast<std::uint64_t>(payload.integer));
    case AttrType::Real:
      return mixBytes(digest, &payload.real, sizeof(payload.real));
    case AttrType::String:
      return mixText(digest, payload.string != nullptr ? payload.string : "");
    case AttrType::Buffer: {
      const auto& buffer = payload.buffer;
      digest = mix(digest, buffer.count);
      return mixBytes(digest, buffer.memory, static_cast<std::size_t>(buffer.bytes));
    }
    default:
      return mixBytes(digest, payload.components,
                      zn::korvo_sdk::componentCount(value.type) * sizeof(double));
  }
}

/// A function of HostScene that the reader called.
enum Call : std::uint64_t {
  MakeNode = 1,
  Remove,
  Value,
  Reference,
  Connection,
  Version,
  Time,
  Comment
};

std::uint64_t mixInput(std::uint64_t digest, Call call, const vsa::HostInput& input) {
  const zn::String path = input.path();
  return mixText(mix(digest, call), path.view());
}

}  // namespace

std::unique_ptr<vsa::HostNode> SceneDigest::makeNode(std::string_view type, std::string_view name) {
  ordered_ = mixText(mixText(mix(ordered_, MakeNode), type), name);
  return HostScene::makeNode(type, name);
}

void SceneDigest::onRemove(vsa::HostNode& node) {
  ordered_ = mixText(mix(ordered_, Remove), node.nodeName());
}

void SceneDigest::onValue(const vsa::HostInput& input, const AttrData& value) {
  ordered_ = mixValue(mixInput(ordered_, Value, input), value);
}

void SceneDigest::onReference(const vsa::HostInput& input, vsa::HostNode* node) {
  const std::uint64_t link = mixInput(0, Reference, input);
  links_ += node != nullptr ? mixText(link, node->nodeName()) : link;
}

void SceneDigest::onConnection(const vsa::HostInput& input, const vsa::HostOutput* output) {
  std::uint64_t link = mixInput(0, Connection, input);
  if (output != nullptr) link = mixText(mixText(link, output->node()->nodeName()), output->name());
  links_ += link;
}

void SceneDigest::setFileVersion(unsigned long long version) {
  ordered_ = mix(mix(ordered_, Version), version);
}

void SceneDigest::setFileTime(const zn::String& time) {
  ordered_ = mixText(mix(ordered_, Time), time.view());
}

void SceneDigest::pushFileComment(const zn::String& comment) {
  ordered_ = mixText(mix(ordered_, Comment), comment.view());
}

}  // namespace vsa_tools
