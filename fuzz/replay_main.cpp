// replay FILE_OR_FOLDER...: passes each file, and each file in the folders, to every fuzzer. It
// does not need libFuzzer, so a build with any compiler can test all past findings. On a finding
// the process aborts. The last line of standard output then names the fuzzer and the input.
#include <cstdio>
#include <filesystem>
#include <string>

#include "fuzz/targets.h"
#include "tests/support/text.h"

namespace {

namespace fs = std::filesystem;

struct Fuzzer {
  const char* name;
  void (*run)(std::string_view input);
};

constexpr Fuzzer FUZZERS[] = {
    {"read_string", vsa_fuzz::readString},
    {"string_against_file", vsa_fuzz::stringAgainstFile},
    {"public_api", vsa_fuzz::publicApi},
    {"lexer_against_plain", vsa_fuzz::lexerAgainstPlain},
    {"numbers", vsa_fuzz::numbers},
    {"unescape", vsa_fuzz::unescape},
    {"decompress", vsa_fuzz::decompress},
    {"compress", vsa_fuzz::compress},
    {"several_texts", vsa_fuzz::severalTexts},
    {"write_text", vsa_fuzz::writeReadText},
    {"write_scene", vsa_fuzz::writeMadeScene},
    {"format_text", vsa_fuzz::formatAndRead},
    {"look_at_scenes", vsa_fuzz::lookAtScenes},
    {"check_text", vsa_fuzz::checkText},
    {"check_settings", vsa_fuzz::checkSettings},
};

void replay(const fs::path& file) {
  const std::string input = vsa_tests::contentOf(file);
  for (const Fuzzer& fuzzer : FUZZERS) {
    std::printf("%s %s\n", fuzzer.name, file.c_str());
    std::fflush(stdout);
    fuzzer.run(input);
  }
}

int replayAll(const fs::path& path) {
  if (!fs::is_directory(path)) {
    replay(path);
    return 1;
  }
  int count = 0;
  for (const auto& entry : fs::recursive_directory_iterator(path)) {
    if (!entry.is_regular_file()) continue;
    replay(entry.path());
    ++count;
  }
  return count;
}

}  // namespace

int main(int argc, char** argv) {
  int count = 0;
  for (int i = 1; i < argc; ++i) {
    if (!fs::exists(argv[i])) {
      std::printf("there is no %s\n", argv[i]);
      return 1;
    }
    count += replayAll(argv[i]);
  }
  std::printf("%d inputs\n", count);
  return count > 0 ? 0 : 1;
}
