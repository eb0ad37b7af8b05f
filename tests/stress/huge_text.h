// Texts larger than what 32 bits count, made while they are read.
#pragma once

namespace vsa_tests {

/// Reads each of them and prints a line each: a text of 5 GiB, a line of more than 2 GiB, a string
/// of more than 2 GiB. Takes minutes, and memory for the string (about 10 GiB). 0 when all went
/// well.
int readHugeTexts();

}  // namespace vsa_tests
