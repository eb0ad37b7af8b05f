// The functions of the fuzzers. Each function takes an input and aborts the process on a finding.
// fuzz_main.cpp is the libFuzzer program of one function. replay_main.cpp passes saved inputs to
// all functions.
//
// Most fuzzers use the last byte of an input as settings. No fuzzer requires a format of its input,
// so every text is a valid input for every fuzzer.
#pragma once

#include <string_view>

namespace vsa_fuzz {

/// Reads a text from a String into a new scene.
void readString(std::string_view input);
/// Reads a text from a String and from a File. The results, logs and scenes must be equal.
void stringAgainstFile(std::string_view input);
/// Reads a text through the public API from memory, a file and a source. Checks the results.
void publicApi(std::string_view input);
/// Compares the reader's lexer with PlainLexer. The tokens and their positions must be equal.
void lexerAgainstPlain(std::string_view input);
/// Compares the conversion of single numbers with the C library, and that of lists with that of
/// single numbers. The numbers must be equal bit for bit.
void numbers(std::string_view input);
/// Compares String::unescape with a second implementation of it.
void unescape(std::string_view input);
/// Compares decompression with zlib.
void decompress(std::string_view input);
/// Compresses bytes with our encoder and decompresses the result with our decoder and with zlib.
/// This is a separate fuzzer, because it is much slower than the fuzzer `decompress`.
void compress(std::string_view input);
/// Reads several texts into one scene. After some of them, removes a node.
void severalTexts(std::string_view input);
/// Reads a text, writes its scene and reads the written text. checkWritten compares the scenes.
void writeReadText(std::string_view input);
/// Creates a scene through the public interface, writes it and reads the written text. checkWritten
/// compares the scenes.
void writeMadeScene(std::string_view input);
/// Formats a text, as vsa fmt does. If the reader accepts the text, its tokens and its scene must
/// stay the same.
void formatAndRead(std::string_view input);
/// Does with the scenes of two texts what the commands do: compares both scenes, prints the first
/// one, renames its nodes, and extracts a part of it.
void lookAtScenes(std::string_view input);

/// Checks a text with all rules of vsa check, renders the findings, and applies their edits.
void checkText(std::string_view input);
/// Reads a configuration, a baseline and a file of types, as vsa check does.
void checkSettings(std::string_view input);

}  // namespace vsa_fuzz
