// Stress texts of inputs and links: paths, indices, members, arrays and pending links.
#include <algorithm>

#include "tests/stress/texts/stress_texts.h"

namespace vsa_tests {

namespace {

// Returns "n" and then `levels` times `step`, such as ".a".
std::string deepPath(const char* step, int levels) {
  std::string path = "n";
  for (int i = 0; i < levels; ++i) path += step;
  return path;
}

// Returns statements whose indices descend from 200000 to 0 and then begin again with 200000, until
// the text has at least `bytes` bytes.
GeneratedText descendingIndices(std::size_t bytes, std::string_view head, const char* before,
                                const char* after) {
  GeneratedText made{std::string(head)};
  std::uint64_t index = 200000;
  while (made.text.size() < bytes) {
    made.text += before + std::to_string(index) + after;
    index = index == 0 ? 200000 : index - 1;
  }
  return made;
}

// Returns a statement with one large index, and `bytes` blanks. The index is an eighth of that
// number, but small enough for the limit of empty elements.
GeneratedText oneLargeIndex(std::size_t bytes, const char* value) {
  const std::size_t index = std::min<std::size_t>(bytes / 8, 524287);
  return repeatCharacter(bytes, "t n;n.a[" + std::to_string(index) + "]=" + value + ";", ' ', "");
}

}  // namespace

std::vector<StressText> inputTexts() {
  return {
      {"one input repeatedly", repeatUnit, "t n;", "n.a=1;", ""},
      {"inputs of one node", repeatUnit, "t n;", "n.a@=1;", ""},
      {"inputs of the with node", repeatUnit, "t n:", ".a@=1;", ""},
      {"members of one object", repeatUnit, "t n:", ".o.m@=1;", ""},
      {"objects of one member", repeatUnit, "t n:", ".o@.m=1;", ""},
      {"members at the maximum depth", repeatUnit, "t n;", deepPath(".a", 255) + ".m@=1;", ""},
      {"paths of the maximum depth", repeatUnit, "t n;",
       "n.b@" + deepPath(".a", 255).substr(1) + "=1;", ""},
      {"one path of members", repeatUnit, "t n;n", ".a", "=1;"},
      {"one path of indices", repeatUnit, "t n;n.a", "[0]", "=1;"},
      {"one path of a missing node", repeatUnit, "n", ".a[*]", "=1;"},
      {"the maximum index", repeatCharacter, "t n;n.a[524287]=1;", ' ', ""},
      {"the maximum index, buffer", repeatCharacter, "t n;n.a[524287]=byte[1]{1};", ' ', ""},
      {"the maximum index, array", repeatCharacter, "t n;n.a[524287][0]=1;", ' ', ""},
      {"the maximum index, object", repeatCharacter, "t n;n.a[524287].o=1;", ' ', ""},
      {"the maximum index at the maximum depth", repeatCharacter,
       "t n;" + deepPath(".a", 254) + "[524287]=1;", ' ', ""},
      {"the maximum 64-bit index", repeatCharacter, "t n;n.a[18446744073709551615]=1;", ' ', ""},
      {"holes in proportion to the text", oneLargeIndex, "1"},
      {"holes in proportion to the text, buffer", oneLargeIndex, "byte[1]{1}"},
      {"indices with gaps", repeatUnit, "t n;n.a[500000]=1;", "n.a@[1]=1;", ""},
      {"an array filled by index", repeatUnit, "t n;", "n.a[@]=1;", ""},
      {"an array filled by appending", repeatUnit, "t n:", ".a[*]=1;", ""},
      {"an array filled in descending order", descendingIndices, "t n:", ".a[", "]=1;"},
      {"arrays of one element", repeatUnit, "t n:", ".a@[0]=1;", ""},
      {"an array of arrays", repeatUnit, "t n:", ".a[@][0]=1;", ""},
      {"arrays in arrays in arrays", repeatUnit, "t n:", ".a[*][3][3][3]=1;", ""},
      {"an array of objects", repeatUnit, "t n:", ".a[*].m=1;", ""},
      {"an array of buffers", repeatUnit, "t n:", ".a[@]=byte[1]{1};", ""},
      {"an array of empty buffers", repeatUnit, "t n:", ".a[*]=byte[0]{};", ""},
      {"an array of buffers in descending order", descendingIndices, "t n:", ".a[",
       "]=byte[1]{1};"},
      {"two arrays of buffers, alternating", repeatUnit,
       "t n:", ".a[*]=byte[1]{1};.b[*]=int32[1]{1};", ""},
      {"many arrays of buffers, alternating",
       [](std::size_t n) {
         std::string statements;
         for (int i = 0; i < 500; ++i) statements += ".a" + std::to_string(i) + "[*]=byte[1]{1};";
         return repeatUnit(n, "t n:", statements);
       }},
      {"an array of buffers of two types", repeatUnit,
       "t n:", ".a[*]=byte[1]{1};.a[*]=int32[1]{1};", ""},
      {"an array of buffers, the last one repeatedly", repeatUnit, "t n:.a[300000]=byte[1]{1};",
       ".a[300000]=byte[1]{1};", ""},
      {"an array of buffers, removed repeatedly", repeatUnit, "", "t n:.a[9]=byte[1]{1};remove n;",
       ""},
      {"an array of strings", repeatUnit, "t n:", ".a[*]=\"\";", ""},
      {"an array of tuples", repeatUnit, "t n:", ".a[*]=vec2(1 2);", ""},
      {"an array of matrices", repeatUnit, "t n:", ".a[*]=mat4(1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1);",
       ""},
      {"null in new inputs", repeatUnit, "t n:", ".a@=null;", ""},
  };
}

std::vector<StressText> linkTexts() {
  return {
      {"references", repeatUnit, "t n:", ".a@=n;", ""},
      {"references of one input", repeatUnit, "t n:", ".a=n;", ""},
      {"references in an array", repeatUnit, "t n:", ".a[*]=b;", ""},
      {"forward references", repeatUnit, "t n:", ".a=m@;t m@:", ""},
      {"references to missing nodes", repeatUnit, "t n:", ".a@=b;", ""},
      {"connections", repeatUnit, "t n:t b;t n:", ".a@|=b.c;", ""},
      {"connections of one input", repeatUnit, "t n:", ".a|=b.c;", ""},
      {"connections in an array", repeatUnit, "t n:", ".a[*]|=n.c;", ""},
      {"connections to new outputs", repeatUnit, "t n:", ".a@|=n.c@;", ""},
      {"connections to missing nodes", repeatUnit, "t n:", ".a@|=b.c;", ""},
      {"connections to null", repeatUnit, "t n:", ".a[*]|=null;", ""},
      {"connections without a node", repeatUnit, "t n:", ".a[*]|=.c;", ""},
      {"references of deep inputs", repeatUnit, "t n;", deepPath(".a", 255) + ".m@=b;", ""},
      {"one long connection source", repeatUnit, "t n;n.a|=b", ".c", ";"},
      {"one long connection source of indices", repeatUnit, "t n;n.a|=b.c", "[0]", ";"},
      {"links and values, alternating", repeatUnit, "t n:", ".a@=n;.a@=1;.a@|=n.o;", ""},
  };
}

}  // namespace vsa_tests
