// Checks that the code block of the documentation (block.inc) sets the limits, that the defaults
// are those in its comments, and that a depth limit of more than 65535 becomes 65535.
#include <vsa/vsa.h>

int main() {
  zn::korvo_sdk::Scene scene;
  const bool hasDefaults = scene.emptyElementLimit() == 524288 && scene.depthLimit() == 256;
#include "block.inc"
  const bool isSet = scene.emptyElementLimit() == 100000 && scene.depthLimit() == 64;
  scene.setDepthLimit(1000000);
  return hasDefaults && isSet && scene.depthLimit() == 65535 ? 0 : 1;
}
