// Cases: a text NAME.vsa, and beside it NAME.expect, what reading it must give (CONTRIBUTING.md
// shows the form). Here they are found, read from each kind of source, and written out in the form
// of an expectation. The tests compare; the program accept_cases rewrites.
#pragma once

#include <filesystem>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <vsa/diagnostics/diagnostic.h>

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
  /// In order of their names.
  std::vector<Case> cases;
  /// Texts without an expectation, expectations without a text, and files that are neither.
  std::vector<std::filesystem::path> orphans;
};

CaseFolder findCases(const std::filesystem::path& folder);

/// Where the reader gets a text from.
enum class Source {
  /// From a String.
  String,
  /// From a File whose source delivers all that it is asked for.
  File,
  /// From a File whose source delivers one byte at a time.
  ByteByByte,
};

/// Reads `text` into a fresh scene and writes what came of it: result, log and scene. The node type
/// `declaredLamp` is declared (see case_run.cpp), every other type is open.
std::string outcomeOf(std::string_view text, Source source);

/// The messages that reading `text` raises, a cut-off string or list included.
std::set<zn::korvo_sdk::DiagnosticId> messagesOf(std::string_view text);

/// An expectation in the form that is compared. Links are resolved in the order of addresses, so
/// warnings of the resolution that follow each other are sorted.
std::string comparable(const std::string& expectation);

/// The bytes of a file. Throws std::runtime_error when it cannot be read.
std::string contentOf(const std::filesystem::path& file);

}  // namespace vsa_tests
