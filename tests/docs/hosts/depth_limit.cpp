// depth_limit FILE: reads a file with a depth limit of 2 and prints the log.
#include "read_and_print.h"

int main(int, char** arguments) {
  zn::korvo_sdk::Scene scene;
  scene.setDepthLimit(2);
  readAndPrint(scene, arguments[1]);
}
