// Reads texts with more bytes than 32 bits can count. They are generated while they are read.
#pragma once

namespace vsa_tests {

/// Reads a text of 5 GiB, then lines, a string and a list of more than 2 GiB. Prints one line for
/// each. Takes minutes, and about 10 GiB of memory for the string. Returns the exit status, which
/// is 0 if every text was read as expected.
int readHugeTexts();

}  // namespace vsa_tests
