// Tests of patterns for names.
#include <gtest/gtest.h>

#include "tools/vsa/common/scene/name_pattern.h"

namespace {

using vsa_tools::matchesPattern;

struct Row {
  const char *pattern, *text;
  bool matches;
};

TEST(NamePatternTest, Table) {
  const Row rows[] = {
      {"", "", true},         {"", "a", false},        {"*", "", true},
      {"*", "abc", true},     {"?", "", false},        {"?", "a", true},
      {"?", "ab", false},     {"abc", "abc", true},    {"abc", "abd", false},
      {"a*c", "abbc", true},  {"a*c", "abbd", false},  {"*b*", "abc", true},
      {"*ab", "aab", true},   {"*ab", "aabb", false},  {"a**b", "ab", true},
      {"a?c*", "abcd", true}, {"[a]", "a", false},     {"x.y[*]", "x.y[12]", true},
      {"a*", "b", false},     {"*.*", "lamp.k", true},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(row.matches, matchesPattern(row.pattern, row.text)) << row.pattern << ' ' << row.text;
  }
}

// A pattern with many stars must not take exponential time.
TEST(NamePatternTest, ManyStarsInALongText) {
  std::string pattern;
  for (int i = 0; i < 20; ++i) pattern += "*a";
  EXPECT_FALSE(matchesPattern(pattern + "b", std::string(10000, 'a')));
  EXPECT_TRUE(matchesPattern(pattern, std::string(10000, 'a')));
}

TEST(NamePatternTest, OneOfSeveral) {
  EXPECT_TRUE(vsa_tools::matchesAny({"x", "l*"}, "lamp"));
  EXPECT_FALSE(vsa_tools::matchesAny({"x", "l*"}, "sun"));
  EXPECT_FALSE(vsa_tools::matchesAny({}, ""));
}

}  // namespace
