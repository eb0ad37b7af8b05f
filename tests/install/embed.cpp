#include <cstdio>

#include <vsa/model/scene.h>
#include <vsa/parse.h>

int main(int, char** arguments) {
  zn::korvo_sdk::Scene scene;
  const bool read = zn::korvo_sdk::impl::parseVsa(&scene, zn::File::open(arguments[1]), false);
  const double radius = scene.findNode("ball")->input("radius")->real();
  std::printf("%s, radius %g\n", read ? "read" : "not read", radius);
}
