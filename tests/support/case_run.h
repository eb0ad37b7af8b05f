// Test cases: a text NAME.vsa and its expected outcome NAME.expect (CONTRIBUTING.md shows the
// format). This file finds them, reads them from each kind of source and writes the outcome in the
// format of an expectation. case_test compares, the program accept_cases rewrites.
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
  /// The path below the case folder, without extension: "values/narrow_real_to_int".
  std::string name;
  std::filesystem::path text;
  std::filesystem::path expectation;

  friend std::ostream& operator<<(std::ostream& out, const Case& shown) {
    return out << shown.name;
  }
};

struct CaseFolder {
  /// Sorted by name.
  std::vector<Case> cases;
  /// Texts without an expectation, expectations without a text, and files that are neither.
  std::vector<std::filesystem::path> orphans;
};

CaseFolder findCases(const std::filesystem::path& folder);

/// The kind of source of the reader.
enum class Source {
  /// A String.
  String,
  /// A File whose source returns as many bytes as requested.
  File,
  /// A File whose source returns one byte per read.
  ByteByByte,
};

/// Reads `text` into a new scene and returns result, log and scene in the format of an expectation.
/// Declares the node type of declared_lamp.h.
std::string outcomeOf(std::string_view text, Source source);

/// The messages that reading `text` raises, including those about an unterminated string or list.
std::set<zn::korvo_sdk::DiagnosticId> messagesOf(std::string_view text);

/// The lines that an expectation has for warnings of the link resolution.
using LinkWarnings = std::set<std::string>;

/// Those of some records, and those that reading `text` logs.
LinkWarnings linkWarningsOf(const std::vector<zn::korvo_sdk::Diagnostic>& records);
LinkWarnings linkWarningsOf(std::string_view text);

/// An expectation in the form in which outcomes are compared: consecutive lines of `linkWarnings`
/// are sorted, because their order depends on addresses.
std::string comparable(const std::string& expectation, const LinkWarnings& linkWarnings);

}  // namespace vsa_tests
