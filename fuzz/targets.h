// The fuzzers. Each is a function that takes an input and aborts the process on a finding.
// fuzz_main.cpp makes a libFuzzer program of one of them, replay_main.cpp runs saved inputs through
// all of them.
//
// Some fuzzers use the last byte of an input as settings, so every text is a valid input for every
// fuzzer.
#pragma once

#include <string_view>

namespace vsa_fuzz {

/// Reads a text from a String into a new scene.
void readString(std::string_view input);
/// Reads a text from a String and from a File: result, log and scene must be equal.
void stringAgainstFile(std::string_view input);
/// Reads a text through the public API, from memory and from a source, and checks the result.
void publicApi(std::string_view input);
/// Compares the reader's lexer with PlainLexer: tokens and positions must be equal.
void lexerAgainstPlain(std::string_view input);
/// Compares number conversion, one number and lists, with the C library bit for bit.
void numbers(std::string_view input);
/// Compares String::unescape with a second implementation.
void unescape(std::string_view input);
/// Compares decompression with zlib.
void decompress(std::string_view input);
/// Compresses bytes, then decompresses them with our decoder and with zlib. A separate fuzzer
/// because it is much slower than the others.
void compress(std::string_view input);
/// Reads several texts into one scene and removes nodes between them.
void severalTexts(std::string_view input);
/// Reads a text, writes its scene and reads the result. Both scenes must be equal.
void writeReadText(std::string_view input);
/// Creates a scene through the public interface, writes it and reads the result. Both scenes must
/// be equal.
void writeMadeScene(std::string_view input);
/// Formats a text as vsa fmt does: tokens and scene must stay the same.
void formatAndRead(std::string_view input);
/// Compares, shows, extracts and renames the scenes of two texts as the commands do.
void lookAtScenes(std::string_view input);

/// Checks a text with all rules and renders what is found.
void checkText(std::string_view input);
/// Reads a configuration, a baseline and types of vsa check.
void checkSettings(std::string_view input);

}  // namespace vsa_fuzz
