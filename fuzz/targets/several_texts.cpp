// Reads up to 12 texts into one scene, alternately from a String and from a File. After some of
// them, removes a node. The settings select these texts. The scene must stay valid after an error
// in a text. A byte 0x01 separates the texts. The reader treats this byte as white space.
#include <algorithm>
#include <string>

#include "fuzz/support/check.h"
#include "fuzz/support/scene_bytes.h"
#include "fuzz/targets.h"

namespace vsa_fuzz {

namespace {

constexpr char SEPARATOR = '\x01';

/// Checks that every node is found by its name and that the number of nodes is right.
void checkNodes(zn::korvo_sdk::Scene& scene) {
  std::uint64_t present = 0;
  for (std::uint64_t slot = 0; slot < scene.nodeSlots(); ++slot) {
    zn::korvo_sdk::Node* const node = scene.nodeAt(slot);
    if (node == nullptr) continue;
    ++present;
    if (scene.findNode(node->name()) != node) fail("a node is not found by its name");
  }
  if (present != scene.nodeCount()) fail("the count of nodes is wrong");
}

/// Removes the node in the slot that `choice` selects. Does nothing if the slot contains no node.
void removeOne(zn::korvo_sdk::Scene& scene, unsigned choice) {
  if (scene.nodeSlots() == 0) return;
  zn::korvo_sdk::Node* const node = scene.nodeAt(choice % scene.nodeSlots());
  if (node == nullptr) return;
  const zn::String name = node->name();
  scene.removeNode(name);
  if (scene.findNode(name) != nullptr) fail("a removed node is still found");
}

}  // namespace

void severalTexts(std::string_view input) {
  constexpr std::size_t MAX_TEXTS = 12;
  auto [rest, settings] = splitSettings(input);
  FuzzScene scene;
  for (std::size_t i = 0; i < MAX_TEXTS && !rest.empty(); ++i) {
    const std::size_t end = std::min(rest.find(SEPARATOR), rest.size());
    const std::string_view text = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    const FuzzRead read =
        i % 2 == 0 ? readFromString(*scene, text) : readFromFile(*scene, text, settings % 64);
    checkNodes(*scene);
    static_cast<void>(bytesOf(read, *scene));
    if ((settings >> (i % 8) & 1) != 0) removeOne(*scene, settings + static_cast<unsigned>(i));
  }
  static_cast<void>(bytesOf({}, *scene));
}

}  // namespace vsa_fuzz
