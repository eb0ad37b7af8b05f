// Hints for references and connections.
#include <string>

#include "tools/vsa/check/hints/hint_text.h"
#include "tools/vsa/check/hints/similar_names.h"

namespace vsa_tools {

namespace {

using vsa::DiagnosticId;

/// A constant of other languages, and the constant of this format with the same meaning.
struct Alias {
  std::string_view written;
  std::string_view constant;
};

constexpr Alias ALIASES[] = {{"none", "null"}, {"nil", "null"}, {"nullptr", "null"},
                             {"yes", "true"},  {"on", "true"},  {"no", "false"},
                             {"off", "false"}};

// Returns the constant `true`, `false` or `null` that the name means in other languages, or that is
// most similar to it. The suggestion is never sure, because a node may have that name, too.
std::optional<Suggestion> nearestConstant(std::string_view name) {
  const std::string lower = loweredName(name);
  for (const Alias& alias : ALIASES) {
    if (alias.written == lower) return Suggestion{std::string(alias.constant), false};
  }
  NearestName nearest(name);
  for (const char* const constant : {"true", "false", "null"}) nearest.consider(constant);
  std::optional<Suggestion> found = nearest.found();
  if (found) found->isSure = false;
  return found;
}

// Adds a hint for a name that no node has. The name may be misspelt, its node may have been
// removed, or it may be a string without quotes.
void hintForMissingNode(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding) {
  const vsa::TextRange& range = diagnostic.range;
  const bool isConnection = diagnostic.id == DiagnosticId::NoNodeToConnect;
  const std::string_view name = text.bytesOf(range);
  const std::string lower = loweredName(name);
  const bool isQuoted = lower.starts_with("\xE2\x80\x9C") || lower.starts_with("\xE2\x80\x98");
  if (lower == "-infinity") {
    replace(finding, range, "-inf");
  } else if (isQuoted) {
    finding.hint = "a string has straight double quotes, `\"`";
  } else if (const auto declaration = text.declarationOf(name)) {
    finding.hint = "the node was removed; remove the link, or declare the node again";
    finding.notes.push_back({*declaration, "declared here"});
  } else if (lower == "inf" || lower == "infinity" || lower == "nan") {
    finding.hint = "a word is the name of a node; a single value may be `-inf` or `-nan`";
  } else if (suggest(finding, range, text.nearestNode(name))) {
    return;
  } else if (isConnection) {
    finding.hint =
        "declare the node that has the output, such as `lamp " + std::string(name) + ";`";
  } else if (!suggest(finding, range, nearestConstant(name))) {
    finding.hint = "a word is the name of a node: quote it if it is a string";
  }
}

// Adds a hint for a source that is not "node.output", such as "node.output.more" or ".output".
void hintForSource(HintText& text, const vsa::TextRange& range, Finding& finding) {
  const std::string_view source = text.bytesOf(range);
  finding.hint = source.front() == '.' ? "write the name of the node before the output"
                                       : "a source is `node.output`; an output has no members";
}

void hintForPipe(HintText& text, const vsa::TextRange& range, Finding& finding) {
  finding.hint = "a connection is written with `|=`";
  const std::uint64_t at = range.begin.offset;
  if (text.at(at) == '|') {  // "||=" and "||"
    finding.edits = {{at, at + 1, text.at(at + 1) == '=' ? "" : "="}};
    return;
  }
  const std::uint64_t pipe = text.endBefore(range.begin.offset);
  if (pipe != 0 && text.at(pipe - 1) == '|') insertAt(finding, pipe, "=");
}

// Adds a hint for a source that names no output, or that is no path.
void hintForMissingOutput(const vsa::TextRange& range, std::string_view source, Finding& finding) {
  const std::string_view content = source.size() < 2 ? "" : source.substr(1, source.size() - 2);
  if (isWordText(source)) {
    finding.hint = "name an output, such as `" + std::string(source) +
                   ".out`; a reference to a node is written with `=`";
  } else if (source.front() == '"' && isWordText(content.substr(0, content.find('.')))) {
    replace(finding, range, std::string(content));
  } else {
    finding.hint = "a connection names an output, such as `node.out`; a value is written with `=`";
  }
}

void hintForTypedInput(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding) {
  finding.hint = "an input refers to a node if its first value does";
  const FirstAssignment* const first = text.firstAssignment(diagnostic.inputPath);
  if (first != nullptr && text.rangeOf(first->value).begin.offset < diagnostic.range.begin.offset) {
    finding.notes.push_back({text.rangeOf(first->value), "the input got its type here"});
  }
}

}  // namespace

void hintForLink(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding) {
  const vsa::TextRange& range = diagnostic.range;
  const std::string_view source = text.bytesOf(range);
  if (source.empty()) {
    finding.hint = "the text ends inside a statement; it may have been cut off";
    return;
  }
  switch (diagnostic.id) {
    case DiagnosticId::NoNodeToAssign:
    case DiagnosticId::NoNodeToConnect:
      return hintForMissingNode(text, diagnostic, finding);
    case DiagnosticId::NoOutputToConnect:
      suggest(finding, range, text.nearestOutput(source));
      return;
    case DiagnosticId::InvalidOutput:
      return hintForSource(text, range, finding);
    case DiagnosticId::CannotAssignNode:
      return hintForTypedInput(text, diagnostic, finding);
    default:
      break;
  }
  const std::string_view expected = diagnostic.argument("expected");
  if (expected == "=") {
    hintForPipe(text, range, finding);
  } else if (expected == "(null|path)") {
    hintForMissingOutput(range, source, finding);
  }
}

}  // namespace vsa_tools
