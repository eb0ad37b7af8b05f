// Hints for input paths that lead to no input.
#include <algorithm>
#include <string>

#include "tools/vsa/check/hints/hint_text.h"

namespace vsa_tools {

namespace {

void hintForNode(HintText& text, const vsa::TextRange& range, Finding& finding) {
  const std::string_view name = text.bytesOf(range);
  if (const auto declaration = text.declarationOf(name)) {
    const bool isLater = declaration->begin.offset > range.begin.offset;
    finding.hint =
        isLater ? "declare the node before this line" : "the node was removed before this line";
    finding.notes.push_back({*declaration, "declared here"});
    return;
  }
  if (suggest(finding, range, text.nearestNode(name))) return;
  finding.hint = "declare the node before this line, such as `lamp " + std::string(name) + ";`";
}

// Adds a hint for an input path that leads to no input. The hint is about the first word of the
// path, the input of the node, because any member can be created. For a path with an index, it is
// about the array.
void hintForInput(HintText& text, const vsa::TextRange& range, Finding& finding) {
  const std::string_view path = text.bytesOf(range);
  if (path.find('[') != std::string_view::npos) {
    finding.hint = "assign the first element before the whole array is connected";
    return;
  }
  const std::string_view word = path.substr(0, path.find('.'));
  suggest(finding, text.rangeOf(word), text.nearestInput(word));
}

void hintForIndex(HintText& text, const vsa::TextRange& range, Finding& finding) {
  const std::string_view brackets = text.bytesOf(range);
  const auto stars = std::count(brackets.begin(), brackets.end(), '*');
  const bool isStar = stars == 1 && brackets.find_first_of("0123456789") == brackets.npos;
  finding.hint = "write `[0]` for an index, and `[*]` to append an element";
  if (isStar) replace(finding, range, "[*]");
}

}  // namespace

void hintForPath(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding) {
  if (diagnostic.id == vsa::DiagnosticId::NodeNotFound) {
    hintForNode(text, diagnostic.range, finding);
  } else if (diagnostic.id == vsa::DiagnosticId::InputNotFound) {
    hintForInput(text, diagnostic.range, finding);
  } else {
    hintForIndex(text, diagnostic.range, finding);
  }
}

}  // namespace vsa_tools
