// The rows of the tests of rules: for each rule except those about types, texts that have a finding
// of the rule and texts that have none.
#pragma once

#include <string>
#include <string_view>

namespace vsa_tests {

using namespace std::string_view_literals;

struct RuleRow {
  std::string id;
  std::string_view fires;     ///< A text with a finding, whose range is between « and ».
  std::string_view isSilent;  ///< A text without a finding, as similar to `fires` as possible.
};

const RuleRow RULE_ROWS[] = {
    {"empty-file", "«»", "# a comment\n"},
    {"empty-file", "«» \n\t\n", "lamp sun;"},
    {"utf-16", "«l\0»a\0m\0p\0 \0s\0u\0n\0;\0"sv, "lamp sun;"},
    {"nul-byte", "lamp sun; # a«\0»b\n"sv, "lamp sun; # ab\n"},
    {"lone-carriage-return", "lamp sun;«\r»lamp moon;\n", "lamp sun;\r\nlamp moon;\r\n"},
    {"lone-carriage-return", "# a comment«\r»lamp moon;\n", "# a comment\r\nlamp moon;\r\n"},
    {"object-for-list", "mesh m:\n.p = «{0 0 0, 1 0 0}»;\n", "mesh m:\n.p = {};\n"},
    {"dropped-components", "a b: .x = vec3(1 2 3 «4»);", "a b: .x = vec4(1 2 3 4);"},
    {"dropped-components", "a b: .x = VEC2((1 2), («3 4») );", "a b: .x = rgba(1 2 3);"},
    {"dropped-components", "a b: .x = rgba(1 2 3 4\n,«5»);", "a b: .x = rgba(1 2 3 4);"},
    {"dropped-components", "a b: .x = mat4(1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1 «2»);",
     "a b: .x = mat4(1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1);"},
    {"decimal-comma", "a b: .x = vec3«(1,5 2,5 3,5)»;", "a b: .x = vec3(1,5,2 );"},
    {"decimal-comma", "a b: .x = vec2«(1,5 ,2,5)»;", "a b: .x = vec2(1.5,2 3.5,4);"},
    {"glued-elements", "a b: .x = vec2((1 2)(«3» 4));", "a b: .x = vec4((1 2) (3 4));"},
    {"glued-elements", "a b: .x = float[3] {{1 2}{«3» 4}};", "a b: .x = float[4] {(1 2)(3 4)};"},
    {"empty-comma", "a b: .x = vec2(1,«,»2);", "a b: .x = vec2(1,2,);"},
    {"empty-comma", "a b: .x = vec2(«,» 1,2);", "a b: .x = vec2(1, 2);"},
    {"empty-comma", "a b: .x = float[2] {1 , \n «,»2,};", "a b: .x = float[2] {1 , 2,};"},
    {"lost-digits", "a b: .x = float[2] {0.5 «0.1234567891»};",
     "a b: .x = float[3] {0.5 0.100000001490116119384765625 0.123456789};"},
    {"lost-digits", "a b: .x = vec2f[1] {«16777217.25» 1};", "a b: .x = vec2d[1] {16777217.5 1};"},
    {"lost-digits", "a b: .x = 1.0; .x = «9007199254740993»;",
     "a b: .x = 9007199254740993; .y = 1.0; .y = 9007199254740992;"},
    {"lost-digits", "a b: .x = vec2(1 «-9007199254740993»);",
     "a b: .x = vec2(1 9007199254740994);"},
    {"lost-digits", "a b: .x = double[1] {«9223372036854775807»};",
     "a b: .x = double[1] {0.12345678901234567};"},
    {"not-finite", "a b: .x = «-inf»;", "a b: .x = -1.0;"},
    {"not-finite", "a b: .x = «vec2(1 nan)»;", "a b: .x = vec2(1 2);"},
    {"not-finite", "a b: .y = 2.0; .x[*] = «vec2f[1] {1 inf}»;", "a b: .x = float[2] {1 3e38};"},
    {"not-finite", "a b: .x = «vec2d[1] {1 -inf}»;", "a b: .x = vec2d[1] {1 1e308};"},
    {"short-compressed-data", "a b: .x = byte«[4]» {.78da4b4c4a0600024d0127};",
     "a b: .x = byte[3] {.78da4b4c4a0600024d0127};"},
    {"compressed-data-as-number", "a b: .x = float[1] «{.7871234567890123456789}»;",
     "a b: .x = float[1] {.78712345};"},
    {"large-declared-count", "a b: .x = float«[10000000]» {1 2 3};", "a b: .x = float[100] {1 2};"},
    {"index-beyond-points", "a b: .points = vec3f[2] {0 0 0 1 1 1}; .indices = «int32[3] {0 1 2}»;",
     "a b: .points = vec3f[2] {0 0 0 1 1 1}; .indices = int32[3] {0 1 1};"},
    {"index-beyond-points", "a b: .indices = «int16[3] {0 -1 1}»; .vertices = pos2d[2] {0 0 1 1};",
     "a b: .indices = int32[1] {7}; .vertices = uint32[2] {0 1};"},
    {"unknown-escape", "a b: .x = \"50«\\%» or \\more\";", "a b: .x = \"50\\n\\xff\\u00e9\\\\%\";"},
    {"unknown-escape", "a b: .x = \"\n«\\x»0g\";", "a b: .x = \"\n\\x0a\";"},
    {"unknown-escape", "a b: .x = \"«\\ud800»b\";", "a b: .x = \"\\ud83d\\ude00\";"},
    {"unknown-escape", "a b: .x = \"\\ud83d\\ude00«\\udc00»\";", "a b: .x = \"\\ud7ff\";"},
    {"removed-node", "a b: remove b; «.x» = 1; .y = 2;", "a b: remove b; a c: .x = 1; .y = 2;"},
    {"escape-in-path", "a b: .x = \"C:«\\n»ew\\tex.png\";", "a b: .x = \"C:\\\\new\\\\tex.png\";"},
    {"escape-in-path", "a b: .x = \"maps«\\b»rick.png\";", "a b: .x = \"two\\nlines.\";"},
    {"string-for-reference", "mat clay; a b: .m = clay; a c: .m = «\"clay\"»;",
     "mat clay; a b: .m = clay; a c: .label = \"clay\";"},
    {"near-version", "«# Version: 3»\n", "# version: 3\n# versions 3\n# version three\n"},
    {"near-version", "«#version 3»\r\n", "# a version 3\n"},
    {"near-version", "«# version 2 of the scene»\n", "# a version 3\n"},
    {"near-time", "«# Time 3 minutes to render»\n", "# time\n"},
    {"near-time", "«# Time = 2024-05-14»\n", "# time: 2024-05-14\n# timers 4\n"},
    {"accidental-time", "«# lifetime: 4 s»\n", "# time: 4\n# lifetime 4 s\n# lifetime:\n"},
    {"array-gap", "a b: .k«[1]» = 1;", "with b: .k[1] = 1;"},
    {"period-behind-semicolon", "lamp sun: .p = 1;\nlamp moon«;»\n.q = 2;\n",
     "lamp sun: .p = 1;\nlamp moon:\n.q = 2;\nlamp star;\n"},
    {"redeclared-type", "lamp sun;\n«camera» sun;\n",
     "lamp sun;\nlamp sun;\nremove sun;\ncamera sun;\nwith sun:\n"},
    {"removed-node", "lamp sun;\nlamp moon:\nremove moon;\n«.power» = 1;\n",
     "lamp sun;\nlamp moon:\nremove moon;\nwith sun: .power = 1;\n"},
    {"empty-last-block", "lamp sun;\n«mesh m:»\n# the end\n", "lamp sun;\nmesh m: .x = 1;\n"},
    {"empty-last-block", "«mesh m:»", "mesh m:\n.x = 1\n.y = 2;\n"},
    {"assigned-twice", "lamp sun: .x = 1;\n.y = 2;\n«sun.x» = 3;\n",
     "lamp sun: .x = 1;\nremove sun;\nlamp sun: .x = 1; .k[*] = 2; .k[*] = 2;\n"},
    {"assigned-twice", "lamp sun: .x |= a.b;\n«.x» |= a.c;\na a;\n",
     "lamp sun: .x = 1;\n.x |= a.c;\na a;\n"},
    {"set-and-connected", "lamp sun: .x = 1;\n«.x» |= a.c;\na a;\n",
     "lamp sun: .x = 1;\n.y |= a.c;\na a;\n"},
    {"half-named-element", "a b: .k[*].t = 0; .k«[*]».v = 1;",
     "a b: .k[*].t = 0; .k[0].v = 1; .k[*].t = 1; .l[*].t = 0; .k[*].t = 2;"},
    {"array-gap", "a b: .k[0] = 1; .k«[3]» = 2;",
     "a b: .k[2] = 1; .k[1] = 1; .k[0] = 1; .k[ 3 ] = 2;"},
    {"array-gap", "a b: .k[0] = 1; .k«[5]» = 2; .k[2] = 1; .k[1] = 1; .k[4] = 1;",
     "a b: .k[0] = 1; .k[5] = 2; .k[2] = 1; .k[1] = 1; .k[4] = 1; .k[3] = 1;"},
    {"array-gap", "a b: .k[*].m«[1]» = 1; .k[1].m[0] = 1;", "a b: .k[*] = 1; .k[1] = 1;"},
    {"self-connection", "a b: .x |= «b.out»;\na c;\n", "a b: .x |= c.out;\na c: .x |= b.out;\n"},
    {"connection-circle", "a b: .x |= c.out;\na c: .y |= «b.out»;\n",
     "a b: .x |= c.out;\na c: .y |= d.out;\na d: .y = b;\n"},
    {"reference-circle", "a b: .up = c;\na c: .up = d;\na d: .up = «b»;\n",
     "a b: .down = c;\na c: .up = b;\n"},
    {"reference-circle", "a b: .up = «b»;\n", "a b: .up = c;\na c: .up = null;\n"},
    {"names-differ-by-case", "lamp Sun;\nlamp «sun»;\n", "lamp sun;\nlamp son;\n"},
    {"similar-names", "lamp kitchen;\nlamp «kitcken»;\n", "lamp lamp1;\nlamp lamp2;\nlamp lam;\n"},
    {"unused-node", "lamp «sun»: .x = moon;\nlamp moon;\n", "lamp sun: .x = sun;\n"},
    {"not-utf-8", "lamp sun; # caf«\xE9»\n", "lamp sun; # caf\xC3\xA9\n"},
};

}  // namespace vsa_tests
