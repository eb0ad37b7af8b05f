// Tests of String::unescape, with one row for each escape sequence.
#include <gtest/gtest.h>

#include <string>

#include <vsa/foundation/string.h>
#include "tests/support/text.h"

namespace zn {
namespace {

using vsa_tests::string;
using vsa_tests::text;
using vsa_tests::visible;
using namespace std::string_literals;

struct Row {
  std::string written;
  std::string meant;
};

TEST(StringUnescape, Rows) {
  const Row rows[] = {
      {"", ""},
      {"plain", "plain"},
      {R"(\\)", "\\"},
      {R"(\")", "\""},
      {R"(\')", "'"},
      {R"(\/)", "/"},
      {R"(\a\b\f\n\r\t\v)", "\a\b\f\n\r\t\v"},
      {R"(a\nb)", "a\nb"},
      {R"(\\n)", "\\n"},
      {R"(\\\n)", "\\\n"},
      // Escaped bytes.
      {R"(\x41\x7f\xfE\xFF)", "A\x7f\xfe\xff"},
      {R"(\x4)", R"(\x4)"},
      {R"(\x4g)", R"(\x4g)"},
      {R"(\xg4)", R"(\xg4)"},
      {R"(\x414)", "A4"},
      {R"(\X41)", R"(\X41)"},
      {R"(\x)", R"(\x)"},
      {R"(\x00)", R"(\x00)"},
      // Escaped UTF-16 code units.
      {R"(\u0041)", "A"},
      {R"(\u007f)", "\x7f"},
      {R"(\u0080)", "\xc2\x80"},
      {R"(\u00e9)", "\xc3\xa9"},
      {R"(\u07FF)", "\xdf\xbf"},
      {R"(\u0800)", "\xe0\xa0\x80"},
      {R"(\u20ac)", "\xe2\x82\xac"},
      {R"(\uD7FF)", "\xed\x9f\xbf"},
      {R"(\uE000)", "\xee\x80\x80"},
      {R"(\uFFFF)", "\xef\xbf\xbf"},
      {R"(\ud83d\ude00)", "\xf0\x9f\x98\x80"},
      {R"(\uD800\uDC00)", "\xf0\x90\x80\x80"},
      {R"(\uDBFF\uDFFF)", "\xf4\x8f\xbf\xbf"},
      {R"(\u0000)", R"(\u0000)"},
      {R"(\u004)", R"(\u004)"},
      {R"(\u004g)", R"(\u004g)"},
      {R"(\U0041)", R"(\U0041)"},
      {R"(\u00411)", "A1"},
      // A lone surrogate remains unchanged, and so do the characters after it.
      {R"(\ud83d)", R"(\ud83d)"},
      {R"(\ude00)", R"(\ude00)"},
      {R"(\ude00\ud83d)", R"(\ude00\ud83d)"},
      {R"(\ud83dx)", R"(\ud83dx)"},
      {R"(\ud83d\n)", "\\ud83d\n"},
      {R"(\ud83d\u0041)", "\\ud83dA"},
      {R"(\ud83d\ud83d\ude00)", "\\ud83d\xf0\x9f\x98\x80"},
      {R"(\ud83d\ude0)", R"(\ud83d\ude0)"},
      // All other escape sequences remain unchanged.
      {R"(\)", R"(\)"},
      {R"(a\)", R"(a\)"},
      {R"(\q)", R"(\q)"},
      {R"(\0)", R"(\0)"},
      {R"(\101)", R"(\101)"},
      {R"(\N)", R"(\N)"},
      {R"(\e)", R"(\e)"},
      {R"(\?)", R"(\?)"},
      {R"(C:\Users\new)", "C:\\Users\new"},
      {"\\\n", "\\\n"},
      {"\\\xc3\xa9", "\\\xc3\xa9"},
      {"\xc3\xa9", "\xc3\xa9"},
      {"a\0\\n"s, "a\0\n"s},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(visible(text(string(row.written).unescape())), visible(row.meant)) << row.written;
  }
}

}  // namespace
}  // namespace zn
