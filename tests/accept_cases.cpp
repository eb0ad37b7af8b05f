// accept_cases FOLDER NAME...: replaces the expected results of cases by what the reader returns
// now. A NAME is a part of the paths of one or more cases in FOLDER, or the path of the .vsa file
// of one case. Prints the files that it changes. A file whose result differs only in the order of
// link warnings is not changed.
#include <cstdio>
#include <exception>
#include <fstream>

#include "tests/support/case_run.h"
#include "tests/support/text.h"

namespace {

namespace fs = std::filesystem;
using namespace vsa_tests;

void accept(const fs::path& text) {
  fs::path expectation = text;
  expectation.replace_extension(".expect");
  const std::string content = contentOf(text);
  const std::string outcome = outcomeOf(content, Source::String);
  const LinkWarnings links = linkWarningsOf(content);
  const bool isSame = fs::exists(expectation) &&
                      comparable(contentOf(expectation), links) == comparable(outcome, links);
  if (isSame) return;
  std::ofstream(expectation, std::ios::binary) << outcome;
  std::printf("%s\n", expectation.c_str());
}

bool matches(const fs::path& text, const fs::path& folder, const std::string& name) {
  std::error_code none;
  return fs::equivalent(text, name, none) ||
         fs::relative(text, folder).generic_string().find(name) != std::string::npos;
}

/// Rewrites the expected results of the cases that match `name`. Returns whether there are any.
bool acceptNamed(const fs::path& folder, const std::string& name) {
  bool found = false;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.path().extension() != ".vsa" || !matches(entry.path(), folder, name)) continue;
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
