// Finds the VSA texts of this project, for tests that read all of them.
#pragma once

#include <algorithm>
#include <filesystem>
#include <initializer_list>
#include <vector>

namespace vsa_tests {

/// Returns the files *.vsa in `folders` and their subfolders, sorted by name within each folder.
/// The folders are relative to the root of the project. A folder that does not exist has no texts.
inline std::vector<std::filesystem::path> textFiles(std::initializer_list<const char*> folders) {
  namespace fs = std::filesystem;
  const fs::path root = fs::path(VSA_TEST_DIR).parent_path();
  std::vector<fs::path> texts;
  for (const char* const folder : folders) {
    if (!fs::exists(root / folder)) continue;
    const auto begin = static_cast<std::ptrdiff_t>(texts.size());
    for (const auto& entry : fs::recursive_directory_iterator(root / folder)) {
      if (entry.path().extension() == ".vsa") texts.push_back(entry.path());
    }
    std::sort(texts.begin() + begin, texts.end());
  }
  return texts;
}

}  // namespace vsa_tests
