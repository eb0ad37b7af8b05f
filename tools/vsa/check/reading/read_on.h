// Continues to read a text after a fatal mistake.
//
// The reader stops at a fatal mistake. readOn() replaces the wrong statement in a copy of the text,
// and reads the text after it into the same scene. These two steps are repeated up to the end of
// the text. They find the fatal mistakes in time that is proportional to the size of the text. Then
// the repaired text is read as a whole. That reading gives the other diagnostics, the links, and a
// scene that the rules can inspect.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>

#include <vsa/read.h>

namespace vsa_tools {

/// A function that receives the diagnostics of readOn(). Their ranges are those in the original
/// text, but the positions of their log lines are not. An exception that the function throws ends
/// the reading, and readOn() throws it.
using DiagnosticConsumer = std::function<void(const vsa::Diagnostic&)>;

/// What readOn() returns: the result of reading the repaired text, and what the rules need in
/// addition.
struct ReadOnResult : vsa::ReadResult {
  std::string statements = {};  ///< The text for the rules, see Repair::takeStatements().
  std::set<std::string, std::less<>> lostInputs = {};  ///< See Repair::lostInputs().
};

/// Reads on in `text` after `stop`, the diagnostic that ended its reading. The limits and the
/// progress function are those of `options`. Returns the result of reading the repaired text.
/// `consumer` receives the diagnostics after `stop`, except those that only follow from an earlier
/// mistake. The repaired text is read from its beginning, so `consumer` also receives the
/// diagnostics before `stop`, but not `stop` itself. The repaired text may be read several times,
/// so `consumer` may receive a diagnostic several times.
ReadOnResult readOn(std::string_view text, const vsa::Diagnostic& stop,
                    const vsa::ReadOptions& options, const DiagnosticConsumer& consumer);

}  // namespace vsa_tools
