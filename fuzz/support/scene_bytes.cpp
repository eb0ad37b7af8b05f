#include "fuzz/support/scene_bytes.h"

#include <cstdint>
#include <utility>

#include "fuzz/support/check.h"
#include "tools/scene_text/input_tree.h"

namespace vsa_fuzz {

namespace {

using zn::korvo_sdk::AttrType;
using zn::korvo_sdk::Input;
using zn::korvo_sdk::Node;
using zn::korvo_sdk::Output;
using zn::korvo_sdk::Scene;

class Bytes {
 public:
  template <class Number>
  void number(Number value) {
    bytes_.append(reinterpret_cast<const char*>(&value), sizeof value);
  }
  // Appends the length, too. Without it, the texts "ab" and "c" would give the same bytes as "a"
  // and "bc".
  void text(std::string_view text) {
    number(text.size());
    bytes_.append(text);
  }

  // Called by walkInput.
  void open(Input& input, const vsa_tools::InputPosition& position) {
    number(position.depth);
    text(input.name().view());
    number(input.type());
    value(input);
    if (const Output* const output = input.connection()) {
      text(output->node()->nameView());
      text(output->name().view());
    }
  }
  void close(Input&) {}

  std::string take() { return std::move(bytes_); }

 private:
  void value(Input& input) {
    switch (input.type()) {
      case AttrType::Bool:
        return number(input.boolean());
      case AttrType::Int:
      case AttrType::UInt:
        return number(input.integer());
      case AttrType::Real:
        return number(input.real());
      case AttrType::String:
        return text(input.string());
      case AttrType::Node:
        return text(input.node() == nullptr ? std::string_view() : input.node()->nameView());
      case AttrType::Buffer:
        return buffer(input.buffer());
      case AttrType::Array:
        number(input.elementType());
        return number(input.count());
      case AttrType::Object:
        return number(input.memberCount());
      default:
        return components(input);
    }
  }

  void buffer(const zn::korvo_sdk::BufferValue& buffer) {
    number(buffer.type);
    number(buffer.count);
    text({reinterpret_cast<const char*>(buffer.memory),
          buffer.memory == nullptr ? 0 : static_cast<std::size_t>(buffer.bytes)});
  }

  void components(Input& input) {
    for (unsigned i = 0; i < zn::korvo_sdk::componentCount(input.type()); ++i) {
      number(input.components()[i]);
    }
  }

  std::string bytes_;
};

void addOutcome(const vsa_tools::ReadOutcome& outcome, Bytes& bytes) {
  bytes.number(outcome.result);
  if (outcome.escaped) bytes.text(*outcome.escaped);
  for (const vsa_tools::LogEntry& entry : outcome.log) {
    bytes.number(entry.level);
    bytes.text(entry.text);
  }
}

void addHeader(const Scene& scene, Bytes& bytes) {
  bytes.number(scene.fileVersion());
  bytes.text(scene.fileTime().view());
  for (std::uint64_t i = 0; i < scene.fileCommentCount(); ++i) {
    bytes.text(scene.fileComment(i).view());
  }
}

void addNode(const Node& node, Bytes& bytes) {
  bytes.text(node.typeView());
  bytes.text(node.nameView());
  for (std::uint64_t i = 0; i < node.inputCount(); ++i) {
    vsa_tools::walkInput(*node.inputAt(i), bytes);
  }
}

}  // namespace

std::string bytesOf(const FuzzRead& read, const Scene& scene) {
  Bytes bytes;
  addOutcome(read.outcome, bytes);
  addHeader(scene, bytes);
  for (std::uint64_t slot = 0; slot < scene.nodeSlots(); ++slot) {
    if (const Node* const node = scene.nodeAt(slot)) addNode(*node, bytes);
  }
  return bytes.take();
}

// Compares the bytes first, which is much faster than comparing dumps. If the bytes differ, the
// dumps are compared. They may still be equal, because a dump does not show the bits of a NaN.
void checkSameScene(const ReadScene& expected, const ReadScene& found, std::string_view about) {
  if (bytesOf(expected.read, expected.scene) == bytesOf(found.read, found.scene)) return;
  checkSame(dumped(expected.read, expected.scene), dumped(found.read, found.scene), about);
}

}  // namespace vsa_fuzz
