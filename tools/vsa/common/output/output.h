// Functions for the output of commands: they write lines to standard error, check whether
// everything was written, and prevent that another file gets the descriptor of a standard stream.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vsa_tools {

/// Writes one line of any length to standard error. `line` must be escaped and have no line end.
void printLine(std::string_view line);

/// Prints that `count` more diagnostics of a file were not printed.
void printNotPrinted(std::string_view file, std::uint64_t count);

/// Returns whether everything that was printed to standard error was written.
bool isErrorOutputWritten();

/// Opens the null device for each descriptor from 0 to 2 that is closed, so that no other file gets
/// that descriptor. Reading from such a descriptor 0 fails, and so does writing to 1 or 2.
void reserveStandardDescriptors();

}  // namespace vsa_tools
