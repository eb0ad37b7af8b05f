// Stress texts of many short texts, one on each line. An editor that sends one statement at a time
// sends such texts.
#include <string>

#include "tests/stress/texts/stress_texts.h"

namespace vsa_tests {

std::vector<StressText> manyTexts() {
  const std::string filled = "t n: .a[200] = byte[1] {1}; .v[200] = 1; .r[200] = n;\n";
  std::vector<StressText> all = {
      {"many texts: declarations", repeatUnit, "", "a b@;\n", ""},
      {"many texts: one declaration", repeatUnit, "", "a b;\n", ""},
      {"many texts: inputs", repeatUnit, "t n;\n", "with n:.a@=1;\n", ""},
      {"many texts: one input", repeatUnit, "t n;\n", "with n:.a=1;\n", ""},
      {"many texts: strings", repeatUnit, "t n;\n", "with n:.a@=\"text\";\n", ""},
      {"many texts: an array of numbers", repeatUnit, "t n;\n", "with n:.a[*]=1;\n", ""},
      {"many texts: an array of buffers", repeatUnit, "t n;\n", "with n:.a[*]=byte[1]{1};\n", ""},
      {"many texts: an array of buffers with holes", repeatUnit, filled,
       "with n:.a[*]=byte[1]{1};.v[*]=2;\n", ""},
      {"many texts: the last buffer of an array", repeatUnit, filled,
       "with n:.a[200]=byte[1]{2};\n", ""},
      {"many texts: an array of arrays", repeatUnit, "t n;\n", "with n:.a[@][0]=1;\n", ""},
      {"many texts: references", repeatUnit, "t n;\n", "with n:.a@=n;\n", ""},
      {"many texts: references in an array", repeatUnit, "t n;\n", "with n:.a[*]=n;\n", ""},
      {"many texts: connections", repeatUnit, "t n;\n", "with n:.a@|=n.o@;\n", ""},
      {"many texts: connections to missing nodes", repeatUnit, "t n;\n", "with n:.a@|=m.o;\n", ""},
      {"many texts: comments", repeatUnit, "", "# version: @\n", ""},
      {"many texts: created and removed", repeatUnit, "", "a b;remove b;\n", ""},
      {"many texts: type warnings", repeatUnit, "t n: .a = 1;\n", "with n:.a=\"x\";\n", ""},
      {"many texts: errors", repeatUnit, "t n;\n", "with m:\n", ""},
  };
  for (StressText& text : all) text.isOneTextPerLine = true;
  return all;
}

}  // namespace vsa_tests
