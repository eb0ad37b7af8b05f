// Checks that the reader reads what the byte source delivers.
#include <string_view>

#include <vsa/vsa.h>

int main() {
  zn::korvo_sdk::Scene scene;
  const std::string_view bytes = "lamp sun: .power = 2.5;";
#include "block.inc"
  zn::korvo_sdk::Node* const sun = scene.findNode("sun");
  return sun != nullptr && sun->input("power")->real() == 2.5 ? 0 : 1;
}
