// What commands write: lines on standard error, and whether standard output and standard error
// could be written.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vsa_tools {

/// Writes one line, of any length, to standard error. `line` is escaped and has no line end.
void printLine(std::string_view line);

/// Prints that a file has more diagnostics than were printed.
void printNotPrinted(std::string_view file, std::uint64_t count);

/// Whether everything that was printed to standard error was written.
bool isErrorOutputWritten();

/// Opens the null device in place of each of the descriptors 0 to 2 that is closed, so that no
/// other file gets that descriptor. Reading from 0 and writing to 1 and 2 then fail.
void reserveStandardDescriptors();

}  // namespace vsa_tools
