// The whole reader, from a String. What is wrong shows as a crash, or as a scene whose dump is one.
#include "fuzz/support/reading.h"
#include "fuzz/targets.h"

namespace vsa_fuzz {

void readString(std::string_view input) {
  FuzzScene fuzz;
  shown(readFromString(fuzz.scene, input), fuzz.scene);
}

}  // namespace vsa_fuzz
