// Runs the cases under tests/cases, each from a String and from a File, and sees to it that every
// message has one.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <sstream>

#include "tests/support/case_run.h"

namespace vsa_tests {

namespace {

namespace fs = std::filesystem;

const CaseFolder& caseFolder() {
  static const CaseFolder found = findCases(VSA_CASE_DIR);
  return found;
}

/// A test's name may hold letters, digits and underscores only.
std::string testName(const testing::TestParamInfo<Case>& info) {
  std::string name = info.param.name;
  for (char& c : name) {
    if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
  }
  return name;
}

class CaseTest : public testing::TestWithParam<Case> {};

TEST_P(CaseTest, ReadsAsExpected) {
  const std::string text = contentOf(GetParam().text);
  const std::string fromString = comparable(outcomeOf(text, Source::String));
  EXPECT_EQ(comparable(contentOf(GetParam().expectation)), fromString);
  EXPECT_EQ(fromString, comparable(outcomeOf(text, Source::File)))
      << "a File differs from a String";
  EXPECT_EQ(fromString, comparable(outcomeOf(text, Source::ByteByByte)))
      << "single bytes differ from a String";
}

INSTANTIATE_TEST_SUITE_P(Cases, CaseTest, testing::ValuesIn(caseFolder().cases), testName);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(CaseTest);

TEST(CaseFolderTest, EveryTextHasItsExpectation) {
  for (const fs::path& orphan : caseFolder().orphans) ADD_FAILURE() << orphan << " has no partner";
}

// --- Every message has a case
// ----------------------------------------------------------------------------------------

/// Reads the C string literals from `at` up to the next ';' and joins them. `\"` and `\\` are all
/// the escapes there are.
std::string literalsFrom(const std::string& source, size_t at) {
  std::string text;
  bool inside = false;
  for (; at < source.size() && (inside || source[at] != ';'); ++at) {
    if (source[at] == '"') {
      inside = !inside;
    } else if (inside) {
      if (source[at] == '\\') ++at;
      text += source[at];
    }
  }
  return text;
}

/// The constants of the reader's list of messages, name to text.
std::map<std::string, std::string> messages() {
  constexpr std::string_view START = "constexpr char ";
  const std::string source =
      contentOf(fs::path(VSA_TEST_DIR).parent_path() / "src/vsa/diagnostics/messages.h");
  std::map<std::string, std::string> found;
  for (size_t at = source.find(START); at != std::string::npos; at = source.find(START, at + 1)) {
    const size_t name = at + START.size(), nameEnd = source.find('[', name);
    found[source.substr(name, nameEnd - name)] = literalsFrom(source, nameEnd);
  }
  return found;
}

/// The fixed pieces of a printf format, in order; between them the arguments stand.
std::vector<std::string> fixedPieces(const std::string& format) {
  std::vector<std::string> pieces(1);
  for (size_t at = 0; at < format.size(); ++at) {
    if (format[at] != '%') {
      pieces.back() += format[at];
    } else if (at + 1 < format.size() && format[at + 1] == '%') {
      pieces.back() += format[++at];
    } else {
      at = format.find_first_of("sdciuxp", at);
      pieces.emplace_back();
    }
  }
  return pieces;
}

bool holdsInOrder(const std::string& line, const std::vector<std::string>& pieces) {
  size_t at = 0;
  for (const std::string& piece : pieces) {
    at = line.find(piece, at);
    if (at == std::string::npos) return false;
    at += piece.size();
  }
  return true;
}

/// The lines of all expectations that show a message.
std::vector<std::string> shownMessages() {
  std::vector<std::string> lines;
  for (const Case& each : caseFolder().cases) {
    std::istringstream expectation(contentOf(each.expectation));
    for (std::string line; std::getline(expectation, line) && line != "scene";)
      lines.push_back(line);
  }
  return lines;
}

/// Messages that no text can raise, each with its reason: "NAME reason" a line in
/// uncovered_messages.txt.
std::map<std::string, std::string> exemptions() {
  std::map<std::string, std::string> found;
  const fs::path list = fs::path(VSA_CASE_DIR) / "uncovered_messages.txt";
  if (!fs::exists(list)) return found;
  std::istringstream lines(contentOf(list));
  for (std::string line; std::getline(lines, line);) {
    const size_t blank = line.find(' ');
    if (!line.empty() && line[0] != '#')
      found[line.substr(0, blank)] = line.substr(std::min(blank, line.size()));
  }
  return found;
}

TEST(MessageTest, EveryMessageIsShownByACase) {
  const auto shown = shownMessages();
  const auto exempt = exemptions();
  for (const auto& [name, text] : messages()) {
    const auto pieces = fixedPieces(text);
    const bool isShown = std::any_of(shown.begin(), shown.end(),
                                     [&](auto& line) { return holdsInOrder(line, pieces); });
    EXPECT_NE(isShown, exempt.contains(name))
        << name << " (\"" << text << "\") "
        << (isShown ? "is exempt, and a case shows it" : "is shown by no case");
  }
}

TEST(MessageTest, EveryExemptionNamesAMessageAndAReason) {
  const auto known = messages();
  for (const auto& [name, reason] : exemptions()) {
    EXPECT_TRUE(known.contains(name)) << name;
    EXPECT_GT(reason.size(), 10u) << name;
  }
}

}  // namespace

}  // namespace vsa_tests
