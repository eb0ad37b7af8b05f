// The files named on the command line.
#pragma once

#include <string>

#include "foundation/file.h"

namespace vsa_tools {

/// Opens `name` for reading, "-" being standard input, and checks what opening alone would let
/// pass: a directory is no empty file. When it cannot be read the result is not open and `problem`
/// says why, in the system's words.
zn::File openInput(const std::string& name, std::string& problem);

/// The name to show for an input: "-" reads as "<stdin>".
std::string shownName(const std::string& name);

}  // namespace vsa_tools
