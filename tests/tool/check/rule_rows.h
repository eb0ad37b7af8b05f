// For each rule of vsa check, texts in which it fires and texts in which it does not.
#pragma once

#include <string_view>

namespace vsa_tests {

using namespace std::string_view_literals;

struct RuleRow {
  std::string id;
  std::string_view fires;     ///< With the culprit between « and ».
  std::string_view isSilent;  ///< As similar as possible.
};

const RuleRow RULE_ROWS[] = {
    {"empty-file", "«»", "# a comment\n"},
    {"empty-file", "«» \n\t\n", "lamp sun;"},
    {"utf-16", "«l\0»a\0m\0p\0 \0s\0u\0n\0;\0"sv, "lamp sun;"},
    {"nul-byte", "lamp sun; # a«\0»b\n"sv, "lamp sun; # ab\n"},
    {"lone-carriage-return", "lamp sun;«\r»lamp moon;\n", "lamp sun;\r\nlamp moon;\r\n"},
    {"not-utf-8", "lamp sun; # caf«\xE9»\n", "lamp sun; # caf\xC3\xA9\n"},
};

}  // namespace vsa_tests
