// Damaged texts: every case and example of up to 16 KiB, cut at every byte, and with every byte
// replaced by each of a few that hurt most. Nothing is said of what must come of them, but that it
// is the same from a String and from a File, and no crash. In the suite a sample; all of them with
// VSA_ROBUST_EVERY=1.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/stress/stress_sample.h"
#include "tests/support/case_run.h"
#include "tests/support/text.h"

namespace vsa_tests {

namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t LARGEST = 16 * 1024;

std::vector<fs::path> texts() {
  std::vector<fs::path> found;
  for (const char* const folder : {"cases", "../examples"}) {
    const fs::path root = fs::path(VSA_TEST_DIR) / folder;
    if (!fs::exists(root)) continue;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
      if (entry.path().extension() == ".vsa" && entry.file_size() <= LARGEST) {
        found.push_back(entry.path());
      }
    }
  }
  std::sort(found.begin(), found.end());
  return found;
}

/// What can happen to a text at one place: damage 0 is the cut.
constexpr std::size_t DAMAGES = 10;

std::string damaged(const std::string& text, std::size_t place, std::size_t damage) {
  if (damage == 0) return text.substr(0, place);
  constexpr char REPLACEMENTS[] = {'0', '"', '\\', '}', ';', '\0', '\xFF'};
  std::string made = text;
  const int before = static_cast<unsigned char>(text[place]);
  if (damage <= sizeof REPLACEMENTS) {
    made[place] = REPLACEMENTS[damage - 1];
  } else {
    made[place] = static_cast<char>(damage == DAMAGES - 1 ? before + 1 : before - 1);
  }
  return made;
}

/// Whether a list of brackets names some 10^7 to 10^12 elements: what is left of a count that no
/// memory holds when its digits are cut. Memory may hold so many, and to write them down for each
/// source takes minutes.
bool namesVeryMany(const std::string& text) {
  for (std::size_t at = text.find('['); at != std::string::npos; at = text.find('[', at + 1)) {
    const std::size_t end = std::min(text.find_first_not_of("0123456789", at + 1), text.size());
    const std::size_t digits = end - at - 1;
    if (digits >= 8 && digits <= 12) return true;
  }
  return false;
}

TEST(DamageTest, StringAndFileGiveTheSame) {
  const std::size_t step = sampleStep(199);
  std::size_t variant = 0;
  for (const fs::path& file : texts()) {
    const std::string text = contentOf(file);
    for (std::size_t place = 0; place < text.size(); ++place) {
      for (std::size_t damage = 0; damage < DAMAGES; ++damage) {
        if (variant++ % step != 0) continue;
        const std::string made = damaged(text, place, damage);
        if (namesVeryMany(made)) continue;
        const Source pieces = place % 2 == 0 ? Source::ByteByByte : Source::File;
        ASSERT_EQ(outcomeOf(made, Source::String), outcomeOf(made, pieces))
            << file << ", byte " << place << ", damage " << damage << ":\n"
            << visible(made);
      }
    }
  }
  EXPECT_GT(variant, 100000u);
}

}  // namespace

}  // namespace vsa_tests
