// The rules, one row each: VSA_ROW(name, id, level, group, runs by default, purpose).
#pragma once

#include <cstdint>

#define VSA_RULE_TABLE(VSA_ROW)                                                                    \
  VSA_ROW(EmptyFile, "empty-file", Warning, "encoding", true, "a file without a statement")        \
  VSA_ROW(Utf16, "utf-16", Error, "encoding", true, "a text in UTF-16 or UTF-32")                  \
  VSA_ROW(NulByte, "nul-byte", Error, "encoding", true, "a NUL byte, which ends what contains it") \
  VSA_ROW(LoneCarriageReturn, "lone-carriage-return", Warning, "encoding", true,                   \
          "a carriage return that ends no line")                                                   \
  VSA_ROW(NotUtf8, "not-utf-8", Warning, "encoding", true, "bytes that are no UTF-8")

namespace vsa_tools {

/// Identifies a rule: its index in allRules().
enum class RuleId : std::uint8_t {
#define VSA_ROW(name, ...) name,
  VSA_RULE_TABLE(VSA_ROW)
#undef VSA_ROW
};

}  // namespace vsa_tools
