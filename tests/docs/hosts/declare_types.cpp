// declare_types [FILE]: declares the node type of the code block (block.inc) in
// docs/plain_interface.md. Then reads FILE and prints the log. Without FILE, checks what the page
// says about the declaration.
#include "read_and_print.h"

namespace {

bool isAsStated() {
  zn::korvo_sdk::Scene scene;
  const bool read = zn::korvo_sdk::impl::parseString(
      &scene, "lamp sun: .intensity = 3; ball b: .c |= sun.color;");
  zn::korvo_sdk::Input* const power = scene.findNode("sun")->input("power");
  zn::korvo_sdk::Output* const output = scene.findNode("b")->input("c")->connection();
  return read && power != nullptr && power->real() == 3.0 && output != nullptr &&
         output->name() == "outColor";
}

}  // namespace

int main(int count, char** arguments) {
  using namespace zn::korvo_sdk;
#include "block.inc"
  if (count < 2) return isAsStated() ? 0 : 1;
  Scene scene;
  readAndPrint(scene, arguments[1]);
}
