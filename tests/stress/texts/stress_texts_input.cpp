// Inputs and links: paths, indices, members, arrays of everything, pending links.
#include "tests/stress/texts/stress_texts.h"

namespace vsa_tests {

namespace {

// ".a" for as many levels as inputs may nest, then a value; new members on the last level.
std::string deepPath(const char* step, int levels) {
  std::string path = "n";
  for (int i = 0; i < levels; ++i) path += step;
  return path;
}

NastyText backwards(std::size_t bytes, const char* head, const char* before, const char* after) {
  NastyText made{head};
  std::uint64_t index = 200000;
  while (made.text.size() < bytes) {
    made.text += before + std::to_string(index) + after;
    index = index == 0 ? 200000 : index - 1;
  }
  return made;
}

}  // namespace

std::vector<Family> inputFamilies() {
  return {
      {"one input again and again", [](std::size_t n) { return flood(n, "t n;", "n.a=1;"); }},
      {"inputs of one node", [](std::size_t n) { return flood(n, "t n;", "n.a@=1;"); }},
      {"inputs of the with node", [](std::size_t n) { return flood(n, "t n:", ".a@=1;"); }},
      {"members of one object", [](std::size_t n) { return flood(n, "t n:", ".o.m@=1;"); }},
      {"objects of one member", [](std::size_t n) { return flood(n, "t n:", ".o@.m=1;"); }},
      {"members as deep as can be",
       [](std::size_t n) { return flood(n, "t n;", (deepPath(".a", 255) + ".m@=1;").c_str()); }},
      {"ways as deep as can be",
       [](std::size_t n) {
         return flood(n, "t n;", ("n.b@" + deepPath(".a", 255).substr(1) + "=1;").c_str());
       }},
      {"one path of members", [](std::size_t n) { return flood(n, "t n;n", ".a", "=1;"); }},
      {"one path of indices", [](std::size_t n) { return flood(n, "t n;n.a", "[0]", "=1;"); }},
      {"one path of a missing node", [](std::size_t n) { return flood(n, "n", ".a[*]", "=1;"); }},
      {"the last index allowed",
       [](std::size_t n) { return run(n, "t n;n.a[524287]=1;", ' ', ""); }},
      {"the last index allowed, of buffers",
       [](std::size_t n) { return run(n, "t n;n.a[524287]=byte[1]{1};", ' ', ""); }},
      {"the last index allowed, of arrays",
       [](std::size_t n) { return run(n, "t n;n.a[524287][0]=1;", ' ', ""); }},
      {"the last index allowed, of objects",
       [](std::size_t n) { return run(n, "t n;n.a[524287].o=1;", ' ', ""); }},
      {"the last index allowed, at the depth allowed",
       [](std::size_t n) {
         return run(n, ("t n;" + deepPath(".a", 254) + "[524287]=1;").c_str(), ' ', "");
       }},
      {"an index beyond every end",
       [](std::size_t n) { return run(n, "t n;n.a[18446744073709551615]=1;", ' ', ""); }},
      {"indices that leap",
       [](std::size_t n) { return flood(n, "t n;n.a[500000]=1;", "n.a@[1]=1;"); }},
      {"an array filled one by one", [](std::size_t n) { return flood(n, "t n;", "n.a[@]=1;"); }},
      {"an array filled at its end", [](std::size_t n) { return flood(n, "t n:", ".a[*]=1;"); }},
      {"an array filled backwards",
       [](std::size_t n) { return backwards(n, "t n:", ".a[", "]=1;"); }},
      {"arrays of one element", [](std::size_t n) { return flood(n, "t n:", ".a@[0]=1;"); }},
      {"an array of arrays", [](std::size_t n) { return flood(n, "t n:", ".a[@][0]=1;"); }},
      {"arrays in arrays in arrays",
       [](std::size_t n) { return flood(n, "t n:", ".a[*][3][3][3]=1;"); }},
      {"an array of objects", [](std::size_t n) { return flood(n, "t n:", ".a[*].m=1;"); }},
      {"an array of buffers", [](std::size_t n) { return flood(n, "t n:", ".a[@]=byte[1]{1};"); }},
      {"an array of empty buffers",
       [](std::size_t n) { return flood(n, "t n:", ".a[*]=byte[0]{};"); }},
      {"an array of buffers, backwards",
       [](std::size_t n) { return backwards(n, "t n:", ".a[", "]=byte[1]{1};"); }},
      {"two arrays of buffers in turn",
       [](std::size_t n) { return flood(n, "t n:", ".a[*]=byte[1]{1};.b[*]=int32[1]{1};"); }},
      {"many arrays of buffers in turn",
       [](std::size_t n) {
         std::string round;
         for (int i = 0; i < 500; ++i) round += ".a" + std::to_string(i) + "[*]=byte[1]{1};";
         return flood(n, "t n:", round.c_str());
       }},
      {"an array of buffers of two types",
       [](std::size_t n) { return flood(n, "t n:", ".a[*]=byte[1]{1};.a[*]=int32[1]{1};"); }},
      {"an array of buffers, the last one again",
       [](std::size_t n) {
         return flood(n, "t n:.a[300000]=byte[1]{1};", ".a[300000]=byte[1]{1};");
       }},
      {"an array of buffers, some removed",
       [](std::size_t n) { return flood(n, "", "t n:.a[9]=byte[1]{1};remove n;"); }},
      {"an array of strings", [](std::size_t n) { return flood(n, "t n:", ".a[*]=\"\";"); }},
      {"an array of tuples", [](std::size_t n) { return flood(n, "t n:", ".a[*]=vec2(1 2);"); }},
      {"an array of matrices",
       [](std::size_t n) {
         return flood(n, "t n:", ".a[*]=mat4(1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1);");
       }},
      {"nulls in new inputs", [](std::size_t n) { return flood(n, "t n:", ".a@=null;"); }},
  };
}

std::vector<Family> linkFamilies() {
  return {
      {"references", [](std::size_t n) { return flood(n, "t n:", ".a@=n;"); }},
      {"references of one input", [](std::size_t n) { return flood(n, "t n:", ".a=n;"); }},
      {"references in an array", [](std::size_t n) { return flood(n, "t n:", ".a[*]=b;"); }},
      {"references forwards", [](std::size_t n) { return flood(n, "t n:", ".a=m@;t m@:"); }},
      {"references to nothing", [](std::size_t n) { return flood(n, "t n:", ".a@=b;"); }},
      {"connections", [](std::size_t n) { return flood(n, "t n:t b;t n:", ".a@|=b.c;"); }},
      {"connections of one input", [](std::size_t n) { return flood(n, "t n:", ".a|=b.c;"); }},
      {"connections in an array", [](std::size_t n) { return flood(n, "t n:", ".a[*]|=n.c;"); }},
      {"connections to new outputs", [](std::size_t n) { return flood(n, "t n:", ".a@|=n.c@;"); }},
      {"connections to nothing", [](std::size_t n) { return flood(n, "t n:", ".a@|=b.c;"); }},
      {"connections to nulls", [](std::size_t n) { return flood(n, "t n:", ".a[*]|=null;"); }},
      {"connections to no output", [](std::size_t n) { return flood(n, "t n:", ".a[*]|=.c;"); }},
      {"connections and references of deep inputs",
       [](std::size_t n) { return flood(n, "t n;", (deepPath(".a", 255) + ".m@=b;").c_str()); }},
      {"one long source", [](std::size_t n) { return flood(n, "t n;n.a|=b", ".c", ";"); }},
      {"one long source of indices",
       [](std::size_t n) { return flood(n, "t n;n.a|=b.c", "[0]", ";"); }},
      {"a link and a value in turn",
       [](std::size_t n) { return flood(n, "t n:", ".a@=n;.a@=1;.a@|=n.o;"); }},
  };
}

}  // namespace vsa_tests
