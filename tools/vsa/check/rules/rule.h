// Rules: what vsa check looks for besides the diagnostics of the reader.
//
// A rule is a row of the table in rules.cpp and a function. The function gets the text and the
// scene that was read from it, and appends findings. Configuration, comments in the text and the
// baseline are applied to the findings afterwards.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include <vsa/read.h>
#include <vsa/view.h>
#include "tools/vsa/check/finding.h"

namespace vsa_tools {

/// What a rule may look at. Everything lives until the rule returns.
struct RuleInput {
  /// The file without a byte order mark. Empty if the file is too large to be kept in memory.
  std::string_view text;
  /// Whether `text` is the whole file.
  bool isTextKept = true;
  /// What was read; after a fatal mistake what was read without the wrong statements.
  vsa::SceneView scene;
  /// How the reading ended, and its diagnostics.
  const vsa::ReadOutcome& outcome;
};

struct Rule {
  const char* id;     ///< In kebab case.
  Level level;        ///< Of its findings.
  const char* group;  ///< A name that --error, --warn and --ignore take for all rules of the group.
  bool isDefault;     ///< Whether it runs without being asked for.
  /// Appends its findings, in any order. Their `id` and `level` are set afterwards.
  void (*find)(const RuleInput& input, std::vector<Finding>& findings);
};

/// All rules, in the order in which they run.
std::span<const Rule> allRules();

}  // namespace vsa_tools
