// Tests of String: construction, comparison, searching and parts of texts.
#include <vsa/foundation/string.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <new>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <vsa/foundation/string_vector.h>
#include "tests/support/text.h"

namespace zn {
namespace {

using vsa_tests::string;
using vsa_tests::text;
using namespace std::string_literals;

constexpr std::size_t MAX_SIZE = std::numeric_limits<std::size_t>::max();

static_assert(std::is_base_of_v<RefersTo<IRefCounted>, String>);

std::vector<std::string> pieces(const StringVector& split) {
  std::vector<std::string> texts;
  for (std::size_t i = 0; i < split.size(); ++i) texts.push_back(text(split[i]));
  return texts;
}

TEST(String, Empty) {
  const String empty;
  EXPECT_STREQ(empty.buf(), "");
  EXPECT_EQ(empty.len(), 0U);
  EXPECT_TRUE(empty.isEmpty());
  EXPECT_EQ(empty[0], '\0');
  EXPECT_TRUE(String("").isEmpty());
  EXPECT_TRUE(String(static_cast<const char*>(nullptr)).isEmpty());
  EXPECT_TRUE(String::copyOf("", String::hashOf("")).isEmpty());
  EXPECT_TRUE(empty == String(""));
  EXPECT_TRUE(empty == "");
}

TEST(String, Construction) {
  EXPECT_EQ(text(String("lamp", 0)), "lamp");
  EXPECT_EQ(text(String("lamp1", 4)), "lamp");
  EXPECT_EQ(text(String("a\0b", 3)), "a\0b"s);
  EXPECT_EQ(text(String('x')), "x");
  EXPECT_EQ(text(String(0ULL)), "0");
  EXPECT_EQ(text(String(std::numeric_limits<unsigned long long>::max())), "18446744073709551615");
}

TEST(String, ALengthThatNoMemoryHolds) {
  for (const std::size_t length : {MAX_SIZE, MAX_SIZE - 60, MAX_SIZE / 2}) {
    EXPECT_THROW(detail::StringBuffer::make(length), std::bad_alloc) << length;
  }
}

TEST(String, CharactersAreTerminated) {
  const String s("lamp1", 4);
  EXPECT_EQ(s.buf()[4], '\0');
  EXPECT_EQ(s[3], 'p');
  EXPECT_EQ(s[4], '\0');
  EXPECT_EQ(s[MAX_SIZE], '\0');
}

TEST(String, CopiesShareTheText) {
  const String first("lamp");
  const String second = first;  // NOLINT: the copy is the point
  EXPECT_EQ(first.buf(), second.buf());
}

TEST(String, TheLastHandleKeepsTheText) {
  String kept;
  {
    const String first("lamp");
    kept = first;
  }
  EXPECT_STREQ(kept.buf(), "lamp");
}

TEST(String, Adopt) {
  for (const std::string& chars :
       {""s, "a"s, "lamp"s, "la\0mp"s, "\0"s, "\0lamp"s, std::string(5000, 'x')}) {
    ds::Vector<char> collected;
    for (const char c : chars) collected.push_back(c);
    const String adopted = String::adopt(std::move(collected));
    EXPECT_EQ(text(adopted), chars.substr(0, chars.find('\0')));
    EXPECT_EQ(adopted.buf()[adopted.len()], '\0');
    EXPECT_EQ(collected.size, 0U);  // NOLINT: it is left empty
  }
}

TEST(String, AdoptWhole) {
  for (const std::string& chars : {""s, "a"s, "lamp"s, std::string(5000, 'x')}) {
    ds::Vector<char> collected;
    for (const char c : chars) collected.push_back(c);
    const String adopted = String::adoptWhole(std::move(collected));
    EXPECT_EQ(text(adopted), chars);
    EXPECT_EQ(adopted.buf()[adopted.len()], '\0');
    EXPECT_EQ(collected.size, 0U);  // NOLINT: it is left empty
  }
}

TEST(String, Concatenation) {
  EXPECT_EQ(text(String("lamp") + String("1")), "lamp1");
  EXPECT_EQ(text(String("lamp") + ".on"), "lamp.on");
  EXPECT_EQ(text(String() + "a"), "a");
  EXPECT_EQ(text(String("a") + String()), "a");
  EXPECT_TRUE((String() + String()).isEmpty());
  const String s("a");
  EXPECT_EQ(text(s + s + s), "aaa");
  EXPECT_EQ(text(s), "a");
}

TEST(String, EqualityIsExact) {
  EXPECT_TRUE(String("lamp") == String("lamp"));
  EXPECT_FALSE(String("lamp") == String("Lamp"));
  EXPECT_FALSE(String("lamp") == String("lamp1"));
  EXPECT_TRUE(String("lamp") == "lamp");
  EXPECT_FALSE(String("lamp") == "lam");
  EXPECT_FALSE(string("a\0b"s) == string("a\0c"s));
}

TEST(String, EqualTextsHaveEqualHashes) {
  const std::string bytes = "a longer name of some node, \xc3\xa9";
  for (std::size_t length = 0; length <= bytes.size(); ++length) {
    const String one = string(bytes.substr(0, length));
    const String other = string(bytes.substr(0, length));
    EXPECT_EQ(one.hash(), other.hash());
    EXPECT_EQ(one.hash(), one.hash());
    EXPECT_EQ(one.hash(), String::hashOf(one.view()));
    EXPECT_NE(one.hash(), 0U);
    EXPECT_NE(one.hash(), string(bytes.substr(0, length) + "x").hash());
  }
}

TEST(String, Contains) {
  const String s("# Version: 3");
  EXPECT_TRUE(s.contains("Version:", false));
  EXPECT_FALSE(s.contains("version:", false));
  EXPECT_TRUE(s.contains("version:", true));
  EXPECT_TRUE(s.contains("", false));
  EXPECT_TRUE(s.contains("", true));
  EXPECT_TRUE(String().contains("", true));
  EXPECT_FALSE(String().contains("a", true));
  EXPECT_TRUE(s.contains("3", false));
  EXPECT_FALSE(s.contains("# Version: 3 ", true));
  EXPECT_FALSE(s.contains("version;", true));
  EXPECT_FALSE(s.contains("4", true));
  EXPECT_TRUE(s.contains("N: 3", true));
  // The characters differ in the same bit as 'A' and 'a', but they are no letters.
  EXPECT_FALSE(String("[").contains("{", true));
}

TEST(String, StartsAndEndsWith) {
  const String s("Lamp.on");
  EXPECT_TRUE(s.startsWith("Lamp", false));
  EXPECT_FALSE(s.startsWith("lamp", false));
  EXPECT_TRUE(s.startsWith("lamp", true));
  EXPECT_TRUE(s.startsWith("", false));
  EXPECT_TRUE(s.endsWith(".on", false));
  EXPECT_FALSE(s.endsWith(".ON", false));
  EXPECT_TRUE(s.endsWith(".ON", true));
  EXPECT_TRUE(s.endsWith("", false));
  EXPECT_FALSE(s.endsWith("a longer text", false));
  EXPECT_TRUE(String("12u").endsWith("u", false));
  EXPECT_FALSE(String("12").endsWith("u", false));
  EXPECT_FALSE(String("12U").endsWith("u", false));
}

TEST(String, Find) {
  const String s("abcAbc");
  EXPECT_EQ(s.find('b', false, 0), 1);
  EXPECT_EQ(s.find('b', false, 2), 4);
  EXPECT_EQ(s.find('A', false, 0), 3);
  EXPECT_EQ(s.find('A', true, 0), 0);
  EXPECT_EQ(s.find('a', true, 1), 3);
  EXPECT_EQ(s.find('x', false, 0), -1);
  EXPECT_EQ(s.find('c', false, 5), 5);
  EXPECT_EQ(s.find('c', false, 6), -1);
  EXPECT_EQ(s.find('c', false, MAX_SIZE), -1);
  EXPECT_EQ(String().find('a', false, 0), -1);
}

TEST(String, CompareNoCase) {
  EXPECT_EQ(String("REMOVE").compareNoCase("remove"), 0);
  EXPECT_EQ(String().compareNoCase(""), 0);
  EXPECT_LT(String("a").compareNoCase("B"), 0);
  EXPECT_GT(String("b").compareNoCase("A"), 0);
  EXPECT_LT(String("with").compareNoCase("within"), 0);
  EXPECT_GT(String("within").compareNoCase("WITH"), 0);
  EXPECT_NE(String("@").compareNoCase("`"), 0);  // they differ in one bit like 'A' and 'a'
  EXPECT_NE(String("\xc3\x84").compareNoCase("\xc3\xa4"), 0);
  EXPECT_GT(String("\xc3").compareNoCase("z"), 0);
}

TEST(String, FromFirst) {
  EXPECT_EQ(text(String("# version: 3").fromFirst(':', false)), " 3");
  EXPECT_EQ(text(String("a:b:c").fromFirst(':', false)), "b:c");
  EXPECT_EQ(text(String("a").fromFirst(':', false)), "");
  EXPECT_EQ(text(String("a:").fromFirst(':', false)), "");
  EXPECT_EQ(text(String("aXb").fromFirst('x', true)), "b");
  EXPECT_EQ(text(String("aXb").fromFirst('x', false)), "");
}

TEST(String, Substring) {
  const String s("\"ab\"");
  EXPECT_EQ(text(s.substring(1, s.len() - 2)), "ab");
  EXPECT_EQ(text(String("\"\"").substring(1, 0)), "");
  EXPECT_EQ(text(s.substring(0, 4)), "\"ab\"");
  EXPECT_EQ(text(s.substring(0, 20)), "\"ab\"");
  EXPECT_EQ(text(s.substring(3, 20)), "\"");
  EXPECT_EQ(text(s.substring(4, 1)), "");
  EXPECT_EQ(text(s.substring(MAX_SIZE, 1)), "");
  // The count has wrapped around, as when two quotes are removed from a text of one character.
  EXPECT_EQ(text(String("\"").substring(1, std::size_t{1} - 2)), "");
  EXPECT_EQ(text(String("abc").substring(1, MAX_SIZE)), "bc");
}

TEST(String, Trim) {
  const String s(" \t\n\v\f\rab c \r\f\v\n\t ");
  EXPECT_EQ(text(s.trim(true, true)), "ab c");
  EXPECT_EQ(text(s.trim(true, false)), "ab c \r\f\v\n\t ");
  EXPECT_EQ(text(s.trim(false, true)), " \t\n\v\f\rab c");
  EXPECT_EQ(text(s.trim(false, false)), text(s));
  EXPECT_EQ(text(String("  ").trim(true, true)), "");
  EXPECT_EQ(text(String().trim(true, true)), "");
  EXPECT_EQ(text(string(" \0 "s).trim(true, true)), "\0"s);
}

TEST(String, TrimChars) {
  EXPECT_EQ(text(String("(1 2 3)").trimChars("()", "")), "1 2 3");
  EXPECT_EQ(text(String("((1))").trimChars("()", "")), "1");
  EXPECT_EQ(text(String("()").trimChars("()", "")), "");
  EXPECT_EQ(text(String("[2]").trimChars("[]", "")), "2");
  EXPECT_EQ(text(String("[ * ]").trimChars("[]", "")), " * ");
  EXPECT_EQ(text(String("a(b)c").trimChars("()", "")), "a(b)c");
  EXPECT_EQ(text(String("(1)").trimChars("", "")), "(1)");
  EXPECT_EQ(text(String().trimChars("()", "")), "");
}

TEST(String, ToLower) {
  EXPECT_EQ(text(String("Vec3F_9").toLower(true)), "vec3f_9");
  EXPECT_EQ(text(String("Vec3F").toLower(false)), "Vec3F");
  EXPECT_EQ(text(String("@[`{\xc3\x84").toLower(true)), "@[`{\xc3\x84");
  EXPECT_EQ(text(String().toLower(true)), "");
}

TEST(String, Split) {
  using Pieces = std::vector<std::string>;
  EXPECT_EQ(pieces(String("  1   2 ").split(' ', true, false)), (Pieces{"1", "2"}));
  EXPECT_EQ(pieces(String().split(' ', true, false)), Pieces{});
  EXPECT_EQ(pieces(String("   ").split(' ', true, false)), Pieces{});
  EXPECT_EQ(pieces(String("node.output").split('.', true, false)), (Pieces{"node", "output"}));
  EXPECT_EQ(pieces(String(".output").split('.', true, false)), (Pieces{"output"}));
  EXPECT_EQ(pieces(String("a.b.c").split('.', true, false)), (Pieces{"a", "b", "c"}));
  EXPECT_EQ(pieces(String("a..b.").split('.', false, false)), (Pieces{"a", "", "b", ""}));
  EXPECT_EQ(pieces(String("\ta b").split(' ', true, false)), (Pieces{"\ta", "b"}));
}

TEST(StringVector, PastTheEndIsEmpty) {
  const StringVector split = String("a").split(' ', true, false);
  EXPECT_EQ(split.size(), 1U);
  EXPECT_EQ(text(split[1]), "");
}

}  // namespace
}  // namespace zn
