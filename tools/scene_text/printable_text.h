// Escaping of untrusted text. The names, strings and comments in messages and dumps come from scene
// files. They must not control a terminal, break a line of a log or make the output invalid UTF-8.
#pragma once

#include <utf8.h>
#include <string>
#include <string_view>

namespace vsa_tools {

/// Splits `text` into UTF-8 characters. Calls `onCharacter(char32_t, std::string_view)` with each
/// code point and the bytes that encode it, and `onInvalid(char)` with each byte that is not part
/// of well-formed UTF-8, in the order of the text.
template <class OnCharacter, class OnInvalid>
void forEachCharacter(std::string_view text, OnCharacter onCharacter, OnInvalid onInvalid) {
  const char* at = text.data();
  const char* const end = at + text.size();
  while (at != end) {
    const char* const validEnd = utf8::find_invalid(at, end);
    while (at != validEnd) {
      const char* const first = at;
      const char32_t character = utf8::unchecked::next(at);
      onCharacter(character, std::string_view(first, static_cast<std::size_t>(at - first)));
    }
    if (at != end) onInvalid(*at++);
  }
}

/// Whether the character is to be escaped in output, because it may control a terminal or viewer,
/// or hide in a text: control characters (C0, DEL, C1), line and paragraph separators, the marks
/// that set the writing direction, soft hyphens, blanks and joiners of no width, invisible
/// operators, fillers and other letters without a glyph, marks of annotations and of musical beams,
/// deprecated format characters (U+206A to U+206F), byte order marks and tags. Other combining
/// characters and variation selectors are not among them.
bool isTerminalControl(char32_t character);

/// Appends two lower-case hexadecimal digits for each byte.
void appendHex(std::string& to, std::string_view bytes);

/// The byte as \n, \r, \t or \xHH.
std::string escapedByte(char byte);

/// The character as \uHHHH. A character above U+FFFF becomes two such escapes, one for each UTF-16
/// code unit, as in JSON.
std::string escapedCharacter(char32_t character);

/// `text` with terminal controls escaped as \n, \r, \t, \xHH (ASCII) or \uHHHH, and bytes that are
/// not valid UTF-8 as \xHH. Everything else is unchanged. Backslashes are not doubled, so the
/// original text cannot be restored.
std::string printable(std::string_view text);

/// Escapes terminal controls in the strings of a JSON text as \uHHHH. Bytes that are not valid
/// UTF-8 remain, and so do line feeds. Between its tokens, the text must have no white space but
/// blanks and line feeds. Its value does not change.
std::string printableJson(std::string_view json);

/// Escapes a message, file name or other part of a line as printable() does. In addition,
/// backslashes are doubled, so an escape differs from a backslash of the text. The first character
/// of what a CI runner may take for a command becomes \xHH: of "::" at the beginning of `text`,
/// also after blanks and tabs, and of "##[" and "##vso[" anywhere.
std::string printableLine(std::string_view text);

}  // namespace vsa_tools
