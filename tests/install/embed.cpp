// A host that embeds the installed library. It has folders `foundation` and `scene` of its own,
// which come first on its include path: the library's headers must not pick up the host's.
#include <cstdio>

#include "foundation/string.h"
#include "scene/scene.h"

#include <vsa/vsa.h>

int main(int, char** arguments) {
  const host::Scene own{host::String("host")};
  zn::korvo_sdk::Scene scene;
  const bool read = zn::korvo_sdk::impl::parseVsa(&scene, zn::File::open(arguments[1]), false);
  zn::korvo_sdk::Node* const ball = scene.findNode("ball");
  if (ball == nullptr || !ball->hasInput("radius", zn::korvo_sdk::AttrType::Real)) return 1;
  std::printf("%s: %s, radius %g\n", own.name.c_str(), read ? "read" : "not read",
              ball->input("radius")->real());
}
