// The files named on the command line.
#pragma once

#include <string>

#include <vsa/foundation/file.h>
#include "tools/vsa/input/inspected_source.h"

namespace vsa_tools {

/// A file that was opened for reading, or why it could not be.
struct InputFile {
  zn::File file;
  /// Where the file's bytes come from; lives as long as `file`. Null when nothing was opened.
  const InspectedSource* source = nullptr;
  /// Why it cannot be read, in the system's words; else empty.
  std::string problem;
};

/// Opens `name`, "-" being standard input, and checks what opening alone would let pass: a
/// directory is no empty file. A byte order mark at its start is skipped.
InputFile openInput(const std::string& name);

/// The name to show for an input: "-" reads as "<stdin>".
std::string shownName(const std::string& name);

}  // namespace vsa_tools
