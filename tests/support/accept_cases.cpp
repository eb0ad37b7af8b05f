// accept_cases FOLDER NAME...: writes the expectations of the cases whose name contains one of the
// NAMEs, or that are named by the path of their text. What is written is what the reader does now:
// read the difference before committing.
#include <cstdio>
#include <exception>
#include <fstream>

#include "tests/support/case_run.h"

namespace {

namespace fs = std::filesystem;
using namespace vsa_tests;

void accept(const fs::path& text) {
  fs::path expectation = text;
  expectation.replace_extension(".expect");
  const std::string outcome = outcomeOf(contentOf(text), Source::String);
  if (fs::exists(expectation) && comparable(contentOf(expectation)) == comparable(outcome)) return;
  std::ofstream(expectation, std::ios::binary) << outcome;
  std::printf("%s\n", expectation.c_str());
}

bool isMeant(const fs::path& text, const fs::path& folder, const std::string& name) {
  std::error_code none;
  return fs::equivalent(text, name, none) ||
         fs::relative(text, folder).generic_string().find(name) != std::string::npos;
}

/// Returns whether there is a case of that name.
bool acceptNamed(const fs::path& folder, const std::string& name) {
  bool found = false;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.path().extension() != ".vsa" || !isMeant(entry.path(), folder, name)) continue;
    accept(entry.path());
    found = true;
  }
  if (!found) std::fprintf(stderr, "accept: there is no case named '%s'\n", name.c_str());
  return found;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount < 3) {
    std::fprintf(stderr, "usage: accept_cases FOLDER NAME...\n");
    return 2;
  }
  try {
    bool allFound = true;
    for (int i = 2; i < argumentCount; ++i)
      allFound = acceptNamed(arguments[1], arguments[i]) && allFound;
    return allFound ? 0 : 1;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "accept: %s\n", error.what());
    return 2;
  }
}
