// Several texts into one scene, which stays usable whatever became of each: the host removes nodes
// between them, and every other text comes from a File. A byte 0x01, which is white space to the
// reader, ends a text.
#include <algorithm>
#include <string>

#include "fuzz/support/check.h"
#include "fuzz/support/reading.h"
#include "fuzz/targets.h"

namespace vsa_fuzz {

namespace {

constexpr char SEPARATOR = '\x01';

/// What holds in every scene: a node is found under its name, in its slot and nowhere else.
void checkNodes(zn::korvo_sdk::Scene& scene) {
  std::uint64_t present = 0;
  for (std::uint64_t slot = 0; slot < scene.nodeSlots(); ++slot) {
    zn::korvo_sdk::Node* const node = scene.nodeAt(slot);
    if (node == nullptr) continue;
    ++present;
    if (scene.findNode(node->name()) != node) fail("a node is not found under its name");
  }
  if (present != scene.nodeCount()) fail("the count of nodes is wrong");
}

/// Removes the node in one of the slots, if there is one.
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
  constexpr std::size_t MOST_TEXTS = 12;
  auto [rest, settings] = splitSettings(input);
  FuzzScene fuzz;
  for (std::size_t i = 0; i < MOST_TEXTS && !rest.empty(); ++i) {
    const std::size_t end = std::min(rest.find(SEPARATOR), rest.size());
    const std::string_view text = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    const Reading reading = i % 2 == 0 ? readFromString(fuzz.scene, text)
                                       : readFromFile(fuzz.scene, text, settings % 64);
    checkNodes(fuzz.scene);
    shown(reading, fuzz.scene);
    if ((settings >> (i % 8) & 1) != 0) removeOne(fuzz.scene, settings + static_cast<unsigned>(i));
  }
  shown({}, fuzz.scene);
}

}  // namespace vsa_fuzz
