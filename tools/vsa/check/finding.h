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

/// "note", "warning" or "error".
const char* name(Level level);

/// Another place of the text that explains a finding.
struct FindingNote {
  vsa::TextRange range;
  std::string text;
};

/// A replacement of bytes: those from `begin` up to and without `end` become `text`. Offsets count
/// from 0, without the byte order mark of the file.
struct TextEdit {
  std::uint64_t begin = 0;
  std::uint64_t end = 0;
  std::string text;

  friend bool operator==(const TextEdit&, const TextEdit&) = default;
};

/// A problem of one file. Its texts may quote the file: control characters and invalid UTF-8 are
/// escaped when they are printed.
struct Finding {
  Level level = Level::Error;
  /// The kind of problem in kebab case, such as "too-few-elements".
  std::string id;
  /// The message: one clause without a position and without a final period.
  std::string message;
  /// The source range of what is wrong. Not set if the finding is about the whole file.
  std::optional<vsa::TextRange> range;
  std::vector<FindingNote> notes;
  /// What to do about the problem; may be empty.
  std::string hint;
  /// The edits that do what `hint` says. They do not overlap and change nothing else. May be empty.
  std::vector<TextEdit> edits;
  /// The line of the log, if the reader logged this finding.
  std::string logLine;
  /// Whether the problem is after the place where the reader stops, and was found by reading on.
  bool isAfterStop = false;
};

/// The text if it is short, otherwise its beginning and its end. A text is short if it could be a
/// hint or a message of a rule without a long quoted name or value.
std::string withoutLongQuotes(const std::string& text);

}  // namespace vsa_tools
