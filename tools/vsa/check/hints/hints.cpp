#include "tools/vsa/check/hints/hints.h"

#include <utility>

#include "tools/vsa/check/hints/hint_text.h"
#include "tools/vsa/common/output/quoted_text.h"

namespace vsa_tools {

namespace {

using vsa::DiagnosticId;

// Adds a hint for a name that contains a no-break space. This character looks like a blank, but
// counts as a letter.
bool hintForNoBreakSpace(const HintText& text, const vsa::TextRange& range, Finding& finding) {
  constexpr std::string_view SPACE = "\xC2\xA0";
  const std::string_view source = text.bytesOf(range);
  if (source.find('"') != std::string_view::npos) return false;
  for (std::size_t at = source.find(SPACE); at != source.npos; at = source.find(SPACE, at + 1)) {
    const std::uint64_t begin = range.begin.offset + at;
    finding.edits.push_back({begin, begin + SPACE.size(), " "});
  }
  if (finding.edits.empty()) return false;
  finding.hint = "a no-break space (U+00A0) is a letter: write a blank";
  return true;
}

void hintForBadToken(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding) {
  const std::string_view expected = diagnostic.argument("expected");
  const bool isEnd = expected == ";";
  const bool isValue = expected == "(scalar|buffer|reference)";
  if (isEnd) {
    hintForMissingEnd(text, diagnostic, finding);
  } else if (isValue) {
    hintForValue(text, diagnostic, finding);
  } else {
    hintForLink(text, diagnostic, finding);
  }
}

}  // namespace

Hints::Hints(std::string_view text, std::span<const vsa::TypeDescription> types)
    : text_(std::make_unique<HintText>(text, types)) {
}

Hints::~Hints() = default;

void Hints::addTo(const vsa::Diagnostic& diagnostic, Finding& finding) {
  // Without the bytes of the text there is no hint.
  if (text_->text().empty() || diagnostic.range.end.offset > text_->text().size()) return;
  add(diagnostic, finding);
  finding.hint = withoutLongQuotes(finding.hint);
}

void Hints::add(const vsa::Diagnostic& diagnostic, Finding& finding) {
  if (hintForNoBreakSpace(*text_, diagnostic.range, finding)) return;
  switch (diagnostic.id) {
    case DiagnosticId::UnrecognizedToken:
    case DiagnosticId::BadVersion:
    case DiagnosticId::WithNodeNotSet:
      return hintForStatement(*text_, diagnostic, finding);
    case DiagnosticId::InvalidToken:
    case DiagnosticId::InvalidListToken:
    case DiagnosticId::UnexpectedEof:
    case DiagnosticId::EndMark:
      return hintForCharacter(*text_, diagnostic, finding);
    case DiagnosticId::BadToken:
      return hintForBadToken(*text_, diagnostic, finding);
    case DiagnosticId::NodeNotFound:
    case DiagnosticId::InputNotFound:
    case DiagnosticId::InvalidArrayIndex:
      return hintForPath(*text_, diagnostic, finding);
    case DiagnosticId::InvalidOutput:
    case DiagnosticId::NoNodeToConnect:
    case DiagnosticId::NoOutputToConnect:
    case DiagnosticId::NoNodeToAssign:
    case DiagnosticId::CannotAssignNode:
      return hintForLink(*text_, diagnostic, finding);
    case DiagnosticId::CannotAssignType:
    case DiagnosticId::WrongType:
    case DiagnosticId::Narrowing:
    case DiagnosticId::BadEnumValue:
      return hintForType(*text_, diagnostic, finding);
    default:
      return hintForBuffer(*text_, diagnostic, finding);
  }
}

}  // namespace vsa_tools
