#include "tests/support/case_run.h"

#include <algorithm>
#include <array>

#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include "tests/support/byte_source.h"
#include "tests/support/declared_lamp.h"
#include "tools/scene_text/read_outcome.h"
#include "tools/scene_text/scene_dump.h"

namespace vsa_tests {

namespace fs = std::filesystem;

namespace {

bool readFrom(Source source, std::string_view text, zn::korvo_sdk::Scene& scene) {
  using namespace zn::korvo_sdk::impl;
  if (source == Source::String) return parseString(&scene, zn::String::copyOf(text));
  const size_t bytesPerRead = source == Source::ByteByByte ? 1 : 0;
  return parseVsa(&scene, memoryFile(std::string(text), bytesPerRead), true);
}

bool isLinkWarning(const zn::korvo_sdk::Diagnostic& record) {
  using enum zn::korvo_sdk::DiagnosticId;
  constexpr std::array IDS = {InvalidOutput, NoNodeToConnect, NoOutputToConnect, NoNodeToAssign};
  return std::find(IDS.begin(), IDS.end(), record.id) != IDS.end();
}

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  size_t start = 0;
  while (start < text.size()) {
    const size_t end = std::min(text.find('\n', start), text.size());
    lines.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  return lines;
}

}  // namespace

CaseFolder findCases(const fs::path& folder) {
  CaseFolder found;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (!entry.is_regular_file() || entry.path().parent_path() == folder) continue;
    fs::path text = entry.path(), expectation = entry.path();
    text.replace_extension(".vsa");
    expectation.replace_extension(".expect");
    if (!fs::exists(text) || !fs::exists(expectation) ||
        (entry.path() != text && entry.path() != expectation)) {
      found.orphans.push_back(entry.path());
    } else if (entry.path() == text) {
      found.cases.push_back(
          {fs::relative(text, folder).replace_extension().generic_string(), text, expectation});
    }
  }
  std::sort(found.cases.begin(), found.cases.end(),
            [](auto& a, auto& b) { return a.name < b.name; });
  return found;
}

std::string outcomeOf(std::string_view text, Source source) {
  declareLamp();
  zn::korvo_sdk::Scene scene;
  const vsa_tools::ReadOutcome outcome =
      vsa_tools::captureRead([&] { return readFrom(source, text, scene); });
  vsa_tools::TextOutput out;
  vsa_tools::dumpCase(outcome, scene, out);
  return out.text();
}

std::set<zn::korvo_sdk::DiagnosticId> messagesOf(std::string_view text) {
  declareLamp();
  zn::korvo_sdk::Scene scene;
  zn::korvo_sdk::impl::ReadReport report;
  const vsa_tools::ReadOutcome outcome = vsa_tools::captureRead(
      [&] { return zn::korvo_sdk::impl::parseString(&scene, zn::String::copyOf(text), report); });
  std::set<zn::korvo_sdk::DiagnosticId> ids;
  for (const auto& diagnostic : outcome.diagnostics) ids.insert(diagnostic.id);
  if (outcome.escapedDiagnostic) ids.insert(outcome.escapedDiagnostic->id);
  if (!report.cutOff.isEmpty()) ids.insert(zn::korvo_sdk::DiagnosticId::UnexpectedEof);
  return ids;
}

// Returns the lines that the warnings about links have in an expected result. To get them, writes
// an expected result with only these warnings in the log, and takes the indented lines. Only lines
// of the log are indented there.
LinkWarnings linkWarningsOf(const std::vector<zn::korvo_sdk::Diagnostic>& records) {
  vsa_tools::ReadOutcome outcome;
  for (const auto& record : records) {
    if (!isLinkWarning(record)) continue;
    outcome.log.push_back({zn::LogLevel::Warning, std::string(record.logLine().view())});
  }
  vsa_tools::TextOutput out;
  vsa_tools::dumpCase(outcome, zn::korvo_sdk::Scene(), out);
  LinkWarnings warnings;
  for (const std::string& line : linesOf(out.text())) {
    if (line.starts_with(' ')) warnings.insert(line);
  }
  return warnings;
}

LinkWarnings linkWarningsOf(std::string_view text) {
  declareLamp();
  zn::korvo_sdk::Scene scene;
  return linkWarningsOf(
      vsa_tools::captureRead([&] { return readFrom(Source::String, text, scene); }).diagnostics);
}

std::string comparable(const std::string& expectation, const LinkWarnings& linkWarnings) {
  const auto isLinkWarning = [&](const std::string& line) { return linkWarnings.contains(line); };
  std::vector<std::string> lines = linesOf(expectation);
  auto run = lines.begin();
  while (run != lines.end()) {
    run = std::find_if(run, lines.end(), isLinkWarning);
    const auto end = std::find_if_not(run, lines.end(), isLinkWarning);
    std::sort(run, end);
    run = end;
  }
  std::string text;
  for (const std::string& line : lines) text += line + '\n';
  return text;
}

}  // namespace vsa_tests
