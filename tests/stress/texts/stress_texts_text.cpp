// Characters, comments and statements by the million.
#include <vsa/foundation/char_class.h>
#include "tests/stress/texts/stress_texts.h"

namespace vsa_tests {

// Turns every "0" byte of the unit's `mark` into NUL: literals end at one.
namespace {

NastyText withNuls(NastyText made, char mark) {
  for (char& c : made.text) {
    if (c == mark) c = '\0';
  }
  return made;
}

std::string longName(std::size_t length) {
  return std::string(length, 'q');
}

// Names in groups that differ in their last byte only: every byte that a name may end in.
NastyText everyLastByte(std::size_t bytes, const char* head, const char* before,
                        const char* after) {
  NastyText made{head};
  for (std::uint64_t turn = 0; made.text.size() < bytes; ++turn) {
    for (unsigned last = 0; last < 0x100; ++last) {
      const char c = static_cast<char>(last);
      if (!zn::char_class::is(c, zn::char_class::NAME)) continue;
      made.text += before + ('n' + std::to_string(turn)) + c + after;
    }
  }
  return made;
}

}  // namespace

std::vector<Family> lexicalFamilies() {
  return {
      {"blanks", [](std::size_t n) { return run(n, "t n;", ' ', "n.a = 1;"); }},
      {"line ends", [](std::size_t n) { return run(n, "t n;", '\n', "n.a = 1;"); }},
      {"carriage returns", [](std::size_t n) { return run(n, "t n;", '\r', "n.a = 1;"); }},
      {"NULs", [](std::size_t n) { return run(n, "t n;", '\0', "n.a = 1;"); }},
      {"control bytes", [](std::size_t n) { return flood(n, "t n;", "\x01\x1F \x7F\t\v\f"); }},
      {"statements full of NULs",
       [](std::size_t n) { return withNuls(flood(n, "t n;", "n!.!a!=!1!;"), '!'); }},
      {"comments of one byte", [](std::size_t n) { return flood(n, "", "#\n"); }},
      {"comments ended by CR", [](std::size_t n) { return flood(n, "", "#@\r"); }},
      {"one comment", [](std::size_t n) { return run(n, "#", 'x', "\nt n;"); }},
      {"comments, versions", [](std::size_t n) { return flood(n, "", "#version:@\n"); }},
      {"comments, bad versions", [](std::size_t n) { return flood(n, "", "#version:x\n"); }},
      {"comments, times", [](std::size_t n) { return flood(n, "", "#time:@\n"); }},
      {"one bad version", [](std::size_t n) { return run(n, "# version: ", 'x', "\n"); }},
      {"one version of blanks", [](std::size_t n) { return run(n, "# version: 3", ' ', "x\n"); }},
      {"one time", [](std::size_t n) { return run(n, "# time: ", 'x', "\n"); }},
      {"version without a colon",
       [](std::size_t n) { return flood(n, "#", "version version", ":\n"); }},
      {"one identifier", [](std::size_t n) { return run(n, "t ", 'n', ";"); }},
      {"one identifier of high bytes", [](std::size_t n) { return run(n, "t ", '\xFE', ";"); }},
      {"a missing node's long name", [](std::size_t n) { return run(n, "", 'n', ".a = 1;"); }},
      {"one unrecognised string", [](std::size_t n) { return run(n, "t n; \"", 's', "\" t n;"); }},
      {"one string", [](std::size_t n) { return run(n, "t n; n.a = \"", 's', "\";"); }},
      {"one string, cut off", [](std::size_t n) { return run(n, "t n; n.a = \"", 's', ""); }},
      {"one string of NULs", [](std::size_t n) { return run(n, "t n; n.a = \"", '\0', "\";"); }},
      {"one string of line ends",
       [](std::size_t n) { return run(n, "t n; n.a = \"", '\n', "\";"); }},
      {"one string of backslashes",
       [](std::size_t n) { return run(n / 2 * 2, "t n; n.a = \"", '\\', "\";"); }},
      {"one string of quotes",
       [](std::size_t n) { return flood(n, "t n; n.a = \"", "x\\\"", "\";"); }},
      {"one string of escapes",
       [](std::size_t n) { return flood(n, "t n; n.a = \"", "\\x41\\u00e9\\n", "\";"); }},
      {"one string of unknown escapes",
       [](std::size_t n) { return flood(n, "t n; n.a = \"", "\\q\\x0\\u12\\ud800", "\";"); }},
      {"one string of format directives",
       [](std::size_t n) { return flood(n, "t n; \"", "%n%s%99999999d", "\";"); }},
      {"brackets", [](std::size_t n) { return run(n, "t n; n.a = ", '[', ""); }},
      {"parentheses", [](std::size_t n) { return run(n, "t n; n.a = vec3", '(', ""); }},
      {"braces, closed",
       [](std::size_t n) {
         return NastyText{"t n; n.a = " + std::string(n / 2, '{') + std::string(n / 2, '}') + ";"};
       }},
      {"mixed brackets", [](std::size_t n) { return flood(n, "t n; n.a = {", "([]){}", "};"); }},
      {"one index of blanks", [](std::size_t n) { return run(n, "t n; n.a[", ' ', "0] = 1;"); }},
      {"one index of zeros", [](std::size_t n) { return run(n, "t n; n.a[", '0', "] = 1;"); }},
      {"one index of nines", [](std::size_t n) { return run(n, "t n; n.a[", '9', "] = 1;"); }},
  };
}

std::vector<Family> statementFamilies() {
  return {
      {"re-declarations", [](std::size_t n) { return flood(n, "", "a b;"); }},
      {"declarations", [](std::size_t n) { return flood(n, "", "a b@;"); }},
      {"declarations of types", [](std::size_t n) { return flood(n, "", "a@ b@;"); }},
      {"declarations, with", [](std::size_t n) { return flood(n, "", "a b@:.c=1;"); }},
      {"defines of one node", [](std::size_t n) { return flood(n, "", "define a;"); }},
      {"defines", [](std::size_t n) { return flood(n, "", "define a@;"); }},
      {"defines, then with",
       [](std::size_t n) {
         NastyText made = flood(n / 2, "", "define a@;");
         made.text += flood(n / 2, "", "with a@:.b=1;").text;
         return made;
       }},
      {"with of one node", [](std::size_t n) { return flood(n, "t a;", "with a:"); }},
      {"with and one value", [](std::size_t n) { return flood(n, "t a;", "with a:.b=1;"); }},
      {"removes of nothing", [](std::size_t n) { return flood(n, "", "remove a;"); }},
      {"made and removed", [](std::size_t n) { return flood(n, "", "a b;remove b;"); }},
      {"made, used and removed",
       [](std::size_t n) { return flood(n, "t n;", "a b;b.x=1;n.r=b;n.c|=b.o;remove b;"); }},
      {"made, then all removed",
       [](std::size_t n) {
         NastyText made = flood(n / 2, "", "a b@;");
         made.text += flood(n / 2, "", "remove b@;").text;
         return made;
       }},
      {"keywords in capitals", [](std::size_t n) { return flood(n, "", "DEFINE a@;ReMoVe a@;"); }},
      {"long names again and again",
       [](std::size_t n) {
         const std::string name = longName(1000);
         return flood(n, ("t " + name + ";").c_str(), (name + ".a=1;").c_str());
       }},
      {"names alike but for the middle",
       [](std::size_t n) { return flood(n, "", "a beginning@theverysameend;"); }},
      {"names alike but for the end of 100",
       [](std::size_t n) { return flood(n, "", ("a " + longName(100) + "@;").c_str()); }},
      {"nodes alike but for the last byte",
       [](std::size_t n) { return everyLastByte(n, "", "t ", ";"); }},
      {"inputs alike but for the last byte",
       [](std::size_t n) { return everyLastByte(n, "t n:", ".", "=1;"); }},
      {"warnings of types", [](std::size_t n) { return flood(n, "t n;n.a=1;", "n.a=\"x\";"); }},
      {"warnings of narrowing", [](std::size_t n) { return flood(n, "t n;n.a=1;", "n.a=2.5;"); }},
      {"warnings that quote long values",
       [](std::size_t n) {
         const std::string value = longName(5000);
         return flood(n, "t n;n.a[0]=1;", ("n.a=\"" + value + "\";").c_str());
       }},
  };
}

}  // namespace vsa_tests
