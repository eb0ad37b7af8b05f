// Compares the findings about the texts of the other tests, as vsa check prints them, with
// the files in the folder printed. The other tests check what a finding is about and where it is.
// This test checks each word of it.
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include <vsa/read.h>
#include "tests/tool/check/rows/marked_text.h"
#include "tests/tool/check/rows/row_texts.h"
#include "tests/tool/check/rows/rule_rows.h"
#include "tests/tool/expected_file.h"
#include "tools/vsa/check/file_check.h"
#include "tools/vsa/check/output/format.h"

namespace vsa_tests {

namespace {

using vsa_tools::CheckedText;
using vsa_tools::FileCheckOptions;
using vsa_tools::Finding;
using vsa_tools::Rule;
using vsa_tools::RuleSet;

/// Collects what vsa check prints about texts.
class PrintedFindings {
 public:
  /// Checks a text with the rule `rule`, or with none.
  void check(std::string_view text, std::string_view rule = "",
             std::span<const vsa::TypeDescription> types = {}) {
    printed_ += "=== " + visible(text) + '\n';
    CheckedText checked(CheckedText::InMemory{text});
    const FileCheckOptions options{.reading = reading_, .types = types};
    const RuleSet rules([&](const Rule& row) { return row.id == rule; });
    const vsa_tools::FileCheck::Consumer consumer = [&](Finding&& finding) {
      print(finding, checked);
      return true;
    };
    vsa_tools::FileCheck(checked, options, rules, consumer).run();
  }

  const std::string& text() const { return printed_; }

 private:
  void print(const Finding& finding, const CheckedText& text) {
    printed_ += format_->render(finding, {file_, text, {}});
    for (const vsa_tools::TextEdit& edit : finding.edits) {
      printed_ += "edit " + std::to_string(edit.begin) + '-' + std::to_string(edit.end) + " to `" +
                  visible(edit.text) + "`\n";
    }
  }

  const vsa_tools::ReadArguments reading_;
  const std::unique_ptr<vsa_tools::Format> format_ =
      vsa_tools::makeFormat(vsa_tools::FormatName::Full, false, false);
  const std::string file_ = "t.vsa";
  std::string printed_;
};

const std::filesystem::path FOLDER = std::filesystem::path(VSA_TEST_DIR) / "tool/check/printed";

TEST(PrintedFindings, OfMistakes) {
  PrintedFindings printed;
  for (const std::string_view text : hintTexts()) printed.check(text);
  expectContent(FOLDER / "mistakes.txt", printed.text());
}

TEST(PrintedFindings, OfRules) {
  PrintedFindings printed;
  for (const RuleRow& row : RULE_ROWS) printed.check(MarkedText(row.fires).text, row.id);
  const auto types = ruleTypes();
  for (const RuleText& row : typeRuleTexts()) printed.check(row.text, row.id, types);
  expectContent(FOLDER / "rules.txt", printed.text());
}

}  // namespace

}  // namespace vsa_tests
