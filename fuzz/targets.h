// The fuzzers. Each is one function that takes an input and ends the process when something is
// wrong: fuzz_main.cpp makes a libFuzzer program of one of them, replay_main.cpp runs saved inputs
// through all of them.
//
// Where an input holds settings beside its text they are its last byte, so that any text at all is
// an input of every fuzzer.
#pragma once

#include <string_view>

namespace vsa_fuzz {

/// The whole reader, from a String into a fresh scene.
void readString(std::string_view input);
/// The same text from a String and from a File: same result, same log, same scene.
void stringAgainstFile(std::string_view input);
/// The reader's lexer against a plain one: same tokens at the same places.
void lexerAgainstPlain(std::string_view input);
/// Characters to numbers, one and many at a time, against the C library, bit for bit.
void numbers(std::string_view input);
/// Escape sequences against a second reader of them.
void unescape(std::string_view input);
/// Compressed texts against zlib.
void decompress(std::string_view input);
/// Bytes through `compress`, and back through both. Of its own, for it is far slower than the rest.
void compress(std::string_view input);
/// Several texts into one scene, with nodes removed in between.
void severalTexts(std::string_view input);

}  // namespace vsa_fuzz
