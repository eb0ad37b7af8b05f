// Computes and prints the difference of two texts, line by line, in the unified format.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vsa_tools {

/// A range of lines that `a` and `b` have in common: `count` lines from the indices `a` and `b` on.
struct MatchedLines {
  std::size_t a = 0;
  std::size_t b = 0;
  std::size_t count = 0;

  friend bool operator==(const MatchedLines&, const MatchedLines&) = default;
};

/// Returns the ranges of lines that two texts have in common, in order. `a` and `b` are the hashes
/// of their lines. First, equal lines at both ends are matched, then the lines that occur exactly
/// once in each text (Cohen, "patience diff"). Then the same is done between these lines, and so
/// on, at most 64 times in all. Each time takes n log n steps. The number of changes is not always
/// minimal.
std::vector<MatchedLines> matchLines(const std::vector<std::uint64_t>& a,
                                     const std::vector<std::uint64_t>& b);

/// Prints the difference of the files with the descriptors `a` and `b`, with three lines around
/// each change. Prints nothing if the files are the same. Stores 16 bytes for each line. `put`
/// receives each printed line without its line feed.
void printDiff(int a, int b, const std::string& nameA, const std::string& nameB,
               const std::function<void(std::string_view)>& put);

}  // namespace vsa_tools
