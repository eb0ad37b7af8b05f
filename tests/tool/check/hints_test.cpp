// Tests of the hints of vsa check: their texts, and the text of the file after their edits.
#include "tools/vsa/check/hints/hints.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include <vsa/read.h>
#include <vsa/scene/node_type.h>
#include "tests/tool/check/rows/row_texts.h"
#include "tools/vsa/check/hints/similar_names.h"

namespace vsa_tests {

namespace {

using vsa_tools::Finding;

/// A text with a mistake, a part of its hint, and the text after the edits. `fixed` is empty if
/// there are no edits.
struct HintRow {
  std::string_view text;
  std::string_view hint;
  std::string_view fixed = "";
};

constexpr HintRow ROWS[] = {
    // Wrong statements.
    {"lamp sun:\npower = 2.5;", "write `.power`", "lamp sun:\n.power = 2.5;"},
    {"foo;", "a declaration has a type and a name"},
    {"lamp sun\nlamp moon;", "end the statement with `;`", "lamp sun;\nlamp moon;"},
    {"lamp sun", "may have been cut off"},
    {"lamp sun;\n// noon\n", "a comment begins with `#`", "lamp sun;\n# noon\n"},
    {"mesh my-mesh;", "letters, digits and `_` only"},
    {"mesh arm.L;", "letters, digits and `_` only"},
    {"mesh 3d;", "does not begin with a digit"},
    {"mesh True;", "are no names"},
    {"mesh \"arm\";", "write `arm`", "mesh arm;"},
    {"mesh \"azAZ_09\";", "write `azAZ_09`", "mesh azAZ_09;"},
    {"lamp a, b;", "one node in each statement"},
    {"lamp a:\n.x : 1;", "write `=`", "lamp a:\n.x = 1;"},
    {"lamp a:\n.x := 1;", "write `=`", "lamp a:\n.x = 1;"},
    {"slkdf\nlamp sun:\n.x = 1;", "such as `lamp slkdf;`"},
    {"lamp my sun;", "write `my_sun`"},
    {"lamp sun;\nsun/x = 1;", "a path has periods"},
    {"<<<<<<< HEAD\nlamp sun;\n", "a merge left both versions"},
    {"lamp a;\n=======\nlamp b;\n", "a merge left both versions"},
    {"lamp sun:\n\u00A0.x = 1;", "no-break space", "lamp sun:\n .x = 1;"},
    {"lamp sun\n.x = 1;", "end the statement with `:`", "lamp sun:\n.x = 1;"},
    {"lamp sun; remove sun\nlamp moon;", "end the statement with `;`",
     "lamp sun; remove sun;\nlamp moon;"},
    {"-- noon\nlamp sun;", "a comment begins with `#`", "# noon\nlamp sun;"},
    {"42;", "not with a value"},
    {"lamp sun;\n{1 2};", "not with a value"},
    {"lamp sun;\nset sun.x = 1;", "remove `set`", "lamp sun;\nsun.x = 1;"},
    {"include \"a.vsa\";", "does not include"},
    {"lamp: sun;", "without a colon", "lamp sun;"},
    {"lamp sun: .x: sun;", "write `=`", "lamp sun: .x= sun;"},
    {"lamp sun;\nsun x = 1;", "a path has periods", "lamp sun;\nsun.x = 1;"},
    {"lamp sun = {\n.x = 1;\n};", "there are no blocks"},
    {"= 1;", "an input path stands before `=`, such as `node.input`"},
    {"*sun.x = 1;", "begins with a type or an input path"},
    {"lamp sun;\nsun::x = 1;", "a path has periods", "lamp sun;\nsun.x = 1;"},
    {"lamp sun;\nsun->x = 1;", "a path has periods", "lamp sun;\nsun.x = 1;"},
    {"lamp a;;", "remove the semicolon", "lamp a;"},
    {"lamp sun;\n.power = 2.5;", "end the declaration of sun with a colon",
     "lamp sun:\n.power = 2.5;"},
    {"power = 2.5;", "write the node's name and a period"},
    {"lamp sun;\npower = 2.5;", "write the node's name and a period"},
    {".power = 2.5;", "write the node's name before the period"},
    {"lamp sun;\nremove sun;\n.power = 2.5;", "write the node's name before the period"},
    {"define sun;\n.power = 2.5;", "write the node's name before the period"},
    {"# version: 2.1\n", "write `# version: 2`"},
    {"# colour conversion: srgb\n", "put a blank before the colon", "# colour conversion : srgb\n"},
    // Wrong characters and lists.
    {"lamp sun: .p = 50%;", "a number has no unit"},
    {"<?xml?>", "another format"},
    {"lamp sun { power = 1.0; }", "there are no blocks"},
    {"lamp sun: .c = rgba(1 1 1;\n.p = 2;", "close the list with `)`"},
    {"lamp sun: .c = vec3(1 1", "close the list with `)`"},
    {"lamp sun: .i[0 = 1;", "close the brackets with `]`"},
    {"lamp sun;\n%noon;", "letters, digits and `_` only"},
    {"m m: .b = TRU;", "did you mean `true`?"},
    {"m m: .i = [0 1 2];", "write `int32[3] {0 1 2}`", "m m: .i = int32[3] {0 1 2};"},
    {"m m: .i = [0, 1.5];", "write `float[2] {0, 1.5}`", "m m: .i = float[2] {0, 1.5};"},
    {"m m: .i = [3000000000 1];", "write `int64[2] {3000000000 1}`",
     "m m: .i = int64[2] {3000000000 1};"},
    {"m m: .i = [99999999999999999999];", ""},
    {"m m: .i = [1.2.3];", ""},
    {"m m: .i = int32[2] {true 0};", "write `1`", "m m: .i = int32[2] {1 0};"},
    {"m m: .i = float[2] {-infinity 0};", "write `-inf`", "m m: .i = float[2] {-inf 0};"},
    {"m m: .i = int32[2] {0x1F 0};", "write `31`", "m m: .i = int32[2] {31 0};"},
    {"m m: .i = float[2] {1 # one\n 2};", "a list has no comments"},
    {"m m: .b = float[-1] {1};", "a count is a whole number"},
    {"m m: .b = byte[3] {.YWJj};", "in hexadecimal"},
    {"m m: .s = [\"a\" \"b\"];", "assign strings one by one"},
    {"m m: .v = vec3(\"1\" 2 3);", "a list has numbers only"},
    {"lamp s: .c <- d.out;\nsky d;", "written with `|=`"},
    {"lamp s: .c -> d.out;\nsky d;", "written with `|=`"},
    {"lamp s: .c => d.out;\nsky d;", "written with `|=`"},
    {"lamp s: .c <= d.out;\nsky d;", "written with `|=`"},
    {"=> a.out;", "written with `|=`"},
    {"lamp s: .c =| d.out;\nsky d;", "written with `|=`", "lamp s: .c |= d.out;\nsky d;"},
    {"m m: .v = mat3(1 0 0; 0 1 0; 0 0 1);", "`;` ends the statement",
     "m m: .v = mat3(1 0 0, 0 1 0, 0 0 1);"},
    {"m m: .v = float[2] {1.#INF 0};", "write `inf`", "m m: .v = float[2] {inf 0};"},
    {"m m: .v = float[2] {0 -1.#IND00};", "write `nan`", "m m: .v = float[2] {0 nan};"},
    {"m m: .v = float[2] {-1.#INF 0};", "write `-inf`", "m m: .v = float[2] {-inf 0};"},
    {"m m: .k[-1] = 1;", "indices count from 0"},
    {"m m: .k[i] = 1;", "an index is a number"},
    {"m m: .k[ * ] = 1;", "write `[*]`", "m m: .k[*] = 1;"},
    {"m m: .k[] = 1;", "`[*]` to append"},
    {"lamp sun: .l = \"noon;\nlamp moon;\n", "close the string"},
    {"t a: .s = \"noon;\nt b: .s = \"50\\%\";\n", "close the string"},
    {"lamp a: remove a; k = 1;", "write the node's name and a period"},
    {"lamp a: remove b ; k = 1;", "write the node's name and a period"},
    {"lamp a: .j = 1; k = 1;", "begins with a period", "lamp a: .j = 1; .k = 1;"},
    // More text after a value.
    {"lamp sun: .p = 2.5\n.q = 1;", "end the statement with `;`", "lamp sun: .p = 2.5;\n.q = 1;"},
    {"lamp sun: .p = 1,5;", "not a decimal point", "lamp sun: .p = 1.5;"},
    {"lamp sun: .p = 1.5,2;", "a value is a single number"},
    {"lamp sun: .p = 1,000,000;", "a value is a single number"},
    {"lamp sun: .p = 1,5.2;", "a value is a single number"},
    {"lamp sun: .p = 1_000;", "no separators", "lamp sun: .p = 1000;"},
    {"lamp sun: .p = 0x1F;", "write `31`", "lamp sun: .p = 31;"},
    {"lamp sun: .p = -0x1F;", "write `31`", "lamp sun: .p = -31;"},
    {"lamp sun: .p = 10x20;", "a number has no unit"},
    {"lamp sun: .p = 1.0x20;", "a number has no unit"},
    {"lamp sun: .p = 00x10;", "a number has no unit"},
    {"lamp sun: .c |= dusk.out\n.p = 1;\nsky dusk;", "end the statement with `;`",
     "lamp sun: .c |= dusk.out;\n.p = 1;\nsky dusk;"},
    {"lamp sun: .p = 1,\n.q = 2;", "write `;`", "lamp sun: .p = 1;\n.q = 2;"},
    {"lamp sun: .p = 1:", "end the statement with `;`", "lamp sun: .p = 1;"},
    {"lamp sun: .p = 1.#INF;", "written `-inf` or `-nan`"},
    {"lamp sun: .p = 1 2 3;", "several are a list"},
    {"lamp sun: .p = vec3 1 2 3;", "a tuple is `vec3(x y z)`"},
    {"lamp sun: .p = float[2];", "a buffer has a list"},
    {"lamp sun: .p = sun[0];", "the name of a node, without an index"},
    {"lamp sun: .l = \"a \"b\" c\";", "a quote inside a string"},
    {"lamp sun: .l = \"a \" b\";", "a quote inside a string"},
    {"lamp sun: .l = \"a\" b;", "a value ends here"},
    {"lamp sun: .p = red\";\n.q = \"b\";", "write `\"red\"`",
     "lamp sun: .p = \"red\";\n.q = \"b\";"},
    {"lamp sun: .p = red\";", "write `\"red\"`", "lamp sun: .p = \"red\";"},
    {"lamp sun: .p = 1'000;", "no separators"},
    {"lamp sun: .p = 1 + 2;", "nothing is computed"},
    {"lamp sun: .p = 2.5 W;", "a number has no unit"},
    {"lamp sun: .c = rgb(1 0 0);", "write `rgba`", "lamp sun: .c = rgba(1 0 0);"},
    {"m m: .i = uint8[2] {1 2};", "write `byte`", "m m: .i = byte[2] {1 2};"},
    {"m m: .i = vec3[1] {1 2 3};", "write `vec3f`", "m m: .i = vec3f[1] {1 2 3};"},
    {"m m: .i = vec3f(1 2 3);", "write `vec3`", "m m: .i = vec3(1 2 3);"},
    {"m m: .i = flaot[1] {1};", "did you mean `float`?", "m m: .i = float[1] {1};"},
    {"m m: .i = qaut(0 0 0 1);", "did you mean `quat`?", "m m: .i = quat(0 0 0 1);"},
    {"b b: .m = clay.out;\nc clay;", "written with `|=`", "b b: .m |= clay.out;\nc clay;"},
    {"b b: .m = \"k=v\".out;", "a value ends here"},
    {"lamp sun: .l = \"a\" \"b\";", "a value is one string"},
    {"\"key lamp\" sun;", "names and types have no quotes"},
    // Wrong values.
    {"lamp sun: .p = 1e-05;", "write `1.0e-05`", "lamp sun: .p = 1.0e-05;"},
    {"lamp sun: .p = 9e99999;", "this is not a number"},
    {"lamp sun: .p = 1e5e6;", "this is not a number"},
    {"lamp sun: .p = 1.5.5;", "this is not a number"},
    {"lamp sun: .p = .5.5;", "a number begins with a digit"},
    {"lamp sun: .p = .5m;", "a number begins with a digit"},
    {"lamp sun: .p = .5e-3;", "write `0.5e-3`", "lamp sun: .p = 0.5e-3;"},
    {"lamp sun: .p = 5U;", "write `5u`", "lamp sun: .p = 5u;"},
    {"lamp sun: .p = 99999999999999999999;", "an integer has 64 bits"},
    {"lamp sun: .p = 18446744073709551615u;", "does not fit 63 bits"},
    {"lamp sun: .p = .5;", "write `0.5`", "lamp sun: .p = 0.5;"},
    {"lamp sun: .p == 5;", "write one `=`", "lamp sun: .p = 5;"},
    {"lamp sun: .p = (0 1 2);", "such as `vec3(...)`"},
    {"lamp sun: .p = +5;", "no plus sign", "lamp sun: .p = 5;"},
    {"lamp sun: .l = 'noon';", "double quotes", "lamp sun: .l = \"noon\";"},
    {"lamp sun: .p = ;", "a value is missing"},
    {"lamp sun: .p = # watts\n2;", "behind the semicolon"},
    {"lamp sun: .v = vec3(1 2);", "for them write `vec2`"},
    {"lamp sun: .v[9999999] = 1;", "assign the elements in order, or use a buffer"},
    {"lamp sun: .v = mat4(1 0 0 0 1 0 0 0 1);", "for them write `mat3`"},
    {"lamp sun: .v = mat3((1 0 0)(0 1 0)(0 0 1));", "put blanks between them",
     "lamp sun: .v = mat3((1 0 0) (0 1 0) (0 0 1));"},
    {"lamp sun: .c = rgba(1 2);", "3 or 4 numbers"},
    // Wrong names.
    {"lamp pendant;\npendnat.p = 1;", "did you mean `pendant`?", "lamp pendant;\npendant.p = 1;"},
    {"moon.p = 1;\nlamp moon;", "declare the node before this line"},
    {"moon.p = 1;", "declare the node before this line, such as `lamp moon;`"},
    {"lamp s;\nremove s;\ns.p = 1;", "removed before this line"},
    {"ball b: .m = caly;\nc clay;", "did you mean `clay`?", "ball b: .m = clay;\nc clay;"},
    {"ball b: .m = Clay;\nc clay;", "did you mean `clay`?", "ball b: .m = clay;\nc clay;"},
    {"lamp s: .c |= dsuk.out;\nsky dusk;", "did you mean `dusk`?",
     "lamp s: .c |= dusk.out;\nsky dusk;"},
    {"ball b: .m = plastic;", "quote it"},
    {"ball b: .m = None;", "did you mean `null`?"},
    {"ball b: .m = yes;", "did you mean `true`?"},
    {"ball b: .m = \u201Cred\u201D;", "straight double quotes"},
    {"ball b: .m = inf;", "may be `-inf`"},
    {"ball b: .m = nan;", "may be `-inf` or `-nan`"},
    {"ball b: .m = -infinity;", "write `-inf`", "ball b: .m = -inf;"},
    {"lamp s: .c |= 3;", "a value is written with `=`"},
    {"lamp s: .c |= \"d.out\";\nsky d;", "write `d.out`", "lamp s: .c |= d.out;\nsky d;"},
    {"lamp s: .c |= d.out.r;\nsky d;", "an output has no members"},
    {"lamp s: .c |= .out;\n", "write the name of the node"},
    {"lamp s: .c | d.out;\nsky d;", "written with `|=`", "lamp s: .c |= d.out;\nsky d;"},
    {"lamp s: .c ||= d.out;\nsky d;", "written with `|=`", "lamp s: .c |= d.out;\nsky d;"},
    {"lamp s: .c || d.out;\nsky d;", "written with `|=`", "lamp s: .c |= d.out;\nsky d;"},
    {"lamp s: .c |= d;\nsky d;", "such as `d.out`"},
    {"ball b: .m = 1.0; .m = c;\nmat c;", "refers to a node if its first value does"},
    {"hintedLamp d: .shape = \"spot\";\n.shap = \"spot\";", "did you mean `shape`?",
     "hintedLamp d: .shape = \"spot\";\n.shape = \"spot\";"},
    // Wrong types.
    {"lamp s: .n = 1; .n = 2.7;", "write the first value as `1.0`", "lamp s: .n = 1.0; .n = 2.7;"},
    {"lamp s: .b = true; .b = 1;", "write `true` or `false`"},
    {"lamp s: .l = \"a\"; .l = 12;", "write `\"12\"`", "lamp s: .l = \"a\"; .l = \"12\";"},
    {"lamp s: .o = true; .o = 1.0;", "write `true`", "lamp s: .o = true; .o = true;"},
    {"lamp s: .v = vec3(1 2 3); .v = 1;", "write `1.0`", "lamp s: .v = vec3(1 2 3); .v = 1.0;"},
    {"lamp s: .o = true; .o = \"yes\";", "write `true`", "lamp s: .o = true; .o = true;"},
    {"lamp s: .n = 1; .n = \"two\";", "in the type of the input"},
    {"lamp s: .o.x = 1; .o = 2;", "in the type of the input"},
    {"lamp s: .n = float[1] {1}; .n = int32[1] {1};", "in the type of the input"},
    {"lamp s: .v = vec3(1 2 3); .v = 2u;", "an integer does not become a vector"},
    {"lamp s: .v = vec2(1 2); .v = 2u;", "an integer does not become a vector"},
    {"lamp s: .v = vec4(1 2 3 4); .v = 2u;", "an integer does not become a vector"},
    {"lamp s: .v = pos2(1 2); .v = 2u;", "an integer does not become a vector"},
    {"lamp s: .v = pos3(1 2 3); .v = 2u;", "an integer does not become a vector"},
    {"lamp s: .v = quat(1 0 0 0); .v = 2u;", "an integer does not become a vector"},
    {"lamp s: .v = rgba(1 2 3 1); .v = 2u;", "an integer does not become a vector"},
    {"lamp a; lamp b: .z |= a.o; .z[1] |= a.o;", "assign the first element before"},
    {"a n: .x = 5; remove n; a n: .x = true; .x = 2.5;", "in the type of the input"},
    {"a n: .x = 5; remove n; a n: .x = 3; .x = 2.5;", "write the first value as `3.0`",
     "a n: .x = 5; remove n; a n: .x = 3.0; .x = 2.5;"},
    {"m m: .i = byte[1] {1}; .i = [300];", ""},
    {"m m: .i = int32[1] {1}; .i = [0 1 2];", "write `int32[3] {0 1 2}`",
     "m m: .i = int32[1] {1}; .i = int32[3] {0 1 2};"},
    {"m m: .k[0] = 1; .k[1] = 2.5;", "the type of the first one"},
    {"m m: .k[0] = 1; .k = 5;", "element by element"},
    {"m m: .k = c; .k = \"c\";\nc c;", "write `c`", "m m: .k = c; .k = c;\nc c;"},
    {"m m: .k |= c.out; .k = 5;\nc c;", "before the input is connected"},
    // Wrong buffers.
    {"m m: .p = vec3f[6] {0 0 0, 1 0 0};", "write `[2]` for 6 numbers",
     "m m: .p = vec3f[2] {0 0 0, 1 0 0};"},
    {"m m: .p = vec3f[1] {0 0 0 1 2 3};", "write `[2]`", "m m: .p = vec3f[2] {0 0 0 1 2 3};"},
    {"m m: .p = vec3f[1] {0 0 0 1};", "an element has 3"},
    {"m m: .p = int32[] {0 1 2};", "write `[3]`", "m m: .p = int32[3] {0 1 2};"},
    {"m m: .p = int32[2] {0 1.5};", "integers only (index 1)"},
    {"m m: .p = byte[2] {0 256};", "the number at index 1 does not fit the type byte"},
    {"m m: .p = int32[3] {0 1 3e};",
     "not a number, or one that does not fit the type int32 (index 2)"},
    {"m m: .p = vec2f[2] {{1 2}{3 4}};", "put blanks between them",
     "m m: .p = vec2f[2] {{1 2} {3 4}};"},
    {"m m: .p = float[3] {1,5 2,5 3,5};", "not a decimal point",
     "m m: .p = float[3] {1.5 2.5 3.5};"},
    {"m m: .p = float[2] {-1,5e3 2,5};", "not a decimal point", "m m: .p = float[2] {-1.5e3 2.5};"},
    {"m m: .p = float[2] {1,5,2 3};", "write `[4]`", "m m: .p = float[4] {1,5,2 3};"},
    {"m m: .p = float[1] {1.5,2};", "write `[2]`", "m m: .p = float[2] {1.5,2};"},
    {"m m: .p = float[1] {1e5,2};", "write `[2]`", "m m: .p = float[2] {1e5,2};"},
    {"m m: .p = float[2] {1,5 .25,3};", "write `[4]`", "m m: .p = float[4] {1,5 .25,3};"},
    {"m m: .p = int32[2] {1,5 2,5};", "write `[4]`", "m m: .p = int32[4] {1,5 2,5};"},
    {"m m: .p = float[2] {1,5, 2,5};", "not a decimal point", "m m: .p = float[2] {1.5, 2.5};"},
    {"m m: .p = float[2] {1.5,2 3.5,4};", "write `[4]`", "m m: .p = float[4] {1.5,2 3.5,4};"},
    {"{\n  \"nodes\": []\n}", "another format"},
    {"m m: .p = float[2] {.78da4b4c4a0600};", "types of single bytes"},
    {"m m: .p = byte[2] {.1f8b08};", "zlib"},
};

// Registers a node type that no other test uses. A type is registered for the whole program, and
// the types in the other tests must be open.
void declareHintedLamp() {
  using zn::korvo_sdk::AttrType;
  zn::korvo_sdk::registerNodeType(
      {"hintedLamp", {{"shape", AttrType::String, {}, {}, {"point", "spot"}}}});
}

std::string edited(std::string_view text, std::vector<vsa_tools::TextEdit> edits) {
  std::string result(text);
  std::sort(edits.begin(), edits.end(),
            [](const auto& a, const auto& b) { return a.begin > b.begin; });
  for (const vsa_tools::TextEdit& edit : edits) {
    result.replace(edit.begin, edit.end - edit.begin, edit.text);
  }
  return result;
}

Finding hintFor(std::string_view text, const vsa::ReadResult& read) {
  vsa_tools::Hints hints(text);
  Finding finding;
  hints.addTo(read.diagnostics.front(), finding);
  return finding;
}

TEST(Hints, SayWhatToDo) {
  declareHintedLamp();
  for (const HintRow& row : ROWS) {
    const vsa::ReadResult read = vsa::readText(row.text);
    ASSERT_FALSE(read.diagnostics.empty()) << row.text;
    const Finding finding = hintFor(row.text, read);
    EXPECT_NE(finding.hint.find(row.hint), std::string::npos)
        << row.text << "\n"
        << read.diagnostics.front().logLine() << "\n"
        << finding.hint;
    const std::string fixed = finding.edits.empty() ? "" : edited(row.text, finding.edits);
    EXPECT_EQ(fixed, row.fixed) << row.text;
  }
}

// A node of a declared type has no other inputs, but any input may have new members.
TEST(Hints, ReplaceTheFirstWordOfAPath) {
  declareHintedLamp();
  const std::string_view text = "hintedLamp d: .shape = \"spot\";\nd.shap.k = 1;";
  const Finding finding = hintFor(text, vsa::readText(text));
  EXPECT_EQ(edited(text, finding.edits), "hintedLamp d: .shape = \"spot\";\nd.shape.k = 1;");
}

// A name is near if at most a third of the letters of the written name differ, and at most three.
TEST(Hints, NearNamesHaveFewOtherLetters) {
  const auto isNear = [](std::string_view written, std::string_view name) {
    vsa_tools::NearestName nearest(written);
    nearest.consider(name);
    return nearest.found().has_value();
  };
  EXPECT_TRUE(isNear("abc", "abX"));
  EXPECT_FALSE(isNear("abc", "aXX"));
  EXPECT_TRUE(isNear("abcdef", "abcdXX"));
  EXPECT_FALSE(isNear("abcdef", "abcXXX"));
  EXPECT_TRUE(isNear("abcdefghi", "abcdefXXX"));
  EXPECT_FALSE(isNear("abcdefghi", "abcdeXXXX"));
  EXPECT_TRUE(isNear("abcdefghijklmno", "abcdefghijklXXX"));
  EXPECT_FALSE(isNear("abcdefghijklmno", "abcdefghijkXXXX"));
}

// The names of types in other languages, and the keywords of this format.
TEST(Hints, KnowTheTypesOfOtherLanguages) {
  const std::pair<std::string, std::string> buffers[] = {
      {"uint8", "byte"},    {"uchar", "byte"},     {"int8", "char"},   {"short", "int16"},
      {"int", "int32"},     {"uint", "uint32"},    {"long", "int64"},  {"bool", "byte"},
      {"float32", "float"}, {"float64", "double"}, {"real", "double"}, {"vec2", "vec2f"},
      {"vec3", "vec3f"},    {"vec4", "vec4f"},     {"pos2", "pos2f"},  {"pos3", "pos3f"},
      {"quat", "quatf"},    {"mat3", "mat3f"},     {"mat4", "mat4f"},  {"rgba", "rgbaf"},
      {"rgb", "rgbf"},      {"point", "pos3f"},    {"normal", "vec3f"}};
  const std::pair<std::string, std::string> tuples[] = {
      {"rgb", "rgba"},   {"color", "rgba"},    {"colour", "rgba"},    {"vector", "vec3"},
      {"point", "pos3"}, {"position", "pos3"}, {"vec2f", "vec2"},     {"vec3f", "vec3"},
      {"vec4f", "vec4"}, {"vec2d", "vec2"},    {"vec3d", "vec3"},     {"vec4d", "vec4"},
      {"pos3f", "pos3"}, {"quatf", "quat"},    {"mat3f", "mat3"},     {"mat4f", "mat4"},
      {"rgbaf", "rgba"}, {"matrix", "mat4"},   {"quaternion", "quat"}};
  const auto expectEdit = [](const std::string& before, const std::string& after) {
    const Finding finding = hintFor(before, vsa::readText(before));
    EXPECT_EQ(edited(before, finding.edits), after) << before;
  };
  for (const auto& [word, keyword] : buffers) {
    expectEdit("m m: .v = " + word + "[1] {0};", "m m: .v = " + keyword + "[1] {0};");
  }
  for (const auto& [word, keyword] : tuples) {
    expectEdit("m m: .v = " + word + "(0);", "m m: .v = " + keyword + "(0);");
  }
}

TEST(Hints, HaveEditsThatRepairTheText) {
  declareHintedLamp();
  for (const HintRow& row : ROWS) {
    if (row.fixed.empty()) continue;
    const vsa::ReadResult read = vsa::readText(row.fixed);
    EXPECT_TRUE(read.diagnostics.empty()) << row.fixed << "\n"
                                          << read.diagnostics.front().logLine();
  }
}

TEST(Hints, NoteWhereTheReaderNoticesAnOpenString) {
  const std::string_view text = "m m: .s = \"open;\nm n: .s = \"red\";\n";
  const Finding finding = hintFor(text, vsa::readText(text));
  ASSERT_EQ(finding.notes.size(), 1U);
  EXPECT_EQ(finding.notes[0].text, "the reader notices it here");
  EXPECT_EQ(finding.notes[0].range.begin.offset, text.find("red"));
}

TEST(Hints, NoteWhereAnInputGotItsType) {
  const std::string_view text = "m m: .k[0] = 1;\n.k[1] = 2.5;";
  const Finding finding = hintFor(text, vsa::readText(text));
  ASSERT_EQ(finding.notes.size(), 1U);
  EXPECT_EQ(finding.notes[0].range.begin.offset, text.find("1;"));
  EXPECT_EQ(finding.notes[0].range.end.offset, text.find("1;") + 1);
}

// The statement about its first element gives an array its type. If later statements do not fit
// that type, the hints note where it came from.
TEST(Hints, NoteWhereAnArrayGotItsType) {
  const std::string_view text = "m m: .k[*] = 1;\n.k = 2;\n.k = 3;";
  const vsa::ReadResult read = vsa::readText(text);
  ASSERT_EQ(read.diagnostics.size(), 2U);
  vsa_tools::Hints hints(text);
  for (const vsa::Diagnostic& diagnostic : read.diagnostics) {
    Finding finding;
    hints.addTo(diagnostic, finding);
    ASSERT_EQ(finding.notes.size(), 1U);
    EXPECT_EQ(finding.notes[0].range.begin.offset, text.find(".k[*]"));
  }
}

// The reader reports some mistakes in a later line than the line with the mistake. The hint moves
// the finding to the mistake.
TEST(Hints, MoveTheFindingToTheMistake) {
  const std::string_view connection = "lamp sun: .c |= dusk.out\n.p = 1;\n";
  EXPECT_EQ(hintFor(connection, vsa::readText(connection)).range->begin,
            (vsa::TextPosition{24, 1, 25}));
  const std::string_view word = "lamp a;\nslkdf\nlamp sun:\n.x = 1;";
  const Finding finding = hintFor(word, vsa::readText(word));
  EXPECT_EQ(finding.range->begin, (vsa::TextPosition{8, 2, 1}));
  EXPECT_EQ(finding.range->end, (vsa::TextPosition{13, 2, 6}));
}

TEST(Hints, NoteWhereTheReaderNoticesWhatIsOpen) {
  const std::string_view list = "m m: .c = vec3(1 2\n  3;\n";
  const Finding finding = hintFor(list, vsa::readText(list));
  ASSERT_EQ(finding.notes.size(), 1U);
  EXPECT_EQ(finding.notes[0].text, "the reader notices it here");
  EXPECT_EQ(finding.notes[0].range.begin, (vsa::TextPosition{22, 2, 4}));
  EXPECT_EQ(finding.notes[0].range.end, (vsa::TextPosition{23, 2, 5}));
  const std::string_view string = "m m: .s = \"open;\n.t = 1;\n\n";
  const Finding atEnd = hintFor(string, vsa::readText(string));
  ASSERT_EQ(atEnd.notes.size(), 1U);
  EXPECT_EQ(atEnd.notes[0].text, "the text ends here, and nothing has closed it");
  EXPECT_EQ(atEnd.notes[0].range.begin, (vsa::TextPosition{24, 2, 8}));
}

// Hints inspect bytes around the source range. For truncated texts, they must not read past the
// end, and edits must be inside the text.
TEST(Hints, AreMadeForEveryPrefixOfATextWithMistakes) {
  declareHintedLamp();
  for (const HintRow& row : ROWS) {
    for (std::size_t size = 0; size <= row.text.size(); ++size) {
      const std::string text(row.text.substr(0, size));
      const vsa::ReadResult read = vsa::readText(text);
      vsa_tools::Hints hints(text);
      for (const vsa::Diagnostic& diagnostic : read.diagnostics) {
        Finding finding;
        hints.addTo(diagnostic, finding);
        for (const vsa_tools::TextEdit& edit : finding.edits) {
          EXPECT_LE(edit.begin, edit.end) << text;
          EXPECT_LE(edit.end, text.size()) << text;
        }
      }
    }
  }
}

// A point instead of the comma would give no number.
TEST(Hints, DoNotReplaceACommaNextToADecimalNumber) {
  for (const std::string value : {"1.5,2", "1,5.2", "1e5,5", "1,5,3", "-1.0e-5,5"}) {
    const std::string text = "lamp sun: .p = " + value + ';';
    const Finding finding = hintFor(text, vsa::readText(text));
    EXPECT_TRUE(finding.edits.empty()) << text;
  }
}

TEST(Hints, DoNotQuoteLongNamesInFull) {
  const std::string text = "lamp sun;\n" + std::string(100000, 'a') + ".p = 1;\n";
  const Finding finding = hintFor(text, vsa::readText(text));
  EXPECT_FALSE(finding.hint.empty());
  EXPECT_LT(finding.hint.size(), 400U);
}

TEST(Hints, AreNotMadeWithoutTheText) {
  Finding finding;
  vsa_tools::Hints("").addTo(vsa::readText("lamp sun;\nfoo;").diagnostics.front(), finding);
  EXPECT_EQ(finding.hint, "");
}

TEST(SimilarNames, AreFoundByEditDistance) {
  EXPECT_EQ(vsa_tools::editDistance("lamp", "lamp", 3), 0U);
  EXPECT_EQ(vsa_tools::editDistance("lamp", "LAMP", 3), 0U);
  EXPECT_EQ(vsa_tools::editDistance("lamp", "lmap", 3), 1U);
  EXPECT_EQ(vsa_tools::editDistance("lamp", "lam", 3), 1U);
  EXPECT_EQ(vsa_tools::editDistance("", "abc", 3), 3U);
  EXPECT_EQ(vsa_tools::editDistance("abcd", "wxyz", 2), 3U);
  vsa_tools::NearestName nearest("colour");
  nearest.consider("color");
  nearest.consider("colours");
  nearest.consider("colour");
  EXPECT_EQ(nearest.found()->name, "color");
  EXPECT_FALSE(nearest.found()->isSure);  // "colours" has the same distance
  EXPECT_FALSE(vsa_tools::NearestName("x").found().has_value());
}

TEST(SimilarNames, AreSureIfOneCharacterDiffersThatIsNoDigit) {
  const auto isSure = [](const char* written, const char* name) {
    vsa_tools::NearestName nearest(written);
    nearest.consider(name);
    return nearest.found().has_value() && nearest.found()->isSure;
  };
  EXPECT_TRUE(isSure("pendnat", "pendant"));
  EXPECT_TRUE(isSure("Clay", "clay"));
  EXPECT_TRUE(isSure("A", "a"));
  EXPECT_FALSE(isSure("box", "fox"));
  vsa_tools::NearestName letter("b");
  letter.consider("a");
  EXPECT_FALSE(letter.found().has_value());
  EXPECT_FALSE(isSure("Cube4", "Cube3"));
  EXPECT_FALSE(isSure("pednnat", "pendant"));
}

}  // namespace

std::vector<std::string_view> hintTexts() {
  declareHintedLamp();
  std::vector<std::string_view> texts;
  for (const HintRow& row : ROWS) texts.push_back(row.text);
  return texts;
}

}  // namespace vsa_tests
