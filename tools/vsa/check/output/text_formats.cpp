#include "tools/vsa/check/output/text_formats.h"

#include <fmt/format.h>

#include "tools/scene_text/printable_text.h"
#include "tools/vsa/check/output/excerpt.h"

namespace vsa_tools {

namespace {

// The maximum number of terminal columns for a source line.
constexpr std::size_t EXCERPT_COLUMNS = 100;

constexpr char BOLD[] = "1";
constexpr char BOLD_RED[] = "1;31";
constexpr char BOLD_MAGENTA[] = "1;35";
constexpr char BOLD_CYAN[] = "1;36";
constexpr char BOLD_GREEN[] = "1;32";

const char* colourOf(Level level) {
  switch (level) {
    case Level::Note:
      return BOLD_CYAN;
    case Level::Warning:
      return BOLD_MAGENTA;
    case Level::Error:
      break;
  }
  return BOLD_RED;
}

}  // namespace

std::string placePrefix(const std::string& file, const std::optional<vsa::TextRange>& range) {
  if (!range) return printableLine(file) + ": ";
  return fmt::format("{}:{}:{}: ", printableLine(file), range->begin.line, range->begin.column);
}

std::string FullFormat::coloured(const char* code, std::string_view text) const {
  return isColoured_ ? fmt::format("\x1B[{}m{}\x1B[0m", code, text) : std::string(text);
}

std::string FullFormat::messageLine(const Finding& finding, const FindingPlace& place) const {
  return coloured(BOLD, placePrefix(place.file, finding.range)) +
         coloured(colourOf(finding.level), name(finding.level)) + ": " +
         coloured(BOLD, printable(finding.message)) + " [" + finding.id + "]\n";
}

std::string FullFormat::excerpt(const vsa::TextRange& range, const FindingPlace& place,
                                const char* colour) const {
  const Excerpt shownLine = excerptOf(place.text, range, EXCERPT_COLUMNS);
  return fmt::format("{:5} | {}\n      | {}\n", range.begin.line, shownLine.line,
                     coloured(colour, shownLine.carets));
}

std::string FullFormat::render(const Finding& finding, const FindingPlace& place) const {
  std::string text;
  if (place.stopLine) {
    text += fmt::format(
        "{}: {}: the reader stops at line {}; the following was found by reading "
        "on\n",
        printableLine(place.file), coloured(BOLD_CYAN, "note"), *place.stopLine);
  }
  text += messageLine(finding, place);
  if (finding.range) text += excerpt(*finding.range, place, BOLD_GREEN);
  if (!finding.hint.empty()) {
    text += "      = " + coloured(BOLD_CYAN, "hint") + ": " + printable(finding.hint) + '\n';
  }
  for (const FindingNote& note : finding.notes) {
    text += coloured(BOLD, placePrefix(place.file, note.range)) + coloured(BOLD_CYAN, "note") +
            ": " + printable(note.text) + '\n' + excerpt(note.range, place, BOLD_CYAN);
  }
  return text;
}

std::string LineFormat::render(const Finding& finding, const FindingPlace& place) const {
  const vsa::TextRange range = finding.range.value_or(vsa::TextRange{});
  std::string line =
      placePrefix(place.file, range) + name(finding.level) + ": " + printable(finding.message);
  if (!finding.hint.empty()) line += " (" + printable(finding.hint) + ')';
  return line + " [" + finding.id + "]\n";
}

std::string LogFormat::render(const Finding& finding, const FindingPlace& /*place*/) const {
  return printable(finding.logLine) + '\n';
}

namespace {

/// Escapes a text in a workflow command of GithubFormat. In a property of the command, `:` and `,`
/// are escaped, too.
std::string githubEscaped(std::string_view text, bool isProperty) {
  std::string result;
  for (const char c : text) {
    if (c == '%' || c == '\r' || c == '\n' || (isProperty && (c == ':' || c == ','))) {
      result += fmt::format("%{:02X}", static_cast<unsigned char>(c));
    } else {
      result += c;
    }
  }
  return result;
}

}  // namespace

std::string GithubFormat::render(const Finding& finding, const FindingPlace& place) const {
  const vsa::TextRange range = finding.range.value_or(vsa::TextRange{});
  const char* const command = finding.level == Level::Note ? "notice" : name(finding.level);
  std::string text = fmt::format("::{} file={},line={}", command,
                                 githubEscaped(printable(place.file), true), range.begin.line);
  if (range.end.line == range.begin.line && range.end.column > range.begin.column) {
    text += fmt::format(",col={},endColumn={}", range.begin.column, range.end.column - 1);
  } else {
    text += fmt::format(",col={}", range.begin.column);
  }
  std::string message = printable(finding.message);
  if (!finding.hint.empty()) message += "\nhint: " + printable(finding.hint);
  return text + ",title=" + githubEscaped(finding.id, true) + "::" + githubEscaped(message, false) +
         '\n';
}

}  // namespace vsa_tools
