// Functions for cases. A case is a text NAME.vsa and its expected result NAME.expect, in the form
// that CONTRIBUTING.md shows. The functions find cases, read them from each kind of source, and
// write their outcome in that form. case_test compares the outcome, and accept_cases rewrites the
// expected result.
#pragma once

#include <filesystem>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <vsa/diagnostics/diagnostic.h>
#include "tests/support/text.h"

namespace vsa_tests {

struct Case {
  /// The path in the folder of cases, without extension: "conversion/bool_to_numbers".
  std::string name;
  std::filesystem::path text;
  std::filesystem::path expectation;

  friend std::ostream& operator<<(std::ostream& out, const Case& shown) {
    return out << shown.name;
  }
};

struct CaseFolder {
  /// The cases, sorted by name.
  std::vector<Case> cases;
  /// Texts without an expected result, expected results without a text, and other files. Files that
  /// are directly in the folder of cases are ignored.
  std::vector<std::filesystem::path> orphans;
};

CaseFolder findCases(const std::filesystem::path& folder);

/// The kind of source that the text is read from.
enum class Source {
  /// A String.
  String,
  /// A File whose source returns as many bytes as requested.
  File,
  /// A File whose source returns one byte per read.
  ByteByByte,
};

/// Reads `text` into a new scene and returns the result, log and scene in the form of an expected
/// result. Registers the node type of declared_lamp.h.
std::string outcomeOf(std::string_view text, Source source);

/// Returns the ids of the messages that reading `text` raises, including messages about a string or
/// list that is not closed.
std::set<zn::korvo_sdk::DiagnosticId> messagesOf(std::string_view text);

/// The lines that warnings about links have in an expected result.
using LinkWarnings = std::set<std::string>;

/// Return the warnings about links. The first function selects them from `records`. The second one
/// reads `text` and selects them from the log of that reading.
LinkWarnings linkWarningsOf(const std::vector<zn::korvo_sdk::Diagnostic>& records);
LinkWarnings linkWarningsOf(std::string_view text);

/// Returns an expected result in a form that can be compared: consecutive lines of `linkWarnings`
/// are sorted, because their order depends on the memory addresses of the inputs.
std::string comparable(const std::string& expectation, const LinkWarnings& linkWarnings);

}  // namespace vsa_tests
