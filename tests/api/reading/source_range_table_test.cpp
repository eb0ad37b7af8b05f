// Tests of the source ranges of mistakes that people make when they write texts. Each row is a
// small text with one mistake. The bytes that an editor should underline are between « and ».
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <ostream>
#include <string>
#include <string_view>

#include <vsa/read.h>
#include "tests/support/declared_lamp.h"

namespace vsa_tests {

namespace {

constexpr std::string_view ROWS[] = {
    // A statement begins with an unknown word or character.
    "lamp sun;\n«foo»;\nlamp moon;\n",
    "«sun»;\n",
    "lamp sun;\n«!»sun.power = 1.0;\n",
    "lamp sun;\n«/»/ the kitchen\nlamp moon;\n",
    "lamp sun;\n«/»* the kitchen */\nlamp moon;\n",
    "lamp sun;\n«;»\nlamp moon;\n",
    "lamp sun;\n«}»\nlamp moon;\n",
    "«<»?xml version=\"1.0\"?>\n",
    "mesh my«-»mesh;\n",
    "mesh arm«.»L;\n",
    "mesh «3d»;\n",
    "mesh «True»;\n",
    "mesh «\"arm\"»;\n",
    "lamp a«,» b;\n",
    "lamp sun:\n  «power» = 2.5;\n  .color = rgba(1 1 1);\n",
    "lamp sun:\n  «power» |= dusk.outColor;\n",
    "lamp sun:\n  .power «2.5»;\n",
    "lamp sun:\n  .power «:» 2.5;\n",
    "lamp sun:\n  .power «+»= 2.5;\n",
    // A semicolon is missing.
    "lamp sun«»\nlamp moon;\n",
    "lamp sun:\n  .power = 2.5«»\n  .color = rgba(1 1 1);\n",
    "lamp sun:\n  .label = \"noon\"«»\n  .power = 2.5;\n",
    "lamp sun:\n  .color = rgba(1 1 1)«»\n\n\nlamp moon;\n",
    "mesh m:\n  .ids = int32[2] {0 1}«»\n  .up = vec3(0 1 0);\n",
    "ball b:\n  .material = clay«»\nmaterial clay;\n",
    "ball b:\n  .material = clay«» .color = rgba(1 1 1);\n",
    "lamp sun:\n  .color |= dusk.outColor«»\nsky dusk;\n",
    "lamp sun;\nremove sun«»\nlamp moon;\n",
    "lamp sun:\n  .power = 2.5«» # watts\n  .color = rgba(1 1 1);\n",
    "lamp sun; sun.power = 2.5«» sun.color = rgba(1 1 1);\n",
    "lamp sun: .power = 2.5«» .color = rgba(1 1 1);\n",
    "lamp sun:\n  .power = 2.5«»",
    // A quote, bracket or brace is not closed.
    "lamp sun:\n  .label = «\"»noon;\n  .power = 2.5;\n",
    "lamp sun:\n  .label = «\"»noon;\n  .other = \"x\";\n",
    "lamp sun:\n  .file = «\"»C:\\scenes\\\";\n  .power = 2.5;\n",
    "lamp sun:\n  .color = rgba«(»1 1 1;\n  .power = 2.5;\n",
    "lamp sun:\n  .color = rgba«(»1 1 1\n  .power = 2.5;\n",
    "mesh m:\n  .ids = int32[3] «{»0 1 2;\nlamp sun;\n",
    "mesh m:\n  .ids = int32[3] «{»0 1 2\n",
    "mesh m:\n  .ids = int32«[»3 {0 1 2};\n",
    "mesh m:\n  .ids«[»0 = 5;\n",
    "lamp sun «{»\n  power = 2.5;\n}\n",
    "lamp sun «{» power = 2.5; }\n",
    // A number in a list is wrong.
    "lamp sun:\n  .color = rgba(1 «red» 0);\n",
    "lamp sun:\n  .color = rgba(1 «O.5» 0);\n",
    "lamp sun:\n  .color = rgba(1 «0.5.5» 0);\n",
    "mesh m:\n  .ids = int32[3] {0 «1.5» 2};\n",
    "mesh m:\n  .ids = byte[3] {0 «256» 2};\n",
    "mesh m:\n  .ids = uint32[3] {0 1 «-2»};\n",
    "mesh m:\n  .w = float[3] {0 1\n    «1.0.0»};\n",
    "mesh m:\n  .w = float[2] {«true» 0};\n",
    "mesh m:\n  .w = float[2] {1 «#» one\n 2};\n",
    "mesh m:\n  .w = float[2] «{»1 2\n# two\nlamp sun;\n",
    "mesh m:\n  .w = float[2] «{»1 2\r# two\nlamp sun;\n",
    "mesh m:\n  .w = float[2] {«0x10» 1};\n",
    "lamp sun:\n  .power = «1e-05»;\n",
    "lamp sun:\n  .power = «12abc»;\n",
    "lamp sun:\n  .n = «99999999999999999999»;\n",
    "lamp sun:\n  .n = «5U»;\n",
    "lamp sun:\n  .power = «.»5;\n",
    "lamp sun:\n  .power = «+»5;\n",
    "lamp sun:\n  .power = 1«,»5;\n",
    "lamp sun:\n  .power = 1«_000»;\n",
    "lamp sun:\n  .power = 50«%»;\n",
    "lamp sun:\n  .power = 0«x1F»;\n",
    "lamp sun:\n  .power = 2.5 «W»;\n",
    "lamp sun:\n  .power = «;»\n",
    // A buffer has too few or too many numbers.
    "mesh m:\n  .p = vec3f[4] «{0 0 0, 1 0 0}»;\n",
    "mesh m:\n  .ids = int32[3] «{0 1}»;\n",
    "mesh m:\n  .p = vec3f[1] {0 0 0, «1» 0 0};\n",
    "mesh m:\n  .ids = int32[2] {0 1 «2»};\n",
    "mesh m:\n  .ids = int32«[]» {0 1};\n",
    // The number of components, the keyword of the type or the bracket is wrong.
    "lamp sun:\n  .up = vec3«(0 1)»;\n",
    "lamp sun:\n  .up = mat3«((1 0 0)(0 1 0)(0 0 1))»;\n",
    "lamp sun:\n  .color = «rgb»(1 0 0);\n",
    "mesh m:\n  .ids = «uint8»[2] {1 2};\n",
    "mesh m:\n  .ids = «vec3»[1] {1 2 3};\n",
    "mesh m:\n  .up = «vec3f»(1 2 3);\n",
    "mesh m:\n  .up = vec3 «[1 2 3]»;\n",
    "mesh m:\n  .ids = int32[3] «[0 1 2]»;\n",
    "mesh m:\n  .ids = int32 «{0 1 2}»;\n",
    // A string is wrong.
    "lamp sun:\n  .label = «'»noon';\n",
    "lamp sun:\n  .label = \"a\" «\"b\"»;\n",
    "lamp sun:\n  .label = \"a\"«noon»\";\n",
    // A path is wrong.
    "lamp sun;\n«snu».power = 2.5;\n",
    "«.power» = 2.5;\n",
    "mesh m:\n  .keys«[]» = 5;\n",
    "mesh m:\n  .keys[«i»] = 5;\n",
    "mesh m:\n  .keys[«-»1] = 5;\n",
    "mesh m:\n  .keys«[ * ]» = 5;\n",
    "declaredLamp d:\n  .«powr» = 2.5;\n",
    // A value has a wrong type.
    "lamp sun:\n  .power = 2.5;\n  .power = «\"bright\"»;\n",
    "lamp sun:\n  .bulbs = 1;\n  .bulbs = «2.7»;\n",
    "lamp sun:\n  .label = \"a\";\n  .label = «12»;\n",
    "lamp sun:\n  .keys[0] = 1;\n  .keys[1] = «2.5»;\n",
    "lamp sun:\n  .power = 1.0;\n  .power.«max» = 2.5;\n",
    "mesh m:\n  .ids = int32[1] {1};\n  .ids = «[1 2 3]»;\n",
    "mesh m:\n  .ids = int32[1] {1};\n  .ids = «float[1] {1}»;\n",
    "declaredLamp d:\n  .shape = «\"cone\"»;\n",
    // A link is wrong.
    "ball b:\n  .material = «caly»;\nmaterial clay;\n",
    "lamp sun:\n  .color |= «dsuk».outColor;\nsky dusk;\n",
    "lamp sun:\n  .color |= «clay»;\nmaterial clay;\n",
    "ball b:\n  .material = clay«.out»;\nmaterial clay;\n",
    "lamp sun:\n  .red |= «dusk.outColor.r»;\nsky dusk;\n",
    "declaredLamp d;\nlamp sun:\n  .red |= d.«outTint»;\n",
    "ball b:\n  .material = 1.0;\n  .material = «clay»;\nmaterial clay;\n",
    "lamp sun:\n  .color | «dusk».outColor;\nsky dusk;\n",
    // A version comment is wrong. The second comment counts as one, because "conversion:" ends in
    // "version:".
    "«# version: 2.1»\nlamp sun;\n",
    "lamp sun;\n«# colour conversion: linear»\n",
    // The text ends too early.
    "lamp«»",
    "lamp sun«»",
    "lamp sun:\n  .power«»",
    "lamp sun:\n  .power =«»\n",
    "mesh m:\n  .ids = int32[3]«»",
    "lamp sun;\n«\"»",
};

// The ranges were chosen before the reader was tested with them. Rows must not be removed to make
// the test pass. This number grows with the table.
static_assert(std::size(ROWS) == 115);

constexpr std::string_view RANGE_BEGIN = "«";
constexpr std::string_view RANGE_END = "»";

/// The position that an editor shows: a line and a column from 1, and a length in bytes.
struct Place {
  std::uint64_t line;
  std::uint64_t column;
  std::uint64_t length;
  friend bool operator==(const Place&, const Place&) = default;
};

struct Expected {
  explicit Expected(std::string_view row) {
    const std::size_t open = row.find(RANGE_BEGIN);
    const std::size_t close = row.find(RANGE_END);
    const std::string_view before = row.substr(0, open);
    const std::string_view marked =
        row.substr(open + RANGE_BEGIN.size(), close - open - RANGE_BEGIN.size());
    text = std::string(before) + std::string(marked);
    text += row.substr(close + RANGE_END.size());
    const std::size_t feed = before.rfind('\n');
    place.line = 1 + static_cast<std::uint64_t>(std::count(before.begin(), before.end(), '\n'));
    place.column = open - (feed == std::string_view::npos ? 0 : feed + 1) + 1;
    place.length = marked.size();
  }

  std::string text;
  Place place{};
};

Place placeOf(const vsa::Diagnostic& found) {
  const vsa::TextRange& range = found.range;
  return {range.begin.line, range.begin.column, range.end.offset - range.begin.offset};
}

std::ostream& operator<<(std::ostream& out, const Place& place) {
  return out << place.line << ':' << place.column << " +" << place.length;
}

std::string marked(const std::string& text, const vsa::TextRange& range) {
  std::string shown = text;
  shown.insert(range.end.offset, RANGE_END);
  shown.insert(range.begin.offset, RANGE_BEGIN);
  return shown;
}

TEST(SourceRange, IsWhatAPersonWouldCorrect) {
  declareLamp();
  for (const std::string_view row : ROWS) {
    const Expected expected(row);
    const vsa::ReadResult result = vsa::readText(expected.text);
    ASSERT_FALSE(result.diagnostics.empty()) << row;
    const vsa::Diagnostic& found = result.diagnostics.front();
    EXPECT_EQ(placeOf(found), expected.place) << row << "\n--- found\n"
                                              << marked(expected.text, found.range) << "\n"
                                              << found.logLine();
  }
}

TEST(SourceRange, HasALineAndAColumn) {
  for (const std::string_view row : ROWS) {
    for (const vsa::Diagnostic& found : vsa::readText(Expected(row).text).diagnostics) {
      EXPECT_GE(found.range.begin.line, 1U) << row;
      EXPECT_GE(found.range.begin.column, 1U) << row;
      EXPECT_GE(found.range.end.offset, found.range.begin.offset) << row;
    }
  }
}

}  // namespace

}  // namespace vsa_tests
