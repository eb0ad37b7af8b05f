#include "tools/vsa/stats/report_page.h"

#include <string_view>

#include "tools/vsa/common/embedded/embedded_files.h"

namespace vsa_tools {

namespace {

/// Returns `json` with each "<" escaped, so that no HTML tag begins or ends in it. JSON contains
/// "<" only in strings.
std::string withoutTags(const std::string& json) {
  std::string text;
  text.reserve(json.size());
  for (const char c : json) {
    if (c == '<')
      text += "\\u003c";
    else
      text += c;
  }
  return text;
}

/// Appends the part of `text` before `mark` to `to`, and returns the part after `mark`. `text` must
/// contain `mark`.
std::string_view appendUpTo(std::string_view mark, std::string_view text, std::string& to) {
  const std::size_t at = text.find(mark);
  to += text.substr(0, at);
  return text.substr(at + mark.size());
}

}  // namespace

std::string reportPage(const StatisticsReport& report) {
  std::string page;
  std::string_view rest = appendUpTo("@REPORT@", pageTemplate(), page);
  page += withoutTags(reportJson(report));
  rest = appendUpTo("@CHART_SCRIPT@", rest, page);
  // The comment at the end of the script is omitted, because it refers a debugger to another file.
  page += chartScript().substr(0, chartScript().rfind("//# sourceMappingURL="));
  page += rest;
  return page;
}

}  // namespace vsa_tools
