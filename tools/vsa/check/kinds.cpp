#include "tools/vsa/check/kinds.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <vsa/diagnostics/diagnostic_table.h>
#include <vsa/reading/read_diagnostic.h>
#include "tools/vsa/check/rules/rule.h"

namespace vsa_tools {

namespace {

constexpr char READER_PAGE[] = "docs/messages.md";
constexpr char RULES_PAGE[] = "docs/rules.md";

constexpr FindingKind OTHER_KINDS[] = {
    {"end-mark", Level::Error, "reader", true, READER_PAGE},
    {"over-limit", Level::Error, "reader", true, READER_PAGE},
    {UNREADABLE_FILE, Level::Error, "file", true, READER_PAGE},
};

std::vector<FindingKind> makeKinds() {
  std::vector<FindingKind> kinds;
  for (const auto& row : zn::korvo_sdk::DIAGNOSTIC_ROWS) {
    const bool isWarning = row.severity == zn::korvo_sdk::Severity::Warning;
    kinds.push_back(
        {row.name, isWarning ? Level::Warning : Level::Error, "reader", true, READER_PAGE});
  }
  kinds.insert(kinds.end(), std::begin(OTHER_KINDS), std::end(OTHER_KINDS));
  for (const Rule& rule : allRules()) {
    kinds.push_back({rule.id, rule.level, rule.group, rule.isDefault, RULES_PAGE});
  }
  return kinds;
}

}  // namespace

Finding unreadable(std::string message) {
  Finding finding;
  finding.id = UNREADABLE_FILE;
  finding.message = std::move(message);
  return finding;
}

std::span<const FindingKind> allKinds() {
  static const std::vector<FindingKind> KINDS = makeKinds();
  return KINDS;
}

const FindingKind* kindOf(std::string_view id) {
  const std::span<const FindingKind> kinds = allKinds();
  const auto found = std::find_if(kinds.begin(), kinds.end(),
                                  [&](const FindingKind& kind) { return id == kind.id; });
  return found == kinds.end() ? nullptr : &*found;
}

}  // namespace vsa_tools
