// Opens the files that the command line names.
#pragma once

#include <memory>
#include <string>

#include "tools/vsa/input/inspected_source.h"

namespace vsa_tools {

/// An open file, or the reason why it cannot be read.
struct InputFile {
  /// Null if nothing was opened.
  std::unique_ptr<InspectedSource> source;
  /// The system's error message; empty on success.
  std::string problem;
};

/// Opens `name` ("-" is standard input) and reads its first bytes, so that a directory, which can
/// be opened but not read, is a problem and not an empty file. Waiting for input ends when
/// isInterrupted() becomes true: the input then ends with the error "interrupted".
InputFile openInput(const std::string& name);

/// The name of an input in messages: "<stdin>" for "-".
std::string shownName(const std::string& name);

}  // namespace vsa_tools
