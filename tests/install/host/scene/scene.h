// The host's own scene, which has nothing to do with the library's.
#pragma once

#include "foundation/string.h"

namespace host {

struct Scene {
  String name;
};

}  // namespace host
