// The scene of the host. It is independent of the library's scene.
#pragma once

#include "foundation/string.h"

namespace host {

struct Scene {
  String name;
};

}  // namespace host
