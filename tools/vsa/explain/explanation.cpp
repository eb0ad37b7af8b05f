#include "tools/vsa/explain/explanation.h"

#include "tools/vsa/common/embedded/embedded_files.h"

namespace vsa_tools {

namespace {

constexpr std::string_view HEADING = "### ";

/// Removes the first line from `page` and returns it without its line end.
std::string_view takeLine(std::string_view& page) {
  const std::size_t end = page.find('\n');
  const std::string_view line = page.substr(0, end);
  page.remove_prefix(end == std::string_view::npos ? page.size() : end + 1);
  return line;
}

/// Calls `visit(id, page)` for each section with a heading of the third level. `page` is the rest
/// of the page after the heading, including later sections.
template <class Visit>
void forEachSection(const Visit& visit) {
  for (std::string_view page : {messagesPage(), rulesPage()}) {
    while (!page.empty()) {
      const std::string_view line = takeLine(page);
      if (line.starts_with(HEADING)) visit(line.substr(HEADING.size()), page);
    }
  }
}

/// Returns the text of a section up to the next heading, without the marks of code blocks and
/// without lines that begin a comment. Indents code.
std::string textOf(std::string_view page) {
  std::string text;
  bool isCode = false;
  while (!page.empty()) {
    const std::string_view line = takeLine(page);
    if (line.starts_with("```")) {
      isCode = !isCode;
      continue;
    }
    if (!isCode && line.starts_with("#")) break;
    if (!isCode && line.starts_with("<!--")) continue;
    if (line.empty() && text.ends_with("\n\n")) continue;
    text.append(isCode && !line.empty() ? "    " : "").append(line) += '\n';
  }
  while (text.ends_with("\n\n")) text.pop_back();
  return text;
}

}  // namespace

std::vector<std::string> explainedIds() {
  std::vector<std::string> ids;
  forEachSection([&](std::string_view id, std::string_view) {
    if (id.find(' ') == std::string_view::npos) ids.emplace_back(id);
  });
  return ids;
}

std::string listOfExplanations() {
  std::string list;
  for (const std::string& id : explainedIds()) list += id + '\n';
  return list;
}

std::string explanationOf(std::string_view wanted) {
  std::string text;
  forEachSection([&](std::string_view id, std::string_view page) {
    if (id == wanted) text = std::string(id) + '\n' + textOf(page);
  });
  return text;
}

}  // namespace vsa_tools
