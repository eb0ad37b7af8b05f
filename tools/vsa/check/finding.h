// Finding: one problem of a text as vsa check shows it. The reader's diagnostics and the rules
// produce findings, and each output format prints them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <vsa/reading/text_position.h>

namespace vsa_tools {

enum class Level : std::uint8_t { Note, Warning, Error };

/// Returns "note", "warning" or "error".
const char* name(Level level);

/// Another place of the text that explains a finding.
struct FindingNote {
  vsa::TextRange range;
  std::string text;
};

/// The replacement of the bytes from `begin` (inclusive) to `end` (exclusive) by `text`. Offsets
/// count from 0, without the byte order mark of the file.
struct TextEdit {
  std::uint64_t begin = 0;
  std::uint64_t end = 0;
  std::string text;

  friend bool operator==(const TextEdit&, const TextEdit&) = default;
};

/// A problem of one file. Its texts may contain parts of the file. When they are printed, control
/// characters and invalid UTF-8 are escaped.
struct Finding {
  Level level = Level::Error;
  /// The kind of problem in kebab case, such as "too-few-elements".
  std::string id;
  /// The message, without a position and without a final period ("..." may end it).
  std::string message;
  /// The part of the text that is wrong. Not set if the finding is about the whole file.
  std::optional<vsa::TextRange> range;
  std::vector<FindingNote> notes;
  /// The hint: what to do about the problem. May be empty.
  std::string hint;
  /// The edits that do what the hint says, and nothing else. They do not overlap. May be empty.
  std::vector<TextEdit> edits;
  /// The log line of the reader's diagnostic, or its message if the plain interface does not log it
  /// (end-mark, over-limit). Empty if the finding is no diagnostic of the reader, or if isAfterStop
  /// is true.
  std::string logLine;
  /// Whether the finding is a diagnostic that only reading on after the stop has found. Its place
  /// may be before the stop, because links are resolved last. For a finding of a rule, the value is
  /// false even if its place is after the stop.
  bool isAfterStop = false;
};

/// Returns a hint or message unchanged if it has at most 400 bytes, and otherwise only its
/// beginning and its end. Only a text with a long name or value in it has more bytes.
std::string withoutLongQuotes(const std::string& text);

}  // namespace vsa_tools
