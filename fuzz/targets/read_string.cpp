// Reads a text from a String and accesses everything in the scene. A finding is a crash or a
// sanitizer report.
#include "fuzz/support/scene_bytes.h"
#include "fuzz/targets.h"

namespace vsa_fuzz {

void readString(std::string_view input) {
  FuzzScene scene;
  static_cast<void>(bytesOf(readFromString(*scene, input), *scene));
}

}  // namespace vsa_fuzz
