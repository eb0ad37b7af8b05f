// The host's own header. Its path and its names are those that a library might take for itself.
#pragma once

#include <string>

namespace host {

using String = std::string;

}  // namespace host
