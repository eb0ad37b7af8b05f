#include "tools/vsa/dump/large_buffer.h"

#include <algorithm>

#include "tools/scene_text/input_tree.h"

namespace vsa_tools {

namespace {

using zn::korvo_sdk::Input;

/// The visitor for walkInput(), which searches for a large buffer.
struct LargeBuffer {
  std::uint64_t maxElements;
  std::string path = {};

  void open(Input& input, const InputPosition&) {
    if (input.type() != zn::korvo_sdk::AttrType::Buffer || !path.empty()) return;
    const std::uint64_t each = zn::korvo_sdk::elementBytes(input.buffer().type);
    const std::uint64_t elements = std::min(input.buffer().count, maxElements);
    if (each > 0 && elements > MAX_BUFFER_BYTES / each) path = input.path().view();
  }
  void close(Input&) {}
};

}  // namespace

std::string largeBufferOf(vsa::SceneView scene, const DumpSelection& selection,
                          std::uint64_t maxElements) {
  LargeBuffer large{maxElements};
  for (const vsa::NodeView node : scene.nodes()) {
    const ChosenInputs chosen = selection.inputsOf(node);
    for (std::uint64_t i = 0; !chosen && i < node.plain()->inputCount(); ++i) {
      walkInput(*node.plain()->inputAt(i), large);
    }
    for (std::size_t i = 0; chosen && i < chosen->size(); ++i) {
      walkInput(*(*chosen)[i].input, large);
    }
    if (!large.path.empty()) break;
  }
  return large.path;
}

}  // namespace vsa_tools
