#include "tools/vsa/check/output/junit_format.h"

#include <fmt/format.h>

#include "tools/scene_text/printable_text.h"
#include "tools/vsa/check/output/text_formats.h"

namespace vsa_tools {

namespace {

std::string xmlEscaped(std::string_view text) {
  std::string result;
  for (const char c : text) {
    switch (c) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      case '"':
        result += "&quot;";
        break;
      default:
        result += c;
    }
  }
  return result;
}

}  // namespace

// Renders a finding that fails the check as a failed test case: an error, and also a warning if
// `isStrict` is set. Other findings become the output of a passed test case.
std::string JunitFormat::render(const Finding& finding, const FindingPlace& place) const {
  const std::string file = xmlEscaped(printable(place.file));
  const vsa::TextPosition at = finding.range.value_or(vsa::TextRange{}).begin;
  const std::string line = xmlEscaped(LineFormat().render(finding, place));
  std::string body = fmt::format("<system-out>{}</system-out>", line);
  if (isFailure(finding.level)) {
    body = fmt::format("<failure type=\"{}\" message=\"{}\">{}</failure>", finding.id,
                       xmlEscaped(printable(finding.message)), line);
  }
  return fmt::format(
      "<testcase classname=\"{}\" name=\"{}:{} {}\" file=\"{}\" line=\"{}\">{}"
      "</testcase>\n",
      file, at.line, at.column, finding.id, file, at.line, body);
}

std::string JunitFormat::add(std::string rendered) {
  ++count_;
  if (rendered.find("<failure ") != std::string::npos) ++failures_;
  cases_ += rendered;
  return {};
}

std::string JunitFormat::addClean(const std::string& file) {
  const std::string shown = xmlEscaped(printable(file));
  ++count_;
  cases_ += fmt::format("<testcase classname=\"{0}\" name=\"check\" file=\"{0}\"/>\n", shown);
  return {};
}

std::string JunitFormat::end(const Totals& /*totals*/) {
  const std::string counts =
      fmt::format("tests=\"{}\" failures=\"{}\" errors=\"0\"", count_, failures_);
  return fmt::format(
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites {0}>\n"
      "<testsuite name=\"vsa check\" {0}>\n{1}</testsuite>\n</testsuites>\n",
      counts, cases_);
}

}  // namespace vsa_tools
