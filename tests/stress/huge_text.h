// Reads texts whose size, line or column does not fit into 31 bits, or not even into 32 bits. They
// are generated while they are read.
#pragma once

namespace vsa_tests {

/// Reads texts of 2.2 to 5 GiB: many statements, one long line, many lines, a string, blanks and a
/// list. Prints one line for each. Takes minutes, and about 10 GiB of memory for the string.
/// Returns the exit status, which is 0 if every text was read as expected.
int readHugeTexts();

}  // namespace vsa_tests
