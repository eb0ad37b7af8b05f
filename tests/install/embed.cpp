// A host that embeds the installed library. Its include path begins with its own folders
// `foundation` and `scene`. The headers of the library must not include the host's headers.
#include <cstdio>

#include "foundation/string.h"
#include "scene/scene.h"

#include <vsa/vsa.h>
#include <vsa/vsa_c.h>

namespace {

// Reads the file through the interface for C.
double radiusOf(const char* path) {
  vsa_reading* const reading = vsa_read_file(path, nullptr);
  double radius = 0;
  vsa_real(vsa_find_input(vsa_find_node(reading, "ball"), "radius"), &radius);
  vsa_free(reading);
  return radius;
}

}  // namespace

int main(int, char** arguments) {
  const host::Scene own{host::String("host")};
  const vsa::ReadResult result = vsa::readFile(arguments[1]);
  const std::optional<double> radius = result.scene["ball"]["radius"].real();
  if (!radius || *radius != radiusOf(arguments[1])) return 1;

  zn::korvo_sdk::Scene plain;
  if (!zn::korvo_sdk::impl::parseVsa(&plain, zn::File::open(arguments[1]), false)) return 1;
  if (vsa::SceneView(plain)["ball"]["radius"].real() != radius) return 1;

  std::printf("%s: %s, radius %g\n", own.name.c_str(), result.isComplete() ? "read" : "not read",
              *radius);
}
