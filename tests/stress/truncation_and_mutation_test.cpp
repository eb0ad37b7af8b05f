// Reads every case and example of at most 16 KiB with changes: truncated at every byte, and with
// every byte replaced by several others. The outcome must be the same from a String and from a
// File, without a crash. Texts with a huge count are skipped (see hasHugeCount). The test suite
// runs a sample of the changes. VSA_STRESS_STEP=1 runs all.
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/stress/stress_sample.h"
#include "tests/support/case_run.h"
#include "tests/support/text.h"
#include "tests/support/text_files.h"

namespace vsa_tests {

namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t MAX_TEXT_BYTES = 16 * 1024;

std::vector<fs::path> texts() {
  std::vector<fs::path> found = textFiles({"tests/cases", "examples"});
  std::erase_if(found, [](const fs::path& file) { return fs::file_size(file) > MAX_TEXT_BYTES; });
  return found;
}

/// The number of changes for each position of a text.
constexpr std::size_t MUTATIONS = 10;

/// Returns a changed text. Mutation 0 truncates the text at `position`. The other mutations replace
/// the byte there.
std::string mutated(const std::string& text, std::size_t position, std::size_t mutation) {
  if (mutation == 0) return text.substr(0, position);
  constexpr char REPLACEMENTS[] = {'0', '"', '\\', '}', ';', '\0', '\xFF'};
  std::string made = text;
  const int before = static_cast<unsigned char>(text[position]);
  if (mutation <= sizeof REPLACEMENTS) {
    made[position] = REPLACEMENTS[mutation - 1];
  } else {
    made[position] = static_cast<char>(mutation == MUTATIONS - 1 ? before + 1 : before - 1);
  }
  return made;
}

/// Returns whether the text has a count of 8 to 12 digits in brackets. Such a buffer fits into
/// memory, but dumping it takes minutes. Mutations make such counts from the longer counts in texts
/// about allocation failures.
bool hasHugeCount(const std::string& text) {
  for (std::size_t at = text.find('['); at != std::string::npos; at = text.find('[', at + 1)) {
    const std::size_t end = std::min(text.find_first_not_of("0123456789", at + 1), text.size());
    const std::size_t digits = end - at - 1;
    if (digits >= 8 && digits <= 12) return true;
  }
  return false;
}

TEST(TruncationAndMutationTest, StringAndFileGiveTheSame) {
  const std::size_t step = sampleStep(199);
  std::size_t variant = 0;
  for (const fs::path& file : texts()) {
    const std::string text = contentOf(file);
    for (std::size_t position = 0; position < text.size(); ++position) {
      for (std::size_t mutation = 0; mutation < MUTATIONS; ++mutation) {
        if (variant++ % step != 0) continue;
        const std::string made = mutated(text, position, mutation);
        if (hasHugeCount(made)) continue;
        const Source source = position % 2 == 0 ? Source::ByteByByte : Source::File;
        ASSERT_EQ(outcomeOf(made, Source::String), outcomeOf(made, source))
            << file << ", byte " << position << ", mutation " << mutation << ":\n"
            << visible(made);
      }
    }
  }
  EXPECT_GT(variant, 100000u);
}

}  // namespace

}  // namespace vsa_tests
