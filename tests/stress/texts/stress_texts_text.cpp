// Stress texts of characters, comments and statements.
#include <vsa/foundation/char_class.h>
#include "tests/stress/texts/stress_texts.h"

namespace vsa_tests {

namespace {

// Replaces each `mark` by NUL. A unit cannot contain NUL, because it is a C string.
GeneratedText withNuls(GeneratedText made, char mark) {
  for (char& c : made.text) {
    if (c == mark) c = '\0';
  }
  return made;
}

std::string longName(std::size_t length) {
  return std::string(length, 'q');
}

// Returns statements with groups of names. The names of a group differ only in the last byte. A
// group has one name for each byte that a name can end with.
GeneratedText everyLastByte(std::size_t bytes, std::string_view head, const char* before,
                            const char* after) {
  GeneratedText made{std::string(head)};
  for (std::uint64_t group = 0; made.text.size() < bytes; ++group) {
    for (unsigned last = 0; last < 0x100; ++last) {
      const char c = static_cast<char>(last);
      if (!zn::char_class::is(c, zn::char_class::NAME)) continue;
      made.text += before + ('n' + std::to_string(group)) + c + after;
    }
  }
  return made;
}

}  // namespace

std::vector<StressText> lexicalTexts() {
  return {
      {"blanks", repeatCharacter, "t n;", ' ', "n.a = 1;"},
      {"line ends", repeatCharacter, "t n;", '\n', "n.a = 1;"},
      {"carriage returns", repeatCharacter, "t n;", '\r', "n.a = 1;"},
      {"NULs", repeatCharacter, "t n;", '\0', "n.a = 1;"},
      {"control bytes", repeatUnit, "t n;", "\x01\x1F \x7F\t\v\f", ""},
      {"statements full of NULs",
       [](std::size_t n) { return withNuls(repeatUnit(n, "t n;", "n!.!a!=!1!;"), '!'); }},
      {"comments of one byte", repeatUnit, "", "#\n", ""},
      {"comments ended by CR", repeatUnit, "", "#@\r", ""},
      {"one comment", repeatCharacter, "#", 'x', "\nt n;"},
      {"version comments", repeatUnit, "", "#version:@\n", ""},
      {"invalid version comments", repeatUnit, "", "#version:x\n", ""},
      {"time comments", repeatUnit, "", "#time:@\n", ""},
      {"one invalid version", repeatCharacter, "# version: ", 'x', "\n"},
      {"one version of blanks", repeatCharacter, "# version: 3", ' ', "x\n"},
      {"one time", repeatCharacter, "# time: ", 'x', "\n"},
      {"version without a colon", repeatUnit, "#", "version version", ":\n"},
      {"one identifier", repeatCharacter, "t ", 'n', ";"},
      {"one identifier of high bytes", repeatCharacter, "t ", '\xFE', ";"},
      {"a missing node's long name", repeatCharacter, "", 'n', ".a = 1;"},
      {"one unrecognised string", repeatCharacter, "t n; \"", 's', "\" t n;"},
      {"one string", repeatCharacter, "t n; n.a = \"", 's', "\";"},
      {"one unterminated string", repeatCharacter, "t n; n.a = \"", 's', ""},
      {"one string of NULs", repeatCharacter, "t n; n.a = \"", '\0', "\";"},
      {"one string of line ends", repeatCharacter, "t n; n.a = \"", '\n', "\";"},
      {"one string of backslashes", repeatUnit, "t n; n.a = \"", "\\\\", "\";"},
      {"one string of quotes", repeatUnit, "t n; n.a = \"", "x\\\"", "\";"},
      {"one string of escapes", repeatUnit, "t n; n.a = \"", "\\x41\\u00e9\\n", "\";"},
      {"one string of unknown escapes", repeatUnit, "t n; n.a = \"", "\\q\\x0\\u12\\ud800", "\";"},
      {"one string of format directives", repeatUnit, "t n; \"", "%n%s%99999999d", "\";"},
      {"brackets", repeatCharacter, "t n; n.a = ", '[', ""},
      {"parentheses", repeatCharacter, "t n; n.a = vec3", '(', ""},
      {"braces, closed",
       [](std::size_t n) {
         return GeneratedText{"t n; n.a = " + std::string(n / 2, '{') + std::string(n / 2, '}') +
                              ";"};
       }},
      {"mixed brackets", repeatUnit, "t n; n.a = {", "([]){}", "};"},
      {"one index of blanks", repeatCharacter, "t n; n.a[", ' ', "0] = 1;"},
      {"one index of zeros", repeatCharacter, "t n; n.a[", '0', "] = 1;"},
      {"one index of nines", repeatCharacter, "t n; n.a[", '9', "] = 1;"},
  };
}

std::vector<StressText> statementTexts() {
  return {
      {"re-declarations", repeatUnit, "", "a b;", ""},
      {"declarations", repeatUnit, "", "a b@;", ""},
      {"declarations of types", repeatUnit, "", "a@ b@;", ""},
      {"declarations, with", repeatUnit, "", "a b@:.c=1;", ""},
      {"defines of one node", repeatUnit, "", "define a;", ""},
      {"defines", repeatUnit, "", "define a@;", ""},
      {"defines, then with",
       [](std::size_t n) {
         GeneratedText made = repeatUnit(n / 2, "", "define a@;");
         made.text += repeatUnit(n / 2, "", "with a@:.b=1;").text;
         return made;
       }},
      {"with statements of one node", repeatUnit, "t a;", "with a:", ""},
      {"with and one value", repeatUnit, "t a;", "with a:.b=1;", ""},
      {"removes of missing nodes", repeatUnit, "", "remove a;", ""},
      {"created and removed", repeatUnit, "", "a b;remove b;", ""},
      {"created, used and removed", repeatUnit, "t n;", "a b;b.x=1;n.r=b;n.c|=b.o;remove b;", ""},
      {"all created, then all removed",
       [](std::size_t n) {
         GeneratedText made = repeatUnit(n / 2, "", "a b@;");
         made.text += repeatUnit(n / 2, "", "remove b@;").text;
         return made;
       }},
      {"keywords in capitals", repeatUnit, "", "DEFINE a@;ReMoVe a@;", ""},
      {"one long name repeatedly", repeatUnit, "t " + longName(1000) + ";",
       longName(1000) + ".a=1;", ""},
      {"names that differ in the middle", repeatUnit, "", "a beginning@theverysameend;", ""},
      {"names that differ after 100 characters", repeatUnit, "", "a " + longName(100) + "@;", ""},
      {"nodes that differ in the last byte", everyLastByte, "", "t ", ";"},
      {"inputs that differ in the last byte", everyLastByte, "t n:", ".", "=1;"},
      {"type warnings", repeatUnit, "t n;n.a=1;", "n.a=\"x\";", ""},
      {"narrowing warnings", repeatUnit, "t n;n.a=1;", "n.a=2.5;", ""},
      {"warnings that quote long values", repeatUnit, "t n;n.a[0]=1;",
       "n.a=\"" + longName(5000) + "\";", ""},
  };
}

}  // namespace vsa_tests
