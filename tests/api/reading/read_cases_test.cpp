// Reads every case through the public API from a text, a file and a source. The scene and the log
// must be the same as through the plain entry points. The order of consecutive warnings about
// links, and diagnostics that only the public API reports, are not compared. The range of each
// diagnostic must be inside the text.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include <vsa/parse.h>
#include <vsa/read.h>
#include "tests/api/reading/api_read.h"
#include "tests/support/case_run.h"
#include "tests/support/text.h"

namespace vsa_tests {

namespace {

// Returns the outcome of the plain entry point. The message of an exception is a part of the log.
std::string plainOutcome(std::string_view text) {
  zn::korvo_sdk::Scene scene;
  vsa_tools::ReadOutcome outcome = vsa_tools::captureRead(
      [&] { return zn::korvo_sdk::impl::parseString(&scene, zn::String::copyOf(text)); });
  if (outcome.escaped) outcome.log.push_back({zn::LogLevel::Error, *outcome.escaped});
  outcome.escaped.reset();
  vsa_tools::TextOutput out;
  vsa_tools::dumpCase(outcome, scene, out);
  return out.text();
}

// Returns options for the public API that give the same results as the plain entry points. A
// reading with them appends its diagnostics to `log` in the order of the log.
vsa::ReadOptions plainOptions(std::vector<vsa::Diagnostic>& log) {
  vsa::ReadOptions options;
  options.onDiagnostic = [&log](const vsa::Diagnostic& found) { log.push_back(found); };
  options.keepHeader = true;
  options.limits.memory = vsa::UNLIMITED;
  return options;
}

bool isInside(const vsa::TextRange& range, std::string_view text) {
  return range.begin.offset <= range.end.offset && range.end.offset <= text.size() &&
         range.begin.line >= 1 && range.begin.column >= 1 && range.end.line >= 1 &&
         range.end.column >= 1;
}

void expectPositionsOf(const vsa::ReadOutcome& outcome, std::string_view text) {
  for (const vsa::Diagnostic& found : outcome.diagnostics) {
    EXPECT_TRUE(isInside(found.range, text)) << found.logLine();
    const std::string_view before = text.substr(0, found.range.begin.offset);
    const std::size_t feed = before.rfind('\n');
    const std::size_t start = feed == std::string_view::npos ? 0 : feed + 1;
    const auto lines = static_cast<std::uint64_t>(std::count(before.begin(), before.end(), '\n'));
    EXPECT_EQ(found.range.begin.line, lines + 1) << found.logLine();
    EXPECT_EQ(found.range.begin.column, before.size() - start + 1) << found.logLine();
  }
}

class ReadCases : public testing::Test {
 protected:
  void SetUp() override { declareLamp(); }

  const CaseFolder cases = findCases(VSA_CASE_DIR);
};

TEST_F(ReadCases, AreTheSameFromText) {
  for (const Case& one : cases.cases) {
    const std::string text = contentOf(one.text);
    std::vector<vsa::Diagnostic> log;
    const vsa::ReadResult result = vsa::readText(text, plainOptions(log));
    const LinkWarnings links = linkWarningsOf(text);
    EXPECT_EQ(comparable(outcomeText(result, log), links), comparable(plainOutcome(text), links))
        << one.name;
    expectPositionsOf(result, text);
  }
}

TEST_F(ReadCases, AreTheSameFromAFile) {
  for (const Case& one : cases.cases) {
    const std::string text = contentOf(one.text);
    const std::size_t mark = text.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    std::vector<vsa::Diagnostic> log;
    const vsa::ReadResult result = vsa::readFile(one.text, plainOptions(log));
    const LinkWarnings links = linkWarningsOf(text.substr(mark));
    EXPECT_EQ(comparable(outcomeText(result, log), links),
              comparable(plainOutcome(text.substr(mark)), links))
        << one.name;
    expectPositionsOf(result, text.substr(mark));
  }
}

TEST_F(ReadCases, AreTheSameFromSourcesOfSeveralBlockSizes) {
  for (const Case& one : cases.cases) {
    const std::string text = contentOf(one.text);
    const LinkWarnings links = linkWarningsOf(text);
    const std::string expected = comparable(plainOutcome(text), links);
    for (const std::size_t bytesPerRead : {0, 1, 7}) {
      TestSource source(text, bytesPerRead);
      std::vector<vsa::Diagnostic> log;
      const vsa::ReadResult result = vsa::readSource(source, plainOptions(log));
      EXPECT_EQ(comparable(outcomeText(result, log), links), expected) << one.name;
      expectPositionsOf(result, text);
    }
  }
}

}  // namespace

}  // namespace vsa_tests
