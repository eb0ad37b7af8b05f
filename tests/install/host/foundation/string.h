// A header of the host. Its path and its names are the same as in the library's sources.
#pragma once

#include <string>

namespace host {

using String = std::string;

}  // namespace host
