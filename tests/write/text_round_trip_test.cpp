// Tests that a text that is read, written and read again gives the same scene. The texts are all
// cases, regressions and examples. They are written in several layouts, none of which changes the
// order of the nodes.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <vector>

#include "tests/support/declared_lamp.h"
#include "tests/support/text.h"
#include "tests/support/text_files.h"
#include "tests/write/round_trip.h"

namespace vsa_tests {

namespace {

namespace fs = std::filesystem;
using vsa::WriteOptions;
using zn::korvo_sdk::Scene;

std::vector<WriteOptions> forms() {
  std::vector<WriteOptions> forms(5);
  forms[1].paths = vsa::PathForm::Full;
  forms[2].links = vsa::LinkPlace::Last;
  forms[3].buffers = vsa::BufferForm::Compressed;
  forms[3].lineWidth = 20;
  forms[4].paths = vsa::PathForm::Full;
  forms[4].links = vsa::LinkPlace::Last;
  forms[4].numbersPerLine = 1;
  return forms;
}

/// The texts whose scenes cannot be written, and the array that is the reason. Reading such a text
/// ends with an error in the middle of a statement. The array then has an element type but no
/// element of that type, which no complete text can represent.
const std::map<std::string, std::string> NOT_CARRIED = {
    {"elements_nest_no_deeper_than_256_levels.vsa", "rig1.c[0]"},
    {"index_refused_character_that_is_not_printable.vsa", "a.k"},
    {"index_refused_empty.vsa", "mesh1.ids"},
    {"index_refused_past_64_bits.vsa", "mesh1.ids"},
    {"index_refused_star_between_blanks.vsa", "mesh1.ids"},
    {"index_refused_two_numbers.vsa", "mesh1.ids"},
    {"inputs_made_before_a_bad_index_remain.vsa", "rig1.limb.joints[0]"},
    {"invalid_input_array_index.vsa", "key.ids"},
    {"null_element_refuses_an_index.vsa", "mesh1.rows[0]"},
    {"refused_values_leave_their_elements_empty_for_the_limit.vsa", "rig1.keys"},
};

/// Returns whether writing failed because of that array.
bool isRefusedFor(const vsa::TextResult& written, const std::string& array) {
  const std::string start = "a text cannot carry the scene: " + array;
  return written.status == vsa::WriteStatus::NotCarried && written.text.empty() &&
         written.message.starts_with(start) &&
         written.problems[0].reason == "no element gives the array its element type";
}

class TextRoundTrip : public testing::TestWithParam<fs::path> {};

TEST_P(TextRoundTrip, GivesTheSameScene) {
  declareLamp();
  Scene scene;
  static_cast<void>(readInto(scene, contentOf(GetParam())));
  const auto refused = NOT_CARRIED.find(GetParam().filename().string());
  for (const WriteOptions& options : forms()) {
    const vsa::TextResult written = vsa::writeText(scene, options);
    if (refused != NOT_CARRIED.end()) {
      EXPECT_TRUE(isRefusedFor(written, refused->second)) << written.message;
      continue;
    }
    ASSERT_TRUE(written.isWritten()) << written.message;
    Scene again;
    const vsa_tools::ReadOutcome outcome = readInto(again, written.text);
    EXPECT_TRUE(outcome.result) << written.text;
    EXPECT_EQ(dumpOf(scene), dumpOf(again)) << written.text;
  }
}

TEST_P(TextRoundTrip, IsStable) {
  declareLamp();
  Scene scene, again;
  static_cast<void>(readInto(scene, contentOf(GetParam())));
  const vsa::TextResult first = vsa::writeText(scene);
  static_cast<void>(readInto(again, first.text));
  EXPECT_EQ(first.text, vsa::writeText(again).text);
}

std::string testName(const testing::TestParamInfo<fs::path>& info) {
  std::string name = info.param.parent_path().filename().string() + '_' +
                     info.param.stem().string() + '_' + std::to_string(info.index);
  for (char& c : name) {
    if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
  }
  return name;
}

INSTANTIATE_TEST_SUITE_P(
    Texts, TextRoundTrip,
    testing::ValuesIn(textFiles({"tests/cases", "tests/regressions", "examples"})), testName);

}  // namespace

}  // namespace vsa_tests
