// Checks that the traversal visits each input of the nodes that were not removed, in creation
// order.
#include <string>

#include <vsa/vsa.h>

int main() {
  using zn::korvo_sdk::Input;
  using zn::korvo_sdk::Node;
  zn::korvo_sdk::Scene scene;
  zn::korvo_sdk::impl::parseString(
      &scene, "lamp a; lamp b; lamp c; b.x = 1; c.y = 1; c.x = 1; a.z = 1; remove b;");
  std::string visited;
  const auto visit = [&visited](const Input& input) { visited += input.name().buf(); };
#include "block.inc"
  return visited == "zyx" ? 0 : 1;
}
