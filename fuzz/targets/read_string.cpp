// Reads a text from a String and dumps the scene. A finding is a crash or a sanitizer report.
#include "fuzz/support/fuzz_scene.h"
#include "fuzz/targets.h"

namespace vsa_fuzz {

void readString(std::string_view input) {
  FuzzScene scene;
  dumped(readFromString(*scene, input), *scene);
}

}  // namespace vsa_fuzz
