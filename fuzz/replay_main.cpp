// Every saved input through every fuzzer, with any compiler: what was found once stays found.
//
//   replay FILE_OR_FOLDER...
//
// A finding ends the process; the input's name then stands last on standard output.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "fuzz/targets.h"

namespace {

namespace fs = std::filesystem;

struct Fuzzer {
  const char* name;
  void (*run)(std::string_view input);
};

constexpr Fuzzer FUZZERS[] = {
    {"read_string", vsa_fuzz::readString},
    {"string_against_file", vsa_fuzz::stringAgainstFile},
    {"lexer_against_plain", vsa_fuzz::lexerAgainstPlain},
    {"numbers", vsa_fuzz::numbers},
    {"unescape", vsa_fuzz::unescape},
#ifdef VSA_FUZZ_HAS_ZLIB
    {"decompress", vsa_fuzz::decompress},
    {"compress", vsa_fuzz::compress},
#endif
    {"several_texts", vsa_fuzz::severalTexts},
};

void replay(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  const std::string input{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  for (const Fuzzer& fuzzer : FUZZERS) {
    std::printf("%s %s\n", fuzzer.name, file.c_str());
    std::fflush(stdout);
    fuzzer.run(input);
  }
}

int replayAll(const fs::path& place) {
  if (!fs::is_directory(place)) {
    replay(place);
    return 1;
  }
  int count = 0;
  for (const auto& entry : fs::recursive_directory_iterator(place)) {
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
